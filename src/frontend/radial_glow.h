// The glow around the menu's boxes: a small copy of what was drawn, laid over the screen again and again,
// each time larger and fainter. Rests on OpenGL and the video object.
#pragma once

#include "graphics/gl_texture.h"

#include <cstdint>

// How many copies the glow has, kept between 0 and 20 by the menu so that slow machines draw fewer.
extern float glowLevel;

// One step of the level towards what the machine can do: down below 60 frames a second, otherwise up.
void AdjustGlowLevel(std::uint16_t framesPerSecond);

class RadialGlow {
public:
    static constexpr int Size = 128; // pixels of the copy's side

    constexpr RadialGlow() = default;
    RadialGlow(const RadialGlow&) = delete;
    RadialGlow& operator=(const RadialGlow&) = delete;

    // Makes the texture, in place of one made before; again after a mode change.
    void Create();
    void Release() { texture.Free(); }

    // Between the two, what is drawn goes to the small viewport; afterwards it stands in the texture, and the
    // screen is clear and whole again.
    void BeginCapture() const;
    void EndCapture() const;

    // Lays the copies over the whole screen, adding their light.
    void Draw() const;

    GLuint Texture() const { return texture.Name(); }

private:
    GlTexture texture;
};
