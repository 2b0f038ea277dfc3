#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "model/math/tolerance.h"
#include "model/nurbs/kernels/kernel.h"

/// The loops of all kernels. A source that includes this is compiled for its own instruction set. What it
/// instantiates must not be shared with other sources, or a machine could be given code that it can not run:
/// `Lanes` is a type of an unnamed namespace, and no function of a library is called.
namespace ulk3d {

/// `Lanes` are the eight sums of one sample, with these types and functions:
/// - factors_t: the factors of four terms; `load(p)` reads them, `repeat(p)` reads one four times, and
///   `spread(factors)` makes of them what `add` takes
/// - add<n>(spread, point): adds the eight floats of a point times factor n
/// - store(p)
/// - store_scaled(p, scale, last, target): writes the first seven floats at p times scale, and last
/// - numbers_t: one float of each of several samples
template <class Lanes>
struct kernel_loops_t {
    using numbers_t = typename Lanes::numbers_t;
    static constexpr std::uint64_t width = sizeof(numbers_t) / sizeof(float);

    static void sum_terms(const sample_terms_t& terms, const sample_stretch_t& stretch, float* sums) {
        switch (terms.step) {
            case 2:
                return sum_in_steps<2>(terms, stretch, sums);
            case 3:
                return sum_in_steps<3>(terms, stretch, sums);
            default:
                return sum_in_steps<4>(terms, stretch, sums);
        }
    }

    static void evaluate_basis(const basis_stretch_t& stretch) {
        switch (stretch.order) {
            case 2:
                return evaluate_samples<2>(stretch);
            case 3:
                return evaluate_samples<3>(stretch);
            case 4:
                return evaluate_samples<4>(stretch);
            default:
                return evaluate_samples<0>(stretch);
        }
    }

    static bool make_vertices(const float* sums, std::uint64_t count, const float* parameters, float v,
                              float* vertices) {
        bool have_span = true;
        for (std::uint64_t n = 0; n < count; ++n) {
            const float denominator = sums[point_floats - 1];
            have_span &= !(denominator <= eps && denominator >= -eps);
            Lanes::store_scaled(sums, 1 / denominator, parameters[n], vertices);
            vertices[8] = v;
            sums += point_floats;
            vertices += vertex_floats;
        }
        return have_span;
    }

  private:
    using factors_t = typename Lanes::factors_t;

    template <std::size_t step>
    static void sum_in_steps(const sample_terms_t& terms, const sample_stretch_t& stretch, float* sums) {
        if (terms.columns_differ)
            sum_stretch<step, true>(terms, stretch, sums);
        else
            sum_stretch<step, false>(terms, stretch, sums);
    }

    /// Sums wait for the one before; those of four samples fill the time.
    template <std::size_t step, bool columns_differ>
    static void sum_stretch(const sample_terms_t& terms, const sample_stretch_t& stretch, float* sums) {
        constexpr std::uint64_t together = 4;
        std::uint64_t sample = stretch.first_sample;
        for (; sample + together <= stretch.last_sample; sample += together) {
            sum_samples<step, columns_differ>(terms, stretch, sample, sums,
                                              std::make_index_sequence<together>());
            sums += together * point_floats;
        }
        for (; sample < stretch.last_sample; ++sample) {
            sum_samples<step, columns_differ>(terms, stretch, sample, sums, std::index_sequence<0>());
            sums += point_floats;
        }
    }

    template <std::size_t step, bool columns_differ, std::size_t... n>
    [[gnu::always_inline]] static inline void sum_samples(const sample_terms_t& terms,
                                                          const sample_stretch_t& stretch,
                                                          std::uint64_t sample, float* sums,
                                                          std::index_sequence<n...> samples) {
        Lanes lanes[sizeof...(n)]{};
        const basis_run_t* const runs = terms.runs + sample;
        if (!terms.rows_differ && ((runs[n].count <= step) && ...))
            add_short_runs<step, columns_differ>(lanes, terms, stretch, runs, samples);
        else
            add_runs<step, columns_differ>(lanes, terms, stretch, runs, samples);
        (lanes[n].store(sums + n * point_floats), ...);
    }

    /// Where all rows have the same knots and one step takes all terms of a row, the functions along the row
    /// stay in registers.
    template <std::size_t step, bool columns_differ, std::size_t... n>
    [[gnu::always_inline]] static inline void add_short_runs(Lanes* lanes, const sample_terms_t& terms,
                                                             const sample_stretch_t& stretch,
                                                             const basis_run_t* runs,
                                                             std::index_sequence<n...> /*samples*/) {
        const factors_t row_factors[]{Lanes::load(terms.row_values + runs[n].values)...};
        const std::uint64_t firsts[]{runs[n].first...};
        for (std::uint64_t j = stretch.first_row; j < stretch.last_row; ++j) {
            const float* const weights = terms.weights + j * terms.columns;
            const float* const points = terms.points + j * terms.columns * point_floats;
            const float* const column_values = values_of_row<columns_differ>(terms, j);
            (add_step<step>(lanes[n],
                            row_factors[n] * Lanes::load(weights + firsts[n]) *
                                column_factors<columns_differ>(column_values, firsts[n]),
                            points + firsts[n] * point_floats),
             ...);
        }
    }

