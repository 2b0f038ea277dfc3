#pragma once

#include <vector>

#include "tool/tidy/triangle_mesh.h"

namespace ulktool {

/// Gives all vertices smooth frames, whose normals are means over edges that are flatter than the angle,
/// between 0 and 180 degrees (tool/tidy/corner_frames.h). A vertex on a sharper edge becomes several at the
/// same place, one for each side, next to each other in the order of the vertices.
void smooth(triangle_mesh_t& mesh, double degrees);

/// Gives the vertices that are marked in `renewed` the mean frame of their triangles, over edges of any
/// angle.
void renew_frames(triangle_mesh_t& mesh, const std::vector<bool>& renewed);

}  // namespace ulktool
