#pragma once

#include <cmath>

#include "model/math/records.h"

namespace ulktool {

/// A direction in double precision, in which sums over many triangles are taken.
struct dir3d {
    double x = 0, y = 0, z = 0;
    auto operator<=>(const dir3d&) const = default;
};

constexpr dir3d operator+(const dir3d& a, const dir3d& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
constexpr dir3d operator-(const dir3d& a, const dir3d& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
constexpr dir3d operator*(const dir3d& v, double s) {
    return {v.x * s, v.y * s, v.z * s};
}
constexpr double dot(const dir3d& a, const dir3d& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
constexpr dir3d cross(const dir3d& a, const dir3d& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// The unit vector; zero for a vector that is zero or not finite.
inline dir3d unit(const dir3d& v) {
    const double length = std::sqrt(dot(v, v));
    return length > 0 && std::isfinite(length) ? dir3d{v.x / length, v.y / length, v.z / length} : dir3d{};
}

inline dir3d between(const ulk3d::pos3& from, const ulk3d::pos3& to) {
    return {double{to.x} - from.x, double{to.y} - from.y, double{to.z} - from.z};
}

/// Adding zero turns the negative zero into the positive one.
inline ulk3d::dir3 rounded(const dir3d& v) {
    return {static_cast<float>(v.x) + 0.0F, static_cast<float>(v.y) + 0.0F, static_cast<float>(v.z) + 0.0F};
}

}  // namespace ulktool
