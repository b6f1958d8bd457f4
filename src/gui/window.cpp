// A window changes its style and caption while it is drawn: body and caption bar are two frames of one
// window.
#include "gui/window.h"

#include "graphics/gl_state.h"
#include "graphics/video.h"
#include "gui/geometry.h"
#include "gui/items.h"
#include "gui/manager.h"

#include <GL/gl.h>

#include <algorithm>

namespace {

constexpr std::uint8_t BodyStyle = 8;
constexpr std::uint8_t CaptionStyle = 9;

// The resize button's OnMouseOver: while it is pressed, the window's lower right corner follows the pointer.
void Resize(GUI_Element* button, float x, float y) {
    if (button->state != GuiState::Clicked) return;
    auto& window = WindowOf<GUI_Window>(button);
    window.SetSize(x - window.left, y - window.top);
}

} // namespace

GUI_Window::~GUI_Window() {
    if (owner) owner->RemoveWindow(*this);
}

void GUI_Window::MouseOver(float x, float y) {
    if (state == GuiState::Clicked) {
        left += x - lastX;
        top += y - lastY;
        lastX = x;
        lastY = y;
    }
    GUI_Element::MouseOver(x, y);
}

void GUI_Window::MouseDown(float x, float y) {
    lastX = x;
    lastY = y;
    GUI_Element::MouseDown(x, y);
}

void GUI_Window::AttachButtons() {
    resizeButton.OnMouseOver = Resize;
    AddComponent(&closeButton);
    AddComponent(&resizeButton);
}

bool GUI_Window::IsInside(float x, float y) {
    const GuiRect rect = RectOf(*this);
    return std::ranges::any_of(gui.GetStyles().boxes,
                               [&](const BorderBox& box) { return box.Contains(rect, x, y); });
}

GUI_Element* GUI_Window::IsMouseOver(float x, float y) {
    if (!visible) return nullptr;
    const bool inside = IsInside(x, y);
    if (!inside && !children.HitUnrolled(*this, x, y)) return nullptr;
    if (!gui.GetStyles().CheckHit(stid)) return nullptr;
    GUI_Component* hit = inside ? children.Hit(*this, x, y) : children.HitUnrolled(*this, x, y);
    return hit ? static_cast<GUI_Element*>(hit) : this;
}

void GUI_Window::SetSize(float newWidth, float newHeight) {
    const GUI_Styles& skin = gui.GetStyles();
    // A skin may give a smallest size above the largest; the smallest then holds.
    width = std::max(std::min(newWidth, skin.win_max_width), skin.win_min_width);
    height = std::max(std::min(newHeight, skin.win_max_height), skin.win_min_height);
    if (OnResize) OnResize(this);
}

void GUI_Window::Draw() {
    if (!visible) return;
    const GUI_Styles& skin = gui.GetStyles();
    const char* const ownCaption = caption;
    caption = "";
    stid = BodyStyle;
    skin.DrawFrame(*this);
    if (OnDraw3D) {
        const GUI_Style& style = skin.Get(stid);
        Draw3D(left + style.leftx, width - style.rightx, height - style.lefty - style.righty);
    }
    skin.SetScissor(*this, nullptr);
    if (OnDraw2D) OnDraw2D(this);
    DrawChildren();
    caption = ownCaption;
    stid = CaptionStyle;
    skin.DrawFrame(*this);
    closeButton.Draw();
    resizeButton.Draw();
    stid = BodyStyle;
    children.DrawUnrolled();
}

void GUI_Window::Draw3D(float viewLeft, float viewWidth, float viewHeight) {
    const PixelRect view = ToPixels(viewLeft, static_cast<double>(top) + height, viewWidth, viewHeight,
                                    video.Width(), video.Height());
    glPushMatrix();
    glViewport(view.x, view.y, view.width, view.height);
    glClear(GL_DEPTH_BUFFER_BIT);
    const With depth(GL_DEPTH_TEST);
    glLoadIdentity();
    OnDraw3D(this);
    glViewport(0, 0, video.Width(), video.Height());
    glPopMatrix();
}

void GUI_Window::DrawChildren() {
    const GUI_Styles& skin = gui.GetStyles();
    for (std::size_t i = 0; i < children.Size(); ++i) {
        GUI_Component& child = children[i];
        if (&child == &closeButton || &child == &resizeButton || IsUnrolledList(child)) continue;
        // Some widgets set scissors of their own.
        skin.SetScissor(*this, nullptr);
        child.Draw();
    }
    glDisable(GL_SCISSOR_TEST);
}
