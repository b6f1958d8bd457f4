#include "stage/camera_listener.h"

#include "audio/audio.h"
#include "world/camera.h"
#include "world/world_object.h"

void CameraListener::Bind() const {
    audio.BindListener(&x, &y, &angle, &plane);
}

void CameraListener::Unbind() {
    audio.BindListener(nullptr, nullptr, nullptr, nullptr);
}

void CameraListener::Update(const WorldObject* followed) {
    // Points of the plane are drawn at twice their distance.
    x = camera.x / 2.0F;
    y = camera.y / 2.0F;
    angle = camera.rot1;
    plane = followed ? followed->sector : 0;
    audio.Positional_Update();
}
