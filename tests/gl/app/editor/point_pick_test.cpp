// Points under the mouse: which of them a press marks, in which models, and in which order they come.

#include <gmock/gmock.h>

#include <iostream>

#include "gl/app/editor/editor_test.h"
#include "support/captured_stream.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;
using testing::ElementsAre;
using testing::IsEmpty;

class PointPick : public editor_test {
  protected:
    void mark_all(std::size_t index) {
        for (std::uint64_t i = 0; i < model(index).selection.size(); ++i)
            model(index).select(i);
    }
};

class PointPickInView : public PointPick, public testing::WithParamInterface<view_t> {};
INSTANTIATE_TEST_SUITE_P(Views, PointPickInView, testing::ValuesIn(every_view),
                         [](const auto& row) { return name_of(row.param); });

TEST_P(PointPickInView, TheLeftButtonMarksThePointsOfThreeByThreePixels) {
    for (const auto& [width, height] : {std::pair{400, 320}, {401, 321}, {640, 200}}) {
        resize(width, height);
        open(scattered_block());
        const pos3 point = scattered_points()[4];
        const seen_t at = seen(GetParam(), point);
        const pixel_place_t middle = place_of(GetParam(), point);
        for (int dy = -3; dy <= 3; ++dy) {
            for (int dx = -3; dx <= 3; ++dx) {
                const pixel_place_t mouse{middle.x + dx, middle.y - dy};
                const bool inside = std::fabs(std::round(at.x) + dx - at.x) <= 1.5 &&
                                    std::fabs(std::round(at.y) + dy - at.y) <= 1.5;
                EXPECT_EQ(click(left_button, mouse), inside) << dx << ", " << dy;
                EXPECT_EQ(model(0).selection[4], inside) << dx << ", " << dy;
                model(0).clearselection();
            }
        }
        editor.delete_current();
    }
}

TEST_P(PointPickInView, BrushesGrowWithThePixelsOfTheScreen) {
    open(scattered_block());
    editor.set_pixel_scale(2);
    const pos3 point = scattered_points()[4];
    const seen_t at = seen(GetParam(), point);
    const pixel_place_t middle = place_of(GetParam(), point);
    for (int dx = -6; dx <= 6; ++dx) {
        const double distance = std::fabs(std::round(at.x) + dx - at.x);
        EXPECT_EQ(click(left_button, {middle.x + dx, middle.y}), distance <= 3) << dx;
        mark_all(0);
        EXPECT_EQ(click(right_button, {middle.x + dx, middle.y}), distance <= 5) << dx;
        model(0).clearselection();
    }
}

TEST_P(PointPickInView, TheRightButtonUnmarksThePointsOfFiveByFivePixels) {
    open(scattered_block());
    const pos3 point = scattered_points()[4];
    const seen_t at = seen(GetParam(), point);
    const pixel_place_t middle = place_of(GetParam(), point);
    for (int dy = -4; dy <= 4; ++dy) {
        for (int dx = -4; dx <= 4; ++dx) {
            mark_all(0);
            const bool inside = std::fabs(std::round(at.x) + dx - at.x) <= 2.5 &&
                                std::fabs(std::round(at.y) + dy - at.y) <= 2.5;
            EXPECT_EQ(click(right_button, {middle.x + dx, middle.y - dy}), inside) << dx << ", " << dy;
            EXPECT_EQ(model(0).selection[4], !inside) << dx << ", " << dy;
            EXPECT_EQ(marked(0).size(), inside ? 6U : 7U);
        }
    }
}

TEST_P(PointPickInView, AMarkedPointIsDrawnLarger) {
    editor.set_grid(false);
    open(polygon_block({{-1, -1, -1}, {1, 1, 1}, {0.1F, 0.15F, -0.2F}}, {0, 0, 0, 1, 1, 1, 2, 2, 2}));
    const auto lit_around = [&](const libutils::rgba_picture_t& picture) {
        const pixel_place_t at = place_of(GetParam(), {0.1F, 0.15F, -0.2F});
        int lit = 0;
        for (int y = at.y - 6; y <= at.y + 6; ++y)
            for (int x = at.x - 6; x <= at.x + 6; ++x)
                lit += picture.at(x, y) != libutils::rgba_picture_t::pixel_t{46, 46, 46, 255};
        return lit;
    };
    EXPECT_EQ(lit_around(frame()), 3 * 3);
    EXPECT_TRUE(click(left_button, place_of(GetParam(), {0.1F, 0.15F, -0.2F})));
    EXPECT_EQ(lit_around(frame()), 5 * 5);
    EXPECT_TRUE(click(right_button, place_of(GetParam(), {0.1F, 0.15F, -0.2F})));
    EXPECT_EQ(lit_around(frame()), 3 * 3);
}

