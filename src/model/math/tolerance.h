#pragma once

#include <cmath>

namespace ulk3d {

/// The one tolerance of all comparisons in the model code.
inline constexpr float eps = 2e-5F;

/// |a - b| <= eps
inline bool f_eq(float a, float b) {
    return std::fabs(a - b) <= eps;
}

/// a is below b by more than the tolerance.
inline bool f_lt(float a, float b) {
    return a - b < -eps;
}

/// a is above b by more than the tolerance.
inline bool f_gt(float a, float b) {
    return a - b > eps;
}

/// a is below b, or above it by less than the tolerance.
inline bool f_le(float a, float b) {
    return a - b < eps;
}

/// a is above b, or below it by less than the tolerance.
inline bool f_ge(float a, float b) {
    return a - b > -eps;
}

/// All three pairs are `f_eq`.
inline bool f_eq3(float a, float b, float c) {
    return f_eq(a, b) && f_eq(b, c) && f_eq(c, a);
}

}  // namespace ulk3d
