#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ulk3d {

/// Values that lie `stride` apart, such as a row or a column of a row-major table. Not owned.
template <typename T>
struct strided_view_t {
    const T* data = nullptr;
    std::uint64_t stride = 1;
    const T& operator[](std::uint64_t n) const { return data[n * stride]; }
};

using knot_view_t = strided_view_t<float>;

/// The B-spline basis function number `i` of `order` (degree plus one) at `t`; reads the knots i to i +
/// order.
///
/// This is the Cox-de Boor recursion with rules of its own. A function of order 1 is 1 on its interval
/// including both ends, so that two of them are 1 at an inner knot; on an interval of equal knots it is 0.
/// For higher orders
///
///     N(i, k) = a * (t - K[i]) / (K[i+k-1] - K[i])  +  b * (K[i+k] - t) / (K[i+k] - K[i+1])
///
/// with a = N(i, k-1) and b = N(i+1, k-1); a term that is 0 or has a denominator of 0 is not scaled. Knots
/// may have any values, in any order. Order 0 gives 0. The work is at most order squared.
float basis(std::uint64_t i, std::uint64_t order, float t, knot_view_t knots);

/// A run of neighbouring basis functions of one knot vector; all others are exactly +0.
struct basis_run_t {
    std::uint64_t first = 0;  ///< number of the first function
    std::uint64_t count = 0;
    std::size_t values = 0;  ///< index of the first one's value in the list that it was appended to
};

/// True when no knot is less than the one before it and none is not-a-number.
[[nodiscard]] bool is_ascending(std::uint64_t knot_count, knot_view_t knots);

/// Evaluates all basis functions 0 to count - 1 of `order` at `t`, over count + order knots: appends to
/// `values` those that can be other than 0, each equal to `basis` to the last bit.
///
/// `ascending` is the result of `is_ascending` for these knots. If true, the interval of t is found in
/// log(count) steps; otherwise all knots are examined.
basis_run_t basis_run(std::uint64_t count, std::uint64_t order, float t, knot_view_t knots, bool ascending,
                      std::vector<float>& values);

}  // namespace ulk3d
