#include <gtest/gtest.h>

#include <iostream>
#include <map>

#include "operations/cut/mesh_cut.h"
#include "support/captured_stream.h"
#include "support/cut_area.h"
#include "support/cut_scenes.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

bool split(strip_mesh_t& victim, const strip_mesh_t& cutter) {
    return split_by(victim, cutter, {});
}

bool remove(strip_mesh_t& victim, const strip_mesh_t& cutter) {
    return remove_inside(victim, cutter, {});
}

/// The corners, turned so that the lowest comes first, and how often they stand in the strips.
std::map<std::array<std::uint32_t, 3>, int> triangles_of(const strip_mesh_t& mesh) {
    std::map<std::array<std::uint32_t, 3>, int> triangles;
    walk_strips(mesh.elements, mesh.vertices.size(), [&](const strip_triangle_t& t) {
        std::array corners{t.a, t.b, t.c};
        std::rotate(corners.begin(), std::ranges::min_element(corners), corners.end());
        ++triangles[corners];
    });
    return triangles;
}

point_t unit_normal(const face_t& face) {
    const point_t normal = cross(face[1] - face[0], face[2] - face[0]);
    return normal * (1 / length(normal));
}

/// Meshes of about unit size in places that have nothing in common.
class MeshCutOf : public testing::TestWithParam<std::uint32_t> {
  protected:
    static constexpr int count = 6;

    captured_stream messages{std::cerr};
    cut_scenes_t scenes{GetParam() * 17 + 3};
};

TEST_P(MeshCutOf, SplittingKeepsTheArea) {
    for (int n = 0; n < count; ++n) {
        const cut_scene_t scene = scenes.scene(GetParam());
        strip_mesh_t mesh = scene.victim;
        split(mesh, scene.cutter);
        EXPECT_NEAR(area_of(mesh), area_of(scene.victim), 1e-4 * area_of(scene.victim));
    }
}

TEST_P(MeshCutOf, SplittingKeepsSideAndOrientation) {
    for (int n = 0; n < count; ++n) {
        const cut_scene_t scene = scenes.scene(GetParam());
        strip_mesh_t mesh = scene.victim;
        split(mesh, scene.cutter);
        const std::vector<face_t> whole = faces_of(scene.victim);
        for (const face_t& part : faces_of(mesh)) {
            if (area_of(part) < 1e-5)
                continue;
            const point_t center = (part[0] + part[1] + part[2]) * (1.0 / 3);
            EXPECT_TRUE(std::ranges::any_of(whole, [&](const face_t& face) {
                return distance(center, face) < 1e-5 && dot(unit_normal(part), unit_normal(face)) > 0.99;
            }));
        }
    }
}

TEST_P(MeshCutOf, NewVerticesHaveWhatTheirPlaceOnTheEdgeGives) {
    for (int n = 0; n < count; ++n) {
        cut_scene_t scene = scenes.scene(GetParam());
        // Attributes that are linear in the place.
        scene.victim = mesh_with_attributes(scene.victim);
        strip_mesh_t mesh = scene.victim;
        split(mesh, scene.cutter);
        EXPECT_EQ(mesh.frames.size(), mesh.vertices.size());
        for (std::size_t v = 0; v < mesh.vertices.size(); ++v) {
            const vertex_t& vertex = mesh.vertices[v];
            const vertex_t expected = vertex_with_attributes(vertex.position);
            EXPECT_NEAR(vertex.color.r, expected.color.r, 1e-5F);
            EXPECT_NEAR(vertex.color.b, expected.color.b, 1e-5F);
            EXPECT_NEAR(vertex.texcoord.t, expected.texcoord.t, 1e-5F);
            EXPECT_NEAR(mesh.frames[v].binormal.z, frame_with_attributes(vertex.position).binormal.z, 1e-5F);
        }
    }
}

TEST_P(MeshCutOf, RemovalTakesTrianglesAndChangesNone) {
    for (int n = 0; n < count; ++n) {
        const cut_scene_t scene = scenes.scene(GetParam());
        strip_mesh_t mesh = scene.victim;
        split(mesh, scene.cutter);
        const auto before = triangles_of(mesh);
        const std::vector<vertex_t> vertices = mesh.vertices;
        const bool removed = remove(mesh, scene.cutter);
        const auto after = triangles_of(mesh);
        EXPECT_EQ(mesh.vertices, vertices);
        EXPECT_EQ(removed, after != before);
        for (const auto& [corners, times] : after) {
            const auto place = before.find(corners);
            ASSERT_NE(place, before.end());
            EXPECT_LE(times, place->second);
        }
    }
}

TEST_P(MeshCutOf, WhatIsInsideGoesAndAllElseStays) {
    cut_area_t sum;
    for (int n = 0; n < count; ++n) {
        const cut_scene_t scene = scenes.scene(GetParam());
        strip_mesh_t mesh = scene.victim;
        split(mesh, scene.cutter);
        remove(mesh, scene.cutter);
        const auto samples = static_cast<std::uint32_t>(200 / faces_of(scene.victim).size() + 1);
        sum += measure_cut(scene.victim, mesh, scene.cutter, samples, 1);
    }
    EXPECT_GT(sum.touched, 0);
    EXPECT_LE(sum.left_inside, 0.0005 * sum.touched);
    EXPECT_LE(sum.lost_outside, 0.0005 * sum.touched);
}

INSTANTIATE_TEST_SUITE_P(ClosedMeshes, MeshCutOf, testing::Values(0, 1));
INSTANTIATE_TEST_SUITE_P(Sheets, MeshCutOf, testing::Values(3));

TEST(MeshCutOfBoxes, UprightBoxesAreCutAlongTheirFaces) {
    cut_scenes_t scenes(5);
    cut_area_t sum;
    for (int n = 0; n < 40; ++n) {
        const strip_mesh_t victim = scenes.random_box(), cutter = scenes.random_box();
        strip_mesh_t mesh = victim;
        split(mesh, cutter);
        remove(mesh, cutter);
        sum += measure_cut(victim, mesh, cutter, 20, 1);
    }
    EXPECT_GT(sum.touched, 1);
    EXPECT_EQ(sum.left_inside, 0);
    EXPECT_EQ(sum.lost_outside, 0);
}

}  // namespace
