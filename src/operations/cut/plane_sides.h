#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "model/math/records.h"

/// On which side of a plane many points or boxes lie. The value of a point is normal dot point in single
/// precision, x times x first, as in `dot`.
namespace ulk3d {

/// Bit k is for point k. A value that equals d or is not a number is on neither side.
struct side_bits_t {
    std::uint64_t below = 0, above = 0;
};

/// Of 64 points, given axis by axis.
side_bits_t point_sides(const dir3& normal, float d, const float* x, const float* y, const float* z);

/// Bit k is set unless box k is altogether below or above the plane. `low` and `high` give, axis by axis, the
/// coordinates of the corner with the least and with the greatest value of each box. `count`, up to 64, is a
/// multiple of 4.
std::uint64_t boxes_on_both_sides(const dir3& normal, float d, const std::array<const float*, 3>& low,
                                  const std::array<const float*, 3>& high, std::size_t count);

}  // namespace ulk3d
