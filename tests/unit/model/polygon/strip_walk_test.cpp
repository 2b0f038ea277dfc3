#include "model/polygon/strip_walk.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace {

using namespace ulk3d;

constexpr std::uint32_t mark = 4294967295U;

struct row {
    std::uint32_t a, b, c;
    std::uint32_t position;
    bool flipped;
    std::uint64_t id;
    bool operator==(const row&) const = default;
};

void PrintTo(const row& t, std::ostream* stream) {
    *stream << "(" << t.a << ", " << t.b << ", " << t.c << ") at " << t.position
            << (t.flipped ? " flipped" : "") << " id " << t.id;
}

std::vector<row> walk(const std::vector<std::uint32_t>& elements, std::uint64_t vertex_count) {
    std::vector<row> triangles;
    walk_strips(elements, vertex_count, [&](const strip_triangle_t& t) {
        triangles.push_back({t.a, t.b, t.c, t.position, t.flipped, t.id});
    });
    return triangles;
}

TEST(StripWalk, NoElementsGiveNoTriangle) {
    EXPECT_TRUE(walk({}, 10).empty());
}

TEST(StripWalk, TwoElementsGiveNoTriangle) {
    EXPECT_TRUE(walk({0, 1}, 10).empty());
}

TEST(StripWalk, EvenTrianglesAreFlipped) {
    EXPECT_EQ(walk({0, 1, 2, 3, 4}, 5),
              (std::vector<row>{{0, 1, 2, 0, false, 0}, {2, 1, 3, 1, true, 1}, {2, 3, 4, 2, false, 2}}));
}

TEST(StripWalk, MarkStartsANewStripAndIdsGoOn) {
    EXPECT_EQ(walk({0, 1, 2, 3, mark, 4, 5, 6}, 7),
              (std::vector<row>{{0, 1, 2, 0, false, 0}, {2, 1, 3, 1, true, 1}, {4, 5, 6, 5, false, 2}}));
}

TEST(StripWalk, IndexAtVertexCountEndsTheStrip) {
    EXPECT_EQ(walk({0, 1, 2, 5, 3, 4, 0}, 5),
              (std::vector<row>{{0, 1, 2, 0, false, 0}, {3, 4, 0, 4, false, 1}}));
}

TEST(StripWalk, LastVertexIsAccepted) {
    EXPECT_EQ(walk({0, 1, 4}, 5), (std::vector<row>{{0, 1, 4, 0, false, 0}}));
}

TEST(StripWalk, StripsOfTwoAreSkipped) {
    EXPECT_EQ(walk({0, 1, mark, 2, mark, mark, 1, 2, 3}, 5), (std::vector<row>{{1, 2, 3, 6, false, 0}}));
}

TEST(StripWalk, DegenerateTrianglesCount) {
    EXPECT_EQ(walk({1, 1, 1, 1}, 2), (std::vector<row>{{1, 1, 1, 0, false, 0}, {1, 1, 1, 1, true, 1}}));
}

TEST(StripWalk, NoVerticesMeanNoTriangle) {
    EXPECT_TRUE(walk({0, 0, 0, 0}, 0).empty());
}

TEST(StripWalk, EdgesOfNeighboursRunAgainstEachOther) {
    // The edge that two triangles of a strip share is walked in both directions: they turn the same way.
    const auto triangles = walk({0, 1, 2, 3, 4, 5, 6, 7}, 8);
    ASSERT_EQ(triangles.size(), 6U);
    const auto has_edge = [](const row& t, std::uint32_t from, std::uint32_t to) {
        return (t.a == from && t.b == to) || (t.b == from && t.c == to) || (t.c == from && t.a == to);
    };
    for (std::uint32_t i = 0; i + 1 < triangles.size(); ++i) {
        const bool forward = has_edge(triangles[i], i + 1, i + 2);
        EXPECT_NE(forward, has_edge(triangles[i], i + 2, i + 1));
        EXPECT_EQ(forward, has_edge(triangles[i + 1], i + 2, i + 1));
    }
}

}  // namespace
