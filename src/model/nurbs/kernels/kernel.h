#pragma once

#include <cstdint>
#include <span>

#include "model/nurbs/basis.h"

namespace ulk3d {

/// Floats that kernels may read, and never use, past the end of a list that they are given.
inline constexpr std::uint64_t read_ahead = 4;

/// Floats of a point in the lists of kernels: the seven of a control point and a 1, so that the weighted sum
/// of points also gives the sum of their factors.
inline constexpr std::uint64_t point_floats = 8;

/// Floats of a vertex_t: position and colour, seven like those of a control point, and texture coordinate.
inline constexpr std::uint64_t vertex_floats = 9;

/// The highest order of basis functions that kernels evaluate.
inline constexpr std::uint64_t highest_kernel_order = 8;

/// The terms of all samples at one v. The factor of point i of row j of the net, at a sample of u, is that
/// row's basis function i at u, times the weight, times the value of column i for row j.
struct sample_terms_t {
    std::uint32_t step;          ///< terms that are added at a time: 2, 3 or 4
    const std::uint32_t* kinds;  ///< by row of the net: which runs are its own
    const basis_run_t* runs;     ///< by kind and sample of u; runs of a kind are `samples` apart
    std::uint64_t samples;
    const float* row_values;  ///< of the runs, followed by zeros up to a multiple of `step` above 0
    std::uint64_t columns;    ///< points in a row of the net
    const float* weights;     ///< row by row, like the points
    const float* points;      ///< see `point_floats`
    std::uint64_t first_row;  ///< the row of the net with which `column_values` begins
    const float* column_values;
    bool rows_differ;     ///< if false, all rows have the runs of kind 0
    bool columns_differ;  ///< the list above has a value for each point of a row; if false, one for each row
};

/// Half-open ranges: samples of u, and the rows of the net that are summed at them.
struct sample_stretch_t {
    std::uint64_t first_sample, last_sample;
    std::uint64_t first_row, last_row;
};

/// Samples of one knot vector, each strictly inside a single interval of it.
struct basis_stretch_t {
    std::uint64_t count;
    std::uint64_t order;  ///< 2 to `highest_kernel_order`
    const float* knots;
    const float* parameters;         ///< by sample
    const std::uint64_t* intervals;  ///< by sample: the knot at which its interval begins, from order - 1
    float* values;                   ///< by sample: room for its `order` values
    std::uint64_t stride;            ///< of `values`, from sample to sample
};

/// The inner loops of evaluation, in the form for one instruction set. All give the same bits: each computes
/// several samples, or several numbers of a sample, at a time, and every number in the same steps.
struct kernel_t {
    const char* name;
    /// Writes `point_floats` sums for each sample of the stretch. The terms are added row by row.
    void (*sum_terms)(const sample_terms_t& terms, const sample_stretch_t& stretch, float* sums);
    /// Writes the basis functions that rest on the interval of each sample.
    void (*evaluate_basis)(const basis_stretch_t& stretch);
    /// Writes `count` vertices, of `vertex_floats` each, which are the weighted means that belong to the
    /// sums, with (parameters[n], v) as texture coordinate. False when factors sum to 0 (within `eps`) in one
    /// of them, which then has no mean.
    bool (*make_vertices)(const float* sums, std::uint64_t count, const float* parameters, float v,
                          float* vertices);
};

/// All kernels that this machine can run, the best one last.
std::span<const kernel_t> kernels();

inline const kernel_t& best_kernel() {
    return kernels().back();
}

}  // namespace ulk3d
