// A frame is one pass over the slots, in which every particle ages, takes its key frame and moves, and then
// the emitter's own end and burst.
#include "particles/emitter.h"

#include "base/log.h"
#include "particles/key_frames.h"
#include "particles/motion.h"
#include "particles/random_table.h"
#include "world/world_grid.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <numbers>

namespace {

// The columns of the matrix that turns local starts and velocities into particle space; the first is the
// launch axis.
void BuildAxes(Vec3 direction, Vec3 (&axes)[3]) {
    constexpr double RightAngle = std::numbers::pi / 2.0;
    const double a = std::atan2(direction.x, direction.y) - RightAngle;
    const double b = std::atan2(direction.y, direction.z) - RightAngle;
    const auto sinA = static_cast<float>(std::sin(a));
    const auto cosA = static_cast<float>(std::cos(a));
    const auto sinB = static_cast<float>(std::sin(b));
    const auto cosB = static_cast<float>(std::cos(b));
    axes[0] = {cosA, -sinA, 0.0F};
    axes[1] = {sinA * cosB, cosA * cosB, sinB};
    axes[2] = {-sinA * sinB, -cosA * sinB, cosB};
}

Vec3 Turn(const Vec3 (&axes)[3], Vec3 v) {
    return axes[0] * v.x + axes[1] * v.y + axes[2] * v.z;
}

std::uint32_t StartAge(const QEV_PTEmittor& emitter) {
    const double age =
        (static_cast<double>(randomTable.Next(RandomTable::Age)) + 1.0) * emitter.life * emitter.liferand;
    return static_cast<std::uint32_t>(std::clamp(age, 0.0, static_cast<double>(UINT32_MAX)));
}

// Three consecutive values of a cursor.
Vec3 NextThree(RandomTable::Cursor cursor) {
    const float x = randomTable.Next(cursor);
    const float y = randomTable.Next(cursor);
    const float z = randomTable.Next(cursor);
    return {x, y, z};
}

} // namespace

void EmitterInstance::Start(EffectInstance& effect, const QEV_PTEmittor& newEmitter) {
    owner = &effect;
    emitter = &newEmitter;
    if (!particles.Reset(static_cast<std::size_t>(std::max(newEmitter.particleNum, 0)))) {
        LogWrite("EmitterInstance::Start(%s) - [ERROR] no memory for %d particles\n", newEmitter.path.c_str(),
                 static_cast<int>(newEmitter.particleNum));
    }
    direction = effect.direction;
    position = effect.position;
    follow = effect.owner == EffectInstance::NoOwner ? nullptr : followOwner;
    Emit();
    layer = globalp ? globalp->SectorUnder(position.x, position.y) : NoSector;
    elapsed = 0;
    stopped = false;
    deadCount = 0;
    active = true;
}

void EmitterInstance::Update(std::uint32_t delta) {
    elapsed += delta;
    AgeAndMove(delta);
    CheckEnd();
    emitTimer += delta;
    if (static_cast<std::int64_t>(emitTimer) >= emitter->emittime && !stopped) Emit();
    if (emitter->updatepos && follow) follow(*this, position, direction);
}

// Block by block, so that what the passes touch stays near; a block without live particles is only aged.
void EmitterInstance::AgeAndMove(std::uint32_t delta) {
    const std::size_t count = particles.Count();
    std::size_t living = 0;
    for (std::size_t from = 0; from < count; from += ParticleSlots::BlockSize) {
        const std::size_t to = std::min(from + ParticleSlots::BlockSize, count);
        const std::size_t livingHere = Age(from, to, delta);
        living += livingHere;
        if (livingHere == 0 || emitter->acceleration == 0) continue;
        EvaluateFrames(*emitter, particles, from, to);
        MoveParticles(*emitter, particles, from, to, delta, owner->owner);
    }
    deadCount = static_cast<std::uint32_t>(count - living);
}

