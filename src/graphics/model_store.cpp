// Entries are never removed before Destroy, so that their indices and references hold.
#include "graphics/model_store.h"

namespace {

// Models and instances are counted with 16 bits, and the highest index means none.
constexpr std::size_t MaxEntries = QEV_MD2loader::None;

} // namespace

void QEV_MD2loader::Init() {
    Destroy();
    scale = 1.0F;
    textures.Init();
}

bool QEV_MD2loader::AddKsm(const char* path, const char* texturePath) {
    if (ksmModels.size() >= MaxEntries) return false;
    KsmModel& model = *ksmModels.emplace_back(std::make_unique<KsmModel>());
    const bool loaded = model.Load(path, scale);
    model.texture = static_cast<std::uint16_t>(textures.Add(texturePath));
    return loaded;
}

const KsmModel& QEV_MD2loader::Ksm(std::size_t index) const {
    static const KsmModel nothing;
    return index < ksmModels.size() ? *ksmModels[index] : nothing;
}

GLuint QEV_MD2loader::KsmTexture(std::size_t index) const {
    return index < ksmModels.size() ? textures.Get(ksmModels[index]->texture) : 0;
}

std::uint16_t QEV_MD2loader::FindMD2(const char* path, const char* skin) const {
    for (std::size_t i = 0; i < md2Models.size(); ++i)
        if (md2Models[i]->Path() == path && textures.GetName(md2Models[i]->skin) == skin)
            return static_cast<std::uint16_t>(i);
    return None;
}

std::uint16_t QEV_MD2loader::FindOrAddMD2(const char* path, const char* skin) {
    const std::uint16_t known = FindMD2(path, skin);
    if (known != None) return known;
    if (!AddMD2(path, skin)) return None;
    const bool replaced = md2Models.back()->Path() != path;
    const std::uint16_t blank = replaced ? FindMD2(Md2Model::BlankFile, QEV_Textures::BlankPicture) : None;
    return blank != None ? blank : static_cast<std::uint16_t>(md2Models.size() - 1);
}

bool QEV_MD2loader::AddMD2(const char* path, const char* skin) {
    if (md2Models.size() >= MaxEntries) return false;
    auto model = std::make_unique<Md2Model>();
    if (!model->Load(path)) return false;
    model->skin = static_cast<std::uint16_t>(textures.Add(skin));
    md2Models.push_back(std::move(model));
    return true;
}

const Md2Model& QEV_MD2loader::Model(std::size_t index) const {
    static const Md2Model nothing;
    return index < md2Models.size() ? *md2Models[index] : nothing;
}

std::uint16_t QEV_MD2loader::AddInstance(std::size_t model) {
    if (instances.size() >= MaxEntries) return None;
    const Md2Model* played = model < md2Models.size() ? md2Models[model].get() : nullptr;
    instances.push_back(std::make_unique<Md2Instance>(played));
    return static_cast<std::uint16_t>(instances.size() - 1);
}

Md2Instance& QEV_MD2loader::Instance(std::size_t index) {
    if (index < instances.size()) return *instances[index];
    absent = {};
    return absent;
}

GLuint QEV_MD2loader::InstanceSkin(std::size_t index) const {
    const Md2Model* model = index < instances.size() ? instances[index]->Model() : nullptr;
    return model ? textures.Get(model->skin) : 0;
}

void QEV_MD2loader::Reload() {
    textures.Reload();
    for (const auto& model : ksmModels)
        model->Reload();
}

void QEV_MD2loader::Destroy() {
    instances.clear();
    md2Models.clear();
    ksmModels.clear();
    textures.Free();
}
