#pragma once

#include <cstdint>

#include "operations/strips/strip_mesh.h"
#include "support/cut_meshes.h"

/// The scenes on which the mesh cut is measured, by the program and by its peers.
namespace mesh_cut_scenes {

using ulk3d::strip_mesh_t;

struct cut_scene_t {
    strip_mesh_t victim, cutter;
};

/// Two smooth spheres of 20 times 4 to the power `level` triangles each, in strips, as in files.
inline cut_scene_t spheres(std::int64_t level) {
    return {ulk_test::in_strips(ulk_test::sphere({0, 0, 0}, 1, static_cast<int>(level))),
            ulk_test::in_strips(ulk_test::sphere({0.5F, 0.3F, 0.2F}, 1, static_cast<int>(level)))};
}

/// The same spheres with every vertex displaced at random, one triangle to a strip, as from a scanner.
inline cut_scene_t scans(std::int64_t level) {
    const auto scan = [level](const ulk3d::pos3& center, unsigned seed) {
        const float edge = 1.2F / static_cast<float>(1 << level);
        return ulk_test::shaken(ulk_test::sphere(center, 1, static_cast<int>(level)), 0.15F * edge, seed);
    };
    return {scan({0, 0, 0}, 1), scan({0.5F, 0.3F, 0.2F}, 2)};
}

/// One triangle to a strip; the hole is one wide.
inline strip_mesh_t torus_of_a_million() {
    return ulk_test::torus({0, 0, 0}, 1, 0.5F, 1000, 500);
}

/// A box of 12 triangles that takes a small cap off the outside of a torus of a million.
inline cut_scene_t cap_of_a_million() {
    return {torus_of_a_million(), ulk_test::box({1.4F, -0.1F, -0.1F}, {1.6F, 0.1F, 0.1F})};
}

/// A torus of a million triangles and a box of 12 in its hole: the boxes around both overlap, while no
/// triangles touch.
inline cut_scene_t hole_of_a_million() {
    return {ulk_test::box({-0.1F, -0.1F, -0.1F}, {0.1F, 0.1F, 0.1F}), torus_of_a_million()};
}

/// The same with the box beside the torus, so that the boxes around both are apart.
inline cut_scene_t beside_a_million() {
    return {ulk_test::box({1.9F, -0.1F, -0.1F}, {2.1F, 0.1F, 0.1F}), torus_of_a_million()};
}

}  // namespace mesh_cut_scenes
