// The three pages of the options. A page shows what is set, and sets what it shows.
#pragma once

#include "gui/check_box.h"
#include "gui/label.h"
#include "gui/page_control.h"
#include "gui/scroll_bars.h"

#include <array>
#include <cstdint>

class INI_Writer;

// Every page: Build adds its widgets once it stands in its page control, Show puts them to what is set now,
// and Store writes that to the configuration.

class GeneralPage : public GUI_Page {
public:
    void Build();
    void Show();
    void Apply() const;
    static void Store(INI_Writer& writer);

private:
    GUI_Label title;
    GUI_CheckBox showGrid;
};

class VideoPage : public GUI_Page {
public:
    void Build();
    void Show();
    // Sets the picked mode when a size or full screen has been clicked since Show, and says whether.
    bool ApplyMode();
    void ApplyLighting() const;
    static void Store(INI_Writer& writer);

private:
    static VideoPage& Of(const GUI_Element* widget);
    static void OnPick(GUI_Element* button);
    static void OnChanged(GUI_Element* box);

    GUI_Label title;
    std::array<GUI_RadioButton, 4> resolutions;
    GUI_CheckBox lighting;
    GUI_CheckBox fullscreen;
    bool changed = false;
};

// A volume's slider with its text; moving it is heard at once.
class VolumeSlider : public GUI_HScroll {
public:
    // How the volume, 0 to 128, is read and set.
    struct Volume {
        const char* name;
        std::uint8_t (*get)();
        void (*set)(int level);
    };

    constexpr explicit VolumeSlider(const Volume& shown) : volume(shown) {}

    void Build(GUI_Page& page, float sliderTop);
    void Show();

private:
    static void OnMoved(GUI_ScrollBar* bar);
    void WriteText();

    const Volume& volume;
    GUI_Label label;
    std::array<char, 32> text{};
};

class AudioPage : public GUI_Page {
public:
    void Build();
    void Show();
    static void Store(INI_Writer& writer);

private:
    static const VolumeSlider::Volume Sound;
    static const VolumeSlider::Volume Music;

    GUI_Label title;
    VolumeSlider sound{Sound};
    VolumeSlider music{Music};
};
