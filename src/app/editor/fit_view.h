#pragma once

#include "app/editor/camera.h"
#include "model/scene.h"

namespace ulk3d {

/// Forgets every turn and move of the camera and fits the scene into all four views. A GL context must be
/// current.
///
/// `fit` brings the scene's box, an eighth enlarged, to unit size, each axis by itself. The trackball goes
/// back along z until the point that reaches furthest out of the picture, seen from in front of the box,
/// would be in it; with no model, or no point, it stands at (0, 0, -7). `view` becomes the identity until
/// `update_view` brings the trackball into it, and the orthographic views follow at `update_ortho_views`.
void reset_view(camera_t& camera, const model_list_t& models);

}  // namespace ulk3d
