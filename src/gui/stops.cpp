// All lengths are compared as they are seen: a unit of x is a third longer than one of y.
#include "gui/stops.h"

#include "gui/items.h"
#include "gui/page_control.h"
#include "gui/scroll_bars.h"
#include "gui/skin.h"
#include "gui/window.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr float UnitRatio = 4.0F / 3.0F;
constexpr float LineHeight = 0.025F; // stops that differ less stand in one line
constexpr float Near = 0.02F;        // of a stop at which the pointer stands
constexpr float Ahead = 0.01F;       // least way to a stop in some direction
constexpr float AsideWeight = 2.0F;
constexpr float OutOfReach = std::numeric_limits<float>::max();

float Distance(GuiPoint one, GuiPoint other) {
    return std::hypot((one.x - other.x) * UnitRatio, one.y - other.y);
}

GuiPoint Middle(const GuiEdges& edges) {
    return {(edges.left + edges.right) / 2.0F, (edges.top + edges.bottom) / 2.0F};
}

void AddListStops(const GuiEdges& edges, GUI_Items& items, std::vector<GuiStop>& stops) {
    stops.push_back({{Middle(edges).x, edges.top + GUI_Items::HeadHeight / 2.0F}, &items});
    for (std::int32_t row = 0; items.IsOpen() && row < items.Count(); ++row)
        stops.push_back({{Middle(edges).x, edges.top + GUI_Items::RowMiddle(row)}, &items});
}

void AddStopsOf(const GUI_Styles& styles, GUI_Component& component, std::vector<GuiStop>& stops);

void AddStopsOf(const GUI_Styles& styles, const GUI_ComponentList& list, std::vector<GuiStop>& stops) {
    for (std::size_t i = 0; i < list.Size(); ++i)
        AddStopsOf(styles, list[i], stops);
}

void AddStopsOf(const GUI_Styles& styles, GUI_Component& component, std::vector<GuiStop>& stops) {
    if (!component.visible || component.state == GuiState::Disabled) return;
    switch (component.kind) {
    case GuiKind::Items:
        AddListStops(HitRect(styles, component), static_cast<GUI_Items&>(component), stops);
        return;
    case GuiKind::PageControl: {
        const auto& control = static_cast<const GUI_PageControl&>(component);
        for (GUI_Page* page : control.Pages())
            AddStopsOf(styles, *page, stops);
        if (control.ActivePage()) AddStopsOf(styles, control.ActivePage()->Components(), stops);
        return;
    }
    default:
        break;
    }
    if (!component.TurnsBar()) {
        stops.push_back({Middle(HitRect(styles, component)), &component});
        return;
    }
    const GUI_ScrollBar& bar = *static_cast<GUI_ScrollButton&>(component).owner;
    if (&bar.thumb == &component) stops.push_back({bar.ThumbMiddle(), &component});
}

// The first of the stops with the shortest way that is not out of reach.
template<class Way> std::optional<std::size_t> Nearest(const std::vector<GuiStop>& stops, Way way) {
    std::optional<std::size_t> nearest;
    float least = OutOfReach;
    for (std::size_t i = 0; i < stops.size(); ++i) {
        const float here = way(stops[i]);
        if (here >= least) continue;
        least = here;
        nearest = i;
    }
    return nearest;
}

} // namespace

void AddStops(const GUI_Styles& styles, const GUI_Window& window, std::vector<GuiStop>& stops) {
    AddStopsOf(styles, window.Components(), stops);
    // The resize button is dragged, not clicked, and a close button may have nothing to do.
    std::erase_if(stops, [&](const GuiStop& stop) {
        return stop.component == &window.resizeButton ||
               (stop.component == &window.closeButton && !window.closeButton.OnClick);
    });
}

void SortAsRead(std::vector<GuiStop>& stops) {
    const auto y = [](const GuiStop& stop) { return stop.point.y; };
    const auto x = [](const GuiStop& stop) { return stop.point.x; };
    std::ranges::stable_sort(stops, {}, y);
    for (auto line = stops.begin(); line != stops.end();) {
        const float top = line->point.y;
        const auto next = std::find_if(line, stops.end(),
                                       [&](const GuiStop& stop) { return stop.point.y >= top + LineHeight; });
        std::ranges::stable_sort(line, next, {}, x);
        line = next;
    }
}

std::optional<std::size_t> StopAt(const std::vector<GuiStop>& stops, GuiPoint pointer,
                                  const GUI_Component* component) {
    return Nearest(stops, [&](const GuiStop& stop) {
        const float distance = Distance(stop.point, pointer);
        const bool here = component ? stop.component == component : distance < Near;
        return here ? distance : OutOfReach;
    });
}

std::optional<std::size_t> StopTowards(const std::vector<GuiStop>& stops, GuiPoint pointer, int dx, int dy) {
    return Nearest(stops, [&](const GuiStop& stop) {
        const float x = (stop.point.x - pointer.x) * UnitRatio;
        const float y = stop.point.y - pointer.y;
        const float ahead = dx != 0 ? x * static_cast<float>(dx) : y * static_cast<float>(dy);
        const float aside = std::abs(dx != 0 ? y : x);
        return ahead < Ahead ? OutOfReach : ahead + AsideWeight * aside;
    });
}
