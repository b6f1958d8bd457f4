// The glow around the menu's boxes: a small copy of what was drawn, laid over the screen again and again,
// each time larger and fainter. Rests on OpenGL and the video object.
#pragma once

#include "graphics/gl_texture.h"
#include "platform/not_copied.h"

class RadialGlow : NotCopied {
public:
    static constexpr int Size = 128; // pixels of the copy's side

    // Makes the texture, in place of one made before; again after a mode change.
    void Create();
    void Release() { texture.Free(); }

    // Between the two, what is drawn goes to the small viewport; afterwards it stands in the texture, and the
    // screen is clear and whole again.
    static void BeginCapture();
    void EndCapture() const;

    // Lays that many copies over the whole screen, adding their light.
    void Draw(int copies) const;

    GLuint Texture() const { return texture.Name(); }

private:
    GlTexture texture;
};
