// A flat screen under the drawing, in place of projection and view, for as long as the object lives.
// Rests on OpenGL.
#pragma once

#include <GL/gl.h>

class FlatScreen {
public:
    // x runs from 0 to `right`; y from `bottom` at the screen's lower edge to `top` at its upper.
    FlatScreen(double right, double bottom, double top) : FlatScreen(0.0, right, bottom, top) {}
    // x runs from `left`.
    FlatScreen(double left, double right, double bottom, double top) {
        glMatrixMode(GL_PROJECTION);
        glPushMatrix();
        glLoadIdentity();
        glOrtho(left, right, bottom, top, -1.0, 1.0);
        glMatrixMode(GL_MODELVIEW);
        glPushMatrix();
        glLoadIdentity();
    }
    FlatScreen(const FlatScreen&) = delete;
    FlatScreen& operator=(const FlatScreen&) = delete;
    ~FlatScreen() {
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();
        glMatrixMode(GL_MODELVIEW);
        glPopMatrix();
    }
};
