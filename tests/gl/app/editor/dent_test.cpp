// The dent of a NURBS surface: a release with Shift in the punish operation.

#include "gl/app/editor/editor_test.h"
#include "model/math/vectors.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

/// A net of 4 by 3 points with a bump.
std::string net_block() {
    std::string text = "begin nurbs_surface,4,2,3,2\n";
    for (int row = 0; row < 3; ++row)
        for (const char* value : {"0", "0", "1", "2", "3", "3"})
            text += std::string("knot1 ") + value + "\n";
    for (int column = 0; column < 4; ++column)
        for (const char* value : {"0", "0", "1", "2", "2"})
            text += std::string("knot2 ") + value + "\n";
    for (int point = 0; point < 12; ++point)
        text += "weight 1\n";
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 4; ++column)
            text += "position " + std::to_string(column) + "," + std::to_string(row) + "," +
                    (row == 1 && column == 2 ? "1" : "0") + "\n";
    return text + "end\n";
}

class Dent : public editor_test {
  protected:
    void SetUp() override {
        editor_test::SetUp();
        editor.set_mode(operation_mode_t::punish);
    }

    bool release_with_shift(pixel_place_t press_at, pixel_place_t release_at) {
        editor.press_modifier(modifier_shift, modifier_shift);
        EXPECT_FALSE(press(left_button, press_at));
        EXPECT_FALSE(move(release_at)) << "nothing follows the pointer";
        const bool dented = release(left_button, release_at);
        editor.release_key(modifier_shift);
        return dented;
    }
};

class DentInView : public Dent, public testing::WithParamInterface<view_t> {};
INSTANTIATE_TEST_SUITE_P(Views, DentInView, testing::ValuesIn(orthographic_views),
                         [](const auto& row) { return name_of(row.param); });

TEST_P(DentInView, TheLowestMarkedPointGoesFromThePlaceOfTheLastPickToTheRelease) {
    open(net_block());
    mark(0, {5, 9});
    const std::vector<pos3> before = points_of(0);
    click(left_button, widget(GetParam(), 3, 4));
    const seen_t seen_before = seen(GetParam(), before[5]);
    // Where the press with Shift was plays no part.
    EXPECT_TRUE(release_with_shift(widget(view_t::perspective, 9, 9), widget(GetParam(), 23, 19)));
    const std::vector<pos3> after = points_of(0);
    EXPECT_NEAR(seen(GetParam(), after[5]).x - seen_before.x, 20, 0.02);
    EXPECT_NEAR(seen(GetParam(), after[5]).y - seen_before.y, 15, 0.02);
    // All others as the model's own dent tells.
    open(net_block());
    nurbs_t& reference = entry(1).nurbs;
    reference.dent(1, 1, after[5] - before[5]);
    for (std::size_t i = 0; i < after.size(); ++i) {
        const pos3 expected = points_of(1)[i];
        EXPECT_NEAR(after[i].x, expected.x, 1e-5) << i;
        EXPECT_NEAR(after[i].y, expected.y, 1e-5) << i;
        EXPECT_NEAR(after[i].z, expected.z, 1e-5) << i;
    }
}

TEST_F(Dent, InPerspectiveTheWayIsTakenAtTheDepthOfTheModelsLastEdit) {
    open(net_block());
    mark(0, {5});
    // A drag leaves an edit whose depth the dent then takes.
    editor.set_mode(operation_mode_t::selection);
    drag_with(modifier_shift, left_button, widget(view_t::front, 40, 30), widget(view_t::front, 44, 30));
    editor.set_mode(operation_mode_t::punish);
    const pos3 before = points_of(0)[5];
    const seen_t seen_before = seen(view_t::perspective, before);
    click(left_button, widget(view_t::perspective, 3, 4));
    EXPECT_TRUE(release_with_shift(widget(view_t::front, 9, 9), widget(view_t::perspective, 23, 19)));
    EXPECT_NEAR(seen(view_t::perspective, points_of(0)[5]).x - seen_before.x, 20, 0.1);
    EXPECT_NEAR(seen(view_t::perspective, points_of(0)[5]).y - seen_before.y, 15, 0.1);
}

