#include "app/editor/camera.h"

#include <numbers>

#include "model/math/projections.h"
#include "model/math/vectors.h"

namespace ulk3d {

namespace {

constexpr dir3 x_axis{1, 0, 0};
constexpr dir3 y_axis{0, 1, 0};

}  // namespace

void camera_t::update_ortho(const view_layout_t& layout) {
    const double aspect = layout.aspect();
    const projection box{-aspect, aspect, -1.0, 1.0, -10.0, 1000.0};
    ortho = {ortho_matrix(box), ortho_inverse(box)};
}

void camera_t::update_perspective(const view_layout_t& layout) {
    // The field of view spans the whole diagonal, so that a view looks much the same when its shape changes.
    const lens_t lens{.fov = std::numbers::pi / 2, .aspect = layout.aspect(), .near = 0.0625, .far = 1024.0};
    const projection frustum = lens_to_projection_near(lens);
    perspective = {frustum_matrix(frustum), frustum_inverse(frustum)};
}

void camera_t::update_ortho_views() {
    front = fit;
    side = {fit.matrix * rotation(-90.0F, y_axis), rotation(90.0F, y_axis) * fit.inverse};
    top = {fit.matrix * rotation(90.0F, x_axis), rotation(-90.0F, x_axis) * fit.inverse};
}

void camera_t::update_view() {
    const dir3& t = trackball.translation;
    view.matrix = rot3_to_mtx(trackball.rotation);
    view.matrix[12] += t.x;
    view.matrix[13] += t.y;
    view.matrix[14] += t.z;
    view.inverse = translation(-t) * rot3_to_mtx(trackball.rotation_inverse);
}

}  // namespace ulk3d
