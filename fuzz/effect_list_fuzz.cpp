// Effect lists of any content, loaded without a window; the effects they name are missing but for one.
// Whatever was loaded is started and run.
#include "particles/engine.h"
#include "particles_fuzz.h"

#include <algorithm>

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    EnterFolder();
    WriteBytes("particles/effect.txt",
               "<TEmittors>\n<TEmittor>\nemittor = \"particles/emitter.txt\"\n</TEmittor>\n</TEmittors>\n");
    WriteBytes("particles/emitter.txt", GoodEmitter);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    WriteBytes("list.txt", {reinterpret_cast<const char*>(data), size});
    QEV_PEngine engine;
    const bool loaded = engine.Load("list.txt");
    if (!loaded && engine.EffectCount() > 0) std::abort();
    // Names are unique, and numbers run without gaps.
    const std::size_t some = std::min<std::size_t>(engine.EffectCount(), 64);
    for (std::size_t i = 0; i < some; ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (engine.Effect(i).name == engine.Effect(j).name) std::abort();
    RunAll(engine);
    return 0;
}
