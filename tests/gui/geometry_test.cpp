// What is hit is what is drawn, on screens of every shape: the pointer is sent over the picture and must mean
// what the picture shows under its tip.
#include "support/gui_fixture.h"

#include "graphics/font.h"
#include "graphics/middle_frame.h"
#include "graphics/video.h"
#include "gui/hwindow.h"
#include "gui/items.h"
#include "gui/page_control.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <random>

namespace {

// 5:4, 4:3, 16:10, 16:9 and 21:9, and sizes that divide badly.
constexpr std::pair<int, int> Sizes[] = {{1280, 1024}, {640, 480},  {1024, 640},
                                         {1366, 768},  {1280, 540}, {641, 479}};

// The share of the middle frame that the unit square covers: it ends a few tenths of a percent before the
// edges.
constexpr double CoverX = 1.53 / (2 * 0.57735026919 * 4 / 3);
constexpr double CoverY = 1.15 / (2 * 0.57735026919);

MiddleFrame Frame() {
    return MiddleFrame::Of(video.Width(), video.Height());
}

class GeometryTest : public GuiTest {
protected:
    void TearDown() override {
        SetSize(Width, Height);
        GuiTest::TearDown();
    }

    static void SetSize(int width, int height) {
        video.SetMode(width, height, false);
        SDL_GL_SwapBuffers(); // the driver learns the window's new size with the next picture
        font.Reload();
        gui.ReloadTextures();
    }

    // Moves the pointer so that its drawn tip stands on that pixel.
    static void PointWithTip(int x, int y) {
        const MiddleFrame frame = Frame();
        MoveTo(static_cast<int>(std::lround(frame.PixelX((frame.ShareX(x) - 0.5) / CoverX + 0.5))),
               static_cast<int>(std::lround(frame.PixelY((frame.ShareY(y) - 0.5) / CoverY + 0.5))));
    }

    float Random(float low, float high) { return std::uniform_real_distribution<float>(low, high)(random); }

    // The style that is shown in the whole neighbourhood of a pixel; 0 for bare ground.
    static std::optional<int> StyleAround(const std::vector<Rgba>& screen, int x, int y) {
        constexpr int Reach = 5;
        const auto at = [&](int dx, int dy) {
            return screen[static_cast<std::size_t>((y + dy) * video.Width() + x + dx)];
        };
        const auto same = [](Rgba one, Rgba other) {
            return one.red == other.red && one.green == other.green && one.blue == other.blue;
        };
        for (int dy = -Reach; dy <= Reach; ++dy)
            for (int dx = -Reach; dx <= Reach; ++dx)
                if (!same(at(dx, dy), at(0, 0))) return std::nullopt;
        for (int style = 1; style <= 15; ++style)
            if (same(at(0, 0), PlainSkin::Colour(style, GuiState::Normal))) return style;
        return same(at(0, 0), {0, 0, 0}) ? std::optional(0) : std::nullopt;
    }

    // Three windows over one another with widgets of all anchors, cut by their window or hidden; one with a
    // page of widgets, one with an unrolled list that reaches over its edge.
    void BuildPile() {
        gui.Clear();
        page.ClearComponents();
        std::array<GUI_Window*, 3> pile = {&window, &panel, &second};
        std::shuffle(pile.begin(), pile.end(), random);
        for (GUI_Window* holder : pile) {
            holder->caption = "";
            Show(*holder,
                 {Random(0.02F, 0.4F), Random(0.05F, 0.4F), Random(0.25F, 0.55F), Random(0.2F, 0.5F)});
        }
        control.caption = page.caption = list.caption = "";
        control.stid = ControlStyle;
        controlHolder = pile[0];
        Place(control, {0.01F, 0.01F, 0.17F, 0.1F});
        pile[0]->AddComponent(&control);
        control.AddPage(&page);
        Place(page, {0.0F, 0.0F, 0.08F, 0.03F});
        for (std::size_t i = 0; i < many.size(); ++i)
            AddButton(*pile.at(i % pile.size()), many.at(i), i);
        Place(many[20], {Random(0.0F, 0.1F), 0.04F, 0.05F, 0.02F});
        many[20].pos_id = GuiCorner::TopLeft;
        page.AddComponent(&many[20]);
        list.SetItems(" ; ; ; ");
        list.scissor = random() % 2 == 0;
        list.pos_id = static_cast<GuiCorner>(random() % 2);
        Place(list, {0.02F, Random(0.0F, 0.15F), 0.12F, 0.05F});
        pile[2]->AddComponent(&list);
        gui.SetFocus(&list);
        list.Unroll();
    }

    void AddButton(GUI_Window& holder, GUI_Button& button, std::size_t number) {
        button.caption = "";
        button.stid = static_cast<std::uint8_t>(1 + number % 7);
        button.visible = random() % 6 != 0;
        button.scissor = true;
        button.pos_id = static_cast<GuiCorner>(random() % 4);
        Place(button,
              {Random(0.03F, 0.1F), Random(0.05F, 0.08F), Random(0.03F, 0.35F), Random(0.03F, 0.35F)});
        // Nothing is pointed at above or left of a window, which may still draw there.
        button.width = std::min(button.width, holder.width - button.left);
        button.height = std::min(button.height, holder.height - button.top);
        holder.AddComponent(&button);
    }

