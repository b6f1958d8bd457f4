#include "stage/view_window.h"

#include "gui/manager.h"
#include "play/map_layers.h"
#include "world/camera.h"

#include <GL/gl.h>

namespace {

// Turned as the camera is.
void DrawFromAbove(GUI_Window* /*window*/) {
    glRotatef(-60.0F, 1.0F, 0.0F, 0.0F);
    glRotatef(camera.rot1, 0.0F, 0.0F, 1.0F);
    glTranslatef(camera.x, camera.y, -2.0F);
    DrawGround();
    DrawObjects();
    DrawParticles();
}

} // namespace

void ViewWindow::Build() {
    caption = "In eyes:";
    Place(0.6F, 0.0F);
    OnDraw3D = DrawFromAbove;
    gui.AddWindow(this);
    SetSize(0.4F, 0.4F);
}
