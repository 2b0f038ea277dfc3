#include "operations/cut/cut_pair.h"

#include <algorithm>
#include <iostream>
#include <utility>

namespace ulk3d {
namespace {

/// By edge: 0 is from corner 0 to 1, 1 from corner 1 to 2, 2 from corner 2 to 0.
using codes_t = std::array<int, 3>;
using crossings_t = std::array<crossing_t, 3>;
using ts_t = std::array<float, 3>;

codes_t classify_edges(crossings_t& crossings, int first_index, const corners_t& corners,
                       cut_triangle_t& triangle) {
    codes_t codes{};
    for (std::size_t k = 0; k < 3; ++k)
        codes[k] = classify_edge(crossings[k], first_index + static_cast<int>(k), corners[k],
                                 corners[(k + 1) % 3], triangle);
    return codes;
}

bool all_are(const codes_t& codes, int code) {
    return std::ranges::all_of(codes, [code](int c) { return c == code; });
}

bool is_between(int code, int low, int high) {
    return low <= code && code <= high;
}

/// Two new vertices on the first two edges that have a code, starting from the corner that they share; none
/// when there are no two such edges.
pair_cut_t cut_two_edges(const codes_t& codes, const ts_t& ts) {
    for (std::uint32_t edge = 0; edge < 3; ++edge) {
        const std::uint32_t next = (edge + 1) % 3;
        if (codes[edge] != 0 && codes[next] != 0)
            return {2, next, ts[next], ts[edge]};
    }
    return {};
}

/// The edge with code 4 while the two others pass through corners of the cutter's triangle.
std::optional<std::uint32_t> edge_opposite_to_corners(const codes_t& codes) {
    if (std::ranges::count(codes, edge_at_corner) != 2)
        return std::nullopt;
    for (std::uint32_t k = 0; k < 3; ++k)
        if (codes[k] == edge_outside)
            return k;
    return std::nullopt;
}

bool is_on_line(int code) {
    return code == edge_on_outline || code == edge_outside;
}

/// When exactly one code is 0: whether the two other edges, which meet the cutter's plane, have to be cut.
bool orders_cut(const codes_t& codes, const crossings_t& crossings, cut_triangle_t& triangle) {
    const auto apart = static_cast<std::size_t>(std::ranges::find(codes, 0) - codes.begin());
    const std::size_t p = (apart + 1) % 3;
    const std::size_t q = (apart + 2) % 3;
    if (codes[p] == edge_at_corner && codes[q] == edge_at_corner)
        return false;
    if (!is_on_line(codes[p]) || !is_on_line(codes[q]))
        return true;
    outline_t outline;
    const int number = 7 + static_cast<int>(p);
    return outline_test(outline, number, crossings[p].point, crossings[q].point, triangle) >= 1;
}

/// Whether two outline edges of the cutter's triangle pass through the victim's. A common segment that ends
/// on both outlines, two codes 2, must be cut like one that ends inside: otherwise a face of a coarse mesh
/// stays whole where the cutter crosses it from edge to edge, and is kept or removed as a whole by its
/// centroid.
bool passes_through(const codes_t& k) {
    const auto met =
        std::ranges::count_if(k, [](int c) { return is_between(c, edge_on_outline, edge_outside); });
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

/// Where the victim's edges pass through the cutter's triangle itself.
pair_cut_t cut_at_hits(const triangle_t& triangle, const corners_t& victim) {
    codes_t hits{};
    ts_t ts{};
    pos3 point;
    for (std::size_t n = 0; n < 3; ++n)
        hits[n] = triangle_crossing(triangle, ts[n], point, victim[n], victim[(n + 1) % 3]) ? 1 : 0;
    return cut_two_edges(hits, ts);
}

ts_t ts_of(const crossings_t& crossings) {
    return {crossings[0].t, crossings[1].t, crossings[2].t};
}

/// The reverse question, for pairs that the victim's edges do not decide: how the edges of the cutter's
/// triangle lie relative to the victim's.
pair_cut_t cut_reversed(cutter_triangle_t& cutter, const corners_t& victim, const codes_t& r,
                        const crossings_t& crossings, std::uint64_t j, std::uint64_t i) {
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
        const pair_cut_t cut = cut_two_edges(r, ts_of(crossings));
        if (cut.new_vertices == 0)
            print_single_crosspoint(j, i, r, k);
        return cut;
    }
    if (all_are(k, edge_apart))
        return {};
    return cut_at_hits(cutter.full(), victim);
}

}  // namespace

cutter_triangle_t::cutter_triangle_t(const corners_t& points)
    : corners(points), cut(points[0], points[1], points[2]) {}

const triangle_t& cutter_triangle_t::full() {
    if (!full_triangle)
        full_triangle.emplace(corners[0], corners[1], corners[2]);
    return *full_triangle;
}

pair_cut_t cut_pair(cutter_triangle_t& cutter, const corners_t& victim, std::uint64_t j, std::uint64_t i) {
    crossings_t crossings;
    const codes_t codes = classify_edges(crossings, 0, victim, cutter.cut);
    const bool is_settled = std::ranges::count(codes, edge_parallel) != 0 || all_are(codes, edge_apart) ||
                            std::ranges::all_of(codes, [](int c) { return is_between(c, 1, 3); });
    if (is_settled)
        return {};
    if (const auto edge = edge_opposite_to_corners(codes))
        return {1, *edge, crossings[*edge].t, 0};
    if (std::ranges::count(codes, edge_apart) == 1 && orders_cut(codes, crossings, cutter.cut))
        return cut_two_edges(codes, ts_of(crossings));
    return cut_reversed(cutter, victim, codes, crossings, j, i);
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
