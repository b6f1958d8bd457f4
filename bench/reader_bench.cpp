// The block reader's walk over a megabyte of keys, beside two well-kept libraries on the same keys, and block
// by block with keys read by name, as the game reads.
#include "config/config_reader.h"

#define SI_NO_CONVERSION // the keys are plain bytes
#include <SimpleIni.h>
#include <benchmark/benchmark.h>
#include <ini.h>

#include <string>

namespace {

constexpr int KeysInBlock = 8;
constexpr std::size_t Megabyte = 1 << 20;

std::string Keys(const char* open, const char* close) {
    std::string text;
    for (int block = 0; text.size() < Megabyte; ++block) {
        text += open;
        for (int key = 0; key < KeysInBlock; ++key)
            text += "  parameter_" + std::to_string(key) + " = " + std::to_string(block * 31 + key) + "\n";
        text += close;
    }
    return text;
}

const std::string& BlockKeys() {
    static const std::string Text = Keys("<item>\n", "</item>\n");
    return Text;
}

// The libraries' format names sections in brackets; the keys are the same.
const std::string& SectionKeys() {
    static const std::string Text = Keys("[item]\n", "");
    return Text;
}

void CountBytes(benchmark::State& state, const std::string& text) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void Walk(benchmark::State& state) {
    ConfigFile file = ConfigFile::FromMemory(BlockKeys());
    for (auto _ : state) {
        file.Seek(0);
        while (!file.AtEnd())
            benchmark::DoNotOptimize(INI_ReadLine(&file));
    }
    CountBytes(state, BlockKeys());
}

void BM_Reader(benchmark::State& state) {
    Walk(state);
}
BENCHMARK(BM_Reader);

void BM_Reader_Limit(benchmark::State& state) {
    std::size_t keys = 0;
    const auto count = [](void* user, const char*, const char*, const char*) {
        ++*static_cast<std::size_t*>(user);
        return 1;
    };
    for (auto _ : state)
        ini_parse_string(SectionKeys().c_str(), count, &keys);
    benchmark::DoNotOptimize(keys);
    CountBytes(state, SectionKeys());
}
BENCHMARK(BM_Reader_Limit);

void BM_ReaderSimpleIni(benchmark::State& state) {
    Walk(state);
}
BENCHMARK(BM_ReaderSimpleIni);

void BM_ReaderSimpleIni_Limit(benchmark::State& state) {
    for (auto _ : state) {
        CSimpleIniA ini;
        ini.SetMultiKey();
        ini.LoadData(SectionKeys());
        benchmark::DoNotOptimize(ini.GetSectionSize("item"));
    }
    CountBytes(state, SectionKeys());
}
BENCHMARK(BM_ReaderSimpleIni_Limit);

void BM_ReaderByName(benchmark::State& state) {
    static constexpr const char* Names[KeysInBlock] = {"parameter_0", "parameter_1", "parameter_2",
                                                       "parameter_3", "parameter_4", "parameter_5",
                                                       "parameter_6", "parameter_7"};
    ConfigFile file = ConfigFile::FromMemory(BlockKeys());
    for (auto _ : state) {
        file.Seek(0);
        while (INI_FindNextBlock("item", &file)) {
            for (const char* name : Names)
                benchmark::DoNotOptimize(INI_ReadInt(name, &file));
            INI_SkipBlock("item", &file);
        }
    }
    CountBytes(state, BlockKeys());
}
BENCHMARK(BM_ReaderByName);

} // namespace
