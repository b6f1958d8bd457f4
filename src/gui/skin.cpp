// The built-in look is written here in code, so that a GUI without any file can still be used.
#include "gui/skin.h"

#include "base/log.h"

namespace {

constexpr std::size_t MaxStyles = 255;

GuiPoint BoxCorner(const GuiRect& window, float x, float y, std::uint8_t fixed) {
    const bool right = fixed == 1 || fixed == 2;
    const bool bottom = fixed == 2 || fixed == 3;
    return {right ? window.left + window.width - x : window.left + x,
            bottom ? window.top + window.height - y : window.top + y};
}

ShotPolylist WholeRectangle(ShotMode mode, float shade, float alpha) {
    ShotPoly poly;
    for (std::uint8_t corner = 0; corner < 4; ++corner)
        poly.verts.push_back({0, 0, shade, shade, shade, alpha, 0, 0, corner});
    return {{poly, poly}, static_cast<std::uint8_t>(mode)};
}

} // namespace

bool BorderBox::Contains(const GuiRect& window, float x, float y) const {
    const GuiPoint first = BoxCorner(window, pos1x, pos1y, fixed1);
    const GuiPoint second = BoxCorner(window, pos2x, pos2y, fixed2);
    return x >= first.x && x < second.x && y >= first.y && y < second.y;
}

Shot GUI_Style::MakeDefaultShot() {
    return {WholeRectangle(ShotMode::Filled, 1.0F, 0.7F), WholeRectangle(ShotMode::Outline, 0.0F, 1.0F)};
}

void GUI_Style::SetDefaults() {
    shots.fill(MakeDefaultShot());
    leftx = 0.02F;
    lefty = 0.04F;
    rightx = 0.02F;
    righty = 0.02F;
    textx = 0.01F;
    texty = 0.02F;
    textr = textg = textb = 0.0F;
    texta = 1.0F;
}

void GUI_Styles::SetDefaults() {
    Destroy();
    styles.resize(1);
    styles[0].SetDefaults();
    static_cast<SkinSizes&>(*this) = {};
    closeButton = {.caption = "X", .width = 0.03F, .left = 0.01F, .top = 0.01F, .stid = 1, .pos_id = 1};
    resizeButton = {.caption = "", .width = 0.02F, .pos_id = 2};
}

void GUI_Styles::Destroy() {
    focus.clear();
    styles.clear();
    boxes.clear();
    image.Free();
    picture = -1;
    reportedDrawn.reset();
    reportedHit.reset();
}

bool GUI_Styles::AddStyle(GUI_Style&& style) {
    if (styles.size() >= MaxStyles) return false;
    styles.push_back(std::move(style));
    return true;
}

const GUI_Style& GUI_Styles::Get(std::uint8_t stid) const {
    static constinit const GUI_Style None;
    if (Has(stid)) return styles[stid];
    return styles.empty() ? None : styles[0];
}

bool GUI_Styles::Check(std::uint8_t stid, const char* origin) const {
    if (Has(stid)) return true;
    LogWrite("%s Array out of range A.len = %d , val = %d\n", origin, Count(), stid);
    return false;
}

bool GUI_Styles::CheckOnce(std::uint8_t stid, const char* origin, std::bitset<256>& reported) const {
    if (Has(stid)) return true;
    if (!reported[stid]) Check(stid, origin);
    reported.set(stid);
    return false;
}

bool GUI_Styles::CheckDrawn(std::uint8_t stid, const char* origin) const {
    return CheckOnce(stid, origin, reportedDrawn);
}

bool GUI_Styles::CheckHit(std::uint8_t stid) const {
    return CheckOnce(stid, "QEV_Gui::GUI_Window::IsMouseOver -", reportedHit);
}
