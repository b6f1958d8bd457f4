// The way back out of the credits: one button in a corner.
#pragma once

#include "gui/button.h"
#include "gui/hwindow.h"

class CreditsWindow : public GUI_HWindow {
public:
    // Hears that the player goes back.
    class Listener {
    public:
        virtual void CreditsLeft() = 0;

    protected:
        ~Listener() = default;
    };

    // Stands on the screen, hidden, from then on; the listener must outlive that.
    void Build(Listener& scene);

private:
    Listener* listener = nullptr;
    GUI_Button back;
};
