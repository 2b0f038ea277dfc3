#pragma once

#include <cstdint>

/// What the process that reads a file sends to its parent: packets, each behind its kind.
///
/// A message and a failure are a `std::uint32_t`, the number of bytes, and these. A mesh is a mesh_head_t,
/// the bytes of its colour map's name, its vertices (vertex_t), as many frames (frame_t) if there are some,
/// and its elements. Behind a failure or an end comes nothing more.
namespace ulktool {

enum class packet_t : std::uint32_t { message, mesh, failure, end };

/// What the file has of the frames of its vertices.
enum class frames_t : std::uint32_t { none, normals, whole };

struct mesh_head_t {
    std::uint32_t vertex_count = 0;
    std::uint32_t element_count = 0;
    std::uint32_t picture_size = 0;
    frames_t frames = frames_t::none;
};

}  // namespace ulktool
