// The rules' update beside a plain array model of the same rules: the same pieces, keys and frame times.
#include "base/frame_clock.h"
#include "plain_game.h"
#include "play/kolvex.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <random>
#include <vector>

namespace {

constexpr int FramesInRun = 1 << 16;

struct Frame {
    std::uint8_t milliseconds;
    std::uint8_t key;
};

// Frames of about 60 a second and a player who presses a key every fourth of them.
const std::vector<Frame>& Frames() {
    static const std::vector<Frame> Made = [] {
        std::mt19937 random(20);
        std::vector<Frame> frames(FramesInRun);
        for (Frame& frame : frames) {
            frame.milliseconds = static_cast<std::uint8_t>(10 + random() % 14);
            frame.key = static_cast<std::uint8_t>(random() % 32);
        }
        return frames;
    }();
    return Made;
}

int Deal() {
    return std::rand() % 7;
}

void Press(Kolvex& game, int key) {
    switch (key) {
    case 0:
        return game.LeftPressed();
    case 1:
        return game.LeftReleased();
    case 2:
        return game.RightPressed();
    case 3:
        return game.RightReleased();
    case 4:
        return game.SoftDropPressed();
    case 5:
        return game.SoftDropReleased();
    case 6:
        return game.DropPressed();
    case 7:
        return game.RotatePressed();
    default:
        return;
    }
}

void Press(PlainGame& game, int key) {
    switch (key) {
    case 0:
        return game.PressLeft();
    case 1:
        return game.Release('L');
    case 2:
        return game.PressRight();
    case 3:
        return game.Release('R');
    case 4:
        return game.PressSoftDrop();
    case 5:
        return game.Release('S');
    case 6:
        return game.PressDrop();
    case 7:
        game.turnAsked = true;
        return;
    default:
        return;
    }
}

void BM_RulesUpdate(benchmark::State& state) {
    Kolvex game;
    for (auto _ : state) {
        std::srand(1);
        game.NewGame();
        for (const Frame& frame : Frames()) {
            Press(game, frame.key);
            frameClock.frameDelta = frame.milliseconds;
            game.Update();
            if (game.IsGameOver()) game.NewGame();
        }
        benchmark::DoNotOptimize(game.GetScore());
    }
    state.SetItemsProcessed(state.iterations() * FramesInRun);
}
BENCHMARK(BM_RulesUpdate);

void BM_RulesUpdate_Limit(benchmark::State& state) {
    PlainGame game(Deal);
    for (auto _ : state) {
        std::srand(1);
        game.NewGame();
        for (const Frame& frame : Frames()) {
            Press(game, frame.key);
            game.Update(frame.milliseconds);
            if (game.over) game.NewGame();
        }
        benchmark::DoNotOptimize(game.score);
    }
    state.SetItemsProcessed(state.iterations() * FramesInRun);
}
BENCHMARK(BM_RulesUpdate_Limit);

} // namespace
