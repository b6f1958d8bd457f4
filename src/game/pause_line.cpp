// Escape always ends the pause, whatever is bound.
#include "game/pause_line.h"

#include "graphics/font.h"
#include "graphics/gl_state.h"
#include "input/input.h"
#include "scene/game_mode.h"

#include <SDL.h>

bool IsPauseKey(int key) {
    const KeyBinding* const binding = input.Find(key);
    return binding && binding->keyDown == Main::Pause;
}

std::string PauseLine() {
    std::string line = "PAUSE - ESCAPE";
    for (const KeyName& key : KeyNames)
        if (key.code != SDLK_ESCAPE && IsPauseKey(key.code)) line += std::string(", ") + key.name;
    return line + ": resume";
}

// On the font's grid of 640 x 480, across the middle of the well.
void DrawPauseLine(const std::string& line) {
    constexpr int WellMiddle = 335;
    constexpr int LineTop = 200;
    constexpr int LetterWidth = 10;
    constexpr int Margin = 8;
    const int width = LetterWidth * static_cast<int>(line.size());
    const int left = WellMiddle - width / 2;
    const Without depth(GL_DEPTH_TEST);
    {
        const FlatScreen flat(640.0, 480.0, 0.0);
        const Blend blend;
        const Without texture(GL_TEXTURE_2D);
        glColor4f(0.0F, 0.0F, 0.0F, 0.7F); // so that it can be read before any scenery
        DrawQuad({static_cast<GLfloat>(left - Margin), LineTop + 16,
                  static_cast<GLfloat>(left + width + Margin), LineTop - 10});
    }
    glColor3f(1.0F, 1.0F, 1.0F);
    font.Print(left, LineTop, 0, "%s", line.c_str());
}
