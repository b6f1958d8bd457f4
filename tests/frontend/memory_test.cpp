// What scenes take and keep of memory: nothing for a picture at rest, and the same after every visit.
#include "frontend/menu_scene.h"
#include "game/game_scene.h"
#include "support/allocations.h"
#include "support/scene_fixture.h"

#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <numeric>

namespace {

using SteeredMenu = Steered<MenuScene>;
using SteeredGame = Steered<GameScene>;

class Memory : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        pictureTime = 200;
        video.SetMode(160, 120, false); // fast to draw
    }

    // Numbers of textures, lists, samples and threads.
    static std::array<std::ptrdiff_t, 4> HeldNow() {
        std::array<std::ptrdiff_t, 4> held{};
        for (GLuint name = 1; name < 20000; ++name) {
            held[0] += glIsTexture(name);
            held[1] += glIsList(name);
        }
        held[2] = static_cast<std::ptrdiff_t>(audio.SampleCount());
        held[3] = std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
        return held;
    }

    static constexpr long Noise = 1 << 16; // bytes that drivers and libraries may take

    // Visits a scene again and again, which `leave` ends; bytes of the heap that most visits leave behind.
    template<class Scene> static long Growth(Mode mode, void (*leave)(Scene& scene)) {
        std::array<long, 5> heap{};
        std::array<std::array<std::ptrdiff_t, 4>, 5> held{};
        Scene scene;
        scene.steer = leave;
        for (std::size_t visit = 0; visit < heap.size(); ++visit) {
            GameMode = mode;
            scene.frames = 0;
            scene.GameStart(0, 0);
            EXPECT_NE(GameMode, mode);
            const struct mallinfo2 now = mallinfo2();
            heap[visit] = static_cast<long>(now.uordblks + now.hblkhd);
            held[visit] = HeldNow();
        }
        EXPECT_EQ(std::ranges::count(held, held.front()), 5) << testing::PrintToString(held);
        std::adjacent_difference(heap.begin(), heap.end(), heap.begin());
        std::sort(heap.end() - 3, heap.end()); // the driver's caches settle before
        return heap[heap.size() - 2];
    }
};

TEST_F(Memory, VisitsLeaveNothingBehind) {
    const long ofGame = Growth<SteeredGame>(Mode::Puzzle, [](SteeredGame& game) {
        if (game.frames == 5) Main::GoMenu();
    });
    const long ofMenu = Growth<SteeredMenu>(Mode::Menu, [](SteeredMenu& menu) {
        if (menu.blockMenu.GetState() == BlockMenu::Phase::Ready) Main::GoPuzzle();
    });
    EXPECT_LT(ofGame, Noise);
    EXPECT_LT(ofMenu, Noise);
}

TEST_F(Memory, PicturesOfAMenuAtRestAndOfItsQuestionTakeNone) {
    static long before;
    GameMode = Mode::Menu;
    SteeredMenu menu;
    menu.steer = [](SteeredMenu& self) {
        if (self.blockMenu.GetState() == BlockMenu::Phase::Gathering) self.frames = 0;
        if (self.frames == 50 || self.frames == 90) before = Allocations();
        if (self.frames == 80 || self.frames == 120) {
            EXPECT_EQ(Allocations(), before) << self.frames;
            EXPECT_EQ(IsShown("Are you sure?"), self.frames == 120);
        }
        if (self.frames == 81) PressKey(SDLK_ESCAPE);
        if (self.frames == 121) Main::Quit();
    };
    menu.GameStart(0, 0);
    EXPECT_GT(before, 0) << "loading took memory";
}

} // namespace
