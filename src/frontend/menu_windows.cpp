// The menu's windows; see menu_windows.h.
#include "frontend/menu_windows.h"

#include "audio/audio.h"
#include "config/config_writer.h"
#include "frontend/menu_scene.h"
#include "graphics/video.h"
#include "gui/manager.h"
#include "play/kolvex.h"
#include "scene/game_mode.h"

#include <algorithm>
#include <cstdio>

constinit MenuWindows menuWindows;

namespace {

struct Resolution {
    int width;
    int height;
    const char* caption;
};

constexpr std::array<Resolution, 4> Resolutions = {
    {{640, 480, "640x480"}, {800, 600, "800x600"}, {1024, 768, "1024x768"}, {1280, 960, "1280x960"}}};

// Volumes go from 0 to 128, their sliders from 0 to 10; both ways are cut to whole numbers.
constexpr int SliderEnd = 10;
constexpr double SlidesPerVolume = 0.078125;
constexpr double VolumePerSlide = 12.8;

int VolumeOf(const GUI_ScrollBar& bar) {
    return static_cast<int>(bar.position * VolumePerSlide);
}

void SetUp(GUI_Component& component, const char* caption, float top) {
    component.caption = caption;
    component.top = top;
}

void SetUp(GUI_Component& component, const char* caption, float left, float top) {
    component.caption = caption;
    component.Place(left, top);
}

} // namespace

void MenuWindows::Build() {
    gui.AddWindow(&quitDialog);
    gui.AddWindow(&optionsWindow);
    gui.AddWindow(&creditsWindow);
    gui.cursor.visible = false;
    BuildQuitDialog();
    BuildOptions();
    BuildCreditsWindow();
    optionsWindow.SetSize(0.3F, 0.2F);
    ResetOptions();
}

void MenuWindows::BuildQuitDialog() {
    quitDialog.caption = "Are you sure?";
    quitDialog.Place(0.31F, 0.4F);
    quitDialog.width = 0.37F;
    quitDialog.visible = false;
    quitDialog.resizeButton.state = GuiState::Disabled;
    quitDialog.closeButton.OnClick = OnQuitCancel;
    SetUp(quitButton, "Quit", 0.02F);
    quitButton.OnClick = OnQuit;
    SetUp(quitCancel, "Cancel", 0.17F, 0.02F);
    quitCancel.OnClick = OnQuitCancel;
    quitDialog.AddComponent(&quitButton);
    quitDialog.AddComponent(&quitCancel);
}

void MenuWindows::BuildOptions() {
    optionsWindow.caption = "Options";
    optionsWindow.Place(0.21F, 0.2F);
    optionsWindow.visible = false;
    optionsWindow.resizeButton.state = GuiState::Disabled;
    optionsWindow.closeButton.OnClick = OnOptionsCancel;
    optionsWindow.OnResize = OnOptionsResize;
    optionsCancel.caption = "Cancel";
    optionsCancel.OnClick = OnOptionsCancel;
    optionsOk.caption = "   OK";
    optionsOk.OnClick = OnOptionsOk;
    pages.top = 0.01F;
    optionsWindow.AddComponent(&optionsCancel);
    optionsWindow.AddComponent(&optionsOk);
    optionsWindow.AddComponent(&pages);
    generalPage.caption = "General";
    generalPage.top = -0.01F;
    videoPage.caption = "Video";
    audioPage.caption = "Audio";
    for (GUI_Page* page : {&generalPage, &videoPage, &audioPage})
        pages.AddPage(page);
    pages.SetActivePage(&generalPage);
    BuildGeneralPage();
    BuildVideoPage();
    BuildAudioPage();
}

void MenuWindows::BuildGeneralPage() {
    SetUp(gameplayLabel, "Gameplay:", -0.01F, 0.04F);
    SetUp(showGrid, "Show Grid", 0.1F);
    generalPage.AddComponent(&gameplayLabel);
    generalPage.AddComponent(&showGrid);
}

void MenuWindows::BuildVideoPage() {
    SetUp(resolutionLabel, "Screen resolution:", -0.01F, 0.04F);
    videoPage.AddComponent(&resolutionLabel);
    for (std::size_t i = 0; i < ResolutionCount; ++i) {
        SetUp(resolutions[i], Resolutions[i].caption, 0.1F + 0.05F * static_cast<float>(i));
        resolutions[i].OnClick = OnPickResolution;
        videoPage.AddComponent(&resolutions[i]);
    }
    SetUp(lighting, "Lighting", 0.3F, 0.1F);
    SetUp(fullscreen, "Fullscreen", 0.3F, 0.15F);
    fullscreen.OnClick = OnVideoChanged;
    videoPage.AddComponent(&lighting);
    videoPage.AddComponent(&fullscreen);
}

void MenuWindows::BuildAudioPage() {
    SetUp(volumeLabel, "Volume:", -0.01F, 0.04F);
    audioPage.AddComponent(&volumeLabel);
    BuildVolume(sound, 0.1F, OnSoundVolume);
    BuildVolume(music, 0.2F, OnMusicVolume);
}

