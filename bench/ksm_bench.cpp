// Loading the largest KSM model, beside reading the same file and adding its bytes up.
#include "graphics/ksm_model.h"

#include "platform/file_bytes.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

namespace {

constexpr std::size_t FileSize = 4 + std::size_t{60} * KsmMesh::MaxTriangles;

// The file, there while the program runs.
class LargestModel {
public:
    LargestModel() : path((std::filesystem::temp_directory_path() / "quarvello-bench-XXXXXX").string()) {
        const int descriptor = mkstemp(path.data());
        std::FILE* file = descriptor >= 0 ? fdopen(descriptor, "wb") : nullptr;
        if (!file) std::abort();
        const std::uint16_t head[2] = {0, KsmMesh::MaxTriangles};
        std::fwrite(head, sizeof head, 1, file);
        unsigned seed = 1;
        for (std::size_t i = 0; i < std::size_t{15} * KsmMesh::MaxTriangles; ++i) {
            seed = seed * 1664525U + 1013904223U;
            const float value = static_cast<float>(seed >> 8U) / 65536.0F - 128.0F;
            std::fwrite(&value, sizeof value, 1, file);
        }
        std::fclose(file);
    }
    LargestModel(const LargestModel&) = delete;
    LargestModel& operator=(const LargestModel&) = delete;
    ~LargestModel() { std::filesystem::remove(path); }

    const char* Path() const { return path.c_str(); }

private:
    std::string path;
};

const LargestModel& Model() {
    static const LargestModel model;
    return model;
}

void BM_KsmLoad(benchmark::State& state) {
    const char* path = Model().Path();
    for (auto _ : state) {
        const platform::FileBytes file(path);
        KsmMesh mesh;
        if (!mesh.Parse(file.Bytes(), 2.0F)) state.SkipWithError("the model was refused");
        benchmark::DoNotOptimize(mesh.normals);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * FileSize));
}
BENCHMARK(BM_KsmLoad)->Unit(benchmark::kMicrosecond);

void BM_KsmLoad_Limit(benchmark::State& state) {
    const char* path = Model().Path();
    std::vector<unsigned char> bytes(FileSize);
    for (auto _ : state) {
        std::FILE* file = std::fopen(path, "rb");
        std::setvbuf(file, nullptr, _IONBF, 0);
        const std::size_t size = std::fread(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
        benchmark::DoNotOptimize(std::accumulate(bytes.data(), bytes.data() + size, 0U));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * FileSize));
}
BENCHMARK(BM_KsmLoad_Limit)->Unit(benchmark::kMicrosecond);

} // namespace
