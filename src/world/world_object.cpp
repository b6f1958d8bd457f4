// A whole step moves by the velocity and by a share of the impulse, which decays as it is used up.
#include "world/world_object.h"

#include "graphics/vector_math.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float SpentImpulse = 0.01F; // below it on both axes a push is over

Vector2 TurnedBy(const Vector2& local, float degrees) {
    const float radians = degrees * RadiansPerDegree;
    const float cosine = std::cos(radians);
    const float sine = std::sin(radians);
    return {cosine * local.x - sine * local.y, cosine * local.y + sine * local.x};
}

// Gives way on one axis: free motion uses up what it moves, a blocked one comes back.
void GiveWayOn(float& position, float& impulse, float time, bool blocked) {
    const float moved = time * WorldObject::ImpulseShare * impulse;
    position += moved;
    impulse = blocked ? moved - impulse : impulse - moved;
}

} // namespace

void WorldObject::Step(float time, bool blockedX, bool blockedY) {
    if (turning) Turn(time * turnRate);
    if (turning2) Turn(time * turnRate2);
    if (moving) Move(time, blockedX, blockedY);
    if (pushed) GiveWay(time, blockedX, blockedY);
}

void WorldObject::Turn(float degrees) {
    heading += degrees;
    if (moving) velocity = TurnedBy(localVelocity, heading);
}

void WorldObject::Move(float time, bool blockedX, bool blockedY) {
    if (status == StatusWanderer || (status == StatusBouncer && !IsTouching())) {
        if (blockedX) velocity.x = -velocity.x;
        if (blockedY) velocity.y = -velocity.y;
    } else if (status == StatusStopper && !IsTouching()) {
        if (blockedX) velocity.x = 0.0F;
        if (blockedY) velocity.y = 0.0F;
        StopIfResting();
    }
    x += time * velocity.x;
    y += time * velocity.y;
}

void WorldObject::StopIfResting() {
    if (velocity.x == 0.0F && velocity.y == 0.0F) moving = false;
}

void WorldObject::GiveWay(float time, bool blockedX, bool blockedY) {
    GiveWayOn(x, impulse.x, time, blockedX);
    GiveWayOn(y, impulse.y, time, blockedY);
    if (std::abs(impulse.x) < SpentImpulse && std::abs(impulse.y) < SpentImpulse) {
        impulse = {};
        pushed = false;
    }
}

void WorldObject::Push(float pushX, float pushY) {
    impulse.x += pushX;
    impulse.y += pushY;
    pushed = true;
}

void WorldObject::AddContact(std::uint8_t object) {
    const auto end = contacts.begin() + contactCount;
    if (contactCount == MaxContacts || std::find(contacts.begin(), end, object) != end) return;
    contacts[contactCount++] = object;
}
