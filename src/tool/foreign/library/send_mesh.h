#pragma once

#include <assimp/matrix4x4.h>
#include <assimp/mesh.h>

#include <cstdint>

#include "tool/foreign/library/mesh_surface.h"
#include "tool/foreign/library/reader_process.h"

namespace ulktool {

/// Removes what is no triangle or polygon with corners that exist; returns how many faces it removed.
std::uint32_t remove_unusable_faces(aiMesh& mesh);

/// Sends a mesh of triangles (scene_packets.h), moved by `place`, with its winding turned where that mirrors.
/// A mesh in which no two triangles share a vertex is one that the library has taken apart: there, equal
/// vertices become one, unless `may_share_corners` is false. Leaves out triangles with positions that are not
/// finite, and returns their number. When no triangle is left it sends nothing.
struct sent_mesh_t {
    std::uint32_t left_out = 0;
    bool is_sent = false;
};
sent_mesh_t send_mesh(const aiMesh& mesh, const aiMatrix4x4& place, const mesh_surface_t& surface,
                      process_output_t& output);

}  // namespace ulktool
