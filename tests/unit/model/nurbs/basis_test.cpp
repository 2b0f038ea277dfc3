#include "model/nurbs/basis.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "support/plain_nurbs.h"

namespace {

using ulk3d::basis;
using ulk3d::basis_run;
using ulk3d::knot_view_t;
using ulk_test::plain_basis;
using ulk_test::same_bits;

constexpr float inf = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

struct knots_t {
    const char* name;
    std::vector<float> values;
};

/// Knot vectors of any kind that a file can hold.
std::vector<knots_t> knot_vectors() {
    std::vector<knots_t> result{
        {"clamped", {0, 0, 0, 0, 0.25F, 0.5F, 0.75F, 1, 1, 1, 1, 1, 1}},
        {"even", {-0.5F, -0.25F, 0, 0.1F, 0.2F, 0.3F, 0.5F, 0.7F, 0.8F, 1, 1.25F, 1.5F, 2}},
        {"repeated inside", {0, 0, 0, 0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 1, 1, 1, 1}},
        {"all equal", std::vector<float>(13, 0.5F)},
        {"all zero", std::vector<float>(13, 0.0F)},
        {"descending", {1, 0.9F, 0.8F, 0.7F, 0.6F, 0.5F, 0.4F, 0.3F, 0.2F, 0.1F, 0, -1, -2}},
        {"zigzag", {0, 1, 0, 1, 0.5F, 1, 0, 1, 0, 0.75F, 0.25F, 1, 0}},
        {"one not-a-number", {0, 0, 0, 0, 0.25F, nan, 0.75F, 1, 1, 1, 1, 1, 1}},
        {"not-a-number at the ends", {nan, 0, 0, 0, 0.25F, 0.5F, 0.75F, 1, 1, 1, 1, 1, nan}},
        {"infinities", {-inf, -inf, 0, 0, 0.25F, 0.5F, 0.75F, 1, inf, inf, inf, inf, inf}},
        {"huge", {-3e38F, -3e38F, -1e38F, 0, 0.5F, 0.5F, 1e38F, 2e38F, 3e38F, 3e38F, 3e38F, 3e38F, 3e38F}},
        {"tiny", {0, 1e-45F, 1e-44F, 1e-40F, 1e-38F, 1e-30F, 0.5F, 0.5F, 0.50000006F, 1, 1, 1, 1}},
        {"zeros of both signs", {-0.0F, 0, -0.0F, 0, -0.0F, 0.5F, 0.5F, 1, 1, 1, 1, 1, 1}},
    };
    std::mt19937 random(7);
    for (int n = 0; n < 40; ++n) {
        knots_t knots{"random", std::vector<float>(13)};
        for (float& knot : knots.values)
            knot = static_cast<float>(random() % 9U) * 0.125F;
        if (n % 2 == 0)
            std::sort(knots.values.begin(), knots.values.end());
        result.push_back(knots);
    }
    return result;
}

const std::vector<float> parameters{0,    0.1F,  0.125F, 0.25F, 0.3F,   0.5F,  0.6F,    0.75F, 0.9F, 1.0F,
                                    1.5F, -0.5F, -3.0F,  5.0F,  1e-44F, -0.0F, 1.5e38F, inf,   -inf, nan};

std::string place(const knots_t& knots, std::uint64_t i, std::uint64_t order, float t) {
    return std::string(knots.name) + ", function " + std::to_string(i) + " of order " +
           std::to_string(order) + " at " + std::to_string(t);
}

TEST(Basis, EqualsThePlainRecursionToTheLastBit) {
    for (const knots_t& knots : knot_vectors()) {
        const knot_view_t view{knots.values.data()};
        for (std::uint64_t order = 1; order <= 8; ++order) {
            for (std::uint64_t i = 0; i + order < knots.values.size(); ++i) {
                for (const float t : parameters)
                    ASSERT_PRED2(static_cast<bool (*)(float, float)>(same_bits), basis(i, order, t, view),
                                 plain_basis(i, order, t, view))
                        << place(knots, i, order, t);
            }
        }
    }
}

TEST(Basis, RunHoldsEveryFunctionThatIsNotZeroAndEqualsIt) {
    for (const knots_t& knots : knot_vectors()) {
        const knot_view_t view{knots.values.data()};
        const bool ascending = ulk3d::is_ascending(knots.values.size(), view);
        for (std::uint64_t order = 1; order <= 8; ++order) {
            const std::uint64_t count = knots.values.size() - order;
            for (const float t : parameters) {
                std::vector<float> values{42};
                const ulk3d::basis_run_t run = basis_run(count, order, t, view, ascending, values);
                ASSERT_EQ(values.size(), 1 + run.count);
                ASSERT_LE(run.first + run.count, count);
                for (std::uint64_t i = 0; i < count; ++i) {
                    const bool is_in_run = i >= run.first && i - run.first < run.count;
                    const float value = is_in_run ? values[run.values + i - run.first] : 0.0F;
                    ASSERT_TRUE(same_bits(value, plain_basis(i, order, t, view)))
                        << place(knots, i, order, t) << ": " << value;
                }
            }
        }
    }
}

TEST(Basis, RunOfAscendingKnotsIsNoLongerThanTwoIntervalsReach) {
    std::vector<float> knots(1004);
    ulk_test::fill_clamped(knots, 1000, 4);
    std::vector<float> values;
    EXPECT_LE(basis_run(1000, 4, 0.3333F, {knots.data()}, true, values).count, 4U);
    EXPECT_LE(basis_run(1000, 4, knots[500], {knots.data()}, true, values).count, 5U);
}

/// The recursion with every function evaluated once: the same values where the plain one takes 2^64 steps.
float tabled_basis(std::uint64_t i, std::uint64_t order, float t, knot_view_t K) {
    std::vector<float> table(order);
    for (std::uint64_t n = 0; n < order; ++n)
        table[n] = plain_basis(i + n, 1, t, K);
    for (std::uint64_t k = 2; k <= order; ++k) {
        for (std::uint64_t n = 0; n + k <= order; ++n) {
            float a = table[n];
            float b = table[n + 1];
            const std::uint64_t p = i + n;
            if (a != 0 && K[p + k - 1] - K[p] != 0)
                a = a * (t - K[p]) / (K[p + k - 1] - K[p]);
            if (b != 0 && K[p + k] - K[p + 1] != 0)
                b = b * (K[p + k] - t) / (K[p + k] - K[p + 1]);
            table[n] = a + b;
        }
    }
    return table[0];
}

TEST(Basis, HighOrdersGiveTheRecursionsValues) {
    for (const std::uint64_t order : {9U, 16U, 17U, 64U, 200U}) {
        const std::uint64_t count = 30;
        std::vector<float> knots(count + order);
        std::mt19937 random(3);
        for (float& knot : knots)
            knot = static_cast<float>(random() % 64U) / 64;
        for (int sorted = 0; sorted < 2; ++sorted) {
            const knot_view_t view{knots.data()};
            for (const float t : parameters) {
                std::vector<float> values;
                const auto run = basis_run(count, order, t, view, sorted != 0, values);
                for (std::uint64_t i = 0; i < count; ++i) {
                    const float expected = tabled_basis(i, order, t, view);
                    const float in_run = i - run.first < run.count ? values[i - run.first] : 0.0F;
                    ASSERT_TRUE(same_bits(basis(i, order, t, view), expected))
                        << order << " " << i << " " << t;
                    ASSERT_TRUE(same_bits(in_run, expected)) << order << " " << i << " " << t;
                }
            }
            std::sort(knots.begin(), knots.end());
        }
    }
}

TEST(Basis, KnotsAreReadThroughTheStride) {
    const std::vector<float> knots{0, 0, 0.5F, 1, 1};
    std::vector<float> spread(15, nan);
    for (std::size_t n = 0; n < knots.size(); ++n)
        spread[3 * n] = knots[n];
    for (const float t : {0.0F, 0.3F, 0.5F, 0.9F, 1.0F}) {
        EXPECT_EQ(basis(1, 2, t, {spread.data(), 3}), basis(1, 2, t, {knots.data(), 1}));
    }
    EXPECT_EQ(basis(1, 2, 0.25F, {spread.data(), 3}), 0.5F);
}

TEST(Basis, OrderOneIsClosedAtBothEnds) {
    const std::vector<float> knots{0, 0.5F, 1};
    const knot_view_t view{knots.data()};
    EXPECT_EQ(basis(0, 1, 0, view), 1);
    EXPECT_EQ(basis(0, 1, 0.5F, view), 1);
    EXPECT_EQ(basis(1, 1, 0.5F, view), 1);
    EXPECT_EQ(basis(1, 1, 1, view), 1);
    EXPECT_EQ(basis(0, 1, 0.50001F, view), 0);
    EXPECT_EQ(basis(1, 1, 1.00001F, view), 0);
}

TEST(Basis, OrderOneIsZeroOnAnIntervalOfEqualKnots) {
    const std::vector<float> knots{0.5F, 0.5F};
    EXPECT_EQ(basis(0, 1, 0.5F, {knots.data()}), 0);
}

TEST(Basis, ZeroDenominatorLeavesTheTermUnscaled) {
    // At 0.25 the functions of order 2 are 0.25 and 0.75; both denominators of order 3 are 0.
    const std::vector<float> knots{0, 1, 0, 1};
    EXPECT_EQ(basis(0, 2, 0.25F, {knots.data()}), 0.25F);
    EXPECT_EQ(basis(1, 2, 0.25F, {knots.data()}), 0.75F);
    EXPECT_EQ(basis(0, 3, 0.25F, {knots.data()}), 1);
}

TEST(Basis, ProductComesBeforeTheDivision) {
    const std::vector<float> knots{0, 0, 3, 7, 7, 7};
    const float t = 1.1F;
    const float a = 1.0F * (3.0F - t) / (3.0F - 0.0F);
    EXPECT_EQ(basis(0, 2, t, {knots.data()}), a);
    const float b = a * (t - 0.0F) / (3.0F - 0.0F);
    const float c = 1.0F * (t - 0.0F) / 3.0F * (7.0F - t) / (7.0F - 0.0F);
    EXPECT_EQ(basis(0, 3, t, {knots.data()}), b + c);
}

TEST(Basis, OrderZeroIsZero) {
    const std::vector<float> knots{0, 1};
    EXPECT_EQ(basis(0, 0, 0.5F, {knots.data()}), 0);
    std::vector<float> values;
    EXPECT_EQ(basis_run(2, 0, 0.5F, {knots.data()}, true, values).count, 0U);
    EXPECT_TRUE(values.empty());
}

TEST(Basis, AscendingKnotsHaveNoStepDownAndNoNotANumber) {
    const auto ascending = [](std::vector<float> knots) {
        return ulk3d::is_ascending(knots.size(), {knots.data()});
    };
    EXPECT_TRUE(ascending({}));
    EXPECT_TRUE(ascending({1}));
    EXPECT_TRUE(ascending({-inf, 0, 0, 1, inf}));
    EXPECT_FALSE(ascending({0, 1, 0.5F}));
    EXPECT_FALSE(ascending({nan}));
    EXPECT_FALSE(ascending({nan, 1}));
    EXPECT_FALSE(ascending({0, nan}));
}

}  // namespace
