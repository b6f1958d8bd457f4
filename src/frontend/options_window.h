// The options: three pages, and OK or Cancel. What a page sets it sets itself; the scene hears what it has to
// do about it.
#pragma once

#include "frontend/options_pages.h"
#include "gui/button.h"
#include "gui/page_control.h"
#include "gui/window.h"

class OptionsWindow : public GUI_Window {
public:
    class Listener {
    public:
        virtual void VideoModeChanged() = 0; // textures and lists are to be loaded again
        virtual void OptionsClosed() = 0;    // accepted or cancelled; the window has hidden itself

    protected:
        ~Listener() = default;
    };

    // Stands on the screen, hidden, from then on; the listener must outlive that.
    void Build(Listener& scene);
    // Shows on all pages what is set now.
    void Reset();

private:
    static void OnResized(GUI_Window* window);
    void Accept();
    void Close();

    Listener* listener = nullptr;
    GUI_Button cancel;
    GUI_Button ok;
    GUI_PageControl pages;
    GeneralPage general;
    VideoPage videoMode;
    AudioPage volumes;
};
