#include "model/nurbs/kernels/kernel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <string_view>

#include "support/nurbs_grids.h"

namespace {

using ulk_test::expect_grid_equals_double_loop;
using ulk_test::net_t;

constexpr float inf = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

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

/// Small whole numbers out of a seed.
class dice_t {
  public:
    explicit dice_t(std::uint32_t seed) : engine(seed) {}
    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(engine() % limit); }

  private:
    std::mt19937 engine;
};

/// The knots that designers make, and those that a file can hold.
void fill_knots(std::span<float> knots, std::uint64_t count, std::uint64_t order, dice_t& dice) {
    ulk_test::fill_clamped(knots, count, order);
    switch (dice.below(7)) {
        case 0:  // even to the ends: the surface has no span at the borders
            for (std::size_t n = 0; n < knots.size(); ++n)
                knots[n] = static_cast<float>(n) / static_cast<float>(knots.size() - 1);
            break;
        case 1:  // repeated, many of them where samples lie
            for (float& knot : knots)
                knot = static_cast<float>(dice.below(9)) / 8;
            std::ranges::sort(knots);
            break;
        case 2:  // in any order
            for (float& knot : knots)
                knot = static_cast<float>(dice.below(9)) / 8;
            break;
        case 3:  // falling
            std::ranges::reverse(knots);
            break;
        case 4:  // odd numbers
            knots[dice.below(static_cast<std::uint32_t>(knots.size()))] =
                std::array{nan, inf, -inf, -0.0F, 3e38F, 1e-45F}[dice.below(6)];
            break;
        default:
            break;
    }
}

/// Every row and column with knots of its own, all equal, or of two kinds.
void fill_table(ulk3d::matrix_t<float>& table, std::uint64_t count, std::uint64_t order, dice_t& dice) {
    if (table.columns == 0)
        return;
    const std::uint32_t kinds = std::array{1U, 2U, 1000U}[dice.below(3)];
    for (std::uint64_t row = 0; row < table.rows; ++row) {
        if (row < kinds)
            fill_knots(table.row(row), count, order, dice);
        else
            std::ranges::copy(table.row(dice.below(kinds)), table.row(row).begin());
    }
}

std::uint64_t random_order(dice_t& dice) {
    return dice.below(12) == 0 ? 9 + dice.below(12) : 1 + dice.below(8);
}

net_t random_net(dice_t& dice, std::uint32_t largest_count) {
    const std::uint64_t order1 = random_order(dice), order2 = random_order(dice);
    const std::uint64_t count1 = 1 + dice.below(largest_count), count2 = 1 + dice.below(largest_count);
    net_t net = ulk_test::random_net(count1, order1, count2, order2, dice.below(2) != 0, dice.below(10000));
    fill_table(net.knot1, count1, order1, dice);
    fill_table(net.knot2, count2, order2, dice);
    if (dice.below(3) == 0) {
        for (float& weight : net.weight.data)
            weight *= static_cast<float>(dice.below(4)) - 1;
    }
    if (dice.below(8) == 0)
        net.points.data[dice.below(static_cast<std::uint32_t>(net.points.data.size()))].position.y = inf;
    return net;
}

class RandomNets : public testing::TestWithParam<std::uint32_t> {};

TEST_P(RandomNets, GiveTheBitsOfTheDoubleLoop) {
    dice_t dice(GetParam());
    constexpr std::array resolutions{1U, 2U, 3U, 5U, 8U, 9U, 17U, 21U};
    for (int n = 0; n < 60; ++n) {
        SCOPED_TRACE(n);
        const net_t net = random_net(dice, 14);
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
