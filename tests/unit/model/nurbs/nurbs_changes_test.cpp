#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <limits>

#include "model/nurbs/nurbs_grid.h"
#include "model/nurbs/reached_samples.h"
#include "support/captured_stream.h"
#include "support/random_nurbs.h"

/// Evaluating what a change of points reaches gives what evaluating everything gives.
namespace {

using ulk3d::evaluate_changes;
using ulk3d::evaluate_surface;
using ulk3d::vertex_t;
using ulk_test::captured_stream;
using ulk_test::net_t;
using ulk_test::same_bits;

constexpr float inf = std::numeric_limits<float>::infinity();

struct sides_t {
    std::uint32_t columns, rows;
};

std::vector<vertex_t> empty_grid(sides_t sides) {
    return std::vector<vertex_t>(std::size_t{sides.columns} * sides.rows);
}

void move(net_t& net, std::uint64_t point) {
    net.points.data[point].position.y += 1.5F;
    net.points.data[point].color.g -= 0.25F;
}

/// Moves points of a surface that is local; false, with nothing tested, when it is not.
bool expect_same_after_move(net_t net, sides_t sides, std::span<const std::uint64_t> points,
                            const ulk3d::kernel_t& kernel) {
    const captured_stream errors(std::cerr);
    std::vector<vertex_t> part = empty_grid(sides), whole = part;
    if (!evaluate_surface(net.view(), sides.columns, sides.rows, part, kernel))
        return false;
    for (const std::uint64_t point : points)
        move(net, point);
    EXPECT_TRUE(evaluate_changes(net.view(), points, sides.columns, sides.rows, part, kernel));
    EXPECT_TRUE(evaluate_surface(net.view(), sides.columns, sides.rows, whole, kernel));
    EXPECT_TRUE(std::ranges::equal(part, whole,
                                   [](const vertex_t& a, const vertex_t& b) { return same_bits(a, b); }));
    EXPECT_EQ(errors.text(), "");
    return true;
}

class NurbsChanges : public testing::TestWithParam<std::uint32_t> {};

TEST_P(NurbsChanges, EqualTheWholeToTheLastBit) {
    ulk_test::dice_t dice(GetParam());
    constexpr std::array sides{2U, 3U, 5U, 9U, 17U, 33U, 40U};
    for (int local = 0; local < 40 && !HasFailure();) {
        const net_t net = ulk_test::random_net_of_any_kind(dice, 14);
        std::vector<std::uint64_t> points;
        for (std::uint32_t count = dice.below(4) + 1; count != 0; --count)
            points.push_back(dice.below(static_cast<std::uint32_t>(net.points.data.size())));
        const sides_t grid{sides[dice.below(sides.size())], sides[dice.below(sides.size())]};
        bool is_local = false;
        for (const ulk3d::kernel_t& kernel : ulk3d::kernels())
            is_local = expect_same_after_move(net, grid, points, kernel);
        local += is_local ? 1 : 0;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, NurbsChanges, testing::Range(0U, 8U));

TEST(NurbsChangesOf, SurfacesAboveOneTileEqualTheWhole) {
    const net_t net = ulk_test::random_net(6, 3, 6, 3, true);
    EXPECT_TRUE(
        expect_same_after_move(net, {700, 2}, std::array<std::uint64_t, 2>{14, 15}, ulk3d::best_kernel()));
    EXPECT_TRUE(
        expect_same_after_move(net, {2, 700}, std::array<std::uint64_t, 2>{8, 33}, ulk3d::best_kernel()));
}

/// The fourth point of a row of cubic pieces of length 1/17 has its share between 0 and 4/17.
TEST(NurbsChangesOf, OnePointLeaveSamplesBeyondItsKnotsAlone) {
    net_t net = ulk_test::random_net(20, 4, 20, 4, false);
    const vertex_t untouched{{7, 7, 7}, {}, {}};
    std::vector<vertex_t> grid(35 * 35, untouched);
    evaluate_changes(net.view(), std::array<std::uint64_t, 1>{3 * 20 + 3}, 35, 35, grid);
    for (std::size_t r = 0; r < 35; ++r) {
        for (std::size_t c = 0; c < 35; ++c)
            EXPECT_EQ(grid[r * 35 + c] != untouched, r <= 8 && c <= 8) << r << ", " << c;
    }
}

TEST(NurbsChangesOf, PointsFarApartLeaveWhatLiesBetweenThemAlone) {
    const net_t net = ulk_test::random_net(20, 4, 20, 4, false);
    const auto reached =
        ulk3d::reached_samples(net.view(), 35, 35, std::array<std::uint64_t, 2>{0, 20 * 20 - 1});
    ASSERT_EQ(reached.size(), 35U);
    EXPECT_EQ(reached[0].begin, 0U);
    EXPECT_EQ(reached[0].end, 3U);
    EXPECT_EQ(reached[2].size(), 3U);
    EXPECT_EQ(reached[3].size(), 0U);
    EXPECT_EQ(reached[31].size(), 0U);
    EXPECT_EQ(reached[34].begin, 32U);
    EXPECT_EQ(reached[34].end, 35U);
}

TEST(NurbsChangesOf, NothingEvaluateNothing) {
    const net_t net = ulk_test::random_net(5, 3, 5, 3, false);
    const vertex_t untouched{{7, 7, 7}, {}, {}};
    std::vector<vertex_t> grid(16, untouched);
    EXPECT_TRUE(evaluate_changes(net.view(), {}, 4, 4, grid));
    EXPECT_EQ(std::ranges::count(grid, untouched), 16);
}

/// Infinity times a function of 0 is not-a-number: such a point has a share in every sample.
TEST(NurbsChangesOf, APointToInfinityReachAllSamples) {
    net_t net = ulk_test::random_net(12, 3, 12, 3, true);
    std::vector<vertex_t> part = empty_grid({9, 9}), whole = part;
    ASSERT_TRUE(evaluate_surface(net.view(), 9, 9, part));
    net.points.data[0].position.x = inf;
    EXPECT_FALSE(evaluate_changes(net.view(), std::array<std::uint64_t, 1>{0}, 9, 9, part));
    EXPECT_FALSE(evaluate_surface(net.view(), 9, 9, whole));
    EXPECT_TRUE(std::isnan(whole[80].position.x));
    for (std::size_t n = 0; n < 81; ++n)
        EXPECT_TRUE(same_bits(part[n], whole[n])) << n;
}

TEST(NurbsChangesOf, SurfacesThatAreNotLocalAreToldApart) {
    const captured_stream errors(std::cerr);
    std::vector<vertex_t> grid = empty_grid({5, 5});
    net_t net = ulk_test::random_net(5, 3, 5, 3, false);
    EXPECT_TRUE(evaluate_surface(net.view(), 5, 5, grid));
    net.weight.data[12] = inf;
    EXPECT_FALSE(evaluate_surface(net.view(), 5, 5, grid));
    net = ulk_test::random_net(5, 3, 5, 3, false);
    for (float& knot : net.knot1.data)
        knot *= 0.5F;  // nothing reaches the right half
    EXPECT_FALSE(evaluate_surface(net.view(), 5, 5, grid));
    EXPECT_FALSE(evaluate_surface(net_t(0, 2, 0, 2).view(), 5, 5, grid));
}

}  // namespace