    template <std::size_t step, bool columns_differ, std::size_t... n>
    [[gnu::always_inline]] static inline void add_runs(Lanes* lanes, const sample_terms_t& terms,
                                                       const sample_stretch_t& stretch,
                                                       const basis_run_t* runs,
                                                       std::index_sequence<n...> /*samples*/) {
        for (std::uint64_t j = stretch.first_row; j < stretch.last_row; ++j) {
            const basis_run_t* const own = runs + terms.kinds[j] * terms.samples;
            const float* const column_values = values_of_row<columns_differ>(terms, j);
            (add_run<step, columns_differ>(lanes[n], terms, own[n], j * terms.columns, column_values), ...);
        }
    }

    template <std::size_t step, bool columns_differ>
    [[gnu::always_inline]] static inline void add_run(Lanes& sum, const sample_terms_t& terms,
                                                      const basis_run_t& run, std::uint64_t row,
                                                      const float* column_values) {
        const float* const row_values = terms.row_values + run.values;
        const float* const weights = terms.weights + row + run.first;
        const float* const points = terms.points + (row + run.first) * point_floats;
        std::uint64_t n = 0;
        do {
            add_step<step>(sum,
                           Lanes::load(row_values + n) * Lanes::load(weights + n) *
                               column_factors<columns_differ>(column_values, run.first + n),
                           points + n * point_floats);
            n += step;
        } while (n < run.count);
    }

    template <std::size_t step>
    [[gnu::always_inline]] static inline void add_step(Lanes& sum, factors_t factors, const float* points) {
        add_points(sum, Lanes::spread(factors), points, std::make_index_sequence<step>());
    }

    template <class Spread, std::size_t... n>
    [[gnu::always_inline]] static inline void add_points(Lanes& sum, Spread factors, const float* points,
                                                         std::index_sequence<n...> /*terms*/) {
        (sum.template add<n>(factors, points + n * point_floats), ...);
    }

    template <bool columns_differ>
    [[gnu::always_inline]] static inline const float* values_of_row(const sample_terms_t& terms,
                                                                    std::uint64_t j) {
        return terms.column_values + (j - terms.first_row) * (columns_differ ? terms.columns : 1);
    }

    template <bool columns_differ>
    [[gnu::always_inline]] static inline factors_t column_factors(const float* values, std::uint64_t column) {
        return columns_differ ? Lanes::load(values + column) : Lanes::repeat(values);
    }

    /// A fixed order, when it is not 0, is the stretch's own: it lets the compiler unroll the loops.
    template <std::uint64_t fixed_order>
    static void evaluate_samples(const basis_stretch_t& stretch) {
        const std::uint64_t order = fixed_order == 0 ? stretch.order : fixed_order;
        for (std::uint64_t sample = 0; sample < stretch.count; sample += width)
            evaluate_samples_from(stretch, sample, order);
    }

    /// Evaluates `width` samples, of which those behind the last one are copies of it.
    [[gnu::always_inline]] static inline void evaluate_samples_from(const basis_stretch_t& stretch,
                                                                    std::uint64_t first,
                                                                    std::uint64_t order) {
        constexpr auto lanes = std::make_index_sequence<width>();
        const float* parameters[width];
        const float* own_knots[width];
        for (std::uint64_t lane = 0; lane < width; ++lane) {
            const std::uint64_t sample = first + lane < stretch.count ? first + lane : stretch.count - 1;
            parameters[lane] = stretch.parameters + sample;
            own_knots[lane] = stretch.knots + stretch.intervals[sample] + 2 - order;
        }
        // The knots on which functions with a part in the interval rest, but for the outermost two.
        numbers_t knots[2 * highest_kernel_order - 2];
        for (std::uint64_t n = 0; n < 2 * order - 2; ++n)
            knots[n] = gather(own_knots, n, lanes);
        numbers_t values[highest_kernel_order];
        raise_orders(order, knots, gather(parameters, 0, lanes), values);
        for (std::uint64_t lane = 0; lane < width && first + lane < stretch.count; ++lane) {
            for (std::uint64_t n = 0; n < order; ++n)
                stretch.values[(first + lane) * stretch.stride + n] = values[n][lane];
        }
    }

    /// Number n of each list.
    template <std::size_t... lane>
    [[gnu::always_inline]] static inline numbers_t gather(const float* const* lists, std::uint64_t n,
                                                          std::index_sequence<lane...> /*lanes*/) {
        return numbers_t{lists[lane][n]...};
    }

    /// From order 1, in which the function of the interval alone is not 0, up to `order`.
    [[gnu::always_inline]] static inline void raise_orders(std::uint64_t order, const numbers_t* knots,
                                                           numbers_t parameters, numbers_t* values) {
        const numbers_t zero{};
        values[order - 1] = zero + 1.0F;
        for (std::uint64_t k = 2; k <= order; ++k) {
            numbers_t rising = zero;
            for (std::uint64_t n = order - k + 1; n < order; ++n) {
                const numbers_t value = values[n];
                const numbers_t low = knots[n - 1];
                const numbers_t high = knots[n + k - 2];
                const numbers_t denominator = high - low;
                const auto is_scaled = (value != zero) & (denominator != zero);
                const numbers_t next_rising = value * (parameters - low) / denominator;
                const numbers_t falling = value * (high - parameters) / denominator;
                values[n - 1] = rising + (is_scaled ? falling : value);
                rising = is_scaled ? next_rising : value;
            }
            values[order - 1] = rising + zero;
        }
    }
};

}  // namespace ulk3d
