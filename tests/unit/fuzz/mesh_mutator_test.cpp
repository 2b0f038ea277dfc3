#include "fuzz/parts/mesh_mutator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <random>

#include "fuzz/parts/mesh_scene.h"
#include "support/cut_scenes.h"

namespace {

using namespace ulk_test;
using bytes_t = std::vector<std::uint8_t>;

bytes_t random_bytes(unsigned seed, std::size_t size) {
    std::mt19937 random(seed);
    bytes_t bytes(size);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random());
    return bytes;
}

std::size_t fill_with_200(std::uint8_t* data, std::size_t, std::size_t most) {
    std::fill_n(data, most, std::uint8_t{200});
    return most;
}

bool is_same(const mesh_scene_t& a, const mesh_scene_t& b) {
    return ulk_test::is_same(strip_mesh_of(a.victim), strip_mesh_of(b.victim)) &&
           ulk_test::is_same(strip_mesh_of(a.cutter), strip_mesh_of(b.cutter)) &&
           a.axis_from == b.axis_from && a.axis_to == b.axis_to && a.selected == b.selected;
}

/// Two triangles that have no coordinate in common.
bytes_t two_triangles() {
    mesh_scene_t scene;
    scene.victim = {{{0.1F, 0.2F, 0.3F}, {0.4F, 0.6F, 0.7F}, {0.8F, 0.9F, 0.11F}}, {0, 1, 2}};
    scene.cutter = {{{0.12F, 0.13F, 0.14F}, {0.15F, 0.16F, 0.17F}, {0.18F, 0.19F, 0.21F}}, {0, 1, 2}};
    scene.axis_to = {0.22F, 0.23F, 0.24F};
    return bytes_of(scene);
}

/// Pairs of equal coordinates of a point of the victim and one of the cutter.
std::size_t common_coordinates(const mesh_scene_t& scene) {
    std::size_t pairs = 0;
    for (const pos3& a : scene.victim.points)
        for (const pos3& b : scene.cutter.points)
            pairs += std::size_t{a.x == b.x} + std::size_t{a.y == b.y} + std::size_t{a.z == b.z};
    return pairs;
}

bool lists_within_limits(const mesh_scene_t& scene) {
    return scene.victim.points.size() <= most_victim_points &&
           scene.victim.elements.size() <= most_victim_elements &&
           scene.cutter.points.size() <= most_cutter_points &&
           scene.cutter.elements.size() <= most_cutter_elements && scene.selected.size() <= most_selected;
}

TEST(MeshScene, IsReadFromBytes) {
    const bytes_t bytes{1,   4,    8 + 9, 160, 64,        // a point at 0, 1 and -0.5
                        2,   0,    1,                     // its index, and a mark
                        0,   0,                           // no cutter
                        255, 0x3F, 0x80,  0,   0,  0, 0,  // the axis from 1, -1, -1
                        4,   4,    4,                     // to 0, 0, 0
                        2,   3,    25};                   // two polygons
    const mesh_scene_t scene = read_mesh_scene(bytes);
    EXPECT_EQ(scene.victim.points, (std::vector<pos3>{{0, 1, -0.5F}}));
    EXPECT_EQ(scene.victim.elements, (std::vector<std::uint32_t>{0, ulk3d::restart_mark}));
    EXPECT_TRUE(scene.cutter.points.empty());
    EXPECT_EQ(scene.axis_from, (pos3{1, -1, -1}));
    EXPECT_EQ(scene.axis_to, (pos3{0, 0, 0}));
    EXPECT_EQ(scene.selected, (std::set<std::uint32_t>{1, 3}));
}

TEST(MeshScene, NothingIsAnEmptyScene) {
    const mesh_scene_t scene = read_mesh_scene({});
    EXPECT_TRUE(scene.victim.points.empty() && scene.victim.elements.empty());
    EXPECT_EQ(scene.axis_from, scene.axis_to);
    EXPECT_TRUE(scene.selected.empty());
}

TEST(MeshScene, BytesGiveTheSameSceneBack) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        const mesh_scene_t scene = read_mesh_scene(random_bytes(seed, seed * 2));
        // A float that is no number keeps its bits.
        EXPECT_TRUE(is_same(read_mesh_scene(bytes_of(scene)), scene) || std::isnan(scene.axis_from.x) ||
                    std::isnan(scene.axis_to.x));
        EXPECT_EQ(bytes_of(read_mesh_scene(bytes_of(scene))), bytes_of(scene));
    }
}

TEST(MeshMutator, SeedDecidesTheResult) {
    std::size_t different = 0;
    for (std::uint64_t seed = 0; seed < 100; ++seed) {
        const bytes_t once = mutated_mesh_scene(two_triangles(), 500, seed, fill_with_200);
        EXPECT_EQ(mutated_mesh_scene(two_triangles(), 500, seed, fill_with_200), once);
        different += once == mutated_mesh_scene(two_triangles(), 500, seed + 1000, fill_with_200) ? 0 : 1;
    }
    EXPECT_GT(different, 80U);
}

TEST(MeshMutator, ResultKeepsToTheLimits) {
    for (unsigned seed = 0; seed < 1000; ++seed) {
        const std::size_t most = seed % 40 * 5;
        const bytes_t bytes = random_bytes(seed, seed % 100);
        EXPECT_LE(mutated_mesh_scene(bytes, most, seed, fill_with_200).size(), most);
        const bytes_t whole = mutated_mesh_scene(bytes, 1000, seed, nullptr);
        const mesh_scene_t scene = read_mesh_scene(whole);
        EXPECT_TRUE(lists_within_limits(scene));
        EXPECT_EQ(bytes_of(scene), whole) << "more was written than is read";
    }
}

TEST(MeshMutator, BytesAreMutatedToo) {
    std::size_t by_bytes = 0;
    for (std::uint64_t seed = 0; seed < 120; ++seed)
        by_bytes += mutated_mesh_scene(two_triangles(), 80, seed, fill_with_200) == bytes_t(80, 200) ? 1 : 0;
    EXPECT_GT(by_bytes, 20U);
    EXPECT_LT(by_bytes, 60U);
}

TEST(MeshMutator, PointsComeIntoCommonPlanes) {
    ASSERT_EQ(common_coordinates(read_mesh_scene(two_triangles())), 0U);
    std::size_t with_planes = 0;
    for (std::uint64_t seed = 0; seed < 100; ++seed) {
        bytes_t bytes = two_triangles();
        for (std::uint64_t step = 0; step < 10; ++step)
            bytes = mutated_mesh_scene(bytes, 500, seed * 100 + step, nullptr);
        with_planes += common_coordinates(read_mesh_scene(bytes)) >= 2 ? 1 : 0;
    }
    EXPECT_GT(with_planes, 70U);
}

}  // namespace
