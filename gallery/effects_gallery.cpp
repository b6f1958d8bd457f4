// Shows every particle effect over time: the real menu and the real game run by a clock that goes on by one
// step a picture, with one effect at a time where they start it; with the argument "rows" only cleared rows,
// one, two and four at three heights over stones. Run it in a folder laid out as the game's; it writes
// bitmaps and prints a line for each: file, part worth seeing, moment and row, with tabs between them.
#include "window_picture.h"

#include "app/engine.h"
#include "base/frame_clock.h"
#include "base/log.h"
#include "frontend/menu_scene.h"
#include "game/game_scene.h"
#include "gui/manager.h"
#include "particles/engine.h"
#include "play/kolvex.h"

#include <SDL.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace {

std::uint32_t stepTime = 16; // ms between two pictures; the menu glows at 60 a second and more
constexpr std::uint32_t NoOwner = 255;

std::uint32_t ticks = 1;

struct Start {
    std::uint32_t effect;
    Vec3 place;
    Vec3 direction;
};

// Without starts, what the scene itself has started is shown.
struct Row {
    std::string name;
    const char* part; // of the picture, in pixels: width, height, from the left, from the top
    std::vector<Start> starts;
    std::vector<std::uint32_t> moments; // ms since the start
    int heap = -1;                      // rows of stones in the well; below 0 the game goes on as it is
};

constexpr char Whole[] = "640x480+0+0";
constexpr char Well[] = "400x300+150+175";
constexpr char Gate[] = "400x300+240+30";
constexpr char Sky[] = "520x390+120+0";

Start ClearedRow(int row) {
    const auto height = static_cast<float>(row);
    return {5, {-4.5F, 1.0F, 0.02F * (19.0F - height) + 0.47F * (height + 1.0F)}, {12.0F, 0.0F, 0.0F}};
}

const std::vector<std::uint32_t> Ambient = {500, 1000, 2000, 5000, 10000, 20000};
const std::vector<std::uint32_t> Sudden = {40, 200, 500, 1000, 2000, 4000};
const std::vector<std::uint32_t> Sweep = {60, 160, 300, 500, 1000, 1600};
const std::vector<std::uint32_t> Opening = {1000, 2000, 3000, 4000, 5000, 6000};

const std::vector<Row> MenuRows = {
    {"the boxes lock", Whole, {}, Sudden},
    {"effect 1 over 0, the lock's burst",
     Whole,
     {{0, {1, 2, 3}, {0, 0, 0}}, {1, {5, 3.8F, -4}, {0, 0.2F, 0}}},
     Sudden},
    {"effect 0, the air of the menu", Whole, {{0, {1, 2, 3}, {0, 0, 0}}}, Ambient},
};

const std::vector<Row> GameRows = {
    {"a game begins", Whole, {}, Opening},
    {"effect 3, in the sky", Sky, {{3, {-7, -10, 25}, {5, 5, 0}}, {3, {-8, -30, 25}, {0.7F, 1, 0}}}, Ambient},
    {"effect 2, falling sand",
     Whole,
     {{2, {-2, -25, 30}, {0, 0, 0}}, {2, {-2, -11, 30}, {0, 0, 0}}},
     Ambient},
    {"effect 4, torches",
     Gate,
     {{4, {3.1F, -35.2F, 10.2F}, {0, 1, 0}},
      {4, {-7.5F, -35.2F, 10.2F}, {0, 1, 0}},
      {4, {13, -21.6F, 7.6F}, {0, 1, 0}},
      {4, {-17.5F, -21.6F, 7.6F}, {0, 1, 0}}},
     Ambient},
    {"effect 5, lowest row", Well, {ClearedRow(0)}, Sweep},
    {"effect 5, tenth row", Well, {ClearedRow(9)}, Sweep},
    {"effect 5, four rows", Well, {ClearedRow(3), ClearedRow(4), ClearedRow(5), ClearedRow(6)}, Sweep},
};

// One, two and four cleared rows from a lowest one on. With 15 ms a picture every moment is met.
Row ClearedRows(int lowest, int count, const char* part) {
    Row row{std::to_string(count) + (count == 1 ? " row from " : " rows from ") + std::to_string(lowest + 1),
            part,
            {},
            {15, 60, 120, 180, 240, 300, 360, 420, 480, 540, 600, 660},
            lowest};
    for (int i = 0; i < count; ++i)
        row.starts.push_back(ClearedRow(lowest + i));
    return row;
}

constexpr char LowPart[] = "288x134+176+346";
constexpr char MiddlePart[] = "288x134+176+206";
constexpr char HighPart[] = "304x134+168+46";

