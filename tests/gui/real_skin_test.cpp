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

double Luminance(Rgba pixel) {
    return Luminance(pixel.red / 255.0, pixel.green / 255.0, pixel.blue / 255.0);
}

double Contrast(double one, double other) {
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

double TextLuminance(std::uint8_t stid) {
    const GUI_Style& style = gui.GetStyles().Get(stid);
    return Luminance(style.textr, style.textg, style.textb);
}

constexpr std::array States = {GuiState::Normal, GuiState::Hover, GuiState::Clicked, GuiState::Disabled};

class RealSkinTest : public GuiTest {
protected:
    RealSkinTest() {
        folder.LinkData({"gui", "font"});
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
        for (const GuiScene& scene : {GuiScene{0.04F, 0.04F, 0.10F}, {0.95F, 0.70F, 0.45F}}) {
            glClearColor(scene.red, scene.green, scene.blue, 1.0F);
            write(Blanks);
            Draw();
            const std::vector<Rgba> ground = ReadScreen();
            write(Letters);
            Draw();
            const std::vector<Rgba> written = ReadScreen();
            int inked = 0;
            double worst = 21.0;
            for (int y = 1; y < Height - 1; ++y)
                for (int x = 1; x < Width - 1; ++x) {
                    const auto at = [x, y](int dx, int dy) {
                        return static_cast<std::size_t>((y + dy) * Width + x + dx);
                    };
                    if (!IsInk(stid, ground[at(0, 0)], written[at(0, 0)])) continue;
                    ++inked;
                    for (int dy = -1; dy <= 1; ++dy)
                        for (int dx = -1; dx <= 1; ++dx)
                            worst =
                                std::min(worst, Contrast(TextLuminance(stid), Luminance(ground[at(dx, dy)])));
                }
            EXPECT_GT(inked, 200) << what;
            EXPECT_GE(worst, 4.5) << what << " before a scene of red " << scene.red;
        }
        glClearColor(0, 0, 0, 0);
    }

    GUI_Window window;
    GUI_HWindow panel;
    GUI_Component widget;
    GUI_CheckBox box;
    GUI_Items list;

private:
    static constexpr const char* Letters = "MW8gy#";
    static constexpr const char* Blanks = "      ";
    struct GuiScene {
        float red, green, blue;
    };
    // The fringe and the rim of a glyph are no part of it that anybody reads: ink is what is nearer to the
    // text's colour than to the ground's.
    static bool IsInk(std::uint8_t stid, Rgba ground, Rgba written) {
        const double text = 255.0 * static_cast<double>(gui.GetStyles().Get(stid).textg);
        return 2.0 * (ground.green - written.green) / (ground.green - text) >= 1.0;
    }
};

TEST_F(RealSkinTest, LoadsWithoutAWarning) {
    EXPECT_GE(gui.GetStyles().Count(), 15);
    EXPECT_FALSE(gui.GetStyles().focus.empty());
    EXPECT_EQ(CountInLog("warning"), 0) << ReadLog();
    EXPECT_EQ(CountInLog("failed"), 0) << ReadLog();
    folder.LinkData({"sounds"});
    ConfigFile file("gui/ravix.cfg");
    ASSERT_TRUE(INI_FindBlock("audio", &file));
    for (const char* key : {"hover", "click"})
        EXPECT_TRUE(std::filesystem::is_regular_file(INI_ReadString(key, &file))) << key;
}

TEST_F(RealSkinTest, TextIsReadableOnEveryStyleAndState) {
    for (GUI_Window* holder : {&window, static_cast<GUI_Window*>(&panel)}) {
        holder->caption = "";
        for (const GuiState state : States)
            for (const std::uint8_t stid : {1, 2, 3, 14, 11, 12}) {
                GUI_Component& shown = stid == 11 || stid == 12 ? box : widget; // written beside, or over it
                ShowAlone(*holder);
                holder->AddComponent(&shown);
                shown.Place(0.1F, 0.1F);
                shown.state = state;
                shown.stid = stid;
                ExpectReadable(
                    stid, [&](const char* text) { shown.caption = text; },
                    "style " + std::to_string(stid) + (holder == &panel ? ", panel" : ", window") +
                        ", state " + std::to_string(static_cast<int>(state)));
            }
    }
}

TEST_F(RealSkinTest, TextIsReadableOnCaptionBarsAndOnMarkedRows) {
    ShowAlone(window);
    for (const GuiState state : States) {
        window.state = state;
        ExpectReadable(
            9, [&](const char* text) { window.caption = text; },
            "caption bar, state " + std::to_string(static_cast<int>(state)));
    }
    ShowAlone(panel);
    panel.AddComponent(&list);
    list.caption = "";
    list.Place(0.1F, 0.1F);
    for (const GuiState state : {GuiState::Normal, GuiState::Hover, GuiState::Clicked}) {
        ExpectReadable(
            list.stid,
            [&](const char* text) {
                list.SetItems(text);
                list.LostFocus();
                list.Focus();
                list.height = list.OpenHeight();
                list.state = state;
            },
            "marked row, state " + std::to_string(static_cast<int>(state)));
    }
}

// A glyph's cell, and how far it reaches above and below the place where it is printed.
constexpr float CharacterWidth = 10.0F / 640.0F;
constexpr float CellAbove = 6.0F / 480.0F;
constexpr float CellBelow = 10.0F / 480.0F;

// Follows a container's widgets and holds each caption against the widget and the client area. In a window
// that `grows`, one that the player is to pull larger, it may also lie outside altogether.
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
        const float top = rect.top + style.texty - CellAbove;
        if (grows && (left >= client.right || top >= client.bottom)) continue;
        EXPECT_LE(left + static_cast<float>(length) * CharacterWidth, client.right)
            << where << ": " << caption;
        EXPECT_LE(top + CellAbove + CellBelow, client.bottom) << where << ": " << caption;
        if (element.scissor && !beside) {
            EXPECT_LE(length, CharactersIn(element.width, style.textx)) << where << ": " << caption;
        }
    }
}

void ExpectCaptionsFit(const GUI_Window& shown, bool grows = false) {
    const GUI_Styles& skin = gui.GetStyles();
    const GUI_Style& body = skin.Get(shown.stid);
    const GUI_Style& bar = skin.Get(9);
    if (shown.kind == GuiKind::Window) {
        EXPECT_LE(
            bar.textx + static_cast<float>(std::strlen(shown.caption)) * CharacterWidth,
            std::min(shown.width - bar.rightx, shown.width - skin.closeButton.left - skin.closeButton.width))
            << shown.caption;
    }
    const GuiEdges client = {shown.left, shown.top, shown.left + shown.width - body.rightx,
                             shown.top + shown.height - body.righty};
    ExpectCaptionsFit(shown.Components(), client, grows, shown.caption);
    for (std::size_t i = 0; i < shown.Components().Size(); ++i) {
        if (shown.Components()[i].kind != GuiKind::PageControl) continue;
        const auto& control = static_cast<const GUI_PageControl&>(shown.Components()[i]);
        ASSERT_FALSE(control.Pages().empty());
        for (const GUI_Page* page : control.Pages()) {
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
