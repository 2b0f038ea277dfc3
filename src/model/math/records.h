#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// Plain value records of space, colour and projection. Every record has exactly the size of its members,
/// because arrays of them are mapped straight onto GL buffers.
namespace ulk3d {

/// A direction, or a difference of positions.
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

/// Rotation by `angle` degrees about `axis`, which has unit length ((0, 0, 1) for the identity).
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

/// Three turns, as a plain triple.
struct rev3 {
    float x = 0, y = 0, z = 0;
    bool operator==(const rev3&) const = default;
};

/// A place together with two triples of turns.
struct pst3w {
    rev3 a, b;
    pos3 p;
    bool operator==(const pst3w&) const = default;
};

/// Polar coordinates, as a plain triple.
struct plr3 {
    float a = 0, b = 0, c = 0;
    bool operator==(const plr3&) const = default;
};

/// Angles, as a plain triple.
struct ang3 {
    float a = 0, b = 0, c = 0;
    bool operator==(const ang3&) const = default;
};

/// The scalar `s` of two directions and the vector `d` that belongs to it, see `srt3_from_dirs`.
struct srt3 {
    float s = 0;
    dir3 d;
    bool operator==(const srt3&) const = default;
};

struct irt3 {
    rev3 a;
    srt3 b;
    bool operator==(const irt3&) const = default;
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

/// Colours in bytes, as files and images hold them.
struct col3aub {
    std::uint8_t r = 0, g = 0, b = 0, a = 0;
    bool operator==(const col3aub&) const = default;
};

struct col3ub {
    std::uint8_t r = 0, g = 0, b = 0;
    bool operator==(const col3ub&) const = default;
};

struct col1aub {
    std::uint8_t grey = 0, alpha = 0;
    bool operator==(const col1aub&) const = default;
};

struct col1ub {
    std::uint8_t grey = 0;
    bool operator==(const col1ub&) const = default;
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

/// Camera in terms of a lens: `fov` is the full angle of the frustum's diagonal, in radians.
struct lens_t {
    double fov = 90 * 0.017453292519943122;
    double aspect = 4.0 / 3.0;
    double near = 0.1, far = 1000.1;
    bool operator==(const lens_t&) const = default;
};

/// Camera of an orthographic view: the box is 2 high and 2 times `half_width` wide.
struct ortho_t {
    double half_width = 1, near = -1, far = 1;
    bool operator==(const ortho_t&) const = default;
};

struct box2 {
    pos2 low, high;
    bool operator==(const box2&) const = default;
};

struct box3 {
    pos3 low, high;
    bool operator==(const box3&) const = default;
};

struct dim2 {
    std::uint64_t width = 0, height = 0;
    bool operator==(const dim2&) const = default;
};

struct dim3 {
    std::uint64_t width = 0, height = 0, depth = 0;
    bool operator==(const dim3&) const = default;
};

/// The plane a x + b y + c z + d = 0.
struct surface {
    float a = 0, b = 0, c = 0, d = 0;
    bool operator==(const surface&) const = default;
};

/// The line a x + b y + c = 0.
struct line2d {
    float a = 0, b = 0, c = 0;
    bool operator==(const line2d&) const = default;
};

/// A line in space, by its direction and the matrices into its own coordinates and back.
struct line3d {
    dir3 d;
    mtx3w to_local, from_local;
    bool operator==(const line3d&) const = default;
};

static_assert(sizeof(dir3) == 12 && sizeof(pos3) == 12 && sizeof(pos2) == 8 && sizeof(dir2) == 8);
static_assert(sizeof(pos2l) == 8 && sizeof(dir2l) == 8);
static_assert(sizeof(qua) == 16 && sizeof(rot3) == 16 && sizeof(vec3w) == 16);
static_assert(sizeof(rev3) == 12 && sizeof(pst3w) == 36 && sizeof(plr3) == 12 && sizeof(ang3) == 12);
static_assert(sizeof(srt3) == 16 && sizeof(irt3) == 28);
static_assert(sizeof(col3) == 12 && sizeof(col3a) == 16);
static_assert(sizeof(col3aub) == 4 && sizeof(col3ub) == 3 && sizeof(col1aub) == 2 && sizeof(col1ub) == 1);
static_assert(sizeof(txc1) == 4 && sizeof(txc2) == 8 && sizeof(txc2q) == 12);
static_assert(sizeof(txc3) == 12 && sizeof(txc3q) == 16);
static_assert(sizeof(mtx3w) == 64 && sizeof(projection) == 48 && sizeof(lens_t) == 32);
static_assert(sizeof(box2) == 16 && sizeof(box3) == 24 && sizeof(dim2) == 16 && sizeof(dim3) == 24);
static_assert(sizeof(surface) == 16 && sizeof(line2d) == 12 && sizeof(line3d) == 140);

}  // namespace ulk3d