const std::vector<Row> StripRows = {
    {"", HighPart, {}, {6000}}, // the camera comes to rest
    ClearedRows(0, 1, LowPart),    ClearedRows(0, 2, LowPart),    ClearedRows(0, 4, LowPart),
    ClearedRows(9, 1, MiddlePart), ClearedRows(9, 2, MiddlePart), ClearedRows(9, 4, MiddlePart),
    ClearedRows(19, 1, HighPart),  ClearedRows(18, 2, HighPart),  ClearedRows(16, 4, HighPart),
};

// A well with so many rows of stones, none of them full, some stones that have moved into the cleared rows,
// and a piece at its top.
void FillWell(int heap) {
    constexpr int Kinds = 6; // all but the bar, whose picture has no such tile
    constexpr int Tile = 1;
    kolvex.NewGame();
    for (int row = 0; row < heap + 1 && row < Board::Rows; ++row)
        for (int column = 0; column < Board::Columns; ++column) {
            const bool moved = row == heap;
            if (moved ? column % 4 != 2 : column == (row * 7 + 3) % Board::Columns) continue;
            BoardCell& cell = kolvex.board.At(column, row);
            cell.occupied = 1;
            cell.type = 1 + (column / 2 * 3 + row / 2 * 5) % Kinds;
            cell.tile = Tile;
        }
}

// Goes through the rows of a scene, one after the other, and keeps the pictures of their moments.
class Director {
public:
    Director(char letter, const std::vector<Row>& itsRows) : scene(letter), rows(itsRows) {}

    // Once a picture, after the particles have moved. Ends the scene behind the last row.
    void GoOn() {
        if (row == static_cast<int>(rows.size())) return; // the scene fades out
        if (row >= 0) elapsed += frameClock.frameDelta;
        if (row < 0 || moment == Current().moments.size()) {
            if (++row == static_cast<int>(rows.size())) return Main::Quit();
            Begin();
        }
        shown = elapsed >= Current().moments[moment];
    }

    bool Shows() const { return shown; }

    // Once a picture, when it has been drawn.
    void Keep() {
        if (!std::exchange(shown, false)) return;
        const std::string file = scene + std::to_string(row) + "-" + std::to_string(moment) + ".bmp";
        WritePicture(file.c_str());
        std::printf("%s\t%s\t%.2f s\t%s\n", file.c_str(), Current().part, elapsed / 1000.0,
                    Current().name.c_str());
        ++moment;
    }

private:
    const Row& Current() const { return rows[static_cast<std::size_t>(row)]; }

    void Begin() {
        elapsed = 0;
        moment = 0;
        if (Current().heap >= 0) FillWell(Current().heap);
        if (Current().starts.empty()) return;
        pengine = std::make_unique<QEV_PEngine>();
        if (!pengine->Load("particles/reason.txt")) return;
        for (const Start& start : Current().starts)
            pengine->ActiveEffect(start.effect, NoOwner, start.place, start.direction);
    }

    char scene;
    const std::vector<Row>& rows;
    int row = -1;
    std::size_t moment = 0;
    std::uint32_t elapsed = 0; // ms of this row
    bool shown = false;
};

Director* director = nullptr;

class ShownMenu : public MenuScene {
public:
    void Update() override {
        MenuScene::Update();
        gui.cursor.x = gui.cursor.y = 0.97F; // nothing is hovered
        if (blockMenu.GetState() != BlockMenu::Phase::Gathering) director->GoOn();
    }
};

class ShownGame : public GameScene {
public:
    void Animate() override {
        GameScene::Animate();
        director->GoOn();
    }
    // The court takes its time; between two pictures nobody sees it.
    void Draw() override {
        if (director->Shows()) GameScene::Draw();
    }
};

void Show(mainScene& scene, Mode mode, char letter, const std::vector<Row>& rows) {
    Director its(letter, rows);
    director = &its;
    GameMode = mode;
    std::srand(1);
    scene.GameStart(0, 0);
    director = nullptr;
}

} // namespace

// The engine's clock and its pictures are this program's.
extern "C" Uint32 SDL_GetTicks() {
    return ticks;
}

extern "C" void SDL_Delay(Uint32 time) {
    ticks += time;
}

extern "C" void SDL_GL_SwapBuffers() {
    if (director) director->Keep();
    ticks += stepTime;
}

int main(int count, char** arguments) {
    const bool rowsOnly = count > 1 && std::string(arguments[1]) == "rows";
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    std::atexit(SDL_Quit);
    LogStart();
    Global_Start();
    if (!rowsOnly) {
        ShownMenu menu;
        Show(menu, Mode::Menu, 'a', MenuRows);
    }
    if (rowsOnly) stepTime = 15;
    ShownGame game;
    Show(game, Mode::Puzzle, rowsOnly ? 'r' : 'b', rowsOnly ? StripRows : GameRows);
    Global_Destroy();
}
