// Blending two frames of an MD2 model, beside a bare loop over as many floats.
#include "graphics/md2_model.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

constexpr int Frames = 198;

void Append(std::string& bytes, const void* value, std::size_t size) {
    bytes.append(static_cast<const char*>(value), size);
}

// A model of that many triangles, with half as many vertices as meshes have.
Md2Model MakeModel(int triangles) {
    const int vertices = triangles / 2 + 2;
    const std::int32_t frameSize = 40 + 4 * vertices;
    const std::int32_t frameOffset = 72 + 12 * triangles;
    const std::int32_t header[17] = {
        Md2Header::Magic, 8,  256, 256, frameSize,   0, vertices, 1, triangles, 0,
        Frames,           68, 68,  72,  frameOffset, 0, 0};
    std::string file;
    Append(file, header, sizeof header);
    file.append(4, '\0');
    for (int i = 0; i < triangles; ++i) {
        const std::uint16_t indices[6] = {static_cast<std::uint16_t>(i / 2),
                                          static_cast<std::uint16_t>(i * 7 % vertices),
                                          static_cast<std::uint16_t>(i * 13 % vertices),
                                          0,
                                          0,
                                          0};
        Append(file, indices, sizeof indices);
    }
    for (int frame = 0; frame < Frames; ++frame) {
        const float scale[6] = {1, 1, 1, 0, 0, 0};
        Append(file, scale, sizeof scale);
        file.append(16, 'f');
        for (int i = 0; i < 4 * vertices; ++i)
            file += static_cast<char>(frame + i * 31);
    }
    Md2Model model;
    if (!model.Parse(std::as_bytes(std::span(file)))) std::abort();
    return model;
}

void BM_Md2Interpolate(benchmark::State& state) {
    const Md2Model model = MakeModel(static_cast<int>(state.range(0)));
    std::vector<float> out(model.CornerCount() * 3);
    int frame = 0;
    for (auto _ : state) {
        model.Interpolate(frame, frame + 1, 0.3F, out.data());
        frame = (frame + 1) % (Frames - 1);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * model.CornerCount()));
}
BENCHMARK(BM_Md2Interpolate)->Arg(200)->Arg(800)->Arg(4096);

void BM_Md2Interpolate_Limit(benchmark::State& state) {
    const std::size_t floats = static_cast<std::size_t>(state.range(0)) * 9;
    std::vector<float> frames(floats * Frames, 1.5F);
    std::vector<float> out(floats);
    const float t = 0.3F;
    std::size_t frame = 0;
    for (auto _ : state) {
        const float* __restrict a = frames.data() + frame * floats;
        const float* __restrict b = a + floats;
        float* __restrict to = out.data();
        for (std::size_t i = 0; i < floats; ++i)
            to[i] = a[i] + (b[i] - a[i]) * t;
        frame = (frame + 1) % (Frames - 1);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * floats / 3));
}
BENCHMARK(BM_Md2Interpolate_Limit)->Arg(200)->Arg(800)->Arg(4096);

} // namespace
