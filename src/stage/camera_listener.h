// The ear of positional sounds: it stands on the ground under the camera.
#pragma once

#include <cstdint>

struct WorldObject;

class CameraListener {
public:
    // Positional sounds are heard from here, until Unbind; the object must live as long.
    void Bind() const;
    static void Unbind();
    // Goes to where the camera stands, on the layer of the object that the camera follows (may be null), and
    // lets what it hears move with it.
    void Update(const WorldObject* followed);

private:
    float x = 0.0F; // in plane units
    float y = 0.0F;
    float angle = 0.0F; // degrees
    std::int32_t plane = 0;
};
