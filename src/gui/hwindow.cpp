// Windows without a caption bar; see hwindow.h.
#include "gui/hwindow.h"

#include "gui/geometry.h"
#include "gui/items.h"
#include "gui/manager.h"

bool GUI_HWindow::IsInside(float x, float y) {
    if (x > left && x < left + width && y > top && y < top + height) return true;
    if (!gui.GetStyles().Check(stid, "QEV_Gui::GUI_CheckBox::Draw() -")) stid = 0;
    for (std::size_t i = 0; i < children.Size(); ++i) {
        if (children[i].kind != GuiKind::Items) continue;
        const auto& items = static_cast<const GUI_Items&>(children[i]);
        if (items.IsOpen() && HitRect(gui.GetStyles(), items).Contains(x, y)) return true;
    }
    return false;
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
    caption = ownCaption;
}
