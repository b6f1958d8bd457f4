// Reads the skin's block. Counts come from the file and may be anything: of the polygons and vertices that
// are counted but not there, no more than a sensible number are made.
#include "gui/skin.h"

#include "base/log.h"
#include "config/record.h"

#include <algorithm>
#include <array>

namespace {

// How many missing blocks of one list are made and listed in the log. Real lists have a handful of blocks.
constexpr int MaxMissing = 32;
// Lines about missing blocks that one skin may write.
constexpr int MaxLines = 512;

void ReadButton(const char* block, const char* warning, ConfigFile* file, ButtonSettings& button) {
    if (!INI_FindNextBlock(block, file)) {
        LogWrite("%s", warning);
        return;
    }
    ReadRecord(ButtonSettings::Table(), button, file);
    INI_SkipBlock(block, file);
}

std::vector<BorderBox> ReadBorder(ConfigFile* file) {
    if (!INI_FindNextBlock("border", file)) {
        LogWrite("QEV_Gui::GUI_Styles::Load() [ warning ] - Border block wasn't found\n");
        return {BorderBox()};
    }
    SkinCounts counts;
    ReadRecord(SkinCounts::BorderTable(), counts, file);
    std::vector<BorderBox> boxes(counts.boxes);
    for (std::size_t i = 0; i < boxes.size(); ++i)
        if (!ReadNextRecord(BorderBox::Table(), boxes[i], file))
            LogWrite("QEV_Gui::GUI_Styles::Load() [ warning ] - Box block N %d wasn't found\n",
                     static_cast<int>(i));
    INI_SkipBlock("border", file);
    return boxes;
}

// Appends `count` items, each taken by `read`, which is false when there is none.
template<class Item, class Read>
void ReadList(int count, std::vector<Item>& items, const char* line, MissingBlocks& missing, Read read) {
    for (int i = 0; i < count; ++i) {
        if (read(items.emplace_back())) continue;
        // The rest is missing too: nothing moves the file on.
        missing.Report(line, count - i);
        items.resize(static_cast<std::size_t>(i + std::min(count - i, MaxMissing)));
        return;
    }
}

bool ReadPoly(ConfigFile* file, ShotPoly& poly, MissingBlocks& missing) {
    if (!INI_FindNextBlock("poly", file)) return false;
    SkinCounts counts;
    ReadRecord(SkinCounts::PolyTable(), counts, file);
    if (INI_FindNextBlock("vertlist", file)) {
        ReadList(counts.vertices, poly.verts,
                 "QEV_Gui::GUI_Style::LoadShot [ warning ] - No vert is found in vertlist\n", missing,
                 [&](ShotVertex& vertex) { return ReadNextRecord(ShotVertex::Table(), vertex, file); });
        INI_SkipBlock("vertlist", file);
    } else {
        missing.Report("QEV_Gui::GUI_Style::LoadShot [ warning ] - No vertlist is found in poly \n", 1);
    }
    INI_SkipBlock("poly", file);
    return true;
}

} // namespace

void MissingBlocks::Report(const char* line, int count) {
    const int listed = std::min({count, MaxMissing, MaxLines - lines});
    for (int i = 0; i < listed; ++i)
        LogWrite("%s", line);
    if (listed < count && lines < MaxLines)
        LogWrite("QEV_Gui::GUI_Style::LoadShot [ warning ] - %d more are missing\n", count - listed);
    lines += std::max(listed, 1);
}

void GUI_Style::LoadShot(ConfigFile* file, Shot& shot, MissingBlocks& missing) {
    while (INI_FindNextBlock("new shot", file)) {
        ShotPolylist& list = shot.emplace_back();
        SkinCounts counts;
        ReadRecord(SkinCounts::ShotTable(), counts, file);
        list.mode = counts.mode;
        if (INI_FindNextBlock("polylist", file)) {
            ReadList(counts.polys, list.polys,
                     "QEV_Gui::GUI_Style::LoadShot [ warning ] - No poly is found in poly list \n", missing,
                     [&](ShotPoly& poly) { return ReadPoly(file, poly, missing); });
            INI_SkipBlock("polylist", file);
        } else if (counts.polys != 0) {
            missing.Report("QEV_Gui::GUI_Style::LoadShot [ warning ] - No polylist is found \n", 1);
        }
        INI_SkipBlock("new shot", file);
    }
}

void GUI_Style::Load(ConfigFile* file, MissingBlocks& missing) {
    ReadRecord(GUI_Style::Table(), *this, file);

    static constexpr std::array<const char*, 4> StateNames = {"normal", "hover", "clicked", "disabled"};
    bool recognised = false;
    while (INI_FindNextBlock("mode", file)) {
        SkinCounts block;
        ReadRecord(SkinCounts::ModeTable(), block, file);
        const std::string& state = block.state;
        const auto found = std::ranges::find(StateNames, state);
        if (found != StateNames.end()) {
            LoadShot(file, shots[static_cast<std::size_t>(found - StateNames.begin())], missing);
            recognised = true;
        } else if (!recognised) {
            LogWrite("QEV_Gui::GUI_Style::Load[ warning ] Incorrect or missing value at state = %s \n",
                     state.c_str());
        }
        if (!INI_SkipBlock("mode", file))
            LogWrite("QEV_Gui::GUI_Style::Load() [ warning ] - Couldn't skip modeblock\n");
    }
    for (std::size_t i = 0; i < shots.size(); ++i) {
        if (!shots[i].empty()) continue;
        LogWrite("QEV_Gui::GUI_Style::Load[ warning ] mode[%d] info wasn't loaded - loading default \n",
                 static_cast<int>(i));
        shots[i] = MakeDefaultShot();
    }
}

