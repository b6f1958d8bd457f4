// Reading the skin's block; see skin.h. Counts come from the file: nothing is made for a block that is not
// there, but for missing vertices, which have a default and are filled up to a sensible number.
#include "gui/skin.h"

#include "base/log.h"
#include "config/config_reader.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

// Blocks that a list may lack and still have listed in the log and, where they are vertices, filled up; a
// real polygon has a handful.
constexpr int MaxMissing = 32;
// Lines about missing blocks that one skin may write.
constexpr int MaxLines = 512;

// A key that holds a number of a record.
template<class Record> struct NumberKey {
    const char* key;
    float Record::*field;
};

constexpr NumberKey<ShotVertex> VertexNumbers[] = {
    {"r", &ShotVertex::r}, {"g", &ShotVertex::g}, {"b", &ShotVertex::b}, {"a", &ShotVertex::a},
    {"u", &ShotVertex::u}, {"v", &ShotVertex::v}, {"x", &ShotVertex::x}, {"y", &ShotVertex::y}};

constexpr NumberKey<GUI_Style> StyleNumbers[] = {
    {"leftx", &GUI_Style::leftx},   {"lefty", &GUI_Style::lefty}, {"rightx", &GUI_Style::rightx},
    {"righty", &GUI_Style::righty}, {"textx", &GUI_Style::textx}, {"texty", &GUI_Style::texty},
    {"textr", &GUI_Style::textr},   {"textg", &GUI_Style::textg}, {"textb", &GUI_Style::textb},
    {"texta", &GUI_Style::texta}};

// Reports what shots lack, one line a block, so that no count in a file can fill the log.
class MissingBlocks {
public:
    // `line` reports one block; `count` of them are missing.
    void Report(const char* line, int count) {
        const int listed = std::min({count, MaxMissing, MaxLines - lines});
        for (int i = 0; i < listed; ++i)
            LogWrite("%s", line);
        if (listed < count && lines < MaxLines)
            LogWrite("QEV_Gui::GUI_Style::LoadShot [ warning ] - %d more are missing\n", count - listed);
        lines += std::max(listed, 1);
    }

private:
    int lines = 0;
};

// A key of the block that may be missing: its value, or what it was.
void ReadOptional(const char* key, ConfigFile* file, float& value) {
    if (INI_FindKey(key, file)) value = INI_ReadFloat(key, file);
}

std::uint8_t ReadByte(const char* key, ConfigFile* file) {
    return static_cast<std::uint8_t>(INI_ReadInt(key, file));
}

void ReadButton(const char* block, const char* warning, ConfigFile* file, ButtonSettings& button) {
    if (!INI_FindNextBlock(block, file)) {
        LogWrite("%s", warning);
        return;
    }
    button.caption.fill('\0');
    std::strncpy(button.caption.data(), INI_ReadString("caption", file), button.caption.size() - 1);
    button.width = INI_ReadFloat("width", file);
    button.height = INI_ReadFloat("height", file);
    button.stid = ReadByte("stid", file);
    button.left = INI_ReadFloat("left", file);
    button.top = INI_ReadFloat("top", file);
    button.scissor = INI_ReadInt("scissor", file) != 0;
    button.pos_id = ReadByte("pos_id", file);
    INI_SkipBlock(block, file);
}

BorderBox ReadBox(ConfigFile* file) {
    BorderBox box;
    box.pos1x = INI_ReadFloat("pos1x", file);
    box.pos1y = INI_ReadFloat("pos1y", file);
    box.fixed1 = ReadByte("fixed1", file);
    box.pos2x = INI_ReadFloat("pos2x", file);
    box.pos2y = INI_ReadFloat("pos2y", file);
    box.fixed2 = ReadByte("fixed2", file);
    return box;
}

std::vector<BorderBox> ReadBorder(ConfigFile* file) {
    if (!INI_FindNextBlock("border", file)) {
        LogWrite("QEV_Gui::GUI_Styles::Load() [ warning ] - Border block wasn't found\n");
        return {BorderBox()};
    }
    std::vector<BorderBox> boxes(ReadByte("box_num", file));
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        if (INI_FindNextBlock("box", file)) {
            boxes[i] = ReadBox(file);
            INI_SkipBlock("box", file);
        } else {
            LogWrite("QEV_Gui::GUI_Styles::Load() [ warning ] - Box block N %d wasn't found\n",
                     static_cast<int>(i));
        }
    }
    INI_SkipBlock("border", file);
    return boxes;
}

ShotVertex ReadVertex(ConfigFile* file) {
    ShotVertex vertex;
    vertex.fixed = ReadByte("fixed", file);
    for (const auto& [key, field] : VertexNumbers)
        vertex.*field = INI_ReadFloat(key, file);
    return vertex;
}

// The count is kept with sixteen bits.
int ReadCount(const char* key, ConfigFile* file) {
    return static_cast<std::uint16_t>(INI_ReadInt(key, file));
}

void ReadVertices(ConfigFile* file, int count, std::vector<ShotVertex>& vertices, MissingBlocks& missing) {
    for (int i = 0; i < count; ++i) {
        if (!INI_FindNextBlock("vert", file)) {
            // The rest is missing too: nothing moves the file on.
            missing.Report("QEV_Gui::GUI_Style::LoadShot [ warning ] - No vert is found in vertlist\n",
                           count - i);
            vertices.resize(vertices.size() + static_cast<std::size_t>(std::min(count - i, MaxMissing)));
            return;
        }
        vertices.push_back(ReadVertex(file));
        INI_SkipBlock("vert", file);
    }
}

