#include "operations/cut/walls/seam.h"

#include <gtest/gtest.h>

#include "operations/cut/walls/fill_slits.h"
#include "support/closed_surface.h"
#include "support/cut_meshes.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

/// The box from the origin to (1, 1, 1), moved along x, without its top: 8 vertices and 10 triangles.
strip_mesh_t open_box(float x = 0) {
    strip_mesh_t mesh = box({x, 0, 0}, {x + 1, 1, 1});
    mesh.elements.erase(mesh.elements.begin() + 8, mesh.elements.begin() + 16);
    return mesh;
}

std::uint32_t append(strip_mesh_t& mesh, const strip_mesh_t& other) {
    const auto first = static_cast<std::uint32_t>(mesh.vertices.size());
    mesh.vertices.insert(mesh.vertices.end(), other.vertices.begin(), other.vertices.end());
    mesh.frames.insert(mesh.frames.end(), other.frames.begin(), other.frames.end());
    mesh.elements.push_back(restart_mark);
    for (const std::uint32_t element : other.elements)
        mesh.elements.push_back(element == restart_mark ? element : element + first);
    return first;
}

/// In unit coordinates a box of the tests is half as large.
const unit_space_t space(box3{{0, 0, 0}, {1, 1, 1}});

struct seam_case_t {
    strip_mesh_t mesh = open_box();
    std::uint32_t first_of_wall = 0;

    explicit seam_case_t(const strip_mesh_t& wall) : first_of_wall(append(mesh, wall)) {}

    std::size_t close(bool are_solids = false) {
        close_seam(mesh, first_of_wall, space, are_solids);
        return faces_of(mesh).size();
    }
    std::size_t open() const { return count_edges_without_partner(mesh); }
};

/// A top whose corners are at other places by up to `off`.
strip_mesh_t top(float off = 0) {
    return mesh_of({{0, off, 1}, {1, 0, 1 - off}, {-off, 1, 1}, {1 + off, 1, 1}}, {{0, 1, 2}, {1, 3, 2}});
}

TEST(Seam, WallMovesToTheVictim) {
    seam_case_t seam(top(3e-5F));
    const std::vector<vertex_t> victim(seam.mesh.vertices.begin(), seam.mesh.vertices.begin() + 8);
    EXPECT_EQ(seam.close(), 12U);
    EXPECT_EQ(seam.open(), 0U);
    EXPECT_TRUE(std::equal(victim.begin(), victim.end(), seam.mesh.vertices.begin()));
}

