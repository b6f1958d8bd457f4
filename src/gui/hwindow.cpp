// The 3D view of these windows takes their whole width, and with clipping off their whole height.
#include "gui/hwindow.h"

#include "gui/manager.h"

bool GUI_HWindow::IsInside(float x, float y) {
    if (x > left && x < left + width && y > top && y < top + height) return true;
    if (!gui.GetStyles().Check(stid, "QEV_Gui::GUI_CheckBox::Draw() -")) stid = 0;
    return children.HitUnrolled(*this, x, y) != nullptr;
}

void GUI_HWindow::Draw() {
    if (!visible) return;
    const GUI_Styles& skin = gui.GetStyles();
    const char* const ownCaption = caption;
    caption = "";
    skin.DrawFrame(*this);
    if (OnDraw2D) OnDraw2D(this);
    if (OnDraw3D) {
        const GUI_Style& style = skin.Get(stid);
        Draw3D(left, width, scissor ? height - style.lefty - style.righty : height);
    }
    DrawChildren();
    children.DrawUnrolled();
    caption = ownCaption;
}
