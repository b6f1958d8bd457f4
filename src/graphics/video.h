// The screen: reads the video settings, opens the OpenGL window, sets projection and initial state, and keeps
// the screen's size for everything that draws. Rests on SDL, OpenGL with GLU, and the configuration reader
// and writer.
#pragma once

#include "config/unread_keys.h"

#include <GL/gl.h>

class ConfigFile;
class INI_Writer;
template<class Record> struct RecordTable;

class QEV_Video {
public:
    // Reads the settings from the file at `path` (a missing file or block gives the defaults), starts SDL's
    // video, opens the window, reports the driver in the log and grabs the mouse. Any failure to open a
    // window is logged and ends the program with status 1.
    void Load(const char* path);

    // Reads the block "video". A key that the block lacks reads as 0, but vertical sync is then on; only a
    // missing block gives the defaults.
    void ReadParameters(ConfigFile* file);
    // 640 x 480, 32 bits, full screen, lighting and vertical sync on.
    void SetDefaults();

    // Sets the mode and the projection. A width or height of 0 is replaced by 640 x 480, 32 bits, full
    // screen; all other values go to SDL as they are. A mode that cannot be set is logged and ends the
    // program with status 1. Afterwards the context generation is new: textures and lists have to be rebuilt.
    void SetGLMode(int newWidth, int newHeight, bool newFullscreen, int newBpp);
    // The same at run time, with the current depth; sets the initial state again too.
    void SetMode(int newWidth, int newHeight, bool newFullscreen);

    // Takes a size, in pixels, without a window: what is computed from the screen's size follows it, and
    // nothing is drawn.
    void SetSize(int newWidth, int newHeight);

    static RecordTable<QEV_Video> Table();
    // Writes the block "video" of the file at `path`.
    // With a writer it becomes part of the save that that has under way for the file, if it has.
    void Save(const char* path, INI_Writer* writer = nullptr) const;

    // Only the flag; what it changes is seen in the next frame that asks for it.
    void SetLighting(bool on) { lighting = on; }

    // Size of the screen in pixels; the halves are truncated.
    int Width() const { return width; }
    int Height() const { return height; }
    int HalfWidth() const { return width / 2; }
    int HalfHeight() const { return height / 2; }
    // Colour depth as passed to SDL, in bits a pixel.
    int Bpp() const { return bpp; }
    bool Fullscreen() const { return fullscreen; }
    // Whether the scenes use GL lighting.
    bool Lighting() const { return lighting; }

    // Counts the modes set so far; 0 before the first. Whoever keeps GL objects keeps the generation that
    // they were made in: after a change everything that is shown has to be made anew.
    unsigned ContextGeneration() const { return generation; }
    // Whether GL objects made in the given generation still exist: a mode change keeps the context on some
    // systems and replaces it on others, and after SDL's stop nothing is left. Objects that no longer exist
    // are forgotten and not deleted, since their names may belong to others by now.
    bool ContextHolds(unsigned madeIn) const;

private:
    static void OpenVideo();
    void OpenWindow() const;
    void ReportVerticalSync() const;
    void CountContext();
    void ApplyProjection() const;

    int width = 0;
    int height = 0;
    int bpp = 0;
    bool fullscreen = false;
    bool lighting = false;
    bool vsync = true; // whether the driver is asked to show each picture at the screen's own pace
    UnreadKeys unread;
    unsigned generation = 0;
    unsigned oldestLiving = 1; // first generation whose objects the current context holds
    unsigned marker = 0;       // an empty list that shows whether a context outlived a mode change
};

extern QEV_Video video;

// What the driver says of itself (GL_VENDOR, GL_RENDERER, GL_VERSION or GL_EXTENSIONS); "" without a context.
const char* DriverText(GLenum name);
