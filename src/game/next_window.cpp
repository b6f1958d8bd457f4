#include "game/next_window.h"

#include "game/court.h"
#include "graphics/gl_state.h"
#include "graphics/video.h"
#include "gui/manager.h"
#include "gui/window_parts.h"
#include "play/kolvex.h"

#include <GL/gl.h>

void NextWindow::Build(QEV_Gui& screen, const Kolvex& shown) {
    rules = &shown;
    SetUp(*this, "Next:", 0.02F, 0.02F, 0.25F, 0.3F);
    OnDraw3D = DrawPiece;
    SetUp(label, "Next:", 0.0F);
    screen.AddWindow(this);
    AddComponent(&label);
}

void NextWindow::DrawPiece(GUI_Window* window) {
    const With lighting(GL_LIGHTING, video.Lighting());
    Court::PlaceLight(7.0F, -5.0F, 7.0F);
    static_cast<NextWindow*>(window)->rules->DrawNext();
}
