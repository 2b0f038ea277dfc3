#pragma once

#include <cmath>

namespace ulk3d {

/// The one tolerance of all compares of the model code.
inline constexpr float eps = 2e-5F;

/// |a - b| <= eps
inline bool f_eq(float a, float b) { return std::fabs(a - b) <= eps; }

}  // namespace ulk3d