ShotPoly ReadPoly(ConfigFile* file, MissingBlocks& missing) {
    ShotPoly poly;
    const int count = ReadCount("vnum", file);
    if (INI_FindNextBlock("vertlist", file)) {
        ReadVertices(file, count, poly.verts, missing);
        INI_SkipBlock("vertlist", file);
    } else {
        missing.Report("QEV_Gui::GUI_Style::LoadShot [ warning ] - No vertlist is found in poly \n", 1);
    }
    return poly;
}

std::vector<ShotPoly> ReadPolys(ConfigFile* file, int count, MissingBlocks& missing) {
    std::vector<ShotPoly> polys;
    for (int i = 0; i < count; ++i) {
        if (!INI_FindNextBlock("poly", file)) {
            // The rest is missing too, and an empty polygon shows nothing.
            missing.Report("QEV_Gui::GUI_Style::LoadShot [ warning ] - No poly is found in poly list \n",
                           count - i);
            break;
        }
        polys.push_back(ReadPoly(file, missing));
        INI_SkipBlock("poly", file);
    }
    return polys;
}

// Appends the shots of the enclosing block.
void LoadShot(ConfigFile* file, Shot& shot, MissingBlocks& missing) {
    while (INI_FindNextBlock("new shot", file)) {
        ShotPolylist& list = shot.emplace_back();
        list.mode = ReadByte("mode", file);
        const int count = ReadCount("polynum", file);
        if (INI_FindNextBlock("polylist", file)) {
            list.polys = ReadPolys(file, count, missing);
            INI_SkipBlock("polylist", file);
        } else if (count != 0) {
            missing.Report("QEV_Gui::GUI_Style::LoadShot [ warning ] - No polylist is found \n", 1);
        }
        INI_SkipBlock("new shot", file);
    }
}

void LoadStyle(ConfigFile* file, GUI_Style& style, MissingBlocks& missing) {
    for (const auto& [key, field] : StyleNumbers)
        style.*field = INI_ReadFloat(key, file);

    static constexpr std::array<const char*, 4> StateNames = {"normal", "hover", "clicked", "disabled"};
    bool recognised = false;
    while (INI_FindNextBlock("mode", file)) {
        const std::string state = INI_ReadString("state", file);
        const auto found = std::ranges::find(StateNames, state);
        if (found != StateNames.end()) {
            LoadShot(file, style.shots[static_cast<std::size_t>(found - StateNames.begin())], missing);
            recognised = true;
        } else if (!recognised) {
            LogWrite("QEV_Gui::GUI_Style::Load[ warning ] Incorrect or missing value at state = %s \n",
                     state.c_str());
        }
        if (!INI_SkipBlock("mode", file))
            LogWrite("QEV_Gui::GUI_Style::Load() [ warning ] - Couldn't skip modeblock\n");
    }
    for (std::size_t i = 0; i < style.shots.size(); ++i) {
        if (!style.shots[i].empty()) continue;
        LogWrite("QEV_Gui::GUI_Style::Load[ warning ] mode[%d] info wasn't loaded - loading default \n",
                 static_cast<int>(i));
        style.shots[i] = GUI_Style::MakeDefaultShot();
    }
}

} // namespace

void GUI_Styles::Load(ConfigFile* file) {
    MissingBlocks missing;
    if (INI_FindNextBlock("general", file)) {
        ReadOptional("win_min_width", file, win_min_width);
        ReadOptional("win_min_height", file, win_min_height);
        ReadOptional("win_max_width", file, win_max_width);
        ReadOptional("win_max_height", file, win_max_height);
        ReadOptional("scroll_width", file, scroll_width);
        ReadOptional("scroll_height", file, scroll_height);
        picture = image.Add(INI_ReadString("image", file));
        boxes = ReadBorder(file);
        ReadButton("close button",
                   "QEV_Gui::GUI_Styles::Load() [ warning ] - Close button block wasn't found\n", file,
                   closeButton);
        ReadButton("resize button",
                   "QEV_Gui::GUI_Styles::Load() [ warning ] - Resize button block wasn't found\n", file,
                   resizeButton);
        INI_SkipBlock("general", file);
    } else {
        LogWrite("QEV_Gui::GUI_Styles::Load() [ warning ] - General block wasn't found\n");
    }
    if (INI_FindNextBlock("focus style", file)) {
        LoadShot(file, focus, missing);
        INI_SkipBlock("focus style", file);
    } else {
        LogWrite("QEV_Gui::GUI_Styles::Load() [ warning ] - Focus style wasn't found\n");
    }
    while (INI_FindNextBlock("New style", file)) {
        GUI_Style style;
        LoadStyle(file, style, missing);
        if (!AddStyle(std::move(style))) {
            LogWrite("QEV_Gui::GUI_Styles::Load() [ warning ] - More than %d styles, the rest isn't read\n",
                     Count());
            return;
        }
        if (!INI_SkipBlock("New style", file))
            LogWrite("QEV_Gui::GUI_Styles::Load() [ warning ] - Couldn't skip New Style block\n");
    }
}
