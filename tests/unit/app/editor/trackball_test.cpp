#include "app/editor/trackball.h"

#include <gtest/gtest.h>

#include <cmath>

#include "app/editor/camera.h"
#include "model/math/vectors.h"

namespace {

using namespace ulk3d;

drag_view_t background() {
    return {100, 80, mtx_identity, mtx_identity, 0};
}

void expect_near(const dir3& a, const dir3& b, float tolerance = 1e-5F) {
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
    EXPECT_NEAR(a.z, b.z, tolerance);
}

/// Where a model point stands in the view.
pos3 seen(const trackball_t& ball, const pos3& p) {
    camera_t camera;
    camera.trackball = ball;
    camera.update_view();
    return transform_point(p, camera.view.matrix);
}

TEST(Trackball, StandsSevenUnitsAway) {
    const trackball_t ball;
    EXPECT_EQ(ball.translation, (dir3{0, 0, -7}));
    EXPECT_EQ(ball.rotation, rot3_identity);
    EXPECT_FALSE(ball.alternate);
}

TEST(Trackball, LeftDragOverTheBackgroundPansASixteenthPerPixel) {
    trackball_t ball;
    ball.press(trackball_t::left, 10, 20);
    ball.move(26, 12, background());
    EXPECT_EQ(ball.translation, (dir3{1, -0.5F, -7}));
    ball.move(26, 28, background());
    EXPECT_EQ(ball.translation, (dir3{1, 0.5F, -7}));
}

TEST(Trackball, LeftDragOverASurfaceKeepsItUnderThePointer) {
    camera_t camera;
    view_layout_t layout;
    layout.resize(400, 320);
    camera.update_perspective(layout);
    camera.trackball.rotation = {30, {0, 1, 0}};
    camera.trackball.rotation_inverse = {-30, {0, 1, 0}};
    camera.trackball.translation = {0.3F, 0.1F, -5};
    camera.update_view();
    const pos3 point{0.4F, -0.2F, 0.6F};
    const auto on_screen = [&camera](const pos3& p) {
        return dehomogenize(
            vec_times_mtx(vec_times_mtx(homogenize(p), camera.view.matrix), camera.perspective.matrix));
    };
    const pos3 before = on_screen(point);
    const float x = before.x * 100 + 100, y = before.y * 80 + 80;
    camera.trackball.press(trackball_t::left, x, y);
    camera.trackball.move(x + 15, y - 12,
                          {100, 80, camera.view.inverse, camera.perspective.inverse, before.z});
    camera.update_view();
    const pos3 after = on_screen(point);
    EXPECT_NEAR(after.x * 100 + 100, x + 15, 0.05);
    EXPECT_NEAR(after.y * 80 + 80, y - 12, 0.05);
}

TEST(Trackball, MiddleDragGoesAlongZAndRollsADegreePerPixel) {
    trackball_t ball;
    ball.press(trackball_t::middle, 50, 50);
    ball.move(140, 66, background());
    EXPECT_NEAR(ball.translation.z, -6, 1e-6);
    EXPECT_NEAR(ball.rotation.angle, 90, 1e-3);
    expect_near(ball.rotation.axis, {0, 0, 1});
    EXPECT_NEAR(ball.rotation_inverse.angle, 90, 1e-3);
    expect_near(ball.rotation_inverse.axis, {0, 0, -1});
}

TEST(Trackball, RightDragTurnsADegreePerPixelAboutTheViewsAxes) {
    trackball_t ball;
    ball.press(trackball_t::right, 0, 0);
    ball.move(90, 0, background());
    expect_near(ball.rotation.axis, {0, 1, 0});
    EXPECT_NEAR(ball.rotation.angle, 90, 1e-3);
    // The second step turns about the view's x axis, not about the model's.
    ball.move(90, -90, background());
    const pos3 p = seen(ball, {0, 0, 1});
    EXPECT_NEAR(p.x, 1, 1e-5);
    const pos3 q = seen(ball, {0, 1, 0});
    EXPECT_NEAR(q.z + 7, 1, 1e-5);
}

TEST(Trackball, TheInverseUndoesTheRotationAfterManySteps) {
    trackball_t ball;
    ball.press(trackball_t::right, 0, 0);
    ball.press(trackball_t::middle, 0, 0);
    for (int i = 1; i < 200; ++i)
        ball.move(static_cast<float>(i * 3 % 41), static_cast<float>(i * 7 % 53), background());
    const mtx3w product = rot3_to_mtx(ball.rotation) * rot3_to_mtx(ball.rotation_inverse);
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_NEAR(product[i], mtx_identity[i], 1e-3);
}

TEST(Trackball, AStepOfNothingKeepsTheIdentityFinite) {
    trackball_t ball;
    ball.press(trackball_t::right, 5, 5);
    ball.move(5, 5, background());
    EXPECT_EQ(ball.rotation, rot3_identity);
    EXPECT_EQ(ball.rotation_inverse, rot3_identity);
}

TEST(Trackball, AReleasedButtonMovesNoMore) {
    trackball_t ball;
    ball.press(trackball_t::left, 0, 0);
    ball.release(trackball_t::left);
    ball.move(100, 100, background());
    EXPECT_EQ(ball.translation, (dir3{0, 0, -7}));
}

TEST(Trackball, WheelsThatArriveAsButtonsMoveAQuarter) {
    trackball_t ball;
    ball.press(trackball_t::wheel_up, 0, 0);
    EXPECT_EQ(ball.translation.z, -7.25F);
    ball.press(trackball_t::wheel_down, 0, 0);
    ball.press(trackball_t::wheel_down, 0, 0);
    EXPECT_EQ(ball.translation.z, -6.75F);
    ball.press(5, 0, 0);
    ball.release(5);
    EXPECT_EQ(ball.translation.z, -6.75F);
}

TEST(Trackball, AlternateTurnsItsOwnRecordsAndSilencesTheOtherButtons) {
    trackball_t ball;
    ball.alternate = true;
    for (const unsigned button : {trackball_t::left, trackball_t::middle, trackball_t::right})
        ball.press(button, 0, 0);
    ball.move(45, 0, background());
    EXPECT_EQ(ball.translation, (dir3{0, 0, -7}));
    EXPECT_EQ(ball.rotation, rot3_identity);
    EXPECT_NEAR(ball.alternate_rotation.angle, 45, 1e-3);
    EXPECT_NEAR(ball.alternate_inverse.angle, 45, 1e-3);
    expect_near(ball.alternate_inverse.axis, {0, -1, 0});
}

TEST(Trackball, ResetKeepsDragsUnderWay) {
    trackball_t ball;
    ball.press(trackball_t::middle, 3, 4);
    ball.move(30, 40, background());
    ball.reset();
    EXPECT_EQ(ball.rotation, rot3_identity);
    EXPECT_EQ(ball.rotation_inverse, rot3_identity);
    EXPECT_EQ(ball.translation, (dir3{0, 0, 0}));
    EXPECT_TRUE(ball.drag[trackball_t::middle].down);
}

}  // namespace
