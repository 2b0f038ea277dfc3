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

/// A triangle that appears in the window of a pick.
struct hit_t {
    std::array<vertex_t, 3> vertices;  ///< its corners, in the model
    pos3 point;                        ///< where it was hit, after the projection: z is the depth
    std::uint32_t polygon_id = 0;
};

/// Orders depths, nearest first. A depth that is not-a-number (of a corner in the plane of the camera) comes
/// after all others.
struct nearer_t {
    bool operator()(float a, float b) const { return a < b || (a == a && b != b); }
};

/// Hits by depth.
using hit_map_t = std::map<float, hit_t, nearer_t>;

/// Of the triangles of a polygon model that appear in the window `lines`, in normalised coordinates, finds
/// the one nearest to the viewer and puts it into `hits`. Points are transformed by `view` and then by
/// `perspective`. False when no triangle appears there; `hits` then stays as it was.
///
/// A triangle appears in the window when clipping its outline by the four lines leaves something; its depth
/// is that of the nearest corner of what is left. Of equal depths the last triangle counts. Nothing is
/// clipped at the near plane: what lies behind the camera is projected upside down and can be hit.
///
/// Requires a current GL context; each array is mapped once.
bool polygon_hit(hit_map_t& hits, const polygon_t& polygon, const edge_lines_t& lines,
                 const mtx3w& perspective, const mtx3w& view);

/// The same for vertices and strips on the host.
bool polygon_hit(hit_map_t& hits, std::span<const vertex_t> vertices, std::span<const std::uint32_t> strips,
                 const edge_lines_t& lines, const mtx3w& perspective, const mtx3w& view);

}  // namespace ulk3d
