// What all scenes share: the ten operations by which the mode loop runs a scene, and the one frame loop.
// Scenes that read keys or play on a map override ExecConfig and the map operations (play/key_scene.h,
// play/map_scene.h); this folder knows neither.
#pragma once

#include "platform/not_copied.h"
#include "scene/fade.h"
#include "scene/game_mode.h"

#include <cstdint>
#include <optional>
#include <string>

// The settings: read at start and by every scene, rewritten block by block when they change.
inline constexpr char ConfigName[] = "config.cfg";

class mainScene : NotCopied {
public:
    // The ten operations in their fixed order. Loads and sets up the scene, runs its frames and returns when
    // it has ended. The mode loop passes 0 and 0.
    virtual void GameStart(int a, int b) = 0;
    // Frees what the scene loaded.
    virtual void GameEnd() = 0;
    // Loads a map file; false when the scene cannot go on (logged).
    [[nodiscard]] virtual bool LoadMap(const char* /*path*/) { return false; }
    // Removes the objects of the current map; always true.
    virtual bool StopMap() { return true; }
    // Creates the empty objects of a new map; always true.
    virtual bool StartMap() { return true; }
    // Creates the scene's windows.
    virtual void BuildGui() {}
    // Reads the key bindings of a configuration file; a missing file is logged.
    virtual void ExecConfig(const char* /*path*/) {}
    // The frame loop: frames by state until the scene has ended, with one log line at every change of state.
    virtual void GameProcess();
    // One frame of logic.
    virtual void Update() = 0;
    // One frame of drawing.
    virtual void Draw() = 0;

    virtual ~mainScene() = default;

protected:
    // The scene's part of a frame in each state. The loop clears the buffers and selects the model-view
    // matrix before it and swaps the buffers after it.
    virtual void GameFrame() = 0;
    virtual void PauseFrame() = 0;
    // Called when play pauses and when it goes on.
    virtual void EnterPause() {}
    virtual void LeavePause() {}
    // Ends the scene: its last frames, its log lines, GameEnd; after EndScene the next mode is requested.
    virtual void EndScene() = 0;
    virtual void ChangeScene() = 0;
    // What the state-change line is called: "MainServer" or "MainScene".
    virtual const char* ProcessName() const { return "MainServer"; }

    // A frame of leaving, in scenes that fade out.
    virtual void LeavingFrame() {}
    // Frames of leaving for as long as the fade runs, at least one, and no more once the program must end;
    // then a last black picture.
    void RunLeavingFrames(const Fade& fade);

    // Path last given to LoadMap and to ExecConfig, at most 79 bytes; none before.
    std::optional<std::string> mapName;
    std::optional<std::string> configName;

private:
    // One whole frame: clear, the given part of this scene, swap. Does nothing once the media layer is down.
    void RunFrame(void (mainScene::*frame)());
    static void BlackFrame();
    // Frames of the given kind for as long as the state holds.
    void RunWhile(State state, void (mainScene::*frame)());

    std::uint32_t lastPicture = 0; // SDL's tick at which it was shown
};
