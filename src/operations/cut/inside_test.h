#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "operations/cut/cut_triangle.h"
#include "operations/cut/ray_grid.h"
#include "operations/strips/strip_mesh.h"

namespace ulk3d {

/// A triangle of the cutter that the ray of the inside test meets.
struct crossing_hit_t {
    float t = 0;
    std::uint32_t kind = 0;  ///< edge_at_corner, edge_on_outline or edge_inside
    std::uint8_t side = 0;   ///< of the crossing: 0 into the cutter, 1 out of it
    float slope = 0;         ///< at a corner: unit normal of the triangle dot the way back to the ray's start

    bool operator==(const crossing_hit_t&) const = default;
};

/// Adds a hit behind all with the same or a lower t.
void insert_hit(std::vector<crossing_hit_t>& hits, const crossing_hit_t& hit);

/// Sum of the hits, given in order of t. A hit inside of a triangle counts 2, one on an outline, which the
/// neighbour shares, counts 1; negative where the ray goes out. Of all hits at corners one counts, with 2: of
/// those with the lowest t the one with the lowest slope, the first of equal ones. Below 0 the ray's start is
/// inside of the cutter.
int sum_of_hits(std::span<const crossing_hit_t> hits);

/// Tells whether points are inside of a mesh, by a ray straight up. Each triangle that a ray passes is
/// counted by the side on which its front is; for a surface that is not closed the sum has no meaning, and
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
