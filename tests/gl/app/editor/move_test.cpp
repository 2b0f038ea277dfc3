// Points dragged and wheeled: how far they go, from where it is counted, and what follows.

#include <gmock/gmock.h>

#include <algorithm>
#include <bit>
#include <cmath>

#include "gl/app/editor/editor_test.h"
#include "model/math/vectors.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

class Move : public editor_test {
  protected:
    /// A model that was not opened, so that the orthographic views have an identity fit: a pixel is an
    /// eightieth of a unit.
    void add_points(const std::vector<pos3>& points) {
        editor.add_model(model_kind_t::polygon);
        build_polygon(editor.current_model()->polygon, vertices_at(points), {0, 0, 0});
    }

    dir3 way_of(std::uint64_t point, pixel_place_t from, pixel_place_t to) {
        const pos3 before = points_of(0)[point];
        drag_with(modifier_shift, left_button, from, to);
        return points_of(0)[point] - before;
    }
};

class MoveInView : public Move, public testing::WithParamInterface<view_t> {};
INSTANTIATE_TEST_SUITE_P(Views, MoveInView, testing::ValuesIn(every_view),
                         [](const auto& row) { return name_of(row.param); });

TEST_P(MoveInView, TheFirstMarkedPointFollowsThePointerInTheScreensPlane) {
    for (const auto& [width, height] : {std::pair{400, 320}, {401, 321}, {640, 200}}) {
        resize(width, height);
        open(scattered_block());
        drag_with(modifier_alt, right_button, widget(view_t::perspective, 50, 50),
                  widget(view_t::perspective, 65, 42));
        mark(0, {1, 4, 6});
        const std::vector<pos3> before = points_of(0);
        std::vector<seen_t> seen_before;
        for (const pos3& p : before)
            seen_before.push_back(seen(GetParam(), p));

        editor.press_modifier(modifier_shift, modifier_shift);
        EXPECT_FALSE(press(left_button, widget(GetParam(), 40, 30)));
        EXPECT_TRUE(move(widget(GetParam(), 63, 19)));
        EXPECT_TRUE(release(left_button, widget(GetParam(), 63, 19)));
        editor.release_key(modifier_shift);

        const std::vector<pos3> after = points_of(0);
        const seen_t first = seen(GetParam(), after[1]);
        EXPECT_NEAR(first.x - seen_before[1].x, 23, 0.02);
        EXPECT_NEAR(first.y - seen_before[1].y, -11, 0.02);
        EXPECT_NEAR(first.depth, seen_before[1].depth, 1e-5);
        for (std::size_t i = 0; i < before.size(); ++i) {
            const bool moved = i == 1 || i == 4 || i == 6;
            const dir3 way = after[i] - before[i], first_way = after[1] - before[1];
            EXPECT_NEAR(way.x, moved ? first_way.x : 0, 1e-6);
            EXPECT_NEAR(way.y, moved ? first_way.y : 0, 1e-6);
            EXPECT_NEAR(way.z, moved ? first_way.z : 0, 1e-6);
        }
        editor.delete_current();
    }
}

TEST_P(MoveInView, TheWayIsCountedFromTheStartOfTheDrag) {
    open(scattered_block());
    mark(0, {4});
    const pos3 before = points_of(0)[4];
    editor.press_modifier(modifier_shift, modifier_shift);
    press(left_button, widget(GetParam(), 40, 30));
    move(widget(GetParam(), 190, 3));
    move(widget(GetParam(), -500, 900));
    move(widget(GetParam(), 60, 50));
    const pos3 wandered = points_of(0)[4];
    move(widget(GetParam(), 40, 30));
    EXPECT_EQ(points_of(0)[4], before) << "to the last bit";
    move(widget(GetParam(), 60, 50));
    EXPECT_EQ(points_of(0)[4], wandered);
}

TEST_P(MoveInView, TheDragGoesOnInTheViewOfItsPressWhereverTheMouseIs) {
    open(scattered_block());
    mark(0, {4});
    for (const view_t crossed : every_view) {
        const pixel_place_t start = widget(GetParam(), 40, 30), end = widget(crossed, 70, 70);
        const seen_t before = seen(GetParam(), points_of(0)[4]);
        drag_with(modifier_shift, left_button, start, end);
        const seen_t after = seen(GetParam(), points_of(0)[4]);
        EXPECT_NEAR(after.x - before.x, end.x - start.x, 0.05);
        EXPECT_NEAR(after.y - before.y, start.y - end.y, 0.05);
    }
}

