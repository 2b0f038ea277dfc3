#include "operations/fold/fold_polygons.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "model/math/vectors.h"
#include "model/polygon/strip_walk.h"
#include "support/plain_fold.h"

namespace {

using namespace ulk3d;
using indices_t = std::vector<std::uint32_t>;
using ids_t = std::set<std::uint32_t>;

constexpr std::uint32_t mark = restart_mark;

/// A vertex whose other floats tell which one it is.
vertex_t numbered_vertex(std::size_t number, const pos3& position) {
    const auto n = static_cast<float>(number);
    return {position, {n, n + 0.25F, n + 0.5F, n + 0.75F}, {-n, -n - 0.5F}};
}

/// A unit frame that leans, by a way that is its own for each number.
frame_t numbered_frame(std::size_t number) {
    const float lean = 0.1F * static_cast<float>(number);
    const dir3 normal = normalize(dir3{std::sin(lean), 0.3F, std::cos(lean)});
    const dir3 tangent = normalize(cross({0, 1, 0}, normal));
    return {tangent, cross(normal, tangent), normal};
}

/// A mesh of the strips over as many vertices, which zigzag along x: even ones at y = 0, odd ones at y = 1.
strip_mesh_t mesh_of(const indices_t& elements, std::size_t vertex_count) {
    strip_mesh_t mesh;
    for (std::size_t i = 0; i < vertex_count; ++i) {
        const float y = i % 2 == 0 ? 0.0F : 1.0F;
        mesh.vertices.push_back(numbered_vertex(i, {0.5F * static_cast<float>(i), y, 0.125F * y}));
        mesh.frames.push_back(numbered_frame(i));
    }
    mesh.elements = elements;
    return mesh;
}

/// One strip of so many triangles.
strip_mesh_t strip_of(std::size_t triangles) {
    indices_t elements;
    for (std::uint32_t i = 0; i < triangles + 2; ++i)
        elements.push_back(i);
    return mesh_of(elements, triangles + 2);
}

/// A mesh as bits: what is equal here is equal to the last bit.
bool same_bits(const strip_mesh_t& one, const strip_mesh_t& other) {
    const auto same = [](const auto& a, const auto& b) {
        return a.size() == b.size() &&
               (a.empty() || std::memcmp(a.data(), b.data(), sizeof(a[0]) * a.size()) == 0);
    };
    return same(one.vertices, other.vertices) && same(one.frames, other.frames) &&
           one.elements == other.elements;
}

using corners_t = std::array<std::uint32_t, 3>;

std::vector<corners_t> triangles_of(const strip_mesh_t& mesh) {
    std::vector<corners_t> triangles;
    walk_strips(mesh.elements, mesh.vertices.size(), [&](const strip_triangle_t& t) {
        triangles.push_back({t.a, t.b, t.c});
    });
    return triangles;
}

constexpr pos3 x_axis{1, 0, 0};

strip_mesh_t folded(strip_mesh_t mesh, const ids_t& selected, float angle, const pos3& a = origin,
                    const pos3& b = x_axis) {
    EXPECT_TRUE(fold_polygons(selected, a, b, angle, mesh));
    return mesh;
}

// Tearing.

TEST(FoldPolygons, ATriangleInTheMiddleOfAStripSplitsItIntoThree) {
    const strip_mesh_t before = strip_of(5);
    const strip_mesh_t after = folded(before, {2}, 90);
    // Vertices 2, 3, 4 are shared: their copies are 7, 8, 9. The fourth triangle is an even one with more
    // behind it, so it stands alone.
    EXPECT_EQ(after.elements, (indices_t{0, 1, 2, 3, mark, 7, 8, 9, mark, 4, 3, 5, mark, 4, 5, 6}));
    ASSERT_EQ(after.vertices.size(), 10U);
    ASSERT_EQ(after.frames.size(), 10U);
    EXPECT_TRUE(std::equal(before.vertices.begin(), before.vertices.end(), after.vertices.begin()));
    EXPECT_TRUE(std::equal(before.frames.begin(), before.frames.end(), after.frames.begin()));
    const std::vector<corners_t> expected{{0, 1, 2}, {2, 1, 3}, {7, 8, 9}, {4, 3, 5}, {4, 5, 6}};
    EXPECT_EQ(triangles_of(after), expected);
}

TEST(FoldPolygons, OnAStripOfThreeTheMiddleOneLeavesThreeStrips) {
    EXPECT_EQ(folded(strip_of(3), {1}, 90).elements, (indices_t{0, 1, 2, mark, 6, 5, 7, mark, 2, 3, 4}));
}

TEST(FoldPolygons, FoldingAllTrianglesSplitsNoVertexAndTurnsTheWholeModel) {
    const strip_mesh_t before = strip_of(5);
    const strip_mesh_t after = folded(before, {0, 1, 2, 3, 4}, 90);
    EXPECT_EQ(after.elements, before.elements);
    ASSERT_EQ(after.vertices.size(), before.vertices.size());
    for (std::size_t i = 0; i < before.vertices.size(); ++i) {
        const pos3& from = before.vertices[i].position;
        EXPECT_TRUE(f_eq(after.vertices[i].position, {from.x, -from.z, from.y})) << i;
    }
}

TEST(FoldPolygons, AnAngleOfZeroTearsButMovesNothing) {
    for (const auto& [a, b] :
         {std::pair{origin, x_axis}, std::pair{pos3{0.1F, 0.7F, -3.3F}, pos3{1.7F, 0.2F, 9}}}) {
        const strip_mesh_t before = strip_of(4);
        const strip_mesh_t after = folded(before, {0, 1}, 0, a, b);
        ASSERT_EQ(after.vertices.size(), before.vertices.size() + 2);
        EXPECT_TRUE(std::equal(before.vertices.begin(), before.vertices.end(), after.vertices.begin()));
        EXPECT_TRUE(std::equal(before.frames.begin(), before.frames.end(), after.frames.begin()));
        EXPECT_EQ(after.vertices[6], before.vertices[2]);
        EXPECT_EQ(after.vertices[7], before.vertices[3]);
        EXPECT_EQ(after.elements, (indices_t{0, 1, 6, 7, mark, 2, 3, 4, 5}));
    }
}

TEST(FoldPolygons, WithNothingSelectedNothingChangesAndItStillRan) {
    strip_mesh_t mesh = strip_of(4);
    EXPECT_TRUE(fold_polygons({}, origin, x_axis, 77, mesh));
    EXPECT_TRUE(same_bits(mesh, strip_of(4)));
    EXPECT_TRUE(fold_polygons({4, 99, restart_mark}, origin, x_axis, 77, mesh));
    EXPECT_TRUE(same_bits(mesh, strip_of(4)));
}

TEST(FoldPolygons, AnEmptyMeshStaysEmpty) {
    strip_mesh_t mesh;
    EXPECT_TRUE(fold_polygons({0}, origin, x_axis, 90, mesh));
    EXPECT_TRUE(same_bits(mesh, {}));
    strip_mesh_t marks = mesh_of({mark, mark, 0}, 0);
    EXPECT_TRUE(fold_polygons({0}, origin, x_axis, 90, marks));
    EXPECT_TRUE(same_bits(marks, mesh_of({mark, mark, 0}, 0)));
}

TEST(FoldPolygons, AHoleIsReusedBeforeTheMeshGrows) {
    // No element refers to 1 and 6. The triangles share 3 and 4, the copies of which fill these.
    const strip_mesh_t before = mesh_of({0, 3, 4, 5}, 7);
    const strip_mesh_t after = folded(before, {1}, 90, {2, 0, 0}, {2, 1, 0});
    EXPECT_EQ(after.elements, (indices_t{0, 3, 4, mark, 2, 1, 5}));
    ASSERT_EQ(after.vertices.size(), 7U);
    EXPECT_EQ(after.vertices[1].color, before.vertices[3].color);
    EXPECT_EQ(after.vertices[2].color, before.vertices[4].color);
    EXPECT_EQ(after.vertices[6], before.vertices[6]);
    EXPECT_EQ(after.frames[6], before.frames[6]);
}

TEST(FoldPolygons, WhenTheHolesAreFullTheMeshGrows) {
    // Holes: 0 and 6. Shared: 2, 3 and 4, of the triangles 1 2 3 and 4 3 2.
    const strip_mesh_t before = mesh_of({1, 2, 3, 4, mark, 2, 4, 5}, 7);
    const strip_mesh_t after = folded(before, {1}, 90, {2, 0, 0}, {2, 1, 0});
    EXPECT_EQ(after.elements, (indices_t{1, 2, 3, mark, 6, 0, 7, mark, 2, 4, 5}));
    ASSERT_EQ(after.vertices.size(), 8U);
    ASSERT_EQ(after.frames.size(), 8U);
    EXPECT_EQ(after.vertices[0].color, before.vertices[2].color);
    EXPECT_EQ(after.vertices[6].color, before.vertices[3].color);
    EXPECT_EQ(after.vertices[7].color, before.vertices[4].color);
}

TEST(FoldPolygons, AVertexOfAStripWithoutTrianglesCountsAsUsed) {
    // 0 belongs to the triangle and to two elements that make none: it is torn; 3 is in use and no hole.
    const strip_mesh_t after = folded(mesh_of({0, 1, 2, mark, 0, 3}, 4), {0}, 0);
    EXPECT_EQ(after.elements, (indices_t{4, 1, 2, mark, 0, 3}));
}

TEST(FoldPolygons, TornVerticesAreCopiedToTheLastBit) {
    strip_mesh_t before = strip_of(2);
    const float odd_number = std::nanf("0x123");
    before.vertices[1].color = {1e-42F, -0.0F, odd_number, 1e38F};
    before.vertices[1].texcoord = {odd_number, -0.0F};
    const strip_mesh_t after = folded(before, {1}, 33, {0.1F, 0.2F, 0.3F}, {1, -2, 0.5F});
    ASSERT_EQ(after.elements, (indices_t{0, 1, 2, mark, 5, 4, 3}));
    for (const auto& [copy, of] : {std::pair{4U, 1U}, std::pair{5U, 2U}}) {
        EXPECT_EQ(std::memcmp(&after.vertices[copy].color, &before.vertices[of].color,
                              sizeof(col3a) + sizeof(txc2)),
                  0);
    }
    EXPECT_EQ(std::memcmp(after.vertices.data(), before.vertices.data(), 3 * sizeof(vertex_t)), 0);
    EXPECT_EQ(std::memcmp(after.frames.data(), before.frames.data(), 3 * sizeof(frame_t)), 0);
}

TEST(FoldPolygons, FoldingAgainTearsNothingMore) {
    const strip_mesh_t once = folded(strip_of(7), {1, 2, 5}, 20);
    const strip_mesh_t twice = folded(once, {1, 2, 5}, 20);
    EXPECT_EQ(twice.elements, once.elements);
    EXPECT_EQ(twice.vertices.size(), once.vertices.size());
    // And takes the first fold back.
    const strip_mesh_t back = folded(once, {1, 2, 5}, -20);
    const strip_mesh_t still = folded(strip_of(7), {1, 2, 5}, 0);
    for (std::size_t i = 0; i < back.vertices.size(); ++i)
        EXPECT_TRUE(f_eq(back.vertices[i].position, still.vertices[i].position)) << i;
}

// Turning.

TEST(FoldPolygons, TurnsCounterClockwiseAboutTheDirectionFromAToB) {
    strip_mesh_t mesh = strip_of(1);
    mesh.vertices[2].position = {3, 2, 7};
    const strip_mesh_t after = folded(mesh, {0}, 90, {1, 0, 0}, {1, 0, 5});
    EXPECT_TRUE(f_eq(after.vertices[2].position, {-1, 2, 7})) << "about z through (1, 0, 0)";
    const strip_mesh_t other_way = folded(mesh, {0}, 90, {1, 0, 5}, {1, 0, 0});
    EXPECT_TRUE(f_eq(other_way.vertices[2].position, {3, -2, 7}));
}

TEST(FoldPolygons, FramesTurnWithoutTheTranslation) {
    strip_mesh_t mesh = strip_of(1);
    mesh.frames[0] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    const strip_mesh_t after = folded(mesh, {0}, 90, {5, -7, 9}, {6, -7, 9});
    EXPECT_EQ(after.frames[0].tangent, (dir3{1, 0, 0}));
    EXPECT_NEAR(after.frames[0].binormal.z, 1, 1e-6);
    EXPECT_NEAR(after.frames[0].normal.y, -1, 1e-6);
}

TEST(FoldPolygons, WhatLiesOnTheAxisStays) {
    strip_mesh_t mesh = strip_of(2);
    const pos3 a = mesh.vertices[1].position, b = mesh.vertices[2].position;
    const strip_mesh_t after = folded(mesh, {1}, 137, a, b);
    ASSERT_EQ(after.elements, (indices_t{0, 1, 2, mark, 5, 4, 3}));
    EXPECT_TRUE(f_eq(after.vertices[4].position, a));
    EXPECT_TRUE(f_eq(after.vertices[5].position, b));
    EXPECT_FALSE(f_eq(after.vertices[3].position, mesh.vertices[3].position));
}

TEST(FoldPolygons, TheTurnIsRigid) {
    const pos3 a{0.4F, -1.2F, 0.3F}, b{2.1F, 0.6F, -0.8F};
    const strip_mesh_t before = strip_of(6);
    for (const float angle : {-180.0F, -91.0F, 15.0F, 60.0F, 179.0F}) {
        const strip_mesh_t after = folded(before, {0, 1, 2, 3, 4, 5}, angle, a, b);
        for (std::size_t i = 0; i < before.vertices.size(); ++i) {
            const auto place = [i](const strip_mesh_t& mesh) { return mesh.vertices[i].position; };
            for (std::size_t j = 0; j < i; ++j)
                EXPECT_NEAR(length(place(after) - after.vertices[j].position),
                            length(place(before) - before.vertices[j].position), 1e-5);
            EXPECT_NEAR(length(place(after) - a), length(place(before) - a), 1e-5);
            EXPECT_NEAR(length(place(after) - b), length(place(before) - b), 1e-5);
            // The frame turns as the sheet does: it sees every other vertex in the same directions.
            for (std::size_t j = 0; j < before.vertices.size(); ++j)
                for (const auto axis : {&frame_t::tangent, &frame_t::binormal, &frame_t::normal})
                    EXPECT_NEAR(dot(after.frames[i].*axis, after.vertices[j].position - place(after)),
                                dot(before.frames[i].*axis, before.vertices[j].position - place(before)),
                                2e-5);
        }
    }
}

// The rule, and the plain steps.

/// After a fold: the triangles are the same and in order, those of the set turned, the others untouched, and
/// no vertex belongs to both.
void expect_rule(const strip_mesh_t& before, const ids_t& selected) {
    const strip_mesh_t after = folded(before, selected, 90);
    const std::vector<corners_t> from = triangles_of(before), to = triangles_of(after);
    ASSERT_EQ(from.size(), to.size());
    std::set<std::uint32_t> turned, others;
    for (std::uint32_t id = 0; id < to.size(); ++id) {
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const vertex_t& was = before.vertices[from[id][corner]];
            const vertex_t& is = after.vertices[to[id][corner]];
            EXPECT_EQ(is.color, was.color);
            EXPECT_EQ(is.texcoord, was.texcoord);
            if (selected.contains(id)) {
                turned.insert(to[id][corner]);
                EXPECT_TRUE(f_eq(is.position, {was.position.x, -was.position.z, was.position.y}));
            } else {
                others.insert(to[id][corner]);
                EXPECT_EQ(to[id][corner], from[id][corner]);
                EXPECT_EQ(is.position, was.position);
                EXPECT_EQ(after.frames[to[id][corner]], before.frames[from[id][corner]]);
            }
        }
    }
    indices_t common;
    std::ranges::set_intersection(turned, others, std::back_inserter(common));
    EXPECT_EQ(common, indices_t{});
}

