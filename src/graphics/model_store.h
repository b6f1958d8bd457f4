// A model store: KSM models, MD2 models and the instances that play them, addressed by index, with the
// textures of all. Maps and scenes own one each. Rests on the two model formats and on texture sets.
#pragma once

#include "graphics/ksm_model.h"
#include "graphics/md2_instance.h"
#include "graphics/md2_model.h"
#include "graphics/textures.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class QEV_MD2loader {
public:
    // Result of FindOrAddMD2 and AddInstance when there is nothing to point at.
    static constexpr std::uint16_t None = 0xFFFF;

    // An empty store with scale 1.
    void Init();
    // Factor on the positions of KSM models loaded from now on.
    void SetScale(float newScale) { scale = newScale; }

    // Adds a model and its texture. A missing model becomes the blank one, a missing texture the blank one.
    // False: not even the blank model could be read; the entry is there and draws nothing.
    [[nodiscard]] bool AddKsm(const char* path, const char* texturePath);
    std::size_t KsmCount() const { return ksmModels.size(); }
    // A model that draws nothing when there is no such entry. The reference holds until Destroy.
    const KsmModel& Ksm(std::size_t index) const;
    // GL name of the model's texture; 0 when there is no such entry.
    GLuint KsmTexture(std::size_t index) const;

    // Index of the model with that file and that skin, loaded and added if there is none yet. A model that
    // had to be replaced by the blank one gives the blank model's entry with the blank skin, or, when there
    // is none such, with that skin; None when not even the blank one could be read.
    [[nodiscard]] std::uint16_t FindOrAddMD2(const char* path, const char* skin);
    // Adds a model (or, failing it, the blank one) and its skin. False: nothing added.
    [[nodiscard]] bool AddMD2(const char* path, const char* skin);
    std::size_t MD2Count() const { return md2Models.size(); }
    // An empty model when there is no such entry. The reference holds until Destroy.
    const Md2Model& Model(std::size_t index) const;

    // A new instance of the model; its index. None when the store is full. An instance of a model that does
    // not exist draws nothing.
    [[nodiscard]] std::uint16_t AddInstance(std::size_t model);
    // An instance that draws nothing when there is no such entry. The reference holds until Destroy.
    Md2Instance& Instance(std::size_t index);
    // GL name of the skin that the instance wears; 0 when there is no such entry.
    GLuint InstanceSkin(std::size_t index) const;

    // Loads the textures again and rebuilds the lists, after a mode change.
    void Reload();
    // Frees all models, instances, lists and textures.
    void Destroy();

    // One entry for each model added, in the order of adding.
    QEV_Textures textures;

private:
    std::uint16_t FindMD2(const char* path, const char* skin) const;

    // Entries stand on their own, so that references to them hold while the store grows.
    std::vector<std::unique_ptr<KsmModel>> ksmModels;
    std::vector<std::unique_ptr<Md2Model>> md2Models;
    std::vector<std::unique_ptr<Md2Instance>> instances;
    Md2Instance absent; // what Instance gives for an index without an entry
    float scale = 1.0F;
};
