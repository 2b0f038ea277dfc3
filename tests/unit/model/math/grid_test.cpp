#include "model/math/grid.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace ulk3d;

struct row_t {
    float v, g, trunc, ceil, snap;
};

class Grid : public testing::TestWithParam<row_t> {};

TEST_P(Grid, RoundsAsTold) {
    const row_t& row = GetParam();
    EXPECT_EQ(grid_trunc(row.v, row.g), row.trunc);
    EXPECT_EQ(grid_ceil(row.v, row.g), row.ceil);
    EXPECT_EQ(grid_snap(row.v, row.g), row.snap);
}

INSTANTIATE_TEST_SUITE_P(Table, Grid,
                         testing::Values(row_t{0.6F, 1, 0, 1, 1}, row_t{0.3F, 1, 0, 1, 0},
                                         row_t{-0.6F, 1, 0, 0, 0}, row_t{-1.7F, 1, -1, -1, -1},
                                         row_t{0.5F, 1, 0, 1, 1}, row_t{0.49F, 1, 0, 1, 0},
                                         row_t{1, 1, 1, 1, 1}, row_t{0, 1, 0, 0, 0}, row_t{-1, 1, -1, -1, -1},
                                         row_t{-2.5F, 1, -2, -2, -2}, row_t{1.3F, 0.5F, 1, 1.5F, 1.5F},
                                         row_t{1.2F, 0.5F, 1, 1.5F, 1}, row_t{7, 4, 4, 8, 8}));

TEST(Grid, NeverGivesMinusZero) {
    EXPECT_FALSE(std::signbit(grid_trunc(-0.3F, 1)));
    EXPECT_FALSE(std::signbit(grid_ceil(-0.3F, 1)));
    EXPECT_FALSE(std::signbit(grid_snap(-0.3F, 1)));
}

TEST(Grid, OfAPointWithOneStep) {
    const pos3 p{0.6F, -1.7F, 0.3F};
    EXPECT_EQ(grid_trunc(p, 1), (pos3{0, -1, 0}));
    EXPECT_EQ(grid_ceil(p, 1), (pos3{1, -1, 1}));
    EXPECT_EQ(grid_snap(p, 1), (pos3{1, -1, 0}));
}

TEST(Grid, OfAPointWithOneStepPerAxis) {
    const pos3 p{7, 7, 7};
    const dir3 g{2, 4, 10};
    EXPECT_EQ(grid_trunc(p, g), (pos3{6, 4, 0}));
    EXPECT_EQ(grid_ceil(p, g), (pos3{8, 8, 10}));
    EXPECT_EQ(grid_snap({7, 5, 7}, g), (pos3{8, 4, 10}));
}

}  // namespace
