// Any skin, any widgets in two windows, and any events: up to the first NUL byte the skin, behind it how the
// widgets lie and what the player does. Nothing is drawn, so no display is needed.
#include "config/config_reader.h"
#include "gui/check_box.h"
#include "gui/edit_box.h"
#include "gui/items.h"
#include "gui/manager.h"
#include "gui/memo.h"
#include "gui/page_control.h"
#include "gui/progress_bar.h"
#include "hide_pictures.h"
#include "own_folder.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

// The bytes behind the skin, one after the other; zeros at their end.
class Script {
public:
    Script(const std::uint8_t* first, const std::uint8_t* last) : next(first), end(last) {}
    bool IsOver() const { return next == end; }
    std::uint8_t Byte() { return IsOver() ? std::uint8_t{0} : *next++; }
    // -0.5 to 1.5 of the screen.
    float Fraction() { return static_cast<float>(Byte()) / 128.0F - 0.5F; }

private:
    const std::uint8_t* next;
    const std::uint8_t* end;
};

void Lay(GUI_Element& element, Script& script) {
    element.left = script.Fraction();
    element.top = script.Fraction();
    element.width = script.Fraction();
    element.height = script.Fraction();
    element.stid = script.Byte();
}

void DoEvent(Script& script, const std::array<GUI_Window*, 2>& windows) {
    const std::uint8_t what = script.Byte();
    SDL_keysym key{};
    switch (what % 8) {
    case 0:
        gui.MouseDown();
        break;
    case 1:
        gui.MouseUp();
        break;
    case 2:
    case 3:
        key.sym = static_cast<SDLKey>(script.Byte() + (what & 64 ? 256 : 0));
        key.unicode = script.Byte();
        what % 8 == 2 ? gui.KeyDown(key) : gui.KeyUp(key);
        break;
    case 4:
        windows[what / 8 % 2]->visible = !windows[what / 8 % 2]->visible;
        break;
    case 5:
        gui.AddWindow(windows[what / 8 % 2]);
        break;
    case 6:
        if (what & 64) gui.LetGo();
        windows[what / 8 % 2]->SetSize(script.Fraction(), script.Fraction());
        break;
    default:
        gui.cursor.x = script.Fraction();
        gui.cursor.y = script.Fraction();
        gui.MouseMove();
        break;
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    EnterOwnFolder();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::uint8_t* const split = std::find(data, data + size, std::uint8_t{0});
    std::string skin(reinterpret_cast<const char*>(data), static_cast<std::size_t>(split - data));
    HidePictures(skin);
    ConfigFile file = ConfigFile::FromMemory(skin);
    gui.GetStyles().SetDefaults();
    if (INI_FindBlock("skin", &file)) gui.GetStyles().Load(&file);
    Script script(split, data + size);

    GUI_Window first, second;
    GUI_Button button;
    GUI_CheckBox check;
    GUI_RadioButton radio;
    GUI_EditBox edit;
    GUI_Memo memo;
    GUI_Items items;
    GUI_ProgressBar progress;
    GUI_PageControl pages;
    GUI_Page page;
    items.SetItems("one\ntwo\nthree\n");
    memo.SetText("a line\nand another that is longer than the first");
    pages.AddPage(&page);
    page.AddComponent(&check);
    const std::array<GUI_Component*, 7> widgets = {&button, &radio, &edit, &memo, &items, &progress, &pages};
    Lay(check, script);
    for (GUI_Component* widget : widgets) {
        Lay(*widget, script);
        (script.Byte() % 2 == 0 ? first : second).AddComponent(widget);
    }
    const std::array<GUI_Window*, 2> windows = {&first, &second};
    for (GUI_Window* window : windows) {
        Lay(*window, script);
        gui.AddWindow(window);
    }
    for (int events = 0; events < 2000 && !script.IsOver(); ++events)
        DoEvent(script, windows);
    if (gui.Windows().size() > windows.size()) std::abort();
    gui.Clear();
    if (gui.Focused() || gui.Hovered() || !gui.Windows().empty()) std::abort();
    return 0;
}
