// Shows a skin at a glance: a window of every kind, and every widget in every state. Run it in a folder laid
// out as the game's; it draws once, writes gallery.bmp and shows the picture until a key is pressed or, with
// the argument "once", ends.
#include "window_picture.h"

#include "audio/audio.h"
#include "base/frame_clock.h"
#include "base/log.h"
#include "graphics/font.h"
#include "graphics/video.h"
#include "gui/check_box.h"
#include "gui/edit_box.h"
#include "gui/hwindow.h"
#include "gui/items.h"
#include "gui/label.h"
#include "gui/manager.h"
#include "gui/memo.h"
#include "gui/page_control.h"
#include "gui/panel.h"
#include "gui/progress_bar.h"
#include "gui/scroll_bars.h"

#include <GL/gl.h>
#include <IL/il.h>
#include <IL/ilu.h>

#include <array>
#include <cstring>
#include <memory>
#include <vector>

namespace {

constexpr std::array States = {GuiState::Normal, GuiState::Hover, GuiState::Clicked, GuiState::Disabled};
constexpr std::array StateNames = {"normal", "hover", "clicked", "disabled"};

// Keeps what stands in the windows.
std::vector<std::unique_ptr<GUI_Component>> widgets;

template<class Widget>
Widget& Add(GUI_Window& window, float left, float top, const char* caption, GuiState state) {
    auto widget = std::make_unique<Widget>();
    Widget& added = *widget;
    added.left = left;
    added.top = top;
    added.caption = caption;
    added.state = state;
    widgets.push_back(std::move(widget));
    window.AddComponent(&added);
    return added;
}

void Place(GUI_Window& window, const char* caption, float left, float top, float width, float height) {
    window.caption = caption;
    window.left = left;
    window.top = top;
    window.width = width;
    window.height = height;
    gui.AddWindow(&window);
}

void FillStates(GUI_Window& window) {
    for (std::size_t i = 0; i < States.size(); ++i) {
        const float left = 0.13F * static_cast<float>(i);
        const GuiState state = States[i];
        Add<GUI_Label>(window, left, 0.0F, StateNames[i], GuiState::Disabled).width = 0.13F;
        Add<GUI_Button>(window, left, 0.045F, "Menu", state).width = 0.12F;
        Add<GUI_EditBox>(window, left, 0.1F, "", state).width = 0.12F;
        Add<GUI_CheckBox>(window, left, 0.155F, "box", state).checked = i == 3;
        Add<GUI_RadioButton>(window, left, 0.2F, "dot", state).checked = i == 0;
        auto& tab = Add<GUI_Component>(window, left, 0.25F, "tab", state);
        tab.stid = 14;
        tab.width = 0.12F;
        for (int arrow = 0; arrow < 4; ++arrow) {
            auto& button =
                Add<GUI_Button>(window, left + 0.03F * static_cast<float>(arrow), 0.307F, "", state);
            button.stid = static_cast<std::uint8_t>(4 + arrow);
            button.width = 0.028F;
            button.height = 0.037F;
        }
    }
    Add<GUI_Panel>(window, 0.0F, 0.352F, "", GuiState::Disabled).width = 0.25F;
    auto& bar = Add<GUI_ProgressBar>(window, 0.27F, 0.352F, "", GuiState::Disabled);
    bar.width = 0.25F;
    bar.value = 6;
}

void FillBars(GUI_Window& window, GUI_HScroll& across, GUI_VScroll& down, GUI_Memo& memo) {
    across.width = 0.3F;
    window.AddComponent(&across);
    down.left = 0.33F;
    down.width = 0.034F;
    down.height = 0.3F;
    window.AddComponent(&down);
    memo.top = 0.08F;
    memo.width = 0.3F;
    memo.height = 0.22F;
    window.AddComponent(&memo);
    memo.SetText(
        "A memo holds several lines.\nLong ones wrap at its edge, empty ones stay:\n\nand its bar scrolls.");
    memo.scroll.position = 0;
    memo.scroll.SetPosition();
}

void DrawTriangle() {
    glDisable(GL_TEXTURE_2D);
    glBegin(GL_TRIANGLES);
    glColor3f(0.89F, 0.70F, 0.24F);
    glVertex3f(0.0F, 1.2F, -3.0F);
    glColor3f(0.12F, 0.23F, 0.58F);
    glVertex3f(-0.35F, -0.8F, -3.0F);
    glColor3f(0.16F, 0.65F, 0.62F);
    glVertex3f(0.35F, -0.8F, -3.0F);
    glEnd();
    glEnable(GL_TEXTURE_2D);
    glColor3f(1.0F, 1.0F, 1.0F);
}

struct Gallery {
    GUI_Window states, bars, tabs;
    GUI_HWindow panel;
    GUI_HScroll across;
    GUI_VScroll down;
    GUI_Memo memo;
    GUI_PageControl control;
    GUI_Page general, videoPage;
    GUI_CheckBox pageBox;
    GUI_Label pageLabel;
    GUI_Items items;
    GUI_HWindow scores;
    std::array<GUI_Label, 4> scoreLines;
    GUI_Window view;