TEST_P(MoveInView, ADragThatEndsWhereItBeganIsNoStep) {
    open(scattered_block());
    mark(0, {4});
    editor.press_modifier(modifier_shift, modifier_shift);
    press(left_button, widget(GetParam(), 40, 30));
    move(widget(GetParam(), 60, 50));
    move(widget(GetParam(), 40, 30));
    EXPECT_FALSE(release(left_button, widget(GetParam(), 40, 30)));
    EXPECT_FALSE(press(left_button, widget(GetParam(), 40, 30)));
    EXPECT_FALSE(release(left_button, widget(GetParam(), 60, 50))) << "the release alone moves nothing";
    editor.release_key(modifier_shift);
    EXPECT_FALSE(undo());
    EXPECT_TRUE(entry(0).history.undo_edits().empty());
}

/// The depth of a drag is that of the first selected point. One that is no number has none.
TEST_P(MoveInView, APointThatIsNoNumberLeavesTheOthersNumbers) {
    open(scattered_block());
    mark(0, {0, 4});
    {
        const array_span<vertex_t> vertices(entry(0).polygon.vertices);
        vertices[0].position = {std::numeric_limits<float>::quiet_NaN(), 0, 0};
    }
    editor.press_modifier(modifier_shift, modifier_shift);
    press(left_button, widget(GetParam(), 40, 30));
    move(widget(GetParam(), 60, 50));
    release(left_button, widget(GetParam(), 60, 50));
    const pos3 moved = points_of(0)[4];
    EXPECT_TRUE(std::isfinite(moved.x) && std::isfinite(moved.y) && std::isfinite(moved.z));
    EXPECT_NE(moved, scattered_points()[4]);
}

TEST_P(MoveInView, StepsOfTheGridAreStepsOfTheModel) {
    open(scattered_block());
    mark(0, {4});
    const pos3 before = points_of(0)[4];
    editor.set_grid_step(0.1);
    editor.press_modifier(modifier_shift, modifier_shift);
    press(left_button, widget(GetParam(), 40, 30));
    int steps_seen = 0;
    for (int pixel = 0; pixel <= 60; ++pixel) {
        move(widget(GetParam(), 40 + pixel, 30 + pixel / 2));
        const dir3 way = points_of(0)[4] - before;
        for (const float component : {way.x, way.y, way.z}) {
            EXPECT_NEAR(component * 10, std::round(component * 10), 1e-3) << pixel;
            steps_seen += std::fabs(component) > 0.05F;
        }
    }
    EXPECT_GT(steps_seen, 20);
}

TEST_P(MoveInView, NothingMarkedMovesNothing) {
    open(scattered_block() + patch_block());
    editor.press_modifier(modifier_shift, modifier_shift);
    EXPECT_FALSE(press(left_button, widget(GetParam(), 40, 30)));
    EXPECT_FALSE(move(widget(GetParam(), 60, 50)));
    EXPECT_FALSE(release(left_button, widget(GetParam(), 60, 50)));
    EXPECT_FALSE(editor.mouse_wheel(1, 9, 9));
    EXPECT_EQ(points_of(0), scattered_points());
}

TEST_F(Move, InPerspectiveTheDepthIsThatOfTheCurrentModelsFirstMarkedPoint) {
    // The same pixels are more units for a current model that is farther away.
    open(polygon_block({{-1, -1, 0}, {1, 1, 0}, {0, 0, 0}}, {0, 1, 2}) +
         polygon_block({{-1, -1, -4}, {1, 1, -4}, {0, 0, -4}}, {0, 1, 2}));
    mark(0, {2});
    mark(1, {2});
    for (const std::size_t current : {0U, 1U}) {
        editor.select_model(current);
        const pos3 before = points_of(current)[2], other = points_of(1 - current)[2];
        const seen_t seen_before = seen(view_t::perspective, before);
        drag_with(modifier_shift, left_button, widget(view_t::perspective, 40, 30),
                  widget(view_t::perspective, 60, 30));
        EXPECT_NEAR(seen(view_t::perspective, points_of(current)[2]).x - seen_before.x, 20, 0.02);
        EXPECT_NEAR(points_of(1 - current)[2].x - other.x, points_of(current)[2].x - before.x, 1e-6);
    }
}

