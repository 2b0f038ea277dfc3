#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "operations/strips/strip_mesh.h"
#include "tool/tidy/triangle_mesh.h"

namespace ulktool {

/// What is done to a mesh, in the order of the members. In the end its strips are made anew, whatever was
/// asked for. Tidying what was tidied in the same way changes nothing.
struct tidy_options_t {
    /// Vertices that agree in colour and texture coordinates become one when they are no farther apart than
    /// this (tool/tidy/weld.h). Where their frames differ and `smooth_degrees` is empty, the one gets the
    /// mean frame of its triangles.
    std::optional<double> weld_tolerance;
    std::optional<std::size_t> most_triangles;  ///< thins the mesh out (tool/tidy/simplify.h)
    std::optional<double> smooth_degrees;       ///< makes all frames anew (tool/tidy/smooth.h)
};

/// A mesh as it lies in the buffers of a model.
struct mesh_view_t {
    std::span<const ulk3d::vertex_t> vertices;
    std::span<const ulk3d::frame_t> frames;   ///< one per vertex
    std::span<const std::uint32_t> elements;  ///< strips, as in model/polygon/strip_walk.h
};

/// What a mesh consists of.
struct mesh_counts_t {
    std::uint64_t triangles = 0, vertices = 0;
    std::uint64_t strips = 0;  ///< those with a triangle at least
    std::uint64_t bytes = 0;   ///< of the vertices, frames and elements in memory
};
[[nodiscard]] mesh_counts_t count_mesh(const mesh_view_t& mesh);

/// A mesh between the two halves of the work.
struct taken_mesh_t {
    triangle_mesh_t mesh;
    std::vector<bool> renewed;  ///< the vertices that get the mean frame of their triangles
};

/// The first half: reads the triangles out of the strips, welds their corners if that is asked for, and takes
/// only the vertices that are used. Empty triangles, two corners of which are at the same position, are left
/// out.
[[nodiscard]] taken_mesh_t take_mesh(const mesh_view_t& mesh, const tidy_options_t& options);

/// The second half: what is left to do. `taken` has been used up then.
[[nodiscard]] ulk3d::strip_mesh_t tidy_mesh(taken_mesh_t& taken, const tidy_options_t& options);

}  // namespace ulktool
