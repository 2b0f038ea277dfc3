#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <span>

#include "model/math/records.h"
#include "model/vertex.h"
#include "operations/hit/clip_polygon.h"

namespace ulk3d {

class polygon_t;

/// A triangle that shows in the window of a pick.
struct hit_t {
    std::array<vertex_t, 3> vertices;  ///< its corners, in the model
    pos3 point;                        ///< where it was hit, after the projection: z is the depth
    std::uint32_t polygon_id = 0;
};

/// Orders depths, the nearest first. A depth that is not a number (of a corner in the plane of the camera)
/// comes after all others.
struct nearer_t {
    bool operator()(float a, float b) const { return a < b || (a == a && b != b); }
};

/// Hits by their depth.
using hit_map_t = std::map<float, hit_t, nearer_t>;

/// Finds the triangle of a polygon model that is nearest to the viewer among those that show in the window
/// `lines`, in normalised coordinates, and puts it into `hits`. Points go through `view` and then through
/// `perspective`. False when no triangle shows there; `hits` is then left as it was.
///
/// A triangle shows where its outline, clipped by the four lines, leaves something; the depth is that of the
/// nearest corner of what is left. Of equal depths the latest triangle counts. Nothing is cut off at the near
/// plane: what lies behind the camera projects upside down and can be hit.
///
/// Needs a current GL context; each array is mapped once.
bool polygon_hit(hit_map_t& hits, const polygon_t& polygon, const edge_lines_t& lines,
                 const mtx3w& perspective, const mtx3w& view);

/// The same for vertices and strips on the host.
bool polygon_hit(hit_map_t& hits, std::span<const vertex_t> vertices, std::span<const std::uint32_t> strips,
                 const edge_lines_t& lines, const mtx3w& perspective, const mtx3w& view);

}  // namespace ulk3d
