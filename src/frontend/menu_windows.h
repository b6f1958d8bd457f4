// The menu's windows: the question whether to quit, the options with their three pages, and the way back from
// the credits. Rests on the GUI toolkit and on everything that the options set.
#pragma once

#include "gui/button.h"
#include "gui/check_box.h"
#include "gui/hwindow.h"
#include "gui/label.h"
#include "gui/page_control.h"
#include "gui/scroll_bars.h"
#include "gui/window.h"

#include <array>

class MenuWindows {
public:
    constexpr MenuWindows() = default;

    // Sets all windows up, hidden, and hands them to the GUI manager.
    void Build();

    void ShowOptions();
    void ShowQuitDialog();
    void ShowCreditsWindow() { creditsWindow.visible = true; }
    void HideCreditsWindow() { creditsWindow.visible = false; }
    bool OptionsShown() const { return optionsWindow.visible; }

    // Shows what is set now on all pages of the options.
    void ResetOptions();

private:
    static constexpr std::size_t ResolutionCount = 4;

    // A volume's slider with its text.
    struct Volume {
        GUI_HScroll bar;
        GUI_Label label;
        std::array<char, 32> text{};
    };

    void BuildQuitDialog();
    void BuildOptions();
    void BuildGeneralPage();
    void BuildVideoPage();
    void BuildAudioPage();
    void BuildVolume(Volume& volume, float top, void (*onChange)(GUI_ScrollBar* bar));
    void BuildCreditsWindow();
    void ApplyVideoMode();
    void ApplyOptions();
    static void ShowVolume(Volume& volume, const char* name);
    static void SetFromVolume(Volume& volume, const char* name, std::uint8_t level);

    // The hooks of the widgets.
    static void OnQuit(GUI_Element* element);
    static void OnQuitCancel(GUI_Element* element);
    static void OnOptionsOk(GUI_Element* element);
    static void OnOptionsCancel(GUI_Element* element);
    static void OnOptionsResize(GUI_Window* window);
    static void OnPickResolution(GUI_Element* element);
    static void OnVideoChanged(GUI_Element* element);
    static void OnSoundVolume(GUI_ScrollBar* bar);
    static void OnMusicVolume(GUI_ScrollBar* bar);
    static void OnCreditsBack(GUI_Element* element);

    GUI_Window quitDialog;
    GUI_Button quitButton;
    GUI_Button quitCancel;

    GUI_Window optionsWindow;
    GUI_Button optionsCancel;
    GUI_Button optionsOk;
    GUI_PageControl pages;
    GUI_Page generalPage;
    GUI_Label gameplayLabel;
    GUI_CheckBox showGrid;
    GUI_Page videoPage;
    GUI_Label resolutionLabel;
    std::array<GUI_RadioButton, ResolutionCount> resolutions;
    GUI_CheckBox lighting;
    GUI_CheckBox fullscreen;
    GUI_Page audioPage;
    GUI_Label volumeLabel;
    Volume sound;
    Volume music;

    GUI_HWindow creditsWindow;
    GUI_Button creditsBack;

    bool videoChanged = false;   // a resolution or the full-screen box has been clicked
    bool showingOptions = false; // the sliders are being set to the volumes, not the volumes by them
};

extern MenuWindows menuWindows;
