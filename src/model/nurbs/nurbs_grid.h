#pragma once

#include <cstdint>
#include <span>

#include "model/nurbs/kernels/kernel.h"
#include "model/nurbs/nurbs_evaluate.h"

namespace ulk3d {

/// Evaluates a surface at resolution1 times resolution2 places into `vertices`; record r * resolution1 + c is
/// for u = c / (resolution1 - 1) and v = r / (resolution2 - 1). Position and colour are those of
/// `nurbs_surface`, equal to the last bit, and the texture coordinate is (u, v). Records beyond the end of
/// `vertices` are left out. A resolution of 1 has the parameter 0/0.
///
/// Basis functions are evaluated once per knot vector and sample, and only terms other than 0 are summed: the
/// work grows with the samples times the orders, not with the size of the net. Where infinities or
/// not-a-numbers give weight to a term with a basis function of 0, all terms are summed. All kernels give the
/// same bits.
///
/// True when the surface is local: each sample is the mean of just the points that reach it. Not so with
/// infinities or not-a-numbers, and where factors sum to 0.
bool evaluate_surface(const nurbs_net_t<control_point_t>& net, std::uint32_t resolution1,
                      std::uint32_t resolution2, std::span<vertex_t> vertices,
                      const kernel_t& kernel = best_kernel());

/// Brings the grid of a surface that was local up to date after a change of points, and of nothing else, by
/// evaluating the samples that they can reach. The result, and the grid, are those of `evaluate_surface` to
/// the last bit.
bool evaluate_changes(const nurbs_net_t<control_point_t>& net, std::span<const std::uint64_t> changed_points,
                      std::uint32_t resolution1, std::uint32_t resolution2, std::span<vertex_t> vertices,
                      const kernel_t& kernel = best_kernel());

}  // namespace ulk3d
