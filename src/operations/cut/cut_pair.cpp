#include "operations/cut/cut_pair.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <utility>

#include "model/math/vectors.h"
#include "operations/cut/exact_face.h"

namespace ulk3d {
namespace {

/// By edge: 0 is from corner 0 to 1, 1 from corner 1 to 2, 2 from corner 2 to 0.
using codes_t = std::array<int, 3>;
using crossings_t = std::array<crossing_t, 3>;

std::uint32_t next(std::uint32_t k) {
    return (k + 1) % 3;
}

codes_t classify_edges(crossings_t& crossings, int first_index, const corners_t& corners,
                       cut_triangle_t& triangle) {
    codes_t codes{};
    for (std::uint32_t k = 0; k < 3; ++k)
        codes[k] = classify_edge(crossings[k], first_index + static_cast<int>(k), corners[k],
                                 corners[next(k)], triangle);
    return codes;
}

bool all_are(const codes_t& codes, int code) {
    return std::ranges::all_of(codes, [code](int c) { return c == code; });
}

/// The edge with this code; 3 when there is none.
std::uint32_t edge_with(const codes_t& codes, int code) {
    return static_cast<std::uint32_t>(std::ranges::find(codes, code) - codes.begin());
}

/// The corner at which a crossing is, up to the tolerance; 3 when it is at none.
std::uint32_t corner_at(const pos3& point, const corners_t& corners) {
    const auto corner = std::ranges::find_if(corners, [&](const pos3& p) { return f_eq(p, point); });
    return static_cast<std::uint32_t>(corner - corners.begin());
}

/// All corners of the victim within the tolerance of the cutter's plane. Their sides are rounding, and so
/// would be the line along which they were split.
bool is_in_plane(const cut_triangle_t& cutter, const corners_t& victim) {
    const float d = dot(cutter.normal, cutter.centroid);
    return std::ranges::all_of(victim, [&](const pos3& p) { return f_eq(dot(cutter.normal, p), d); });
}

/// One new vertex at an edge's crossing. A crossing at a corner would leave a triangle without height.
pair_cut_t cut_edge(std::uint32_t edge, const crossing_t& crossing, const corners_t& victim) {
    if (corner_at(crossing.point, victim) < 3)
        return {};
    return {1, edge, crossing.t, 0, crossing.point, {}};
}

/// Two new vertices, on an edge and the next one, which share the apex. A crossing at the other end of an
/// edge leaves that edge whole; with one at the apex all of the triangle is on one side.
pair_cut_t cut_two_edges(std::uint32_t edge, const crossings_t& crossings, const corners_t& victim) {
    const std::uint32_t apex = next(edge);
    const crossing_t& before = crossings[edge];
    const crossing_t& behind = crossings[apex];
    const std::uint32_t at_before = corner_at(before.point, victim);
    const std::uint32_t at_behind = corner_at(behind.point, victim);
    if (at_before == apex || at_behind == apex)
        return {};
    if (at_before < 3)
        return cut_edge(apex, behind, victim);
    if (at_behind < 3)
        return cut_edge(edge, before, victim);
    return {2, apex, behind.t, before.t, behind.point, before.point};
}

/// Whether two outline edges of the cutter's triangle pass through the victim's. A common segment that ends
/// on both outlines, two codes 2, counts like one that ends inside.
bool passes_through(const codes_t& k) {
    const auto met =
        std::ranges::count_if(k, [](int c) { return edge_on_outline <= c && c <= edge_outside; });
    const bool is_inside = std::ranges::count(k, edge_inside) >= 1;
    const bool on_both_outlines = std::ranges::count(k, edge_on_outline) == 2;
    return met == 2 && (is_inside || on_both_outlines);
}

void print_single_crosspoint(std::uint64_t j, std::uint64_t i, const codes_t& r, const codes_t& k) {
    std::cerr << "ptn: obj: single crosspoint.\n"
              << "j: " << j << ", i: " << i << '\n'
              << "r1: " << r[0] << ", r2: " << r[1] << ", r3: " << r[2] << '\n'
              << "k1: " << k[0] << ", k2: " << k[1] << ", k3: " << k[2] << '\n';
}

/// Where two of the victim's edges pass through the cutter's triangle itself; not at all when only one does.
pair_cut_t cut_at_hits(const triangle_t& triangle, const corners_t& victim) {
    std::array<bool, 3> hits{};
    crossings_t crossings;
    for (std::uint32_t k = 0; k < 3; ++k) {
        crossing_t& c = crossings[k];
        hits[k] = triangle_crossing(triangle, c.t, c.point, victim[k], victim[next(k)]);
    }
    for (std::uint32_t edge = 0; edge < 3; ++edge)
        if (hits[edge] && hits[next(edge)])
            return cut_two_edges(edge, crossings, victim);
    return {};
}

/// The reverse question, for pairs in which two of the victim's edges have no crossing: how the edges of the
/// cutter's triangle lie relative to the victim's.
pair_cut_t cut_reversed(cutter_triangle_t& cutter, const corners_t& victim, const codes_t& r, std::uint64_t j,
                        std::uint64_t i) {
    cut_triangle_t triangle(victim[0], victim[1], victim[2]);
    if (!triangle.has_area())
        return {};
    crossings_t reversed;
    const codes_t k = classify_edges(reversed, 3, cutter.corners, triangle);
    if (std::ranges::count(k, edge_parallel) != 0)
        return {};
    if (all_are(k, edge_inside)) {
        std::cerr << "ptn: on the line detect, ignore.\n";
        return {};
    }
    if (passes_through(k)) {
        // A cut takes two crossings.
        print_single_crosspoint(j, i, r, k);
        return {};
    }
    if (all_are(k, edge_apart))
        return {};
    return cut_at_hits(cutter.full(), victim);
}

/// All edges meet the plane: one corner is in it and the other two are on different sides. The segment from
/// the corner to the opposite edge decides. By the codes alone, which only tell where the segment ends, the
/// triangle would be left whole, and kept or removed as a whole by its centroid.
pair_cut_t cut_at_corner(cutter_triangle_t& cutter, const corners_t& victim, const crossings_t& crossings) {
    const cut_triangle_t& plane = cutter.cut;
    const float d = dot(plane.normal, plane.centroid);
    for (std::uint32_t corner = 0; corner < 3; ++corner) {
        const std::uint32_t opposite = next(corner);
        if (dot(plane.normal, victim[corner]) != d)
            continue;
        const crossing_t& crossing = crossings[opposite];
        const bool meets = overlaps(cutter.corners, victim[corner], crossing.point);
        return meets ? cut_edge(opposite, crossing, victim) : pair_cut_t{};
    }
    return {};
}

}  // namespace

bool are_finite(const corners_t& corners) {
    return is_finite(corners[0]) && is_finite(corners[1]) && is_finite(corners[2]);
}

box3 box_of(const corners_t& corners) {
    return {component_min(component_min(corners[0], corners[1]), corners[2]),
            component_max(component_max(corners[0], corners[1]), corners[2])};
}

bool are_apart(const box3& a, const box3& b, float room) {
    const auto is_gap = [room](const pos3& high, const pos3& low) {
        return low.x - high.x > room || low.y - high.y > room || low.z - high.z > room;
    };
    return is_gap(a.high, b.low) || is_gap(b.high, a.low);
}

cutter_triangle_t::cutter_triangle_t(const corners_t& points)
    : corners(points), box(box_of(points)), cut(points[0], points[1], points[2]) {}

const triangle_t& cutter_triangle_t::full() {
    if (!full_triangle)
        full_triangle.emplace(corners[0], corners[1], corners[2]);
    return *full_triangle;
}

pair_cut_t cut_pair(cutter_triangle_t& cutter, const corners_t& victim, std::uint64_t j, std::uint64_t i) {
    if (!are_finite(cutter.corners) || !are_finite(victim) || are_apart(cutter.box, box_of(victim), eps) ||
        is_in_plane(cutter.cut, victim))
        return {};
    crossings_t crossings;
    const codes_t codes = classify_edges(crossings, 0, victim, cutter.cut);
    if (std::ranges::count(codes, edge_parallel) != 0 || all_are(codes, edge_apart))
        return {};
    switch (std::ranges::count(codes, edge_apart)) {
        case 0:
            return cut_at_corner(cutter, victim, crossings);
        case 1: {
            // The segment between the two crossings decides. The line through them would be cut far away
            // from the cutter, and left whole where an edge of the cutter lies in the victim's plane.
            const std::uint32_t edge = next(edge_with(codes, edge_apart));
            const bool meets = overlaps(cutter.corners, crossings[edge].point, crossings[next(edge)].point);
            return meets ? cut_two_edges(edge, crossings, victim) : pair_cut_t{};
        }
        default:
            return cut_reversed(cutter, victim, codes, j, i);
    }
}

bool has_corners(std::span<const std::uint32_t> elements, std::uint64_t vertex_count, std::uint64_t mi2,
                 std::uint64_t mi1) {
    const std::array<std::pair<const char*, std::uint64_t>, 2> corners{{{"mi2", mi2}, {"mi1", mi1}}};
    for (const auto& [name, position] : corners) {
        if (position >= elements.size()) {
            std::cerr << "error, " << name << ": " << position << " over.\n";
            return false;
        }
    }
    for (const auto& [name, position] : corners) {
        if (elements[position] >= vertex_count) {
            std::cerr << "error, " << name << ": " << position << " , meptr[" << name
                      << "]: " << elements[position] << " >= " << vertex_count << " over.\n";
            return false;
        }
    }
    return true;
}

}  // namespace ulk3d
