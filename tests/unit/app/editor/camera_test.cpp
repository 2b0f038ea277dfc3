#include "app/editor/camera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "model/math/vectors.h"

namespace {

using namespace ulk3d;

view_layout_t layout_of(int width, int height) {
    view_layout_t layout;
    layout.resize(width, height);
    return layout;
}

void expect_identity(const mtx3w& m) {
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_NEAR(m[i], mtx_identity[i], 2e-4) << "element " << i;
}

pos3 projected(const pos3& p, const mtx3w& m) {
    return dehomogenize(vec_times_mtx(homogenize(p), m));
}

TEST(Camera, PerspectiveSpansNinetyDegreesOverTheDiagonal) {
    camera_t camera;
    camera.update_perspective(layout_of(1024, 768));
    const double aspect = 512.0 / 384.0;
    const double top = std::tan(std::numbers::pi / 4) * 0.0625 / std::sqrt(aspect * aspect + 1);
    const mtx3w& m = camera.perspective.matrix;
    EXPECT_FLOAT_EQ(m[0], static_cast<float>(0.0625 / (top * aspect)));
    EXPECT_FLOAT_EQ(m[5], static_cast<float>(0.0625 / top));
    EXPECT_FLOAT_EQ(m[10], static_cast<float>(-(1024.0 + 0.0625) / (1024.0 - 0.0625)));
    EXPECT_FLOAT_EQ(m[11], -1.0F);
    EXPECT_FLOAT_EQ(m[14], static_cast<float>(-2.0 * 1024.0 * 0.0625 / (1024.0 - 0.0625)));
    // A point on the corner of the frustum, 45 degrees off the axis over the diagonal, lands in the corner.
    const auto half_height = static_cast<float>(1.0 / std::sqrt(aspect * aspect + 1));
    const pos3 corner = projected({static_cast<float>(aspect) * half_height, half_height, -1}, m);
    EXPECT_NEAR(corner.x, 1, 1e-5);
    EXPECT_NEAR(corner.y, 1, 1e-5);
}

TEST(Camera, ProjectionsCarryTheirInverses) {
    camera_t camera;
    camera.update_perspective(layout_of(640, 480));
    camera.update_ortho(layout_of(640, 480));
    for (const pos3& p : {pos3{0.1F, -0.2F, -3}, pos3{-2, 1, -5}}) {
        const pos3 seen = projected(p, camera.perspective.matrix);
        const pos3 back = projected(seen, camera.perspective.inverse);
        EXPECT_NEAR(back.x, p.x, 1e-3);
        EXPECT_NEAR(back.y, p.y, 1e-3);
        EXPECT_NEAR(back.z, p.z, 1e-2);
    }
    expect_identity(camera.ortho.matrix * camera.ortho.inverse);
}

TEST(Camera, OrthoBoxHasHeightTwoAndTheViewsAspect) {
    camera_t camera;
    camera.update_ortho(layout_of(800, 400));
    EXPECT_NEAR(projected({2, 1, 10}, camera.ortho.matrix).x, 1, 1e-6);
    EXPECT_NEAR(projected({2, 1, 10}, camera.ortho.matrix).y, 1, 1e-6);
    EXPECT_NEAR(projected({2, 1, 10}, camera.ortho.matrix).z, -1, 1e-6);
    EXPECT_NEAR(projected({-2, -1, -1000}, camera.ortho.matrix).z, 1, 1e-6);
}

TEST(Camera, SideViewLooksAlongTheXAxis) {
    camera_t camera;
    camera.fit = {scale(2, 2, 2), scale(0.5F, 0.5F, 0.5F)};
    camera.update_ortho_views();
    const pos3 seen = transform_point({3, 5, 7}, camera.side.matrix);
    EXPECT_NEAR(seen.x, -14, 1e-5);
    EXPECT_NEAR(seen.y, 10, 1e-5);
    EXPECT_NEAR(seen.z, 6, 1e-5);
    expect_identity(camera.side.matrix * camera.side.inverse);
}

TEST(Camera, TopViewLooksDownTheYAxis) {
    camera_t camera;
    camera.update_ortho_views();
    const pos3 seen = transform_point({3, 5, 7}, camera.top.matrix);
    EXPECT_NEAR(seen.x, 3, 1e-5);
    EXPECT_NEAR(seen.y, -7, 1e-5);
    EXPECT_NEAR(seen.z, 5, 1e-5);
    expect_identity(camera.top.matrix * camera.top.inverse);
}

TEST(Camera, FrontViewIsTheFit) {
    camera_t camera;
    camera.fit = {scale(2, 3, 4), scale(0.5F, 1.0F / 3, 0.25F)};
    camera.update_ortho_views();
    EXPECT_EQ(camera.front.matrix, camera.fit.matrix);
    EXPECT_EQ(camera.front.inverse, camera.fit.inverse);
}

TEST(Camera, OrthographicViewsFitBeforeTheyTurn) {
    camera_t camera;
    camera.fit = {scale(2, 3, 4), scale(0.5F, 1.0F / 3, 0.25F)};
    camera.update_ortho_views();
    // Depth of the model, scaled by the depth's own factor, becomes the side view's x.
    EXPECT_NEAR(transform_point({0, 0, 1}, camera.side.matrix).x, -4, 1e-5);
    EXPECT_NEAR(transform_point({0, 0, 1}, camera.top.matrix).y, -4, 1e-5);
}

TEST(Camera, ViewTurnsAndThenMoves) {
    camera_t camera;
    camera.trackball.rotation = {90, {0, 0, 1}};
    camera.trackball.rotation_inverse = {-90, {0, 0, 1}};
    camera.trackball.translation = {10, 20, 30};
    camera.update_view();
    const pos3 seen = transform_point({1, 0, 0}, camera.view.matrix);
    EXPECT_NEAR(seen.x, 10, 1e-5);
    EXPECT_NEAR(seen.y, 21, 1e-5);
    EXPECT_NEAR(seen.z, 30, 1e-5);
    const pos3 back = transform_point(seen, camera.view.inverse);
    EXPECT_NEAR(back.x, 1, 1e-4);
    EXPECT_NEAR(back.y, 0, 1e-4);
    EXPECT_NEAR(back.z, 0, 1e-4);
}

TEST(Camera, InverseViewUsesItsOwnRotationRecord) {
    camera_t camera;
    camera.trackball.rotation = {90, {0, 0, 1}};
    camera.trackball.rotation_inverse = rot3_identity;
    camera.trackball.translation = {0, 0, 0};
    camera.update_view();
    EXPECT_EQ(camera.view.inverse, mtx_identity);
}

}  // namespace
