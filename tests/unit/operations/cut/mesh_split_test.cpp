#include <gtest/gtest.h>

#include "model/polygon/strip_walk.h"
#include "operations/cut/mesh_cut.h"
#include "support/cut_meshes.h"
#include "support/plain_mesh_cut.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

const strip_mesh_t level_cutter = mesh_of({{0, 0, 0}, {4, 0, 0}, {0, 4, 0}}, {{0, 1, 2}});

bool split(strip_mesh_t& victim, const strip_mesh_t& cutter) {
    return split_by(victim, cutter, {});
}

TEST(MeshSplit, TriangleIsSplitWhereItMeetsTheCutter) {
    strip_mesh_t victim = mesh_of({{1, 1, 1}, {1, 1, -1}, {1.5F, 1, -1}}, {{0, 1, 2}});
    EXPECT_TRUE(split(victim, level_cutter));
    ASSERT_EQ(victim.vertices.size(), 5U);
    EXPECT_EQ(victim.vertices[3].position, (pos3{1, 1, 0}));
    EXPECT_EQ(victim.vertices[4].position, (pos3{1.25F, 1, 0}));
    EXPECT_EQ(victim.frames.size(), 5U);
    int count = 0;
    walk_strips(victim.elements, victim.vertices.size(), [&](const strip_triangle_t&) { ++count; });
    EXPECT_EQ(count, 3);
}

TEST(MeshSplit, CutterThatDoesNotTouchLeavesTheVictim) {
    const strip_mesh_t victim = sphere({5, 0, 0}, 1, 2);
    strip_mesh_t mesh = victim;
    EXPECT_FALSE(split(mesh, sphere({0, 0, 0}, 1, 2)));
    EXPECT_EQ(mesh, victim);
    EXPECT_FALSE(remove_inside(mesh, sphere({0, 0, 0}, 1, 2), {}));
    EXPECT_EQ(mesh, victim);
}

TEST(MeshSplit, CutterApartAlongOneAxisLeavesTheVictim) {
    // An open sheet with its front up: rays from all that is below it count as inside.
    const strip_mesh_t cutter = sheet(3, 8, [](float, float) { return 0.0F; });
    for (const pos3& place : {pos3{0, 0, -3}, {0, 7, 0}, {7, 0, 0}, {0, -7, 0}, {0, 0, 3}}) {
        const strip_mesh_t victim = sphere(place, 1, 1);
        strip_mesh_t mesh = victim;
        EXPECT_FALSE(split(mesh, cutter));
        EXPECT_FALSE(remove_inside(mesh, cutter, {}));
        EXPECT_EQ(mesh, victim);
    }
    strip_mesh_t touched = sphere({0, 0, 0}, 1, 1);
    EXPECT_TRUE(split(touched, cutter));
    EXPECT_TRUE(remove_inside(touched, cutter, {}));
}

TEST(MeshSplit, LinesThatGoOnBeyondTheModelsDoNotSplit) {
    // In planes that meet the cutter's one in a line along its edge, but 100 units away.
    const strip_mesh_t victim = mesh_of({{102, 0, 1}, {101, 0, -1}, {103, 0, -1}}, {{0, 1, 2}});
    strip_mesh_t mesh = victim;
    EXPECT_FALSE(split(mesh, level_cutter));
    EXPECT_EQ(mesh, victim);
}

TEST(MeshSplit, EnclosedVictimIsNotSplitAndLosesAllTriangles) {
    const strip_mesh_t victim = in_strips(sphere({0.1F, 0, 0}, 0.5F, 2));
    const strip_mesh_t cutter = sphere({0, 0, 0}, 1, 2);
    strip_mesh_t mesh = victim;
    EXPECT_FALSE(split(mesh, cutter));
    EXPECT_TRUE(remove_inside(mesh, cutter, {}));
    walk_strips(mesh.elements, mesh.vertices.size(), [](const strip_triangle_t&) { ADD_FAILURE(); });
    EXPECT_EQ(mesh.vertices, victim.vertices);
}

TEST(MeshSplit, CoplanarFacesAreSkipped) {
    const strip_mesh_t victim = mesh_of({{1, 1, 0}, {6, 1, 0}, {1, 6, 0}}, {{0, 1, 2}});
    strip_mesh_t mesh = victim;
    EXPECT_FALSE(split(mesh, level_cutter));
    EXPECT_EQ(mesh, victim);
}

TEST(MeshSplit, ModelsThatShareAVertexAreNotSplit) {
    const strip_mesh_t victim = mesh_of({{4, 0, 0}, {6, 1, 2}, {6, -1, 1}}, {{0, 1, 2}});
    strip_mesh_t mesh = victim;
    EXPECT_FALSE(split(mesh, level_cutter));
    EXPECT_EQ(mesh, victim);
}

TEST(MeshSplit, TrianglesOfTheCutterWithoutAreaDoNothing) {
    const strip_mesh_t victim = mesh_of({{1, 1, 1}, {1, 1, -1}, {1.5F, 1, -1}}, {{0, 1, 2}});
    strip_mesh_t mesh = victim;
    EXPECT_FALSE(split(mesh, mesh_of({{0, 0, 0}, {2, 2, 0}, {4, 4, 0}}, {{0, 1, 2}})));
    EXPECT_EQ(mesh, victim);
}

TEST(MeshSplit, OneTriangleOfTheCutterSplitsAllOfAStrip) {
    // Past every border between the runs that triangles are found by, in all places relative to it.
    const strip_mesh_t cutter = mesh_of({{-9, 0.5F, -9}, {900, 0.5F, -9}, {-9, 0.5F, 900}}, {{0, 1, 2}});
    for (std::uint32_t length = 60; length < 72; ++length)
        for (const std::uint32_t marks : {0U, 1U}) {
            std::vector<pos3> points;
            for (std::uint32_t n = 0; n < length; ++n)
                points.push_back({static_cast<float>(n / 2), static_cast<float>(n % 2), 0});
            strip_mesh_t victim = mesh_of(points, {});
            victim.elements.assign(marks, restart_mark);
            for (std::uint32_t n = 0; n < length; ++n)
                victim.elements.push_back(n);
            strip_mesh_t expected = victim;
            EXPECT_TRUE(split(victim, cutter));
            plain_split(expected, cutter, [](double) {});
            EXPECT_EQ(victim, expected) << length;
            // One for each edge that is crossed, though two triangles share most of them.
            EXPECT_EQ(victim.vertices.size(), length + length - 1);
        }
}

TEST(MeshSplit, EmptyMeshesAreNotSplit) {
    strip_mesh_t empty;
    EXPECT_FALSE(split(empty, level_cutter));
    EXPECT_FALSE(remove_inside(empty, level_cutter, {}));
    strip_mesh_t victim = level_cutter;
    EXPECT_FALSE(split(victim, {}));
    EXPECT_FALSE(remove_inside(victim, {}, {}));
}

}  // namespace
