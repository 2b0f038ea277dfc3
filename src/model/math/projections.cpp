#include "model/math/projections.h"

#include <cmath>

namespace ulk3d {
namespace {

/// Half the height of the far plane, from the angle of the whole diagonal.
double far_half_height(const lens_t& lens) {
    return std::tan(lens.fov / 2) * lens.far / std::sqrt(lens.aspect * lens.aspect + 1);
}

projection symmetric(double right, double top, double near, double far) {
    return {-right, right, -top, top, near, far};
}

float narrow(double v) {
    return static_cast<float>(v);
}

}  // namespace

void lens_set_aspect(lens_t& lens, double w, double h) {
    lens.aspect = w / h;
}

void lens_focal_to_fov(lens_t& lens, double focal) {
    lens.fov = 2 * std::atan2(half_frame_diagonal, focal);
}

double lens_fov_to_focal(const lens_t& lens) {
    return std::tan(lens.fov / 2) * half_frame_diagonal;
}

projection lens_to_projection_near(const lens_t& lens) {
    const double h = far_half_height(lens);
    return symmetric(lens.aspect * h * lens.near / lens.far, h * lens.near / lens.far, lens.near, lens.far);
}

projection lens_to_projection_far(const lens_t& lens) {
    const double h = far_half_height(lens);
    return symmetric(lens.aspect * h, h, lens.near, lens.far);
}

void ortho_set_aspect(ortho_t& camera, double w, double h) {
    camera.half_width = w / h;
}

projection ortho_to_projection(const ortho_t& camera) {
    return symmetric(camera.half_width, 1, camera.near, camera.far);
}

mtx3w frustum_matrix(const projection& p) {
    const double width = p.right - p.left, height = p.top - p.bottom, depth = p.far - p.near;
    mtx3w m;
    m[0] = narrow(2 * p.near / width);
    m[5] = narrow(2 * p.near / height);
    m[8] = narrow((p.right + p.left) / width);
    m[9] = narrow((p.top + p.bottom) / height);
    m[10] = narrow(-(p.far + p.near) / depth);
    m[11] = -1;
    m[14] = narrow(-2 * p.far * p.near / depth);
    return m;
}

mtx3w frustum_inverse(const projection& p) {
    const double width = p.right - p.left, height = p.top - p.bottom, depth = p.far - p.near;
    mtx3w m;
    m[0] = narrow(width / (2 * p.near));
    m[5] = narrow(height / (2 * p.near));
    m[12] = narrow((p.right + p.left) / (2 * p.near));
    m[13] = narrow((p.top + p.bottom) / (2 * p.near));
    m[11] = narrow(-depth / (2 * p.far * p.near));
    m[14] = -1;
    m[15] = narrow((p.far + p.near) / (2 * p.far * p.near));
    return m;
}

mtx3w ortho_matrix(const projection& p) {
    const double width = p.right - p.left, height = p.top - p.bottom, depth = p.far - p.near;
    mtx3w m;
    m[0] = narrow(2 / width);
    m[5] = narrow(2 / height);
    m[10] = narrow(-2 / depth);
    m[12] = narrow(-(p.right + p.left) / width);
    m[13] = narrow(-(p.top + p.bottom) / height);
    m[14] = narrow(-(p.far + p.near) / depth);
    m[15] = 1;
    return m;
}

mtx3w ortho_inverse(const projection& p) {
    const double width = p.right - p.left, height = p.top - p.bottom, depth = p.far - p.near;
    mtx3w m;
    m[0] = narrow(width / 2);
    m[5] = narrow(height / 2);
    m[10] = narrow(-depth / 2);
    m[12] = narrow((p.right + p.left) / 2);
    m[13] = narrow((p.top + p.bottom) / 2);
    m[14] = narrow(-(p.far + p.near) / 2);
    m[15] = 1;
    return m;
}

}  // namespace ulk3d
