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

    constexpr QuitDialog() = default;

    // Stands on the screen, hidden, from then on; the listener must outlive that.
    void Build(Listener& scene);

private:
    static QuitDialog& Of(const GUI_Element* part) { return static_cast<QuitDialog&>(*part->parent); }
    static void OnQuit(GUI_Element* button);
    static void OnCancel(GUI_Element* button);

    Listener* listener = nullptr;
    GUI_Button quit;
    GUI_Button cancel;
};
