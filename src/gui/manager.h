// The GUI manager: the skin, the windows on screen from the lowest to the topmost, the focused and the
// hovered element, cursor, sounds and loading screen. A scene hands it windows, lets it process the events
// and draw once a frame, and clears it at its end. It refers to windows and elements, which their scenes own;
// one that is destroyed before Clear takes itself out.
#pragma once

#include "gui/gui_cursor.h"
#include "gui/label.h"
#include "gui/progress_bar.h"
#include "gui/skin.h"
#include "gui/stops.h"
#include "gui/window.h"
#include "platform/not_copied.h"

#include <cstdint>
#include <string>
#include <vector>

class ConfigFile;
struct AudioSample;
template<class Record> struct RecordTable;

// What the skin file's blocks `cursor` and `audio` say.
struct CursorRecord {
    std::string image;
    float size = 0;

    static RecordTable<CursorRecord> Table();
};
struct SoundsRecord {
    std::string hover, click;

    static RecordTable<SoundsRecord> Table();
};

// The screen that is shown while a map loads, and what it replaced meanwhile.
struct LoadingScreen {
    GUI_Window window;
    GUI_Label label;
    GUI_ProgressBar bar;
    bool shown = false;
    std::vector<GUI_Window*> savedWindows;
    GUI_Element* savedFocus = nullptr;
    GUI_Element* savedHovered = nullptr;
    void (*savedOnReleaseOutside)() = nullptr;
    void (*savedOnKey)(SDL_keysym key) = nullptr;
};

class QEV_Gui : NotCopied {
public:
    ~QEV_Gui();

    // Reads cursor, sounds and skin. Whatever is missing is logged and the defaults stay. Needs the video and
    // the audio object started.
    void Start(const char* path);
    void Destroy();
    // Empties the screen: the focused element loses the focus, windows lose their children and leave the
    // list; focus, hovered element and the callbacks become none.
    void Clear();

    // Puts a window on top, sets its buttons up from the skin and applies the size limits (GUI_HWindow: not).
    // The first window of an empty screen takes the focus. A window that is on screen already is left alone.
    void AddWindow(GUI_Window* window);
    // What a window and an element that are destroyed do: nothing here refers to them any more.
    void RemoveWindow(GUI_Window& window);
    void Forget(const GUI_Element& element);

    // Null takes the focus away. The focused element's window comes to the front.
    void SetFocus(GUI_Element* element);
    // Moves the focused element's window to the top.
    void BringToFront();

    // Takes every pending event from SDL's queue and routes it. The frame time is not used.
    void ProcessEvents(std::uint32_t frameTime);
    // Draws the screen over the 3D picture: nothing at all, not even the cursor, without windows.
    void Draw();
    // One whole frame of only the GUI: clears, draws and swaps.
    void Render();

    // The routing of single events; positions are the cursor's. A key goes to the scene, to the focused
    // element and, if that does not keep it, moves the pointer or clicks.
    void MouseMove();
    void MouseDown();
    void MouseUp();
    void KeyDown(SDL_keysym key);
    void KeyUp(SDL_keysym key);
    // Ends a press and a hover, for a scene that stops listening before the release.
    void LetGo();

    // Replaces the screen by a window with a progress bar of that many steps, until LoadingEnd puts it back.
    void LoadingStart(float left, float top, std::uint16_t steps, const char* caption);
    // One step on, shown at once. The text is not owned.
    void LoadingStep(const char* text);
    // Without a LoadingStart before it, the screen is only cleared.
    void LoadingEnd();

    // After a change of the video mode.
    void ReloadTextures();
    GUI_Styles& GetStyles() { return styles; }
    const GUI_Styles& GetStyles() const { return styles; }

    void PlayHoverSound() const;
    void PlayClickSound() const;

    GUI_Element* Focused() const { return focus; }
    GUI_Element* Hovered() const { return hovered; }
    // From the lowest to the topmost.
    const std::vector<GUI_Window*>& Windows() const { return windows; }

    GuiCursor cursor;
    bool soundsEnabled = false; // from Start on

    void (*OnReleaseOutside)() = nullptr;    // a mouse button came up over no window
    void (*OnKey)(SDL_keysym key) = nullptr; // every key press, before the focused element sees it
    void (*OnQuit)() = nullptr;              // the window is to be closed
    // Adds what the scene itself lets the player click, outside of all windows, in GUI units; asked for when
    // a key moves the pointer.
    void (*OnStops)(std::vector<GuiPoint>& points) = nullptr;

private:
    // The topmost element under the point; in a disabled window only when asked for.
    GUI_Element* HitElement(GuiPoint point, bool disabledToo) const;
    GUI_Element* HitElement(bool disabledToo) const { return HitElement({cursor.x, cursor.y}, disabledToo); }
    void DropFocus();
    // What a key does that no element keeps: Tab and arrows move the pointer from one thing that can be
    // clicked to the next, Return clicks.
    void Navigate(const SDL_keysym& key);
    // Everything that can be clicked now, in reading order.
    std::vector<GuiStop> Stops() const;
    // The stop to which the key leads from the pointer, or none.
    std::optional<std::size_t> NextStop(const std::vector<GuiStop>& stops, const SDL_keysym& key) const;
    void MovePointerTo(GuiPoint point);
    void ClickAtPointer();
    // A controller's event as what a key would do.
    void HearController(const SDL_Event& event);
    // Puts the cursor on a pixel of the screen.
    void MovePointer(int pixelX, int pixelY);
    void ForgetScreen();
    void SetUpButtons(GUI_Window& window) const;
    void DrawFocusFrame();
    void ReadCursor(ConfigFile* file, const char* path);
    void ReadSounds(ConfigFile* file, const char* path);

    GUI_Styles styles;
    std::vector<GUI_Window*> windows;
    GUI_Element* focus = nullptr;
    GUI_Element* hovered = nullptr;
    GUI_Element* pressed = nullptr;    // until the release
    AudioSample* hoverSound = nullptr; // handles of the audio object
    AudioSample* clickSound = nullptr;
    LoadingScreen loading;
};

extern QEV_Gui gui;
