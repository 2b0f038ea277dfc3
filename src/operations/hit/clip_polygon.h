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

/// The window of a pick: the points inside all four lines.
using edge_lines_t = std::array<edge_line_t, 4>;

/// A corner of a polygon being clipped: the attribute is interpolated along with the position.
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

/// One pass of clipping by the method of Sutherland and Hodgman, in x and y: `out` becomes the part of `in`
/// inside the line, with z and attribute carried along; the two must be different objects. A crossing is
/// always computed starting from its inside corner. A value that is not-a-number counts as inside. Corners
/// beyond `clip_places`, which no convex polygon made by clipping a triangle has, are dropped.
void clip_by_line(clip_polygon_t& out, const clip_polygon_t& in, const edge_line_t& line);

}  // namespace ulk3d
