#include "frontend/options_pages.h"

#include "audio/audio.h"
#include "graphics/video.h"
#include "play/kolvex.h"
#include "scene/scene.h"

#include <algorithm>
#include <cstdio>

namespace {

struct Resolution {
    int width;
    int height;
    const char* caption;

    bool IsSet() const { return video.Width() == width && video.Height() == height; }
};

constexpr std::array<Resolution, 4> Resolutions = {
    {{640, 480, "640x480"}, {800, 600, "800x600"}, {1024, 768, "1024x768"}, {1280, 960, "1280x960"}}};
constexpr float FirstRow = 0.1F;
constexpr float RowHeight = 0.05F;
constexpr float RightColumn = 0.3F;

// Volumes go from 0 to 128, their sliders from 0 to 10; both ways are cut to whole numbers.
constexpr int SliderEnd = 10;
constexpr double SlidesPerVolume = SliderEnd / 128.0;
constexpr double VolumePerSlide = 128.0 / SliderEnd;

void AddTitle(GUI_Page& page, GUI_Label& label, const char* caption) {
    label.caption = caption;
    label.Place(-0.01F, 0.04F);
    page.AddComponent(&label);
}

} // namespace

void GeneralPage::Build() {
    caption = "General";
    top = -0.01F;
    AddTitle(*this, title, "Gameplay:");
    showGrid.caption = "Show Grid";
    showGrid.top = FirstRow;
    AddComponent(&showGrid);
}

void GeneralPage::Show() {
    showGrid.checked = kolvex.showgrid;
}

void GeneralPage::Apply() const {
    kolvex.showgrid = showGrid.checked;
}

void GeneralPage::Store(INI_Writer& writer) {
    kolvex.Save(ConfigName, &writer);
}

// Only widgets of the active page can be clicked.
VideoPage& VideoPage::Of(const GUI_Element* widget) {
    return static_cast<VideoPage&>(*static_cast<const GUI_PageControl&>(*widget->parent).ActivePage());
}

void VideoPage::Build() {
    caption = "Video";
    AddTitle(*this, title, "Screen resolution:");
    for (std::size_t i = 0; i < resolutions.size(); ++i) {
        resolutions[i].caption = Resolutions[i].caption;
        resolutions[i].top = FirstRow + RowHeight * static_cast<float>(i);
        resolutions[i].OnClick = OnPick;
        AddComponent(&resolutions[i]);
    }
    lighting.caption = "Lighting";
    lighting.Place(RightColumn, FirstRow);
    fullscreen.caption = "Fullscreen";
    fullscreen.Place(RightColumn, FirstRow + RowHeight);
    fullscreen.OnClick = OnChanged;
    AddComponent(&lighting);
    AddComponent(&fullscreen);
}

void VideoPage::Show() {
    lighting.checked = video.Lighting();
    fullscreen.checked = video.Fullscreen();
    for (std::size_t i = 0; i < resolutions.size(); ++i)
        resolutions[i].checked = Resolutions[i].IsSet();
    changed = false;
}

bool VideoPage::ApplyMode() {
    if (!changed) return false;
    changed = false;
    // With no button checked the largest is meant.
    const auto picked = std::find_if(resolutions.begin(), resolutions.end() - 1,
                                     [](const GUI_RadioButton& button) { return button.checked; });
    const Resolution& size = Resolutions[static_cast<std::size_t>(picked - resolutions.begin())];
    video.SetMode(size.width, size.height, fullscreen.checked);
    return true;
}

void VideoPage::ApplyLighting() const {
    video.SetLighting(lighting.checked);
}

void VideoPage::Store(INI_Writer& writer) {
    video.Save(ConfigName, &writer);
}

void VideoPage::OnPick(GUI_Element* button) {
    VideoPage& page = Of(button);
    for (GUI_RadioButton& other : page.resolutions)
        other.checked = &other == button;
    page.changed = true;
}

void VideoPage::OnChanged(GUI_Element* box) {
    Of(box).changed = true;
}

void VolumeSlider::Build(GUI_Page& page, float sliderTop) {
    top = sliderTop;
    width = 0.3F;
    max = SliderEnd;
    OnChange = OnMoved;
    label.caption = text.data();
    label.Place(RightColumn + 0.01F, sliderTop); // off the slider's arrow
    label.width = 0.2F;
    page.AddComponent(this);
    page.AddComponent(&label);
}

// The slider's steps are coarser than the volume: moving it to show a volume must not change that.
void VolumeSlider::Show() {
    position = static_cast<std::int32_t>(volume.get() * SlidesPerVolume);
    OnChange = nullptr;
    SetPosition();
    OnChange = OnMoved;
    WriteText();
}

void VolumeSlider::WriteText() {
    std::snprintf(text.data(), text.size(), "%s = %d%%", volume.name,
                  static_cast<int>(position) * 100 / SliderEnd);
}

void VolumeSlider::OnMoved(GUI_ScrollBar* bar) {
    auto& slider = static_cast<VolumeSlider&>(*bar);
    slider.WriteText();
    slider.volume.set(static_cast<int>(slider.position * VolumePerSlide));
}

constexpr VolumeSlider::Volume AudioPage::Sound = {"Sound", [] { return audio.GetSoundVolume(); },
                                                   [](int level) { audio.SetSoundVolume(level); }};
constexpr VolumeSlider::Volume AudioPage::Music = {"Music", [] { return audio.music.GetVolume(); },
                                                   [](int level) { audio.music.SetVolume(level); }};

void AudioPage::Build() {
    caption = "Audio";
    AddTitle(*this, title, "Volume:");
    sound.Build(*this, 0.1F);
    music.Build(*this, 0.2F);
}

void AudioPage::Show() {
    sound.Show();
    music.Show();
}

void AudioPage::Store(INI_Writer& writer) {
    audio.WriteParameters(ConfigName, &writer);
}
