// Emitter files of any content, loaded without a window and run for some seconds among walls and objects.
#include "particles/engine.h"
#include "particles_fuzz.h"
#include "world/world_grid.h"

#include <memory>

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    EnterFolder();
    WriteBytes("list.txt", "<Particles>\n<TEffect>\nname = \"effect.txt\"\n</TEffect>\n</Particles>\n");
    WriteBytes("effect.txt",
               "<TEmittors>\n<TEmittor>\nemittor = \"emitter.txt\"\n</TEmittor>\n</TEmittors>\n");
    globalp = std::make_unique<Globalp>();
    globalp->sectorLists.resize(1);
    globalp->sectorLists[0].fill(SectorListEnd);
    for (int x = 0; x < 9; ++x)
        for (int y = 0; y < 9; ++y) {
            const std::size_t cell = CellIndex(x, y);
            globalp->cells[cell].sector = 0;
            if ((x * 3 + y) % 5 == 0) globalp->walls[cell] = WallByte;
        }
    WorldObject& object = globalp->objects[globalp->AddObject()];
    object.x = object.y = -4.5F;
    globalp->AddToList(0, 0);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    WriteBytes("emitter.txt", {reinterpret_cast<const char*>(data), size});
    QEV_PEngine engine;
    if (!engine.Load("list.txt") || engine.EmitterCount() != 1) std::abort();
    const QEV_PTEmittor& emitter = *engine.Effect(0).emitters.at(0);
    if (emitter.particleNum < 0 || emitter.particleNum > QEV_PTEmittor::MaxParticles || emitter.form > 5)
        std::abort();
    // Large ones do the same, only longer.
    if (emitter.particleNum <= 2000) RunAll(engine);
    return 0;
}
