// From the back to the front: glow, logos, boxes, and the name of the hovered one.
#include "frontend/block_menu.h"

#include "graphics/font.h"
#include "graphics/gl_state.h"
#include "graphics/ksm_model.h"
#include "graphics/middle_frame.h"
#include "graphics/video.h"
#include "gui/manager.h"

#include <GL/gl.h>

namespace {

constexpr std::array<const char*, BlockMenu::ItemCount> ItemNames = {"OPTIONS", "CREDITS", "NEW GAME",
                                                                     "QUIT"};

// The picture around (x, y) in the plane z = 0, its rows from vBottom to vTop.
void DrawPicture(const QEV_Textures& picture, float x, float y, float halfWidth, float halfHeight,
                 float vBottom = 0.0F, float vTop = 1.0F) {
    if (picture.Count() == 0) return;
    glBindTexture(GL_TEXTURE_2D, picture.Get(0));
    DrawQuad({x - halfWidth, y - halfHeight, x + halfWidth, y + halfHeight}, {0.0F, vBottom, 1.0F, vTop});
}

} // namespace

void BlockMenu::Draw() {
    glow.BeginCapture();
    DrawBoxes();
    glow.EndCapture();
    if (phase != Phase::Gathering) DrawMakerLogo();
    glow.Draw(static_cast<int>(glowLevel.Value()));
    if (phase != Phase::Gathering) DrawLogos();
    DrawBoxes();
    if (phase == Phase::Hovered) DrawName();
}

// To the place where all boxes stand, as far as they have spun.
void BlockMenu::Turn() const {
    glTranslatef(0.0F, -1.0F, 2.0F);
    glRotatef(-angleX, 1.0F, 0.0F, 0.0F);
    glRotatef(-angleY, 0.0F, 1.0F, 0.0F);
}

void BlockMenu::DrawBoxes() const {
    glPushMatrix();
    Turn();
    glBindTexture(GL_TEXTURE_2D, model && textures ? textures->Get(model->texture) : 0);
    for (std::size_t i = 0; i < ItemCount; ++i) {
        const Item& item = items[i];
        glLoadName(static_cast<GLuint>(i));
        const float other = static_cast<MenuItem>(i) == hovered ? 0.0F : 1.0F;
        glColor3f(1.0F, other, other);
        glPushMatrix();
        glTranslatef(item.x, item.y, item.z);
        glScalef(item.scale, item.scale, item.scale);
        if (model) model->Draw();
        glPopMatrix();
    }
    glPopMatrix();
}

// Lies under the glow; the picture's lower part belongs to the intro alone.
void BlockMenu::DrawMakerLogo() const {
    const Blend blend;
    glColor4f(1.0F, 1.0F, 1.0F, logoAlpha);
    DrawPicture(makerLogo, 4.7F, -3.5F, 1.0F, 0.65F, 0.65F, 0.0F);
}

void BlockMenu::DrawLogos() const {
    const Blend blend;
    glColor4f(1.0F, 1.0F, 1.0F, logoAlpha);
    DrawPicture(studioLogo, -5.0F, -3.5F, 0.7F, 0.7F);
    const auto wave = static_cast<float>(logoWaveTimer.Wave());
    glPushMatrix();
    glTranslatef(0.0F, 2.5F, 0.0F);
    glRotatef(2.0F * wave, 1.0F, 0.0F, 0.0F);
    glRotatef(-10.0F * wave, 0.0F, 1.0F, 0.0F);
    DrawPicture(gameLogo, 0.0F, 0.0F, 4.0F, 2.0F);
    glPopMatrix();
}

void BlockMenu::DrawName() const {
    const Without depth(GL_DEPTH_TEST);
    glColor3f(1.0F, 1.0F, 1.0F);
    const MiddleFrame frame = MiddleFrame::Of(video.Width(), video.Height());
    font.PrintBoxed(static_cast<int>(frame.PixelX(gui.cursor.x + 0.05F)),
                    static_cast<int>(frame.PixelY(gui.cursor.y)), 0, "%s",
                    ItemNames[static_cast<std::size_t>(hovered)]);
}
