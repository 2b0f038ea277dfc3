#include "render/overlays/grid_lines.h"

#include <gmock/gmock.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <random>

#include "model/math/matrices.h"

namespace ulk3d {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float no_number = std::numeric_limits<float>::quiet_NaN();

// --- spacing ----------------------------------------------------------------------------------------------

struct spacing_row_t {
    float extent;
    float spacing;
};

class GridSpacing : public testing::TestWithParam<spacing_row_t> {};

TEST_P(GridSpacing, IsThePowerOfFiveThatTheExtentReaches) {
    EXPECT_FLOAT_EQ(grid_spacing(GetParam().extent), GetParam().spacing) << "extent " << GetParam().extent;
}

INSTANTIATE_TEST_SUITE_P(Extents, GridSpacing,
                         testing::Values(spacing_row_t{10, 5}, spacing_row_t{4.9F, 1}, spacing_row_t{2, 1},
                                         spacing_row_t{0.99F, 0.2F}, spacing_row_t{0.21F, 0.2F},
                                         spacing_row_t{0.19F, 0.04F}, spacing_row_t{24.9F, 5},
                                         spacing_row_t{26, 25}, spacing_row_t{124, 25},
                                         spacing_row_t{126, 125}, spacing_row_t{1e6F, 390625},
                                         spacing_row_t{1e-6F, 5.12e-7F},
                                         spacing_row_t{1e30F, 2.2737368e29F}));

// log10 of these is rounded to a float and multiplied in floats; where the exact product would lie below the
// whole number, as for 0.00032 and 3125, the float one is that number.
INSTANTIATE_TEST_SUITE_P(PowersOfFive, GridSpacing,
                         testing::Values(spacing_row_t{0.0016F, 0.0016F}, spacing_row_t{0.008F, 0.008F},
                                         spacing_row_t{0.04F, 0.04F}, spacing_row_t{0.2F, 0.2F},
                                         spacing_row_t{1, 1}, spacing_row_t{5, 5}, spacing_row_t{25, 25},
                                         spacing_row_t{125, 125}, spacing_row_t{625, 625},
                                         spacing_row_t{3125, 3125}, spacing_row_t{15625, 15625}));

TEST(GridSpacingEnds, ExtentOfZeroHasASpacingOfOne) {
    EXPECT_EQ(grid_spacing(0), 1);
}

TEST(GridSpacingEnds, SpacingTooSmallForAFloatIsOne) {
    EXPECT_EQ(grid_spacing(std::numeric_limits<float>::denorm_min()), 1);
}

TEST(GridSpacingEnds, ExtentThatIsNoLengthHasNone) {
    EXPECT_TRUE(std::isnan(grid_spacing(-1)));
    EXPECT_TRUE(std::isnan(grid_spacing(no_number)));
}

// --- lines of a range -------------------------------------------------------------------------------------

struct axis_row_t {
    float start, end;
    float spacing, first, last;
    std::uint32_t count;
};

class GridAxis : public testing::TestWithParam<axis_row_t> {};

TEST_P(GridAxis, RunsOverTheMultiplesFromAtOrBelowTheStartToAtOrBelowTheEnd) {
    const axis_row_t& row = GetParam();
    const grid_axis_t axis = grid_axis(row.start, row.end);
    EXPECT_EQ(axis.start, row.start);
    EXPECT_EQ(axis.end, row.end);
    EXPECT_FLOAT_EQ(axis.spacing, row.spacing);
    EXPECT_FLOAT_EQ(axis.first, row.first);
    EXPECT_FLOAT_EQ(axis.last, row.last);
    EXPECT_EQ(axis.count, row.count);
}

INSTANTIATE_TEST_SUITE_P(
    Ranges, GridAxis,
    testing::Values(axis_row_t{-5, 5, 5, -5, 5, 3}, axis_row_t{-2.45F, 2.45F, 1, -3, 2, 6},
                    axis_row_t{-1, 1, 1, -1, 1, 3}, axis_row_t{-2, 2, 1, -2, 2, 5},
                    axis_row_t{0.5F, 2, 1, 0, 2, 3}, axis_row_t{-0.5F, 0.75F, 1, -1, 0, 2},
                    axis_row_t{-0.4F, 0.5F, 0.2F, -0.4F, 0.4F, 5}, axis_row_t{-6, 17, 5, -10, 15, 6},
                    axis_row_t{101, 107, 5, 100, 105, 2}, axis_row_t{-3, -1, 1, -3, -1, 3},
                    axis_row_t{-13, 13, 25, -25, 0, 2},
                    axis_row_t{-1e30F, 1e30F, 1.1368684e30F, -1.1368684e30F, 0, 2}));

TEST(GridAxisEnds, EmptyRangeHasTheOneLineAtOrBelowIt) {
    const grid_axis_t axis = grid_axis(2.5F, 2.5F);
    EXPECT_EQ(axis.spacing, 1);
    EXPECT_EQ(axis.first, 2);
    EXPECT_EQ(axis.count, 1U);
}

TEST(GridAxisEnds, RangeWithoutAFiniteExtentHasNoLines) {
    const std::pair<float, float> ranges[] = {
        {no_number, 1},        {0, no_number},      {no_number, no_number},
        {-infinity, infinity}, {0, infinity},       {-infinity, 0},
        {infinity, infinity},  {-FLT_MAX, FLT_MAX}, {1, -1},
    };
    for (const auto& [start, end] : ranges)
        EXPECT_EQ(grid_axis(start, end).count, 0U) << start << " to " << end;
}

TEST(GridAxisEnds, RangesHardlyWiderThanTheStepsBetweenFloatsHaveAFewLinesToo) {
    for (const float place : {0.0F, 1.0F, -1.0F, 3e7F, -1e20F, 1e38F, FLT_MIN}) {
        for (float end = std::nextafter(place, infinity); end - place < 1e37F;
             end = std::nextafter(end + (end - place) * 0.5F, infinity)) {
            const std::uint32_t count = grid_axis(place, end).count;
            EXPECT_GE(count, 1U) << place << " to " << end;
            EXPECT_LE(count, 17U) << place << " to " << end;
        }
    }
}

/// Random ranges, extents spread over powers of ten; none so close to a power of five that rounding decides.
template <class Check>
void for_random_ranges(Check check) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> exponent(-4, 6), place(-3, 3);
    for (int i = 0; i < 20000; ++i) {
        const double extent = std::pow(10.0, exponent(random));
        const double power = std::log(extent) / std::log(5.0);
        if (std::abs(power - std::round(power)) < 1e-4)
            continue;
        const double start = extent * place(random);
        check(static_cast<float>(start), static_cast<float>(start + extent));
    }
}

