// The least that a program of this kind does before its first picture: window, mixer, image library and font
// picture, with the calls of their libraries alone, and one blended quad of that font, so that the driver has
// to prepare for drawing as it has for the game. bench/run times the game's start against it.
#include <GL/gl.h>
#include <GL/glu.h>
#include <IL/il.h>
#include <SDL.h>
#include <SDL_mixer.h>

#include <cstdio>

int main(int /*argc*/, char** /*argv*/) {
    if (SDL_Init(SDL_INIT_VIDEO) < 0) return 1;
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 16);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    if (!SDL_SetVideoMode(1024, 768, 32, SDL_OPENGL)) return 1;
    ilInit();
    if (Mix_OpenAudio(44100, AUDIO_S16LSB, 2, 1024) != 0) return 1;
    ILuint image = 0;
    ilGenImages(1, &image);
    ilBindImage(image);
    if (!ilLoadImage("font/basic4.png")) return 1;
    ilConvertImage(IL_RGBA, IL_UNSIGNED_BYTE);
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    gluBuild2DMipmaps(GL_TEXTURE_2D, 4, ilGetInteger(IL_IMAGE_WIDTH), ilGetInteger(IL_IMAGE_HEIGHT), GL_RGBA,
                      GL_UNSIGNED_BYTE, ilGetData());
    glClear(GL_COLOR_BUFFER_BIT);
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glBegin(GL_QUADS);
    glTexCoord2f(0.0F, 0.0F);
    glVertex2f(-0.5F, -0.5F);
    glTexCoord2f(1.0F, 0.0F);
    glVertex2f(0.5F, -0.5F);
    glTexCoord2f(1.0F, 1.0F);
    glVertex2f(0.5F, 0.5F);
    glTexCoord2f(0.0F, 1.0F);
    glVertex2f(-0.5F, 0.5F);
    glEnd();
    SDL_GL_SwapBuffers();
    return 0;
}
