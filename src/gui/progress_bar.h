// The progress bar: a frame and a fill that shows where `value` stands between `min` and `max`.
#pragma once

#include "gui/component.h"

class GUI_ProgressBar : public GUI_Component {
public:
    constexpr GUI_ProgressBar() : GUI_Component(GuiKind::ProgressBar, 2, "") { state = GuiState::Disabled; }

    void Draw() override;

    std::int16_t min = 0;
    std::int16_t max = 10;
    std::int16_t value = 5;

private:
    void DrawInside(float fill);
    void DrawUnclipped(float fill);
};
