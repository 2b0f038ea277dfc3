#include "tool/tidy/strips.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "model/polygon/strip_walk.h"
#include "render/gl/element_array.h"
#include "support/cut_meshes.h"

namespace {

using namespace ulktool;
using ulk3d::restart_mark;

std::vector<triangle_corners_t> walked(const std::vector<std::uint32_t>& strips, std::size_t vertex_count) {
    std::vector<triangle_corners_t> triangles;
    ulk3d::walk_strips(strips, vertex_count, [&](const ulk3d::strip_triangle_t& triangle) {
        triangles.push_back({triangle.a, triangle.b, triangle.c});
    });
    return triangles;
}

std::vector<triangle_corners_t> sorted(std::vector<triangle_corners_t> triangles) {
    sort_triangles(triangles);
    return triangles;
}

std::vector<std::uint32_t> made(std::vector<triangle_corners_t> triangles, std::size_t vertex_count) {
    return make_strips(triangles, vertex_count);
}

/// Triangles with edges in common, some twice, some turned the other way.
std::vector<triangle_corners_t> random_triangles(std::mt19937& random, std::size_t count,
                                                 std::uint32_t vertex_count) {
    std::uniform_int_distribution<std::uint32_t> vertex(0, vertex_count - 1);
    std::vector<triangle_corners_t> triangles;
    while (triangles.size() < count) {
        const triangle_corners_t corners{vertex(random), vertex(random), vertex(random)};
        if (corners[0] != corners[1] && corners[1] != corners[2] && corners[2] != corners[0])
            triangles.push_back(corners);
    }
    return triangles;
}

TEST(Strips, HoldTheirTrianglesAndNoEmptyOnes) {
    std::mt19937 random(3);
    for (const std::uint32_t vertex_count : {3U, 4U, 5U, 8U, 20U, 200U})
        for (std::size_t count = 0; count < 60; ++count) {
            const auto triangles = random_triangles(random, count, vertex_count);
            EXPECT_EQ(sorted(walked(made(triangles, vertex_count), vertex_count)), sorted(triangles));
            EXPECT_EQ(sorted(walked(join_strips(triangles), vertex_count)), sorted(triangles));
        }
}

TEST(Strips, OfStripsAreTheSame) {
    std::mt19937 random(4);
    for (std::size_t count = 0; count < 100; ++count) {
        const auto strips = made(random_triangles(random, count, 12), 12);
        EXPECT_EQ(join_strips(walked(strips, 12)), strips);
        EXPECT_EQ(made(walked(strips, 12), 12), strips);
    }
}

TEST(Strips, GoOnOverTheEdgeThatTheRuleAsksFor) {
    EXPECT_EQ(join_strips(std::vector<triangle_corners_t>{{0, 1, 2}, {2, 1, 3}, {2, 3, 4}}),
              (std::vector<std::uint32_t>{0, 1, 2, 3, 4}));
    EXPECT_EQ(join_strips(std::vector<triangle_corners_t>{{0, 1, 2}, {3, 2, 1}, {4, 2, 3}}),
              (std::vector<std::uint32_t>{0, 1, 2, 3, 4}));
    EXPECT_EQ(join_strips(std::vector<triangle_corners_t>{{0, 1, 2}, {1, 2, 3}, {0, 2, 4}}),
              (std::vector<std::uint32_t>{0, 1, 2, restart_mark, 1, 2, 3, restart_mark, 0, 2, 4}));
    EXPECT_EQ(join_strips({}), std::vector<std::uint32_t>());
}

TEST(Strips, AreLong) {
    for (const auto& mesh : {ulk_test::sphere({0, 0, 0}, 1, 4), ulk_test::torus({0, 0, 0}, 2, 1, 60, 40),
                             ulk_test::sheet(50, 1, [](float, float) { return 0.0F; })}) {
        const std::size_t vertex_count = mesh.vertices.size();
        const auto triangles = walked(mesh.elements, vertex_count);
        const auto strips = made(triangles, vertex_count);
        const auto count = static_cast<std::size_t>(std::ranges::count(strips, restart_mark)) + 1;
        EXPECT_GE(triangles.size(), 8 * count) << triangles.size() << " in " << count;
    }
}

TEST(Strips, DoNotDependOnTheOrderOfTheirTriangles) {
    const auto mesh = ulk_test::sphere({0, 0, 0}, 1, 2);
    auto triangles = walked(mesh.elements, mesh.vertices.size());
    const auto strips = made(triangles, mesh.vertices.size());
    std::ranges::shuffle(triangles, std::mt19937(5));
    EXPECT_EQ(made(triangles, mesh.vertices.size()), strips);
}

}  // namespace
