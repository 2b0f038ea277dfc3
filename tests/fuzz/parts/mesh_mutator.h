#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "fuzz/parts/fuzz_random.h"

namespace ulk_test {

/// The bytes of a mesh scene (fuzz/parts/mesh_scene.h) with a few changes of its points, strips, axis or
/// selected polygons. Coordinates go to the lattice and to those of other points, so that planes and edges of
/// both meshes coincide and corners touch; strips become whole triangles, tetrahedra and boxes. Every
/// third time `mutate_bytes` changes the bytes instead.
///
/// The result depends on the arguments alone and has at most `most_bytes`.
std::vector<std::uint8_t> mutated_mesh_scene(std::span<const std::uint8_t> bytes, std::size_t most_bytes,
                                             std::uint64_t seed, byte_mutator_t mutate_bytes);

}  // namespace ulk_test
