// A particle that meets nothing on its straight way moves as in free flight; only one that does is stepped
// through the frame, a millisecond at a time.
#include "particles/collision.h"

#include "world/world_grid.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace {

// The grid's cells lie over x and y between these: cell 0 over -1 to 1, since coordinates are cut towards 0.
constexpr double GridBegin = -static_cast<double>(GridSize);
constexpr double GridEnd = 1.0;

bool IsWall(double x, double y) {
    return globalp && globalp->IsWall(static_cast<float>(x), static_cast<float>(y));
}

// One axis of a straight way: where it is after a share of the way, and when it crosses the next grid line.
class Axis {
public:
    Axis(float start, float end) : from(start), way(static_cast<double>(end) - start) {}

    double At(double share) const { return from + way * share; }

    // Narrows the shares to those over the grid; false when there are none.
    bool Clip(double& begin, double& end) const {
        if (way == 0.0) return from > GridBegin && from < GridEnd;
        const double atBegin = (GridBegin - from) / way;
        const double atEnd = (GridEnd - from) / way;
        begin = std::max(begin, std::min(atBegin, atEnd));
        end = std::min(end, std::max(atBegin, atEnd));
        return begin < end;
    }

    // Prepares for the lines behind a share.
    void StartAt(double share) {
        const double position = At(share);
        line = way > 0.0 ? std::floor(position) + 1.0 : std::ceil(position) - 1.0;
    }
    // The share at which the next line is crossed; 2, beyond the end, on a way along the lines.
    double NextCrossing() const { return way == 0.0 ? 2.0 : (line - from) / way; }
    void Cross() { line += way > 0.0 ? 1.0 : -1.0; }

private:
    double from;
    double way;
    double line = 0.0;
};

bool WalksIntoWall(Axis x, Axis y) {
    double begin = 0.0;
    double end = 1.0;
    if (!x.Clip(begin, end) || !y.Clip(begin, end)) return false;
    x.StartAt(begin);
    y.StartAt(begin);
    // Between two lines the way is in one cell. The loop ends in any case: no way over the grid crosses more
    // lines than the grid has.
    for (int stretch = 0; stretch <= 2 * (GridSize + 2) && begin < end; ++stretch) {
        const double next = std::min({x.NextCrossing(), y.NextCrossing(), end});
        const double middle = (begin + next) * 0.5;
        if (IsWall(x.At(middle), y.At(middle))) return true;
        if (x.NextCrossing() <= next) x.Cross();
        if (y.NextCrossing() <= next) y.Cross();
        begin = next;
    }
    return false;
}

// A particle while it goes through a frame a millisecond at a time; in double precision, so that two hundred
// steps round no more than one does.
struct Walker {
    double x, y;
    double velocityX, velocityY;
};

// Steps a millisecond; a wall that is entered reverses one axis, unless the cell beside the step is a wall
// too.
void StepAtWall(const QEV_PTEmittor& emitter, double k, Walker& walker) {
    const double px = walker.x;
    const double py = walker.y;
    walker.x += k * walker.velocityX;
    walker.y += k * walker.velocityY;
    if (!IsWall(walker.x, walker.y)) return;
    const double ix = std::trunc(walker.x);
    const double iy = std::trunc(walker.y);
    if (std::abs(iy - 0.5 - py) < std::abs(ix - 0.5 - px)) {
        if (IsWall(walker.x + (walker.velocityX > 0.0 ? -0.5 : 0.5), walker.y)) return;
        walker.x = px;
        walker.velocityX *= static_cast<double>(emitter.bounce);
    } else {
        if (IsWall(walker.x, walker.y + (walker.velocityY > 0.0 ? -0.5 : 0.5))) return;
        walker.y = py;
        walker.velocityY *= static_cast<double>(emitter.bounce);
    }
}

// The objects of a sector, but for the owner.
struct Obstacles {
    std::span<const std::uint8_t> all;
    std::uint32_t owner;

    template<class Visit> void ForEach(Visit visit) const {
        for (const std::uint8_t index : all) {
            if (index == owner) continue;
            if (const WorldObject* object = globalp->Object(index)) visit(*object);
        }
    }
};

// Whether the object's centre lies inside the box spanned by two points and widened by the object's radius.
bool InBox(const WorldObject& object, double x1, double y1, double x2, double y2) {
    const double x = static_cast<double>(object.x);
    const double y = static_cast<double>(object.y);
    const double r = static_cast<double>(object.size);
    return std::min(x1, x2) - r < x && x < std::max(x1, x2) + r && std::min(y1, y2) - r < y &&
           y < std::max(y1, y2) + r;
}

