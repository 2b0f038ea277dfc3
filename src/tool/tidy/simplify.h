#pragma once

#include <cstddef>

#include "tool/tidy/triangle_mesh.h"

namespace ulktool {

/// Thins a mesh out to at most that many triangles, as far as the surface can stay whole: rims and seams stay
/// closed, and triangles that share no vertices stay as they are. Something is always left, though small
/// parts may vanish. Vertices stay where they are; those that are no longer used are dropped. Triangles with
/// coordinates that are not finite stay as they are. A mesh that has no more triangles is left alone.
void simplify(triangle_mesh_t& mesh, std::size_t most_triangles);

}  // namespace ulktool
