// The two ends of the fold axis: how they are picked, and the line between them.

#include <algorithm>

#include "gl/app/editor/editor_test.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;
using libutils::rgba_picture_t;

class FoldPick : public editor_test {
  protected:
    void SetUp() override {
        editor_test::SetUp();
        editor.set_mode(operation_mode_t::folding);
    }

    void pick(std::uint32_t button, view_t view, const pos3& point) {
        EXPECT_TRUE(click(button, place_of(view, point)));
    }

    void expect_picks(const fold_pick_t& first, const fold_pick_t& second) const {
        EXPECT_EQ(editor.scene().fold_picks[0].model, first.model);
        EXPECT_EQ(editor.scene().fold_picks[0].vertex, first.vertex);
        EXPECT_EQ(editor.scene().fold_picks[1].model, second.model);
        EXPECT_EQ(editor.scene().fold_picks[1].vertex, second.vertex);
    }

    /// How many pixels of the perspective view are lit by the fold line alone.
    int line_pixels() {
        const fold_pick_t kept[2] = {editor.scene().fold_picks[0], editor.scene().fold_picks[1]};
        const rgba_picture_t with = frame();
        editor.scene().fold_picks[0] = {};
        const rgba_picture_t without = frame();
        editor.scene().fold_picks[0] = kept[0];
        editor.scene().fold_picks[1] = kept[1];
        int lit = 0;
        const viewport_t at = area(view_t::perspective);
        for (int y = 0; y < with.height; ++y) {
            for (int x = 0; x < with.width; ++x) {
                const bool differs = with.at(x, y) != without.at(x, y);
                const bool in_view = x >= at.x && y < with.height - at.y;
                EXPECT_FALSE(differs && !in_view) << x << ", " << y;
                lit += differs;
            }
        }
        return lit;
    }
};

TEST_F(FoldPick, TheLeftButtonPicksTheSecondEndAndTheRightButtonTheFirst) {
    open(scattered_block());
    for (const view_t view : every_view) {
        editor.double_click(right_button, 0, 0);
        pick(left_button, view, scattered_points()[2]);
        expect_picks({}, {0, 2});
        pick(right_button, view, scattered_points()[5]);
        expect_picks({0, 5}, {0, 2});
    }
    EXPECT_TRUE(marked(0).empty());
}

TEST_F(FoldPick, BothButtonsLookAtFiveByFivePixels) {
    open(scattered_block());
    const seen_t at = seen(view_t::front, scattered_points()[4]);
    for (const std::uint32_t button : {left_button, right_button}) {
        for (int dx = -4; dx <= 4; ++dx) {
            const long x = std::lround(at.x) + dx;
            EXPECT_EQ(click(button,
                            widget(view_t::front, static_cast<int>(x), static_cast<int>(std::lround(at.y)))),
                      std::fabs(static_cast<double>(x) - at.x) <= 2.5)
                << dx;
        }
    }
}

TEST_F(FoldPick, ADragTakesTheLastHit) {
    open(scattered_block());
    press(left_button, place_of(view_t::side, scattered_points()[1]));
    move(place_of(view_t::side, scattered_points()[3]));
    move(place_of(view_t::side, scattered_points()[6]));
    EXPECT_FALSE(move(widget(view_t::side, -9, -9)));
    expect_picks({}, {0, 6});
}

TEST_F(FoldPick, OfSeveralPointsTheOneFurthestAboveTheWindowsLowerSideIsTaken) {
    open(polygon_block({{-1, -1, 0}, {1, 1, 0}, {0, 0.02F, 0}, {0, 0, 0}, {0, 0.01F, 0}}, {0, 0, 0}));
    pick(left_button, view_t::front, {0, 0.01F, 0});
    expect_picks({}, {0, 2});
}

TEST_F(FoldPick, TheDistanceToTheLowerSideCountsInClipUnits) {
    // A far point a pixel below a near one: a unit of the clip space there is more of the model's.
    open(scattered_block());
    const mtx3w& to_model = editor.camera().view.inverse;
    const pos3 near_point = transform_point({0, 0.02F, -1}, to_model);
    const pos3 far_point = transform_point({0, 0.1F, -20}, to_model);
    {
        const array_span<vertex_t> vertices(entry(0).polygon.vertices);
        vertices[1].position = far_point;
        vertices[4].position = near_point;
    }
    ASSERT_GT(seen(view_t::perspective, near_point).y, seen(view_t::perspective, far_point).y + 0.5);
    pick(left_button, view_t::perspective, far_point);
    expect_picks({}, {0, 1});
}

