#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "model/math/records.h"

namespace ulk3d {

/// Finds the boxes that a line along z may meet, by its x and y.
class ray_grid_t {
  public:
    /// Boxes are listed where they reach with `room` on all sides. They are finite.
    ray_grid_t(std::span<const box3> boxes, float room);

    /// The numbers of all boxes that a line at x and y meets, in ascending order, and of some more. Valid
    /// until the next call.
    std::span<const std::uint32_t> numbers_at(float x, float y);

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
    };

    struct cells_t {
        range_t x, y;

        std::uint32_t count() const { return x.size() * y.size(); }
    };

    cells_t cells_of(const box3& box, float room) const;
    void fill(std::span<const box3> boxes, float room);

    axis_t x_axis, y_axis;
    std::vector<std::uint32_t> offsets;  ///< by cell: its beginning in `entries`; one more at the end
    std::vector<std::uint32_t> entries;  ///< numbers of boxes, ascending in each cell
    std::vector<std::uint32_t> for_all;  ///< numbers of boxes that reach into very many cells
    std::vector<std::uint32_t> found;
};

}  // namespace ulk3d
