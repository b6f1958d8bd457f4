// The game's own skin: whole, readable, and wide enough for every caption of the game's windows.
#include "frontend/menu_scene.h"
#include "game/game_scene.h"
#include "graphics/font.h"
#include "gui/check_box.h"
#include "gui/hwindow.h"
#include "gui/items.h"
#include "gui/text_entry.h"
#include "stage/world_scene.h"
#include "support/gui_fixture.h"

#include <algorithm>

#include <cmath>

namespace {

// Contrast as the web's accessibility guidelines define it; channels 0 to 1.
double Luminance(double red, double green, double blue) {
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(red) + 0.7152 * linear(green) + 0.0722 * linear(blue);
}

// Of a text with a pixel of what lies under it, to which `added` may have been added.
double Contrast(double text, Rgba ground) {
    const double other = Luminance(ground.red / 255.0, ground.green / 255.0, ground.blue / 255.0);
    return (std::max(text, other) + 0.05) / (std::min(text, other) + 0.05);
}

class RealSkinTest : public GuiTest {
protected:
    RealSkinTest() {
        folder.LinkData({"gui", "font", "sounds"});
        font.Load("font/basic4.png");
        std::remove("log.txt");
        gui.Start("gui/ravix.cfg");
        gui.cursor.visible = false;
    }

    // The window alone on the screen, with the widget in it.
    static void ShowAlone(GUI_Window& holder, GUI_Component* widget) {
        gui.Clear();
        holder.caption = "";
        Show(holder, {0.2F, 0.2F, 0.6F, 0.5F});
        holder.AddComponent(widget);
        if (widget) widget->Place(0.1F, 0.1F);
        gui.SetFocus(nullptr);
    }

    // The least contrast of the style's text with any pixel on which a glyph stands or that touches one,
    // before a scene by night and before flames. `write` puts a text, or blanks, where the style's text is
    // printed.
    static void ExpectReadable(int stid, const std::function<void(const char*)>& write) {
        const GUI_Style& style = gui.GetStyles().Get(static_cast<std::uint8_t>(stid));
        const double text = Luminance(style.textr, style.textg, style.textb);
        for (const auto& [red, green, blue] : {std::tuple{0.04F, 0.04F, 0.10F}, {0.95F, 0.70F, 0.45F}}) {
            glClearColor(red, green, blue, 1.0F);
            write("      ");
            Draw();
            const std::vector<Rgba> ground = ReadScreen();
            write("MW8gy#");
            Draw();
            const std::vector<Rgba> written = ReadScreen();
            int inked = 0;
            double worst = 21.0;
            for (std::size_t i = Width + 1; i < ground.size() - Width - 1; ++i) {
                // The fringe and the rim of a glyph are no part of it that anyone reads: ink is what is
                // nearer to the text's colour than to the ground's.
                const double change = ground[i].green - written[i].green;
                if (2.0 * change / (ground[i].green - 255.0 * static_cast<double>(style.textg)) < 1.0)
                    continue;
                ++inked;
                for (const std::size_t row : {i - Width, i, i + Width})
                    for (const std::size_t near : {row - 1, row, row + 1})
                        worst = std::min(worst, Contrast(text, ground[near]));
            }
            EXPECT_GT(inked, 200);
            EXPECT_GE(worst, 4.5) << "style " << stid << " before a scene of red " << red;
        }
        glClearColor(0, 0, 0, 0);
    }

