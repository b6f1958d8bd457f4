// The thumb's rectangle is the whole track, so that a press anywhere on it counts; only its drawing is
// smaller.
#include "gui/scroll_bars.h"

#include "gui/manager.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr float Inset = 0.002F;

GUI_ScrollBar& BarOf(GUI_Element* button) {
    return *static_cast<GUI_ScrollButton*>(button)->owner;
}

} // namespace

void GUI_ScrollBar::AddParts(GUI_Component& whole, GUI_ComponentList& list, GUI_Element* parent) {
    auto& bar = static_cast<GUI_ScrollBar&>(whole);
    const GUI_Styles& skin = gui.GetStyles();
    for (GUI_ScrollButton* arrow : {&bar.first, &bar.last}) {
        arrow->width = bar.vertical ? bar.width : skin.scroll_width;
        arrow->height = bar.vertical ? skin.scroll_height : bar.height;
    }
    bar.PlaceParts();
    for (GUI_ScrollButton* part : {&bar.first, &bar.last, &bar.thumb})
        list.Add(*part, parent);
}

void GUI_ScrollBar::Draw() {
    if (!visible) return;
    if (OnDraw) OnDraw(this);
    gui.GetStyles().Draw(*this, GetParent());
    PlaceParts();
}

void GUI_ScrollBar::PlaceParts() {
    for (GUI_ScrollButton* part : {&first, &last, &thumb}) {
        part->left = left + Inset;
        part->top = top + Inset;
        (vertical ? part->width : part->height) = (vertical ? width : height) - 2.0F * Inset;
    }
    if (vertical) {
        last.top = top + height - last.height - Inset;
        thumb.top += first.height;
        thumb.height = height - last.height - first.height - 2.0F * Inset;
    } else {
        last.left = left + width - last.width - Inset;
        thumb.left += first.width;
        thumb.width = width - last.width - first.width - 2.0F * Inset;
    }
}

void GUI_ScrollBar::Changed() {
    if (OnChange) OnChange(this);
}

void GUI_ScrollBar::SetPosition() {
    if (position == lastPosition) return;
    position = std::max(std::min(position, max), min);
    Changed();
    lastPosition = position;
}

double GUI_ScrollBar::Positions() const {
    return std::max(static_cast<double>(max) - min + 1.0, 1.0);
}

void GUI_ScrollBar::Step(int by) {
    if (position != (by < 0 ? INT32_MIN : INT32_MAX)) position += by;
    SetPosition();
}

void GUI_ScrollBar::StepBack(GUI_Element* arrow) {
    BarOf(arrow).Step(-1);
}

void GUI_ScrollBar::StepOn(GUI_Element* arrow) {
    BarOf(arrow).Step(1);
}

void GUI_ScrollButton::KeyDown(SDL_keysym key) {
    GUI_Button::KeyDown(key);
    if (KeepsKey(key)) owner->Step(key.sym == SDLK_LEFT || key.sym == SDLK_UP ? -1 : 1);
}

void GUI_ScrollBar::PickPosition(GUI_Element* thumb, float x, float y) {
    GUI_ScrollBar& bar = BarOf(thumb);
    bar.thumb.CheckStyle("QEV_Gui::GUI_VScroll::VSbutton3_OnMDown -");
    const GuiRect track = DrawnRect(gui.GetStyles(), bar.thumb);
    const double length = bar.vertical ? track.height : track.width;
    const double along = bar.vertical ? y - track.top : x - track.left;
    if (length <= 0.0) return;
    bar.position = TruncateToInt(along * bar.Positions() / length);
    bar.SetPosition();
}

void GUI_ScrollBar::DragThumb(GUI_Element* thumb, float x, float y) {
    if (thumb->state == GuiState::Clicked) PickPosition(thumb, x, y);
}

GuiRect GUI_ScrollBar::ThumbRect() const {
    GuiRect rect = RectOf(thumb);
    float& length = vertical ? rect.height : rect.width;
    length = static_cast<float>(length / Positions());
    // A memo whose text has shrunk may stand behind its last line.
    (vertical ? rect.top : rect.left) += static_cast<float>(std::max(std::min(position, max), min)) * length;
    return rect;
}

GuiPoint GUI_ScrollBar::ThumbMiddle() const {
    const GuiRect track = DrawnRect(gui.GetStyles(), thumb);
    const GuiRect part = ThumbRect();
    return {track.left + part.left - thumb.left + part.width / 2.0F,
            track.top + part.top - thumb.top + part.height / 2.0F};
}

void GUI_ScrollBar::DrawThumb(GUI_Component* component) {
    GUI_ScrollButton& thumb = BarOf(component).thumb;
    const GuiRect track = RectOf(thumb);
    const GuiRect part = BarOf(component).ThumbRect();
    thumb.Place(part.left, part.top, part.width, part.height);
    gui.GetStyles().Draw(thumb, thumb.GetParent());
    thumb.Place(track.left, track.top, track.width, track.height);
}
