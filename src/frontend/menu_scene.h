// The main menu: the 3D block menu over the scenery's particles, with its windows, credits and fades.
// Rests on the map, the particle engine and the GUI.
#pragma once

#include "frontend/block_menu.h"
#include "frontend/credits_view.h"
#include "frontend/options_window.h"
#include "frontend/quit_dialog.h"
#include "play/map_scene.h"

class MenuScene : public MapScene, private QuitDialog::Listener, private OptionsWindow::Listener {
public:
    void GameStart(int a, int b) override;
    void GameEnd() override;
    void Update() override;
    void Draw() override;
    // Builds the quit dialog, the options window and the credits window. From then on this scene hears the
    // GUI's clicks and keys outside of windows.
    virtual void BuildMenuGui();

    BlockMenu blockMenu;

protected:
    void GameFrame() override;
    void PauseFrame() override;
    void LeavingFrame() override;
    void EndScene() override;
    void ChangeScene() override;
    // Loads textures and lists again.
    void VideoModeChanged() override;

private:
    // Leaves the menu for the program's end.
    static void OnCloseRequest();

    void QuitConfirmed() override { OnCloseRequest(); }
    void QuitCancelled() override { blockMenu.SetState(BlockMenu::Phase::Ready); }
    void OptionsClosed() override { blockMenu.SetState(BlockMenu::Phase::Ready); }

    static constexpr std::uint32_t FadeDuration = 3000; // ms

    bool LoadScenery();
    void UpdateCredits();
    void DrawAll();
    void Activate();
    void Escape();
    void AskToQuit();
    void Freeze();

    Fade fade;
    CreditsView credits;
    QuitDialog quitDialog;
    OptionsWindow options;
};

extern MenuScene menuScene;
