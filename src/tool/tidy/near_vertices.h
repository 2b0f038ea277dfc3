#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "model/vertex.h"

namespace ulktool {

/// Joins vertices that stand for themselves in `standing` (tool/tidy/weld.h) to earlier ones that agree with
/// them within the tolerance, which is not negative; at a tolerance of 0 only zeros of different signs are
/// left to join. No chains are made: what stands for others stays where it is, and no vertex moves by more
/// than the tolerance. Linear time, whatever the tolerance.
void join_near_vertices(std::span<const ulk3d::vertex_t> vertices, double tolerance,
                        std::vector<std::uint32_t>& standing);

}  // namespace ulktool
