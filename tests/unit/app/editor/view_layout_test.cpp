#include "app/editor/view_layout.h"

#include <gtest/gtest.h>

namespace {

using ulk3d::view_layout_t;
using ulk3d::viewport_t;

view_layout_t layout_of(int width, int height) {
    view_layout_t layout;
    layout.resize(width, height);
    return layout;
}

TEST(ViewLayout, DividesAnEvenAreaWithoutGaps) {
    const view_layout_t layout = layout_of(1024, 768);
    EXPECT_EQ(layout.front(), (viewport_t{0, 0, 512, 384}));
    EXPECT_EQ(layout.side(), (viewport_t{512, 0, 512, 384}));
    EXPECT_EQ(layout.top(), (viewport_t{0, 384, 512, 384}));
    EXPECT_EQ(layout.perspective(), (viewport_t{512, 384, 512, 384}));
}

TEST(ViewLayout, LeavesTheMiddleColumnOfAnOddWidthUnused) {
    const view_layout_t layout = layout_of(1025, 768);
    EXPECT_EQ(layout.half_width, 512);
    EXPECT_EQ(layout.side().x, 513);
    EXPECT_EQ(layout.perspective().x, 513);
    EXPECT_EQ(layout.side().x + layout.side().width, 1025);
}

TEST(ViewLayout, LeavesTheMiddleRowOfAnOddHeightUnused) {
    const view_layout_t layout = layout_of(1024, 769);
    EXPECT_EQ(layout.half_height, 384);
    EXPECT_EQ(layout.top().y, 385);
    EXPECT_EQ(layout.perspective().y, 385);
    EXPECT_EQ(layout.front().y, 0);
}

TEST(ViewLayout, AspectIsARealDivision) {
    EXPECT_DOUBLE_EQ(layout_of(301, 200).aspect(), 150.0 / 100.0);
    EXPECT_DOUBLE_EQ(layout_of(100, 300).aspect(), 50.0 / 150.0);
}

}  // namespace
