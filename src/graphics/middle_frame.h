// The middle of the screen, in the proportions 4:3: windows, texts and pointer keep to it on screens of any
// shape, and the scene fills the rest. On a 4:3 screen it is the whole.
#pragma once

#include <algorithm>

// In pixels from the screen's upper left; the same strip is left over at both sides.
struct MiddleFrame {
    double left = 0.0;
    double top = 0.0;
    double width = 0.0;
    double height = 0.0;

    // The largest that fits into a screen of that many pixels, of which at least one is counted each way.
    static constexpr MiddleFrame Of(int screenWidth, int screenHeight) {
        const double w = std::max(screenWidth, 1);
        const double h = std::max(screenHeight, 1);
        const double width = 3.0 * w > 4.0 * h ? h * 4.0 / 3.0 : w;
        const double height = 3.0 * w > 4.0 * h ? h : w * 3.0 / 4.0;
        return {(w - width) / 2.0, (h - height) / 2.0, width, height};
    }

    // Between shares of the frame, 0 to 1 within it, and pixels of the screen.
    constexpr double PixelX(double share) const { return left + width * share; }
    constexpr double PixelY(double share) const { return top + height * share; }
    constexpr double ShareX(double pixel) const { return (pixel - left) / width; }
    constexpr double ShareY(double pixel) const { return (pixel - top) / height; }
};
