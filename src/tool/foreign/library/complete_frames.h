#pragma once

#include <cstdint>
#include <span>

#include "model/vertex.h"

namespace ulktool {

/// Gives frames of which only the normals are known their tangents and binormals: along the texture
/// coordinates of the triangles around, square to the normal, and where these have no direction in any one.
/// A normal that is zero leaves its frame as it is. There are as many frames as vertices.
void complete_frames(std::span<const ulk3d::vertex_t> vertices, std::span<ulk3d::frame_t> frames,
                     std::span<const std::uint32_t> elements);

}  // namespace ulktool