TEST(FoldPolygonsRule, HoldsForAllSetsOfOneStrip) {
    for (std::size_t triangles = 1; triangles <= 8; ++triangles) {
        const strip_mesh_t mesh = strip_of(triangles);
        for (unsigned bits = 0; bits < 1U << triangles; ++bits) {
            ids_t selected;
            for (std::uint32_t id = 0; id < triangles; ++id)
                if (bits >> id & 1U)
                    selected.insert(id);
            SCOPED_TRACE(testing::Message() << triangles << " triangles, set " << bits);
            expect_rule(mesh, selected);
        }
    }
}

TEST(FoldPolygonsRule, GivesTheBitsOfThePlainStepsOnAnyMesh) {
    std::mt19937 random(5);
    std::uniform_real_distribution<float> number(-2, 2);
    const auto point = [&] { return pos3{number(random), number(random), number(random)}; };
    for (int round = 0; round < 1500; ++round) {
        const std::size_t vertices = 1 + random() % 20, elements = random() % 50;
        indices_t strips;
        for (std::size_t i = 0; i < elements; ++i)
            strips.push_back(random() % 9 == 0 ? mark : static_cast<std::uint32_t>(random() % vertices));
        strip_mesh_t mesh = mesh_of(strips, vertices);
        for (vertex_t& vertex : mesh.vertices)
            vertex.position = point();
        ids_t selected;
        for (std::uint32_t id = 0; id < 50; ++id)
            if (random() % 3 == 0)
                selected.insert(id);
        const pos3 a = point(), b = point();
        const float angle = number(random) * 90;

        const strip_mesh_t fast = folded(mesh, selected, angle, a, b);
        ulk_test::plain_fold(selected, a, b, angle, mesh);
        ASSERT_EQ(fast.elements, mesh.elements) << round;
        // Zeros may differ in their sign.
        ASSERT_EQ(fast.vertices, mesh.vertices) << round;
        ASSERT_EQ(fast.frames, mesh.frames) << round;
    }
}

}  // namespace
