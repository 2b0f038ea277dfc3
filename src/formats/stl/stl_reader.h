#pragma once

#include "model/scene.h"

namespace ulk3d {

/// Appends the mesh of a binary STL file to `scene.models`: three vertices, a strip of its own and a flat
/// tangent frame for each triangle; no two vertices are merged. The file's header, its normals and its
/// attributes count for nothing. A GL context must be current.
///
/// A triangle is there when its three corners are: a file that ends early, or whose count says too much,
/// gives those that it holds, an empty file an empty mesh. A text is taken for what its bytes mean.
///
/// False, without a message, when the path can not be opened or is no plain file, and then also when the
/// arrays can not be allocated: the new model is left in the list for the caller to drop.
[[nodiscard]] bool load_stl(const char* path, scene_t& scene);

}  // namespace ulk3d
