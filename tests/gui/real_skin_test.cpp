// The game's own skin: whole, readable, and wide enough for every caption of the game's windows.
#include "frontend/menu_windows.h"
#include "game/game_windows.h"
#include "gui/hwindow.h"
#include "gui/text_entry.h"
#include "support/gui_fixture.h"

#include <algorithm>
#include <cmath>
#include <cstring>

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

double TextLuminance(std::uint8_t stid) {
    const GUI_Style& style = gui.GetStyles().Get(stid);
    return Luminance(style.textr, style.textg, style.textb);
}

class RealSkinTest : public GuiTest {
protected:
    RealSkinTest() {
        folder.LinkData("gui");
        std::remove("log.txt");
        gui.Start("gui/ravix.cfg");
        gui.cursor.visible = false;
        window.caption = panel.caption = "";
        window.left = window.top = 0.2F;
        window.width = 0.6F;
        window.height = 0.5F;
        widget.caption = "";
        widget.left = widget.top = 0.1F;
        widget.width = 0.2F;
    }

    // Mean luminance where a caption of six characters stands.
    static double Ground(float left, float top) {
        gui.SetFocus(nullptr);
        Draw();
        const std::vector<Rgba> screen = ReadScreen();
        double sum = 0.0;
        int count = 0;
        for (int y = static_cast<int>(top * Height) - 6; y < static_cast<int>(top * Height) + 10; ++y)
            for (int x = static_cast<int>(left * Width); x < static_cast<int>(left * Width) + 60;
                 ++x, ++count) {
                const Rgba p = screen[static_cast<std::size_t>(y * Width + x)];
                sum += Luminance(p.red / 255.0, p.green / 255.0, p.blue / 255.0);
            }
        return sum / count;
    }

    GUI_Window window;
    GUI_HWindow panel;
    GUI_Component widget;
};

TEST_F(RealSkinTest, LoadsWithoutAWarning) {
    EXPECT_GE(gui.GetStyles().Count(), 15);
    EXPECT_FALSE(gui.GetStyles().focus.empty());
    EXPECT_EQ(CountInLog("warning"), 0) << ReadLog();
    EXPECT_EQ(CountInLog("failed"), 0) << ReadLog();
}

// Every style that carries text, in every state and in both kinds of windows, where its caption lies.
TEST_F(RealSkinTest, TextIsReadableOnEveryStyleAndState) {
    for (GUI_Window* holder : {&window, static_cast<GUI_Window*>(&panel)}) {
        gui.Clear();
        holder->left = holder->top = 0.2F;
        holder->width = 0.6F;
        holder->height = 0.5F;
        gui.AddWindow(holder);
        holder->AddComponent(&widget);
        for (const std::uint8_t stid : {1, 2, 3, 11, 12, 14}) {
            const bool textBeside = stid == 11 || stid == 12; // in the open, right of the box
            for (const GuiState state :
                 {GuiState::Normal, GuiState::Hover, GuiState::Clicked, GuiState::Disabled}) {
                widget.stid = stid;
                widget.state = state;
                widget.width = textBeside ? 0.04F : 0.2F;
                const GuiRect rect = DrawnRect(gui.GetStyles(), widget);
                const GUI_Style& style = gui.GetStyles().Get(stid);
                const float left = rect.left + style.textx + (textBeside ? rect.width : 0.0F);
                EXPECT_GE(Contrast(TextLuminance(stid), Ground(left, rect.top + style.texty)), 4.5)
                    << "style " << int{stid} << ", state " << static_cast<int>(state);
            }
        }
    }
    gui.Clear();
    gui.AddWindow(&window);
    const GUI_Style& bar = gui.GetStyles().Get(9);
    EXPECT_GE(Contrast(TextLuminance(9), Ground(window.left + bar.textx, window.top + bar.texty)), 4.5)
        << "the caption bar";
}

constexpr float CharacterWidth = 10.0F / 640.0F;

// Follows a window's widgets, also those on pages, and holds each caption against the room that it has.
void ExpectCaptionsFit(const GUI_ComponentList& list, float containerWidth, const std::string& where) {
    const GUI_Styles& skin = gui.GetStyles();
    for (std::size_t i = 0; i < list.Size(); ++i) {
        const GUI_Component& element = list[i];
        const char* caption = element.caption ? element.caption : "";
        const auto length = static_cast<int>(std::strlen(caption));
        const GUI_Style& style = skin.Get(element.stid);
        if (element.kind == GuiKind::CheckBox || element.kind == GuiKind::RadioButton) {
            EXPECT_LE(element.left + element.width + style.textx +
                          static_cast<float>(length) * CharacterWidth,
                      containerWidth)
                << where << ": " << caption;
        } else if (element.scissor) {
            EXPECT_LE(length, CharactersIn(element.width, style.textx)) << where << ": " << caption;
        }
    }
}

TEST_F(RealSkinTest, NoCaptionOfTheGamesWindowsIsCut) {
    int windows = 0;
    for (void (*build)() : {+[] { gameWindows.Build(); }, +[] { menuWindows.Build(); }}) {
        gui.Clear();
        build();
        for (const GUI_Window* shown : gui.Windows()) {
            ++windows;
            const GUI_Styles& skin = gui.GetStyles();
            const GUI_Style& body = skin.Get(shown->stid);
            const GUI_Style& bar = skin.Get(9);
            if (shown->kind == GuiKind::Window) {
                EXPECT_LE(bar.textx + static_cast<float>(std::strlen(shown->caption)) * CharacterWidth,
                          shown->width - bar.rightx)
                    << shown->caption;
            }
            ExpectCaptionsFit(shown->Components(), shown->width - body.leftx - body.rightx, shown->caption);
            for (std::size_t i = 0; i < shown->Components().Size(); ++i) {
                const GUI_Component& element = shown->Components()[i];
                if (element.kind == GuiKind::PageControl) {
                    const auto& control = static_cast<const GUI_PageControl&>(element);
                    ASSERT_FALSE(control.Pages().empty());
                    for (const GUI_Page* page : control.Pages()) {
                        EXPECT_LE(static_cast<int>(std::strlen(page->caption)),
                                  CharactersIn(page->width, skin.Get(page->stid).textx))
                            << page->caption;
                        ExpectCaptionsFit(page->Components(), control.width, page->caption);
                    }
                }
            }
        }
    }
    EXPECT_EQ(windows, 9);
}

} // namespace
