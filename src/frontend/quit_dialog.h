// The menu's question whether to quit.
#pragma once

#include "gui/button.h"
#include "gui/window.h"

class QuitDialog : public GUI_Window {
public:
    // Hears what the player answers.
    class Listener {
    public:
        virtual void QuitConfirmed() = 0;
        virtual void QuitCancelled() = 0; // the dialog has hidden itself

    protected:
        ~Listener() = default;
    };

    // Stands on the screen, hidden, from then on; the listener must outlive that.
    void Build(Listener& scene);

private:
    Listener* listener = nullptr;
    GUI_Button quit;
    GUI_Button cancel;
};
