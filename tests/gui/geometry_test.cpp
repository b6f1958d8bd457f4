// What is hit is what is drawn: rectangles found by pointing against rectangles found in the picture.
#include "support/gui_fixture.h"

#include "graphics/video.h"
#include "gui/hwindow.h"
#include "gui/items.h"
#include "gui/page_control.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <random>
#include <tuple>

namespace {

// Where the matrix of the GUI puts a place of the screen, as a share of the screen: the unit square ends a
// few tenths of a percent before the screen's edges.
constexpr double CoverX = 1.53 / (2 * 0.57735026919 * 4 / 3);
constexpr double CoverY = 1.15 / (2 * 0.57735026919);

double OnScreen(double place, double cover) {
    return 0.5 + (place - 0.5) * cover;
}

struct Span {
    double low = 2.0;
    double high = -1.0;
    bool IsEmpty() const { return high <= low; }
};

class GeometryTest : public GuiTest {
protected:
    // The element's extent along one axis, in GUI units, found by pointing at every pixel of a line.
    Span Pointed(const GUI_Element& element, bool alongX, double across) const {
        Span span;
        const int length = alongX ? video.Width() : video.Height();
        for (int i = 0; i < length; ++i) {
            const int other = static_cast<int>(across * (alongX ? video.Height() : video.Width()));
            MoveTo(alongX ? i : other, alongX ? other : i);
            if (gui.Hovered() != &element) continue;
            span.low = std::min(span.low, static_cast<double>(i) / length);
            span.high = std::max(span.high, static_cast<double>(i + 1) / length);
        }
        return span;
    }

    // A drawn edge, in pixels, is where the pointer's edge is, either as a shot is drawn or as a scissor
    // cuts; within a pixel.
    static void ExpectEdge(int drawn, double pointed, int length, double cover, const std::string& what) {
        const double asShot = OnScreen(pointed, cover) * length;
        const double asScissor = pointed * length;
        EXPECT_LE(std::min(std::abs(drawn - asShot), std::abs(drawn - asScissor)), 1.51)
            << what << ": drawn at " << drawn << ", pointed at " << asShot << " or " << asScissor;
    }

    // Compares the picture of the widget's style with where it is hit; `limit` is what else cuts the drawing.
    void Compare(const GUI_Component& element, const GuiEdges& limit, const std::string& what) {
        MoveTo(0, 0);
        Draw();
        const Box box = Find(PlainSkin::Colour(element.stid, GuiState::Normal));
        const GuiEdges edges = HitRect(gui.GetStyles(), element);
        const double middleX = (edges.left + std::min(edges.right, limit.right)) / 2;
        const double middleY = (edges.top + std::min(edges.bottom, limit.bottom)) / 2;
        Span x = Pointed(element, true, middleY);
        Span y = Pointed(element, false, middleX);
        x = {std::max<double>(x.low, limit.left), std::min<double>(x.high, limit.right)};
        y = {std::max<double>(y.low, limit.top), std::min<double>(y.high, limit.bottom)};
        ASSERT_EQ(box.IsEmpty(), x.IsEmpty() || y.IsEmpty()) << what;
        if (box.IsEmpty()) return;
        ++compared;
        ExpectEdge(box.left, x.low, video.Width(), CoverX, what + " left");
        ExpectEdge(box.right, x.high, video.Width(), CoverX, what + " right");
        ExpectEdge(box.top, y.low, video.Height(), CoverY, what + " top");
        ExpectEdge(box.bottom, y.high, video.Height(), CoverY, what + " bottom");
    }

    float Random(float low, float high) { return std::uniform_real_distribution<float>(low, high)(random); }

    void ShowSomewhere(GUI_Window& placed) {
        placed.caption = "";
        Show(placed, {Random(0.02F, 0.4F), Random(0.05F, 0.4F), Random(0.25F, 0.55F), Random(0.2F, 0.5F)});
    }

    // The client area by which a window cuts its children while it draws them.
    static GuiEdges ClientOf(const GUI_Window& placed) {
        return {placed.left, placed.top - PlainSkin::RightY, placed.left + placed.width - PlainSkin::RightX,
                placed.top + placed.height - PlainSkin::RightY};
    }

    // The style that is shown, in its normal state, in the whole neighbourhood of a pixel; 0 for bare ground.
    static std::optional<int> StyleAround(const std::vector<Rgba>& screen, int x, int y) {
        constexpr int Reach = 4;
        const auto at = [&](int dx, int dy) {
            const Rgba pixel = screen[static_cast<std::size_t>((y + dy) * Width + x + dx)];
            return std::tuple(pixel.red, pixel.green, pixel.blue);
        };
        for (int dy = -Reach; dy <= Reach; ++dy)
            for (int dx = -Reach; dx <= Reach; ++dx)
                if (at(dx, dy) != at(0, 0)) return std::nullopt;
        for (int style = 1; style <= 15; ++style) {
            const Rgba colour = PlainSkin::Colour(style, GuiState::Normal);
            if (at(0, 0) == std::tuple(colour.red, colour.green, colour.blue)) return style;
        }
        return 0;
    }

