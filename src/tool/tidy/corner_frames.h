#pragma once

#include <cstdint>
#include <vector>

#include "model/vertex.h"
#include "tool/tidy/triangle_mesh.h"

namespace ulktool {

/// A frame of a vertex, and what it is for.
struct corner_frame_t {
    std::uint32_t vertex;  ///< the vertex of the mesh
    std::uint32_t rank;    ///< 0 for the first frame of the vertex, 1 for the second
    ulk3d::frame_t frame;
};

/// The frames of all corners of a mesh.
struct corner_frames_t {
    std::vector<corner_frame_t> frames;    ///< those of a vertex one after the other, all different
    std::vector<std::uint32_t> of_corner;  ///< index into `frames` of corner k of triangle t at 3 t + k
};

/// Makes smooth frames. The triangles about a place in space, whatever vertices they have there, are divided
/// into groups that hold together over edges between triangles whose normals have a cosine above
/// `least_cosine`. The normal of a group is the mean of its triangles' normals, weighted by their angles at
/// the place. A vertex gets a frame for each group that it is a corner of, and another one where the map on
/// it is mirrored.
///
/// The tangent lies across the normal and follows the growing s of the texture coordinates of the vertex's
/// own triangles in the group, the binormal is at right angles to both on the side of growing t. Where there
/// are no texture coordinates the frame is right-handed, its tangent the x axis laid across the normal, or
/// the negative z axis where the normal is near the x axis.
///
/// Triangles without area, or with coordinates that are not finite, have no part in this. Their corners take
/// the first frame of their vertex; where it has none, the one that it had. An edge that more than 64
/// triangles share divides all of them. The frames and their order depend only on the triangles and their
/// corners, not on the order in which they are stored.
[[nodiscard]] corner_frames_t smooth_corner_frames(const triangle_mesh_t& mesh, double least_cosine);

}  // namespace ulktool
