#include "app/editor/view_cursor.h"

#include <gtest/gtest.h>

namespace {

using namespace ulk3d;

view_layout_t layout_of(int width, int height) {
    view_layout_t layout;
    layout.resize(width, height);
    return layout;
}

struct cursor_row_t {
    const char* view;
    int x, y;
    bool left, bottom;
    int in_view_x, in_view_y;
};

class CursorAt : public testing::TestWithParam<cursor_row_t> {};

TEST_P(CursorAt, FindsTheViewAndThePlaceInIt) {
    // Odd sizes: the right views begin at 101, the upper ones at 81.
    const view_cursor_t cursor = cursor_at(layout_of(201, 161), GetParam().x, GetParam().y);
    EXPECT_EQ(cursor.left, GetParam().left);
    EXPECT_EQ(cursor.bottom, GetParam().bottom);
    EXPECT_EQ(cursor.x, GetParam().in_view_x);
    EXPECT_EQ(cursor.y, GetParam().in_view_y);
}

INSTANTIATE_TEST_SUITE_P(Views, CursorAt,
                         testing::Values(cursor_row_t{"front", 10, 150, true, true, 10, 10},
                                         cursor_row_t{"side", 111, 150, false, true, 10, 10},
                                         cursor_row_t{"top", 10, 5, true, false, 10, 74},
                                         cursor_row_t{"perspective", 150, 0, false, false, 49, 79},
                                         cursor_row_t{"last_left", 99, 160, true, true, 99, 0},
                                         cursor_row_t{"unused_column", 100, 160, false, true, -1, 0},
                                         cursor_row_t{"unused_row", 0, 80, true, false, 0, -1},
                                         cursor_row_t{"outside", -5, 200, true, true, -5, -40}),
                         [](const auto& row) { return std::string(row.param.view); });

TEST(ViewCursor, ADragKeepsTheViewItBeganIn) {
    const view_layout_t layout = layout_of(200, 160);
    const view_cursor_t start = cursor_at(layout, 150, 10);
    const view_cursor_t moved = moved_cursor(start, layout, 20, 150);
    EXPECT_TRUE(moved.in_perspective());
    EXPECT_EQ(moved.x, -80);
    EXPECT_EQ(moved.y, -71);
}

TEST(ViewCursor, NormalisedPlacesRunFromMinusOneToOne) {
    const view_layout_t layout = layout_of(200, 160);
    const view_cursor_t middle{true, true, 50, 40};
    EXPECT_EQ(normalised(middle, layout).x, 0);
    EXPECT_EQ(normalised(middle, layout).y, 0);
    const view_cursor_t corner{true, true, 100, 0};
    EXPECT_EQ(normalised(corner, layout).x, 1);
    EXPECT_EQ(normalised(corner, layout).y, -1);
}

}  // namespace