TEST(GridAxisProperty, HasTwoToSixLinesWhateverTheZoom) {
    std::array<int, 8> seen{};
    for_random_ranges([&](float start, float end) {
        const grid_axis_t axis = grid_axis(start, end);
        ASSERT_GE(axis.count, 2U) << start << " to " << end;
        ASSERT_LE(axis.count, 6U) << start << " to " << end;
        ++seen[axis.count];
    });
    EXPECT_THAT(std::vector<int>(seen.begin() + 2, seen.begin() + 7), testing::Each(testing::Gt(0)));
}

TEST(GridAxisProperty, SpacingIsAtMostTheExtentAndMoreThanAFifthOfIt) {
    for_random_ranges([](float start, float end) {
        const grid_axis_t axis = grid_axis(start, end);
        ASSERT_LE(axis.spacing, end - start);
        ASSERT_GT(axis.spacing * 5, end - start);
    });
}

TEST(GridAxisProperty, LinesCoverTheRangeFromAtOrBelowItsStart) {
    for_random_ranges([](float start, float end) {
        const grid_axis_t axis = grid_axis(start, end);
        const float slack = axis.spacing * 1e-5F;
        ASSERT_LE(axis.at(0), start + slack);
        ASSERT_GT(axis.at(1), start - slack);
        ASSERT_LE(axis.at(axis.count - 1), end + slack);
        ASSERT_GT(axis.at(axis.count - 1) + axis.spacing, end - slack);
    });
}

TEST(GridAxisProperty, PanKeepsTheLinesOnMultiplesOfTheSpacing) {
    for (float shift = -7; shift < 7; shift += 0.37F) {
        const grid_axis_t axis = grid_axis(shift - 1.3F, shift + 1.3F);
        EXPECT_EQ(axis.spacing, 1);
        for (std::uint32_t i = 0; i < axis.count; ++i)
            EXPECT_EQ(axis.at(i), std::round(axis.at(i))) << "pan by " << shift;
    }
}

TEST(GridAxisProperty, ZoomOutByFiveMultipliesTheSpacingByFive) {
    float spacing = grid_axis(-1, 1).spacing;
    for (float half = 5; half < 1e5F; half *= 5) {
        const float wider = grid_axis(-half, half).spacing;
        EXPECT_FLOAT_EQ(wider, spacing * 5);
        spacing = wider;
    }
}

// --- ranges of the views ----------------------------------------------------------------------------------

/// A scene whose box has this centre is fitted by a scale of 1 / `half`.
struct fit_t {
    float half;
    dir3 center;
    mtx3w inverse() const { return scale(half, half, half) * translation(center); }
};

