// The perspective view's camera under the mouse: Alt with a button or the wheel.

#include <limits>
#include <utility>

#include "gl/app/editor/editor_test.h"
#include "model/math/rotations.h"
#include "model/math/vectors.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

class Navigation : public editor_test {
  protected:
    void SetUp() override {
        editor_test::SetUp();
        editor.press_modifier(modifier_alt, modifier_alt);
    }

    const trackball_t& trackball() const { return editor.camera().trackball; }

    /// The point of the plane z = 0 that is seen at a place of the perspective view, by Newton's steps.
    pos3 on_plane(double x, double y) const {
        double u = 0, v = 0;
        for (int step = 0; step < 30; ++step) {
            constexpr double h = 1e-3;
            const seen_t at = seen_at(u, v), right = seen_at(u + h, v), up = seen_at(u, v + h);
            const double a = (right.x - at.x) / h, b = (up.x - at.x) / h;
            const double c = (right.y - at.y) / h, d = (up.y - at.y) / h;
            const double det = a * d - b * c;
            u += ((x - at.x) * d - b * (y - at.y)) / det;
            v += (a * (y - at.y) - (x - at.x) * c) / det;
        }
        return {static_cast<float>(u), static_cast<float>(v), 0};
    }

  private:
    seen_t seen_at(double u, double v) const {
        return seen(view_t::perspective, {static_cast<float>(u), static_cast<float>(v), 0});
    }
};

TEST_F(Navigation, LeftDragOverTheBackgroundPansASixteenthPerPixel) {
    open(triangle_block(2));
    const dir3 before = trackball().translation;
    const pixel_place_t corner = widget(view_t::perspective, 190, 150);
    EXPECT_FALSE(press(left_button, corner));
    EXPECT_TRUE(move({corner.x + 8, corner.y - 16}));
    EXPECT_EQ(trackball().translation, (dir3{before.x + 0.5F, before.y + 1, before.z}));
    EXPECT_EQ(editor.camera().view.matrix[12], trackball().translation.x);
    EXPECT_EQ(editor.camera().view.matrix[13], trackball().translation.y);
    EXPECT_TRUE(move({corner.x, corner.y}));
    EXPECT_EQ(trackball().translation, before);
    EXPECT_FALSE(release(left_button, corner));
}

TEST_F(Navigation, LeftDragOverAFacingSurfaceKeepsThePointUnderThePointer) {
    open(square_block(2));
    const pos3 point = on_plane(80, 60);
    press(left_button, widget(view_t::perspective, 80, 60));
    for (const auto& [x, y] : {std::pair{90, 60}, {120, 100}, {30, 20}, {-50, 200}, {111, 77}}) {
        EXPECT_TRUE(move(widget(view_t::perspective, x, y)));
        const seen_t at = seen(view_t::perspective, point);
        EXPECT_NEAR(at.x, x, 0.02);
        EXPECT_NEAR(at.y, y, 0.02);
    }
}

TEST_F(Navigation, LeftDragOverATurnedSurfaceKeepsThePointUnderThePointer) {
    open(square_block(2));
    drag(right_button, widget(view_t::perspective, 100, 80), widget(view_t::perspective, 70, 60));
    const pos3 point = on_plane(110, 70);
    press(left_button, widget(view_t::perspective, 110, 70));
    // The depth is that of the nearest corner of the pixel, not of its middle: a hair's breadth per way.
    for (const auto& [x, y] : {std::pair{120, 70}, {60, 40}, {20, 90}, {150, 150}}) {
        EXPECT_TRUE(move(widget(view_t::perspective, x, y)));
        const seen_t at = seen(view_t::perspective, point);
        EXPECT_NEAR(at.x, x, 0.5);
        EXPECT_NEAR(at.y, y, 0.5);
    }
}

/// A new NURBS model is all zeros, and its mesh no numbers; a triangle may stand in the plane of the eye.
TEST_F(Navigation, ASurfaceWithoutAPlaceIsNotTakenHoldOf) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    open(square_block(2) + square_block(2));
    const float eye = -trackball().translation.z;
    for (const pos3& place : {pos3{nan, nan, nan}, pos3{nan, 0, 0}, pos3{0, 0, eye}}) {
        for (std::size_t model = 0; model < 2; ++model) {
            const array_span<vertex_t> vertices(entry(model).polygon.vertices);
            for (vertex_t& vertex : vertices)
                vertex.position = place;
        }
        const dir3 before = trackball().translation;
        const pixel_place_t middle = widget(view_t::perspective, 100, 80);
        press(left_button, middle);
        EXPECT_TRUE(move({middle.x + 8, middle.y - 16}));
        release(left_button, middle);
        EXPECT_EQ(trackball().translation, (dir3{before.x + 0.5F, before.y + 1, before.z}));
    }
}