TEST(Seam, WhatIsAFewRoundingsApartBecomesOnePlaceWithinTheWall) {
    // A roof; each of its triangles has a top of its own.
    strip_mesh_t roof = mesh_of({{0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {1, 1, 1}}, {});
    const std::array<corner_ids_t, 4> sides{{{0, 1, 4}, {1, 3, 5}, {3, 2, 6}, {2, 0, 7}}};
    for (std::uint32_t n = 0; n < 4; ++n) {
        const float off = 1e-7F * static_cast<float>(n);
        roof.vertices.push_back(vertex_with_attributes({0.5F + off, 0.5F, 1.25F - off}));
        roof.frames.push_back({});
        roof.elements.insert(roof.elements.end(), {sides[n].a, sides[n].b, sides[n].c, restart_mark});
    }
    seam_case_t seam(roof);
    EXPECT_EQ(seam.close(), 14U);
    EXPECT_EQ(seam.open(), 0U);
}

/// A top with a vertex more at `middle`, near the edge of the corners 0 and 1, and a victim's neighbour
/// below.
strip_mesh_t top_with(const pos3& middle, float x = 0) {
    return mesh_of({{x, 0, 1}, {x + 1, 0, 1}, {x, 1, 1}, {x + 1, 1, 1}, middle},
                   {{0, 4, 2}, {4, 1, 3}, {4, 3, 2}});
}

TEST(Seam, TriangleIsSplitWhereACornerLiesAtItsEdge) {
    for (const float off : {0.0F, 2e-6F, 5e-5F}) {
        seam_case_t seam(top_with({0.25F, off, 1}));
        EXPECT_EQ(seam.close(), 10U + 3 + 1) << off;
        EXPECT_EQ(seam.open(), 0U) << off;
        // It has what the edge has there, at the place of the corner.
        const vertex_t& made = seam.mesh.vertices.back();
        EXPECT_EQ(made.position, (pos3{0.25F, off, 1}));
        EXPECT_NEAR(made.color.r, 0.5F + 0.25F / 8, 1e-6F);
        EXPECT_EQ(seam.mesh.frames.size(), seam.mesh.vertices.size());
    }
}

TEST(Seam, CornerFurtherAwayLeavesTheTriangleWhole) {
    seam_case_t seam(top_with({0.25F, 2e-4F, 1}));
    EXPECT_EQ(seam.close(), 10U + 3);
    EXPECT_EQ(seam.open(), 3U);
}

TEST(Seam, WhatLiesOnAnEdgeComesBeforeWhatIsOnlyNearIt) {
    // Two boxes whose edges are nearer to each other than the room.
    constexpr float beside = 1 + 3e-5F;
    seam_case_t seam(mesh_of({{0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {1, 1, 1}, {1, 0.25F, 1}},
                             {{0, 1, 4}, {0, 4, 2}, {4, 3, 2}}));
    append(seam.mesh, open_box(beside));
    append(
        seam.mesh,
        mesh_of({{beside, 0, 1}, {beside + 1, 0, 1}, {beside, 1, 1}, {beside + 1, 1, 1}, {beside, 0.75F, 1}},
                {{0, 1, 4}, {4, 1, 3}, {4, 3, 2}}));
    close_seam(seam.mesh, static_cast<std::uint32_t>(seam.mesh.vertices.size()), space, false);
    EXPECT_EQ(faces_of(seam.mesh).size(), 2U * (10 + 3 + 1));
}

TEST(Seam, TriangleOfTheWallThatCollapsesIsLeftOut) {
    seam_case_t seam(top_with({1e-5F, 0, 1}));
    EXPECT_EQ(seam.close(), 10U + 2);
    EXPECT_EQ(seam.open(), 0U);
}

TEST(Seam, SlitsOfSolidsAreFilled) {
    seam_case_t seam(top_with({0.25F, 2e-4F, 1}));
    EXPECT_EQ(seam.close(true), 10U + 3 + 1);
    EXPECT_EQ(seam.open(), 0U);
}

TEST(Seam, OtherTrianglesStayInTheirStrips) {
    const strip_mesh_t wall = top_with({0.25F, 0, 1});
    seam_case_t seam(wall);
    seam.mesh = in_strips(seam.mesh);
    const std::size_t before = seam.mesh.elements.size();
    EXPECT_EQ(seam.close(), 10U + 3 + 1);
    EXPECT_LT(seam.mesh.elements.size(), before + 14);
    EXPECT_EQ(seam.open(), 0U);
}

TEST(FillSlits, TrianglesBackToBackAreLeftOut) {
    strip_mesh_t mesh = mesh_of({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}});
    patched_mesh_t patched(mesh);
    fill_slits(patched, open_edges(patched.surface()));
    patched.write_strips();
    EXPECT_TRUE(mesh.elements.empty());
}

TEST(FillSlits, HolesThatTouchAreFilledEach) {
    strip_mesh_t mesh = box({0, 0, 0}, {1, 1, 1});
    // Two faces that share one corner only, and one triangle beside.
    mesh.elements.erase(mesh.elements.begin(), mesh.elements.begin() + 8);
    mesh.elements.erase(mesh.elements.end() - 3, mesh.elements.end());
    patched_mesh_t patched(mesh);
    fill_slits(patched, open_edges(patched.surface()));
    patched.write_strips();
    EXPECT_EQ(count_edges_without_partner(mesh), 0U);
    EXPECT_EQ(faces_of(mesh).size(), 12U);
}

}  // namespace
