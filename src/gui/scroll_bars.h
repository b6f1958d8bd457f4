// The two scroll bars: an arrow at each end and a thumb between them, three buttons that stand in the same
// container as the bar itself. The bar is disabled, so that only its buttons are hit.
#pragma once

#include "gui/button.h"
#include "gui/geometry.h"

class GUI_ScrollBar;

// An arrow or the thumb; knows the bar that it belongs to. While it has the focus, arrow keys along the bar
// move the bar a step.
class GUI_ScrollButton : public GUI_Button {
public:
    constexpr GUI_ScrollButton(GUI_ScrollBar* bar, std::uint8_t style) : owner(bar) {
        stid = style;
        caption = "";
    }

    void KeyDown(SDL_keysym key) override;

    GUI_ScrollBar* const owner;
};

// What both directions share. Lengths run along the bar, offsets across it are equal.
class GUI_ScrollBar : public GUI_Component {
public:
    void Draw() override;
    // Calls OnChange.
    virtual void Changed();

    // Call after writing `position`: clamps it to min..max and reports it, unless it is the one last
    // reported.
    void SetPosition();
    // One position on, or back with -1.
    void Step(int by);
    // Of the thumb as it is drawn, on the screen.
    GuiPoint ThumbMiddle() const;

    GUI_ScrollButton first; // the up or left arrow, one step back
    GUI_ScrollButton last;  // the down or right arrow, one step on
    GUI_ScrollButton thumb; // its rectangle is the whole track; it is drawn as the part of one position

    std::int32_t min = 0;
    std::int32_t max = 20;
    std::int32_t position = 10;
    std::int32_t lastPosition = 10; // the one last reported
    void (*OnChange)(GUI_ScrollBar* bar) = nullptr;

protected:
    constexpr GUI_ScrollBar(GuiKind ownKind, bool isVertical, std::uint8_t firstStyle, std::uint8_t lastStyle)
        : GUI_Component(ownKind, 2, ""),
          first(this, firstStyle),
          last(this, lastStyle),
          thumb(this, 3),
          vertical(isVertical) {
        state = GuiState::Disabled;
        addParts = AddParts;
        first.OnClick = StepBack;
        last.OnClick = StepOn;
        thumb.OnMouseDown = PickPosition;
        thumb.OnMouseOver = DragThumb;
        thumb.OnDraw = DrawThumb;
        first.keys = last.keys = thumb.keys = isVertical ? GuiKeys::Down : GuiKeys::Across;
    }

private:
    static void AddParts(GUI_Component& whole, GUI_ComponentList& list, GUI_Element* parent);
    static void StepBack(GUI_Element* arrow);
    static void StepOn(GUI_Element* arrow);
    static void DragThumb(GUI_Element* thumb, float x, float y);
    static void PickPosition(GUI_Element* thumb, float x, float y);
    static void DrawThumb(GUI_Component* component);

    double Positions() const;
    GuiRect ThumbRect() const;
    void PlaceParts();

    bool vertical;
};

class GUI_VScroll : public GUI_ScrollBar {
public:
    constexpr GUI_VScroll() : GUI_ScrollBar(GuiKind::VScroll, true, 4, 5) {}
};

class GUI_HScroll : public GUI_ScrollBar {
public:
    constexpr GUI_HScroll() : GUI_ScrollBar(GuiKind::HScroll, false, 6, 7) {}
};
