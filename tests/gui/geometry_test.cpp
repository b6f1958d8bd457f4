// What is hit is what is drawn, on screens of every shape: the pointer is sent over the picture and must mean
// what the picture shows under its tip.
#include "support/gui_fixture.h"

#include "graphics/font.h"
#include "graphics/video.h"
#include "gui/hwindow.h"
#include "gui/items.h"
#include "gui/page_control.h"

#include <GL/gl.h>

#include <cmath>
#include <map>
#include <optional>
#include <random>

namespace {

// 4:3, 5:4, 21:9, and a size that divides badly.
constexpr std::pair<int, int> Sizes[] = {{640, 480}, {1280, 1024}, {1280, 540}, {641, 479}};

class GeometryTest : public GuiTest {
protected:
    static void SetSize(int width, int height) {
        video.SetMode(width, height, false);
        SDL_GL_SwapBuffers(); // the driver learns the window's new size with the next picture
        font.Reload();
        gui.ReloadTextures();
    }

    // Moves the pointer so that its drawn tip stands on that pixel: the picture of the unit square ends a few
    // tenths of a percent before the frame's edges.
    static void PointWithTip(int x, int y) {
        const auto away = [](int pixel, int size, double share) {
            return static_cast<int>(std::lround((pixel - size / 2.0) / share + size / 2.0));
        };
        MoveTo(away(x, video.Width(), 0.9937), away(y, video.Height(), 0.9959));
    }

    float Random(float low, float high) { return std::uniform_real_distribution<float>(low, high)(random); }

    // The style that is shown in the whole neighbourhood of a pixel; 0 for bare ground.
    static std::optional<int> StyleAround(const std::vector<Rgba>& screen, int x, int y) {
        constexpr int Reach = 5;
        const auto at = [&](int dx, int dy) {
            return screen[static_cast<std::size_t>((y + dy) * video.Width() + x + dx)];
        };
        const Rgba middle = at(0, 0);
        for (int dy = -Reach; dy <= Reach; ++dy)
            for (int dx = -Reach; dx <= Reach; ++dx)
                if (at(dx, dy) != middle) return std::nullopt;
        if (middle.blue == 0) return 0;
        const int style = (middle.red - PlainSkin::Colour(0, GuiState::Normal).red) / 15;
        if (middle.green != PlainSkin::Colour(style, GuiState::Normal).green) return std::nullopt;
        return style;
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
                ++met[*shown <= 6 ? std::min(*shown, 1) : *shown];
            }
        }
        EXPECT_GT(met[0], 500) << width << "x" << height;
        EXPECT_GT(met[8] + met[13], 200) << "windows";
        EXPECT_GT(met[14], 20) << "lists and tabs";
        EXPECT_GT(met[1], 100) << "buttons";
    }
}

// Where a window's hooks may draw, at 640 x 480, and that nothing of it lasts.
TEST_F(GeometryTest, HooksDrawInTheClientAreaUnderTheWidgets) {
    using Viewport = std::array<GLint, 4>;
    static Viewport viewport;
    static constexpr Rgba Flat = {250, 250, 0};
    struct Case {
        GUI_Window& holder;
        bool clipped;
        Viewport room;
        int left, right;
    };
    for (const Case& c : {Case{window, true, {172, 110, 300, 201}, 160, 460},
                          {panel, true, {160, 110, 320, 201}, 2, 638},     // the whole width
                          {panel, false, {160, 110, 320, 249}, 2, 638}}) { // and the whole height
        c.holder.OnDraw3D = [](GUI_Window*) { glGetIntegerv(GL_VIEWPORT, viewport.data()); };
        c.holder.OnDraw2D = [](GUI_Window*) {
            glDisable(GL_TEXTURE_2D);
            glColor4ub(Flat.red, Flat.green, Flat.blue, 255);
            glRectf(0, 0, 1, 1);
            glEnable(GL_TEXTURE_2D);
        };
        gui.Clear();
        c.holder.caption = widget.caption = "";
        c.holder.scissor = c.clipped;
        Show(c.holder, {0.25F, 0.25F, 0.5F, 0.52F});
        c.holder.AddComponent(&widget);
        Draw();
        EXPECT_EQ(viewport, c.room);
        glGetIntegerv(GL_VIEWPORT, viewport.data());
        EXPECT_EQ(viewport, (Viewport{0, 0, Width, Height}));
        EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
        EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
        EXPECT_NEAR(Find(Flat).left, c.left, 1);
        EXPECT_NEAR(Find(Flat).right, c.right, 1);
        EXPECT_TRUE(IsSeen(PlainSkin::Colour(3, GuiState::Normal)));
    }
}

// The same picture stands in the middle of every screen, as large as its shorter side lets it be.
TEST_F(GeometryTest, WindowsTextsAndPointerKeepTheirProportions) {
    std::vector<Box> first;
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
        const double scale = std::min(width / 640.0, height / 480.0);
        const Rgba pictures[] = {
            PlainSkin::Colour(13, GuiState::Hover), CellColour('Q' - ' '), {255, 255, 0}};
        for (std::size_t i = 0; i < 3; ++i) {
            const Box box = Find(pictures[i]);
            if (first.size() < 3) first.push_back(box);
            const Box& at = first[i];
            for (const auto& [edge, wanted] : {std::pair{box.left - width / 2.0, at.left - 320},
                                               {box.right - width / 2.0, at.right - 320},
                                               {box.top - height / 2.0, at.top - 240},
                                               {box.bottom - height / 2.0, at.bottom - 240}})
                EXPECT_NEAR(edge, wanted * scale, 2.5) << width << "x" << height << ": " << i;
        }
    }
    EXPECT_EQ(first[0], (Box{129, 97, 511, 383}));
}

} // namespace
