// The menu's credits view: the camera's way into it and back, the pages that take turns there, and the window
// that leads out.
#pragma once

#include "base/timer.h"
#include "frontend/credits_pages.h"
#include "frontend/credits_window.h"

class CreditsView final : private CreditsWindow::Listener {
public:
    // At the menu, on the way in or there, on the way back.
    enum class Mode : int { Menu, Credits, Back };

    // At the menu, with the people who made the game.
    void Start();
    // The window, hidden, is on the screen from then on.
    void BuildWindow() { window.Build(*this); }
    void End() { pages.Clear(); }

    // Begins the way in; false, and nothing happens, anywhere but at the menu.
    bool Enter();
    // Begins the way back.
    void Leave();

    // Advances by that many milliseconds and puts the camera where it then is; true when the way back has
    // ended.
    bool Update(std::uint32_t delta);
    // Draws the page that has its turn.
    void Draw() const;

    Mode GetMode() const { return mode; }
    // How far the camera is on its way in: 0 at the menu, 1 there.
    float Way() const;

private:
    void CreditsLeft() override { Leave(); }
    bool EndTransition();

    Mode mode = Mode::Menu;
    Timer transition;
    Timer page;                // one run a page
    bool showsCredits = false; // otherwise the high scores
    CreditsPages pages;
    CreditsWindow window;
};
