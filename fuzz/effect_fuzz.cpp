// Effect files of any content, loaded without a window and run; of the emitters they name one is there.
#include "particles/engine.h"
#include "particles_fuzz.h"

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    EnterFolder();
    WriteBytes("list.txt", "<Particles>\n<TEffect>\nname = \"effect.txt\"\n</TEffect>\n</Particles>\n");
    WriteBytes("particles/emitter.txt", GoodEmitter);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    WriteBytes("effect.txt", {reinterpret_cast<const char*>(data), size});
    QEV_PEngine engine;
    if (!engine.Load("list.txt") || engine.EffectCount() != 1) std::abort();
    const EffectInstance* effect = engine.ActiveEffect(0, 255, {}, {});
    if (!effect || effect->emitters.size() != engine.Effect(0).emitters.size()) std::abort();
    RunAll(engine);
    return 0;
}