TEST_F(Navigation, ASurfaceBehindOneWithoutAPlaceIsTakenHoldOf) {
    open(square_block(2, -1) + square_block(2));
    const pos3 point = on_plane(80, 60);
    {
        const array_span<vertex_t> vertices(entry(0).polygon.vertices);
        for (vertex_t& vertex : vertices)
            vertex.position = {std::numeric_limits<float>::quiet_NaN(), 0, 0};
    }
    press(left_button, place_of(view_t::perspective, point));
    const pixel_place_t to = widget(view_t::perspective, 120, 90);
    EXPECT_TRUE(move(to));
    const seen_t now = seen(view_t::perspective, point);
    EXPECT_NEAR(now.x, 120, 1);
    EXPECT_NEAR(now.y, 90, 1);
}

TEST_F(Navigation, TheNearestOfSeveralSurfacesIsTakenHoldOf) {
    open(square_block(2) + square_block(2, 1) + square_block(2, -1));
    const pos3 near_corner{2, 2, 1};
    const seen_t before = seen(view_t::perspective, near_corner);
    drag(left_button, widget(view_t::perspective, 100, 80), widget(view_t::perspective, 110, 60));
    const seen_t after = seen(view_t::perspective, near_corner);
    EXPECT_NEAR(after.x - before.x, 10, 0.02);
    EXPECT_NEAR(after.y - before.y, -20, 0.02);
}

TEST_F(Navigation, ANurbsSurfaceCanBeTakenHoldOf) {
    open(patch_block());
    const pos3 corner{1, 1, 0};
    const seen_t before = seen(view_t::perspective, corner);
    const pixel_place_t on_patch = place_of(view_t::perspective, {0.5F, 0.5F, 0});
    drag(left_button, on_patch, {on_patch.x - 12, on_patch.y - 5});
    const seen_t after = seen(view_t::perspective, corner);
    EXPECT_NEAR(after.x - before.x, -12, 0.02);
    EXPECT_NEAR(after.y - before.y, 5, 0.02);
}

TEST_F(Navigation, APressOnTheBackgroundForgetsTheSurfaceOfTheLastDrag) {
    open(square_block(0.5F));
    drag(left_button, widget(view_t::perspective, 100, 80), widget(view_t::perspective, 101, 80));
    const dir3 before = trackball().translation;
    drag(left_button, widget(view_t::perspective, 2, 2), widget(view_t::perspective, 18, 2));
    EXPECT_EQ(trackball().translation, (dir3{before.x + 1, before.y, before.z}));
}

TEST_F(Navigation, RightDragTurnsADegreePerPixelAboutTheViewsAxes) {
    struct row_t {
        int right, up;
        float degrees;
        dir3 axis;
    };
    for (const row_t& row : {row_t{30, 0, 30, {0, 1, 0}}, row_t{-30, 0, 30, {0, -1, 0}},
                             row_t{0, 20, 20, {-1, 0, 0}}, row_t{0, -20, 20, {1, 0, 0}}}) {
        editor.key_command(0xff0d);
        drag(right_button, widget(view_t::perspective, 50, 50),
             widget(view_t::perspective, 50 + row.right, 50 + row.up));
        EXPECT_NEAR(trackball().rotation.angle, row.degrees, 0.01);
        EXPECT_NEAR(dot(trackball().rotation.axis, row.axis), 1, 1e-5);
        EXPECT_NEAR(trackball().rotation_inverse.angle, row.degrees, 0.01);
        EXPECT_NEAR(dot(trackball().rotation_inverse.axis, row.axis), -1, 1e-5);
        EXPECT_EQ(trackball().translation, (dir3{0, 0, -7}));
    }
}

TEST_F(Navigation, MiddleDragRollsADegreeAndGoesASixteenthPerPixel) {
    drag(middle_button, widget(view_t::perspective, 50, 50), widget(view_t::perspective, 75, 66));
    EXPECT_EQ(trackball().translation, (dir3{0, 0, -6}));
    EXPECT_NEAR(trackball().rotation.angle, 25, 0.01);
    EXPECT_NEAR(trackball().rotation.axis.z, 1, 1e-5);
}

TEST_F(Navigation, TheViewAndItsInverseFollowEveryStep) {
    open(square_block());
    press(right_button, widget(view_t::perspective, 50, 50));
    for (int step = 0; step < 40; ++step) {
        move(widget(view_t::perspective, 50 + step * 7 % 31, 50 - step * 11 % 17));
        const mtx3w both = editor.camera().view.matrix * editor.camera().view.inverse;
        for (std::size_t i = 0; i < 16; ++i)
            EXPECT_NEAR(both[i], mtx_identity[i], 2e-3) << step << " element " << i;
    }
}