TEST_F(Move, WithoutAMarkedPointInTheCurrentModelTheDepthIsZero) {
    open(square_block() + square_block());
    mark(1, {0});
    const pos3 before = points_of(1)[0];
    drag_with(modifier_shift, left_button, widget(view_t::perspective, 100, 80),
              widget(view_t::perspective, 120, 80));
    // Depth 0 is twice the near distance from the eye, nearly: 0.125 units.
    const double expected = 20.0 / 100 * 0.125 / editor.camera().perspective.matrix[0];
    EXPECT_NEAR(points_of(1)[0].x - before.x, expected, expected * 1e-3);
    editor.select_model(99);
    EXPECT_EQ(editor.current_model(), nullptr);
    const pos3 between = points_of(1)[0];
    drag_with(modifier_shift, left_button, widget(view_t::perspective, 100, 80),
              widget(view_t::perspective, 120, 80));
    EXPECT_NEAR(points_of(1)[0].x - between.x, expected, expected * 1e-3);
}

TEST_F(Move, TheGridSnapsBothEndsAndNegativeOnesTowardsZero) {
    struct row_t {
        int from, to;
        float way;
    };
    // Pixels from the middle, 0.0125 units each, on a grid of 0.5.
    const row_t rows[] = {{0, 64, 1.0F},   {0, -64, -0.5F}, {0, 30, 0.5F},   {0, -30, 0},
                          {0, 10, 0},      {24, 32, 0},     {24, 64, 0.5F},  {-30, 30, 0.5F},
                          {-64, 64, 1.5F}, {30, 0, -0.5F},  {-84, -44, 0.5F}};
    editor.set_grid_step(0.5);
    for (const row_t& row : rows) {
        const pos3 start{0.0625F, 0.125F, 0.25F};
        add_points({start, {-1, -1, 0}, {1, 1, 0}});
        mark(0, {0});
        EXPECT_EQ(
            way_of(0, widget(view_t::front, 100 + row.from, 80), widget(view_t::front, 100 + row.to, 80)),
            (dir3{row.way, 0, 0}))
            << row.from << " to " << row.to;
        editor.delete_current();
    }
}

TEST_F(Move, AGridStepOfZeroDoesNotSnap) {
    for (const double step : {0.0, 0.5, 0.0}) {
        editor.set_grid_step(step);
        add_points({{0.0625F, 0.125F, 0.25F}, {-1, -1, 0}, {1, 1, 0}});
        mark(0, {0});
        const dir3 way = way_of(0, widget(view_t::front, 100, 80), widget(view_t::front, 101, 80));
        EXPECT_NEAR(way.x, step == 0 ? 0.0125 : 0, 1e-6);
        editor.delete_current();
    }
}

TEST_F(Move, OnlyTheLeftButtonMovesPoints) {
    open(scattered_block());
    mark(0, {4});
    for (const std::uint32_t button : {std::uint32_t{middle_button}, std::uint32_t{right_button}, 3U}) {
        drag_with(modifier_shift, button, widget(view_t::front, 40, 30), widget(view_t::front, 60, 50));
        EXPECT_EQ(points_of(0), scattered_points());
        EXPECT_EQ(marked(0).size(), 1U);
    }
    EXPECT_FALSE(undo());
}

TEST_F(Move, OnlyTheSelectionOperationMovesPoints) {
    for (const auto mode :
         {operation_mode_t::punish, operation_mode_t::clipping, operation_mode_t::folding}) {
        editor.set_mode(mode);
        open(scattered_block());
        mark(0, {4});
        drag_with(modifier_shift, left_button, widget(view_t::front, 40, 30), widget(view_t::front, 60, 50));
        editor.press_modifier(modifier_shift, modifier_shift);
        EXPECT_FALSE(editor.mouse_wheel(1, 40, 40));
        editor.release_key(modifier_shift);
        EXPECT_EQ(points_of(0), scattered_points());
        editor.delete_current();
    }
}

