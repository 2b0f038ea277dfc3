#pragma once

#include "app/editor/camera.h"
#include "app/editor/view_layout.h"
#include "model/math/matrices.h"
#include "model/scene.h"

namespace ulktool {

/// Looks at the whole scene in all four views, in its true proportions, whatever its place and size. What is
/// drawn is centred and reaches to the nearer edges of each view but for a narrow margin: in the perspective
/// view the surfaces, turned by `turn`, and the points too when `with_points`; in the others the points, in
/// one scale for the three of them. What has no finite place does not count.
///
/// Sets `camera.view`, whose inverse then only turns back, as surfaces need no more of it, and `camera.fit`.
/// The matrices of the orthographic views are the caller's to derive. False, with nothing set, when the
/// perspective view would show nothing. A GL context must be current.
[[nodiscard]] bool fit_scene(ulk3d::camera_t& camera, const ulk3d::view_layout_t& layout,
                             const ulk3d::model_list_t& models, const ulk3d::mtx3w& turn, bool with_points);

}  // namespace ulktool
