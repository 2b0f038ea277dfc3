#include "operations/cut/ray_grid.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "model/math/vectors.h"
#include "support/cut_scenes.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

constexpr float end_z = 3;

cut_triangle_t random_triangle(cut_scenes_t& random, std::uint32_t kind) {
    const pos3 a = kind % 2 == 0 ? random.place(1) : random.lattice_place();
    const pos3 b = random.place(1);
    const float width = std::pow(10.0F, random.between(-6, 0));
    // From upright to level, from needles to equal sides.
    const pos3 c = b + as_dir(random.place(width));
    return kind % 3 == 0 ? cut_triangle_t(a, b, {a.x, a.y, c.z}) : cut_triangle_t(a, b, c);
}

/// At and about a corner, an edge or the middle of the triangle.
pos3 ray_start(cut_scenes_t& random, const cut_triangle_t& t) {
    const float u = random.between(-0.1F, 1.1F);
    const pos3 on_edge = t.p0 + (t.p1 - t.p0) * u;
    const pos3 p = random.one_in(3) ? t.p2 : random.one_in(2) ? on_edge : t.centroid;
    const float offset = random.one_in(4) ? 0 : std::pow(10.0F, random.between(-7, -1));
    return {p.x + random.between(-offset, offset), p.y + random.between(-offset, offset), p.z - 1};
}

TEST(RayGrid, GivesEveryTriangleThatARayIsToldToMeet) {
    cut_scenes_t random(3);
    int met = 0;
    for (int round = 0; round < 8; ++round) {
        std::vector<cut_triangle_t> triangles;
        while (triangles.size() < 150) {
            const cut_triangle_t triangle = random_triangle(random, random.below(6));
            if (triangle.has_area())
                triangles.push_back(triangle);
        }
        ray_grid_t grid(triangles, end_z);
        for (int n = 0; n < 600; ++n) {
            const pos3 start = ray_start(random, triangles[random.below(150)]);
            const std::vector<std::uint32_t>& numbers = grid.numbers_for(start);
            EXPECT_TRUE(std::ranges::is_sorted(numbers));
            for (std::uint32_t k = 0; k < triangles.size(); ++k) {
                crossing_t crossing;
                const int code = classify_edge(crossing, 6, start, {start.x, start.y, end_z}, triangles[k]);
                if (code < 1 || code > 3)
                    continue;
                ++met;
                EXPECT_TRUE(std::ranges::binary_search(numbers, k)) << n << " " << k;
            }
        }
    }
    EXPECT_GT(met, 3000);
}

std::vector<cut_triangle_t> triangles_of(const strip_mesh_t& mesh) {
    std::vector<cut_triangle_t> triangles;
    for (std::size_t i = 0; i + 2 < mesh.elements.size(); i += 4)
        triangles.emplace_back(mesh.vertices[mesh.elements[i]].position,
                               mesh.vertices[mesh.elements[i + 1]].position,
                               mesh.vertices[mesh.elements[i + 2]].position);
    return triangles;
}

TEST(RayGrid, LeavesOutMostTrianglesOfAFineMesh) {
    std::vector<cut_triangle_t> triangles = triangles_of(sphere({0, 0, 0}, 1, 4));
    ray_grid_t grid(triangles, end_z);
    EXPECT_LT(grid.numbers_for({0.3F, 0.2F, -2}).size(), 40U);
}

TEST(RayGrid, RayFromFarAwayOrNowhereGetsAll) {
    std::vector<cut_triangle_t> triangles = triangles_of(sphere({0, 0, 0}, 1, 1));
    ray_grid_t grid(triangles, end_z);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const pos3& start : {pos3{0.3F, 0.2F, -1e6F}, {1e6F, 0, 0}, {nan, 0, 0}, {0, 0, nan}})
        EXPECT_EQ(grid.numbers_for(start).size(), triangles.size());
}

TEST(RayGrid, TriangleThatIsNotFiniteIsGivenToEveryRay) {
    std::vector<cut_triangle_t> triangles = triangles_of(sphere({0, 0, 0}, 1, 2));
    const float infinity = std::numeric_limits<float>::infinity();
    triangles.insert(triangles.begin() + 7, cut_triangle_t({0, 0, 0}, {infinity, 0, 0}, {0, 1, 0}));
    ray_grid_t grid(triangles, end_z);
    const std::vector<std::uint32_t>& numbers = grid.numbers_for({0.3F, 0.2F, -2});
    EXPECT_LT(numbers.size(), triangles.size() / 2);
    EXPECT_TRUE(std::ranges::binary_search(numbers, 7U));
}

TEST(RayGrid, WithoutTrianglesGivesNone) {
    ray_grid_t grid({}, end_z);
    EXPECT_TRUE(grid.numbers_for({0, 0, 0}).empty());
}

}  // namespace
