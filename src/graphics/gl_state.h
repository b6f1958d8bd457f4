// Switches of OpenGL that turn themselves back, and the one quad that all flat pictures are drawn with.
// Rests on OpenGL.
#pragma once

#include <GL/gl.h>

// Blending for as long as the object lives; afterwards it is off. The default lays a picture over what is
// there by its alpha; with GL_ONE as destination its light is added.
class Blend {
public:
    explicit Blend(GLenum source = GL_SRC_ALPHA, GLenum destination = GL_ONE_MINUS_SRC_ALPHA) {
        glEnable(GL_BLEND);
        glBlendFunc(source, destination);
    }
    Blend(const Blend&) = delete;
    Blend& operator=(const Blend&) = delete;
    ~Blend() { glDisable(GL_BLEND); }
};

// Lighting for as long as the object lives, where the player wants it; afterwards it is off.
class Lit {
public:
    explicit Lit(bool wanted) {
        if (wanted) glEnable(GL_LIGHTING);
    }
    Lit(const Lit&) = delete;
    Lit& operator=(const Lit&) = delete;
    ~Lit() { glDisable(GL_LIGHTING); }
};

// A capability that is off for as long as the object lives and on afterwards; `wanted` false leaves it alone.
class Without {
public:
    explicit Without(GLenum switchedOff, bool isWanted = true) : capability(switchedOff), wanted(isWanted) {
        if (wanted) glDisable(capability);
    }
    Without(const Without&) = delete;
    Without& operator=(const Without&) = delete;
    ~Without() {
        if (wanted) glEnable(capability);
    }

private:
    GLenum capability;
    bool wanted;
};

// Two opposite corners, on the screen or in a picture.
struct QuadCorners {
    GLfloat left;
    GLfloat bottom;
    GLfloat right;
    GLfloat top;
};

// A quad at the depth z that shows that part of the bound texture (the default: the whole, v = 1 on top),
// counter-clockwise from the left bottom where y grows upwards. Usable within a display list.
inline void DrawQuad(const QuadCorners& place, const QuadCorners& part = {0, 0, 1, 1}, GLfloat z = 0) {
    glBegin(GL_QUADS);
    glTexCoord2f(part.left, part.bottom);
    glVertex3f(place.left, place.bottom, z);
    glTexCoord2f(part.right, part.bottom);
    glVertex3f(place.right, place.bottom, z);
    glTexCoord2f(part.right, part.top);
    glVertex3f(place.right, place.top, z);
    glTexCoord2f(part.left, part.top);
    glVertex3f(place.left, place.top, z);
    glEnd();
}
