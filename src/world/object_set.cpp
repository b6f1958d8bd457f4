#include "world/object_set.h"

#include "base/log.h"
#include "config/config_file.h"
#include "graphics/gl_state.h"
#include "scene/game_mode.h"
#include "world/world_grid.h"

#include <GL/gl.h>

#include <optional>

constinit std::unique_ptr<Objects> objects;

namespace {

constexpr float ModelScale = 4.0F; // drawing units of a model's unit for an object of size 1

} // namespace

bool Objects::Load(const char* path) {
    if (!ConfigFile(path).IsOpen()) {
        LogWrite("mainScene::Objects::Load[ FATAL ERROR !] - %s - file not found\n", path);
        Main::SDL_Quit();
        return false;
    }
    models.Init();
    return true;
}

void Objects::DrawLayer(const Globalp& world, std::uint32_t layer) {
    for (const std::uint8_t index : world.ObjectsOf(layer)) {
        const WorldObject& object = world.objects[index];
        glBindTexture(GL_TEXTURE_2D, models.InstanceSkin(object.modelSlot));
        glPushMatrix();
        glTranslatef(-2.0F * object.x, -2.0F * object.y, 0.0F);
        glRotatef(180.0F - object.heading, 0.0F, 0.0F, 1.0F);
        const float scale = ModelScale * object.size;
        glScalef(scale, scale, scale);
        std::optional<Blend> blend;
        if (object.blend == WorldObject::BlendAlpha) blend.emplace();
        if (object.blend > WorldObject::BlendNone) blend.emplace(GL_SRC_ALPHA, GL_ONE);
        if (object.blend <= WorldObject::LastBlend) models.Instance(object.modelSlot).Draw();
        glPopMatrix();
    }
}

void Objects::Release() {
    models.Destroy();
}
