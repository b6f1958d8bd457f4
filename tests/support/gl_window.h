// A real window with a GL context for tests that draw, and what they read back from it.
#pragma once

#include <string_view>
#include <vector>

// Opens the window, or sets the mode of the one that is open, in the game's own way: projection and initial
// state are those of a start. Starts the image library, too. Writes config.cfg and log.txt into the working
// directory, which must hold default/blank.png for whoever loads pictures. The mouse stays free.
void OpenGlWindow(int width = 640, int height = 480);

struct Pixel {
    int red;
    int green;
    int blue;
};

// A pixel of the back buffer; x from the left, y from the top.
Pixel ReadPixel(int x, int y);
// Sum of all colour values of the back buffer: how much light there is.
double ReadLight();

// What a drawing function sends through the pipeline: the vertices' window coordinates, in order.
struct DrawnVertex {
    float x;
    float y;
    float z;
};
std::vector<DrawnVertex> RecordVertices(void (*draw)());
