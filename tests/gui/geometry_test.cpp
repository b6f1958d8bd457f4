// What is hit is what is drawn, on screens of every shape: the pointer is sent over the picture and must mean
// what the picture shows under its tip.
#include "support/gui_fixture.h"

#include "graphics/font.h"
#include "gui/hwindow.h"
#include "gui/items.h"
#include "gui/page_control.h"

#include <cmath>
#include <map>
#include <random>

namespace {

// 4:3, 5:4, 16:10, 16:9, 21:9, and one that divides badly.
constexpr std::pair<int, int> Sizes[] = {{640, 480},  {1280, 1024}, {1024, 640},
                                         {1366, 768}, {2560, 1080}, {641, 479}};

class GeometryTest : public GuiTest {
protected:
    GeometryTest() {
        for (GUI_Element* element :
             std::initializer_list<GUI_Element*>{&window, &panel, &second, &page, &list})
            element->caption = "";
        for (GUI_Button& button : many)
            button.caption = "";
    }

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

    // Whether one colour fills a pixel's whole neighbourhood, bare ground's or that of a style in its normal
    // state.
    static bool IsPlainAround(const std::vector<Rgba>& screen, int x, int y) {
        constexpr int Reach = 5;
        const auto at = [&](int row) { return screen.begin() + row * video.Width() + x; };
        const Rgba colour = *at(y);
        for (int row = y - Reach; row <= y + Reach; ++row)
            if (std::count(at(row) - Reach, at(row) + Reach + 1, colour) != 2 * Reach + 1) return false;
        return colour.blue == 0 || colour.green == PlainSkin::Colour(0, GuiState::Normal).green;
    }

    // Three windows over one another with buttons on all corners, some hidden, all cut by their window; a
    // page with a button, and an unrolled list that reaches over its window's edge.
    void BuildPile(unsigned number) {
        random.seed(number);
        gui.Clear();
        page.ClearComponents();
        std::array<GUI_Window*, 3> pile = {&window, &panel, &second};
        std::shuffle(pile.begin(), pile.end(), random);
        for (GUI_Window* holder : pile)
            Show(*holder,
                 {Random(0.02F, 0.4F), Random(0.05F, 0.4F), Random(0.25F, 0.55F), Random(0.2F, 0.5F)});
        control.stid = pile[0]->stid; // its empty area is its window's
        Place(control, {0.01F, 0.01F, 0.22F, 0.17F});
        pile[0]->AddComponent(&control);
        control.AddPage(&page);
        Place(page, {0.0F, 0.0F, 0.08F, 0.03F});
        for (std::size_t i = 0; i < many.size(); ++i) {
            GUI_Window& holder = *pile.at(i % pile.size());
            GUI_Button& button = many.at(i);
            button.stid = static_cast<std::uint8_t>(1 + i % 7);
            button.visible = random() % 6 != 0;
            button.pos_id = static_cast<GuiCorner>(random() % 4);
            Place(button,
                  {Random(0.03F, 0.1F), Random(0.05F, 0.08F), Random(0.03F, 0.35F), Random(0.03F, 0.35F)});
            // Nothing is pointed at above or left of a window, which may still draw there.
            button.width = std::min(button.width, holder.width - button.left);
            button.height = std::min(button.height, holder.height - button.top);
            holder.AddComponent(&button);
        }
        Place(many[0], {Random(0.0F, 0.1F), 0.04F, 0.05F, 0.02F});
        many[0].pos_id = GuiCorner::TopLeft;
        page.AddComponent(&many[0]);
        list.SetItems(" ; ; ; ");
        list.scissor = random() % 2 == 0;
        list.pos_id = static_cast<GuiCorner>(random() % 2);
        Place(list, {0.02F, Random(0.0F, 0.15F), 0.12F, 0.05F});
        pile[2]->AddComponent(&list);
        gui.SetFocus(&list);
        list.Unroll();
    }

