// An emitter file is read forward only: its texture, its frames, then its plain keys, which are found behind
// the frames alone.
#include "particles/effect_files.h"

#include "base/log.h"
#include "config/record.h"
#include "particles/engine.h"

#include <string_view>
#include <utility>

namespace {

constexpr int LastForm = 5;

// Names the first plain key between two points of an emitter file; in front of the frames they are not read.
void WarnOfEarlyKey(ConfigFile* file, std::size_t from) {
    const std::size_t to = file->Position();
    file->Seek(from);
    while (file->Position() < to) {
        const std::string_view line = INI_NextLine(file);
        if (line.empty() || line.front() == ';') continue;
        if (line.front() != '<')
            WarnAboutLine(file, "in front of the frames, not read: " + std::string(line));
        break;
    }
    file->Seek(to);
}

} // namespace

RecordTable<EffectEntry> EffectEntry::Table() {
    static constexpr RecordKey<EffectEntry> Keys[] = {{"name", &EffectEntry::name}};
    return {"TEffect", Keys};
}

RecordTable<EmitterEntry> EmitterEntry::Table() {
    static constexpr RecordKey<EmitterEntry> Keys[] = {{"emittor", &EmitterEntry::emittor}};
    return {"TEmittor", Keys};
}

RecordTable<ParticleFrame> ParticleFrame::Table() {
    using F = ParticleFrame;
    static constexpr RecordKey<F> Keys[] = {{"randx", &F::randx}, {"randy", &F::randy}, {"randz", &F::randz},
                                            {"red", &F::red},     {"green", &F::green}, {"blue", &F::blue},
                                            {"alpha", &F::alpha}, {"rota", &F::rota},   {"size", &F::size}};
    return {"Frame", Keys};
}

RecordTable<QEV_PTEmittor> QEV_PTEmittor::Table() {
    using E = QEV_PTEmittor;
    // clang-format off
    static constexpr RecordKey<E> Keys[] = {
        {"particleNum", &E::particleNum}, {"gravity", &E::gravity}, {"gravpower", &E::gravpower},
        {"gravborder", &E::gravborder}, {"framerandom", &E::framerandom}, {"bounce", &E::bounce},
        {"updatepos", &E::updatepos}, {"collision", &E::collision}, {"framespeed", &E::framespeed},
        {"form", &E::form}, {"shape", &E::shape}, {"emitnum", &E::emitnum},
        {"emittime", &E::emittime}, {"dietype", &E::dietype}, {"die", &E::die},
        {"acceleration", &E::acceleration}, {"friction", &E::friction}, {"sfactor", &E::sfactor},
        {"dfactor", &E::dfactor}, {"power", &E::power}, {"sectordependant", &E::sectordependant},
        {"life", &E::life}, {"liferand", &E::liferand}, {"totallife", &E::totallife},
        {"dirx", &E::dirx}, {"diry", &E::diry}, {"dirz", &E::dirz},
        {"startx", &E::startx}, {"starty", &E::starty}, {"startz", &E::startz}};
    // clang-format on
    return {"TEmittor", Keys};
}

void QEV_PTEmittor::Load(AniTextures& textures) {
    ConfigFile file(path.c_str());
    if (!file.IsOpen()) {
        LogWrite("QEV_PEngine::Load(%s) - [ERROR] Couldn't open main file\n", path.c_str());
        return;
    }
    if (!INI_FindBlock("TEmittor", &file)) {
        LogWrite("QEV_PEngine::Load(%s) - [ERROR] TEmittor block not found\n", path.c_str());
        return;
    }
    const std::size_t start = file.Position();
    texture = textures.AddTexture(&file);
    if (texture) WarnOfEarlyKey(&file, start);
    LoadFrames(&file);
    ReadRecord(Table(), *this, &file);
    CheckValues(&file);
    Prepare();
}

void QEV_PTEmittor::LoadFrames(ConfigFile* file) {
    const std::size_t start = file->Position();
    if (!INI_FindNextBlock("Frames", file)) {
        LogWrite("QEV_PTEmittor::LoadFrames() - [ERROR] Frames block not found\n");
        return;
    }
    WarnOfEarlyKey(file, start);
    bool warned = false;
    while (INI_FindNextBlock("Frame", file)) {
        ReadRecord(ParticleFrame::Table(), frames.emplace_back(), file);
        if (frames.back().size <= 0.0F && !std::exchange(warned, true))
            WarnAbout("size", file, "size in a key frame is not above 0, nothing to see");
        INI_SkipBlock("Frame", file);
    }
    INI_SkipBlock("Frames", file);
}

// One line for each value with which nothing would be seen and no reason would show.
void QEV_PTEmittor::CheckValues(ConfigFile* file) {
    if (form < 1 || form > LastForm) form = 0;
    if (particleNum < 0 || particleNum > MaxParticles) {
        WarnAbout("particleNum", file, "particleNum = " + std::to_string(particleNum) + " cannot be held");
        particleNum = 0;
    } else if (particleNum == 0) {
        WarnAbout("particleNum", file, "particleNum = 0, no particles");
    }
    if (framespeed <= 0)
        WarnAbout("framespeed", file, "framespeed is not above 0, key frames count as zeros");
}

void QEV_PTEmittor::Prepare() {
    looks.clear();
    for (const ParticleFrame& frame : frames)
        looks.push_back({{frame.red, frame.green, frame.blue, frame.alpha}, frame.rota, frame.size});
    if (!looks.empty()) looks.push_back(FrameLook(looks.front()));
    cellsPerMillisecond = 0.0;
    if (!texture || texture->framenum <= 1) return;
    const std::int64_t period = static_cast<std::int64_t>(frames.size()) * framespeed;
    const std::int64_t cellTime = period / texture->framenum;
    if (cellTime > 0) cellsPerMillisecond = 1.0 / static_cast<double>(cellTime);
}

void QEV_PTEffect::Start(const char* path, QEV_PEngine& engine) {
    name = path;
    ConfigFile file(path);
    if (!file.IsOpen()) {
        LogWrite("QEV_PTEffect::Start(%s) - [ERROR] Couldn't open main file\n", path);
        return;
    }
    if (!INI_FindBlock("TEmittors", &file)) {
        LogWrite("QEV_PEngine::Load(%s) - [ERROR] Emittor block not found\n", path);
        return;
    }
    EmitterEntry entry;
    while (ReadNextRecord(EmitterEntry::Table(), entry, &file))
        emitters.push_back(engine.FindOrAddEmitter(entry.emittor.c_str()));
}
