#include "model/nurbs/nurbs_evaluate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iostream>
#include <numeric>

#include "model/math/tolerance.h"
#include "support/captured_stream.h"
#include "support/plain_nurbs.h"

namespace {

using ulk3d::control_point_t;
using ulk_test::captured_stream;
using ulk_test::net_t;
using ulk_test::same_bits;

/// 3 columns by 2 rows, order 2 both ways, whose knots end below 1 and start above 0. Each point tells its
/// column and row, and each column and row of the table has knots of its own.
net_t net_that_ends_early() {
    net_t net(3, 2, 2, 2);
    for (std::uint64_t j = 0; j < 2; ++j) {
        for (std::uint64_t i = 0; i < 3; ++i) {
            net.weight.row(j)[i] = 1.0F + static_cast<float>(i) + 2.0F * static_cast<float>(j);
            const auto x = static_cast<float>(i);
            const auto y = static_cast<float>(j);
            net.points.row(j)[i] = {{x, y, x + y}, {x, y, 0.5F, 1}};
        }
    }
    const std::vector<std::vector<float>> rows{{0.1F, 0.1F, 0.5F, 0.9F, 0.9F},
                                               {0.2F, 0.2F, 0.4F, 0.8F, 0.8F}};
    for (std::uint64_t j = 0; j < 2; ++j)
        std::copy(rows[j].begin(), rows[j].end(), net.knot1.row(j).begin());
    const std::vector<std::vector<float>> columns{
        {0.1F, 0.1F, 0.9F, 0.9F}, {0.2F, 0.2F, 0.8F, 0.8F}, {0.3F, 0.3F, 0.7F, 0.7F}};
    for (std::uint64_t i = 0; i < 3; ++i)
        std::copy(columns[i].begin(), columns[i].end(), net.knot2.row(i).begin());
    return net;
}

control_point_t scaled(const control_point_t& point, float scale) {
    auto floats = std::bit_cast<ulk_test::seven_floats>(point);
    for (float& value : floats)
        value *= scale;
    return std::bit_cast<control_point_t>(floats);
}

control_point_t weighted_mean(const std::vector<std::pair<float, control_point_t>>& terms) {
    ulk_test::seven_floats sums{};
    float denominator = 0;
    for (const auto& [factor, point] : terms) {
        const auto floats = std::bit_cast<ulk_test::seven_floats>(point);
        for (std::size_t n = 0; n < 7; ++n)
            sums[n] += factor * floats[n];
        denominator += factor;
    }
    return scaled(std::bit_cast<control_point_t>(sums), 1 / denominator);
}

TEST(NurbsSurface, ClampedBilinearPatchReachesItsCorners) {
    const net_t net = ulk_test::random_net(2, 2, 2, 2, false);
    EXPECT_EQ(net.knot1.row(0)[0], 0);
    EXPECT_EQ(net.knot1.row(0)[3], 1);
    for (const float u : {0.0F, 1.0F}) {
        for (const float v : {0.0F, 1.0F}) {
            const std::uint64_t row = v == 0 ? 0 : 1;
            const std::uint64_t column = u == 0 ? 0 : 1;
            const auto sums = ulk_test::plain_sums(net, u, v, ulk3d::basis);
            EXPECT_EQ(sums[7], net.weight.row(row)[column]);
            const float weight = net.weight.row(row)[column];
            EXPECT_TRUE(same_bits(net.surface(u, v),
                                  scaled(scaled(net.points.row(row)[column], weight), 1 / weight)));
        }
    }
}

TEST(NurbsSurface, BilinearPatchOfEqualWeightsIsTheBilinearMean) {
    net_t net = ulk_test::random_net(2, 2, 2, 2, false);
    std::fill(net.weight.data.begin(), net.weight.data.end(), 1.0F);
    net.points.row(0)[0] = {{0, 0, 0}, {1, 0, 0, 1}};
    net.points.row(0)[1] = {{4, 0, 0}, {0, 1, 0, 1}};
    net.points.row(1)[0] = {{0, 8, 0}, {0, 0, 1, 1}};
    net.points.row(1)[1] = {{4, 8, 16}, {1, 1, 1, 1}};
    const control_point_t expected{{1, 4, 2}, {0.5F, 0.25F, 0.5F, 1}};
    EXPECT_EQ(net.surface(0.25F, 0.5F), expected);
}

TEST(NurbsSurface, TermsAreSummedRowByRowInSinglePrecision) {
    for (const bool differ : {false, true}) {
        const net_t net = ulk_test::random_net(6, 4, 5, 3, differ);
        for (const float u : {0.0F, 0.21F, 1.0F / 3, 0.5F, 0.77F, 1.0F}) {
            for (const float v : {0.0F, 0.4F, 2.0F / 3, 1.0F}) {
                const auto expected = ulk_test::plain_mean(plain_sums(net, u, v, ulk_test::plain_basis));
                EXPECT_TRUE(same_bits(net.surface(u, v), expected)) << u << " " << v;
            }
        }
    }
}

struct exact_rule_t {
    const char* name;
    float u, v;
    std::uint64_t row, column;
};

class NurbsCornerRule : public testing::TestWithParam<exact_rule_t> {};

TEST_P(NurbsCornerRule, CornerOfAnUnreachedSpanIsTheCornerPoint) {
    const net_t net = net_that_ends_early();
    captured_stream errors(std::cerr);
    EXPECT_EQ(net.surface(GetParam().u, GetParam().v), net.points.row(GetParam().row)[GetParam().column]);
    EXPECT_EQ(errors.text(), "");
}

INSTANTIATE_TEST_SUITE_P(Corners, NurbsCornerRule,
                         testing::Values(exact_rule_t{"FirstRowFirstColumn", 0, 0, 0, 0},
                                         exact_rule_t{"LastRowFirstColumn", 0, 1, 1, 0},
                                         exact_rule_t{"LastRowLastColumn", 1, 1, 1, 2},
                                         exact_rule_t{"FirstRowLastColumn", 1, 0, 0, 2}),
                         [](const auto& one) { return std::string(one.param.name); });

TEST(NurbsSurface, LeftEdgeIsTheCurveOfTheFirstColumn) {
    const net_t net = net_that_ends_early();
    // Column 0 has knots 0.1, 0.1, 0.9, 0.9.
    const float falling = (0.9F - 0.3F) / (0.9F - 0.1F);
    const float rising = (0.3F - 0.1F) / (0.9F - 0.1F);
    const auto expected =
        weighted_mean({{falling * 1.0F, net.points.row(0)[0]}, {rising * 3.0F, net.points.row(1)[0]}});
    captured_stream errors(std::cerr);
    EXPECT_TRUE(same_bits(net.surface(0, 0.3F), expected));
    EXPECT_EQ(errors.text(), "");
}

TEST(NurbsSurface, RightEdgeIsTheCurveOfTheLastColumnOverItsOwnKnots) {
    const net_t net = net_that_ends_early();
    // Column 2 has knots 0.3, 0.3, 0.7, 0.7.
    const float falling = (0.7F - 0.4F) / (0.7F - 0.3F);
    const float rising = (0.4F - 0.3F) / (0.7F - 0.3F);
    const auto expected =
        weighted_mean({{falling * 3.0F, net.points.row(0)[2]}, {rising * 5.0F, net.points.row(1)[2]}});
    EXPECT_TRUE(same_bits(net.surface(1, 0.4F), expected));
}

TEST(NurbsSurface, LowerEdgeIsTheCurveOfTheFirstRow) {
    const net_t net = net_that_ends_early();
    // Row 0 has knots 0.1, 0.1, 0.5, 0.9, 0.9.
    const float falling = (0.5F - 0.2F) / (0.5F - 0.1F);
    const float rising = (0.2F - 0.1F) / (0.5F - 0.1F);
    const auto expected =
        weighted_mean({{falling * 1.0F, net.points.row(0)[0]}, {rising * 2.0F, net.points.row(0)[1]}});
    EXPECT_TRUE(same_bits(net.surface(0.2F, 0), expected));
}

TEST(NurbsSurface, UpperEdgeIsTheCurveOfTheLastRowOverItsOwnKnots) {
    const net_t net = net_that_ends_early();
    // Row 1 has knots 0.2, 0.2, 0.4, 0.8, 0.8; over those of row 0 the factors are others.
    const float falling = (0.4F - 0.25F) / (0.4F - 0.2F);
    const float rising = (0.25F - 0.2F) / (0.4F - 0.2F);
    const auto expected =
        weighted_mean({{falling * 3.0F, net.points.row(1)[0]}, {rising * 4.0F, net.points.row(1)[1]}});
    EXPECT_TRUE(same_bits(net.surface(0.25F, 1), expected));
}

TEST(NurbsSurface, EdgeBeyondTheCurvesSpanIsNotANumber) {
    const net_t net = net_that_ends_early();
    EXPECT_TRUE(std::isnan(net.surface(0, 0.05F).position.x));
}

TEST(NurbsSurface, OtherPlacesBeyondTheSpanAreReported) {
    const net_t net = net_that_ends_early();
    captured_stream errors(std::cerr);
    const control_point_t result = net.surface(0.953125F, 0.0625F);
    EXPECT_EQ(errors.text(), "nurbs_surface(): is not reached point reached. u=0.953125, v=0.0625\n");
    EXPECT_TRUE(std::isnan(result.position.x));
    EXPECT_TRUE(std::isnan(result.color.a));
}

TEST(NurbsSurface, ReportedParametersHaveSixDigits) {
    const net_t net = net_that_ends_early();
    captured_stream errors(std::cerr);
    net.surface(1.0F / 32, 2.0F / 3);
    EXPECT_EQ(errors.text(), "nurbs_surface(): is not reached point reached. u=0.03125, v=0.666667\n");
}

TEST(NurbsSurface, SumsAreDividedByASmallDenominatorNonetheless) {
    net_t net = ulk_test::random_net(2, 2, 2, 2, false);
    std::fill(net.weight.data.begin(), net.weight.data.end(), 1e-5F);
    const auto sums = ulk_test::plain_sums(net, 0.3F, 0.6F, ulk3d::basis);
    ASSERT_NE(sums[7], 0);
    ASSERT_TRUE(ulk3d::f_eq(sums[7], 0));
    captured_stream errors(std::cerr);
    const auto result = std::bit_cast<ulk_test::seven_floats>(net.surface(0.3F, 0.6F));
    for (std::size_t n = 0; n < 7; ++n)
        EXPECT_EQ(result[n], sums[n] / sums[7]);
    EXPECT_EQ(errors.text(), "nurbs_surface(): is not reached point reached. u=0.3, v=0.6\n");
}

TEST(NurbsSurface, InnerKnotDoublesTheSumAndStaysAffine) {
    // Order 1: the functions of both intervals are 1 at their common knot.
    net_t net(2, 1, 1, 1);
    net.knot1.data = {0, 0.5F, 1};
    net.knot2.data = {0, 1, 0, 1};
    net.weight.data = {1, 1};
    net.points.data = {{{2, 4, 6}, {0, 0, 0, 1}}, {{4, 8, 10}, {1, 1, 1, 1}}};
    EXPECT_EQ(plain_sums(net, 0.5F, 0.5F, ulk3d::basis)[7], 2);
    const control_point_t expected{{3, 6, 8}, {0.5F, 0.5F, 0.5F, 1}};
    EXPECT_EQ(net.surface(0.5F, 0.5F), expected);
}

TEST(NurbsSurface, InnerKnotOfAHigherOrderStaysAffine) {
    net_t net = ulk_test::random_net(7, 4, 7, 4, false);
    for (auto& point : net.points.data)
        point = {{3, -5, 7}, {1, 0.5F, 0.25F, 1}};
    const float knot = net.knot1.row(0)[5];
    ASSERT_GT(knot, 0);
    const control_point_t result = net.surface(knot, knot);
    EXPECT_NEAR(result.position.x, 3, 1e-5F);
    EXPECT_NEAR(result.position.y, -5, 1e-5F);
    EXPECT_NEAR(result.color.b, 0.25F, 1e-6F);
}

TEST(NurbsSurface, NetWithoutPointsHasNoEdges) {
    const net_t net(0, 2, 3, 2);
    const net_t other(3, 2, 0, 2);
    captured_stream errors(std::cerr);
    for (const float u : {0.0F, 0.5F, 1.0F}) {
        for (const float v : {0.0F, 1.0F}) {
            EXPECT_EQ(net.surface(u, v), control_point_t{});
            EXPECT_EQ(other.surface(v, u), control_point_t{});
        }
    }
    EXPECT_EQ(errors.text(), "");
}

TEST(NurbsSurface, OrderZeroHasCornersOnly) {
    net_t net = ulk_test::random_net(3, 2, 3, 2, false);
    net.order1 = 0;
    net.knot1.resize(3, 3);
    EXPECT_EQ(net.surface(1, 1), net.points.row(2)[2]);
    EXPECT_TRUE(std::isnan(net.surface(0.5F, 0).position.x));
}

TEST(NurbsCurve, IsTheRationalMeanOfItsPoints) {
    const std::vector<float> knots{0, 0, 0, 1, 1, 1};
    const std::vector<float> weights{1, 2, 1};
    const std::vector<control_point_t> points{
        {{0, 0, 0}, {1, 0, 0, 1}}, {{1, 2, 0}, {0, 1, 0, 1}}, {{2, 0, 4}, {0, 0, 1, 1}}};
    const auto result =
        ulk3d::nurbs_curve<control_point_t>(3, 3, 0.5F, {knots.data()}, {weights.data()}, {points.data()});
    const auto expected = weighted_mean({{0.25F, points[0]}, {0.5F * 2, points[1]}, {0.25F, points[2]}});
    EXPECT_TRUE(same_bits(result, expected));
}

TEST(NurbsCurve, ReadsAColumnThroughStrides) {
    const net_t net = ulk_test::random_net(4, 2, 5, 3, true);
    std::vector<float> weights;
    std::vector<control_point_t> points;
    for (std::uint64_t j = 0; j < 5; ++j) {
        weights.push_back(net.weight.row(j)[2]);
        points.push_back(net.points.row(j)[2]);
    }
    const ulk3d::knot_view_t knots{net.knot2.row(2).data()};
    const auto strided = ulk3d::nurbs_curve<control_point_t>(5, 3, 0.4F, knots, {&net.weight.row(0)[2], 4},
                                                             {&net.points.row(0)[2], 4});
    const auto packed =
        ulk3d::nurbs_curve<control_point_t>(5, 3, 0.4F, knots, {weights.data()}, {points.data()});
    EXPECT_TRUE(same_bits(strided, packed));
}

TEST(NurbsCurve, OutsideItsKnotsIsNotANumber) {
    const std::vector<float> knots{0, 0, 1, 1};
    const std::vector<float> weights{1, 1};
    const std::vector<control_point_t> points(2);
    captured_stream errors(std::cerr);
    const auto result =
        ulk3d::nurbs_curve<control_point_t>(2, 2, 2, {knots.data()}, {weights.data()}, {points.data()});
    EXPECT_TRUE(std::isnan(result.position.x));
    EXPECT_EQ(errors.text(), "");
}

}  // namespace
