#pragma once

#include "model/scene.h"

namespace ulk3d {

/// Appends the mesh of a binary STL file to `scene.models`: each triangle gets three vertices, its own strip
/// and a flat tangent frame; vertices are not merged. The file's header, normals and attributes are ignored.
/// A GL context must be current.
///
/// A triangle counts when its three corners are present: a file that ends early, or whose count is too high,
/// gives the triangles that it contains; an empty file gives an empty mesh. An ASCII file is read as if it
/// were binary.
///
/// False, without a message, when the path can not be opened or is not a plain file, and when the arrays can
/// not be allocated or mapped; in the latter case the new model is left in the list for the caller to drop.
[[nodiscard]] bool load_stl(const char* path, scene_t& scene);

}  // namespace ulk3d
