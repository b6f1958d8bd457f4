// An emitter file is read forward only: its texture, its frames, then its plain keys, which are found behind
// the frames alone.
#include "particles/effect_files.h"

#include "base/log.h"
#include "config/config_reader.h"
#include "particles/engine.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr int LastForm = 5;

ParticleFrame ReadFrame(ConfigFile* file) {
    ParticleFrame frame;
    frame.randx = INI_ReadFloat("randx", file);
    frame.randy = INI_ReadFloat("randy", file);
    frame.randz = INI_ReadFloat("randz", file);
    frame.red = INI_ReadFloat("red", file);
    frame.green = INI_ReadFloat("green", file);
    frame.blue = INI_ReadFloat("blue", file);
    frame.alpha = INI_ReadFloat("alpha", file);
    frame.rota = INI_ReadFloat("rota", file);
    frame.size = INI_ReadFloat("size", file);
    return frame;
}

// Names the first plain key between two points of an emitter file; in front of the frames they are not read.
void WarnOfEarlyKey(const std::string& path, ConfigFile* file, std::size_t from) {
    const std::size_t to = file->Position();
    file->Seek(from);
    while (file->Position() < to) {
        const std::string_view line = INI_NextLine(file);
        if (line.empty() || line.front() == ';') continue;
        if (line.front() != '<')
            LogWrite("QEV_PEngine::Load(%s) - [WARNING] - in front of the frames, not read: %s\n",
                     path.c_str(), lineBuffer.data());
        break;
    }
    file->Seek(to);
}

} // namespace

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
    if (texture) WarnOfEarlyKey(path, &file, start);
    LoadFrames(&file);
    ReadKeys(&file);
    CheckValues();
    Prepare();
}

void QEV_PTEmittor::LoadFrames(ConfigFile* file) {
    const std::size_t start = file->Position();
    if (!INI_FindNextBlock("Frames", file)) {
        LogWrite("QEV_PTEmittor::LoadFrames() - [ERROR] Frames block not found\n");
        return;
    }
    WarnOfEarlyKey(path, file, start);
    while (INI_FindNextBlock("Frame", file)) {
        frames.push_back(ReadFrame(file));
        INI_SkipBlock("Frame", file);
    }
    INI_SkipBlock("Frames", file);
}

void QEV_PTEmittor::ReadKeys(ConfigFile* file) {
    const auto flag = [file](const char* key) { return INI_ReadInt(key, file) != 0; };
    particleNum = INI_ReadInt("particleNum", file);
    gravity = static_cast<std::int8_t>(INI_ReadInt("gravity", file));
    gravpower = INI_ReadFloat("gravpower", file);
    gravborder = flag("gravborder");
    framerandom = flag("framerandom");
    bounce = INI_ReadFloat("bounce", file);
    updatepos = flag("updatepos");
    collision = static_cast<std::int8_t>(INI_ReadInt("collision", file));
    framespeed = INI_ReadInt("framespeed", file);
    const int style = INI_ReadInt("form", file);
    form = static_cast<std::uint8_t>(style >= 1 && style <= LastForm ? style : 0);
    shape = static_cast<std::int8_t>(INI_ReadInt("shape", file));
    emitnum = INI_ReadInt("emitnum", file);
    emittime = INI_ReadInt("emittime", file);
    dietype = static_cast<std::uint8_t>(INI_ReadInt("dietype", file));
    die = static_cast<std::uint8_t>(INI_ReadInt("die", file));
    acceleration = INI_ReadInt("acceleration", file);
    friction = INI_ReadFloat("friction", file);
    sfactor = INI_ReadInt("sfactor", file);
    dfactor = INI_ReadInt("dfactor", file);
    power = INI_ReadFloat("power", file);
    sectordependant = flag("sectordependant");
    life = INI_ReadInt("life", file);
    liferand = INI_ReadFloat("liferand", file);
    totallife = INI_ReadInt("totallife", file);
    dirx = INI_ReadFloat("dirx", file);
    diry = INI_ReadFloat("diry", file);
    dirz = INI_ReadFloat("dirz", file);
    startx = INI_ReadFloat("startx", file);
    starty = INI_ReadFloat("starty", file);
    startz = INI_ReadFloat("startz", file);
}

// One line for each value with which nothing would be seen and nobody would know why.
void QEV_PTEmittor::CheckValues() {
    if (particleNum < 0 || particleNum > MaxParticles) {
        LogWrite("QEV_PEngine::Load(%s) - [ERROR] particleNum = %d cannot be held\n", path.c_str(),
                 particleNum);
        particleNum = 0;
    } else if (particleNum == 0) {
        LogWrite("QEV_PEngine::Load(%s) - [WARNING] - particleNum = 0, no particles\n", path.c_str());
    }
    if (framespeed <= 0)
        LogWrite("QEV_PEngine::Load(%s) - [WARNING] - framespeed = %d, key frames count as zeros\n",
                 path.c_str(), framespeed);
    const auto unseen = std::ranges::find_if(frames, [](const auto& frame) { return frame.size <= 0.0F; });
    if (unseen != frames.end())
        LogWrite("QEV_PEngine::Load(%s) - [WARNING] - size = %g in a key frame, nothing to see\n",
                 path.c_str(), static_cast<double>(unseen->size));
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
    while (INI_FindNextBlock("TEmittor", &file)) {
        emitters.push_back(engine.FindOrAddEmitter(INI_ReadString("emittor", &file)));
        INI_SkipBlock("TEmittor", &file);
    }
}