TEST_F(Move, TheWheelMovesHalfAUnitAlongZWhateverTheView) {
    open(scattered_block());
    mark(0, {1, 4});
    editor.press_modifier(modifier_shift, modifier_shift);
    float expected = scattered_points()[4].z;
    for (const view_t view : every_view) {
        const auto [x, y] = widget(view, 40, 30);
        EXPECT_TRUE(editor.mouse_wheel(1, x, y));
        expected -= 0.5F;
        EXPECT_EQ(points_of(0)[4], (pos3{scattered_points()[4].x, scattered_points()[4].y, expected}));
        EXPECT_TRUE(editor.mouse_wheel(-1, x, y));
        expected += 0.5F;
        EXPECT_EQ(points_of(0)[4].z, expected);
        EXPECT_TRUE(editor.mouse_wheel(0, x, y));
        EXPECT_EQ(points_of(0)[4].z, expected);
    }
    EXPECT_EQ(points_of(0)[0], scattered_points()[0]);
}

TEST_F(Move, TheWheelRestsWhileAButtonIsHeld) {
    open(scattered_block());
    mark(0, {4});
    editor.press_modifier(modifier_shift, modifier_shift);
    for (const std::uint32_t button : {left_button, middle_button, right_button}) {
        press(button, widget(view_t::front, 40, 30));
        EXPECT_FALSE(editor.mouse_wheel(1, 40, 30));
        release(button, widget(view_t::front, 40, 30));
    }
    EXPECT_EQ(points_of(0), scattered_points());
    EXPECT_TRUE(editor.mouse_wheel(1, 40, 30));
}

// The drawn surface of a NURBS model.

std::vector<pos3> surface_of(const model_entry_t& entry) {
    std::vector<pos3> places;
    for (const vertex_t& vertex : vertices_of(entry.polygon))
        places.push_back(vertex.position);
    return places;
}

void expect_frames(const polygon_t& polygon) {
    for (const frame_t& frame : frames_of(polygon))
        for (const dir3& axis : {frame.tangent, frame.binormal, frame.normal})
            ASSERT_NEAR(axis.x * axis.x + axis.y * axis.y + axis.z * axis.z, 1, 1e-3);
}

TEST_F(Move, TheSurfaceFollowsAtTheEndOfTheDrag) {
    open(patch_block());
    mark(0, {3});
    const std::vector<pos3> before = surface_of(entry(0));
    editor.press_modifier(modifier_shift, modifier_shift);
    press(left_button, widget(view_t::side, 40, 30));
    move(widget(view_t::side, 70, 40));
    EXPECT_EQ(surface_of(entry(0)), before);
    const pos3 corner = points_of(0)[3];
    EXPECT_NE(corner, (pos3{1, 1, 0}));
    release(left_button, widget(view_t::side, 70, 40));
    editor.release_key(modifier_shift);
    const std::vector<pos3> after = surface_of(entry(0));
    ASSERT_EQ(after.size(), before.size());
    // The corner sample lies on the corner of the net; the opposite one has not moved.
    EXPECT_NEAR(after.back().z, corner.z, 1e-5);
    EXPECT_NEAR(after.back().y, corner.y, 1e-5);
    EXPECT_EQ(after.front(), before.front());
    expect_frames(entry(0).polygon);

    EXPECT_TRUE(undo());
    EXPECT_EQ(surface_of(entry(0)), before);
    EXPECT_EQ(entry(0).nurbs.points.data[3].position, (pos3{1, 1, 0}));
    EXPECT_TRUE(redo());
    EXPECT_EQ(surface_of(entry(0)), after);
    expect_frames(entry(0).polygon);
}

TEST_F(Move, TheSurfaceFollowsTheWheel) {
    open(patch_block());
    mark(0, {3});
    editor.press_modifier(modifier_shift, modifier_shift);
    EXPECT_TRUE(editor.mouse_wheel(-2, 9, 9));
    EXPECT_NEAR(surface_of(entry(0)).back().z, 1, 1e-6);
    expect_frames(entry(0).polygon);
}

TEST_F(Move, PolygonAndNurbsModelsMoveTogether) {
    open(square_block() + patch_block());
    mark(0, {2});
    mark(1, {2});
    const dir3 way = way_of(2, widget(view_t::front, 40, 30), widget(view_t::front, 50, 40));
    EXPECT_GT(way.x, 0);
    EXPECT_NEAR(points_of(1)[2].x, way.x, 1e-6);
    EXPECT_NEAR(points_of(1)[2].y, 1 + way.y, 1e-6);
}

}  // namespace
