// Emitters a second time, written as plainly as can be: one particle after the other, in double precision, in
// free flight. Shares with the game only the template, the world's objects and a copy of the random table.
#pragma once

#include "particles/effect_files.h"
#include "particles/random_table.h"
#include "world/world_grid.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

using Triple = std::array<double, 3>;

struct PlainParticle {
    Triple position{}, previous{}, velocity{};
    std::array<double, 6> look{}; // red, green, blue, alpha, rota, size
    std::int64_t age = 0, lastKick = 0;
    bool alive = false;
    // Set when the last update came so near to the floor that a float's rounding may turn the decision.
    bool doubtful = false;
};

struct PlainEmitter {
    PlainEmitter(const QEV_PTEmittor& newEmitter, std::uint32_t newOwner, Triple start, Triple launch)
        : e(newEmitter),
          owner(newOwner),
          particles(static_cast<std::size_t>(newEmitter.particleNum)),
          position(start),
          direction(launch),
          random(randomTable) {
        Emit();
    }

    void Update(int dt) {
        elapsed += dt;
        dead = 0;
        for (PlainParticle& p : particles) {
            p.doubtful = false;
            p.age += dt;
            if (p.alive && (e.dietype & 1) && p.age >= e.life) p.alive = false;
            dead += !p.alive;
        }
        if ((e.die & 1) && elapsed >= e.totallife) stopped = true;
        if (((e.die & 2) || stopped) && dead >= e.particleNum) active = false;
        for (PlainParticle& p : particles) {
            if (!p.alive || e.acceleration == 0) continue;
            KeyFrame(p);
            Move(p, dt);
        }
        sinceBurst += dt;
        if (sinceBurst >= e.emittime && !stopped) Emit();
        if (e.updatepos && owner != 255) Follow(globalp->objects[owner]);
    }

    const QEV_PTEmittor& e;
    std::uint32_t owner;
    std::vector<PlainParticle> particles;
    Triple position, direction;
    RandomTable random;
    std::int64_t elapsed = 0, sinceBurst = 0;
    int dead = 0;
    bool stopped = false, active = true;

private:
    double Next(RandomTable::Cursor cursor) {
        return static_cast<double>(random.values[random.cursors[cursor]++]);
    }

    void Emit() {
        sinceBurst = 0;
        const double a = std::atan2(direction[0], direction[1]) - M_PI / 2;
        const double b = std::atan2(direction[1], direction[2]) - M_PI / 2;
        const double rows[3][3] = {
            {std::cos(a), std::sin(a) * std::cos(b), -std::sin(a) * std::sin(b)},
            {-std::sin(a), std::cos(a) * std::cos(b), -std::cos(a) * std::sin(b)},
            {0, std::sin(b), std::cos(b)},
        };
        int started = 0;
        for (PlainParticle& p : particles) {
            if (p.alive) continue;
            p.alive = true;
            p.lastKick = -1;
            p.age = static_cast<std::int64_t>((Next(RandomTable::Age) + 1) * e.life *
                                              static_cast<double>(e.liferand));
            if (p.age < e.life)
                p.look = LookOf(0);
            else
                KeyFrame(p);
            Triple s, v;
            for (int i = 0; i < 3; ++i)
                s[i] = Next(RandomTable::Start) * std::array{e.startx, e.starty, e.startz}[i];
            for (int i = 0; i < 3; ++i)
                v[i] = Next(RandomTable::Launch) * std::array{e.dirx, e.diry, e.dirz}[i] +
                       (i == 0 ? e.power : 0);
            for (int i = 0; i < 3; ++i) {
                p.position[i] = position[i] + rows[i][0] * s[0] + rows[i][1] * s[1] + rows[i][2] * s[2];
                p.velocity[i] = rows[i][0] * v[0] + rows[i][1] * v[1] + rows[i][2] * v[2];
            }
            p.previous = p.position;
            if (++started >= e.emitnum) break;
        }
    }

    std::array<double, 6> LookOf(std::size_t frame) const {
        const ParticleFrame& f = e.frames[frame];
        return {f.red, f.green, f.blue, f.alpha, f.rota, f.size};
    }

    void KeyFrame(PlainParticle& p) {
        const std::int64_t counter = p.age / e.framespeed;
        const std::size_t current = static_cast<std::size_t>(counter) % e.frames.size();
        const std::size_t next = (current + 1) % e.frames.size();
        const double t = static_cast<double>(p.age % e.framespeed) / e.framespeed;
        for (std::size_t i = 0; i < 6; ++i)
            p.look[i] = (1 - t) * LookOf(current)[i] + t * LookOf(next)[i];
        if (!e.framerandom || p.lastKick == counter) return;
        p.lastKick = counter;
        const double sign = counter % 2 == 0 ? 1 : -1;
        const ParticleFrame& f = e.frames[current];
        p.velocity[0] += sign * Next(RandomTable::KickX) * f.randx;
        p.velocity[1] += sign * Next(RandomTable::KickY) * f.randy;
        p.velocity[2] += sign * Next(RandomTable::KickZ) * f.randz;
    }

    void Move(PlainParticle& p, int dt) {
        const double k = e.acceleration == 1 ? 1 : 1 - static_cast<double>(e.friction);
        const double d = e.acceleration == 1 ? 1 : 1 - static_cast<double>(e.friction) * dt;
        p.previous = p.position;
        for (int i = 0; i < (e.gravity == 1 || e.gravity == 2 ? 2 : 3); ++i) {
            p.position[i] += dt * p.velocity[i] * k;
            p.velocity[i] *= d;
        }
        const double fall = e.gravpower;
        double& z = p.position[2];
        double& v = p.velocity[2];
        if (e.gravity == 1 && AtFloor(p, z + (v - dt * fall * k) * dt)) {
            for (int ms = 0; ms < dt; ++ms) {
                v -= k * fall;
                z += v;
                if (!AtFloor(p, z)) continue;
                z = e.gravborder ? p.look[5] : 0;
                v *= e.bounce;
                if (std::abs(v) >= 1e-23) break;
            }
        } else if (e.gravity == 1) {
            v -= dt * fall * k;
            z += v * dt;
        } else if (e.gravity == 2 && AtFloor(p, z - fall * dt)) {
            for (int ms = 0; ms < dt; ++ms) {
                z -= fall;
                if (AtFloor(p, z)) z = e.gravborder ? p.look[5] : 0;
            }
        } else if (e.gravity == 2) {
            z -= fall * dt;
        }
    }

    bool AtFloor(PlainParticle& p, double z) {
        const double over = z - p.look[5];
        p.doubtful = p.doubtful || (over != 0 && std::abs(over) < 1e-5);
        if (over < 0 && (e.dietype & 8)) p.alive = false;
        return over < 0;
    }

    void Follow(const WorldObject& o) {
        position[0] = o.x, position[1] = o.y;
        const double phi = -static_cast<double>(o.heading) * M_PI / 180 - 3 * M_PI / 4;
        direction[0] = 0.001 * (std::cos(phi) - std::sin(phi));
        direction[1] = 0.001 * (std::sin(phi) + std::cos(phi));
    }
};
