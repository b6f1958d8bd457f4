// A page's widgets have the control as their parent, not the page, which is only as large as its tab.
#include "gui/page_control.h"

#include "gui/geometry.h"
#include "gui/items.h"
#include "gui/manager.h"

#include <GL/gl.h>

GUI_Page::~GUI_Page() {
    if (!control) return;
    control->RemovePage(this);
    gui.Forget(*this);
}

void GUI_Page::Click() {
    GUI_Button::Click();
    if (control) control->SetActivePage(this);
    SetClicked();
}

void GUI_Page::SetControl(GUI_PageControl* newControl) {
    control = newControl;
    parent = newControl;
    SetParents();
}

void GUI_Page::SetParents() {
    components.SetParent(control);
}

void GUI_Page::AddComponent(GUI_Component* component) {
    if (component && !components.Contains(*component)) components.Add(*component, control);
}

GUI_PageControl::~GUI_PageControl() {
    for (GUI_Page* page : pages)
        page->SetControl(nullptr);
}

void GUI_PageControl::AddPage(GUI_Page* page) {
    if (!page || page->control == this) return;
    if (page->control) page->control->RemovePage(page);
    if (!pages.empty()) {
        const GUI_Page& before = *pages.back();
        page->left = before.left + before.width;
        page->top = before.top;
        page->width = before.width;
        page->height = before.height;
    }
    pages.push_back(page);
    page->SetControl(this);
    if (!active) active = page;
}

void GUI_PageControl::RemovePage(GUI_Page* page) {
    std::erase(pages, page);
    if (active == page) active = pages.empty() ? nullptr : pages.front();
}

GUI_Component* GUI_PageControl::IsMouseOver(float containerLeft, float containerWidth, float containerTop,
                                            float containerHeight, float x, float y) {
    if (!GUI_Component::IsMouseOver(containerLeft, containerWidth, containerTop, containerHeight, x, y))
        return HitUnrolled(x, y);
    for (GUI_Page* page : pages)
        if (GUI_Component* hit = page->IsMouseOver(left, width, top, height, x, y)) return hit;
    if (!active) return nullptr;
    for (std::size_t i = 0; i < active->components.Size(); ++i)
        if (GUI_Component* hit = active->components[i].IsMouseOver(left, width, top, height, x, y))
            return hit;
    return nullptr;
}

GUI_Component* GUI_PageControl::HitUnrolled(float x, float y) const {
    if (!active || !visible || state == GuiState::Disabled) return nullptr;
    return active->components.HitUnrolled(*this, x, y);
}

void GUI_PageControl::Draw() {
    if (!visible) return;
    const GUI_Styles& skin = gui.GetStyles();
    skin.Draw(*this, GetParent());
    if (OnDraw) OnDraw(this);
    skin.SetScissor(*this, GetParent());
    for (GUI_Page* page : pages)
        page->Draw();
    if (active) DrawActive();
    glDisable(GL_SCISSOR_TEST);
}

void GUI_PageControl::DrawActive() {
    // The chosen tab looks pressed.
    const GuiState own = active->state;
    active->state = GuiState::Clicked;
    active->Draw();
    active->state = own;
    for (std::size_t i = 0; i < active->components.Size(); ++i) {
        if (IsUnrolledList(active->components[i])) continue; // the window draws it above all
        // Some widgets set scissors of their own.
        gui.GetStyles().SetScissor(*this, GetParent());
        active->components[i].Draw();
    }
}
