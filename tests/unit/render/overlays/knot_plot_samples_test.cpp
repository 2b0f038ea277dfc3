#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "render/overlays/knot_plot.h"
#include "support/plain_nurbs.h"

namespace {

using ulk3d::control_point_t;
using ulk3d::knot_plot_samples;
using ulk_test::plain_basis;
using ulk_test::same_bits;

struct row_t {
    const char* name;
    std::uint64_t count, order;
    std::vector<float> knots;
};

const row_t rows[] = {
    {"bilinear", 2, 2, {0, 0, 1, 1}},
    {"order 1", 4, 1, {0, 0.25F, 0.5F, 0.75F, 1}},
    {"clamped cubic", 7, 4, {0, 0, 0, 0, 0.25F, 0.5F, 0.75F, 1, 1, 1, 1}},
    {"uniform quadratic", 5, 3, {-0.5F, -0.25F, 0, 0.25F, 0.5F, 0.75F, 1, 1.25F}},
    {"order above the count", 2, 5, {0, 0, 0.25F, 0.5F, 0.5F, 1, 1}},
    {"descending", 3, 3, {1, 0.8F, 0.6F, 0.4F, 0.2F, 0}},
    {"zigzag", 4, 3, {0, 1, 0.25F, 0.75F, 0, 1, 0.5F}},
    {"all equal", 3, 2, {0.5F, 0.5F, 0.5F, 0.5F, 0.5F}},
    {"beyond 0 to 1", 3, 2, {-100, -3, 0.5F, 7, 100}},
};

TEST(KnotPlotSamples, AreTheBasisFunctionsAtEachColumnOfPixels) {
    for (const row_t& row : rows) {
        for (const std::uint64_t width : {1U, 2U, 7U, 400U}) {
            const auto samples = knot_plot_samples(width, row.count, row.order, row.knots);
            ASSERT_EQ(samples.size(), width * row.count) << row.name;
            for (std::uint64_t function = 0; function < row.count; ++function) {
                for (std::uint64_t x = 0; x < width; ++x) {
                    const float t = static_cast<float>(x) / static_cast<float>(width);
                    const control_point_t& sample = samples[function * width + x];
                    EXPECT_EQ(sample.position.x, 2 * t - 1) << row.name << " at column " << x;
                    EXPECT_TRUE(
                        same_bits(sample.position.y, plain_basis(function, row.order, t, {row.knots.data()})))
                        << row.name << ", function " << function << " at column " << x;
                }
            }
        }
    }
}

TEST(KnotPlotSamples, AreGreyAndFlat) {
    for (const control_point_t& sample : knot_plot_samples(9, 2, 2, rows[0].knots)) {
        EXPECT_EQ(sample.color, (ulk3d::col3a{0.5F, 0.5F, 0.5F, 1}));
        EXPECT_EQ(sample.position.z, 0);
    }
}

TEST(KnotPlotSamples, OfOrderZeroAreZero) {
    const std::vector<float> knots{0, 1};
    for (const control_point_t& sample : knot_plot_samples(5, 2, 0, knots))
        EXPECT_EQ(sample.position.y, 0);
}

TEST(KnotPlotSamples, OfNothingAreNone) {
    EXPECT_TRUE(knot_plot_samples(0, 2, 2, rows[0].knots).empty());
    EXPECT_TRUE(knot_plot_samples(400, 0, 2, rows[0].knots).empty());
    EXPECT_TRUE(knot_plot_samples(400, 0, 0, {}).empty());
}

}  // namespace
