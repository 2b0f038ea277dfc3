#pragma once

#include <string>

#include "model/polygon/polygon.h"
#include "tool/tidy/tidy_mesh.h"

namespace ulktool {

/// What became of a mesh.
struct tidied_t {
    mesh_counts_t before, after;
    std::string failure;  ///< why it could not be tidied; empty when it was
};

/// Tidies the mesh of a polygon model. One without triangles, empty ones left out of account, stays as it is;
/// one that would lose all of its triangles fails. Polygons and points are no longer selected afterwards. So
/// that no more memory is taken than needed, the mesh is not kept while the new one is made: when that fails
/// the model is empty. A GL context must be current.
[[nodiscard]] tidied_t tidy_polygon(ulk3d::polygon_t& polygon, const tidy_options_t& options);

}  // namespace ulktool