    std::mt19937 random;
    GUI_Window window;
    GUI_HWindow panel;
    GUI_Window second;
    std::array<GUI_Button, 21> many;
    GUI_PageControl control;
    GUI_Page page;
    GUI_Items list;
};

TEST_F(GeometryTest, TheTopmostOfRandomPilesIsHitOnScreensOfEveryShape) {
    for (const auto& [width, height] : Sizes) {
        SetSize(width, height);
        std::map<GuiKind, int> met; // how often; bare ground as an element
        for (unsigned round = 0; round < 6; ++round) {
            BuildPile(round);
            MoveTo(0, 0);
            Draw();
            const std::vector<Rgba> screen = ReadScreen();
            for (int i = 0; i < 600; ++i) {
                const int x = static_cast<int>(Random(8, static_cast<float>(width) - 8));
                const int y = static_cast<int>(Random(8, static_cast<float>(height) - 8));
                if (!IsPlainAround(screen, x, y)) continue;
                PointWithTip(x, y);
                const GUI_Element* hit = gui.Hovered();
                ASSERT_EQ(screen[static_cast<std::size_t>(y * width + x)],
                          hit ? PlainSkin::Colour(hit->stid, GuiState::Normal) : Rgba{})
                    << width << "x" << height << ", round " << round << " at " << x << ", " << y;
                ++met[hit ? hit->kind : GuiKind::Element];
            }
        }
        EXPECT_GT(met[GuiKind::Element], 400) << width << "x" << height;
        EXPECT_GT(met[GuiKind::Window] + met[GuiKind::HWindow], 150);
        EXPECT_GT(met[GuiKind::Items], 15);
        EXPECT_GT(met[GuiKind::Button], 100);
    }
}

// At 640 x 480; and nothing of it lasts.
TEST_F(GeometryTest, AHookDrawsInTheClientArea) {
    static std::array<GLint, 4> room;
    for (const auto& [holder, left, width] :
         {std::tuple<GUI_Window*, int, int>{&window, 172, 300}, {&panel, 160, 320}}) {
        gui.Clear();
        holder->OnDraw3D = [](GUI_Window*) { glGetIntegerv(GL_VIEWPORT, room.data()); };
        Show(*holder, {0.25F, 0.25F, 0.5F, 0.52F});
        Draw();
        EXPECT_EQ(room, (std::array{left, 110, width, 201}));
        EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
    }
    Draw();
    glGetIntegerv(GL_VIEWPORT, room.data());
    EXPECT_EQ(room, (std::array{0, 0, Width, Height}));
}

TEST_F(GeometryTest, WindowsTextsAndPointerKeepTheirProportions) {
    Show(panel, {0.2F, 0.2F, 0.6F, 0.6F});
    many[0].caption = "Q";
    many[0].width = 0.3F;
    panel.AddComponent(&many[0]);
    gui.cursor.visible = true;
    std::vector<Box> first;
    for (const auto& [width, height] : Sizes) {
        SetSize(width, height);
        Move(0.7F, 0.7F);
        Draw();
        const double scale = std::min(width / 640.0, height / 480.0);
        const Rgba pictures[] = {
            PlainSkin::Colour(13, GuiState::Hover), CellColour('Q' - ' '), {255, 255, 0}};
        for (std::size_t i = 0; i < 3; ++i) {
            const Box box = Find(pictures[i]);
            if (first.size() < 3) first.push_back(box);
            EXPECT_NEAR(box.left - width / 2.0, (first[i].left - 320) * scale, 2.5) << width << ": " << i;
            EXPECT_NEAR(box.right - width / 2.0, (first[i].right - 320) * scale, 2.5) << width << ": " << i;
            EXPECT_NEAR(box.top - height / 2.0, (first[i].top - 240) * scale, 2.5) << height << ": " << i;
        }
    }
    EXPECT_EQ(first[0], (Box{129, 97, 511, 383}));
}

} // namespace
