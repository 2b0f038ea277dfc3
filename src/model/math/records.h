#pragma once

#include <array>
#include <cstdint>

/// Plain value records of space, colour and projection. Every record has exactly its natural size, because
/// arrays of them are mapped straight onto GL buffers.
namespace ulk3d {

/// A direction or difference of positions.
struct dir3 {
    float x = 0, y = 0, z = 0;
    bool operator==(const dir3&) const = default;
};

/// A position in space, right-handed, +z towards the viewer.
struct pos3 {
    float x = 0, y = 0, z = 0;
    bool operator==(const pos3&) const = default;
};

struct pos2 {
    float x = 0, y = 0;
    bool operator==(const pos2&) const = default;
};

struct dir2 {
    float x = 0, y = 0;
    bool operator==(const dir2&) const = default;
};

struct pos2l {
    std::int32_t x = 0, y = 0;
    bool operator==(const pos2l&) const = default;
};

struct dir2l {
    std::int32_t x = 0, y = 0;
    bool operator==(const dir2l&) const = default;
};

/// Quaternion, scalar first.
struct qua {
    float w = 1, x = 0, y = 0, z = 0;
    bool operator==(const qua&) const = default;
};

/// Rotation by `angle` degrees about `axis` (unit length, or the identity's (0, 0, 1)).
struct rot3 {
    float angle = 0;
    dir3 axis{0, 0, 1};
    bool operator==(const rot3&) const = default;
};

/// Homogeneous vector.
struct vec3w {
    float x = 0, y = 0, z = 0, w = 0;
    bool operator==(const vec3w&) const = default;
};

struct col3 {
    float r = 0, g = 0, b = 0;
    bool operator==(const col3&) const = default;
};

/// Colour with alpha; 0..1 per channel where a byte form exists.
struct col3a {
    float r = 0, g = 0, b = 0, a = 0;
    bool operator==(const col3a&) const = default;
};

struct txc1 {
    float s = 0;
    bool operator==(const txc1&) const = default;
};

struct txc2 {
    float s = 0, t = 0;
    bool operator==(const txc2&) const = default;
};

struct txc2q {
    float s = 0, t = 0, q = 0;
    bool operator==(const txc2q&) const = default;
};

struct txc3 {
    float s = 0, t = 0, r = 0;
    bool operator==(const txc3&) const = default;
};

struct txc3q {
    float s = 0, t = 0, r = 0, q = 0;
    bool operator==(const txc3q&) const = default;
};

/// 4 by 4 matrix, row-major, for row vectors: p' = p times M, with the translation in elements 12 to 14.
/// In memory this is the layout that GL takes for a column-major matrix.
struct mtx3w {
    std::array<float, 16> m{};
    float& operator[](std::size_t i) { return m[i]; }
    float operator[](std::size_t i) const { return m[i]; }
    bool operator==(const mtx3w&) const = default;
};

/// View frustum or box, in double precision.
struct projection {
    double left = 0, right = 0, bottom = 0, top = 0, near = 0, far = 0;
    bool operator==(const projection&) const = default;
};

}  // namespace ulk3d
