#include "model/nurbs/nurbs_grid.h"

#include <gtest/gtest.h>

#include <iostream>
#include <limits>

#include "support/captured_stream.h"
#include "support/nurbs_grids.h"
#include "support/plain_nurbs.h"

namespace {

using ulk3d::vertex_t;
using ulk_test::captured_stream;
using ulk_test::expect_grid_equals_double_loop;
using ulk_test::net_t;

constexpr float inf = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

struct shape_t {
    std::uint64_t count1, order1, count2, order2;
};

class NurbsGrid : public testing::TestWithParam<shape_t> {
  protected:
    net_t net(bool different_knots) const {
        const auto [count1, order1, count2, order2] = GetParam();
        return ulk_test::random_net(count1, order1, count2, order2, different_knots, 11);
    }
};

TEST_P(NurbsGrid, EqualsTheDoubleLoopWithOneKnotVector) {
    expect_grid_equals_double_loop(net(false), 13, 9);
}

TEST_P(NurbsGrid, EqualsTheDoubleLoopWithKnotsOfItsOwnInEveryRowAndColumn) {
    expect_grid_equals_double_loop(net(true), 13, 9);
}

TEST_P(NurbsGrid, EqualsTheDoubleLoopWithRandomKnots) {
    net_t tables = net(false);
    std::mt19937 random(5);
    for (auto* table : {&tables.knot1, &tables.knot2}) {
        for (std::uint64_t row = 0; row < table->rows; ++row) {
            for (float& knot : table->row(row))
                knot = static_cast<float>(random() % 9U) / 8.0F;
            if (row % 2 == 0)
                std::sort(table->row(row).begin(), table->row(row).end());
        }
    }
    expect_grid_equals_double_loop(tables, 9, 9);
}

TEST_P(NurbsGrid, EqualsTheDoubleLoopWithZeroAndNegativeWeights) {
    net_t tables = net(true);
    for (std::size_t n = 0; n < tables.weight.data.size(); ++n)
        tables.weight.data[n] *= static_cast<float>(n % 4) - 1.0F;
    expect_grid_equals_double_loop(tables, 9, 9);
}

TEST_P(NurbsGrid, EqualsTheDoubleLoopWithOneValueThatIsNotFinite) {
    for (const float value : {inf, -inf, nan}) {
        for (const bool differ : {false, true}) {
            net_t tables = net(differ);
            tables.weight.data[tables.weight.data.size() / 2] = value;
            expect_grid_equals_double_loop(tables, 5, 5);
            tables = net(differ);
            tables.points.data.back().position.y = value;
            expect_grid_equals_double_loop(tables, 5, 5);
            tables = net(differ);
            tables.points.data.front().color.a = value;
            expect_grid_equals_double_loop(tables, 5, 5);
            tables = net(differ);
            tables.knot1.data[tables.knot1.data.size() / 2] = value;
            expect_grid_equals_double_loop(tables, 5, 5);
            tables = net(differ);
            tables.knot2.data[tables.knot2.data.size() / 2] = value;
            expect_grid_equals_double_loop(tables, 5, 5);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Shapes, NurbsGrid,
                         testing::Values(shape_t{1, 1, 1, 1}, shape_t{2, 2, 2, 2}, shape_t{5, 3, 4, 2},
                                         shape_t{8, 4, 8, 4}, shape_t{12, 1, 3, 3}, shape_t{3, 7, 2, 5},
                                         shape_t{20, 4, 2, 2}, shape_t{2, 2, 20, 4},
                                         shape_t{10, 10, 10, 10}));

TEST(NurbsGridValues, FactorThatOverflowsBeforeItsZeroIsNotANumber) {
    // With a step down in the knots of the last row a basis function is above 2. Times the largest float
    // that is infinite, and infinity times the 0 that this row has at v = 0 is not-a-number.
    net_t net(3, 3, 3, 2);
    for (std::uint64_t row = 0; row < 3; ++row) {
        ulk_test::fill_clamped(net.knot1.row(row), 3, 3);
        ulk_test::fill_clamped(net.knot2.row(row), 3, 2);
    }
    std::ranges::copy(std::vector<float>{0, 1, 0.25F, 1, 1, 1}, net.knot1.row(2).begin());
    std::ranges::fill(net.weight.data, 1.0F);
    std::ranges::fill(net.weight.row(2), std::numeric_limits<float>::max());
    for (auto& point : net.points.data)
        point = {{1, 1, 1}, {1, 1, 1, 1}};
    ASSERT_GT(ulk3d::basis(0, 3, 0.75F, {net.knot1.row(2).data()}), 2);
    ASSERT_TRUE(std::isnan(plain_sums(net, 0.75F, 0, ulk3d::basis)[7]));
    expect_grid_equals_double_loop(net, 5, 5);
}

TEST(NurbsGridValues, SpanThatEndsEarlyFollowsTheExactRules) {
    net_t net = ulk_test::random_net(4, 3, 4, 3, true);
    for (auto* table : {&net.knot1, &net.knot2}) {
        for (float& knot : table->data)
            knot = 0.1F + knot * 0.7F;
    }
    expect_grid_equals_double_loop(net, 11, 11);
}

TEST(NurbsGridValues, ColumnsWithKnotsFarApartFindTheirRows) {
    net_t net = ulk_test::random_net(6, 2, 12, 2, false);
    for (std::uint64_t i = 0; i < 6; ++i) {
        // Column i runs through its rows within its own sixth of the parameters, all before and after them
        // in one step.
        auto knots = net.knot2.row(i);
        for (std::size_t n = 2; n < 12; ++n)
            knots[n] = (static_cast<float>(i) + static_cast<float>(n) / 14.0F) / 6.0F;
    }
    expect_grid_equals_double_loop(net, 25, 25);
}

TEST(NurbsGridValues, ResolutionAboveOneTileIsSeamless) {
    expect_grid_equals_double_loop(ulk_test::random_net(3, 2, 2, 2, true), 1100, 2);
    expect_grid_equals_double_loop(ulk_test::random_net(3, 2, 2, 2, false), 3, 1030);
}

TEST(NurbsGridValues, TextureCoordinateIsTheParameter) {
    std::vector<vertex_t> grid(4 * 3);
    ulk3d::evaluate_surface(ulk_test::random_net(3, 2, 3, 2, false).view(), 4, 3, grid);
    EXPECT_EQ(grid[0].texcoord, (ulk3d::txc2{0, 0}));
    EXPECT_EQ(grid[1].texcoord, (ulk3d::txc2{1.0F / 3, 0}));
    EXPECT_EQ(grid[4 + 2].texcoord, (ulk3d::txc2{2.0F / 3, 0.5F}));
    EXPECT_EQ(grid[2 * 4 + 3].texcoord, (ulk3d::txc2{1, 1}));
}

TEST(NurbsGridValues, ResolutionOfOneHasNoParameter) {
    std::vector<vertex_t> grid(3);
    captured_stream errors(std::cerr);
    ulk3d::evaluate_surface(ulk_test::random_net(3, 2, 3, 2, false).view(), 1, 3, grid);
    for (const vertex_t& vertex : grid) {
        EXPECT_TRUE(std::isnan(vertex.texcoord.s));
        EXPECT_TRUE(std::isnan(vertex.position.x));
    }
    EXPECT_EQ(grid[1].texcoord.t, 0.5F);
}

TEST(NurbsGridValues, ResolutionOfZeroWritesNothing) {
    std::vector<vertex_t> grid(1, {{7, 7, 7}, {}, {}});
    const net_t net = ulk_test::random_net(3, 2, 3, 2, false);
    ulk3d::evaluate_surface(net.view(), 0, 3, grid);
    ulk3d::evaluate_surface(net.view(), 3, 0, grid);
    EXPECT_EQ(grid[0].position.x, 7);
}

TEST(NurbsGridValues, VerticesBeyondTheSpanAreLeftOut) {
    const net_t net = ulk_test::random_net(3, 2, 3, 2, false);
    std::vector<vertex_t> whole(9), part(10, {{7, 7, 7}, {}, {}});
    ulk3d::evaluate_surface(net.view(), 3, 3, whole);
    ulk3d::evaluate_surface(net.view(), 3, 3, std::span(part).first(5));
    for (std::size_t n = 0; n < 5; ++n)
        EXPECT_EQ(part[n], whole[n]);
    for (std::size_t n = 5; n < 10; ++n)
        EXPECT_EQ(part[n].position.x, 7);
}

TEST(NurbsGridValues, NetsWithoutPointsReadNothing) {
    std::vector<vertex_t> grid(4, {{7, 7, 7}, {}, {}});
    for (const auto& [columns, rows] : {std::pair{0U, 0U}, {0U, 3U}, {3U, 0U}}) {
        ulk3d::evaluate_surface(net_t(columns, 2, rows, 2).view(), 2, 2, grid);
        EXPECT_EQ(grid[3], (vertex_t{{}, {}, {1, 1}}));
    }
}

}  // namespace
