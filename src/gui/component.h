// The base of all widgets: an element that stands in a container, is hit as a rectangle and drawn by a style;
// and the list in which a container keeps its widgets.
#pragma once

#include "gui/element.h"
#include "platform/not_copied.h"

#include <vector>

class GUI_Component;

// The widgets of one container, in drawing order. Refers to them; the scenes own them.
class GUI_ComponentList : NotCopied {
public:
    ~GUI_ComponentList() { Clear(); }

    // Appends the component and then the parts of which it is made, and makes `parent` their parent. A
    // component that stands in a list is taken out of it first.
    void Add(GUI_Component& component, GUI_Element* parent);
    void Remove(GUI_Component& component);
    // Takes all out; their parent becomes none.
    void Clear();
    void SetParent(GUI_Element* parent);
    // The component of `container` under the point, null when there is none. An unrolled list goes before all
    // others. Of several that are hit the first counts, but a clipped one gives way to a clipped one behind
    // it, which lies above it.
    GUI_Component* Hit(const GUI_Element& container, float x, float y) const;
    // The unrolled item list under the point, on an open page too; null when there is none.
    GUI_Component* HitUnrolled(const GUI_Element& container, float x, float y) const;
    // Draws the unrolled item lists, on open pages too, which lie above all else in their window.
    void DrawUnrolled() const;
    bool Contains(const GUI_Component& component) const;

    std::size_t Size() const { return components.size(); }
    GUI_Component& operator[](std::size_t index) const { return *components[index]; }

private:
    std::vector<GUI_Component*> components;
};

// From which corner of the container left and top are measured.
enum class GuiCorner : std::uint8_t { TopLeft, TopRight, BottomRight, BottomLeft };

class GUI_Component : public GUI_Element {
public:
    constexpr GUI_Component() : GUI_Component(GuiKind::Component, 1, "component") {}
    // Leaves its container, and the manager if that is shown.
    ~GUI_Component() override;

    // This, or the part of it that lies under the point; null when nothing does. The container's
    // values are handed over by it; where the component stands follows from all that hold it.
    virtual GUI_Component* IsMouseOver(float containerLeft, float containerWidth, float containerTop,
                                       float containerHeight, float x, float y);
    virtual void Draw();

    GuiCorner pos_id = GuiCorner::TopLeft;
    // Drawing in place of the style, or none.
    void (*OnDraw)(GUI_Component* component) = nullptr;

    // False, after a line that begins with `origin` in the log, when the skin has no such style; the
    // component then falls back to style 0.
    bool CheckStyle(const char* origin);

protected:
    constexpr GUI_Component(GuiKind ownKind, std::uint8_t style, const char* text) {
        kind = ownKind;
        stid = style;
        caption = text;
        width = 0.15F;
        height = 0.05F;
    }

    // Set by widgets made of several: lays the parts out and adds them to the container's list.
    void (*addParts)(GUI_Component& whole, GUI_ComponentList& list, GUI_Element* parent) = nullptr;

private:
    friend class GUI_ComponentList;
    GUI_ComponentList* list = nullptr; // the list that it stands in
};