// Returns how many live.
std::size_t EmitterInstance::Age(std::size_t from, std::size_t to, std::uint32_t delta) {
    const std::size_t count = to - from;
    std::uint32_t* __restrict age = particles.age + from;
    std::uint8_t* __restrict alive = particles.alive + from;
    for (std::size_t i = 0; i < count; ++i)
        age[i] += delta;
    if (emitter->dietype & QEV_PTEmittor::DiesOfAge) {
        const auto life = static_cast<std::uint32_t>(std::max(emitter->life, 0));
        for (std::size_t i = 0; i < count; ++i)
            alive[i] = static_cast<std::uint8_t>(alive[i] & (age[i] < life));
    }
    std::uint32_t living = 0;
    for (std::size_t i = 0; i < count; ++i)
        living += alive[i];
    return living;
}

void EmitterInstance::CheckEnd() {
    if ((emitter->die & QEV_PTEmittor::StopsAfterTotalLife) &&
        static_cast<std::int64_t>(elapsed) >= emitter->totallife)
        stopped = true;
    const bool ends = (emitter->die & QEV_PTEmittor::EndsWhenEmpty) || stopped;
    if (ends && deadCount >= particles.Count()) active = false;
}

void EmitterInstance::Emit() {
    emitTimer = 0;
    std::size_t slot = particles.FirstDead(0);
    if (slot == particles.Count()) return;
    Vec3 axes[3];
    BuildAxes(direction, axes);
    for (int started = 0; slot < particles.Count(); slot = particles.FirstDead(slot + 1)) {
        StartParticle(slot, axes);
        if (++started >= emitter->emitnum) return;
    }
}

void EmitterInstance::StartParticle(std::size_t slot, const Vec3 (&axes)[3]) {
    particles.age[slot] = StartAge(*emitter);
    particles.alive[slot] = 1;
    particles.lastKick[slot] = ParticleSlots::NeverKicked;
    const bool young = static_cast<std::int64_t>(particles.age[slot]) < emitter->life;
    if (young) {
        const ParticleFrame first = emitter->FirstFrame();
        particles.colour[slot] = {first.red, first.green, first.blue, first.alpha};
        particles.rota[slot] = first.rota;
        particles.size[slot] = first.size;
    } else {
        EvaluateFrames(*emitter, particles, slot, slot + 1);
    }
    const Vec3 start = NextThree(RandomTable::Start);
    const Vec3 launch = NextThree(RandomTable::Launch);
    const Vec3 origin = position + Turn(axes, {start.x * emitter->startx, start.y * emitter->starty,
                                               start.z * emitter->startz});
    const Vec3 velocity = Turn(axes, {launch.x * emitter->dirx + emitter->power, launch.y * emitter->diry,
                                      launch.z * emitter->dirz});
    particles.x[slot] = particles.previousX[slot] = origin.x;
    particles.y[slot] = particles.previousY[slot] = origin.y;
    particles.z[slot] = particles.previousZ[slot] = origin.z;
    particles.velocityX[slot] = velocity.x;
    particles.velocityY[slot] = velocity.y;
    particles.velocityZ[slot] = velocity.z;
}

void followOwner(EmitterInstance& instance, Vec3& position, Vec3& direction) {
    // (cos - sin, sin + cos) points an eighth of a turn ahead of its angle: with three eighths taken off,
    // heading 0 looks along -y, a quarter of a turn back.
    constexpr float ThreeEighths = static_cast<float>(std::numbers::pi * 3.0 / 4.0);
    constexpr float Length = 0.001F;
    const WorldObject* object = globalp ? globalp->Object(instance.owner->owner) : nullptr;
    if (!object) return;
    position.x = object->x;
    position.y = object->y;
    const float phi = -object->heading * RadiansPerDegree - ThreeEighths;
    direction.x = Length * (std::cos(phi) - std::sin(phi));
    direction.y = Length * (std::sin(phi) + std::cos(phi));
}
