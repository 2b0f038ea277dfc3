#pragma once

#include <gmock/gmock.h>

#include <array>
#include <vector>

#include "model/math/records.h"

namespace ulk_test {

/// Values as a list, so that whole records compare in one expectation.
inline std::vector<float> values(const ulk3d::dir3& v) {
    return {v.x, v.y, v.z};
}
inline std::vector<float> values(const ulk3d::pos3& v) {
    return {v.x, v.y, v.z};
}
inline std::vector<float> values(const ulk3d::vec3w& v) {
    return {v.x, v.y, v.z, v.w};
}
inline std::vector<float> values(const ulk3d::qua& v) {
    return {v.w, v.x, v.y, v.z};
}
inline std::vector<float> values(const ulk3d::rot3& v) {
    return {v.angle, v.axis.x, v.axis.y, v.axis.z};
}
inline std::vector<float> values(const ulk3d::mtx3w& v) {
    return {v.m.begin(), v.m.end()};
}
inline std::vector<float> values(const ulk3d::surface& v) {
    return {v.a, v.b, v.c, v.d};
}
inline std::vector<float> values(const ulk3d::line2d& v) {
    return {v.a, v.b, v.c};
}
inline std::vector<float> values(const std::array<float, 3>& v) {
    return {v.begin(), v.end()};
}

/// Every value within `tolerance` of the expected one.
inline auto near_to(const std::vector<float>& expected, float tolerance = 1e-6F) {
    return testing::Pointwise(testing::FloatNear(tolerance), expected);
}

}  // namespace ulk_test
