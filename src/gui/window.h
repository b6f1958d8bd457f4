// The window: holds widgets, is dragged by any free place and resized by its lower right corner, and lies in
// the manager's pile of windows.
#pragma once

#include "gui/button.h"

class QEV_Gui;

class GUI_Window : public GUI_Element {
public:
    using WindowHook = void (*)(GUI_Window* window);

    constexpr GUI_Window() : GUI_Window(GuiKind::Window, 8, "Window") {}
    ~GUI_Window() override; // leaves the manager

    void MouseOver(float x, float y) override; // while pressed the window follows the pointer
    void MouseDown(float x, float y) override;

    // Adds the close and the resize button to the children.
    virtual void AttachButtons();
    // Whether the pointer means this window.
    virtual bool IsInside(float x, float y);
    virtual void Draw();

    // The widget under the point, else the window itself; null outside, or when the window is hidden. An
    // unrolled item list reaches over the window's edge.
    GUI_Element* IsMouseOver(float x, float y);

    // Appends a widget; one that stands in a container, this one too, moves. The window refers to it until
    // ClearComponents.
    void AddComponent(GUI_Component* component) {
        if (component) children.Add(*component, this);
    }
    template<class... Parts> void AddComponents(Parts&... parts) { (AddComponent(&parts), ...); }
    void ClearComponents() { children.Clear(); }
    const GUI_ComponentList& Components() const { return children; }

    // Stores the size, within the skin's limits, and calls OnResize.
    void SetSize(float newWidth, float newHeight);

    QEV_Gui* owner = nullptr; // set while the manager shows the window
    // What it does is its OnClick.
    GUI_Button closeButton;
    GUI_Button resizeButton;

    WindowHook OnDraw2D = nullptr; // drawn under the children
    WindowHook OnDraw3D = nullptr; // drawn in a 3D viewport over the client area
    WindowHook OnResize = nullptr;

protected:
    constexpr GUI_Window(GuiKind ownKind, std::uint8_t style, const char* text) {
        kind = ownKind;
        stid = style;
        caption = text;
    }

    // The OnDraw3D hook in a viewport that stands on the window's lower edge; GUI units.
    void Draw3D(float viewLeft, float viewWidth, float viewHeight);
    // The children within the client area, without unrolled lists.
    void DrawChildren();

    GUI_ComponentList children;

private:
    float lastX = 0.0F; // the pointer at the last press or drag
    float lastY = 0.0F;
};

// The window, of a kind that the caller knows, in which a widget stands; for the widget's hooks.
template<class Window> Window& WindowOf(const GUI_Element* part) {
    return static_cast<Window&>(*part->GetParent());
}
