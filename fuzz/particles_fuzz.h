// What the particle fuzzers share: a folder of their own, a good emitter, and a run of everything that was
// loaded.
#pragma once

#include "base/frame_clock.h"
#include "own_folder.h"
#include "particles/engine.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>

inline constexpr std::string_view GoodEmitter = "<TEmittor>\n<texture>\nfilename = \"dot.png\"\nframenum = "
                                                "4\n</texture>\n<Frames>\n<Frame>\nred = 1\nsize = "
                                                "0.5\n</Frame>\n</Frames>\nparticleNum = 3\nlife = "
                                                "500\nframespeed = 90\ndietype = 1\ndie = 2\nacceleration = "
                                                "1\nemittime = 100000\nform = 1\nshape = 7\n</TEmittor>\n";

inline void WriteBytes(const char* name, std::string_view bytes) {
    std::ofstream(name, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline void EnterFolder() {
    EnterOwnFolder();
    std::filesystem::create_directory("particles");
}

// Starts up to sixteen effects and runs all that run, with frames short and long.
inline void RunAll(QEV_PEngine& engine) {
    const std::size_t count = std::min<std::size_t>(engine.EffectCount(), 16);
    for (std::size_t id = 0; id < count; ++id)
        engine.ActiveEffect(static_cast<std::uint32_t>(id), static_cast<std::uint32_t>(id), {-4, -5, 1},
                            {0.3F, 1, 0});
    for (const std::uint32_t delta : {1, 16, 200, 90, 16, 200, 200, 7}) {
        frameClock.frameDelta = delta;
        engine.Update();
    }
    engine.Release();
    if (engine.RunningCount() > 0) std::abort();
}
