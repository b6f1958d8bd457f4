// The fill is a second picture: the frame's own style pressed, or inside a client area the thumb's style.
#include "gui/progress_bar.h"

#include "graphics/gl_state.h"
#include "gui/manager.h"

namespace {

constexpr char Origin[] = "QEV_Gui::GUI_CheckBox::Draw() -"; // of the line about an unknown style
constexpr std::uint8_t FillStyle = 3;
constexpr float FillInset = 0.002F;
constexpr float LessHeight = 0.0041F;

} // namespace

void GUI_ProgressBar::Draw() {
    if (!visible) return;
    if (OnDraw) OnDraw(this);
    if (!CheckStyle(Origin)) return;
    const int range = max - min;
    const float step = range == 0 ? 0.0F : (width - 2.0F * FillInset) / static_cast<float>(range);
    const float fill = static_cast<float>(value) * step;
    if (scissor)
        DrawInside(fill);
    else
        DrawUnclipped(fill);
}

void GUI_ProgressBar::DrawInside(float fill) {
    const GUI_Styles& skin = gui.GetStyles();
    skin.CheckDrawn(FillStyle, Origin);
    const GuiRect rect = DrawnRect(skin, *this);
    skin.DrawState(stid, state, rect);
    skin.DrawState(FillStyle, GuiState::Normal,
                   {rect.left + FillInset, rect.top + FillInset, fill, rect.height - LessHeight});
}

void GUI_ProgressBar::DrawUnclipped(float fill) {
    const Without clipping(GL_SCISSOR_TEST);
    const GUI_Styles& skin = gui.GetStyles();
    GuiRect rect = DrawnRect(skin, *this);
    skin.DrawState(stid, state, rect);
    rect.width = fill;
    skin.DrawState(stid, GuiState::Clicked, rect);
}
