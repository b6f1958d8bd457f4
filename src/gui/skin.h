// The skin: what every window and widget looks like. A table of styles, each with a picture for every state
// of an element, and the sizes that windows and scroll bars share. Lengths are in GUI units, colours go from
// 0 to 1. Rests on the textures and the font.
#pragma once

#include "graphics/textures.h"
#include "gui/geometry.h"
#include "platform/not_copied.h"

#include <array>
#include <bitset>
#include <climits>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class ConfigFile;
class GUI_Component;
class GUI_Element;
class GUI_Window;
enum class GuiState : std::uint8_t;
template<class Record> struct RecordTable;

// A corner of a polygon: hung on one of nine places of the rectangle that is drawn.
struct ShotVertex {
    float x = 0.0F, y = 0.0F; // offset from the anchor
    float r = 1.0F, g = 1.0F, b = 1.0F, a = 1.0F;
    float u = 0.0F, v = 0.0F;
    std::uint8_t fixed = 0; // anchor, 0 to 8 (see AnchorPoint)

    static RecordTable<ShotVertex> Table();
};

struct ShotPoly {
    std::vector<ShotVertex> verts;
};

enum class ShotMode : std::uint8_t { Filled, Outline, Textured };

// Drawn as one primitive: all vertices of all polygons, in order.
struct ShotPolylist {
    std::vector<ShotPoly> polys;
    std::uint8_t mode = 0; // a ShotMode; anything else draws nothing
};

using Shot = std::vector<ShotPolylist>;

// Reports the blocks that one skin's shots lack, a line a block up to a limit, so that no count in a file can
// fill the log.
class MissingBlocks {
public:
    // `line` reports one block; `count` of them are missing.
    void Report(const char* line, int count);

private:
    int lines = 0;
};

struct GUI_Style {

    // Reads the style from a file that stands inside its block: ten numbers, 0 where missing, and the shots
    // of its states. A state without one gets the built-in shot.
    void Load(ConfigFile* file, MissingBlocks& missing);
    // Appends the shots of the block in which the file stands.
    static void LoadShot(ConfigFile* file, Shot& shot, MissingBlocks& missing);

    // The built-in look: translucent white with a black outline in all four states.
    void SetDefaults();
    static Shot MakeDefaultShot();
    static RecordTable<GUI_Style> Table();

    std::array<Shot, 4> shots; // by GuiState
    float leftx = 0.0F;        // where the client area of a container of this style begins
    float lefty = 0.0F;
    float rightx = 0.0F; // margins left out of a window's scissor
    float righty = 0.0F;
    float textx = 0.0F; // where the caption begins
    float texty = 0.0F;
    float textr = 0.0F;
    float textg = 0.0F;
    float textb = 0.0F;
    float texta = 0.0F;
};

// A mouse-sensitive area of every window; its corners hang on corners of the window (0 top left, then
// clockwise) and are measured inwards from them.
struct BorderBox {
    float pos1x = 0.0F, pos1y = 0.0F;
    std::uint8_t fixed1 = 0;
    float pos2x = 0.0F, pos2y = 0.0F;
    std::uint8_t fixed2 = 2;

    bool Contains(const GuiRect& window, float x, float y) const;
    static RecordTable<BorderBox> Table();
};

// What every window's close or resize button is set up with.
struct ButtonSettings {
    std::string caption;
    float width = 0.0F, height = 0.0F;
    float left = 0.0F, top = 0.0F;
    std::uint8_t stid = 0;
    std::uint8_t pos_id = 0; // corner of the window
    bool scissor = false;

    static RecordTable<ButtonSettings> Table();
};

// What blocks of the skin say before their inner blocks begin: the counts of a list, the kind of a shot.
struct SkinCounts {
    std::uint8_t boxes = 0;
    std::uint8_t mode = 0;
    std::uint16_t polys = 0;
    std::uint16_t vertices = 0;
    std::string state;

    static RecordTable<SkinCounts> BorderTable();
    static RecordTable<SkinCounts> ShotTable();
    static RecordTable<SkinCounts> PolyTable();
    static RecordTable<SkinCounts> ModeTable();
};

// Limits of windows and widths of scroll bars, in shares of the screen.
struct SkinSizes {
    float win_min_width = 0.2F;
    float win_min_height = 0.1F;
    float win_max_width = 1.1F;
    float win_max_height = 1.1F;
    float scroll_width = 0.2F;  // of the buttons of a horizontal scroll bar
    float scroll_height = 0.2F; // of the buttons of a vertical scroll bar
};

// The keys of the block "general" itself.
struct SkinGeneral : SkinSizes {
    std::string image; // the file of the skin's picture

    static RecordTable<SkinGeneral> Table();
};

class GUI_Styles : public SkinSizes, NotCopied {
public:
    // One built-in style and the sizes below.
    void SetDefaults();
    // Reads the skin from a file that stands inside its "skin" block, and loads its picture. What is missing
    // is logged and keeps its default.
    void Load(ConfigFile* file);
    void Destroy();
    // Appends a style; false when there are 255.
    [[nodiscard]] bool AddStyle(GUI_Style&& style);

    std::uint8_t Count() const { return static_cast<std::uint8_t>(styles.size()); }
    bool Has(std::uint8_t stid) const { return stid < styles.size(); }
    // Style 0 for an id that the skin does not have.
    const GUI_Style& Get(std::uint8_t stid) const;
    // False, with a line in the log, when the skin does not have the style.
    bool Check(std::uint8_t stid, const char* origin) const;
    // The same for a style that is asked for every frame, such as a window's, which keeps an unknown one:
    // logged the first time that it is drawn and the first time that it is pointed at.
    bool CheckDrawn(std::uint8_t stid, const char* origin = "QEV_Gui::GUI_Styles::Draw -") const;
    bool CheckHit(std::uint8_t stid) const;

    // Draws a widget: the shot of its state and its caption. An unknown style is logged and becomes 0.
    void Draw(GUI_Component& component, const GUI_Element* parent) const;
    // Draws a window's frame and caption.
    void DrawFrame(const GUI_Window& window) const;
    // Draws the focus frame round the element.
    void DrawFocus(const GUI_Element& element) const;
    // Draws a shot over the rectangle; blending is off and texturing on afterwards, the colour white.
    void DrawShot(const Shot& shot, const GuiRect& rect) const;
    // The same for what a style shows in a state.
    void DrawState(std::uint8_t stid, GuiState state, const GuiRect& rect) const;
    // Prints at most so many characters in the style's colour, behind the point by as much as the style says;
    // the colour is white afterwards.
    void Print(std::uint8_t stid, float left, float top, const char* text, int most = INT_MAX) const;
    // Clips to the element's client area; see ScissorRect.
    void SetScissor(const GUI_Element& element, const GUI_Element* parent) const;
    // Makes the style's caption colour GL's current one.
    void SetTextColour(std::uint8_t stid) const;

    Shot focus;
    QEV_Textures image;
    int picture = -1; // index in `image`; -1 none
    std::vector<BorderBox> boxes;
    // None before there are styles.
    std::optional<ButtonSettings> closeButton;
    std::optional<ButtonSettings> resizeButton;

private:
    bool CheckOnce(std::uint8_t stid, const char* origin, std::bitset<256>& reported) const;

    std::vector<GUI_Style> styles;
    mutable std::bitset<256> reportedDrawn;
    mutable std::bitset<256> reportedHit;
};
