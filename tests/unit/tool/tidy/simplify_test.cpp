#include "tool/tidy/simplify.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/cut_meshes.h"
#include "support/triangle_soup.h"

namespace {

using namespace ulk3d;
using namespace ulktool;
using namespace ulk_test;

triangle_mesh_t triangles_of(const strip_mesh_t& mesh) {
    triangle_mesh_t triangles{mesh.vertices, mesh.frames, {}};
    walk_strips(mesh.elements, mesh.vertices.size(), [&](const strip_triangle_t& triangle) {
        triangles.triangles.push_back({triangle.a, triangle.b, triangle.c});
    });
    return triangles;
}

strip_mesh_t strips_of(const triangle_mesh_t& mesh) {
    strip_mesh_t strips{mesh.vertices, mesh.frames, {}};
    for (const auto& [a, b, c] : mesh.triangles)
        strips.elements.insert(strips.elements.end(), {a, b, c, restart_mark});
    return strips;
}

TEST(Simplify, ReachesItsNumberAndKeepsTheSurface) {
    for (const std::size_t most : {5000U, 1000U, 300U, 100U, 20U}) {
        triangle_mesh_t ball = triangles_of(sphere({0, 0, 0}, 1, 4));
        simplify(ball, most);
        EXPECT_LE(ball.triangles.size(), most);
        EXPECT_GE(ball.triangles.size() + 4, most);
        EXPECT_TRUE(is_watertight(strips_of(ball))) << most;
        EXPECT_EQ(ball.vertices.size(), ball.triangles.size() / 2 + 2) << "vertices that are not used";
        EXPECT_EQ(ball.frames.size(), ball.vertices.size());
        if (most >= 300)
            for (const auto& [a, b, c] : ball.triangles) {
                const pos3 middle =
                    (ball.vertices[a].position + ball.vertices[b].position + ball.vertices[c].position) / 3;
                EXPECT_NEAR(length(as_dir(middle)), 1, 0.12);
            }
    }
}

TEST(Simplify, LeavesAMeshThatHasNoMoreAlone) {
    const triangle_mesh_t ball = triangles_of(sphere({0, 0, 0}, 1, 1));
    for (const std::size_t most : {80U, 81U, 1000000U}) {
        triangle_mesh_t same = ball;
        simplify(same, most);
        EXPECT_EQ(same.triangles, ball.triangles);
        EXPECT_EQ(same.vertices, ball.vertices);
    }
}

TEST(Simplify, LeavesSomethingAtAnyNumber) {
    // Two balls, of which the library would leave nothing.
    strip_mesh_t both = sphere({0, 0, 0}, 1, 2);
    const strip_mesh_t other = sphere({5, 0, 0}, 1, 2);
    const auto first = static_cast<std::uint32_t>(both.vertices.size());
    both.vertices.insert(both.vertices.end(), other.vertices.begin(), other.vertices.end());
    both.frames.insert(both.frames.end(), other.frames.begin(), other.frames.end());
    both.elements.push_back(restart_mark);
    for (const std::uint32_t element : other.elements)
        both.elements.push_back(element == restart_mark ? element : element + first);
    triangle_mesh_t mesh = triangles_of(both);
    simplify(mesh, 1);
    EXPECT_LT(mesh.triangles.size(), 20U);
    EXPECT_GT(mesh.triangles.size(), 0U);
}

TEST(Simplify, LeavesSingleTrianglesAlone) {
    const strip_mesh_t soup = soup_of(sphere({0, 0, 0}, 1, 2));
    triangle_mesh_t mesh = triangles_of(soup);
    simplify(mesh, 10);
    EXPECT_EQ(mesh.triangles.size(), 320U);
    EXPECT_EQ(surface_of(strips_of(mesh)), surface_of(soup));
}

TEST(Simplify, KeepsTrianglesWithoutFiniteCoordinates) {
    triangle_mesh_t mesh = triangles_of(sphere({0, 0, 0}, 1, 3));
    mesh.vertices[mesh.triangles[100][1]].position.y = std::numeric_limits<float>::quiet_NaN();
    simplify(mesh, 200);
    EXPECT_LE(mesh.triangles.size(), 200U);
    EXPECT_EQ(std::ranges::count_if(mesh.vertices,
                                    [](const vertex_t& vertex) { return std::isnan(vertex.position.y); }),
              1);
    simplify(mesh, 1);
    EXPECT_EQ(std::ranges::count_if(mesh.vertices,
                                    [](const vertex_t& vertex) { return std::isnan(vertex.position.y); }),
              1);
}

}  // namespace