TEST_P(PointPickInView, ADragPaintsMarksAndWipesThem) {
    open(scattered_block());
    const std::vector<pos3>& points = scattered_points();
    press(left_button, place_of(GetParam(), points[0]));
    EXPECT_TRUE(move(place_of(GetParam(), points[3])));
    EXPECT_FALSE(move(widget(GetParam(), -20, -20)));
    EXPECT_TRUE(move(place_of(GetParam(), points[5])));
    release(left_button, place_of(GetParam(), points[5]));
    EXPECT_FALSE(move(place_of(GetParam(), points[1])));
    EXPECT_THAT(marked(0), ElementsAre(0, 3, 5));
    press(right_button, place_of(GetParam(), points[3]));
    EXPECT_TRUE(move(place_of(GetParam(), points[5])));
    release(right_button, place_of(GetParam(), points[5]));
    EXPECT_FALSE(move(place_of(GetParam(), points[0])));
    EXPECT_THAT(marked(0), ElementsAre(0));
}

TEST_P(PointPickInView, ADragIntoAnotherViewPicksThere) {
    open(scattered_block());
    press(left_button, place_of(GetParam(), scattered_points()[0]));
    for (const view_t other : every_view)
        EXPECT_TRUE(move(place_of(other, scattered_points()[1])));
    EXPECT_THAT(marked(0), ElementsAre(0, 1));
}

TEST_P(PointPickInView, ControlPointsOfANurbsModelAreFound) {
    open(patch_block());
    EXPECT_TRUE(click(left_button, place_of(GetParam(), {1, 1, 0})));
    const bool from_front = GetParam() == view_t::perspective || GetParam() == view_t::front;
    if (from_front)
        EXPECT_THAT(marked(0), ElementsAre(3));
    else if (GetParam() == view_t::side)
        EXPECT_THAT(marked(0), ElementsAre(2, 3)) << "both lie at this height";
    else
        EXPECT_THAT(marked(0), ElementsAre(1, 3)) << "both lie in this column";
}

TEST_P(PointPickInView, PointsAtAnyDepthAreTaken) {
    // Far from each other, one behind the other for this view.
    open(scattered_block());
    const mtx3w to_model = view_matrix(GetParam()).inverse;
    const pos3 near_point = GetParam() == view_t::perspective ? transform_point({0.5F, 0.25F, -1}, to_model)
                                                              : transform_point({0.1F, 0.2F, 0.5F}, to_model);
    const pos3 far_point = GetParam() == view_t::perspective ? transform_point({2, 1, -4}, to_model)
                                                             : transform_point({0.1F, 0.2F, -9}, to_model);
    {
        const array_span<vertex_t> vertices(entry(0).polygon.vertices);
        vertices[2].position = near_point;
        vertices[6].position = far_point;
    }
    EXPECT_TRUE(click(left_button, place_of(GetParam(), near_point)));
    EXPECT_THAT(marked(0), ElementsAre(2, 6));
}

TEST_F(PointPick, PointsThatAreNotShownCanNotBePickedInThePerspectiveView) {
    open(scattered_block());
    editor.set_control_points(false);
    for (const view_t view : every_view) {
        const bool shown = view != view_t::perspective;
        EXPECT_EQ(click(left_button, place_of(view, scattered_points()[4])), shown);
        EXPECT_EQ(marked(0).size(), shown ? 1U : 0U);
        EXPECT_EQ(click(right_button, place_of(view, scattered_points()[4])), shown);
    }
    editor.set_control_points(true);
    EXPECT_TRUE(click(left_button, place_of(view_t::perspective, scattered_points()[4])));
}

TEST_F(PointPick, APickOfAMarkedPointRepaintsAndKeepsTheMark) {
    open(scattered_block());
    for (int time = 0; time < 2; ++time) {
        EXPECT_TRUE(click(left_button, place_of(view_t::front, scattered_points()[4])));
        EXPECT_THAT(marked(0), ElementsAre(4));
    }
}

TEST_F(PointPick, TheMiddleButtonAndTheWheelMarkNothing) {
    open(scattered_block());
    const pixel_place_t at = place_of(view_t::front, scattered_points()[4]);
    EXPECT_FALSE(press(middle_button, at));
    EXPECT_FALSE(move(at));
    EXPECT_FALSE(release(middle_button, at));
    EXPECT_FALSE(editor.mouse_wheel(1, at.x, at.y));
    EXPECT_THAT(marked(0), IsEmpty());
}

TEST_F(PointPick, TheRightDoubleClickClearsTheMarksOfAllModels) {
    for (const auto mode : {operation_mode_t::selection, operation_mode_t::punish}) {
        editor.set_mode(mode);
        open(scattered_block() + patch_block());
        const auto first = editor.models().size() - 2;
        mark(first, {1, 4});
        mark(first + 1, {0, 3});
        EXPECT_FALSE(editor.double_click(left_button, 5, 5));
        EXPECT_FALSE(editor.double_click(middle_button, 5, 5));
        EXPECT_THAT(marked(first), ElementsAre(1, 4));
        EXPECT_TRUE(editor.double_click(right_button, 5, 5));
        EXPECT_THAT(marked(first), IsEmpty());
        EXPECT_THAT(marked(first + 1), IsEmpty());
        for (const float size : pointsizes_of(model(first)))
            EXPECT_EQ(size, unselected_point_size);
    }
}

