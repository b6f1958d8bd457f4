#include "frontend/radial_glow.h"

#include "graphics/gl_state.h"
#include "graphics/video.h"

namespace {

constexpr float Step = 0.03F; // by which each copy is larger, of the texture's side
constexpr float FirstAlpha = 0.2F;

// The whole screen, showing the texture without a border of the given width.
void DrawCopy(float border) {
    DrawQuad({0.0F, 480.0F, 640.0F, 0.0F}, {border, border, 1.0F - border, 1.0F - border});
}

} // namespace

void RadialGlow::Create() {
    GLuint name = 0;
    glGenTextures(1, &name);
    texture.Take(name);
    glBindTexture(GL_TEXTURE_2D, name);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, Size, Size, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
}

void RadialGlow::BeginCapture() {
    glPushMatrix();
    glViewport(0, 0, Size, Size);
}

void RadialGlow::EndCapture() const {
    glBindTexture(GL_TEXTURE_2D, texture.Name());
    glCopyTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 0, 0, Size, Size);
    glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glViewport(0, 0, video.Width(), video.Height());
    glPopMatrix();
}

void RadialGlow::Draw(int copies) const {
    glDisable(GL_TEXTURE_GEN_S);
    glDisable(GL_TEXTURE_GEN_T);
    glEnable(GL_TEXTURE_2D);
    const Without depth(GL_DEPTH_TEST);
    const Blend light(GL_SRC_ALPHA, GL_ONE);
    glBindTexture(GL_TEXTURE_2D, texture.Name());
    const FlatScreen screen(640.0, 480.0, 0.0);
    for (int k = 0; k < copies; ++k) {
        const auto copy = static_cast<float>(k);
        glColor4f(1.0F, 1.0F, 1.0F, FirstAlpha - copy * FirstAlpha / static_cast<float>(copies));
        DrawCopy(copy * Step);
    }
}
