// An object's square, one millisecond ahead, is tested against walls by its corners and against other
// squares; what it met is kept with the object until all of its layer have moved, and is resolved then.
#include "world/world_motion.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Impulse that a pushed object gets for each unit of speed: of the pusher's own, and, from bouncers and
// stoppers, of the difference between the two. An impulse moves by a twentieth of itself in a step, so a
// pusher makes the other start at half its speed.
constexpr float PushPerSpeed = 10.0F;
constexpr float PushPerSpeedDifference = 600.0F;

// One corner of the square around an object, one millisecond ahead.
struct Corner {
    int signX;
    int signY;
};

// The test of one object's next millisecond.
class WallTest {
public:
    WallTest(const Globalp& tested, const WorldObject& object)
        : world(tested),
          motion(object.Motion()),
          centre{object.x + motion.x, object.y + motion.y},
          size(object.size) {}

    void Run(bool& blockedX, bool& blockedY) const {
        constexpr std::array<Corner, 4> corners = {{{-1, -1}, {1, -1}, {-1, 1}, {1, 1}}};
        for (const Corner& corner : corners)
            if (IsWall(corner.signX, corner.signY)) Block(corner, blockedX, blockedY);
    }

private:
    Vector2 CornerPoint(int signX, int signY) const {
        return {centre.x + static_cast<float>(signX) * size, centre.y + static_cast<float>(signY) * size};
    }
    bool IsWall(int signX, int signY) const {
        const Vector2 point = CornerPoint(signX, signY);
        return world.IsWall(point.x, point.y);
    }

    // A wall along one side holds both corners of that side, so a neighbouring corner tells which axis it
    // blocks. A corner alone in a wall has met the edge of a cell: there the axis along which the object is
    // farther from the cell's middle is the one it comes from.
    void Block(const Corner& corner, bool& blockedX, bool& blockedY) const {
        const bool towardX = motion.x * static_cast<float>(corner.signX) > 0.0F;
        const bool towardY = motion.y * static_cast<float>(corner.signY) > 0.0F;
        const bool sideX = IsWall(corner.signX, -corner.signY);
        const bool sideY = IsWall(-corner.signX, corner.signY);
        if (sideX || sideY) {
            blockedX |= sideX && towardX;
            blockedY |= sideY && towardY;
            return;
        }
        const bool alongX = towardX && (!towardY || IsFartherAlongX(corner));
        blockedX |= alongX;
        blockedY |= !alongX && towardY;
    }

    bool IsFartherAlongX(const Corner& corner) const {
        const Vector2 point = CornerPoint(corner.signX, corner.signY);
        const float middleX = static_cast<float>(GridCoordinate(point.x)) + 0.5F;
        const float middleY = static_cast<float>(GridCoordinate(point.y)) + 0.5F;
        return std::abs(-centre.x - middleX) > std::abs(-centre.y - middleY);
    }

    const Globalp& world;
    Vector2 motion;
    Vector2 centre;
    float size;
};

// Blocks the axis along which the two are farther apart, if the object moves toward the other on it.
void BlockToward(const Vector2& motion, float toOtherX, float toOtherY, bool& blockedX, bool& blockedY) {
    if (std::abs(toOtherX) > std::abs(toOtherY))
        blockedX |= motion.x * toOtherX > 0.0F;
    else
        blockedY |= motion.y * toOtherY > 0.0F;
}

bool TestObjects(Globalp& world, std::uint32_t index, std::uint32_t sector, bool& blockedX, bool& blockedY) {
    WorldObject& object = world.objects[index];
    const Vector2 motion = object.Motion();
    bool touched = false;
    for (const std::uint8_t otherIndex : world.ObjectsOf(sector)) {
        if (otherIndex == index || otherIndex >= world.objects.size()) continue;
        const WorldObject& other = world.objects[otherIndex];
        const Vector2 otherMotion = other.Motion();
        const float toOtherX = (other.x + otherMotion.x) - (object.x + motion.x);
        const float toOtherY = (other.y + otherMotion.y) - (object.y + motion.y);
        const float reach = object.size + other.size;
        if (!(std::abs(toOtherX) <= reach && std::abs(toOtherY) <= reach)) continue;
        object.AddContact(otherIndex);
        BlockToward(motion, toOtherX, toOtherY, blockedX, blockedY);
        touched = true;
    }
    return touched;
}

// Pushes the other object by (pushX, pushY) along the blocked axes, and by the object's own impulse, which
// turns back on them. Bouncers and stoppers are not pushed.
void PushOther(const WorldObject& object, WorldObject& other, float pushX, float pushY, bool blockedX,
               bool blockedY) {
    if (other.status == StatusBouncer || other.status == StatusStopper) return;
    if (blockedX) other.Push(pushX, 0.0F);
    if (blockedY) other.Push(0.0F, pushY);
    other.Push(blockedX ? -object.impulse.x : object.impulse.x,
               blockedY ? -object.impulse.y : object.impulse.y);
}

