// Switches of OpenGL that turn themselves back, and the one quad that all flat pictures are drawn with.
// Rests on OpenGL.
#pragma once

#include "platform/not_copied.h"

#include <GL/gl.h>

// Blending for as long as the object lives; afterwards it is off. The default lays a picture over what is
// there by its alpha; with GL_ONE as destination its light is added.
class Blend : NotCopied {
public:
    explicit Blend(GLenum source = GL_SRC_ALPHA, GLenum destination = GL_ONE_MINUS_SRC_ALPHA) {
        glEnable(GL_BLEND);
        glBlendFunc(source, destination);
    }
    ~Blend() { glDisable(GL_BLEND); }
};

// A capability that is switched for as long as the object lives and back afterwards; `wanted` false leaves it
// alone.
template<bool On> class Switched : NotCopied {
public:
    explicit Switched(GLenum switched, bool isWanted = true) : capability(switched), wanted(isWanted) {
        Set(On);
    }
    ~Switched() { Set(!On); }

private:
    void Set(bool on) const {
        if (wanted) (on ? glEnable : glDisable)(capability);
    }

    GLenum capability;
    bool wanted;
};
using With = Switched<true>;     // on, and off afterwards
using Without = Switched<false>; // off, and on afterwards

// Two opposite corners, on the screen or in a picture.
struct QuadCorners {
    GLfloat left;
    GLfloat bottom;
    GLfloat right;
    GLfloat top;
};

// A quad at the depth z that shows that part of the bound texture (the default: the whole, v = 1 on top),
// counter-clockwise from the left bottom where y grows upwards. Usable within a display list.
inline void DrawQuad(const QuadCorners& corners, const QuadCorners& part = {0, 0, 1, 1}, GLfloat z = 0) {
    glBegin(GL_QUADS);
    glTexCoord2f(part.left, part.bottom);
    glVertex3f(corners.left, corners.bottom, z);
    glTexCoord2f(part.right, part.bottom);
    glVertex3f(corners.right, corners.bottom, z);
    glTexCoord2f(part.right, part.top);
    glVertex3f(corners.right, corners.top, z);
    glTexCoord2f(part.left, part.top);
    glVertex3f(corners.left, corners.top, z);
    glEnd();
}

// A flat screen under the drawing, in place of projection and view, for as long as the object lives.
class FlatScreen : NotCopied {
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
    ~FlatScreen() {
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();
        glMatrixMode(GL_MODELVIEW);
        glPopMatrix();
    }
};
