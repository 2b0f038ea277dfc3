#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "model/polygon/strip_walk.h"
#include "operations/cut/mesh_cut.h"
#include "support/cut_meshes.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

using triangle_list_t = std::vector<std::array<std::uint32_t, 3>>;

/// All but those whose bit is set, each turned so that the lowest corner comes first, and sorted: what is
/// drawn, whatever the strips.
triangle_list_t triangles_of(const strip_mesh_t& mesh, std::uint32_t without = 0) {
    triangle_list_t triangles;
    walk_strips(mesh.elements, mesh.vertices.size(), [&](const strip_triangle_t& t) {
        if (t.id < 32 && (without >> t.id & 1) != 0)
            return;
        std::array corners{t.a, t.b, t.c};
        std::rotate(corners.begin(), std::ranges::min_element(corners), corners.end());
        triangles.push_back(corners);
    });
    std::ranges::sort(triangles);
    return triangles;
}

/// Strips of these counts of triangles in the plane z = 0, each in a row of its own.
strip_mesh_t strips(const std::vector<std::uint32_t>& counts) {
    std::vector<pos3> points;
    std::vector<std::uint32_t> elements;
    for (std::size_t row = 0; row < counts.size(); ++row) {
        if (row > 0)
            elements.push_back(restart_mark);
        for (std::uint32_t n = 0; n < counts[row] + 2; ++n) {
            elements.push_back(static_cast<std::uint32_t>(points.size()));
            points.push_back({static_cast<float>(n / 2), static_cast<float>(3 * row + n % 2), 0});
        }
    }
    strip_mesh_t mesh = mesh_of(points, {});
    mesh.elements = elements;
    return mesh;
}

void append(strip_mesh_t& mesh, const strip_mesh_t& other) {
    const auto count = static_cast<std::uint32_t>(mesh.vertices.size());
    mesh.vertices.insert(mesh.vertices.end(), other.vertices.begin(), other.vertices.end());
    mesh.frames.insert(mesh.frames.end(), other.frames.begin(), other.frames.end());
    mesh.elements.push_back(restart_mark);
    for (const std::uint32_t index : other.elements)
        mesh.elements.push_back(index == restart_mark ? index : index + count);
}

/// Small boxes about the centroids of the triangles whose bit is set.
strip_mesh_t boxes_about(const strip_mesh_t& mesh, std::uint32_t bits) {
    strip_mesh_t boxes;
    walk_strips(mesh.elements, mesh.vertices.size(), [&](const strip_triangle_t& t) {
        if ((bits >> t.id & 1) == 0)
            return;
        const auto position = [&](std::uint32_t index) { return mesh.vertices[index].position; };
        const pos3 c = (position(t.a) + position(t.b) + position(t.c)) / 3;
        append(boxes, box({c.x - 0.03F, c.y - 0.03F, -0.1F}, {c.x + 0.02F, c.y + 0.025F, 0.1F}));
    });
    return boxes;
}

/// Removes each subset of the triangles.
void expect_every_subset_can_go(const strip_mesh_t& mesh) {
    const std::size_t count = triangles_of(mesh).size();
    for (std::uint32_t bits = 0; bits < 1U << count; ++bits) {
        strip_mesh_t rest = mesh;
        EXPECT_EQ(remove_inside(rest, boxes_about(mesh, bits), {}), bits != 0);
        EXPECT_EQ(triangles_of(rest), triangles_of(mesh, bits)) << bits;
        EXPECT_EQ(rest.vertices, mesh.vertices);
        EXPECT_EQ(rest.frames, mesh.frames);
        if (bits == 0) {
            EXPECT_EQ(rest.elements, mesh.elements);
        }
    }
}

TEST(MeshRemove, AnyTrianglesOfAStrip) {
    for (std::uint32_t count = 1; count <= 7; ++count)
        expect_every_subset_can_go(strips({count}));
}

TEST(MeshRemove, AnyTrianglesOfSeveralStrips) {
    expect_every_subset_can_go(strips({1, 1, 1}));
    expect_every_subset_can_go(strips({2, 3, 1}));
    expect_every_subset_can_go(strips({3, 1, 4}));
}

TEST(MeshRemove, MarksInRowsStay) {
    strip_mesh_t mesh = strips({2, 2});
    mesh.elements.insert(mesh.elements.begin() + 4, 2, mark);
    mesh.elements.insert(mesh.elements.begin(), mark);
    mesh.elements.push_back(mark);
    expect_every_subset_can_go(mesh);
}

TEST(MeshRemove, WholeStripGoesWithItsMark) {
    const strip_mesh_t mesh = strips({1, 1, 1});
    strip_mesh_t rest = mesh;
    remove_inside(rest, boxes_about(mesh, 0b010), {});
    EXPECT_EQ(rest.elements, (std::vector<std::uint32_t>{0, 1, 2, mark, 6, 7, 8}));
}

TEST(MeshRemove, LastStripLeavesTheMarkAheadOfIt) {
    const strip_mesh_t mesh = strips({1, 1});
    strip_mesh_t rest = mesh;
    remove_inside(rest, boxes_about(mesh, 0b10), {});
    EXPECT_EQ(rest.elements, (std::vector<std::uint32_t>{0, 1, 2, mark}));
}

TEST(MeshRemove, ProgressGoesWithThePlacesAsTheyAreByThen) {
    const strip_mesh_t mesh = strips({3, 1});
    std::vector<double> fractions;
    progress_signal_t progress;
    progress.connect([&](double fraction) { fractions.push_back(fraction); });
    strip_mesh_t rest = mesh;
    // The middle one of three: a mark and two indices come in, and the last one is met behind them.
    remove_inside(rest, boxes_about(mesh, 0b0010), progress);
    const double k = 0.5 / 9;
    EXPECT_EQ(fractions, (std::vector<double>{k * 2 + 0.5, k * 3 + 0.5, k * 6 + 0.5, k * 10 + 0.5}));
    EXPECT_GT(fractions.back(), 1);
}

TEST(MeshRemove, AnyTrianglesOfManyLongStrips) {
    // Long enough for the walk to take elements in hand many times, at all kinds of places.
    const strip_mesh_t mesh = strips(std::vector<std::uint32_t>(40, 297));
    std::mt19937 random(5);
    strip_mesh_t boxes;
    triangle_list_t remaining;
    walk_strips(mesh.elements, mesh.vertices.size(), [&](const strip_triangle_t& t) {
        std::array corners{t.a, t.b, t.c};
        std::rotate(corners.begin(), std::ranges::min_element(corners), corners.end());
        if (random() % 2 == 0) {
            remaining.push_back(corners);
            return;
        }
        const auto position = [&](std::uint32_t index) { return mesh.vertices[index].position; };
        const pos3 c = (position(t.a) + position(t.b) + position(t.c)) / 3;
        append(boxes, box({c.x - 0.1F, c.y - 0.1F, -0.1F}, {c.x + 0.05F, c.y + 0.08F, 0.1F}));
    });
    std::ranges::sort(remaining);
    strip_mesh_t rest = mesh;
    EXPECT_TRUE(remove_inside(rest, boxes, {}));
    EXPECT_TRUE(triangles_of(rest) == remaining);
}

}  // namespace
