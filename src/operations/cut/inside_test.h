#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "operations/cut/cut_triangle.h"
#include "operations/cut/ray_grid.h"
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

/// Determines whether points are inside a mesh, by a ray straight up. Each triangle that a ray passes through
/// is counted by the side on which its front is; for a surface that is not closed the sum has no meaning, but
/// decides all the same.
class inside_test_t {
  public:
    explicit inside_test_t(const strip_mesh_t& cutter);

    [[nodiscard]] bool is_inside(const pos3& point);

  private:
    void add_hit(cut_triangle_t& triangle, const pos3& start, const pos3& end);

    std::vector<cut_triangle_t> triangles;  ///< all with an area, in the order of the strips
    float high_z;
    ray_grid_t grid;
    std::vector<crossing_hit_t> hits;
};

}  // namespace ulk3d
