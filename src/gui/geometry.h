// Where things are: one place for the rectangles in which elements are drawn, hit and clipped.
// Rests on the skin for the client areas of containers.
#pragma once

#include <cstdint>

class GUI_Element;
class GUI_Styles;

struct GuiPoint {
    float x = 0.0F;
    float y = 0.0F;
};

struct GuiRect {
    float left = 0.0F;
    float top = 0.0F;
    float width = 0.0F;
    float height = 0.0F;
};

// A rectangle by its edges; empty when right or bottom are not behind left and top.
struct GuiEdges {
    float left = 0.0F;
    float top = 0.0F;
    float right = 0.0F;
    float bottom = 0.0F;

    bool Contains(float x, float y) const { return x >= left && x < right && y >= top && y < bottom; }
};

// In pixels of the screen, y from the bottom as GL counts.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

// The nine places of a rectangle on which vertices hang: 0 top left, 1 top right, 2 bottom right, 3 bottom
// left, 4 top, 5 bottom, 6 left and 7 right middle, 8 centre. Any other number is the top left.
GuiPoint AnchorPoint(const GuiRect& rect, std::uint8_t anchor);

GuiRect RectOf(const GUI_Element& element);

// The rectangle in which the element is drawn, on the screen.
GuiRect DrawnRect(const GUI_Styles& styles, const GUI_Element& element);
// The same for an element drawn as if it stood in `parent`.
GuiRect DrawnRect(const GUI_Styles& styles, const GUI_Element& element, const GUI_Element* parent);
// The rectangle in which it answers the pointer: the drawn one, cut by the container's right and bottom
// margins if the element is clipped, which an unrolled item list is not.
GuiEdges HitRect(const GUI_Styles& styles, const GUI_Element& element);

// A rectangle in GUI units, by its left and its lower edge, as pixels of a screen of that size: truncated,
// and no side negative.
PixelRect ToPixels(double left, double bottom, double width, double height, int screenWidth,
                   int screenHeight);
// The scissor of an element's client area on a screen of that many pixels; `parent` is null for a window.
PixelRect ScissorRect(const GUI_Styles& styles, const GUI_Element& element, const GUI_Element* parent,
                      int screenWidth, int screenHeight);

// Cuts off what is behind the point; a value that no int holds is clamped, one that is no number is 0.
int TruncateToInt(double value);
