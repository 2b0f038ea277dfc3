#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "model/matrix.h"
#include "model/nurbs/basis.h"
#include "model/nurbs/kernels/kernel.h"

namespace ulk3d {

/// A half-open range of samples.
struct sample_range_t {
    std::uint32_t begin, end;
    std::uint32_t size() const { return end - begin; }
};

/// The parameter of a sample. With a resolution of 1 it is 0/0.
inline float sample_parameter(std::uint32_t sample, std::uint32_t resolution) {
    return static_cast<float>(sample) / static_cast<float>(resolution - 1);
}

/// The knot vectors of all rows, or of all columns, of a net, one in each row of `knots`. Those that are
/// equal bit for bit are of one kind.
struct knot_table_t {
    knot_table_t(const matrix_t<float>& table, std::uint64_t function_count, std::uint64_t function_order);

    const matrix_t<float>& knots;
    std::uint64_t count;  ///< number of basis functions of each knot vector
    std::uint64_t order;
    std::vector<std::uint32_t> kinds;          ///< by knot vector
    std::vector<std::uint64_t> rows_of_kinds;  ///< by kind: its first knot vector
};

/// The basis functions of all knot vectors at the samples of a range, evaluated once for each kind. The
/// knot table must outlive this object.
class basis_table_t {
  public:
    basis_table_t(const knot_table_t& table, sample_range_t samples, std::uint32_t resolution,
                  const kernel_t& kernel);

    sample_range_t samples() const { return range; }
    float parameter(std::uint32_t sample) const { return parameters[sample - range.begin]; }
    const float* all_parameters() const { return parameters.data(); }

    /// The functions of a knot vector that can be other than 0 at a sample, and where their values are.
    const basis_run_t& run(std::uint64_t knot_vector, std::uint32_t sample) const {
        return runs[kinds[knot_vector] * std::size_t{range.size()} + (sample - range.begin)];
    }
    const float* values_of(const basis_run_t& run) const { return values.data() + run.values; }

    /// The value of any function of a knot vector at a sample.
    float value(std::uint64_t knot_vector, std::uint32_t sample, std::uint64_t function) const {
        const basis_run_t& found = run(knot_vector, sample);
        return function - found.first < found.count ? values_of(found)[function - found.first] : 0;
    }

    bool is_one_kind() const { return runs.size() == range.size(); }

    /// For kernels: the runs by kind and sample, and their values. Behind those of each run are zeros up to
    /// a multiple of `step` above 0, and `read_ahead` more at the end.
    const std::uint32_t* all_kinds() const { return kinds.data(); }
    const basis_run_t* all_runs() const { return runs.data(); }
    std::span<const float> all_values() const { return values; }
    std::uint32_t step() const { return run_step; }

  private:
    void evaluate(std::uint64_t count, std::uint64_t order, std::span<const float> knots,
                  const kernel_t& kernel);
    void evaluate_one(std::uint64_t count, std::uint64_t order, float parameter, std::span<const float> knots,
                      bool ascending);

    const std::vector<std::uint32_t>& kinds;
    sample_range_t range;
    std::uint32_t run_step;
    std::vector<float> parameters;
    std::vector<basis_run_t> runs;
    std::vector<float> values;
    std::vector<std::uint64_t> intervals;  ///< by sample, of the knot vector that is being evaluated
};

}  // namespace ulk3d
