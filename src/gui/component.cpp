// Widgets and the lists that hold them; see component.h.
#include "gui/component.h"

#include "gui/geometry.h"
#include "gui/manager.h"

void GUI_ComponentList::Add(GUI_Component& component, GUI_Element* parent) {
    if (component.list) std::erase(component.list->components, &component);
    components.push_back(&component);
    component.list = this;
    component.parent = parent;
    if (component.addParts) component.addParts(component, *this, parent);
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

GUI_Component* GUI_Component::IsMouseOver(float x, float y) {
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
