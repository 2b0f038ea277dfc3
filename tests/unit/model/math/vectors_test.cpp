#include "model/math/vectors.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "near.h"

namespace {

using namespace ulk3d;
using ulk_test::near_to;
using ulk_test::values;

TEST(Vectors, OriginIsZero) {
    EXPECT_EQ(origin, (pos3{0, 0, 0}));
}

TEST(Vectors, Directions) {
    const dir3 a{1, 2, 3};
    const dir3 b{10, -20, 40};
    EXPECT_EQ(a + b, (dir3{11, -18, 43}));
    EXPECT_EQ(a - b, (dir3{-9, 22, -37}));
    EXPECT_EQ(-a, (dir3{-1, -2, -3}));
    EXPECT_EQ(a * 2, (dir3{2, 4, 6}));
    EXPECT_EQ(2 * a, (dir3{2, 4, 6}));
    EXPECT_EQ(a / 2, (dir3{0.5F, 1, 1.5F}));
    dir3 sum = a;
    sum += b;
    EXPECT_EQ(sum, a + b);
    sum -= b;
    EXPECT_EQ(sum, a);
    sum *= 3;
    EXPECT_EQ(sum, (dir3{3, 6, 9}));
}

TEST(Vectors, Positions) {
    const pos3 p{1, 2, 3};
    const dir3 v{10, 20, 40};
    EXPECT_EQ(p + v, (pos3{11, 22, 43}));
    EXPECT_EQ(p - v, (pos3{-9, -18, -37}));
    EXPECT_EQ((pos3{5, 7, 9} - p), (dir3{4, 5, 6}));
    EXPECT_EQ((p + pos3{1, 1, 2}), (pos3{2, 3, 5}));
    EXPECT_EQ(p * 2, (pos3{2, 4, 6}));
    EXPECT_EQ(2 * p, (pos3{2, 4, 6}));
    EXPECT_EQ(p / 2, (pos3{0.5F, 1, 1.5F}));
    pos3 moved = p;
    moved += v;
    EXPECT_EQ(moved, p + v);
    moved -= v;
    EXPECT_EQ(moved, p);
}

TEST(Vectors, ComponentsOfTwoPoints) {
    EXPECT_EQ(component_min({1, 5, -3}, {2, 4, -4}), (pos3{1, 4, -4}));
    EXPECT_EQ(component_max({1, 5, -3}, {2, 4, -4}), (pos3{2, 5, -3}));
}

TEST(Vectors, Conversions) {
    EXPECT_EQ(as_dir(pos3{1, 2, 3}), (dir3{1, 2, 3}));
    EXPECT_EQ(as_pos(dir3{1, 2, 3}), (pos3{1, 2, 3}));
    EXPECT_EQ(homogenize({1, 2, 3}), (vec3w{1, 2, 3, 1}));
}

TEST(Vectors, DehomogenizeDivides) {
    EXPECT_EQ(dehomogenize({2, 4, -6, 2}), (pos3{1, 2, -3}));
}

TEST(Vectors, DehomogenizeGoesThroughOneReciprocal) {
    // In f32 5 / 49 and 5 * (1 / 49) differ in the last bit.
    const float r = 1.0F / 49.0F;
    ASSERT_NE(5.0F / 49.0F, 5.0F * r);
    EXPECT_EQ(dehomogenize({5, 5, 5, 49}), (pos3{5 * r, 5 * r, 5 * r}));
}

TEST(Vectors, DehomogenizeDoesNotTestForZero) {
    const pos3 p = dehomogenize({1, -1, 0, 0});
    EXPECT_EQ(p.x, std::numeric_limits<float>::infinity());
    EXPECT_EQ(p.y, -std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isnan(p.z));
}

TEST(Vectors, EqualPositionsAreEqualOnEveryAxis) {
    const pos3 p{0, 0, 0};
    EXPECT_TRUE(f_eq(p, pos3{eps, -eps, eps}));
    EXPECT_FALSE(f_eq(p, pos3{2 * eps, 0, 0}));
    EXPECT_FALSE(f_eq(p, pos3{0, 2 * eps, 0}));
    EXPECT_FALSE(f_eq(p, pos3{0, 0, 2 * eps}));
}

TEST(Vectors, Dot) {
    EXPECT_EQ(dot(dir3{1, 2, 3}, dir3{4, -5, 6}), 12);
    EXPECT_EQ(dot(dir3{1, 2, 3}, pos3{4, -5, 6}), 12);
}

TEST(Vectors, DotAddsFromTheLeftInSinglePrecision) {
    EXPECT_EQ(dot(dir3{1e8F, 1, -1e8F}, dir3{1, 1, 1}), 0);
    EXPECT_EQ(dot(dir3{1e8F, -1e8F, 1}, dir3{1, 1, 1}), 1);
}

TEST(Vectors, Length) {
    EXPECT_EQ(length({2, -3, 6}), 7);
}

TEST(Normalize, GivesUnitLength) {
    EXPECT_THAT(values(normalize(dir3{2, -3, 6})), near_to({2 / 7.0F, -3 / 7.0F, 6 / 7.0F}, 1e-7F));
}

TEST(Normalize, DividesByTheLength) {
    // x / x is exactly 1; x times the reciprocal of x is not, for 41 and others.
    ASSERT_NE(41.0F * (1.0F / 41.0F), 1.0F);
    for (float x = 1; x < 200; ++x)
        EXPECT_EQ(normalize(dir3{x, 0, 0}), (dir3{1, 0, 0})) << x;
}

TEST(Normalize, ZeroStaysZero) {
    EXPECT_EQ(normalize(dir3{0, 0, 0}), (dir3{0, 0, 0}));
    EXPECT_EQ(normalize(vec3w{0, 0, 0, 5}), (vec3w{0, 0, 0, 0}));
}

TEST(Normalize, LengthThatUnderflowsIsZero) {
    EXPECT_EQ(normalize(dir3{1e-30F, 0, 0}), dir3{});
}

TEST(Normalize, HomogeneousFormHasNoW) {
    EXPECT_THAT(values(normalize(vec3w{0, 3, 4, 9})), near_to({0, 0.6F, 0.8F, 0}, 1e-7F));
}

TEST(Cross, IsRightHanded) {
    EXPECT_EQ(cross({1, 0, 0}, {0, 1, 0}), (dir3{0, 0, 1}));
    EXPECT_EQ(cross({0, 1, 0}, {0, 0, 1}), (dir3{1, 0, 0}));
    EXPECT_EQ(cross({0, 0, 1}, {1, 0, 0}), (dir3{0, 1, 0}));
    EXPECT_EQ(cross({1, 2, 3}, {4, 5, 6}), (dir3{-3, 6, -3}));
}

TEST(FaceNormal, OfCounterClockwiseCornersPointsAtTheViewer) {
    EXPECT_EQ(face_normal({0, 0, 5}, {2, 0, 5}, {0, 3, 5}), (dir3{0, 0, 6}));
    EXPECT_EQ(unit_face_normal({0, 0, 5}, {2, 0, 5}, {0, 3, 5}), (dir3{0, 0, 1}));
    EXPECT_EQ(unit_face_normal({0, 0, 5}, {0, 3, 5}, {2, 0, 5}), (dir3{0, 0, -1}));
}

TEST(FaceNormal, UsesTheFirstAndTheSecondSide) {
    // (b - a) x (c - b) and (b - a) x (c - a) differ by rounding once the numbers are far apart.
    const pos3 a{0.1F, 0.7F, 0.3F};
    const pos3 b{1e3F, 2.3F, 0.9F};
    const pos3 c{0.2F, 9.1F, -5e2F};
    ASSERT_NE(cross(b - a, c - b), cross(b - a, c - a));
    EXPECT_EQ(face_normal(a, b, c), cross(b - a, c - b));
}

TEST(FaceNormal, OfALineIsZero) {
    EXPECT_EQ(unit_face_normal({0, 0, 0}, {1, 1, 1}, {2, 2, 2}), dir3{});
}

TEST(Triple, IsTheThirdOnTheProductOfTheFirstTwo) {
    EXPECT_EQ(triple({1, 0, 0}, {0, 1, 0}, {0, 0, 1}), 1);
    EXPECT_EQ(triple({0, 1, 0}, {1, 0, 0}, {0, 0, 1}), -1);
    EXPECT_EQ(triple({1, 2, 3}, {4, 5, 6}, {7, 8, 10}), -3);
}

TEST(Det4p, IsTheSignedVolumeTimesSix) {
    EXPECT_EQ(det4p({1, 1, 1}, {2, 1, 1}, {1, 3, 1}, {1, 1, 4}), 6);
    EXPECT_EQ(det4p({1, 1, 1}, {1, 3, 1}, {2, 1, 1}, {1, 1, 4}), -6);
    EXPECT_EQ(det4p({0, 0, 0}, {1, 2, 3}, {4, 5, 6}, {7, 8, 10}), -3);
}

TEST(Bell, RisesFromZeroToOne) {
    EXPECT_EQ(bell(0), 0);
    EXPECT_EQ(bell(1), 1);
    EXPECT_NEAR(bell(0.5F), 0.5F, 1e-7);
    EXPECT_NEAR(bell(0.25F), (1 - std::sqrt(0.5)) / 2, 1e-7);
    EXPECT_NEAR(bell(-0.5F), 0.5F, 1e-6);
    EXPECT_NEAR(bell(2), 0, 1e-6);
}

}  // namespace
