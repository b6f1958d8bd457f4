// The 3D menu: four boxes that fly in from four sides, lock together into the T piece, and are picked with
// the mouse. Rests on the box model, OpenGL's selection, the frame clock, and the glow drawn behind the
// boxes.
#pragma once

#include "base/timer.h"
#include "frontend/glow_level.h"
#include "frontend/menu_sounds.h"
#include "frontend/radial_glow.h"
#include "graphics/textures.h"

#include <array>
#include <cstddef>
#include <vector>

struct GuiPoint;
class KsmModel;

// What the boxes stand for, by their index.
enum class MenuItem : int { None = -1, Options, Credits, NewGame, Quit };

// A menu's boxes and their state. Nothing here decides what a picked box does.
class BlockMenu {
public:
    enum class Phase { Gathering, Ready, Hovered, Frozen };

    struct Item {
        float x = 0.0F; // place of the box's middle, in drawing units
        float y = 0.0F;
        float z = 0.0F;
        float scale = 1.0F;
        bool soundPlayed = false; // the hover sound, since the box last shrank
    };
    static constexpr std::size_t ItemCount = 4;

    // The model drawn for every box with its textures, which must outlive the drawing, and the glow's
    // texture.
    void Init(const KsmModel* boxModel, const QEV_Textures* boxTextures);
    // The pictures drawn around the boxes; without them there are none.
    void LoadLogos();
    // Boxes at their four starting points, nothing hovered, no glow.
    void Reset();
    // Gives glow and logos back.
    void Release();
    // Makes both anew, after a mode change.
    void Reload();

    // Advances by that many milliseconds: gathering and locking, spin, the boxes' growing and shrinking, and
    // the glow's level.
    void Update(std::uint32_t milliseconds);
    // Finds the box under a point in GUI units; the nearest of several.
    void Pick(float cursorX, float cursorY);

    // Adds the boxes' middles that are seen, and a place beside them, at which they spin on: a box whose
    // middle is covered comes round. None while nothing can be picked.
    void AddStops(std::vector<GuiPoint>& stops) const;

    // Everything: glow, logos, boxes, and the hovered box's name beside the cursor.
    void Draw();
    // The four boxes, each under its index as its selection name.
    void DrawBoxes() const;

    void SetState(Phase newPhase) { phase = newPhase; }
    Phase GetState() const { return phase; }
    MenuItem GetHovered() const { return hovered; }
    void SetHovered(MenuItem item) { hovered = item; }

    const Item& GetItem(std::size_t index) const { return items[index]; }
    float AngleX() const { return angleX; }

    // Opacity of the logos, 0 to 1.
    float logoAlpha = 0.0F;
    Timer logoFadeTimer; // raises the opacity after the boxes have locked
    GlowLevel glowLevel;
    RadialGlow glow;
    MenuSounds sounds;

private:
    void Gather(float delta);
    void Lock();
    void Spin(float degrees);
    void UpdateHover(float delta);
    void Grow(Item& item, float delta) const;
    static void Shrink(Item& item, float delta);
    void Turn() const;
    MenuItem ItemAt(GuiPoint point) const;
    void DrawMakerLogo() const;
    void DrawLogos() const;
    void DrawName() const;

    const KsmModel* model = nullptr;
    const QEV_Textures* textures = nullptr;
    QEV_Textures makerLogo;
    QEV_Textures gameLogo;
    QEV_Textures studioLogo;
    Phase phase = Phase::Gathering;
    Timer logoWaveTimer;
    float angleX = 0.0F; // degrees
    float angleY = 0.0F;
    float speed = 0.0F; // of gathering, in units a millisecond
    std::array<Item, ItemCount> items;
    MenuItem hovered = MenuItem::None;
};
