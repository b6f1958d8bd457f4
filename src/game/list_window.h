// The list of the best scores, from which the player starts again, leaves for the menu or quits.
#pragma once

#include "game/decisions.h"
#include "gui/button.h"
#include "gui/window.h"

class HighScoreTable;
class QEV_Gui;

class ListWindow : public GUI_Window {
public:
    // Sets the window up, hidden, as at the start of a game and puts it on the screen. All must outlive that.
    void Build(QEV_Gui& screen, GameDecisions& listener, const HighScoreTable& shown);
    void Show();

    // Place in the table of the score entered last, -1 for none; its row is drawn in red.
    int lastRank = -1;

private:
    void DrawScores() const;
    static void OnSize(GUI_Window* window);
    template<GameDecision decision> static void Tell(GUI_Element* button) {
        WindowOf<ListWindow>(button).decisions->Decide(decision);
    }

    GUI_Button restart;
    GUI_Button quit;
    GUI_Button menu;
    GameDecisions* decisions = nullptr;
    const HighScoreTable* scores = nullptr;
};
