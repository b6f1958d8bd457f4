// What is shown: start, windows, drawing, loading screen. Routing of events is in routing.cpp.
#include "gui/manager.h"

#include "audio/audio.h"
#include "base/log.h"
#include "config/record.h"
#include "graphics/gl_state.h"
#include "graphics/middle_frame.h"
#include "graphics/video.h"

#include <GL/gl.h>

#include <algorithm>

constinit QEV_Gui gui;

namespace {

// Under the 60 degrees of the projection, which go from the lower to the upper edge, these put the unit
// square, y downwards, on the middle frame of a screen that is at least as wide as 4:3.
constexpr double ScaleX = 1.53;
constexpr double ScaleY = 1.15;

} // namespace

RecordTable<CursorRecord> CursorRecord::Table() {
    static constexpr RecordKey<CursorRecord> Keys[] = {{"image", &CursorRecord::image},
                                                       {"size", &CursorRecord::size}};
    return {"cursor", Keys};
}

RecordTable<SoundsRecord> SoundsRecord::Table() {
    static constexpr RecordKey<SoundsRecord> Keys[] = {{"hover", &SoundsRecord::hover},
                                                       {"click", &SoundsRecord::click}};
    return {"audio", Keys};
}

void QEV_Gui::ForgetScreen() {
    for (GUI_Window* window : windows)
        window->owner = nullptr;
    windows.clear();
    focus = nullptr;
    hovered = nullptr;
    pressed = nullptr;
    OnReleaseOutside = nullptr;
    OnKey = nullptr;
    OnQuit = nullptr;
    OnStops = nullptr;
}

QEV_Gui::~QEV_Gui() {
    ForgetScreen();
    for (GUI_Window* window : loading.savedWindows)
        window->owner = nullptr;
}

void QEV_Gui::Start(const char* path) {
    ForgetScreen();
    hoverSound = nullptr;
    clickSound = nullptr;
    soundsEnabled = true;
    cursor.visible = true;
    ConfigFile file(path);
    styles.SetDefaults();
    if (file.IsOpen())
        LogWrite("QEV_Gui::Start() - Opening skin - %s\n", path);
    else
        LogWrite("QEV_Gui::Start[ failed ] Loading %s - couldn't open file\n", path);
    ReadCursor(&file, path);
    ReadSounds(&file, path);
    if (INI_FindBlock("skin", &file))
        styles.Load(&file);
    else
        LogWrite("QEV_Gui::Start[ failed ] Loading %s - couldn't find skin block\n", path);
}

void QEV_Gui::ReadCursor(ConfigFile* file, const char* path) {
    cursor.texture.Init();
    cursor.picture = -1;
    cursor.size = GuiCursor::DefaultSize;
    if (!INI_FindBlock("cursor", file)) {
        LogWrite("QEV_Gui::Start[ failed ] Loading %s - couldn't find cursor info block\n", path);
        return;
    }
    CursorRecord record;
    ReadRecord(CursorRecord::Table(), record, file);
    cursor.picture = cursor.texture.Add(record.image.c_str());
    cursor.size = record.size;
}

void QEV_Gui::ReadSounds(ConfigFile* file, const char* path) {
    if (!INI_FindBlock("audio", file)) {
        LogWrite("QEV_Gui::Start[ NOTICE ] Loading %s - audio block not found\n", path);
        return;
    }
    SoundsRecord record;
    ReadRecord(SoundsRecord::Table(), record, file);
    hoverSound = audio.Sample_Add(record.hover.c_str());
    clickSound = audio.Sample_Add(record.click.c_str());
}

void QEV_Gui::Destroy() {
    LogWrite("QEV_Gui::Destroy()\n");
    ForgetScreen();
    styles.Destroy();
    cursor.texture.Free();
    // The audio object has freed them.
    hoverSound = nullptr;
    clickSound = nullptr;
}

void QEV_Gui::Clear() {
    LogWrite("QEV_Gui::Clear()\n");
    LetGo(); // so that a screen built again does not open with a lit button
    DropFocus();
    for (GUI_Window* window : windows)
        window->ClearComponents();
    ForgetScreen();
}

void QEV_Gui::AddWindow(GUI_Window* window) {
    if (!window || std::ranges::find(windows, window) != windows.end()) return;
    windows.push_back(window);
    if (windows.size() == 1) SetFocus(window);
    SetUpButtons(*window);
    window->owner = this;
    if (window->kind != GuiKind::HWindow) window->SetSize(window->width, window->height);
    window->AttachButtons();
}

