#pragma once

#include <span>
#include <vector>

#include "support/cut_area.h"

/// Volumes of what is left of closed meshes, computed in double precision from the meshes as they were, by
/// clipping convex bodies at planes: nothing of the mesh cut is used.
namespace ulk_test {

/// The volume that a closed surface encloses, negative for one that is turned inside out.
double volume_of(std::span<const face_t> faces);
double volume_of(const strip_mesh_t& mesh);

/// A convex body by its faces, each a polygon that runs counter-clockwise as seen from outside.
using body_t = std::vector<std::vector<point_t>>;

/// The inner side of the plane through a face.
struct half_space_t {
    explicit half_space_t(const face_t& face);
    point_t normal;  ///< unit, to the outside
    double distance;
};

/// What of a convex body is in a half space.
body_t clipped(const body_t& body, const half_space_t& side);

/// The volume of a victim, which need not be convex, without convex cutters.
double volume_without(const strip_mesh_t& victim, std::span<const strip_mesh_t> cutters);

/// The volume that two closed meshes have in common, of which none need be convex.
double volume_of_both(const strip_mesh_t& a, const strip_mesh_t& b);

}  // namespace ulk_test
