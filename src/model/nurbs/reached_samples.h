#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "model/nurbs/basis_table.h"
#include "model/nurbs/nurbs_evaluate.h"

namespace ulk3d {

/// Samples of a grid: for each row of it a range along the row, which may be empty.
using reached_samples_t = std::vector<sample_range_t>;

/// The samples, of resolution1 times resolution2, to which the points with the numbers `points`, row * count1
/// + column, can contribute: those between the first and the last of the knots on which their basis functions
/// rest. Whoever is in doubt is among them: the ranges cover all samples that are reached, and those between
/// them on the same row.
reached_samples_t reached_samples(const nurbs_net_t<control_point_t>& net, std::uint32_t resolution1,
                                  std::uint32_t resolution2, std::span<const std::uint64_t> points);

/// All samples.
reached_samples_t all_samples(std::uint32_t resolution1, std::uint32_t resolution2);

}  // namespace ulk3d
