#pragma once

#include <assimp/mesh.h>

#include <cstdint>
#include <vector>

namespace ulktool {

/// No vertex.
inline constexpr std::uint32_t no_vertex = 0xFFFFFFFF;

/// For each vertex of a mesh the first one that equals it in everything that is carried, to the last bit:
/// position, normal, tangents, colour and texture coordinate.
std::vector<std::uint32_t> first_equal_vertices(const aiMesh& mesh, unsigned int coordinates);

}  // namespace ulktool
