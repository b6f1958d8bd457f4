// Any bytes as a skin: read into styles, with a window laid out and hit on it. Nothing is drawn, so no
// display is needed.
#include "config/config_reader.h"
#include "gui/button.h"
#include "gui/manager.h"
#include "hide_pictures.h"
#include "own_folder.h"

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    EnterOwnFolder();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    HidePictures(text);
    ConfigFile file = ConfigFile::FromMemory(text);
    GUI_Styles& styles = gui.GetStyles();
    styles.SetDefaults();
    if (INI_FindBlock("skin", &file)) styles.Load(&file);
    GUI_Window window;
    GUI_Button button;
    gui.AddWindow(&window);
    window.AddComponent(&button);
    for (const float place : {-1.0F, 0.0F, 0.05F, 0.5F, 2.0F})
        window.IsMouseOver(place, place);
    for (int style = 0; style < styles.Count(); ++style) {
        button.stid = static_cast<std::uint8_t>(style);
        DrawnRect(styles, button);
        ScissorRect(styles, window, nullptr, 640, 480);
    }
    gui.Clear();
    return 0;
}
