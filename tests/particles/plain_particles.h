// Emitters a second time, written as plainly as can be: one particle after the other, in double precision,
// walls as rectangles. Shares with the game only the template, the world's lists and a copy of the random
// table.
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
    Triple place{}, previous{}, velocity{};
    std::array<double, 6> look{}; // red, green, blue, alpha, rota, size
    std::int64_t age = 0, lastKick = 0;
    bool alive = false;
    // Set when the last update took a decision that less than the emitter's `doubt` would have turned.
    bool doubtful = false;
    // How the kick cursors stood before the last update of this particle.
    std::array<std::uint8_t, RandomTable::CursorCount> cursors{};
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
        for (PlainParticle& p : particles)
            p.doubtful = false;
        elapsed += dt;
        dead = 0;
        for (PlainParticle& p : particles) {
            p.age += dt;
            if (p.alive && (e.dietype & 1) && p.age >= e.life) p.alive = false;
            dead += !p.alive;
        }
        if (e.die) {
            if ((e.die & 1) && elapsed >= e.totallife) stopped = true;
            if (((e.die & 2) || stopped) && dead >= e.particleNum) active = false;
        }
        if (e.acceleration != 0) {
            for (PlainParticle& p : particles) {
                p.cursors = random.cursors;
                if (!p.alive) continue;
                KeyFrame(p);
                Move(p, dt);
            }
        }
        sinceBurst += dt;
        if (sinceBurst >= e.emittime && !stopped) Emit();
        if (e.updatepos && owner != 255) Follow();
    }

    // One update of one particle from another state, with the dice of particle `i` in the last update;
    // decisions nearer than `nearness` are doubtful.
    PlainParticle Redo(std::size_t i, PlainParticle p, int dt, double nearness) {
        const RandomTable keptDice = random;
        const double keptDoubt = doubt;
        random.cursors = particles[i].cursors;
        doubt = nearness;
        p.doubtful = false;
        p.age += dt;
        if ((e.dietype & 1) && p.age >= e.life) p.alive = false;
        if (p.alive && e.acceleration != 0) {
            KeyFrame(p);
            Move(p, dt);
        }
        random = keptDice;
        doubt = keptDoubt;
        return p;
    }

    // A decision nearer to its border than this may fall differently after many roundings.
    double doubt = 2e-3;

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
            p.age = static_cast<std::int64_t>(std::max(
                0.0, std::trunc((Next(RandomTable::Age) + 1) * e.life * static_cast<double>(e.liferand))));
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
                p.place[i] = position[i] + rows[i][0] * s[0] + rows[i][1] * s[1] + rows[i][2] * s[2];
                p.velocity[i] = rows[i][0] * v[0] + rows[i][1] * v[1] + rows[i][2] * v[2];
            }
            p.previous = p.place;
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
        MoveAcross(p, dt, k, d);
        p.previous[2] = p.place[2];
        MoveUpright(p, dt, k, d);
    }

    // a < b, noting a close decision.
    bool Less(PlainParticle& p, double a, double b) {
        if (a != b && std::abs(a - b) < doubt) p.doubtful = true;
        return a < b;
    }

    void MoveUpright(PlainParticle& p, int dt, double k, double d) {
        double& z = p.place[2];
        double& v = p.velocity[2];
        const double size = p.look[5], g = e.gravpower, rest = e.gravborder ? size : 0;
        if (e.gravity == 1) {
            const double newV = v - dt * g * k, newZ = z + newV * dt;
            if (!Less(p, newZ, size)) {
                z = newZ, v = newV;
                return;
            }
            if (e.dietype & 8) p.alive = false;
            for (int ms = 0; ms < dt; ++ms) {
                v -= k * g;
                z += v;
                if (!Less(p, z, size)) continue;
                z = rest;
                v *= e.bounce;
                if (std::abs(v) >= 1e-23) break;
            }
        } else if (e.gravity == 2) {
            if (!Less(p, z - g * dt, size)) {
                z -= g * dt;
                return;
            }
            if (e.dietype & 8) p.alive = false;
            for (int ms = 0; ms < dt; ++ms) {
                z -= g;
                if (Less(p, z, size)) z = rest;
            }
        } else {
            z += dt * v * k;
            v *= d;
        }
    }

    // Cells over the plane: 0 lies over -1..1, every other over one unit. What lies under a point is doubtful
    // near the edge of a cell that holds something else.
    static int Coordinate(double c) { return c > -GridSize && c < 1 ? static_cast<int>(-c) : -1; }
    static bool WallUnder(double x, double y) {
        const int cx = Coordinate(x), cy = Coordinate(y);
        return cx >= 0 && cy >= 0 && globalp->walls[CellIndex(cx, cy)] == WallByte;
    }
    static int SectorUnder(double x, double y) {
        const int cx = Coordinate(x), cy = Coordinate(y);
        return cx >= 0 && cy >= 0 ? globalp->cells[CellIndex(cx, cy)].sector : NoSector;
    }
    template<class Ask> auto AskAround(PlainParticle& p, double x, double y, Ask ask) {
        const auto answer = ask(x, y);
        for (const double dx : {-doubt, doubt})
            for (const double dy : {-doubt, doubt})
                if (ask(x + dx, y + dy) != answer) p.doubtful = true;
        return answer;
    }

    // Whether the way from a to b meets any wall's rectangle.
    static bool MeetsWall(double ax, double ay, double bx, double by) {
        const auto first = [](double c1, double c2) {
            return static_cast<int>(std::clamp(-std::max(c1, c2) - 1, 0.0, GridSize - 1.0));
        };
        const auto last = [](double c1, double c2) {
            return static_cast<int>(std::clamp(-std::min(c1, c2) + 1, 0.0, GridSize - 1.0));
        };
        for (int cx = first(ax, bx); cx <= last(ax, bx); ++cx) {
            const double left = -cx - 1, right = cx == 0 ? 1 : -cx;
            for (int cy = first(ay, by); cy <= last(ay, by); ++cy) {
                const double low = -cy - 1, high = cy == 0 ? 1 : -cy;
                if (globalp->walls[CellIndex(cx, cy)] != WallByte) continue;
                double begin = 0, end = 1;
                const auto clip = [&](double from, double way, double lower, double upper) {
                    if (way == 0) {
                        if (from <= lower || from >= upper) begin = 2;
                        return;
                    }
                    begin = std::max(begin, std::min((lower - from) / way, (upper - from) / way));
                    end = std::min(end, std::max((lower - from) / way, (upper - from) / way));
                };
                clip(ax, bx - ax, left, right);
                clip(ay, by - ay, low, high);
                if (begin < end) return true;
            }
        }
        return false;
    }

    bool InBox(PlainParticle& p, const WorldObject& o, double x1, double y1, double x2, double y2) {
        const double r = o.size;
        const bool in[] = {Less(p, std::min(x1, x2) - r, o.x), Less(p, o.x, std::max(x1, x2) + r),
                           Less(p, std::min(y1, y2) - r, o.y), Less(p, o.y, std::max(y1, y2) + r)};
        return in[0] && in[1] && in[2] && in[3];
    }

    void MoveAcross(PlainParticle& p, int dt, double k, double d) {
        const double x = p.place[0], y = p.place[1];
        double vx = p.velocity[0], vy = p.velocity[1];
        double newX = x + dt * vx * k, newY = y + dt * vy * k;
        const bool seesWalls = e.collision == 1 || e.collision == 3;
        bool wall = false, object = false;
        std::vector<const WorldObject*> others;
        if (e.collision == 2 || e.collision == 3) {
            const int sector = AskAround(p, newX, newY, SectorUnder);
            if (sector == NoSector && e.collision == 2) return;
            if (sector != NoSector)
                for (const std::uint8_t index : globalp->ObjectsOf(static_cast<std::uint32_t>(sector)))
                    if (index != owner) others.push_back(&globalp->objects[index]);
        }
        if (seesWalls)
            wall = AskAround(p, newX, newY, [&](double tx, double ty) {
                return MeetsWall(x + (tx - newX), y + (ty - newY), tx, ty);
            });
        for (const WorldObject* o : others)
            object = InBox(p, *o, x, y, newX, newY) || object;
        if (wall || object) {
            if (wall && (e.dietype & 2)) p.alive = false;
            if (object && (e.dietype & 4)) p.alive = false;
            newX = x, newY = y;
            for (int ms = 0; ms < dt; ++ms) {
                const double px = newX, py = newY;
                newX += k * vx, newY += k * vy;
                if (seesWalls && AskAround(p, newX, newY, WallUnder))
                    AnswerWall(p, px, py, newX, newY, vx, vy);
                const double dx = k * vx, dy = k * vy;
                for (const WorldObject* o : others) {
                    if (!InBox(p, *o, newX, newY, newX + dx, newY + dy)) continue;
                    if (Less(p, std::abs(newY - o->y), std::abs(newX - o->x)))
                        newX -= dx, vx *= e.bounce;
                    else
                        newY -= dy, vy *= e.bounce;
                }
            }
        }
        p.previous[0] = x, p.previous[1] = y;
        p.place[0] = newX, p.place[1] = newY;
        p.velocity[0] = vx * d, p.velocity[1] = vy * d;
    }

    void AnswerWall(PlainParticle& p, double px, double py, double& x, double& y, double& vx, double& vy) {
        AskAround(p, x, y, [](double ax, double) { return std::trunc(ax); });
        AskAround(p, x, y, [](double, double ay) { return std::trunc(ay); });
        if (Less(p, std::abs(std::trunc(y) - 0.5 - py), std::abs(std::trunc(x) - 0.5 - px))) {
            if (AskAround(p, vx > 0 ? x - 0.5 : x + 0.5, y, WallUnder)) return;
            x = px;
            vx *= e.bounce;
        } else {
            if (AskAround(p, x, vy > 0 ? y - 0.5 : y + 0.5, WallUnder)) return;
            y = py;
            vy *= e.bounce;
        }
    }

    void Follow() {
        if (owner >= globalp->objects.size()) return;
        const WorldObject& o = globalp->objects[owner];
        position[0] = o.x, position[1] = o.y;
        const double phi = -static_cast<double>(o.heading) * M_PI / 180 - 3 * M_PI / 4;
        direction[0] = 0.001 * (std::cos(phi) - std::sin(phi));
        direction[1] = 0.001 * (std::sin(phi) + std::cos(phi));
    }
};
