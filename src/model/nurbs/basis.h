#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ulk3d {

/// Values that lie `stride` apart, a row or a column of a row-major table. Not owned.
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
/// This is the Cox-de Boor recursion with rules of its own. A function of order 1 is 1 on its interval, both
/// ends included, so at an inner knot two of them are 1; it is 0 on an interval of equal knots. Above that
///
///     N(i, k) = a * (t - K[i]) / (K[i+k-1] - K[i])  +  b * (K[i+k] - t) / (K[i+k] - K[i+1])
///
/// with a = N(i, k-1) and b = N(i+1, k-1), where a term of 0 and a term with a denominator of 0 stay
/// unscaled. Knots may have any values and any order. Order 0 gives 0. The work is at most order squared.
float basis(std::uint64_t i, std::uint64_t order, float t, knot_view_t knots);

/// Neighbouring basis functions of one knot vector; all others are exactly +0.
struct basis_run_t {
    std::uint64_t first = 0;  ///< number of the first function
    std::uint64_t count = 0;
    std::size_t values = 0;  ///< place of the first one's value in the list that it was appended to
};

/// True when no knot is below the one before it, and none is not-a-number.
bool is_ascending(std::uint64_t knot_count, knot_view_t knots);

/// All basis functions 0 to count - 1 of `order` at `t`, over count + order knots: the values of those that
/// can be other than 0 are appended to `values`, each equal to `basis` to the last bit.
///
/// `ascending` says what `is_ascending` says of the knots. It finds the interval of t in log(count) steps;
/// otherwise all knots are looked at.
basis_run_t basis_run(std::uint64_t count, std::uint64_t order, float t, knot_view_t knots, bool ascending,
                      std::vector<float>& values);

}  // namespace ulk3d
