#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "operations/cut/cut_triangle.h"

namespace ulk3d {

/// Finds the triangles that a ray along z may meet, by the ray's x and y.
///
/// Each triangle is listed in all cells of a grid from which the test could report a hit: those over its own
/// box, widened by as much as the tolerance and rounding of `classify_edge` can reach. At a sharp corner that
/// is far more than the tolerance itself, since a point may lie beyond it by the tolerance divided by the
/// sine of half the angle. Triangles for which this does not work (needles, values that are not finite) are
/// listed for every ray.
class ray_grid_t {
  public:
    /// Makes the triangles flat (`make_flat`) and keeps no reference to them. All rays end at `end_z`.
    ray_grid_t(std::span<cut_triangle_t> triangles, float end_z);

    /// The numbers of the triangles, in ascending order, that a ray upwards from `start` may meet. Valid
    /// until the next call.
    const std::vector<std::uint32_t>& numbers_for(const pos3& start);

  private:
    /// A range of cells along one axis, both ends included.
    struct range_t {
        std::uint32_t first = 0, last = 0;

        std::uint32_t size() const { return last - first + 1; }
    };

    struct axis_t {
        float low = 0, per_unit = 0;
        std::uint32_t cells = 1;

        std::uint32_t cell(float v) const;
        range_t range(float from, float to, double widening) const;
    };

    struct cells_t {
        range_t x, y;
    };

    void lay_axes(std::span<const cut_triangle_t> triangles);
    void fill(std::span<const cut_triangle_t> triangles);
    std::optional<cells_t> cells_of(const cut_triangle_t& triangle) const;

    std::size_t triangle_count;
    float reach;  ///< the widening holds for coordinates up to this
    axis_t x_axis, y_axis;
    std::vector<std::uint32_t> offsets;  ///< by cell: its beginning in `entries`; one more at the end
    std::vector<std::uint32_t> entries;  ///< numbers of triangles, ascending in each cell
    std::vector<std::uint32_t> for_all;  ///< numbers of the triangles listed for every ray
    std::vector<std::uint32_t> found;
};

}  // namespace ulk3d
