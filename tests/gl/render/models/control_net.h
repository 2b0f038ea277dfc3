#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "model/nurbs/nurbs.h"

namespace ulk_test {

/// A NURBS model of a single row of control points. It is never evaluated, so there is nothing to evaluate
/// it into.
class control_net_t : public ulk3d::nurbs_t {
  public:
    control_net_t() : nurbs_t(nullptr, nullptr) {}

    void build(const std::vector<ulk3d::control_point_t>& net) {
        ASSERT_TRUE(allocate(net.size(), 2, 1, 2));
        std::ranges::copy(net, points.data.begin());
        ASSERT_TRUE(afterload("net"));
    }
};

}  // namespace ulk_test
