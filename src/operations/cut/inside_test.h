#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "operations/cut/cut_pair.h"
#include "operations/cut/ray_grid.h"
#include "operations/cut/unit_space.h"
#include "operations/strips/strip_mesh.h"

namespace ulk3d {

/// A triangle of the cutter that the ray of the inside test hits.
struct crossing_hit_t {
    float t = 0;
    std::uint32_t kind = 0;  ///< edge_at_corner, edge_on_outline or edge_inside
    std::uint8_t side = 0;   ///< direction of the crossing: 0 into the cutter, 1 out of it
    float slope = 0;         ///< at a corner: the triangle's unit normal dot the way back to the ray's start

    bool operator==(const crossing_hit_t&) const = default;
};

/// Inserts a hit after all hits with the same or a lower t.
void insert_hit(std::vector<crossing_hit_t>& hits, const crossing_hit_t& hit);

/// The sum of the hits, which are given in order of t. A hit inside a triangle counts 2, one on an outline,
/// which the neighbouring triangle shares, counts 1; where the ray leaves the cutter they count negative. Of
/// all hits at corners only one counts, with 2: among those with the lowest t the one with the lowest slope,
/// the first one if several are equal. A sum below 0 means that the start of the ray is inside the cutter.
int sum_of_hits(std::span<const crossing_hit_t> hits);

/// Determines whether triangles are inside a mesh that does not cross them, by rays straight up. Each
/// triangle that a ray passes through is counted by the side on which its front is; for a surface that is not
/// closed the sum has no meaning, but decides all the same.
///
/// The ray starts at the centroid. When it passes an outline or a corner within the tolerance, it is asked
/// again from other inner points, as a count of 1 for each of two neighbours is right only where both see the
/// ray on their outline. Without a clear ray the sum with outlines and corners decides.
///
/// A triangle that lies on one of the cutter's goes when both look the same way and stays when they look at
/// each other: of two bodies that touch, both keep their faces, and a hole through a plate has no lid.
class inside_test_t {
  public:
    /// Copies what it needs of the cutter to ask about triangles within `victim_box`, which is given in the
    /// models' own coordinates.
    inside_test_t(const strip_mesh_t& cutter, const unit_space_t& space, const box3& victim_box);

    /// For the corners of a triangle in unit coordinates.
    [[nodiscard]] bool is_inside(const corners_t& triangle);

    /// The same, but false for a triangle that lies on one of the cutter's, whichever way both look.
    [[nodiscard]] bool is_inside_and_not_on_it(const corners_t& triangle);

  private:
    [[nodiscard]] bool is_on_face(const corners_t& triangle, const pos3& centroid);
    [[nodiscard]] bool is_between_faces(const std::array<pos3, 7>& inner_points);
    [[nodiscard]] int direction_of_common_faces(const corners_t& triangle, const pos3& centroid);
    [[nodiscard]] bool sum_of_clear_hits(const pos3& start, int& sum);
    [[nodiscard]] int sum_of_all_hits(const pos3& start);
    [[nodiscard]] bool is_on_ray(std::uint32_t number, const pos3& start) const;

    std::vector<corners_t> triangles;  ///< all with an area, in the order of the strips
    std::vector<box3> boxes;
    ray_grid_t grid;
    std::vector<crossing_hit_t> hits;
};

}  // namespace ulk3d
