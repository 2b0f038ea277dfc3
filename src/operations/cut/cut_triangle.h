#pragma once

#include <array>
#include <cstdint>

#include "model/math/records.h"

namespace ulk3d {

/// The triangle as the mesh cut works on it: its plane, and its outline turned level on first use.
struct cut_triangle_t {
    struct edge_t {
        line2d line;
        float zero = 0;
    };

    pos3 p0, p1, p2;
    pos3 centroid;
    dir3 normal;              ///< unit; zero for a triangle without area
    bool flat_ready = false;  ///< what follows is there
    std::array<pos3, 3> flat_points;
    std::array<edge_t, 3> flat_edges;  ///< p0p1, p1p2, p2p0: distances, negative on the inner side
    mtx3w flat;                        ///< turns the normal onto +z

    cut_triangle_t() = default;
    cut_triangle_t(const pos3& p0, const pos3& p1, const pos3& p2);

    bool has_area() const { return normal != dir3{}; }
    void make_flat();
};

/// Where an edge a to b meets the plane of a triangle.
struct crossing_t {
    float t = 0;             ///< 0 at a, 1 at b; -1 where it is not a number
    std::uint32_t side = 0;  ///< 1 when a lies below the plane and b above it
    pos3 point;
    std::array<float, 3> distances{};  ///< of the point from the three edge lines
};

/// How an edge lies against a triangle.
enum edge_code : int {
    edge_parallel = -1,  ///< in the plane, or no meeting point can be determined
    edge_apart = 0,      ///< both ends on one side, or the point is outside of all three lines
    edge_at_corner = 1,  ///< through a corner
    edge_on_outline = 2,
    edge_inside = 3,
    edge_outside = 4,  ///< meets the plane outside of the triangle
};

/// The line through two points of a triangle's plane, and where it meets the lines of the triangle's edges.
struct outline_t {
    int number = 0;
    line2d line;
    std::array<pos2, 3> meets;                ///< by edge; not-a-numbers where the edge is parallel
    std::array<float, 3> p_values, q_values;  ///< distances of the two points from the edge lines
};

/// The code of the edge a to b. Touching counts as crossing: an end in the plane is enough. `out` keeps what
/// was computed; which members are set depends on how far the test went. `index` labels the call.
int classify_edge(crossing_t& out, int index, const pos3& a, const pos3& b, cut_triangle_t& triangle);

/// How the line through p and q, two points of the triangle's plane, lies against the triangle: -1 when one
/// of the points is inside, -2 when one is outside of all three edge lines; otherwise 3 when the line meets
/// each edge line within the triangle (an edge that is parallel to it is left out), else 0. So 3 takes a
/// line along an edge or through a corner. `number` labels the call.
int outline_test(outline_t& out, int number, const pos3& p, const pos3& q, cut_triangle_t& triangle);

}  // namespace ulk3d