TEST_F(PointPick, ADoubleClickMeansNothingWithCtrlOrAlt) {
    open(scattered_block());
    mark(0, {2});
    for (const std::uint32_t modifier : {modifier_ctrl, modifier_alt}) {
        editor.press_modifier(modifier, modifier);
        EXPECT_FALSE(editor.double_click(right_button, 5, 5));
        editor.release_key(modifier);
    }
    EXPECT_THAT(marked(0), ElementsAre(2));
    editor.press_modifier(modifier_shift, modifier_shift);
    EXPECT_TRUE(editor.double_click(right_button, 5, 5));
    EXPECT_THAT(marked(0), IsEmpty());
}

// Several models. The hits of each model are reported again under every model behind it.

const pos3 here{0.25F, 0.25F, 0}, there{-0.75F, 0.5F, 0};

std::string points_block(const std::vector<pos3>& points) {
    return polygon_block(points, {0, 0, 0});
}

TEST_F(PointPick, HitsOfAModelAlsoArriveForTheModelsBehindIt) {
    open(points_block({{-1, -1, 0}, there, here, {1, 1, 0}}) +
         points_block({{-1, -1, 0}, {1, 1, 0}, {1, -1, 0}, there}) +
         points_block({{-1, -1, 0}, {1, 1, 0}, {1, -1, 0}, {-1, 1, 0}, {0.5F, -0.25F, 0}}));
    EXPECT_TRUE(click(left_button, place_of(view_t::front, here)));
    EXPECT_THAT(marked(0), ElementsAre(2));
    EXPECT_THAT(marked(1), ElementsAre(2));
    EXPECT_THAT(marked(2), ElementsAre(2));
    // `there` is point 1 of the first model and point 3 of the second one.
    EXPECT_TRUE(click(left_button, place_of(view_t::front, there)));
    EXPECT_THAT(marked(0), ElementsAre(1, 2));
    EXPECT_THAT(marked(1), ElementsAre(1, 2, 3));
    EXPECT_THAT(marked(2), ElementsAre(1, 2, 3));
}

TEST_F(PointPick, TheFirstModelIsNotTouchedByHitsOfTheSecond) {
    open(points_block({{-1, -1, 0}, {1, 1, 0}, {1, -1, 0}}) + points_block({{-1, -1, 0}, here, {1, 1, 0}}));
    EXPECT_TRUE(click(left_button, place_of(view_t::front, here)));
    EXPECT_THAT(marked(0), IsEmpty());
    EXPECT_THAT(marked(1), ElementsAre(1));
}

TEST_F(PointPick, UnmarkingReachesTheModelsBehindToo) {
    open(points_block({{-1, -1, 0}, {1, 1, 0}, here}) + points_block({{-1, -1, 0}, {1, 1, 0}, {1, -1, 0}}));
    mark(0, {0, 2});
    mark(1, {0, 2});
    EXPECT_TRUE(click(right_button, place_of(view_t::front, here)));
    EXPECT_THAT(marked(0), ElementsAre(0));
    EXPECT_THAT(marked(1), ElementsAre(0));
}

TEST_F(PointPick, PointsThatALaterModelDoesNotHaveArePassedOver) {
    open(points_block({{-1, -1, 0}, {1, 1, 0}, {1, -1, 0}, {-1, 1, 0}, {0, 0, 0}, here}) +
         points_block({{-1, -1, 0}, {1, 1, 0}, {1, -1, 0}}));
    editor.add_model(model_kind_t::polygon);
    editor.add_model(model_kind_t::nurbs);
    const captured_stream errors(std::cerr);
    EXPECT_TRUE(click(left_button, place_of(view_t::front, here)));
    EXPECT_TRUE(click(right_button, place_of(view_t::front, here)));
    EXPECT_TRUE(click(left_button, place_of(view_t::front, here)));
    EXPECT_THAT(marked(0), ElementsAre(5));
    for (std::size_t other = 1; other < 4; ++other)
        EXPECT_THAT(marked(other), IsEmpty());
    EXPECT_EQ(errors.text(), "");
}

TEST_F(PointPick, AnEmptySceneHasNothingToPick) {
    for (const auto mode : {operation_mode_t::selection, operation_mode_t::punish, operation_mode_t::clipping,
                            operation_mode_t::folding}) {
        editor.set_mode(mode);
        for (const view_t view : every_view)
            for (const std::uint32_t button : {left_button, right_button})
                EXPECT_FALSE(click(button, widget(view, 50, 50)));
    }
}

}  // namespace