grid_axes_t axes_of(double aspect, const fit_t& fit) {
    const mtx3w fit_inverse = fit.inverse();
    return grid_axes(aspect, fit_inverse, rotation(90, {0, 1, 0}) * fit_inverse,
                     rotation(-90, {1, 0, 0}) * fit_inverse);
}

void expect_range(const grid_axis_t& axis, float start, float end) {
    EXPECT_NEAR(axis.start, start, 1e-5F);
    EXPECT_NEAR(axis.end, end, 1e-5F);
    EXPECT_GT(axis.count, 0U);
}

TEST(GridAxes, AreWhatTheViewsShowOfTheWorld) {
    const grid_axes_t axes = axes_of(2, {.half = 3, .center = {10, 20, 30}});
    expect_range(axes.xy_x, 4, 16);
    expect_range(axes.xy_y, 17, 23);
    expect_range(axes.xz_x, 4, 16);
    expect_range(axes.xz_z, 27, 33);
    expect_range(axes.zy_z, 24, 36);
    expect_range(axes.zy_y, 17, 23);
}

TEST(GridAxes, ViewportWithoutASizeHasNoLines) {
    const grid_axes_t axes = axes_of(0.0 / 0.0, {.half = 1, .center = {}});
    EXPECT_THAT(grid_lines_xy(axes), IsEmpty());
    EXPECT_THAT(grid_lines_xz(axes), IsEmpty());
    EXPECT_THAT(grid_lines_zy(axes), IsEmpty());
}

TEST(GridAxes, InfinitelyWideViewportHasNoLines) {
    const grid_axes_t axes = axes_of(infinity, {.half = 1, .center = {}});
    EXPECT_THAT(grid_lines_xy(axes), IsEmpty());
}

TEST(GridAxes, MatrixWithoutNumbersHasNoLines) {
    mtx3w broken;
    broken.m.fill(no_number);
    const grid_axes_t axes = grid_axes(1, broken, broken, broken);
    EXPECT_THAT(grid_lines_xy(axes), IsEmpty());
    EXPECT_THAT(grid_lines_xz(axes), IsEmpty());
    EXPECT_THAT(grid_lines_zy(axes), IsEmpty());
}

// --- the lines --------------------------------------------------------------------------------------------

line_vertex_t grey(float x, float y, float z) {
    return {{x, y, z}, {0.5F, 0.5F, 0.5F, 1}};
}

/// Two lines across each axis: at 2 and 3, and at -1 and 0.
grid_axes_t short_axes() {
    const grid_axis_t a = grid_axis(2.25F, 3.75F);
    const grid_axis_t b = grid_axis(-0.5F, 0.75F);
    return {.xy_x = a, .xy_y = b, .xz_x = a, .xz_z = b, .zy_z = a, .zy_y = b};
}

TEST(GridLines, FrontGridHasItsXLinesFirst) {
    EXPECT_THAT(grid_lines_xy(short_axes()),
                ElementsAre(grey(2, -0.5F, 0), grey(2, 0.75F, 0), grey(3, -0.5F, 0), grey(3, 0.75F, 0),  //
                            grey(2.25F, -1, 0), grey(3.75F, -1, 0), grey(2.25F, 0, 0), grey(3.75F, 0, 0)));
}

TEST(GridLines, TopGridHasItsXLinesFirst) {
    EXPECT_THAT(grid_lines_xz(short_axes()),
                ElementsAre(grey(2, 0, -0.5F), grey(2, 0, 0.75F), grey(3, 0, -0.5F), grey(3, 0, 0.75F),  //
                            grey(2.25F, 0, -1), grey(3.75F, 0, -1), grey(2.25F, 0, 0), grey(3.75F, 0, 0)));
}

TEST(GridLines, SideGridHasItsZLinesFirst) {
    EXPECT_THAT(grid_lines_zy(short_axes()),
                ElementsAre(grey(0, -0.5F, 2), grey(0, 0.75F, 2), grey(0, -0.5F, 3), grey(0, 0.75F, 3),  //
                            grey(0, -1, 2.25F), grey(0, -1, 3.75F), grey(0, 0, 2.25F), grey(0, 0, 3.75F)));
}

TEST(GridLines, GridWithOneAxisOfNoLinesHasNone) {
    grid_axes_t axes = short_axes();
    axes.xy_x = grid_axis(0, infinity);
    axes.xz_z = grid_axis(no_number, 0);
    EXPECT_THAT(grid_lines_xy(axes), IsEmpty());
    EXPECT_THAT(grid_lines_xz(axes), IsEmpty());
    EXPECT_EQ(grid_lines_zy(axes).size(), 8U);
}

}  // namespace
}  // namespace ulk3d
