#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "model/math/records.h"

namespace ulk3d {

/// The edge a x + b y + c = 0 of a clip window; a point is inside where the value is 0 or more.
struct edge_line_t {
    float a = 0, b = 0, c = 0, unused = 0;
};
static_assert(sizeof(edge_line_t) == 16);

/// The window of a pick: what lies inside of all four lines.
using edge_lines_t = std::array<edge_line_t, 4>;

/// A corner of a polygon under the clip: the attribute is interpolated with the position.
struct clip_vertex_t {
    pos3 position;
    vec3w attribute;
};

/// The most corners that a triangle can have after four clips.
inline constexpr std::size_t clip_places = 7;

struct clip_polygon_t {
    std::uint64_t count = 0;
    std::array<pos3, clip_places> positions{};
    std::array<vec3w, clip_places> attributes{};
};

/// One pass of the clip by Sutherland and Hodgman, in x and y: `out` becomes the part of `in` inside of the
/// line, z and attribute carried along; they are two objects. A crossing is always computed from its inside
/// corner. A value that is not a number counts as inside. Corners beyond `clip_places`, which no convex
/// polygon of a clipped triangle has, are left out.
void clip_by_line(clip_polygon_t& out, const clip_polygon_t& in, const edge_line_t& line);

}  // namespace ulk3d