void PushBySpeedDifference(const WorldObject& object, WorldObject& other, bool blockedX, bool blockedY) {
    PushOther(object, other, PushPerSpeedDifference * (object.velocity.x - other.velocity.x),
              PushPerSpeedDifference * (object.velocity.y - other.velocity.y), blockedX, blockedY);
}

// Two stoppers rest against each other.
void RestTogether(WorldObject& object, WorldObject& other, bool blockedX, bool blockedY) {
    for (WorldObject* stopped : {&object, &other}) {
        if (blockedX) stopped->velocity.x = 0.0F;
        if (blockedY) stopped->velocity.y = 0.0F;
        if (blockedX || blockedY) stopped->StopIfResting();
    }
}

void ResolveContact(WorldObject& object, WorldObject& other, bool blockedX, bool blockedY) {
    if (object.status > StatusStopper) return;
    object.impulse = {object.impulse.x / 2.0F, object.impulse.y / 2.0F};
    if (object.status == StatusPusher)
        PushOther(object, other, PushPerSpeed * object.velocity.x, PushPerSpeed * object.velocity.y, blockedX,
                  blockedY);
    if (object.status == StatusBouncer || object.status == StatusStopper)
        PushBySpeedDifference(object, other, blockedX, blockedY);
    if (object.status == StatusStopper && other.status == StatusStopper)
        RestTogether(object, other, blockedX, blockedY);
}

void ResolveContacts(Globalp& world, std::uint32_t layer) {
    const std::span<const std::uint8_t> list = world.ObjectsOf(layer);
    for (std::size_t n = 0; n < list.size(); ++n) {
        WorldObject& object = world.objects[list[n]];
        for (std::size_t c = 0; c < object.contactCount; ++c)
            ResolveContact(object, world.objects[object.contacts[c]], world.blockedX[n], world.blockedY[n]);
    }
}

// Contact test, step and sector update of entry `n` of a layer's list, which is object `index`.
void MoveListed(Globalp& world, std::uint32_t layer, std::size_t n, std::uint32_t index,
                std::uint32_t frameTime) {
    WorldObject& object = world.objects[index];
    object.contactCount = 0;
    bool blockedX = false;
    bool blockedY = false;
    Contact contact = TestContacts(world, index, layer, frameTime, blockedX, blockedY);
    if (object.pendingSector != WorldObject::NoPendingSector)
        contact = std::min(contact,
                           TestContacts(world, index, object.pendingSector, frameTime, blockedX, blockedY));
    world.blockedX[n] = blockedX;
    world.blockedY[n] = blockedY;
    if (object.sector == static_cast<std::int32_t>(layer)) {
        const bool passOn = contact != Contact::Free;
        object.Step(1.0F, passOn && blockedX, passOn && blockedY);
    }
    UpdateSector(world, index);
}

} // namespace

Contact TestContacts(Globalp& world, std::uint32_t index, std::uint32_t sector, std::uint32_t frameTime,
                     bool& blockedX, bool& blockedY) {
    const WorldObject& object = world.objects[index];
    const float time = static_cast<float>(frameTime);
    const Vector2 motion = object.Motion();
    if (object.x + time * motion.x == object.x && object.y + time * motion.y == object.y)
        return Contact::NotMoving;
    WallTest(world, object).Run(blockedX, blockedY);
    const bool touched = TestObjects(world, index, sector, blockedX, blockedY);
    return touched || blockedX || blockedY ? Contact::Hit : Contact::Free;
}

void UpdateSector(Globalp& world, std::uint32_t index) {
    WorldObject* object = world.Object(index);
    if (!object) return;
    const bool pending = object->pendingSector != WorldObject::NoPendingSector;
    const WorldCell cell = world.CellUnder(object->x, object->y);
    if (world.WallUnder(object->x, object->y) == PortalByte) {
        // A portal that leads nowhere, or back to where it stands, is open ground.
        if (pending || cell.a == cell.b) return;
        if (object->sector != cell.a && object->sector != cell.b) return;
        const std::uint8_t other = object->sector == cell.a ? cell.b : cell.a;
        if (other >= world.sectorLists.size()) return;
        world.AddToList(other, index);
        object->pendingSector = other;
    } else if (pending) {
        const std::int32_t previous = object->sector;
        const std::int32_t left = cell.sector == previous ? object->pendingSector : previous;
        object->sector = cell.sector;
        world.RemoveFromList(static_cast<std::uint32_t>(left), index);
        object->pendingSector = WorldObject::NoPendingSector;
    }
}

void UpdateLayer(Globalp& world, std::uint32_t layer, std::uint32_t frameTime) {
    std::size_t n = 0;
    for (;;) {
        const std::span<const std::uint8_t> list = world.ObjectsOf(layer);
        if (n >= list.size()) break;
        const std::uint8_t index = list[n];
        MoveListed(world, layer, n, index, frameTime);
        // An object that left the list has left its entry to the last one, which still has to move.
        const std::span<const std::uint8_t> after = world.ObjectsOf(layer);
        if (n < after.size() && after[n] == index) ++n;
    }
    ResolveContacts(world, layer);
}
