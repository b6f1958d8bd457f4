#include "world/camera.h"

#include "base/log.h"
#include "config/record.h"
#include "world/world_object.h"

#include <GL/gl.h>

constinit Camera camera;

void Camera::Start() {
    LogWrite("mainScene::camera.Start()\n");
}

RecordTable<Camera> Camera::Table() {
    static constexpr RecordKey<Camera> Keys[] = {
        {"Camera_x", &Camera::x},       {"Camera_y", &Camera::y},       {"Camera_z", &Camera::z},
        {"Camera_rot1", &Camera::rot1}, {"Camera_rot2", &Camera::rot2}, {"Object_id", &Camera::objectId}};
    return {"camera", Keys};
}

void Camera::Load(ConfigFile* mapFile) {
    LogWrite("mainScene::camera.Load()\n");
    if (!INI_FindBlock("camera", mapFile)) {
        LogWrite("mainScene::camera.Load() [WARNING] - Camera block not found\n");
        return;
    }
    ReadRecord(Table(), *this, mapFile);
    INI_SkipBlock("camera", mapFile);
}

void Camera::SetPosition(float newX, float newY, float newZ) {
    x = newX;
    y = newY;
    z = newZ;
}

void Camera::SetAngles(float newRot1, float newRot2) {
    rot1 = newRot1;
    rot2 = newRot2;
}

void Camera::Apply() const {
    glLoadIdentity();
    glRotatef(rot2, 1.0F, 0.0F, 0.0F);
    glRotatef(rot1, 0.0F, 0.0F, 1.0F);
    glTranslatef(x, y, z);
}

void Camera::FollowObject(const WorldObject* object) {
    if (!object) return;
    x = 2.0F * object->x;
    y = 2.0F * object->y;
    rot1 = object->heading;
}
