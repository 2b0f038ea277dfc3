#pragma once

#include "model/math/records.h"

/// Cameras and their matrices. Everything is computed in double precision; matrices are rounded to float at
/// the end.
namespace ulk3d {

/// Half the diagonal of a film frame of 36 by 24.
inline constexpr double half_frame_diagonal = 21.633307652783937;

/// Field of view 90 degrees over the diagonal, aspect 4 to 3, near 0.1, far 1000.1.
constexpr lens_t lens_default() {
    return {};
}

/// Sets the aspect to w / h.
void lens_set_aspect(lens_t& lens, double w, double h);

/// Sets the field of view that a focal length, in the units of the film frame, has on it.
void lens_focal_to_fov(lens_t& lens, double focal);

/// tan(fov / 2) times half the frame's diagonal. It grows with the field of view, so it is not the inverse of
/// `lens_focal_to_fov`.
double lens_fov_to_focal(const lens_t& lens);

/// The frustum of a lens, described by its extent at the near or at the far plane.
projection lens_to_projection_near(const lens_t& lens);
projection lens_to_projection_far(const lens_t& lens);

/// Sets half_width to w / h.
void ortho_set_aspect(ortho_t& camera, double w, double h);

/// The box of an orthographic camera, from -1 to 1 in height.
projection ortho_to_projection(const ortho_t& camera);

/// Perspective matrix of the extent at the near plane, and its closed-form inverse.
mtx3w frustum_matrix(const projection& p);
mtx3w frustum_inverse(const projection& p);

/// Orthographic matrix of a box, and its closed-form inverse.
mtx3w ortho_matrix(const projection& p);
mtx3w ortho_inverse(const projection& p);

}  // namespace ulk3d
