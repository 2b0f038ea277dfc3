#include "operations/cut/walls/open_edges.h"

#include <gtest/gtest.h>

#include "support/cut_meshes.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

TEST(OpenEdges, ClosedMeshHasNoneWhicheverVerticesItsTrianglesHave) {
    const strip_mesh_t shared = box({0, 0, 0}, {1, 1, 1});
    EXPECT_TRUE(is_closed(shared));
    strip_mesh_t single;
    for (const std::uint32_t element : shared.elements) {
        single.elements.push_back(
            element == restart_mark ? restart_mark : static_cast<std::uint32_t>(single.vertices.size()));
        if (element != restart_mark)
            single.vertices.push_back(shared.vertices[element]);
    }
    EXPECT_TRUE(is_closed(single));
    EXPECT_TRUE(is_closed({}));
}

TEST(OpenEdges, MissingTriangleLeavesThree) {
    strip_mesh_t mesh = box({0, 0, 0}, {1, 1, 1});
    mesh.elements.resize(mesh.elements.size() - 4);
    const auto triangles = triangles_of(mesh);
    const auto places = places_of(mesh.vertices);
    EXPECT_EQ(open_edges({triangles, places}).size(), 3U);
    EXPECT_FALSE(is_closed(mesh));
}

TEST(OpenEdges, TurnedTriangleHasNoPartners) {
    strip_mesh_t mesh = box({0, 0, 0}, {1, 1, 1});
    std::swap(mesh.elements[0], mesh.elements[1]);
    EXPECT_FALSE(is_closed(mesh));
}

TEST(OpenEdges, BothZerosAreOnePlace) {
    strip_mesh_t mesh = mesh_of({{0, 0, 0}, {-0.0F, 0, -0.0F}, {1, 0, 0}}, {});
    EXPECT_EQ(places_of(mesh.vertices), (std::vector<std::uint32_t>{0, 0, 2}));
}

TEST(OpenEdges, CollapsedTriangleHasNoEdges) {
    strip_mesh_t mesh = box({0, 0, 0}, {1, 1, 1});
    mesh.elements.insert(mesh.elements.end(), {restart_mark, 0, 0, 5});
    EXPECT_TRUE(is_closed(mesh));
}

}  // namespace