TEST_F(Dent, TheWholeGestureMarksAndDents) {
    open(net_block());
    const pixel_place_t at = place_of(view_t::front, {2, 1, 1});
    EXPECT_TRUE(click(left_button, at));
    EXPECT_EQ(marked(0), std::vector<std::size_t>{6});
    const pos3 before = points_of(0)[6];
    EXPECT_TRUE(release_with_shift(at, {at.x + 30, at.y}));
    EXPECT_GT(points_of(0)[6].x, before.x);
    EXPECT_EQ(points_of(0)[6].y, before.y);
}

TEST_F(Dent, TheSurfaceIsDrawnAnewAndNoStepIsKept) {
    open(net_block());
    mark(0, {6});
    const std::vector<vertex_t> before = vertices_of(entry(0).polygon);
    click(left_button, widget(view_t::top, 3, 4));
    EXPECT_TRUE(release_with_shift(widget(view_t::top, 3, 4), widget(view_t::top, 3, 40)));
    const std::vector<vertex_t> after = vertices_of(entry(0).polygon);
    bool moved = false;
    for (std::size_t i = 0; i < after.size(); ++i)
        moved |= after[i].position != before[i].position;
    EXPECT_TRUE(moved);
    EXPECT_FALSE(undo());
}

TEST_F(Dent, TheGridSnapsTheWay) {
    open(net_block());
    mark(0, {5});
    editor.set_grid_step(0.5);
    const pos3 before = points_of(0)[5];
    click(left_button, widget(view_t::front, 103, 84));
    EXPECT_TRUE(release_with_shift(widget(view_t::front, 103, 84), widget(view_t::front, 150, 84)));
    const float way = points_of(0)[5].x - before.x;
    EXPECT_GT(way, 0.4F);
    EXPECT_NEAR(way * 2, std::round(way * 2), 1e-5);
    EXPECT_EQ(points_of(0)[5].y, before.y);
}

TEST_F(Dent, PolygonModelsAreNotTouched) {
    open(net_block() + square_block());
    mark(1, {0, 1});
    const std::vector<pos3> square = points_of(1), net = points_of(0);
    EXPECT_FALSE(release_with_shift(widget(view_t::front, 3, 4), widget(view_t::front, 30, 40)));
    mark(0, {0});
    EXPECT_TRUE(release_with_shift(widget(view_t::front, 3, 4), widget(view_t::front, 30, 40)));
    EXPECT_EQ(points_of(1), square);
    EXPECT_NE(points_of(0), net);
}

TEST_F(Dent, EveryNurbsModelIsDentedAtItsOwnPoint) {
    open(net_block() + net_block());
    mark(0, {5});
    mark(1, {6});
    const std::vector<pos3> before = points_of(0);
    EXPECT_TRUE(release_with_shift(widget(view_t::front, 3, 4), widget(view_t::front, 30, 40)));
    const dir3 way = points_of(0)[5] - before[5];
    EXPECT_NE(way, (dir3{0, 0, 0}));
    EXPECT_EQ(points_of(1)[6] - before[6], way);
}

TEST_F(Dent, OtherButtonsAndTheWheelDoNotDent) {
    open(net_block());
    mark(0, {5});
    const std::vector<pos3> before = points_of(0);
    for (const std::uint32_t button : {middle_button, right_button}) {
        drag_with(modifier_shift, button, widget(view_t::front, 3, 4), widget(view_t::front, 30, 40));
        EXPECT_EQ(points_of(0), before);
    }
    editor.press_modifier(modifier_shift, modifier_shift);
    EXPECT_FALSE(editor.mouse_wheel(1, 40, 40));
    EXPECT_EQ(points_of(0), before);
}

TEST_F(Dent, PolygonizedModelsAreDentedNoMore) {
    open(net_block());
    mark(0, {5});
    editor.polygonize_current();
    const std::vector<pos3> before = points_of(0);
    EXPECT_FALSE(release_with_shift(widget(view_t::front, 3, 4), widget(view_t::front, 30, 40)));
    EXPECT_EQ(points_of(0), before);
}

}  // namespace
