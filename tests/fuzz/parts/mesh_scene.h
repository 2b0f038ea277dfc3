#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <vector>

#include "operations/strips/strip_mesh.h"

namespace ulk_test {

/// Strips over points.
struct plain_mesh_t {
    std::vector<ulk3d::pos3> points;
    std::vector<std::uint32_t> elements;  ///< indices of points, and restart marks
};

/// What the edits of meshes are tried on: a mesh that another one cuts, and an axis about which some of its
/// polygons are folded.
struct mesh_scene_t {
    plain_mesh_t victim, cutter;
    ulk3d::pos3 axis_from, axis_to;
    std::set<std::uint32_t> selected;  ///< polygon ids
};

inline constexpr std::uint32_t most_victim_points = 16, most_victim_elements = 24;
inline constexpr std::uint32_t most_cutter_points = 12, most_cutter_elements = 16;
inline constexpr std::uint32_t most_selected = 5, polygon_id_limit = 24;

/// Reads a scene out of any bytes; behind their end all are 0. In this order: the points and the elements of
/// the victim and of the cutter, both ends of the axis, and the selected polygons; before each list its
/// length.
///
/// Coordinates are mostly on a coarse lattice, in steps of a quarter, so that corners, edges and planes meet;
/// at times they are any float.
mesh_scene_t read_mesh_scene(std::span<const std::uint8_t> bytes);

/// Bytes that `read_mesh_scene` reads back as the same scene, or as its beginning where it is too large.
std::vector<std::uint8_t> bytes_of(const mesh_scene_t& scene);

ulk3d::strip_mesh_t strip_mesh_of(const plain_mesh_t& mesh);

}  // namespace ulk_test
