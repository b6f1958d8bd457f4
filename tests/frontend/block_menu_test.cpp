// The menu's boxes: gathering and locking, growing, picking in a real window, and the glow behind them.
#include "frontend/block_menu.h"
#include "graphics/font.h"
#include "graphics/model_store.h"
#include "gui/manager.h"
#include "support/gl_fixture.h"
#include "world/camera.h"

#include <algorithm>
#include <span>

namespace {

class Boxes : public GlTest {
protected:
    void SetUp() override {
        folder.LinkData({"models", "textures"});
        glEnable(GL_DEPTH_TEST);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        models.Init();
        ASSERT_TRUE(models.AddKsm("models/box.ksm", "textures/floor1e.png"));
        menu.Init(&models.Ksm(0), &models.textures);
        menu.Reset();
        camera.SetPosition(0.0F, 0.0F, -8.0F);
        camera.SetAngles(0.0F, 0.0F);
    }
    void TearDown() override {
        menu.Release();
        models.Destroy();
    }

    // Number of frames of that length until the boxes lock.
    int GatherAll(std::uint32_t milliseconds = 20) {
        int frames = 0;
        for (; menu.GetState() == BlockMenu::Phase::Gathering; ++frames)
            menu.Update(milliseconds);
        return frames;
    }
    std::vector<GuiPoint> Stops() const {
        std::vector<GuiPoint> stops;
        menu.AddStops(stops);
        return stops;
    }
    // Whether the hovered box, which alone is red, is drawn within a pixel of the place.
    bool IsRedNear(float x, float y) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        camera.Apply();
        menu.DrawBoxes();
        bool red = false;
        for (int i = 0; i < 9; ++i) {
            const Rgba pixel = PixelAt(static_cast<int>(x * 640.0F) - 1 + i % 3,
                                       Height - 2 - static_cast<int>(y * 480.0F) + i / 3);
            red = red || (pixel.red > 0 && pixel.green == 0);
        }
        return red;
    }

    QEV_MD2loader models;
    BlockMenu menu;
};

// Speed grows by a factor a frame, so that the time depends on the frames' length.
TEST_F(Boxes, GatherFasterAndFasterUntilTheyLock) {
    for (const auto& [delta, frames] : {std::pair{16U, 213}, {20U, 171}, {200U, 20}}) {
        menu.Reset();
        EXPECT_EQ(GatherAll(delta), frames) << delta;
        constexpr std::pair<float, float> Places[] = {{1, 0}, {0, 0}, {0, -1}, {-1, 0}}; // a T
        for (std::size_t i = 0; i < BlockMenu::ItemCount; ++i)
            EXPECT_EQ(std::pair(menu.GetItem(i).x, menu.GetItem(i).y), Places[i]) << i;
        EXPECT_TRUE(gui.cursor.visible);
        const float before = Stops().front().x;
        menu.Update(1500);
        EXPECT_FLOAT_EQ(menu.logoAlpha, 0.375F) << "the logos fade in for four seconds";
        EXPECT_NE(Stops().front().x, before) << "and the boxes turn";
    }
}

TEST_F(Boxes, PickingFindsTheBoxThatIsSeenThere) {
    EXPECT_TRUE(Stops().empty()) << "while they gather";
    menu.Pick(0.5F, 0.5F);
    EXPECT_EQ(menu.GetState(), BlockMenu::Phase::Gathering);
    GatherAll();
    std::array<int, BlockMenu::ItemCount> picked{};
    for (int turn = 0; turn < 20; ++turn) {
        menu.SetState(BlockMenu::Phase::Frozen);
        menu.Update(190);
        menu.SetState(BlockMenu::Phase::Ready);
        const std::vector<GuiPoint> stops = Stops();
        for (std::size_t i = 0; i + 1 < stops.size(); ++i) {
            const auto [x, y] = stops[i];
            menu.Pick(x, y);
            ASSERT_NE(menu.GetHovered(), MenuItem::None);
            ASSERT_EQ(menu.GetState(), BlockMenu::Phase::Hovered);
            ++picked[static_cast<std::size_t>(menu.GetHovered())];
            EXPECT_TRUE(IsRedNear(x, y)) << turn << " " << i;
        }
    }
    for (const int count : picked)
        EXPECT_TRUE(count > 5 && count <= 20) << "each is seen at some time, and has a stop of its own";
    menu.Pick(Stops().back().x, Stops().back().y);
    EXPECT_EQ(menu.GetHovered(), MenuItem::None) << "beside them";
    EXPECT_EQ(menu.GetState(), BlockMenu::Phase::Ready);
    menu.SetHovered(MenuItem::Quit);
    for (int i = 0; i < 100; ++i)
        menu.Update(10);
    menu.SetState(BlockMenu::Phase::Frozen);
    menu.Pick(0.02F, 0.02F);
    EXPECT_EQ(menu.GetHovered(), MenuItem::Quit) << "what was chosen stays";
    EXPECT_NEAR(menu.GetItem(3).scale, menu.GetItem(0).scale + 0.4F, 0.04F) << "and has grown";
}

TEST_F(Boxes, TheGlowKeepsASmallCopyAndLeavesTheScreenClear) {
    GatherAll();
    camera.Apply();
    menu.glow.BeginCapture();
    menu.DrawBoxes();
    menu.glow.EndCapture();
    EXPECT_EQ(Light(), 0.0);
    double last = 0.0;
    for (const int copies : {0, 1, 3, 10}) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        menu.glow.Draw(copies);
        const double light = Light();
        EXPECT_TRUE(copies == 0 ? light == 0.0 : light > last * 1.5) << copies;
        last = light;
    }
}

// In real pixels, by whole steps, so that letters stay sharp and are as large to the eye.
TEST_F(Boxes, NamesGrowWithTheScreensHeight) {
    menu.SetHovered(MenuItem::Quit);
    menu.SetState(BlockMenu::Phase::Hovered);
    gui.cursor.x = gui.cursor.y = 0.5F;
    for (const auto& [width, height, side] :
         {std::tuple{640, 480, 16.0F}, {1024, 768, 16.0F}, {1280, 720, 16.0F}, {1280, 960, 32.0F}}) {
        video.SetMode(width, height, false);
        font.Load("font/basic4.png");
        menu.glow.Create();
        const std::vector<Vertex> drawn = Record([this] { menu.Draw(); });
        ASSERT_GT(drawn.size(), 6U);
        const auto [left, right] = std::ranges::minmax(std::span(drawn).last(6), {}, &Vertex::x);
        EXPECT_NEAR(right.x - left.x, side, 0.01F) << width << " x " << height << ", the last letter";
        font.Destroy();
    }
}

// One after the other, with pictures of whole milliseconds.
TEST(GlowLevel, IsFullOnMachinesThatKeepUp) {
    GlowLevel level;
    level.Reset();
    for (const auto& [hertz, seconds, reached] : {std::tuple{50.0, 1, 0.0F},
                                                  {60.0, 5, 20.0F},
                                                  {50.0, 6, 1.0F},
                                                  {59.94, 5, 20.0F},
                                                  {250.0, 2, 20.0F}}) {
        int shown = 0;
        for (int i = 1; i <= static_cast<int>(hertz) * seconds; ++i) {
            const int now = static_cast<int>(i * 1000.0 / hertz);
            level.Update(static_cast<std::uint32_t>(now - shown));
            shown = now;
        }
        EXPECT_EQ(level.Value(), reached) << hertz;
    }
}

} // namespace
