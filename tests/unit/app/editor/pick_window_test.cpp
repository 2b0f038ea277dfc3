#include "app/editor/pick_window.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace ulk3d;

view_layout_t layout_of(int width, int height) {
    view_layout_t layout;
    layout.resize(width, height);
    return layout;
}

float value(const edge_line_t& line, float x, float y) {
    return line.a * x + line.b * y + line.c;
}

TEST(PickWindow, TheRectangleStandsAroundTheCursorInItsView) {
    const pick_rectangle_t rectangle = pick_rectangle_at({false, true, 30, 40}, layout_of(401, 321), 3, 5);
    EXPECT_EQ(rectangle.x, 30);
    EXPECT_EQ(rectangle.y, 40);
    EXPECT_EQ(rectangle.width, 3);
    EXPECT_EQ(rectangle.height, 5);
    EXPECT_EQ(rectangle.view_width, 200);
    EXPECT_EQ(rectangle.view_height, 160);
}

TEST(PickWindow, EdgeLinesAreTopBottomLeftAndRightWithTheInsideAboveZero) {
    const edge_lines_t lines =
        edge_lines_of(pick_rectangle_at({false, false, 30, 40}, layout_of(400, 320), 3, 5));
    const float left = (30 - 1.5F - 100) / 100, right = (30 + 1.5F - 100) / 100;
    const float bottom = (40 - 2.5F - 80) / 80, top = (40 + 2.5F - 80) / 80;
    const edge_line_t expected[] = {{0, -1, top}, {0, 1, -bottom}, {1, 0, -left}, {-1, 0, right}};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(lines[i].a, expected[i].a) << i;
        EXPECT_EQ(lines[i].b, expected[i].b) << i;
        EXPECT_EQ(lines[i].c, expected[i].c) << i;
    }
    const float x = (left + right) / 2, y = (bottom + top) / 2;
    for (const edge_line_t& line : lines)
        EXPECT_GT(value(line, x, y), 0);
    EXPECT_LT(value(lines[0], x, top + 0.01F), 0);
    EXPECT_LT(value(lines[1], x, bottom - 0.01F), 0);
    EXPECT_LT(value(lines[2], left - 0.01F, y), 0);
    EXPECT_LT(value(lines[3], right + 0.01F, y), 0);
}

TEST(PickWindow, HalvesOfOddViewsAreNotTruncated) {
    // A view of 51 by 41 pixels: its middle lies between pixels.
    const edge_lines_t lines =
        edge_lines_of(pick_rectangle_at({false, false, 30, 20}, layout_of(102, 82), 1, 1));
    EXPECT_FLOAT_EQ(lines[2].c, -(30 - 0.5F - 25.5F) / 25.5F);
    EXPECT_FLOAT_EQ(lines[0].c, (20 + 0.5F - 20.5F) / 20.5F);
}

TEST(PickWindow, AViewWithoutAreaGivesLinesThatAreNoNumbers) {
    const edge_lines_t lines = edge_lines_of(pick_rectangle_at({false, false, 0, 0}, layout_of(0, 1), 3, 3));
    for (const edge_line_t& line : lines)
        EXPECT_FALSE(std::isfinite(line.c));
}

}  // namespace