    void Build() {
        Place(states, "Every state", 0.02F, 0.02F, 0.57F, 0.52F);
        FillStates(states);
        Place(bars, "Bars and memo", 0.02F, 0.56F, 0.42F, 0.42F);
        FillBars(bars, across, down, memo);
        Place(tabs, "Pages", 0.46F, 0.56F, 0.52F, 0.42F);
        control.width = 0.46F;
        control.height = 0.3F;
        control.AddPage(&general);
        control.AddPage(&videoPage);
        general.caption = "General";
        videoPage.caption = "Video";
        pageLabel.caption = "Gameplay:";
        pageLabel.top = 0.05F;
        pageBox.caption = "Show Grid";
        pageBox.top = 0.11F;
        pageBox.checked = true;
        general.AddComponent(&pageLabel);
        general.AddComponent(&pageBox);
        tabs.AddComponent(&control);
        Place(panel, "", 0.62F, 0.02F, 0.17F, 0.09F);
        items.caption = "Game";
        items.left = 0.02F;
        items.top = 0.01F;
        items.SetItems("Resume;Menu;Quit");
        panel.AddComponent(&items);
        BuildScores();
        Place(view, "In 3D", 0.62F, 0.32F, 0.36F, 0.22F);
        view.OnDraw3D = [](GUI_Window*) { DrawTriangle(); };
    }

    void BuildScores() {
        Place(scores, "", 0.8F, 0.02F, 0.18F, 0.27F);
        static constexpr std::array Texts = {"Score :", "48250", "Level :", "7"};
        for (std::size_t i = 0; i < scoreLines.size(); ++i) {
            scoreLines[i].caption = Texts[i];
            scoreLines[i].top = 0.05F * static_cast<float>(i);
            scores.AddComponent(&scoreLines[i]);
        }
    }
};

void DrawFrame() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glMatrixMode(GL_MODELVIEW);
    gui.Draw();
}

} // namespace

int main(int argc, char** argv) {
    std::atexit(SDL_Quit);
    LogStart();
    video.Load("config.cfg");
    ilInit();
    iluInit();
    glClearColor(0.13F, 0.10F, 0.17F, 1.0F);
    font.Load("font/basic4.png");
    audio.Load("config.cfg");
    gui.Start("gui/ravix.cfg");
    static Gallery gallery;
    gallery.Build();
    gui.SetFocus(&gallery.items);
    gui.cursor.x = 0.7F;
    gui.cursor.y = 0.17F;
    gallery.items.MouseOver(0.7F, 0.17F);
    frameClock.frameDelta = 20;
    for (int frame = 0; frame < 30; ++frame)
        DrawFrame();
    WritePicture("gallery.bmp");
    static bool ended = false;
    ended = argc > 1 && std::strcmp(argv[1], "once") == 0;
    gui.OnQuit = [] { ended = true; };
    gui.OnKey = [](SDL_keysym key) { ended = ended || key.sym == SDLK_ESCAPE; };
    while (!ended) {
        frameClock.Update();
        gui.ProcessEvents(frameClock.frameDelta);
        DrawFrame();
        SDL_GL_SwapBuffers();
    }
    gui.Clear();
    gui.Destroy();
    audio.Destroy();
    font.Destroy();
    return 0;
}
