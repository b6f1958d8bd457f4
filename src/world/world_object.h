// One thing that stands or moves on the ground of a map, and its step.
// Rests on nothing: the world decides when it steps and what blocks it (world_motion.h).
#pragma once

#include <array>
#include <cstdint>

struct Vector2 {
    float x = 0.0F;
    float y = 0.0F;
};

// What an object does when it meets another; other values ignore the meeting.
enum ObjectStatus : std::uint8_t {
    StatusPusher = 0,   // pushes what it meets by its speed
    StatusBlocked = 1,  // stops at what it meets
    StatusBouncer = 2,  // pushes by the difference in speed, turns round at walls
    StatusWanderer = 3, // turns round at everything
    StatusStopper = 4,  // pushes by the difference in speed, comes to rest at walls and at its like
};

struct WorldObject {
    static constexpr std::uint8_t NoPendingSector = 255;
    static constexpr std::size_t MaxContacts = 5;
    // Values of `blend`; between the last two its light is added, beyond nothing is drawn.
    static constexpr std::uint8_t BlendAlpha = 0, BlendNone = 1, LastBlend = 3;
    static constexpr float ImpulseShare = 0.05F; // of the impulse that moves it in a whole step

    // Moves by one step of `time` (1 for a whole step): turns, moves by the velocity, and gives way to pushes
    // by a share of the impulse. A blocked axis reverses or ends the motion along it as the status says.
    void Step(float time, bool blockedX, bool blockedY);

    // Adds to the impulse.
    void Push(float pushX, float pushY);

    // Displacement of the next millisecond, by velocity and push.
    Vector2 Motion() const {
        return {velocity.x + ImpulseShare * impulse.x, velocity.y + ImpulseShare * impulse.y};
    }

    // An object without velocity does not count as moving.
    void StopIfResting();

    bool IsTouching() const { return contactCount > 0; }
    // Notes an object touched; one already noted and a sixth are dropped.
    void AddContact(std::uint8_t object);

    float x = 0.0F; // plane units; cell (-trunc(x), -trunc(y)) lies under it
    float y = 0.0F;
    float heading = 0.0F;   // degrees
    float turnRate = 0.0F;  // degrees a step
    float turnRate2 = 0.0F; // a second turn on top of the first
    Vector2 velocity;       // plane units a step
    Vector2 localVelocity;  // forward (x) and sideways (y); becomes the velocity by the heading
    Vector2 impulse;
    float size = 0.2F; // collision radius
    std::uint8_t blend = BlendAlpha;
    std::int32_t sector = 0;
    bool moving = false;
    bool turning = false;
    bool turning2 = false;
    bool pushed = false;
    std::uint8_t bplayer = 0;
    std::uint8_t status = StatusPusher;
    std::uint8_t pendingSector = NoPendingSector; // the other side of the portal it stands on
    std::uint8_t contactCount = 0;
    std::array<std::uint8_t, MaxContacts> contacts{}; // object indices
    std::uint16_t modelSlot = 0;                      // instance in the object set's models

private:
    void Turn(float degrees);
    void Move(float time, bool blockedX, bool blockedY);
    void GiveWay(float time, bool blockedX, bool blockedY);
};