    GUI_Window window;
    GUI_HWindow panel;
    GUI_Component widget;
    GUI_CheckBox box;
    GUI_Items list;
};

TEST_F(RealSkinTest, TextIsReadableOnEveryStyleAndStateOnCaptionBarsAndOnMarkedRows) {
    for (const GuiState state : {GuiState::Normal, GuiState::Hover, GuiState::Clicked, GuiState::Disabled}) {
        SCOPED_TRACE(static_cast<int>(state));
        for (GUI_Window* holder : {&window, static_cast<GUI_Window*>(&panel)})
            for (const int stid : {1, 2, 3, 14, 11, 12}) {
                GUI_Component& shown = stid == 11 || stid == 12 ? box : widget; // written beside, or over it
                ShowAlone(*holder, &shown);
                shown.state = state;
                shown.stid = static_cast<std::uint8_t>(stid);
                ExpectReadable(stid, [&](const char* text) { shown.caption = text; });
            }
        ShowAlone(window, nullptr);
        window.state = state;
        ExpectReadable(9, [&](const char* text) { window.caption = text; });
        window.state = GuiState::Normal;
        if (state == GuiState::Disabled) continue; // a disabled list has no marked row
        ShowAlone(panel, &list);
        list.caption = "";
        ExpectReadable(list.stid, [&](const char* text) {
            list.SetItems(text);
            list.LostFocus();
            list.Focus();
            list.Unroll();
            list.state = state;
        });
    }
}

// The high-score list prints white and red by adding them to a window's field. The rarest twentieth of the
// field's pixels, its glints, may do worse.
TEST_F(RealSkinTest, AddedTextIsReadableOnAWindowsField) {
    glClearColor(0.04F, 0.04F, 0.10F, 1.0F);
    ShowAlone(window, nullptr);
    Draw();
    const std::vector<Rgba> screen = ReadScreen();
    glClearColor(0, 0, 0, 0);
    for (const double added : {1.0, 0.0}) { // to green and blue
        std::vector<double> contrasts;
        for (std::size_t y = Height * 2 / 5; y < Height * 3 / 5; ++y)
            for (std::size_t x = Width * 3 / 10; x < Width * 7 / 10; ++x) {
                const Rgba pixel = screen[y * Width + x];
                contrasts.push_back(Contrast(Luminance(1.0, std::min(pixel.green / 255.0 + added, 1.0),
                                                       std::min(pixel.blue / 255.0 + added, 1.0)),
                                             pixel));
            }
        std::ranges::sort(contrasts);
        EXPECT_GE(contrasts[contrasts.size() / 20], 4.5) << added;
    }
}

// A glyph's cell, and how far it reaches below the place where it is printed.
constexpr float CharacterWidth = 10.0F / 640.0F;
constexpr float CellBelow = 10.0F / 480.0F;

// Each text ends before its window's client area does, and before its widget does where that cuts it.
void ExpectTextsFit(const GUI_ComponentList& list, const GuiEdges& client) {
    const GUI_Styles& skin = gui.GetStyles();
    for (std::size_t i = 0; i < list.Size(); ++i) {
        const GUI_Component& element = list[i];
        if (element.kind == GuiKind::PageControl)
            for (const GUI_Page* page : static_cast<const GUI_PageControl&>(element).Pages()) {
                EXPECT_LE(static_cast<int>(std::strlen(page->caption)),
                          CharactersIn(page->width, skin.Get(page->stid).textx))
                    << page->caption;
                ExpectTextsFit(page->Components(), client);
            }
        const bool typed = element.kind == GuiKind::EditBox;
        const char* text = typed ? static_cast<const GUI_EditBox&>(element).Text() : element.caption;
        if (!element.visible || !text || !*text) continue;
        const auto length = static_cast<int>(std::strlen(text));
        const GUI_Style& style = skin.Get(element.stid);
        const GuiRect rect = DrawnRect(skin, element);
        const bool beside = element.kind == GuiKind::CheckBox || element.kind == GuiKind::RadioButton;
        const float left = rect.left + style.textx + (beside ? rect.width : 0.0F);
        const float line = rect.top + style.texty;
        EXPECT_LE(left + static_cast<float>(length) * CharacterWidth, client.right) << text;
        EXPECT_LE(line + CellBelow, client.bottom) << text;
        if (element.scissor && !beside) {
            EXPECT_LE(length, CharactersIn(element.width, style.textx)) << text;
        }
    }
}

TEST_F(RealSkinTest, IsLoadedWithoutAWarningAndNoCaptionOfTheGamesWindowsIsCut) {
    EXPECT_EQ(CountInLog("warning") + CountInLog("failed"), 0) << ReadLog();
    const GUI_Styles& skin = gui.GetStyles();
    std::size_t windows = 0;
    for (void (*build)() :
         {+[] { gameScene.BuildGui(); }, +[] { menuScene.BuildMenuGui(); }, +[] { worldScene.BuildGui(); },
          // The longest text of a loading screen.
          +[] {
              gui.LoadingStart(0.35F, 0.75F, 11, "Destroying...");
              gui.LoadingStep("Loading particles...");
          }}) {
        gui.Clear();
        build();
        windows += gui.Windows().size();
        for (GUI_Window* shown : gui.Windows()) {
            const std::string caption = shown->caption;
            const GUI_Style& body = skin.Get(shown->stid);
            if (shown->kind == GuiKind::Window) {
                EXPECT_LE(skin.Get(9).textx + static_cast<float>(caption.size()) * CharacterWidth,
                          shown->width - skin.closeButton->left - skin.closeButton->width)
                    << caption;
            }
            if (caption == "General:") shown->SetSize(0.67F, 0.72F); // which the player is to pull larger
            ExpectTextsFit(shown->Components(),
                           {shown->left, shown->top, shown->left + shown->width - body.rightx,
                            shown->top + shown->height - body.righty});
        }
    }
    gui.LoadingEnd();
    EXPECT_GT(windows, 12U);
}

} // namespace
