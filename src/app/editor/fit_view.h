#pragma once

#include "app/editor/camera.h"
#include "model/scene.h"

namespace ulk3d {

/// Resets every turn and move of the camera and fits the scene into all four views. A GL context must be
/// current.
///
/// `fit` scales the scene's box, enlarged by an eighth, to unit size, on each axis separately. The trackball
/// moves back along z until the point that lies furthest outside the picture, as seen from in front of the
/// box, would be inside; without models, or without points, it is at (0, 0, -7). `view` becomes the identity
/// until `update_view` derives it from the trackball, and the orthographic views follow with
/// `update_ortho_views`.
void reset_view(camera_t& camera, const model_list_t& models);

}  // namespace ulk3d