TEST_F(FoldPick, OfPointsAtOnePlaceTheLastIsTaken) {
    open(polygon_block({{-1, -1, 0}, {0, 0, 0}, {1, 1, 0}, {0, 0, 0}, {1, 0, 0}}, {0, 0, 0}));
    pick(right_button, view_t::front, {0, 0, 0});
    expect_picks({0, 3}, {});
}

TEST_F(FoldPick, HitsOfTheFirstModelArriveForTheLastOne) {
    open(square_block() + square_block(0.5F));
    pick(left_button, view_t::front, {1, 1, 0});
    expect_picks({}, {1, 3});
    pick(right_button, view_t::front, {-0.5F, 0.5F, 0});
    expect_picks({1, 2}, {1, 3});
}

TEST_F(FoldPick, TheRightDoubleClickForgetsBothEnds) {
    open(square_block());
    pick(left_button, view_t::front, {1, 1, 0});
    pick(right_button, view_t::front, {-1, 1, 0});
    EXPECT_FALSE(editor.double_click(left_button, 0, 0));
    expect_picks({0, 2}, {0, 3});
    EXPECT_TRUE(editor.double_click(right_button, 0, 0));
    expect_picks({}, {});
}

TEST_F(FoldPick, ShiftMeansNothing) {
    open(square_block());
    editor.press_modifier(modifier_shift, modifier_shift);
    const pixel_place_t at = place_of(view_t::front, {1, 1, 0});
    EXPECT_FALSE(press(left_button, at));
    EXPECT_FALSE(move(at));
    EXPECT_FALSE(release(left_button, at));
    EXPECT_FALSE(editor.mouse_wheel(1, at.x, at.y));
    expect_picks({}, {});
}

// The line.

TEST_F(FoldPick, ALineJoinsTheTwoEndsInThePerspectiveView) {
    open(square_block(1, 0));
    EXPECT_EQ(line_pixels(), 0);
    editor.scene().fold_picks[0] = {0, 0};
    EXPECT_EQ(line_pixels(), 0);
    editor.scene().fold_picks[1] = {0, 3};
    const int lit = line_pixels();
    const seen_t from = seen(view_t::perspective, {-1, -1, 0}), to = seen(view_t::perspective, {1, 1, 0});
    const double longest = std::max(std::fabs(to.x - from.x), std::fabs(to.y - from.y));
    EXPECT_GE(lit, longest * 0.9);
    EXPECT_LE(lit, longest * 3.5);
}

TEST_F(FoldPick, TheLineIsWhiteAndLiesOverTheSurfaces) {
    // The wall in front of both ends is drawn, and the line over it.
    open(polygon_block({{-0.5F, 0.2F, 0}, {0.5F, 0.2F, 0}, {0, 0.2F, 0}}, {0, 0, 0}) + square_block(1, 0.5F));
    {
        const array_span<vertex_t> vertices(entry(1).polygon.vertices);
        for (vertex_t& vertex : vertices.span())
            vertex.color = {0, 0, 1, 1};
    }
    editor.scene().fold_picks[0] = {0, 0};
    editor.scene().fold_picks[1] = {0, 1};
    EXPECT_GT(line_pixels(), 10);
    const pixel_place_t at = place_of(view_t::perspective, {-0.25F, 0.2F, 0});
    const rgba_picture_t picture = frame();
    int brightest = 0;
    for (int y = at.y - 1; y <= at.y + 1; ++y)
        brightest = std::max<int>(brightest, picture.at(at.x, y)[0]);
    EXPECT_GT(brightest, 120) << "red of the white line over a blue wall";
}

TEST_F(FoldPick, TheLineGoesWithTheControlPoints) {
    open(square_block());
    editor.scene().fold_picks[0] = {0, 0};
    editor.scene().fold_picks[1] = {0, 3};
    editor.set_control_points(false);
    EXPECT_EQ(line_pixels(), 0);
    editor.set_control_points(true);
    EXPECT_GT(line_pixels(), 10);
}

TEST_F(FoldPick, TheLineFollowsItsPoints) {
    open(square_block());
    editor.scene().fold_picks[0] = {0, 0};
    editor.scene().fold_picks[1] = {0, 3};
    const rgba_picture_t before = frame();
    array_span<vertex_t>(entry(0).polygon.vertices)[3].position = {1, -1, 0};
    EXPECT_NE(frame(), before);
    EXPECT_GT(line_pixels(), 10);
}

TEST_F(FoldPick, TheEndsMayLieInTwoModelsOfBothKinds) {
    open(patch_block() + square_block());
    editor.scene().fold_picks[0] = {0, 3};
    editor.scene().fold_picks[1] = {1, 0};
    EXPECT_GT(line_pixels(), 10);
}

