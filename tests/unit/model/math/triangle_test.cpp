#include "model/math/triangle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <utility>

#include "model/math/matrices.h"
#include "model/math/vectors.h"
#include "near.h"

namespace {

using namespace ulk3d;
using ulk_test::near_to;
using ulk_test::values;

const float pi = std::acos(-1.0F);

// Sides 3 (p0p1), 5 (p1p2), 4 (p2p0), at height 2.
const pos3 p0{0, 0, 2};
const pos3 p1{3, 0, 2};
const pos3 p2{0, 4, 2};

TEST(Triangle, LiesInMemoryAs55Floats) {
    EXPECT_EQ(offsetof(triangle_t, to_plane), 0U);
    EXPECT_EQ(offsetof(triangle_t, plane), 64U);
    EXPECT_EQ(offsetof(triangle_t, edges), 80U);
    EXPECT_EQ(sizeof(triangle_t::edge_t), 16U);
    EXPECT_EQ(offsetof(triangle_t, points), 128U);
    EXPECT_EQ(sizeof(triangle_t::corner_t), 16U);
    EXPECT_EQ(offsetof(triangle_t, lengths), 176U);
    EXPECT_EQ(offsetof(triangle_t, angles), 192U);
    EXPECT_EQ(offsetof(triangle_t, altitudes), 208U);
    EXPECT_EQ(sizeof(triangle_t), 220U);
}

TEST(Triangle, EdgesAreFilledUpWithZeroAndPointsWithOne) {
    const triangle_t t(p0, p1, p2);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(t.edges[i].zero, 0);
        EXPECT_EQ(t.points[i].one, 1);
    }
}

TEST(Triangle, KeepsItsPoints) {
    const triangle_t t(p0, p1, p2);
    EXPECT_EQ(t.points[0].point, p0);
    EXPECT_EQ(t.points[1].point, p1);
    EXPECT_EQ(t.points[2].point, p2);
}

TEST(Triangle, LengthsStandOppositeToTheirCorners) {
    EXPECT_EQ(triangle_t(p0, p1, p2).lengths, (std::array<float, 3>{5, 4, 3}));
}

TEST(Triangle, AnglesAreThoseAtTheCorners) {
    EXPECT_THAT(values(triangle_t(p0, p1, p2).angles),
                near_to({pi / 2, std::atan2(4.0F, 3.0F), std::atan2(3.0F, 4.0F)}, 1e-6F));
}

TEST(Triangle, ObtuseAngleIsFoldedBelowTheRightAngle) {
    // 120 degrees at the first corner, 30 at the others.
    const triangle_t t({0, 0, 0}, {1, 0, 0}, {-0.5F, std::sqrt(0.75F), 0});
    EXPECT_THAT(values(t.angles), near_to({pi / 3, pi / 6, pi / 6}, 1e-6F));
}

TEST(Triangle, AltitudesStandOnTheirSides) {
    EXPECT_THAT(values(triangle_t(p0, p1, p2).altitudes), near_to({2.4F, 3, 4}, 1e-5F));
    // The folded angle has the same sine.
    const float h = std::sqrt(0.75F);
    EXPECT_THAT(values(triangle_t({0, 0, 0}, {1, 0, 0}, {-0.5F, h, 0}).altitudes),
                near_to({0.5F, h, h}, 1e-6F));
}

TEST(Triangle, AnglesOfThinTrianglesAreNumbers) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> number(-1, 1);
    for (int i = 0; i < 1000; ++i) {
        const pos3 a{number(random), number(random), number(random)};
        const dir3 along{number(random), number(random), number(random)};
        for (const float angle : triangle_t(a, a + along, a + along * 0.3F).angles) {
            EXPECT_GE(angle, 0);
            EXPECT_LE(angle, pi / 2);
        }
    }
}

TEST(Triangle, PlaneHasAUnitNormal) {
    EXPECT_EQ(triangle_t(p0, p1, p2).plane, (surface{0, 0, 1, -2}));
    EXPECT_EQ(triangle_t(p0, p2, p1).plane, (surface{0, 0, -1, 2}));
    const float third = 1 / std::sqrt(3.0F);
    EXPECT_THAT(values(triangle_t({1, 0, 0}, {0, 1, 0}, {0, 0, 1}).plane),
                near_to({third, third, third, -third}, 1e-6F));
}

TEST(Triangle, ToPlaneTurnsTheNormalUp) {
    EXPECT_EQ(triangle_t(p0, p1, p2).to_plane, mtx_identity);
    const triangle_t t({1, 0, 0}, {0, 1, 0}, {0, 0, 1});
    const float third = 1 / std::sqrt(3.0F);
    EXPECT_THAT(values(transform_point({third, third, third}, t.to_plane)), near_to({0, 0, 1}));
}

