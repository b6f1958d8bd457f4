// Three-component vectors, the fast normalisation that models use, and degrees. Rests on nothing.
#pragma once

#include <bit>
#include <cstdint>
#include <numbers>

inline constexpr float RadiansPerDegree = std::numbers::pi_v<float> / 180.0F;
inline constexpr float DegreesPerRadian = static_cast<float>(180.0 / std::numbers::pi);

struct Vec3 {
    float x = 0;
    float y = 0;
    float z = 0;

    friend constexpr bool operator==(const Vec3&, const Vec3&) = default;
};

constexpr Vec3 operator+(Vec3 a, Vec3 b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
constexpr Vec3 operator-(Vec3 a, Vec3 b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
constexpr Vec3 operator*(Vec3 v, float factor) {
    return {v.x * factor, v.y * factor, v.z * factor};
}

constexpr float Dot(Vec3 a, Vec3 b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

constexpr Vec3 Cross(Vec3 a, Vec3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

// Point between a (t = 0) and b (t = 1).
constexpr Vec3 Lerp(Vec3 a, Vec3 b, float t) {
    return a + (b - a) * t;
}

// The vector scaled to a length of 1 within 0.2 %, by an estimate of the inverse square root from the float's
// bits and one Newton step. The zero vector stays zero.
constexpr Vec3 FastNormalize(Vec3 v) {
    const float square = Dot(v, v);
    float inverse = std::bit_cast<float>(0x5F3759DFU - (std::bit_cast<std::uint32_t>(square) >> 1U));
    inverse *= 1.5F - 0.5F * square * inverse * inverse;
    return v * inverse;
}