TEST_F(FoldPick, EndsThatDoNotExistHaveNoLine) {
    open(square_block() + patch_block());
    editor.add_model(model_kind_t::polygon);
    editor.add_model(model_kind_t::nurbs);
    for (const fold_pick_t& stale :
         {fold_pick_t{0, 4}, fold_pick_t{1, 4}, fold_pick_t{2, 0}, fold_pick_t{3, 0}, fold_pick_t{4, 0},
          fold_pick_t{0, no_index}, fold_pick_t{no_index, 0}, fold_pick_t{0, no_index / 9},
          fold_pick_t{0, no_index / 9 + 1}, fold_pick_t{no_index - 1, 0}}) {
        editor.scene().fold_picks[0] = {0, 0};
        editor.scene().fold_picks[1] = stale;
        EXPECT_EQ(line_pixels(), 0) << stale.model << ", " << stale.vertex;
        EXPECT_FALSE(editor.fold());
        std::swap(editor.scene().fold_picks[0], editor.scene().fold_picks[1]);
        EXPECT_EQ(line_pixels(), 0) << stale.model << ", " << stale.vertex;
        EXPECT_FALSE(editor.fold());
    }
}

TEST_F(FoldPick, EndsOfADeletedModelHaveNoLine) {
    open(square_block() + square_block());
    editor.scene().fold_picks[0] = {0, 0};
    editor.scene().fold_picks[1] = {1, 3};
    EXPECT_GT(line_pixels(), 10);
    editor.delete_current();
    expect_picks({}, {0, 3});
    EXPECT_EQ(line_pixels(), 0);
    editor.delete_current();
    expect_picks({}, {});
    EXPECT_EQ(line_pixels(), 0);
}

TEST_F(FoldPick, APolygonizedModelHasTheVerticesOfItsSurface) {
    open(patch_block());
    editor.scene().fold_picks[0] = {0, 0};
    editor.scene().fold_picks[1] = {0, 33 * 33 - 1};
    EXPECT_EQ(line_pixels(), 0);
    editor.polygonize_current();
    EXPECT_GT(line_pixels(), 10);
}

TEST_F(FoldPick, AnAxisWithoutLengthDoesNotFold) {
    open(polygon_block({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 0}}, {0, 1, 2}));
    select_polygons(entry(0).polygon, {0});
    editor.set_fold_angle(90);
    editor.scene().fold_picks[0] = {0, 0};
    editor.scene().fold_picks[1] = {0, 3};
    EXPECT_FALSE(editor.fold());
    editor.scene().fold_picks[1] = {0, 0};
    EXPECT_FALSE(editor.fold());
    EXPECT_EQ(points_of(0)[2], (pos3{0, 1, 0}));
    editor.scene().fold_picks[1] = {0, 1};
    EXPECT_TRUE(editor.fold()) << "with a length it does";
}

TEST_F(FoldPick, LeavesBlendingAndSmoothingOff) {
    open(square_block());
    editor.scene().fold_picks[0] = {0, 0};
    editor.scene().fold_picks[1] = {0, 3};
    frame();
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_FALSE(glIsEnabled(GL_LINE_SMOOTH));
}

// The band at the cursor.

TEST_F(FoldPick, TheBandStandsFivePixelsWideAtTheCursorInThePerspectiveView) {
    editor.set_grid(false);
    open(square_block());
    click(left_button, widget(view_t::perspective, 60, 110));
    const rgba_picture_t without = frame();
    editor.view().crosshair_on = true;
    const rgba_picture_t with = frame();
    const auto is_green = [&](int x, int y) {
        const pixel_place_t at = widget(view_t::perspective, x, y);
        return with.at(at.x, at.y) == rgba_picture_t::pixel_t{0, 255, 0, 255};
    };
    int green = 0;
    for (std::size_t i = 0; i < with.pixels.size(); ++i)
        green += with.pixels[i] != without.pixels[i];
    EXPECT_NEAR(green, 2 * 200 + 2 * 160 - 4, 6);
    // The lines lie 2.5 pixels to each side of the cursor: between pixels, so on one of two.
    const auto line_at = [&](bool across, int place) {
        return across ? is_green(5, place) || is_green(5, place - 1)
                      : is_green(place, 5) || is_green(place - 1, 5);
    };
    EXPECT_TRUE(line_at(true, 113) || line_at(true, 112));
    EXPECT_TRUE(line_at(true, 108) || line_at(true, 107));
    EXPECT_TRUE(line_at(false, 63) || line_at(false, 62));
    EXPECT_TRUE(line_at(false, 58) || line_at(false, 57));
    EXPECT_FALSE(is_green(5, 110));
    EXPECT_FALSE(is_green(60, 5));
}

}  // namespace