void QEV_Gui::RemoveWindow(GUI_Window& window) {
    std::erase(windows, &window);
    std::erase(loading.savedWindows, &window);
    window.owner = nullptr;
    Forget(window);
}

void QEV_Gui::Forget(const GUI_Element& element) {
    for (GUI_Element** held : {&focus, &hovered, &pressed, &loading.savedFocus, &loading.savedHovered})
        if (*held == &element) *held = nullptr;
}

void QEV_Gui::SetUpButtons(GUI_Window& window) const {
    if (!styles.closeButton || !styles.resizeButton) return;
    const auto setUp = [](GUI_Button& button, const ButtonSettings& settings) {
        button.caption = settings.caption.c_str();
        button.width = settings.width;
        button.height = settings.height;
        button.stid = settings.stid;
        button.scissor = settings.scissor;
        button.pos_id = static_cast<GuiCorner>(settings.pos_id);
    };
    setUp(window.closeButton, *styles.closeButton);
    window.closeButton.left = styles.closeButton->left;
    window.closeButton.top = styles.closeButton->top;
    setUp(window.resizeButton, *styles.resizeButton);
}

void QEV_Gui::Draw() {
    if (windows.empty()) return;
    const Without depth(GL_DEPTH_TEST);
    glPushMatrix();
    glLoadIdentity();
    const double share = MiddleFrame::Of(video.Width(), video.Height()).height / std::max(video.Height(), 1);
    glScaled(ScaleX * share, -ScaleY * share, -1.0);
    glTranslated(-0.5, -0.5, 1.0);
    for (std::size_t i = 0; i < windows.size(); ++i)
        windows[i]->Draw();
    DrawFocusFrame();
    cursor.Draw();
    glPopMatrix();
}

void QEV_Gui::DrawFocusFrame() {
    if (!focus) return;
    if (focus->IsShown())
        styles.DrawFocus(*focus);
    else
        focus->LostFocus();
}

void QEV_Gui::Render() {
    if (SDL_WasInit(SDL_INIT_VIDEO) == 0) return;
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glMatrixMode(GL_MODELVIEW);
    Draw();
    SDL_GL_SwapBuffers();
}

void QEV_Gui::LoadingStart(float left, float top, std::uint16_t steps, const char* caption) {
    if (!loading.shown) {
        loading.savedWindows = std::move(windows);
        loading.savedFocus = focus;
        loading.savedHovered = hovered;
        loading.savedOnReleaseOutside = OnReleaseOutside;
        loading.savedOnKey = OnKey;
        loading.shown = true;
    }
    windows.clear();
    focus = nullptr;
    hovered = nullptr;

    loading.window.Place(left, top);
    loading.window.caption = caption;
    loading.window.SetSize(0.3F, 0.15F);
    loading.bar.min = 0;
    loading.bar.max = static_cast<std::int16_t>(std::min<int>(steps, INT16_MAX));
    loading.bar.value = 0;
    loading.bar.top = 0.01F;
    loading.bar.width = 0.25F;
    loading.label.Place(0.0F, 0.06F);
    loading.label.width = 0.3F;
    loading.label.caption = "Loading..";
    AddWindow(&loading.window);
    loading.window.AddComponent(&loading.bar);
    loading.window.AddComponent(&loading.label);
}

void QEV_Gui::LoadingStep(const char* text) {
    if (!loading.shown) return;
    if (loading.bar.value < loading.bar.max) ++loading.bar.value;
    loading.label.caption = text;
    Render();
}

void QEV_Gui::LoadingEnd() {
    Clear();
    if (!loading.shown) return;
    windows = std::move(loading.savedWindows);
    loading.savedWindows.clear();
    focus = loading.savedFocus;
    hovered = loading.savedHovered;
    OnReleaseOutside = loading.savedOnReleaseOutside;
    OnKey = loading.savedOnKey;
    loading.shown = false;
}

void QEV_Gui::ReloadTextures() {
    cursor.texture.Reload();
    styles.image.Reload();
}

void QEV_Gui::PlayHoverSound() const {
    audio.Simple_Play(hoverSound);
}

void QEV_Gui::PlayClickSound() const {
    audio.Simple_Play(clickSound);
}
