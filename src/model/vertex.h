#pragma once

#include "model/math/records.h"

namespace ulk3d {

/// The colour of points that have been given none: opaque grey.
inline constexpr col3a default_color{0.5F, 0.5F, 0.5F, 1.0F};

/// A vertex as stored in a GL buffer: 9 floats.
struct vertex_t {
    pos3 position;
    col3a color;
    txc2 texcoord;
    bool operator==(const vertex_t&) const = default;
};
static_assert(sizeof(vertex_t) == 9 * sizeof(float));

/// The tangent frame of a vertex: 9 floats.
struct frame_t {
    dir3 tangent;
    dir3 binormal;
    dir3 normal;
    bool operator==(const frame_t&) const = default;
};
static_assert(sizeof(frame_t) == 9 * sizeof(float));

/// The frame of a vertex that has been made and not given one yet: that of the front view.
inline constexpr frame_t new_vertex_frame{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

/// The four difference vectors of a vertex, from which the frame pass makes its frame: 12 floats.
struct work_frame_t {
    dir3 first, second, third, fourth;
    bool operator==(const work_frame_t&) const = default;
};
static_assert(sizeof(work_frame_t) == 12 * sizeof(float));

/// A control point of a NURBS net: 7 floats.
struct control_point_t {
    pos3 position;
    col3a color;
    bool operator==(const control_point_t&) const = default;
};
static_assert(sizeof(control_point_t) == 7 * sizeof(float));

/// Component-wise arithmetic over all nine floats, so that a new vertex on an edge interpolates position,
/// colour and texture coordinate at once.
vertex_t operator+(const vertex_t& a, const vertex_t& b);
vertex_t operator-(const vertex_t& a, const vertex_t& b);
vertex_t operator*(const vertex_t& a, float factor);
frame_t operator+(const frame_t& a, const frame_t& b);
frame_t operator-(const frame_t& a, const frame_t& b);
frame_t operator*(const frame_t& a, float factor);

}  // namespace ulk3d
