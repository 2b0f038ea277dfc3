#include "model/nurbs/kernels/kernel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>

#include "support/nurbs_grids.h"
#include "support/random_nurbs.h"

namespace {

using ulk_test::expect_grid_equals_double_loop;
using ulk_test::net_t;

constexpr float inf = std::numeric_limits<float>::infinity();

TEST(Kernels, AreThoseThatTheMachineCanRun) {
    ASSERT_FALSE(ulk3d::kernels().empty());
    EXPECT_EQ(ulk3d::kernels().front().name, std::string_view("baseline"));
    EXPECT_EQ(&ulk3d::best_kernel(), &ulk3d::kernels().back());
#ifdef __x86_64__
    const bool has_avx2 = __builtin_cpu_supports("avx2");
    EXPECT_EQ(ulk3d::kernels().size(), has_avx2 ? 2U : 1U);
    EXPECT_EQ(ulk3d::best_kernel().name, std::string_view(has_avx2 ? "avx2" : "baseline"));
#endif
}

class RandomNets : public testing::TestWithParam<std::uint32_t> {};

TEST_P(RandomNets, GiveTheBitsOfTheDoubleLoop) {
    ulk_test::dice_t dice(GetParam());
    constexpr std::array resolutions{1U, 2U, 3U, 5U, 8U, 9U, 17U, 21U};
    for (int n = 0; n < 60; ++n) {
        SCOPED_TRACE(n);
        const net_t net = ulk_test::random_net_of_any_kind(dice, 14);
        expect_grid_equals_double_loop(net, resolutions[dice.below(resolutions.size())],
                                       resolutions[dice.below(resolutions.size())]);
        if (HasFailure())
            return;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomNets, testing::Range(0U, 8U));

class Orders : public testing::TestWithParam<std::uint64_t> {};

/// With eight intervals many samples lie on knots, where one more function than the order is not 0.
TEST_P(Orders, GiveTheBitsOfTheDoubleLoopOnKnotsAndBetween) {
    const std::uint64_t order = GetParam();
    for (const bool differ : {false, true}) {
        const net_t net = ulk_test::random_net(order + 7, order, order + 7, order, differ, 3);
        expect_grid_equals_double_loop(net, 17, 9);
        expect_grid_equals_double_loop(net, 22, 5);
        if (HasFailure())
            return;
    }
}

INSTANTIATE_TEST_SUITE_P(All, Orders, testing::Values(1, 2, 3, 4, 5, 6, 7, 8, 9, 12));

/// At u = 0.25 the second function of order 2 is so small that it is 0. As such it is not scaled; scaled it
/// would be 0 times infinity.
TEST(Kernels, LeaveAZeroAboveAnInfiniteKnotAlone) {
    net_t net = ulk_test::random_net(3, 3, 3, 2, false);
    for (std::uint64_t row = 0; row < 3; ++row)
        std::ranges::copy(std::array{-inf, -inf, -3e38F, std::nextafter(0.25F, 1.0F), 1.0F, 1.0F},
                          net.knot1.row(row).begin());
    expect_grid_equals_double_loop(net, 5, 3);
    std::vector<ulk3d::vertex_t> grid(15);
    ulk3d::evaluate_surface(net.view(), 5, 3, grid);
    EXPECT_TRUE(std::isfinite(grid[1].position.x));
}

TEST(Kernels, GiveTheBitsOfTheDoubleLoopAtHighResolutions) {
    for (const bool differ : {false, true}) {
        expect_grid_equals_double_loop(ulk_test::random_net(9, 4, 7, 3, differ), 257, 31);
        expect_grid_equals_double_loop(ulk_test::random_net(5, 2, 9, 4, differ), 6, 700);
    }
}

}  // namespace