bool MeetsObject(const Obstacles& obstacles, double x, double y, double toX, double toY) {
    bool met = false;
    obstacles.ForEach([&](const WorldObject& object) { met = met || InBox(object, x, y, toX, toY); });
    return met;
}

// After a step that has been made: every object ahead pushes back one axis.
void DeflectFromObjects(const QEV_PTEmittor& emitter, double k, const Obstacles& obstacles, Walker& walker) {
    const double dx = k * walker.velocityX;
    const double dy = k * walker.velocityY;
    obstacles.ForEach([&](const WorldObject& object) {
        if (!InBox(object, walker.x, walker.y, walker.x + dx, walker.y + dy)) return;
        const double besideX = std::abs(walker.x - static_cast<double>(object.x));
        const double besideY = std::abs(walker.y - static_cast<double>(object.y));
        if (besideX <= besideY) {
            walker.y -= dy;
            walker.velocityY *= static_cast<double>(emitter.bounce);
        } else {
            walker.x -= dx;
            walker.velocityX *= static_cast<double>(emitter.bounce);
        }
    });
}

void StepThroughFrame(const QEV_PTEmittor& emitter, const FrameStep& step, const Obstacles& obstacles,
                      Walker& walker) {
    const bool seesWalls = emitter.collision != QEV_PTEmittor::Objects;
    const double k = static_cast<double>(step.k);
    for (std::uint32_t ms = 0; ms < step.delta; ++ms) {
        if (seesWalls) {
            StepAtWall(emitter, k, walker);
        } else {
            walker.x += k * walker.velocityX;
            walker.y += k * walker.velocityY;
        }
        DeflectFromObjects(emitter, k, obstacles, walker);
    }
}

std::uint8_t SectorUnder(float x, float y) {
    return globalp ? globalp->SectorUnder(x, y) : NoSector;
}

void MoveOne(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t i, const FrameStep& step,
             std::uint32_t owner) {
    const bool seesWalls = emitter.collision != QEV_PTEmittor::Objects;
    const bool seesObjects = emitter.collision != QEV_PTEmittor::Walls;
    const float x = slots.x[i];
    const float y = slots.y[i];
    float toX = x + step.time * step.k * slots.velocityX[i];
    float toY = y + step.time * step.k * slots.velocityY[i];
    Obstacles obstacles = {{}, owner};
    if (seesObjects) {
        const std::uint8_t sector = SectorUnder(toX, toY);
        if (sector != NoSector) obstacles.all = globalp->ObjectsOf(sector);
        // Off all sectors there is no list to look at, and a particle that sees nothing else stays.
        if (sector == NoSector && !seesWalls) return;
    }
    const bool hitsWall = seesWalls && CrossesWall(x, y, toX, toY);
    const bool hitsObject = MeetsObject(obstacles, x, y, toX, toY);
    if (hitsWall || hitsObject) {
        if (hitsWall && (emitter.dietype & QEV_PTEmittor::DiesAtWall)) slots.alive[i] = 0;
        if (hitsObject && (emitter.dietype & QEV_PTEmittor::DiesAtObject)) slots.alive[i] = 0;
        Walker walker = {x, y, slots.velocityX[i], slots.velocityY[i]};
        StepThroughFrame(emitter, step, obstacles, walker);
        toX = static_cast<float>(walker.x);
        toY = static_cast<float>(walker.y);
        slots.velocityX[i] = static_cast<float>(walker.velocityX);
        slots.velocityY[i] = static_cast<float>(walker.velocityY);
    }
    slots.previousX[i] = x;
    slots.previousY[i] = y;
    slots.x[i] = toX;
    slots.y[i] = toY;
    slots.velocityX[i] *= step.d;
    slots.velocityY[i] *= step.d;
}

} // namespace

bool CrossesWall(float x, float y, float toX, float toY) {
    if (!globalp) return false;
    const int cellX = GridCoordinate(toX);
    const int cellY = GridCoordinate(toY);
    const bool inGrid = cellX >= 0 && cellY >= 0;
    if (inGrid && globalp->walls[CellIndex(cellX, cellY)] == WallByte) return true;
    if (inGrid && cellX == GridCoordinate(x) && cellY == GridCoordinate(y)) return false;
    if (IsWall(x, y)) return true;
    if (!std::isfinite(toX - x) || !std::isfinite(toY - y)) return false;
    return WalksIntoWall({x, toX}, {y, toY});
}

void MoveAgainstWorld(const QEV_PTEmittor& emitter, ParticleSlots& slots, std::size_t from, std::size_t to,
                      const FrameStep& step, std::uint32_t owner) {
    for (std::size_t i = from; i < to; ++i)
        if (slots.alive[i]) MoveOne(emitter, slots, i, step, owner);
}
