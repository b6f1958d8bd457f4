// Running emitters; see emitter.h.
#include "particles/emitter.h"

#include "particles/motion.h"
#include "particles/random_table.h"
#include "world/world_grid.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <numbers>
#include <numeric>

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
    particles.Grow(static_cast<std::size_t>(std::max(newEmitter.particleNum, 0)));
    direction = effect.direction;
    position = effect.position;
    follow = effect.owner == EffectInstance::NoOwner ? nullptr : followOwner;
    std::ranges::fill(particles.alive, std::uint8_t{0});
    Emit();
    layer = globalp ? globalp->SectorUnder(position.x, position.y) : NoSector;
    elapsed = 0;
    stopped = false;
    deadCount = 0;
    active = true;
}

void EmitterInstance::Update(std::uint32_t delta) {
    elapsed += delta;
    Age(delta);
    if (emitter->die != 0) {
        if ((emitter->die & QEV_PTEmittor::StopsAfterTotalLife) &&
            static_cast<std::int64_t>(elapsed) >= emitter->totallife)
            stopped = true;
        const bool ends = (emitter->die & QEV_PTEmittor::EndsWhenEmpty) || stopped;
        if (ends && deadCount >= particles.Count()) active = false;
    }
    if (emitter->acceleration != 0) {
        EvaluateFrames(*emitter, particles);
        MoveParticles(*emitter, particles, delta, owner->owner);
    }
    emitTimer += delta;
    if (static_cast<std::int64_t>(emitTimer) >= emitter->emittime && !stopped) Emit();
    if (emitter->updatepos && follow) follow(*this, position, direction);
}

void EmitterInstance::Age(std::uint32_t delta) {
    const std::size_t count = particles.Count();
    std::uint32_t* __restrict age = particles.age.data();
    std::uint8_t* __restrict alive = particles.alive.data();
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
    deadCount = static_cast<std::uint32_t>(count) - living;
}

void EmitterInstance::Emit() {
    emitTimer = 0;
    Vec3 axes[3];
    BuildAxes(direction, axes);
    int started = 0;
    for (std::size_t slot = 0; slot < particles.Count(); ++slot) {
        if (particles.alive[slot]) continue;
        StartParticle(slot, axes);
        if (++started >= emitter->emitnum) return;
    }
}

void EmitterInstance::StartParticle(std::size_t slot, const Vec3 (&axes)[3]) {
    particles.age[slot] = StartAge(*emitter);
    particles.lastKick[slot] = ParticleSlots::NeverKicked;
    particles.alive[slot] = 1;
    if (static_cast<std::int64_t>(particles.age[slot]) < emitter->life) {
        const ParticleFrame first = emitter->FirstFrame();
        const float values[FrameChannels] = {first.red,   first.green, first.blue,
                                             first.alpha, first.rota,  first.size};
        for (std::size_t channel = 0; channel < FrameChannels; ++channel)
            particles.look[channel][slot] = values[channel];
    } else {
        EvaluateFrame(*emitter, particles, slot);
    }
    const Vec3 start = NextThree(RandomTable::Start);
    const Vec3 launch = NextThree(RandomTable::Launch);
    const Vec3 place = position + Turn(axes, {start.x * emitter->startx, start.y * emitter->starty,
                                              start.z * emitter->startz});
    const Vec3 velocity = Turn(axes, {launch.x * emitter->dirx + emitter->power, launch.y * emitter->diry,
                                      launch.z * emitter->dirz});
    particles.x[slot] = particles.previousX[slot] = place.x;
    particles.y[slot] = particles.previousY[slot] = place.y;
    particles.z[slot] = particles.previousZ[slot] = place.z;
    particles.velocityX[slot] = velocity.x;
    particles.velocityY[slot] = velocity.y;
    particles.velocityZ[slot] = velocity.z;
}

void followOwner(EmitterInstance& instance, Vec3& position, Vec3& direction) {
    constexpr float DegreesToRadians = std::numbers::pi_v<float> / 180.0F;
    constexpr float Forward = 2.35619449F; // three eighths of a turn
    constexpr float Length = 0.001F;
    const WorldObject* object = globalp ? globalp->Object(instance.owner->owner) : nullptr;
    if (!object) return;
    position.x = object->x;
    position.y = object->y;
    const float phi = -object->heading * DegreesToRadians - Forward;
    direction.x = Length * (std::cos(phi) - std::sin(phi));
    direction.y = Length * (std::sin(phi) + std::cos(phi));
}
