// A list only refers to its widgets, so each side tells the other when it goes away.
#include "gui/component.h"

#include "gui/geometry.h"
#include "gui/items.h"
#include "gui/manager.h"
#include "gui/page_control.h"

void GUI_ComponentList::Add(GUI_Component& component, GUI_Element* parent) {
    if (component.list) component.list->Remove(component);
    components.push_back(&component);
    component.list = this;
    component.parent = parent;
    if (component.addParts) component.addParts(component, *this, parent);
}

void GUI_ComponentList::Remove(GUI_Component& component) {
    std::erase(components, &component);
    component.list = nullptr;
}

void GUI_ComponentList::Clear() {
    for (GUI_Component* component : components) {
        component->parent = nullptr;
        component->list = nullptr;
    }
    components.clear();
}

void GUI_ComponentList::SetParent(GUI_Element* parent) {
    for (GUI_Component* component : components)
        component->parent = parent;
}

bool GUI_ComponentList::Contains(const GUI_Component& component) const {
    return component.list == this;
}

GUI_Component::~GUI_Component() {
    if (!list) return;
    list->Remove(*this);
    gui.Forget(*this);
}

namespace {

GUI_Component* HitOne(GUI_Component& component, const GUI_Element& container, float x, float y) {
    return component.IsMouseOver(container.left, container.width, container.top, container.height, x, y);
}

} // namespace

GUI_Component* GUI_ComponentList::Hit(const GUI_Element& container, float x, float y) const {
    GUI_Component* kept = HitUnrolled(container, x, y);
    if (kept) return kept;
    for (GUI_Component* component : components) {
        GUI_Component* hit = HitOne(*component, container, x, y);
        // What is not clipped lies above the rest, as the close button does.
        if (hit && (!kept || (kept->scissor && component->scissor))) kept = hit;
    }
    return kept;
}

GUI_Component* GUI_ComponentList::HitUnrolled(const GUI_Element& container, float x, float y) const {
    for (GUI_Component* component : components) {
        GUI_Component* hit = nullptr;
        if (IsUnrolledList(*component))
            hit = HitOne(*component, container, x, y);
        else if (component->kind == GuiKind::PageControl)
            hit = static_cast<GUI_PageControl*>(component)->HitUnrolled(x, y);
        if (hit) return hit;
    }
    return nullptr;
}

void GUI_ComponentList::DrawUnrolled() const {
    for (GUI_Component* component : components)
        if (IsUnrolledList(*component))
            component->Draw();
        else if (component->kind == GuiKind::PageControl && component->visible)
            static_cast<const GUI_PageControl*>(component)->DrawUnrolled();
}

GUI_Component* GUI_Component::IsMouseOver(float /*containerLeft*/, float /*containerWidth*/,
                                          float /*containerTop*/, float /*containerHeight*/, float x,
                                          float y) {
    if (!GetParent() || !visible || state == GuiState::Disabled) return nullptr;
    return HitRect(gui.GetStyles(), *this).Contains(x, y) ? this : nullptr;
}

void GUI_Component::Draw() {
    if (!visible) return;
    if (OnDraw)
        OnDraw(this);
    else
        gui.GetStyles().Draw(*this, GetParent());
}

bool GUI_Component::CheckStyle(const char* origin) {
    if (gui.GetStyles().Check(stid, origin)) return true;
    stid = 0;
    return false;
}