RecordTable<ShotVertex> ShotVertex::Table() {
    static constexpr RecordKey<ShotVertex> Keys[] = {
        {"fixed", &ShotVertex::fixed}, {"x", &ShotVertex::x}, {"y", &ShotVertex::y},
        {"r", &ShotVertex::r},         {"g", &ShotVertex::g}, {"b", &ShotVertex::b},
        {"a", &ShotVertex::a},         {"u", &ShotVertex::u}, {"v", &ShotVertex::v}};
    return {"vert", Keys};
}

RecordTable<GUI_Style> GUI_Style::Table() {
    static constexpr RecordKey<GUI_Style> Keys[] = {
        {"leftx", &GUI_Style::leftx},   {"lefty", &GUI_Style::lefty}, {"rightx", &GUI_Style::rightx},
        {"righty", &GUI_Style::righty}, {"textx", &GUI_Style::textx}, {"texty", &GUI_Style::texty},
        {"textr", &GUI_Style::textr},   {"textg", &GUI_Style::textg}, {"textb", &GUI_Style::textb},
        {"texta", &GUI_Style::texta}};
    return {"New style", Keys};
}

RecordTable<BorderBox> BorderBox::Table() {
    static constexpr RecordKey<BorderBox> Keys[] = {
        {"pos1x", &BorderBox::pos1x}, {"pos1y", &BorderBox::pos1y}, {"fixed1", &BorderBox::fixed1},
        {"pos2x", &BorderBox::pos2x}, {"pos2y", &BorderBox::pos2y}, {"fixed2", &BorderBox::fixed2}};
    return {"box", Keys};
}

RecordTable<ButtonSettings> ButtonSettings::Table() {
    using B = ButtonSettings;
    static constexpr RecordKey<B> Keys[] = {{"caption", &B::caption, IfMissing::Zero, 255},
                                            {"width", &B::width},
                                            {"height", &B::height},
                                            {"left", &B::left},
                                            {"top", &B::top},
                                            {"stid", &B::stid},
                                            {"pos_id", &B::pos_id},
                                            {"scissor", &B::scissor}};
    return {"button", Keys};
}

RecordTable<SkinCounts> SkinCounts::BorderTable() {
    static constexpr RecordKey<SkinCounts> Keys[] = {{"box_num", &SkinCounts::boxes}};
    return {"border", Keys};
}

RecordTable<SkinCounts> SkinCounts::ShotTable() {
    static constexpr RecordKey<SkinCounts> Keys[] = {{"mode", &SkinCounts::mode},
                                                     {"polynum", &SkinCounts::polys}};
    return {"new shot", Keys};
}

RecordTable<SkinCounts> SkinCounts::PolyTable() {
    static constexpr RecordKey<SkinCounts> Keys[] = {{"vnum", &SkinCounts::vertices}};
    return {"poly", Keys};
}

RecordTable<SkinCounts> SkinCounts::ModeTable() {
    static constexpr RecordKey<SkinCounts> Keys[] = {{"state", &SkinCounts::state}};
    return {"mode", Keys};
}

RecordTable<SkinGeneral> SkinGeneral::Table() {
    static constexpr RecordKey<SkinGeneral> Keys[] = {
        {"win_min_width", &SkinGeneral::win_min_width, IfMissing::Keep},
        {"win_min_height", &SkinGeneral::win_min_height, IfMissing::Keep},
        {"win_max_width", &SkinGeneral::win_max_width, IfMissing::Keep},
        {"win_max_height", &SkinGeneral::win_max_height, IfMissing::Keep},
        {"scroll_width", &SkinGeneral::scroll_width, IfMissing::Keep},
        {"scroll_height", &SkinGeneral::scroll_height, IfMissing::Keep},
        {"image", &SkinGeneral::image}};
    return {"general", Keys};
}

void GUI_Styles::Load(ConfigFile* file) {
    MissingBlocks missing;
    if (INI_FindNextBlock("general", file)) {
        SkinGeneral general;
        static_cast<SkinSizes&>(general) = *this;
        ReadRecord(SkinGeneral::Table(), general, file);
        static_cast<SkinSizes&>(*this) = general;
        picture = image.Add(general.image.c_str());
        boxes = ReadBorder(file);
        ReadButton("close button",
                   "QEV_Gui::GUI_Styles::Load() [ warning ] - Close button block wasn't found\n", file,
                   *closeButton);
        ReadButton("resize button",
                   "QEV_Gui::GUI_Styles::Load() [ warning ] - Resize button block wasn't found\n", file,
                   *resizeButton);
        INI_SkipBlock("general", file);
    } else {
        LogWrite("QEV_Gui::GUI_Styles::Load() [ warning ] - General block wasn't found\n");
    }
    if (INI_FindNextBlock("focus style", file)) {
        GUI_Style::LoadShot(file, focus, missing);
        INI_SkipBlock("focus style", file);
    } else {
        LogWrite("QEV_Gui::GUI_Styles::Load() [ warning ] - Focus style wasn't found\n");
    }
    while (INI_FindNextBlock("New style", file)) {
        GUI_Style style;
        style.Load(file, missing);
        if (!AddStyle(std::move(style))) {
            LogWrite("QEV_Gui::GUI_Styles::Load() [ warning ] - More than %d styles, the rest isn't read\n",
                     Count());
            return;
        }
        if (!INI_SkipBlock("New style", file))
            LogWrite("QEV_Gui::GUI_Styles::Load() [ warning ] - Couldn't skip New Style block\n");
    }
}
