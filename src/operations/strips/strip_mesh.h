#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "model/polygon/polygon.h"
#include "model/vertex.h"

namespace ulk3d {

/// A host copy of the mesh of a polygon_t. Operations that change a mesh triangle by triangle work on it
/// without touching GL, and write it back once.
struct strip_mesh_t {
    std::vector<vertex_t> vertices;
    std::vector<frame_t> frames;          ///< one per vertex
    std::vector<std::uint32_t> elements;  ///< triangle strips, to be read by the rule of strip_walk.h

    bool operator==(const strip_mesh_t&) const = default;
};

/// Reads the mesh from the buffers. Every index at or above the vertex count, which ends a strip, is returned
/// as the restart mark: left as it is, it would become valid when vertices are added.
///
/// Empty when a buffer can not be mapped.
[[nodiscard]] std::optional<strip_mesh_t> read_strip_mesh(const array_t& vertices, const array_t& normals,
                                                          const element_array_t& elements);
[[nodiscard]] std::optional<strip_mesh_t> read_strip_mesh(const polygon_t& polygon);

/// Writes the mesh into these arrays, which grow or shrink to its counts. For the arrays of a model, the
/// caller then has what depends on them renewed (`polygon_t::extend`).
///
/// False when GL has no memory, or when an array was never allocated: all three stay as they were.
[[nodiscard]] bool write_strip_mesh(const strip_mesh_t& mesh, array_t& vertices, array_t& normals,
                                    element_array_t& elements);

/// Gives the model this mesh: resizes and writes its vertices, normals and elements, then completes the edit
/// by one call of `polygon_t::extend`, which renews the polygon ids. Counts of 0 are legal.
///
/// False when GL has no memory, or when the model was never allocated. Without room for the vertices, normals
/// and elements the model stays as it was; later failures are those of `extend`.
[[nodiscard]] bool write_strip_mesh(polygon_t& polygon, const strip_mesh_t& mesh);

}  // namespace ulk3d
