#pragma once

#include <array>
#include <cstdint>

#include "model/math/records.h"

namespace ulk3d {

/// A triangle as the mesh cut uses it: its plane and, from first use on, its outline turned level.
struct cut_triangle_t {
    struct edge_t {
        line2d line;
        float zero = 0;
    };

    pos3 p0, p1, p2;
    pos3 centroid;
    dir3 normal;              ///< unit; zero for a triangle without area
    bool flat_ready = false;  ///< whether `make_flat` has set the members below
    std::array<pos3, 3> flat_points;
    std::array<edge_t, 3> flat_edges;  ///< p0p1, p1p2, p2p0: distances, negative on the inner side
    mtx3w flat;                        ///< turns the normal to +z

    cut_triangle_t() = default;
    cut_triangle_t(const pos3& p0, const pos3& p1, const pos3& p2);

    bool has_area() const { return normal != dir3{}; }
    void make_flat();
};

/// Where an edge from a to b meets the plane of a triangle.
struct crossing_t {
    float t = 0;             ///< 0 at a, 1 at b; -1 when it would be not-a-number
    std::uint32_t side = 0;  ///< 1 when a lies below the plane and b above it
    pos3 point;
    std::array<float, 3> distances{};  ///< from the point to the three edge lines
};

/// How an edge lies relative to a triangle.
enum edge_code : int {
    edge_parallel = -1,  ///< in the plane, or the meeting point can not be determined
    edge_apart = 0,      ///< both ends on one side, or the point is outside all three lines
    edge_at_corner = 1,  ///< through a corner
    edge_on_outline = 2,
    edge_inside = 3,
    edge_outside = 4,  ///< meets the plane outside the triangle
};

/// Returns the code of the edge from a to b. Touching counts as crossing: an end in the plane is enough.
/// `out` receives what was computed; which members are set depends on how far the test got. `index` labels
/// the call.
int classify_edge(crossing_t& out, int index, const pos3& a, const pos3& b, cut_triangle_t& triangle);

}  // namespace ulk3d
