#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "model/math/triangle.h"
#include "operations/cut/cut_triangle.h"

namespace ulk3d {

using corners_t = std::array<pos3, 3>;

bool are_finite(const corners_t& corners);

/// The box of three corners.
box3 box_of(const corners_t& corners);

/// Whether there is a gap of more than `room` between two boxes along an axis.
bool are_apart(const box3& a, const box3& b, float room);

/// A triangle of the cutter. What crossing tests need of it is computed on first use.
class cutter_triangle_t {
  public:
    explicit cutter_triangle_t(const corners_t& points);

    bool has_area() const { return cut.has_area(); }
    const triangle_t& full();

    corners_t corners;
    box3 box;
    cut_triangle_t cut;

  private:
    std::optional<triangle_t> full_triangle;
};

/// How a triangle of the victim is split for one triangle of the cutter. Corners 0, 1, 2 are those at the
/// element positions mi2, mi1, i. By the number of new vertices:
/// 0: it is not split;
/// 1: on the edge from `first` to the next corner, at t1 and p1 (`add_vertex0`);
/// 2: `first` is the apex: on the edge from it to the next corner, at t1 and p1, and on the edge from the
/// previous corner to it, at t2 and p2 (`add_vertex`).
struct pair_cut_t {
    std::uint32_t new_vertices = 0;
    std::uint32_t first = 0;
    float t1 = 0, t2 = 0;
    pos3 p1{}, p2{};

    bool operator==(const pair_cut_t&) const = default;
};

/// Decides about one pair, in unit coordinates. A triangle of the victim is split along the line in which it
/// meets the cutter's plane when the segment of that line inside of both is longer than the tolerance. What
/// would leave a triangle without height is not split: a line through a corner makes one new vertex, and one
/// along an edge none. A triangle in the cutter's plane is not split, nor is one whose box is apart from the
/// cutter's by more than the tolerance, or one with a corner that is not finite.
///
/// j and i are the element positions of the last corners in cutter and victim; they only identify the pair in
/// the messages. Two codes of 0, which only rounding can bring about, are settled by the reverse question.
/// Then this is printed on the standard error stream when all edges of the cutter's triangle pass through the
/// victim's:
///
///     ptn: on the line detect, ignore.
///
/// and this when the edges of the cutter's triangle call for a cut, but the victim's edges do not have two
/// points for it:
///
///     ptn: obj: single crosspoint.
///     j: 11, i: 7
///     r1: 0, r2: 0, r3: 4
///     k1: 3, k2: 3, k3: 0
pair_cut_t cut_pair(cutter_triangle_t& cutter, const corners_t& victim, std::uint64_t j, std::uint64_t i);

/// Returns whether a triangle of the victim can be examined: both element positions exist and hold a vertex.
/// If not, prints the first of these lines that applies on the standard error stream:
///
///     error, mi2: 9 over.
///     error, mi1: 9 over.
///     error, mi2: 3 , meptr[mi2]: 12 >= 8 over.
///     error, mi1: 3 , meptr[mi1]: 12 >= 8 over.
[[nodiscard]] bool has_corners(std::span<const std::uint32_t> elements, std::uint64_t vertex_count,
                               std::uint64_t mi2, std::uint64_t mi1);

}  // namespace ulk3d
