#pragma once

#include <algorithm>
#include <cmath>

#include "model/math/grid.h"
#include "model/math/records.h"
#include "model/math/tolerance.h"

/// Arithmetic of positions and directions, in single precision and in the order as written, left to right.
namespace ulk3d {

inline constexpr pos3 origin{0, 0, 0};

// Directions.

constexpr dir3 operator+(const dir3& a, const dir3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
constexpr dir3 operator-(const dir3& a, const dir3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
constexpr dir3 operator-(const dir3& v) {
    return {-v.x, -v.y, -v.z};
}
constexpr dir3 operator*(const dir3& v, float s) {
    return {v.x * s, v.y * s, v.z * s};
}
constexpr dir3 operator*(float s, const dir3& v) {
    return {s * v.x, s * v.y, s * v.z};
}
constexpr dir3 operator/(const dir3& v, float s) {
    return {v.x / s, v.y / s, v.z / s};
}
constexpr dir3& operator+=(dir3& a, const dir3& b) {
    return a = a + b;
}
constexpr dir3& operator-=(dir3& a, const dir3& b) {
    return a = a - b;
}
constexpr dir3& operator*=(dir3& v, float s) {
    return v = v * s;
}

// Positions.

constexpr dir3 operator-(const pos3& a, const pos3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
constexpr pos3 operator+(const pos3& p, const dir3& v) {
    return {p.x + v.x, p.y + v.y, p.z + v.z};
}
constexpr pos3 operator-(const pos3& p, const dir3& v) {
    return {p.x - v.x, p.y - v.y, p.z - v.z};
}
constexpr pos3& operator+=(pos3& p, const dir3& v) {
    return p = p + v;
}
constexpr pos3& operator-=(pos3& p, const dir3& v) {
    return p = p - v;
}

/// Sums and multiples of positions, for weighted means and centroids.
constexpr pos3 operator+(const pos3& a, const pos3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
constexpr pos3 operator*(const pos3& p, float s) {
    return {p.x * s, p.y * s, p.z * s};
}
constexpr pos3 operator*(float s, const pos3& p) {
    return {s * p.x, s * p.y, s * p.z};
}
constexpr pos3 operator/(const pos3& p, float s) {
    return {p.x / s, p.y / s, p.z / s};
}

/// The lesser, or the greater, coordinate on each axis.
constexpr pos3 component_min(const pos3& a, const pos3& b) {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)};
}
constexpr pos3 component_max(const pos3& a, const pos3& b) {
    return {std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z)};
}

constexpr dir3 as_dir(const pos3& p) {
    return {p.x, p.y, p.z};
}
constexpr pos3 as_pos(const dir3& v) {
    return {v.x, v.y, v.z};
}

/// (x, y, z, 1)
constexpr vec3w homogenize(const pos3& p) {
    return {p.x, p.y, p.z, 1};
}

/// (x / w, y / w, z / w), computed with one reciprocal of w. w = 0 gives infinities or not-a-numbers.
constexpr pos3 dehomogenize(const vec3w& v) {
    const float r = 1 / v.w;
    return {v.x * r, v.y * r, v.z * r};
}

/// `f_eq` on every axis.
inline bool f_eq(const pos3& a, const pos3& b) {
    return f_eq(a.x, b.x) && f_eq(a.y, b.y) && f_eq(a.z, b.z);
}

/// Whether no coordinate is infinite or not-a-number.
inline bool is_finite(const pos3& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

// Products and lengths.

constexpr float dot(const dir3& a, const dir3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// Height of a point along a direction, as used for plane values.
constexpr float dot(const dir3& a, const pos3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline float length(const dir3& v) {
    return std::sqrt(dot(v, v));
}

/// The unit vector; a zero vector stays zero.
inline dir3 normalize(const dir3& v) {
    const float l = length(v);
    return l == 0 ? dir3{} : v / l;
}

/// The unit vector of (x, y, z), with w = 0.
inline vec3w normalize(const vec3w& v) {
    const dir3 u = normalize(dir3{v.x, v.y, v.z});
    return {u.x, u.y, u.z, 0};
}

/// a cross b, right-handed.
constexpr dir3 cross(const dir3& a, const dir3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// c dot (a cross b)
constexpr float triple(const dir3& a, const dir3& b, const dir3& c) {
    return dot(c, cross(a, b));
}

/// (b - a) cross (c - b): points to the side from which a, b, c run counter-clockwise; its length is twice
/// the area.
constexpr dir3 face_normal(const pos3& a, const pos3& b, const pos3& c) {
    return cross(b - a, c - b);
}

inline dir3 unit_face_normal(const pos3& a, const pos3& b, const pos3& c) {
    return normalize(face_normal(a, b, c));
}

/// The determinant of (b - a, c - a, d - a).
constexpr float det4p(const pos3& a, const pos3& b, const pos3& c, const pos3& d) {
    return triple(b - a, c - a, d - a);
}

/// The rise of a soft bump: 0 at t = 0, 1 at t = 1, half a cosine wave in between.
inline float bell(float t) {
    return (std::cos((t - 1) * 3.1415927F) + 1) * 0.5F;
}

}  // namespace ulk3d
