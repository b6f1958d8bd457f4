// The places on the screen at which something can be clicked, and the way from one to the next for a pointer
// that keys move. Rests on the geometry of the widgets.
#pragma once

#include "gui/geometry.h"

#include <cstddef>
#include <optional>
#include <vector>

class GUI_Component;
class GUI_Styles;
class GUI_Window;

struct GuiStop {
    GuiPoint point;                     // in GUI units
    GUI_Component* component = nullptr; // none for a place that is the scene's own
};

// Adds a place for each of the window's widgets that can be clicked: the middle of its visible part, for an
// item list also that of each of its rows, for a scroll bar its thumb. Whether something lies above is not
// asked.
void AddStops(const GUI_Styles& styles, const GUI_Window& window, std::vector<GuiStop>& stops);

// Brings the stops into reading order: lines from the top, each from the left.
void SortAsRead(std::vector<GuiStop>& stops);

// The stop at which the pointer stands: the nearest of the component's that it is over, or over none, one
// that is very near.
std::optional<std::size_t> StopAt(const std::vector<GuiStop>& stops, GuiPoint pointer,
                                  const GUI_Component* component);

// The nearest stop in a direction (dx, dy is a step along one axis); what lies aside counts as farther away.
std::optional<std::size_t> StopTowards(const std::vector<GuiStop>& stops, GuiPoint pointer, int dx, int dy);
