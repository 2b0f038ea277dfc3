#include "model/math/tolerance.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace ulk3d;

// Beside 0 the difference is exact, so that eps itself and its neighbours can be told apart.
const float above = std::nextafter(eps, 1.0F);
const float below = std::nextafter(eps, 0.0F);

TEST(Tolerance, EpsIsTwoHundredThousandths) {
    EXPECT_EQ(eps, 0.00002F);
}

TEST(Tolerance, EqualWithinEps) {
    EXPECT_TRUE(f_eq(1.0F, 1.00001F));
    EXPECT_FALSE(f_eq(1.0F, 1.0001F));
}

struct row_t {
    float a;
    bool eq, lt, gt, le, ge;
};

class ToleranceAgainstZero : public testing::TestWithParam<row_t> {};

TEST_P(ToleranceAgainstZero, ComparesAsTold) {
    const row_t& row = GetParam();
    EXPECT_EQ(f_eq(row.a, 0), row.eq);
    EXPECT_EQ(f_lt(row.a, 0), row.lt);
    EXPECT_EQ(f_gt(row.a, 0), row.gt);
    EXPECT_EQ(f_le(row.a, 0), row.le);
    EXPECT_EQ(f_ge(row.a, 0), row.ge);
}

// Exactly at eps a number is equal, neither above nor below, and not "at most" either.
INSTANTIATE_TEST_SUITE_P(Table, ToleranceAgainstZero,
                         testing::Values(row_t{0, true, false, false, true, true},
                                         row_t{below, true, false, false, true, true},
                                         row_t{eps, true, false, false, false, true},
                                         row_t{above, false, false, true, false, true},
                                         row_t{-below, true, false, false, true, true},
                                         row_t{-eps, true, false, false, true, false},
                                         row_t{-above, false, true, false, true, false}));

TEST(Tolerance, DifferenceIsTakenFirstMinusSecond) {
    EXPECT_TRUE(f_lt(1, 2));
    EXPECT_FALSE(f_lt(2, 1));
    EXPECT_TRUE(f_gt(2, 1));
    EXPECT_FALSE(f_gt(1, 2));
    EXPECT_TRUE(f_le(1, 2));
    EXPECT_FALSE(f_le(2, 1));
    EXPECT_TRUE(f_ge(2, 1));
    EXPECT_FALSE(f_ge(1, 2));
}

TEST(Tolerance, NotANumberComparesFalse) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(f_eq(nan, 0) || f_lt(nan, 0) || f_gt(nan, 0) || f_le(nan, 0) || f_ge(nan, 0));
}

TEST(Tolerance, ThreeAreEqualWhenAllPairsAre) {
    EXPECT_TRUE(f_eq3(0, below, eps));
    EXPECT_FALSE(f_eq3(0, -eps, eps));  // 1-2 and 1-3 are equal, 2-3 is not
    EXPECT_FALSE(f_eq3(-eps, 0, eps));  // only 1-3 is not
    EXPECT_FALSE(f_eq3(-eps, eps, 0));  // only 1-2 is not
}

}  // namespace
