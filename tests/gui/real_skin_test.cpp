// The game's own skin: whole, readable, and wide enough for every caption of the game's windows.
#include "config/config_reader.h"
#include "frontend/menu_scene.h"
#include "game/game_scene.h"
#include "graphics/font.h"
#include "gui/check_box.h"
#include "gui/hwindow.h"
#include "gui/items.h"
#include "gui/text_entry.h"
#include "stage/world_scene.h"
#include "support/gui_fixture.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

namespace {

// Relative luminance and contrast as the web's accessibility guidelines define them; channels 0 to 1.
double Luminance(double red, double green, double blue) {
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(red) + 0.7152 * linear(green) + 0.0722 * linear(blue);
}

double Contrast(double one, double other) {
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

constexpr std::array States = {GuiState::Normal, GuiState::Hover, GuiState::Clicked, GuiState::Disabled};

class RealSkinTest : public GuiTest {
protected:
    RealSkinTest() {
        folder.LinkData({"gui", "font", "sounds"});
        font.Load("font/basic4.png");
        std::remove("log.txt");
        gui.Start("gui/ravix.cfg");
        gui.cursor.visible = false;
    }

    // Puts the window alone on the screen.
    static void ShowAlone(GUI_Window& holder) {
        gui.Clear();
        Show(holder, {0.2F, 0.2F, 0.6F, 0.5F});
        gui.SetFocus(nullptr);
    }

    // The least contrast of the style's text with any pixel on which a glyph stands or that touches one,
    // before a scene by night and before flames. `write` puts a text, or blanks, where the style's text is
    // printed.
    static void ExpectReadable(std::uint8_t stid, const std::function<void(const char*)>& write,
                               const std::string& what) {
        const GUI_Style& style = gui.GetStyles().Get(stid);
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
            for (int i = Width + 1; i < Width * (Height - 1) - 1; ++i) {
                const auto at = [i](int offset) { return static_cast<std::size_t>(i + offset); };
                // The fringe and the rim of a glyph are no part of it that anyone reads: ink is what is
                // nearer to the text's colour than to the ground's.
                const double change = ground[at(0)].green - written[at(0)].green;
                if (2.0 * change / (ground[at(0)].green - 255.0 * static_cast<double>(style.textg)) < 1.0)
                    continue;
                ++inked;
                for (const int offset :
                     {-Width - 1, -Width, -Width + 1, -1, 0, 1, Width - 1, Width, Width + 1}) {
                    const Rgba pixel = ground[at(offset)];
                    worst = std::min(worst, Contrast(text, Luminance(pixel.red / 255.0, pixel.green / 255.0,
                                                                     pixel.blue / 255.0)));
                }
            }
            EXPECT_GT(inked, 200) << what;
            EXPECT_GE(worst, 4.5) << what << " before a scene of red " << red;
        }
        glClearColor(0, 0, 0, 0);
    }

    GUI_Window window;
    GUI_HWindow panel;
    GUI_Component widget;
    GUI_CheckBox box;
    GUI_Items list;
};

TEST_F(RealSkinTest, LoadsWithoutAWarning) {
    EXPECT_GE(gui.GetStyles().Count(), 15);
    EXPECT_FALSE(gui.GetStyles().focus.empty());
    EXPECT_EQ(CountInLog("warning") + CountInLog("failed"), 0) << ReadLog();
    ConfigFile file("gui/ravix.cfg");
    ASSERT_TRUE(INI_FindBlock("audio", &file));
    for (const char* key : {"hover", "click"})
        EXPECT_TRUE(std::filesystem::is_regular_file(INI_ReadString(key, &file))) << key;
}

TEST_F(RealSkinTest, TextIsReadableOnEveryStyleAndStateOnCaptionBarsAndOnMarkedRows) {
    for (const GuiState state : States) {
        const std::string where = ", state " + std::to_string(static_cast<int>(state));
        for (GUI_Window* holder : {&window, static_cast<GUI_Window*>(&panel)})
            for (const std::uint8_t stid : {1, 2, 3, 14, 11, 12}) {
                GUI_Component& shown = stid == 11 || stid == 12 ? box : widget; // written beside, or over it
                holder->caption = "";
                ShowAlone(*holder);
                holder->AddComponent(&shown);
                shown.Place(0.1F, 0.1F);
                shown.state = state;
                shown.stid = stid;
                ExpectReadable(
                    stid, [&](const char* text) { shown.caption = text; },
                    "style " + std::to_string(stid) + (holder == &panel ? ", panel" : ", window") + where);
            }
        ShowAlone(window);
        window.state = state;
        ExpectReadable(
            9, [&](const char* text) { window.caption = text; }, "caption bar" + where);
        window.state = GuiState::Normal;
        if (state == GuiState::Disabled) continue; // a disabled list has no marked row
        ShowAlone(panel);
        panel.AddComponent(&list);
        list.caption = "";
        list.Place(0.1F, 0.1F);
        ExpectReadable(
            list.stid,
            [&](const char* text) {
                list.SetItems(text);
                list.LostFocus();
                list.Focus();
                list.Unroll();
                list.state = state;
            },
            "marked row" + where);
    }
}

// The high-score list prints white and red by adding them to a window's field. The rarest twentieth of the
// field's pixels, its glints, may do worse.
TEST_F(RealSkinTest, AddedTextIsReadableOnAWindowsField) {
    glClearColor(0.04F, 0.04F, 0.10F, 1.0F);
    window.caption = "";
    ShowAlone(window);
    Draw();
    glClearColor(0, 0, 0, 0);
    const std::vector<Rgba> screen = ReadScreen();
    for (const double other : {1.0, 0.0}) { // green and blue
        std::vector<double> contrasts;
        for (int y = Height * 2 / 5; y < Height * 3 / 5; ++y)
            for (int x = Width * 3 / 10; x < Width * 7 / 10; ++x) {
                const Rgba pixel = screen[static_cast<std::size_t>(y * Width + x)];
                const double green = pixel.green / 255.0;
                const double blue = pixel.blue / 255.0;
                contrasts.push_back(
                    Contrast(Luminance(1.0, std::min(green + other, 1.0), std::min(blue + other, 1.0)),
                             Luminance(pixel.red / 255.0, green, blue)));
            }
        std::ranges::sort(contrasts);
        EXPECT_GE(contrasts[contrasts.size() / 20], 4.5) << other;
    }
}

// A glyph's cell, and how far it reaches below the place where it is printed.
constexpr float CharacterWidth = 10.0F / 640.0F;
constexpr float CellBelow = 10.0F / 480.0F;

// Holds each caption against its widget and the client area. In a window that `grows`, one that the player is
// to pull larger, it may also lie outside altogether.
void ExpectCaptionsFit(const GUI_ComponentList& list, const GuiEdges& client, bool grows,
                       const std::string& where) {
    const GUI_Styles& skin = gui.GetStyles();
    for (std::size_t i = 0; i < list.Size(); ++i) {
        const GUI_Component& element = list[i];
        const char* caption = element.caption ? element.caption : "";
        if (element.kind == GuiKind::EditBox) caption = static_cast<const GUI_EditBox&>(element).Text();
        if (!element.visible || !*caption) continue;
        const auto length = static_cast<int>(std::strlen(caption));
        const GUI_Style& style = skin.Get(element.stid);
        const GuiRect rect = DrawnRect(skin, element);
        const bool beside = element.kind == GuiKind::CheckBox || element.kind == GuiKind::RadioButton;
        const float left = rect.left + style.textx + (beside ? rect.width : 0.0F);
        const float line = rect.top + style.texty;
        if (grows && (left >= client.right || line >= client.bottom)) continue;
        EXPECT_LE(left + static_cast<float>(length) * CharacterWidth, client.right)
            << where << ": " << caption;
        EXPECT_LE(line + CellBelow, client.bottom) << where << ": " << caption;
        if (element.scissor && !beside) {
            EXPECT_LE(length, CharactersIn(element.width, style.textx)) << where << ": " << caption;
        }
    }
}

void ExpectCaptionsFit(const GUI_Window& shown, bool grows = false) {
    const GUI_Styles& skin = gui.GetStyles();
    const GUI_Style& body = skin.Get(shown.stid);
    const GUI_Style& bar = skin.Get(9);
    const float captionEnd = bar.textx + static_cast<float>(std::strlen(shown.caption)) * CharacterWidth;
    if (shown.kind == GuiKind::Window) {
        EXPECT_LE(captionEnd,
                  shown.width - std::max(bar.rightx, skin.closeButton.left + skin.closeButton.width))
            << shown.caption;
    }
    const GuiEdges client = {shown.left, shown.top, shown.left + shown.width - body.rightx,
                             shown.top + shown.height - body.righty};
    ExpectCaptionsFit(shown.Components(), client, grows, shown.caption);
    for (std::size_t i = 0; i < shown.Components().Size(); ++i) {
        if (shown.Components()[i].kind != GuiKind::PageControl) continue;
        for (const GUI_Page* page : static_cast<const GUI_PageControl&>(shown.Components()[i]).Pages()) {
            EXPECT_LE(static_cast<int>(std::strlen(page->caption)),
                      CharactersIn(page->width, skin.Get(page->stid).textx))
                << page->caption;
            ExpectCaptionsFit(page->Components(), client, grows, page->caption);
        }
    }
}

TEST_F(RealSkinTest, NoCaptionOfTheGamesWindowsIsCut) {
    int windows = 0;
    for (void (*build)() :
         {+[] { gameScene.BuildGui(); }, +[] { menuScene.BuildMenuGui(); }, +[] { worldScene.BuildGui(); },
          +[] { gui.LoadingStart(0.35F, 0.75F, 11, "Destroying..."); }}) {
        gui.Clear();
        build();
        for (GUI_Window* shown : gui.Windows()) {
            ++windows;
            ExpectCaptionsFit(*shown, std::strcmp(shown->caption, "General:") == 0);
        }
    }
    EXPECT_EQ(windows, 13);
    // The longest texts that come and go.
    gui.LoadingStep("Loading particles...");
    ExpectCaptionsFit(*gui.Windows().front());
    gui.LoadingEnd();
    gui.Clear();
    worldScene.BuildGui();
    GUI_Window& general = *gui.Windows().front();
    general.MouseOver(0.12F, 0.34F);
    EXPECT_STREQ(general.caption, "mx=0.12,my=0.34");
    ExpectCaptionsFit(general, true);
}

} // namespace
