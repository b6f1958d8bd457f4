// The one eye through which every scene looks.
// Rests on the block reader and OpenGL; the object that it follows is handed to it.
#pragma once

#include "config/config_file.h"

struct WorldObject;
template<class Record> struct RecordTable;

class Camera {
public:
    // A scene begins; the eye stays where it is until the scene or its map sets it.
    static void Start();

    // Takes position, angles and followed object from the `camera` block of an open map file; without one the
    // camera stays as it is (logged).
    void Load(ConfigFile* mapFile);
    static RecordTable<Camera> Table();

    // Position in drawing units, negated: the eye stands at (-x, -y, -z).
    void SetPosition(float newX, float newY, float newZ);
    // Degrees: the turn about the upright axis, and the tilt, 0 looking straight down and -90 level.
    void SetAngles(float newRot1, float newRot2);

    // Replaces the current matrix by the view of this camera.
    void Apply() const;

    // Stands over the object and looks where it heads; height and tilt stay. Null changes nothing.
    void FollowObject(const WorldObject* object);

    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
    float rot1 = 0.0F;
    float rot2 = 0.0F;
    int objectId = 0; // index of the object to follow in the world's object table
};

extern Camera camera;