    static constexpr std::uint8_t ControlStyle = 12;
    const GUI_Window* controlHolder = nullptr;
    std::mt19937 random{7};
    GUI_Window window;
    GUI_HWindow panel;
    GUI_Window second;
    std::array<GUI_Button, 21> many;
    GUI_Button widget;
    GUI_PageControl control;
    GUI_Page page;
    GUI_Items list;
};

TEST_F(GeometryTest, TheTopmostOfRandomPilesIsHitOnScreensOfEveryShape) {
    for (const auto& [width, height] : Sizes) {
        SetSize(width, height);
        std::map<int, int> met;
        for (int round = 0; round < 8; ++round) {
            BuildPile();
            MoveTo(0, 0);
            Draw();
            const std::vector<Rgba> screen = ReadScreen();
            for (int i = 0; i < 600; ++i) {
                const int x = static_cast<int>(Random(8, static_cast<float>(width) - 8));
                const int y = static_cast<int>(Random(8, static_cast<float>(height) - 8));
                const std::optional<int> shown = StyleAround(screen, x, y);
                if (!shown) continue; // an edge runs there
                PointWithTip(x, y);
                const GUI_Element* hit = gui.Hovered();
                // A page control's own empty area belongs to its window.
                const int wanted = *shown == ControlStyle ? controlHolder->stid : *shown;
                ASSERT_EQ(hit ? hit->stid : 0, wanted)
                    << width << "x" << height << ", round " << round << " at " << x << ", " << y;
                ++met[*shown];
            }
        }
        EXPECT_GT(met[0], 500) << width << "x" << height;
        EXPECT_GT(met[8] + met[13], 200) << "windows";
        EXPECT_GT(met[14], 20) << "lists and tabs";
        EXPECT_GT(met[1] + met[2] + met[3] + met[4] + met[5] + met[6], 100) << "buttons";
    }
}

// Where a window's hooks may draw, at 640 x 480, and that nothing of it lasts.
TEST_F(GeometryTest, HooksDrawInTheClientAreaUnderTheWidgets) {
    using Viewport = std::array<GLint, 4>;
    static Viewport viewport;
    static constexpr Rgba Flat = {250, 250, 0};
    widget.caption = "";
    const auto use = [&](GUI_Window& holder, bool clipped, const Viewport& room, int left, int right) {
        holder.OnDraw3D = [](GUI_Window*) { glGetIntegerv(GL_VIEWPORT, viewport.data()); };
        holder.OnDraw2D = [](GUI_Window*) {
            glDisable(GL_TEXTURE_2D);
            glColor4ub(Flat.red, Flat.green, Flat.blue, 255);
            glRectf(0, 0, 1, 1);
            glEnable(GL_TEXTURE_2D);
        };
        gui.Clear();
        holder.caption = "";
        holder.scissor = clipped;
        Show(holder, {0.25F, 0.25F, 0.5F, 0.52F});
        holder.AddComponent(&widget);
        Draw();
        EXPECT_EQ(viewport, room);
        glGetIntegerv(GL_VIEWPORT, viewport.data());
        EXPECT_EQ(viewport, (Viewport{0, 0, Width, Height}));
        EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
        EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
        EXPECT_NEAR(Find(Flat).left, left, 1);
        EXPECT_NEAR(Find(Flat).right, right, 1);
        EXPECT_TRUE(IsSeen(PlainSkin::Colour(3, GuiState::Normal)));
    };
    use(window, true, {172, 110, 300, 201}, 160, 460);
    use(panel, true, {160, 110, 320, 201}, 2, 638);  // the whole width
    use(panel, false, {160, 110, 320, 249}, 2, 638); // and the whole height
}

// Square pictures stay square, in the middle, where the pointer and the clip rectangles are.
TEST_F(GeometryTest, WindowsTextsAndPointerKeepTheirProportions) {
    for (const auto& [width, height] : Sizes) {
        SetSize(width, height);
        gui.Clear();
        panel.caption = "";
        Show(panel, {0.2F, 0.2F, 0.6F, 0.6F});
        widget.caption = "Q";
        widget.width = 0.3F;
        panel.AddComponent(&widget);
        gui.cursor.visible = true;
        Move(0.7F, 0.7F);
        Draw();
        const MiddleFrame frame = Frame();
        EXPECT_NEAR(frame.width / frame.height, 4.0 / 3.0, 1e-9);
        EXPECT_TRUE(std::abs(frame.width - width) < 1e-9 || std::abs(frame.height - height) < 1e-9);
        const Box body = Find(PlainSkin::Colour(13, GuiState::Hover));
        EXPECT_NEAR(body.right - body.left, 0.6 * CoverX * frame.width, 1.5) << width << "x" << height;
        EXPECT_NEAR((body.right + body.left) / 2.0, width / 2.0, 1.0) << width << "x" << height;
        const Box letter = Find(CellColour('Q' - ' '));
        EXPECT_NEAR(letter.right - letter.left, frame.width / 40.0, 2.5) << "16 of 640";
        EXPECT_NEAR(letter.bottom - letter.top, frame.height / 30.0, 2.5) << "16 of 480";
        EXPECT_NEAR(letter.left, frame.PixelX(0.2 + PlainSkin::LeftX + PlainSkin::TextX), 1.5);
        const Box tip = Find({255, 255, 0});
        EXPECT_NEAR(tip.right - tip.left, 0.02 * CoverX * frame.width, 1.5);
        EXPECT_NEAR(tip.left, frame.PixelX(0.5 + 0.2 * CoverX), 1.5);
        EXPECT_NEAR(tip.top, frame.PixelY(0.5 + 0.2 * CoverY), 1.5);
    }
}

} // namespace