TEST(Triangle, EdgeLinesOfLevelPoints) {
    const triangle_t t(p0, p1, p2);
    EXPECT_EQ(t.edges[0].line, (line2d{0, 3, 0}));
    EXPECT_EQ(t.edges[1].line, (line2d{-4, -3, 12}));
    EXPECT_EQ(t.edges[2].line, (line2d{4, 0, 0}));
}

TEST(Triangle, EdgeLinesArePositiveInsideWhicheverWayItFaces) {
    std::mt19937 random(8);
    std::uniform_real_distribution<float> number(-1, 1);
    for (int i = 0; i < 500; ++i) {
        const pos3 a{number(random), number(random), number(random)};
        const pos3 b{number(random), number(random), number(random)};
        const pos3 c{number(random), number(random), number(random)};
        if (length(face_normal(a, b, c)) < 0.05F)
            continue;
        const triangle_t t(a, b, c);
        const pos3 centre = transform_point((a + b + c) / 3, t.to_plane);
        for (const auto& e : t.edges)
            EXPECT_GT(line_value(e.line, centre.x, centre.y), 0);
    }
}

TEST(Triangle, ThatFacesExactlyDownIsTurnedHalfRoundAboutX) {
    const triangle_t t(p0, p2, p1);
    const mtx3w half_round{{1, 0, 0, 0, 0, -1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1}};
    EXPECT_THAT(values(t.to_plane), near_to(values(half_round)));
    const pos3 inside = transform_point({1, 1, 2}, t.to_plane);
    for (const auto& e : t.edges)
        EXPECT_GT(line_value(e.line, inside.x, inside.y), 0);
}

TEST(Triangle, WithoutAreaHasNoPlane) {
    const triangle_t t({1, 1, 1}, {1, 1, 1}, {1, 1, 1});
    EXPECT_THAT(values(t.plane), near_to({0, 0, 0, 0}, 0));
    EXPECT_EQ(t.to_plane, mtx_identity);
    for (const float angle : t.angles)
        EXPECT_TRUE(std::isnan(angle));
}

TEST(Triangle, PrintsInSixLines) {
    triangle_t t;
    t.plane = {1, 2, 3, 4};
    t.to_plane = mtx_identity;
    for (std::size_t i = 0; i < 3; ++i) {
        const auto n = static_cast<float>(i);
        t.edges[i].line = {n, n + 0.25F, n + 0.5F};
        t.points[i].point = {n + 3, n + 4, n + 5};
    }
    t.lengths = {3, 4, 5};
    t.angles = {0.25F, 0.5F, 0.75F};
    t.altitudes = {7, 8, 9};
    std::ostringstream os;
    os << std::scientific << t;
    EXPECT_EQ(os.str(),
              "s: surface(1.000000, 2.000000, 3.000000, 4.000000), "
              "mtx3w(\t1.000000, 0.000000, 0.000000, 0.000000,\n"
              "\t0.000000, 1.000000, 0.000000, 0.000000,\n"
              "\t0.000000, 0.000000, 1.000000, 0.000000,\n"
              "\t0.000000, 0.000000, 0.000000, 1.000000)\n"
              "l: line2d(0.000000, 0.250000, 0.500000), line2d(1.000000, 1.250000, 1.500000), "
              "line2d(2.000000, 2.250000, 2.500000)\n"
              "p: pos3(3.000000, 4.000000, 5.000000), pos3(4.000000, 5.000000, 6.000000), "
              "pos3(5.000000, 6.000000, 7.000000)\n"
              "3.000000, 4.000000, 5.000000\n"
              "0.250000, 0.500000, 0.750000\n"
              "7.000000, 8.000000, 9.000000\n");
    EXPECT_EQ(os.flags() & std::ios_base::floatfield, std::ios_base::scientific);
}

struct crossing_case_t {
    const char* name;
    pos3 a, b;
    bool crosses;
};

class TriangleCrossing : public testing::TestWithParam<crossing_case_t> {};

TEST_P(TriangleCrossing, OfALevelTriangle) {
    const crossing_case_t& c = GetParam();
    float t = 0;
    pos3 point;
    EXPECT_EQ(triangle_crossing(triangle_t(p0, p1, p2), t, point, c.a, c.b), c.crosses);
}

TEST_P(TriangleCrossing, IsTheSameOfTheReversedTriangle) {
    const crossing_case_t& c = GetParam();
    float t = 0;
    pos3 point;
    EXPECT_EQ(triangle_crossing(triangle_t(p0, p2, p1), t, point, c.a, c.b), c.crosses);
}