TEST_F(Navigation, TwoButtonsOfTheCameraActTogether) {
    press(left_button, widget(view_t::perspective, 50, 50));
    press(right_button, widget(view_t::perspective, 50, 50));
    move(widget(view_t::perspective, 66, 50));
    EXPECT_EQ(trackball().translation.x, 1);
    EXPECT_NEAR(trackball().rotation.angle, 16, 0.01);
}

TEST_F(Navigation, MotionWithoutAButtonMovesNothingAndRepaints) {
    const dir3 before = trackball().translation;
    EXPECT_TRUE(move(widget(view_t::perspective, 50, 50)));
    EXPECT_TRUE(move(widget(view_t::perspective, 150, 50)));
    EXPECT_EQ(trackball().translation, before);
    EXPECT_EQ(trackball().rotation, rot3_identity);
}

TEST_F(Navigation, AReleasedButtonMovesNoMore) {
    drag(left_button, widget(view_t::perspective, 50, 50), widget(view_t::perspective, 60, 50));
    const dir3 after = trackball().translation;
    move(widget(view_t::perspective, 150, 50));
    EXPECT_EQ(trackball().translation, after);
}

TEST_F(Navigation, TheButtonsOfAWheelMoveTheTrackballAndNotYetTheView) {
    const mtx3w view = editor.camera().view.matrix;
    EXPECT_FALSE(click(3, widget(view_t::perspective, 50, 50)));
    EXPECT_EQ(trackball().translation.z, -7.25F);
    EXPECT_FALSE(click(4, widget(view_t::perspective, 50, 50)));
    EXPECT_FALSE(click(4, widget(view_t::perspective, 50, 50)));
    EXPECT_EQ(trackball().translation.z, -6.75F);
    EXPECT_FALSE(click(5, widget(view_t::perspective, 50, 50)));
    EXPECT_FALSE(click(~0U, widget(view_t::perspective, 50, 50)));
    EXPECT_EQ(trackball().translation.z, -6.75F);
    EXPECT_EQ(editor.camera().view.matrix, view);
}

TEST_F(Navigation, TheWheelGoesAQuarterOfAUnitPerNotch) {
    const auto [x, y] = widget(view_t::perspective, 50, 50);
    EXPECT_TRUE(editor.mouse_wheel(1, x, y));
    EXPECT_EQ(trackball().translation.z, -7.25F);
    EXPECT_EQ(editor.camera().view.matrix[14], -7.25F);
    EXPECT_TRUE(editor.mouse_wheel(-1, x, y));
    EXPECT_TRUE(editor.mouse_wheel(-1, x, y));
    EXPECT_EQ(trackball().translation.z, -6.75F);
    EXPECT_TRUE(editor.mouse_wheel(0, x, y));
    EXPECT_EQ(trackball().translation.z, -6.75F);
    EXPECT_EQ(editor.camera().fit.matrix, mtx_identity);
}

TEST_F(Navigation, TheDragGoesOnInTheViewOfItsPressWhereverTheMouseIs) {
    for (const auto& [width, height] : {std::pair{400, 320}, {401, 321}}) {
        resize(width, height);
        const dir3 before = trackball().translation;
        press(left_button, widget(view_t::perspective, 8, 8));
        move(widget(view_t::front, 8, 8));
        release(left_button, widget(view_t::front, 8, 8));
        const viewport_t at = area(view_t::perspective);
        EXPECT_EQ(trackball().translation, (dir3{before.x - static_cast<float>(at.x) / 16,
                                                 before.y - static_cast<float>(at.y) / 16, before.z}));
        EXPECT_EQ(editor.camera().fit.matrix, mtx_identity);
    }
}

TEST_F(Navigation, AReleaseAfterAWheelInAnotherViewIsNotSeen) {
    // The wheel takes the cursor to another view, and the camera asks the cursor whose release it is.
    press(left_button, widget(view_t::perspective, 50, 50));
    const auto [x, y] = widget(view_t::front, 50, 50);
    editor.mouse_wheel(0, x, y);
    release(left_button, widget(view_t::perspective, 50, 50));
    EXPECT_TRUE(trackball().drag[trackball_t::left].down);
}

TEST_F(Navigation, TheCameraTakesNoNoticeOfTheOperation) {
    open(square_block());
    for (const auto mode : {operation_mode_t::selection, operation_mode_t::punish, operation_mode_t::clipping,
                            operation_mode_t::folding}) {
        editor.set_mode(mode);
        drag(left_button, place_of(view_t::perspective, {-1, -1, 0}), widget(view_t::perspective, 3, 3));
        EXPECT_EQ(marked(0).size(), 0U);
        EXPECT_EQ(editor.scene().fold_picks[1].model, no_index);
        EXPECT_TRUE(entry(0).polygon.selectpolygons().empty());
    }
}

}  // namespace
