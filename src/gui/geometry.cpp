// Containers may stand in containers; every rectangle is found by walking up through them.
#include "gui/geometry.h"

#include "graphics/middle_frame.h"
#include "gui/items.h"
#include "gui/skin.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>

namespace {

GuiCorner CornerOf(const GUI_Element& element) {
    // Windows and bare elements hang on nothing; all else is a component.
    if (element.IsWindow() || element.kind == GuiKind::Element) return GuiCorner::TopLeft;
    return static_cast<const GUI_Component&>(element).pos_id;
}

bool FromRight(GuiCorner corner) {
    return corner == GuiCorner::TopRight || corner == GuiCorner::BottomRight;
}
bool FromBottom(GuiCorner corner) {
    return corner == GuiCorner::BottomRight || corner == GuiCorner::BottomLeft;
}

// An element without clipping stands in the whole frame of its window, not in the client area.
bool StandsInFrame(const GUI_Element& element, const GUI_Element* parent) {
    return !element.scissor && parent && !parent->GetParent();
}

// Where the element's own left and top are measured from.
GuiPoint Origin(const GUI_Styles& styles, const GUI_Element& element, const GUI_Element* parent) {
    const GuiCorner corner = CornerOf(element);
    GuiPoint origin;
    for (const GUI_Element* p = parent; p; p = p->GetParent()) {
        origin.x += p->left + (FromRight(corner) ? p->width - 2.0F * element.left - element.width : 0.0F);
        origin.y += p->top + (FromBottom(corner) ? p->height - 2.0F * element.top - element.height : 0.0F);
        if (!p->scissor) continue;
        origin.x += styles.Get(p->stid).leftx;
        origin.y += styles.Get(p->stid).lefty;
    }
    if (StandsInFrame(element, parent)) {
        origin.x -= styles.Get(parent->stid).leftx;
        origin.y -= styles.Get(parent->stid).lefty;
    }
    return origin;
}

} // namespace

GuiPoint AnchorPoint(const GuiRect& rect, std::uint8_t anchor) {
    // Shares of width and height, by anchor.
    static constexpr std::array<GuiPoint, 9> Shares = {
        {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0.5F, 0}, {0.5F, 1}, {0, 0.5F}, {1, 0.5F}, {0.5F, 0.5F}}};
    const GuiPoint share = Shares[anchor < Shares.size() ? anchor : 0];
    return {rect.left + rect.width * share.x, rect.top + rect.height * share.y};
}

GuiRect RectOf(const GUI_Element& element) {
    return {element.left, element.top, element.width, element.height};
}

GuiRect DrawnRect(const GUI_Styles& styles, const GUI_Element& element) {
    return DrawnRect(styles, element, element.GetParent());
}

GuiRect DrawnRect(const GUI_Styles& styles, const GUI_Element& element, const GUI_Element* parent) {
    const GuiPoint origin = Origin(styles, element, parent);
    return {origin.x + element.left, origin.y + element.top, element.width, element.height};
}

GuiEdges HitRect(const GUI_Styles& styles, const GUI_Element& element) {
    const GuiCorner corner = CornerOf(element);
    const float left = FromRight(corner) ? -(element.left + element.width) : element.left;
    const float top = FromBottom(corner) ? -(element.top + element.height) : element.top;
    GuiEdges edges = {left, top, left + element.width, top + element.height};
    const auto whole = [&] {
        edges.right = edges.left + element.width;
        edges.bottom = edges.top + element.height;
    };
    const GUI_Element* parent = element.GetParent();
    const bool unrolled = IsUnrolledList(element);
    for (const GUI_Element* p = parent; p; p = p->GetParent()) {
        const GUI_Style& style = styles.Get(p->stid);
        const float x = p->left + (FromRight(corner) ? p->width : 0.0F) + (p->scissor ? style.leftx : 0.0F);
        const float y = p->top + (FromBottom(corner) ? p->height : 0.0F) + (p->scissor ? style.lefty : 0.0F);
        edges.left += x;
        edges.top += y;
        whole();
        // The outermost container decides: those within it check their own rectangle first.
        if (!p->scissor || unrolled) continue;
        edges.right = std::min(edges.right, p->left + p->width - style.rightx);
        edges.bottom = std::min(edges.bottom, p->top + p->height - style.righty);
    }
    if (StandsInFrame(element, parent)) {
        edges.left -= styles.Get(parent->stid).leftx;
        edges.top -= styles.Get(parent->stid).lefty;
        whole();
    }
    return edges;
}

PixelRect ToPixels(double left, double bottom, double width, double height, int screenWidth,
                   int screenHeight) {
    const MiddleFrame frame = MiddleFrame::Of(screenWidth, screenHeight);
    // As much of the screen lies below the frame as above it.
    return {TruncateToInt(frame.PixelX(left)), TruncateToInt(frame.PixelY(1.0 - bottom)),
            std::max(TruncateToInt(frame.width * width), 0),
            std::max(TruncateToInt(frame.height * height), 0)};
}

PixelRect ScissorRect(const GUI_Styles& styles, const GUI_Element& element, const GUI_Element* parent,
                      int screenWidth, int screenHeight) {
    const GUI_Style& own = styles.Get(element.stid);
    const float left = parent ? own.leftx + element.left + parent->left : element.left;
    const double above = parent ? styles.Get(parent->stid).lefty + parent->top : 0.0F;
    const float width = parent ? element.width : element.width - own.rightx;
    return ToPixels(left, element.top + element.height - own.righty + above, width, element.height,
                    screenWidth, screenHeight);
}

int TruncateToInt(double value) {
    if (std::isnan(value)) return 0;
    return static_cast<int>(std::clamp<double>(value, INT_MIN, INT_MAX));
}