    std::mt19937 random{7};
    int compared = 0;
    GUI_Window window;
    GUI_HWindow panel;
    GUI_Window second;
    std::array<GUI_Button, 21> many;
    GUI_Button widget;
    GUI_PageControl control;
    GUI_Page page;
    GUI_Items list;
};

TEST_F(GeometryTest, RandomWidgetsInRandomWindows) {
    widget.caption = "";
    for (int round = 0; round < 40; ++round) {
        gui.Clear();
        GUI_Window& container = round % 2 ? window : panel;
        ShowSomewhere(container);
        container.AddComponent(&widget);
        widget.scissor = round % 3 != 0;
        container.scissor = round % 7 != 0 || !widget.scissor;
        widget.pos_id = static_cast<GuiCorner>(round / 3 % 4);
        Place(widget, {Random(0.0F, 0.2F), Random(0.0F, 0.2F), Random(0.03F, 0.4F), Random(0.03F, 0.3F)});
        // Nothing is pointed at above or left of a window, which may still draw there.
        widget.width = std::min(widget.width, container.width - widget.left);
        widget.height = std::min(widget.height, container.height - widget.top);
        // A clipped widget's own rectangle must tell where it is cut.
        const bool clipped = widget.scissor && container.scissor;
        Compare(widget, clipped ? GuiEdges{-1, -1, 2, 2} : ClientOf(container),
                "round " + std::to_string(round) + ", anchor " +
                    std::to_string(static_cast<int>(widget.pos_id)));
    }
    EXPECT_GT(compared, 25);
}

TEST_F(GeometryTest, RandomWidgetsOnPages) {
    widget.caption = page.caption = list.caption = "";
    for (int round = 0; round < 20; ++round) {
        gui.Clear();
        page.ClearComponents();
        ShowSomewhere(window);
        window.AddComponent(&control);
        control.AddPage(&page);
        page.AddComponent(&list); // unclipped, it must not free what is drawn after it
        page.AddComponent(&widget);
        control.left = Random(0.0F, 0.1F);
        control.top = Random(0.0F, 0.05F);
        // The control draws over its window's edge where it is larger, so it is not.
        control.width = std::min(Random(0.15F, 0.5F), window.width - control.left - 2 * PlainSkin::RightX);
        control.height =
            std::min(Random(0.12F, 0.4F), window.height - control.top - PlainSkin::LeftY - PlainSkin::RightY);
        Place(widget, {Random(0.0F, 0.1F), Random(0.05F, 0.1F), Random(0.03F, 0.4F), Random(0.03F, 0.3F)});
        // The control cuts with its own margins, which the plain skin makes those of the window.
        const float left = window.left + PlainSkin::LeftX + control.left;
        const float bottom = window.top + PlainSkin::LeftY + control.top + control.height - PlainSkin::RightY;
        Compare(widget, {left, bottom - control.height, left + control.width, bottom},
                "round " + std::to_string(round));
    }
    EXPECT_GT(compared, 8);
}

// Windows and widgets over one another: the pointer means what the picture shows on top.
TEST_F(GeometryTest, TheTopmostOfRandomPilesIsHit) {
    int met = 0;
    for (int round = 0; round < 12; ++round) {
        gui.Clear();
        std::array<GUI_Window*, 3> pile = {&window, &panel, &second};
        std::shuffle(pile.begin(), pile.end(), random);
        for (GUI_Window* holder : pile)
            ShowSomewhere(*holder);
        for (std::size_t i = 0; i < many.size(); ++i) {
            GUI_Button& button = many[i];
            button.caption = "";
            button.stid = static_cast<std::uint8_t>(1 + i % 7);
            button.visible = random() % 6 != 0;
            button.pos_id = static_cast<GuiCorner>(random() % 4);
            Place(button,
                  {Random(0.0F, 0.1F), Random(0.0F, 0.1F), Random(0.03F, 0.15F), Random(0.03F, 0.1F)});
            pile.at(i % pile.size())->AddComponent(&button);
        }
        MoveTo(0, 0);
        Draw();
        const std::vector<Rgba> screen = ReadScreen();
        for (int i = 0; i < 1500; ++i) {
            const int x = static_cast<int>(Random(8, Width - 8));
            const int y = static_cast<int>(Random(8, Height - 8));
            const std::optional<int> shown = StyleAround(screen, x, y);
            if (!shown) continue; // an edge runs there
            MoveTo(x, y);
            const GUI_Element* hit = gui.Hovered();
            EXPECT_EQ(hit ? hit->stid : 0, *shown) << "round " << round << " at " << x << ", " << y;
            met += *shown >= 1 && *shown <= 7;
        }
    }
    EXPECT_GT(met, 300);
}

TEST_F(GeometryTest, WidgetsHangOnTheClientAreaOrOnTheFrame) {
    Show(panel, {0.1F, 0.1F, 0.5F, 0.5F});
    panel.AddComponent(&widget);
    Place(widget, {0.03F, 0.01F, 0.1F, 0.05F});
    const auto expect = [&](GuiCorner corner, float left, float top) {
        widget.pos_id = corner;
        const GuiRect rect = DrawnRect(gui.GetStyles(), widget);
        EXPECT_NEAR(rect.left, left, 1e-6) << static_cast<int>(corner);
        EXPECT_NEAR(rect.top, top, 1e-6) << static_cast<int>(corner);
    };
    for (const bool clipped : {false, true}) {
        widget.scissor = clipped;
        const float x = clipped ? PlainSkin::LeftX : 0.0F;
        const float y = clipped ? PlainSkin::LeftY : 0.0F;
        expect(GuiCorner::TopLeft, 0.13F + x, 0.11F + y);
        expect(GuiCorner::TopRight, 0.47F + x, 0.11F + y);
        expect(GuiCorner::BottomRight, 0.47F + x, 0.54F + y);
        expect(GuiCorner::BottomLeft, 0.13F + x, 0.54F + y);
    }
}

// Where a window's hooks may draw, at 640 x 480, and that nothing of it lasts.
TEST_F(GeometryTest, HooksDrawInTheClientAreaUnderTheWidgets) {
    using Viewport = std::array<GLint, 4>;
    static Viewport viewport;
    static constexpr Rgba Flat = {250, 250, 0};
    window.OnDraw3D = panel.OnDraw3D = [](GUI_Window*) {
        glGetIntegerv(GL_VIEWPORT, viewport.data());
        EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    };
    window.OnDraw2D = panel.OnDraw2D = [](GUI_Window*) {
        glDisable(GL_TEXTURE_2D);
        glColor4ub(Flat.red, Flat.green, Flat.blue, 255);
        glRectf(0, 0, 1, 1);
        glEnable(GL_TEXTURE_2D);
    };
    widget.caption = "";
    struct Case {
        GUI_Window& holder;
        bool scissor;
        Viewport room;
        int left, right; // of what is painted
    };
    for (const Case& c : {Case{window, true, {172, 110, 300, 201}, 160, 460},
                          Case{panel, true, {160, 110, 320, 201}, 2, 638},     // the whole width
                          Case{panel, false, {160, 110, 320, 249}, 2, 638}}) { // and the whole height
        gui.Clear();
        c.holder.caption = "";
        c.holder.scissor = c.scissor;
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

// The pointer that the player sees is the drawn one: its tip and the widgets' edges must meet.
TEST_F(GeometryTest, PointerAndWidgetsAgreeAtEveryScreenSize) {
    widget.caption = "";
    for (const auto& [width, height] : {std::pair{640, 480}, {1024, 768}, {1280, 960}, {1280, 720}}) {
        video.SetMode(width, height, false);
        SDL_GL_SwapBuffers(); // the driver learns the window's new size with the next picture
        gui.ReloadTextures();
        gui.Clear();
        panel.caption = "";
        Show(panel, {0, 0, 1, 1});
        panel.AddComponent(&widget);
        for (const GuiPoint place : {GuiPoint{0.05F, 0.05F}, {0.4F, 0.5F}, {0.72F, 0.82F}}) {
            widget.Place(place.x, place.y);
            gui.cursor.visible = false;
            MoveTo(0, 0);
            Draw();
            const Box button = Find(PlainSkin::Colour(3, GuiState::Normal));
            ASSERT_FALSE(button.IsEmpty());
            const auto inX =
                static_cast<int>((place.x + PlainSkin::LeftX + 0.05F) * static_cast<float>(width));
            const auto inY =
                static_cast<int>((place.y + PlainSkin::LeftY + 0.02F) * static_cast<float>(height));
            gui.cursor.visible = true;
            // Where the tip is drawn as it comes onto the widget.
            const auto tipFrom = [&](int x, int y, int dx, int dy) {
                for (MoveTo(x, y); gui.Hovered() != &widget && x < width && y < height; MoveTo(x, y))
                    x += dx, y += dy;
                Draw();
                return Find({255, 255, 0});
            };
            EXPECT_NEAR(tipFrom(0, inY, 1, 0).left, button.left, 1.01) << width << "x" << height;
            const Box tip = tipFrom(inX, 0, 0, 1);
            EXPECT_NEAR(tip.top, button.top, 1.01) << width << "x" << height;
            EXPECT_NEAR(tip.left, OnScreen(static_cast<double>(inX) / width, CoverX) * width, 1.01)
                << "the picture fills a wide screen too";
        }
    }
    video.SetMode(Width, Height, false);
    SDL_GL_SwapBuffers();
}

} // namespace
