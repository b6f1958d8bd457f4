// Tabbed pages: the page control shows a row of tabs and the widgets of the active page, placed relative to
// the control; a page is its own tab.
#pragma once

#include "gui/button.h"

class GUI_PageControl;

class GUI_Page : public GUI_Button {
public:
    constexpr GUI_Page() : GUI_Button(GuiKind::Page, 14, "Page") {}
    ~GUI_Page() override; // leaves its page control

    void Click() override; // becomes the active page
    // Hands the page's widgets to its page control.
    virtual void SetParents();

    // Appends a widget; one that this page holds already stays where it is.
    void AddComponent(GUI_Component* component);
    void ClearComponents() { components.Clear(); }
    const GUI_ComponentList& Components() const { return components; }

private:
    friend class GUI_PageControl;
    void SetControl(GUI_PageControl* newControl);

    GUI_PageControl* control = nullptr;
    GUI_ComponentList components;
};

class GUI_PageControl : public GUI_Component {
public:
    constexpr GUI_PageControl() : GUI_Component(GuiKind::PageControl, 13, "") {}
    ~GUI_PageControl() override; // its pages then stand in none

    // A tab, a widget of the active page, or null: the control's own empty area is not hit.
    GUI_Component* IsMouseOver(float containerLeft, float containerWidth, float containerTop,
                               float containerHeight, float x, float y) override;
    // The unrolled list of the active page under the point, also where it lies over the control's edge.
    GUI_Component* HitUnrolled(float x, float y) const;
    // Draws the unrolled lists of the active page.
    void DrawUnrolled() const {
        if (active) active->components.DrawUnrolled();
    }
    void Draw() override;

    // Appends a page; its tab is placed behind the last one. The first becomes active. A page that stands in
    // this control stays where it is; one of another control moves.
    void AddPage(GUI_Page* page);
    // Null until there is a page.
    GUI_Page* ActivePage() const { return active; }
    // In the order of their tabs.
    const std::vector<GUI_Page*>& Pages() const { return pages; }
    // Of the pages that stand here; what a click on a tab does.
    void SetActivePage(GUI_Page* page) { active = page; }

private:
    friend class GUI_Page;
    void RemovePage(GUI_Page* page);
    void DrawActive();

    std::vector<GUI_Page*> pages;
    GUI_Page* active = nullptr;
};
