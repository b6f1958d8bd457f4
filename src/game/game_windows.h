// The six windows of the game: pause drop-down, next piece and score panel stay on screen; the dialogs for a
// new high score, for the list of scores and for leaving open over them. Rests on the GUI toolkit, the rules
// and the game scene.
#pragma once

#include "gui/button.h"
#include "gui/edit_box.h"
#include "gui/hwindow.h"
#include "gui/items.h"
#include "gui/label.h"
#include "gui/manager.h"

#include <array>

class ConfigFile;
class INI_Writer;

class GameWindows {
public:
    constexpr GameWindows() = default;

    // Sets all windows up as at the start of a game and hands them to the GUI manager.
    void Build();
    // From then on a window that is to be closed asks before it leaves the game.
    void InstallQuitHandlers() const;
    // Puts score, level and lines into the panel's texts.
    void WriteTexts();
    // The places of the three windows that stay on screen. A window whose place lies off the screen is
    // brought back.
    void SavePlaces(INI_Writer& writer);
    void LoadPlaces(ConfigFile* file);

    // The rules' onGameOver: pauses and opens the list of scores, or asks for a name.
    static void OnGameOver();

private:
    enum Line { ScoreTitle, ScoreValue, LevelTitle, LevelValue, LinesTitle, LinesValue, LineCount };

    void BuildPause();
    void BuildNext();
    void BuildScores();
    void BuildName();
    void BuildList();
    void BuildConfirmation();
    void EnablePlayWindows(bool enabled);
    void AskToLeave(const char* caption, GUI_Element::ElementHook answer);
    void ShowList();
    static void GoOn();
    void Leave();
    void EnterName();

    // The hooks of the widgets.
    static void OnPauseChoice(GUI_Element* element);
    static void OnKey(SDL_keysym key);
    static void OnQuitRequest();
    static void OnNameKey(GUI_Element* element, SDL_keysym key);
    static void OnNameOk(GUI_Element* element);
    static void OnNameCancel(GUI_Element* element);
    static void OnRestart(GUI_Element* element);
    static void OnQuit(GUI_Element* element);
    static void OnMenu(GUI_Element* element);
    static void OnConfirmCancel(GUI_Element* element);
    static void OnListResize(GUI_Window* window);
    static void OnListDraw(GUI_Window* window);

    GUI_HWindow pauseWindow;
    GUI_Items pauseItems;

    GUI_HWindow nextWindow;
    GUI_Label nextLabel;

    GUI_HWindow scoreWindow;
    std::array<GUI_Label, LineCount> scoreLabels;
    std::array<char, 16> scoreText{};
    std::array<char, 16> levelText{};
    std::array<char, 16> linesText{};

    GUI_Window nameWindow;
    GUI_Label nameLabel;
    GUI_EditBox nameBox;
    GUI_Button nameOk;
    GUI_Button nameCancel;

    GUI_Window listWindow;
    GUI_Button restartButton;
    GUI_Button quitButton;
    GUI_Button menuButton;

    GUI_Window confirmWindow;
    GUI_Button confirmOk;
    GUI_Button confirmCancel;
    GUI_Label confirmFirst;
    GUI_Label confirmSecond;
};

extern GameWindows gameWindows;
