// The base of everything in the GUI: what an element is, how it answers the mouse, the keyboard and the
// focus, and the hooks by which a scene listens. All geometry is in GUI units: fractions of the screen's
// middle frame (see graphics/middle_frame.h), x from the left, y from the top.
#pragma once

#include "platform/not_copied.h"

#include <SDL.h>

#include <cstdint>

class ConfigFile;
class INI_Writer;
template<class Record> struct RecordTable;

// Which of a style's four pictures is shown.
enum class GuiState : std::uint8_t { Normal, Hover, Clicked, Disabled };

enum class GuiKind : std::uint8_t {
    Element,
    Component,
    Window,
    Button,
    Label,
    EditBox,
    Panel,
    VScroll,
    HScroll,
    Memo,
    CheckBox,
    RadioButton,
    ProgressBar,
    HWindow,
    Items,
    PageControl,
    Page
};

// The keys that an element keeps for itself while it has the focus; all others may move the pointer.
enum class GuiKeys : std::uint8_t { None, Line, Lines, Across, Down };

class GUI_Element : NotCopied {
public:
    using PointHook = void (*)(GUI_Element* element, float x, float y);
    using KeyHook = void (*)(GUI_Element* element, SDL_keysym key);
    using ElementHook = void (*)(GUI_Element* element);

    // The sixteen operations, in their fixed order; derived classes go on in theirs. A click is a press and a
    // release on the same element; only its owner, by writing `state`, brings an element back out of
    // Disabled.
    virtual GUI_Element* GetParent() const;
    virtual void SetNormal();
    virtual void SetHover();
    virtual void SetClicked();
    virtual void SetDisabled();
    virtual void MouseOver(float x, float y);
    virtual void HoverEnter();
    virtual void MouseDown(float x, float y);
    virtual void MouseUp(float x, float y);
    virtual void KeyDown(SDL_keysym key);
    virtual void KeyUp(SDL_keysym key);
    virtual void Click();
    virtual void Focus();
    virtual void LostFocus();
    // Writes a block named after the caption with the position; Load finds it from the file's position on and
    // says whether it was there. Without a caption both do nothing.
    virtual void Save(INI_Writer& writer);
    virtual bool Load(ConfigFile* file);
    static RecordTable<GUI_Element> PlaceTable();

    virtual ~GUI_Element() = default;

    // Puts the element at a place inside its container.
    void Place(float newLeft, float newTop) {
        left = newLeft;
        top = newTop;
    }
    void Place(float newLeft, float newTop, float newWidth, float newHeight) {
        Place(newLeft, newTop);
        width = newWidth;
        height = newHeight;
    }
    bool IsWindow() const { return kind == GuiKind::Window || kind == GuiKind::HWindow; }
    // Visible, and so is everything that holds it.
    bool IsShown() const;
    // Part of a scroll bar, which arrow keys move while the part has the focus.
    bool TurnsBar() const { return keys == GuiKeys::Across || keys == GuiKeys::Down; }
    // Whether the key is one of `keys`.
    bool KeepsKey(const SDL_keysym& key) const;

    GuiState state = GuiState::Normal;
    std::uint8_t stid = 1; // style id
    GuiKind kind = GuiKind::Element;
    GuiKeys keys = GuiKeys::None;
    bool visible = true; // otherwise neither drawn nor hit
    // Placed inside the container's client area and clipped to it, the caption cut to the width.
    bool scissor = true;
    const char* caption = nullptr; // not owned; null shows nothing
    bool focus = false;
    GUI_Element* parent = nullptr; // the container; not owned
    float left = 0.0F;             // inside the container
    float top = 0.0F;
    float width = 0.2F;
    float height = 0.2F;

    PointHook OnMouseOver = nullptr;
    void (*OnHover)() = nullptr;
    PointHook OnMouseDown = nullptr;
    PointHook OnMouseUp = nullptr;
    KeyHook OnKeyDown = nullptr;
    KeyHook OnKeyUp = nullptr;
    ElementHook OnClick = nullptr;
    ElementHook OnFocus = nullptr;
    ElementHook OnLostFocus = nullptr;
};