void MenuWindows::BuildVolume(Volume& volume, float top, void (*onChange)(GUI_ScrollBar* bar)) {
    volume.bar.top = top;
    volume.bar.width = 0.3F;
    volume.bar.max = SliderEnd;
    volume.bar.OnChange = onChange;
    SetUp(volume.label, volume.text.data(), 0.3F, top);
    volume.label.width = 0.2F;
    audioPage.AddComponent(&volume.bar);
    audioPage.AddComponent(&volume.label);
}

void MenuWindows::BuildCreditsWindow() {
    creditsWindow.Place(0.8F, 0.9F);
    creditsWindow.width = 0.2F;
    creditsWindow.height = 0.1F;
    creditsWindow.visible = false;
    SetUp(creditsBack, "Back", 0.005F, 0.005F);
    creditsBack.OnClick = OnCreditsBack;
    creditsWindow.AddComponent(&creditsBack);
}

void MenuWindows::ShowOptions() {
    quitDialog.visible = false;
    optionsWindow.visible = true;
}

void MenuWindows::ShowQuitDialog() {
    quitDialog.visible = true;
    optionsWindow.visible = false;
}

void MenuWindows::ShowVolume(Volume& volume, const char* name) {
    std::snprintf(volume.text.data(), volume.text.size(), "%s = %d%%", name,
                  static_cast<int>(volume.bar.position) * SliderEnd);
}

void MenuWindows::SetFromVolume(Volume& volume, const char* name, std::uint8_t level) {
    volume.bar.position = static_cast<std::int32_t>(level * SlidesPerVolume);
    volume.bar.SetPosition();
    ShowVolume(volume, name);
}

// The sliders' steps are coarser than the volumes: moving them to show a volume must not change it.
void MenuWindows::ResetOptions() {
    lighting.checked = video.Lighting();
    fullscreen.checked = video.Fullscreen();
    showGrid.checked = kolvex.showgrid;
    showingOptions = true;
    SetFromVolume(sound, "Sound", audio.GetSoundVolume());
    SetFromVolume(music, "Music", audio.music.GetVolume());
    showingOptions = false;
    for (std::size_t i = 0; i < ResolutionCount; ++i)
        resolutions[i].checked =
            video.Width() == Resolutions[i].width && video.Height() == Resolutions[i].height;
    videoChanged = false;
}

void MenuWindows::ApplyVideoMode() {
    const auto picked = std::find_if(resolutions.begin(), resolutions.end() - 1,
                                     [](const GUI_RadioButton& button) { return button.checked; });
    const Resolution& size = Resolutions[static_cast<std::size_t>(picked - resolutions.begin())];
    video.SetMode(size.width, size.height, fullscreen.checked);
    menuScene.ReloadGraphics();
}

void MenuWindows::ApplyOptions() {
    if (videoChanged) ApplyVideoMode();
    video.SetLighting(lighting.checked);
    menuScene.blockMenu.SetState(BlockMenu::Phase::Ready);
    optionsWindow.visible = false;
    kolvex.showgrid = showGrid.checked;
    videoChanged = false;
    INI_Writer writer; // all three or none
    audio.WriteParameters(ConfigName, writer);
    kolvex.Save(ConfigName, writer);
    video.Save(ConfigName, writer);
}

void MenuWindows::OnQuit(GUI_Element* /*element*/) {
    audio.music.FadeOut();
    Main::GoDestroy();
}

void MenuWindows::OnQuitCancel(GUI_Element* /*element*/) {
    menuScene.blockMenu.SetState(BlockMenu::Phase::Ready);
    menuWindows.quitDialog.visible = false;
}

void MenuWindows::OnOptionsOk(GUI_Element* /*element*/) {
    menuWindows.ApplyOptions();
}

void MenuWindows::OnOptionsCancel(GUI_Element* /*element*/) {
    menuWindows.ResetOptions();
    menuScene.blockMenu.SetState(BlockMenu::Phase::Ready);
    menuWindows.optionsWindow.visible = false;
}

void MenuWindows::OnOptionsResize(GUI_Window* window) {
    window->width = std::max(window->width, 0.6F);
    window->height = std::max(window->height, 0.6F);
    menuWindows.pages.width = window->width - 0.04F;
    menuWindows.pages.height = window->height - 0.2F;
    const float top = window->height - 0.18F;
    menuWindows.optionsCancel.Place(window->width - 0.2F, top);
    menuWindows.optionsOk.Place(window->width - 0.37F, top);
}

void MenuWindows::OnPickResolution(GUI_Element* element) {
    for (GUI_RadioButton& button : menuWindows.resolutions)
        button.checked = &button == element;
    menuWindows.videoChanged = true;
}

void MenuWindows::OnVideoChanged(GUI_Element* /*element*/) {
    menuWindows.videoChanged = true;
}

void MenuWindows::OnSoundVolume(GUI_ScrollBar* bar) {
    if (menuWindows.showingOptions) return;
    ShowVolume(menuWindows.sound, "Sound");
    audio.SetSoundVolume(VolumeOf(*bar));
}

void MenuWindows::OnMusicVolume(GUI_ScrollBar* bar) {
    if (menuWindows.showingOptions) return;
    ShowVolume(menuWindows.music, "Music");
    audio.music.SetVolume(VolumeOf(*bar));
}

void MenuWindows::OnCreditsBack(GUI_Element* /*element*/) {
    menuScene.LeaveCredits();
}