INSTANTIATE_TEST_SUITE_P(
    Table, TriangleCrossing,
    testing::Values(crossing_case_t{"downward through the middle", {1, 1, 3}, {1, 1, 1}, true},
                    crossing_case_t{"upward through the middle", {1, 1, 1}, {1, 1, 3}, true},
                    crossing_case_t{"slanting", {0.5F, 0.5F, 5}, {1.5F, 0.5F, 0}, true},
                    crossing_case_t{"both ends above", {1, 1, 3}, {1, 1, 4}, false},
                    crossing_case_t{"both ends below", {1, 1, 1}, {1, 1, 0}, false},
                    crossing_case_t{"an end on the plane", {1, 1, 2}, {1, 1, 1}, false},
                    crossing_case_t{
                        "an end within the tolerance above", {1, 1, 2 + eps / 2}, {1, 1, 1}, false},
                    crossing_case_t{"in the plane", {-1, 1, 2}, {4, 1, 2}, false},
                    crossing_case_t{"beyond the first side", {1, -0.001F, 3}, {1, -0.001F, 1}, false},
                    crossing_case_t{"beyond the second side", {2, 2, 3}, {2, 2, 1}, false},
                    crossing_case_t{"beyond the third side", {-0.001F, 1, 3}, {-0.001F, 1, 1}, false}),
    [](const auto& test) {
        std::string name = test.param.name;
        std::replace(name.begin(), name.end(), ' ', '_');
        return name;
    });

TEST(TriangleCrossingPoint, IsWhereTheSegmentMeetsThePlane) {
    float t = 0;
    pos3 point;
    ASSERT_TRUE(triangle_crossing(triangle_t(p0, p1, p2), t, point, {0.5F, 1, 3}, {1.5F, 1, -1}));
    EXPECT_EQ(t, 0.25F);
    EXPECT_EQ(point, (pos3{0.75F, 1, 2}));
}

TEST(TriangleCrossingPoint, StaysWhenThePlaneIsNotPassed) {
    float t = 7;
    pos3 point{7, 8, 9};
    EXPECT_FALSE(triangle_crossing(triangle_t(p0, p1, p2), t, point, {1, 1, 3}, {1, 1, 4}));
    EXPECT_EQ(t, 7);
    EXPECT_EQ(point, (pos3{7, 8, 9}));
}

TEST(TriangleCrossingOutline, CountsSidesAndCornersAsInside) {
    const triangle_t triangle(p0, p1, p2);
    float t = 0;
    pos3 point;
    for (const auto& [x, y] : {std::pair{1.0F, 0.0F}, {0.0F, 1.0F}, {1.5F, 2.0F}, {0.0F, 0.0F}, {3.0F, 0.0F}})
        EXPECT_TRUE(triangle_crossing(triangle, t, point, {x, y, 3}, {x, y, 1})) << x << ' ' << y;
}

TEST(TriangleCrossingOutline, HasNoTolerance) {
    const triangle_t triangle(p0, p1, p2);
    float t = 0;
    pos3 point;
    const float outside = -std::numeric_limits<float>::min();
    EXPECT_FALSE(triangle_crossing(triangle, t, point, {1, outside, 3}, {1, outside, 1}));
}

TEST(TriangleCrossingAnywhere, AgreesWithTheSignsOfVolumes) {
    std::mt19937 random(9);
    std::uniform_real_distribution<float> number(-1, 1);
    const auto any_point = [&] { return pos3{number(random), number(random), number(random)}; };
    int crossings = 0;
    for (int i = 0; i < 3000; ++i) {
        const pos3 a = any_point(), b = any_point(), c = any_point(), from = any_point(), to = any_point();
        const float sides = det4p(a, b, c, from) * det4p(a, b, c, to);
        const float v0 = det4p(from, to, a, b), v1 = det4p(from, to, b, c), v2 = det4p(from, to, c, a);
        const float closest = std::min({std::fabs(v0), std::fabs(v1), std::fabs(v2)});
        // Too near to a side or to the plane to be called by rounded volumes.
        if (closest < 1e-2F || std::fabs(sides) < 1e-3F)
            continue;
        const bool expected = sides < 0 && (v0 > 0) == (v1 > 0) && (v1 > 0) == (v2 > 0);
        float t = 0;
        pos3 point;
        EXPECT_EQ(triangle_crossing(triangle_t(a, b, c), t, point, from, to), expected);
        crossings += expected ? 1 : 0;
    }
    EXPECT_GT(crossings, 50);
}

}  // namespace
