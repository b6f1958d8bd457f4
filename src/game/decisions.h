// What the player decides in the game's windows. A window tells whoever it was built for, which is the scene.
#pragma once

enum class GameDecision {
    Resume,      // from the pause back to the game
    AskForMenu,  // whether to leave for the menu
    AskForQuit,  // whether to end the program
    Stay,        // not to leave after all
    Menu,        // to leave for the menu
    Quit,        // to end the program
    Restart,     // another game
    NameGiven,   // for the table of scores
    NameRefused, // the score does not enter
};

class GameDecisions {
public:
    virtual void Decide(GameDecision decision) = 0;

protected:
    ~GameDecisions() = default;
};
