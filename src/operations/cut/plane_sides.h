#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "model/math/records.h"

/// On which side of a plane each of many points or boxes lies. The value of a point is normal dot point in
/// single precision, starting with x times x, as in `dot`.
namespace ulk3d {

/// Bit k belongs to point k. A value that equals d or is not-a-number is on neither side.
struct side_bits_t {
    std::uint64_t below = 0, above = 0;
};

/// The sides of 64 points; x, y and z hold 64 coordinates each.
side_bits_t point_sides(const dir3& normal, float d, const float* x, const float* y, const float* z);

/// Bit k is set unless box k is entirely below or entirely above the plane. For each axis, `low` and `high`
/// hold that coordinate of the corner with the least, or the greatest, value of each box. `count` is a
/// multiple of 4, at most 64.
std::uint64_t boxes_on_both_sides(const dir3& normal, float d, const std::array<const float*, 3>& low,
                                  const std::array<const float*, 3>& high, std::size_t count);

}  // namespace ulk3d
