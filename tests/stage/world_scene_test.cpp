// The world scene run with the game's own map: objects, models, particles and camera in three layers, its
// statistics, and its end.
#include "base/frame_clock.h"
#include "particles/engine.h"
#include "play/map_layers.h"
#include "scene/profiler.h"
#include "stage/world_scene.h"
#include "support/scene_fixture.h"
#include "support/sound_device.h"
#include "world/camera.h"
#include "world/object_set.h"
#include "world/world_grid.h"

#include <algorithm>
#include <cmath>

namespace {

int toldAngle = 0; // to the mixer
int toldDistance = 0;

using SteeredWorld = Steered<WorldScene>;
constexpr float Speed = 0.03125F; // plane units a frame, a number that adds up exactly

class World : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        GameMode = Mode::Game;
        world.frames = 0;
    }

    SteeredWorld world;
};

// The map has one sector; two more come to it, and an object of its own goes to each.
void SpreadOverThreeLayers() {
    globalp->sectorLists.resize(3);
    for (std::uint32_t layer = 0; layer < 3; ++layer) {
        if (layer > 0) {
            globalp->sectorLists[layer].fill(SectorListEnd);
            globalp->MoveToSector(layer, static_cast<std::int32_t>(layer));
        }
        WorldObject& object = globalp->objects[layer];
        object.moving = true;
        object.velocity = {Speed * static_cast<float>(layer + 1), 0.0F};
    }
}

} // namespace

extern "C" int Mix_SetPosition(int /*channel*/, Sint16 angle, Uint8 distance) {
    toldAngle = angle;
    toldDistance = distance;
    return 1;
}

namespace {

std::size_t VerticesOf(void (*draw)()) {
    glMatrixMode(GL_MODELVIEW);
    camera.Apply();
    return World::Record(draw).size();
}

TEST_F(World, ObjectsAndModelsOfThreeLayersMoveAndTheCameraFollows) {
    static std::array<float, 3> start;
    static std::array<int, 3> modelFrames;
    static std::size_t drawn;
    world.steer = [](SteeredWorld& self) {
        if (self.frames == 1) {
            drawn = VerticesOf(DrawObjects);
            SpreadOverThreeLayers();
            for (std::size_t i = 0; i < 3; ++i) {
                start[i] = globalp->objects[i].x;
                modelFrames[i] = 0;
            }
            EXPECT_EQ(VerticesOf(DrawObjects), drawn) << "each layer's objects are drawn";
        }
        for (std::size_t i = 0; i < 3; ++i) {
            const WorldObject& object = globalp->objects[i];
            EXPECT_EQ(object.x - start[i],
                      Speed * static_cast<float>(i + 1) * static_cast<float>(self.frames - 1));
            EXPECT_EQ(object.sector, static_cast<std::int32_t>(i));
            modelFrames[i] += objects->models.Instance(object.modelSlot).CurrentFrame() != 0 ? 1 : 0;
        }
        EXPECT_EQ(camera.x, 2.0F * globalp->objects[0].x);
        frameClock.frameDelta = 1;
        if (self.frames >= 20 && std::ranges::min(modelFrames) > 0) Main::Quit();
    };
    world.GameStart(0, 0);
    EXPECT_GT(drawn, 0U);
    EXPECT_TRUE(Logged("MainScene::GameProcess()[DESTROY] State mode Change - [END]\nmainScene::GameEnd\n"
                       "mainScene::StopMap()-Removing old objects\n"));
    EXPECT_TRUE(Logged("mainScene::input.Destroy()\nQEV_Gui::Clear()\nQEV_Gui::Clear()\n"
                       "mainScene::GameStart - stoping debugger\n"));
    EXPECT_EQ(profiler, nullptr);
}

// Points of the plane are drawn at twice their distance, and the ear stands under the camera.
TEST_F(World, SoundsAreHeardFromTheGroundUnderTheCamera) {
    static float x, y;
    WriteSquareWave("tone.wav", 10, 1000);
    world.steer = [](SteeredWorld& self) {
        WorldObject& object = globalp->objects[0];
        object.moving = false;
        camera.rot1 = 30.0F;
        if (self.frames == 1) {
            x = object.x + 2.0F;
            y = object.y;
            audio.Positional_Play(audio.Sample_Add("tone.wav"), &x, &y, &object.sector);
        } else if (self.frames == 4) {
            EXPECT_EQ(toldDistance, 72) << "two units";
            EXPECT_NEAR(toldAngle, std::fmod(camera.rot1 + 450.0F, 360.0F), 1.0F);
            Main::Quit();
        }
    };
    world.GameStart(0, 0);
}

// The map's own list: the first and the second burn until the end, the third comes every second.
TEST_F(World, TheMapStartsItsEffects) {
    std::filesystem::copy("maps", "own", std::filesystem::copy_options::recursive);
    std::filesystem::remove("maps");
    std::filesystem::rename("own", "maps");
    std::string map = ReadFile("maps/firstmap.txt");
    const std::size_t begin = map.find("<effects>") + 9;
    map.replace(begin, map.find("</effects>") - begin,
                "\n<effect>\nnumber = 0\nposx = -20\n</effect>\n<effect>\nnumber = 99\n</effect>\n"
                "<effect>\nnumber = 1\nevery = 1000\nposy = -26\nposz = 0.5\ndirx = 12\n</effect>\n");
    WriteFile("maps/firstmap.txt", map);
    pictureTime = 100;
    world.steer = [](SteeredWorld& self) {
        const std::size_t running = pengine->RunningCount();
        if (self.frames == 1 || self.frames == 8) {
            EXPECT_EQ(running, 2U);
        } else if (self.frames == 12) {
            EXPECT_EQ(running, 3U) << "the second burst, while the first still fades";
            const WorldObject& followed = globalp->objects[0];
            pengine->ActiveEffect(0, 255, {followed.x, followed.y - 3.0F, 1.0F}, {0.0F, 0.0F, 1.0F});
        } else if (self.frames == 80) {
            EXPECT_LE(running, 5U) << "bursts end";
            EXPECT_GT(VerticesOf(DrawEffects), 0U);
            Main::Quit();
        }
    };
    world.GameStart(0, 0);
    EXPECT_TRUE(Logged("ActiveEffect(99) - [WARNING] - Particle effect not found !"));
}

TEST_F(World, EndsTheProgramWithoutItsMap) {
    std::filesystem::remove("maps");
    world.GameStart(0, 0);
    EXPECT_TRUE(Logged("mainScene::LoadMap(maps/firstmap.txt) - Can't load file\n"));
    EXPECT_EQ(world.frames, 0);
}

} // namespace
