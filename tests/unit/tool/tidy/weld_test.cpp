#include "tool/tidy/weld.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "model/math/vectors.h"

namespace {

using namespace ulk3d;
using namespace ulktool;

constexpr float nan = std::numeric_limits<float>::quiet_NaN();

vertex_t grey(float x, float y, float z) {
    return {{x, y, z}, default_color, {}};
}

/// Triangles that use each vertex in turn; the last ones may be used twice.
std::vector<triangle_corners_t> triangles_over(std::size_t count) {
    std::vector<triangle_corners_t> triangles;
    for (std::uint32_t first = 0; first < count; first += 3) {
        const auto last = static_cast<std::uint32_t>(count - 1);
        triangles.push_back({first, std::min(first + 1, last), std::min(first + 2, last)});
    }
    return triangles;
}

std::vector<std::uint32_t> weld(const std::vector<vertex_t>& vertices, double tolerance = 0) {
    return welded_vertices(vertices, triangles_over(vertices.size()), tolerance);
}

using standing_t = std::vector<std::uint32_t>;

TEST(Weld, VerticesThatAgreeToTheLastBitBecomeTheFirstOfThem) {
    EXPECT_EQ(weld({grey(1, 2, 3), grey(4, 5, 6), grey(1, 2, 3), grey(4, 5, 6), grey(1, 2, 3)}),
              (standing_t{0, 1, 0, 1, 0}));
    const float next = std::nextafter(1.0F, 2.0F);
    EXPECT_EQ(weld({grey(1, 2, 3), grey(next, 2, 3), grey(1, 2, 3)}), (standing_t{0, 1, 0}));
}

TEST(Weld, ColourAndTextureCoordinateMustAgree) {
    const vertex_t first = grey(1, 2, 3);
    for (int part = 0; part < 6; ++part) {
        vertex_t other = first;
        float* const parts[] = {&other.color.r, &other.color.g,    &other.color.b,
                                &other.color.a, &other.texcoord.s, &other.texcoord.t};
        *parts[part] += 0.25F;
        EXPECT_EQ(weld({first, other, first}), (standing_t{0, 1, 0})) << part;
        EXPECT_EQ(weld({first, other, first}, 10), (standing_t{0, 1, 0})) << part;
    }
}

TEST(Weld, ZerosOfEitherSignAgree) {
    EXPECT_EQ(weld({grey(0, 0, 0), grey(-0.0F, 0, 0), grey(0, 0, -0.0F)}), (standing_t{0, 0, 0}));
    vertex_t other = grey(-0.0F, 0, 0);
    other.texcoord = {-0.0F, 0};
    EXPECT_EQ(weld({grey(0, 0, 0), other, grey(1, 0, 0)}), (standing_t{0, 0, 2}));
}

TEST(Weld, NotANumberAgreesWithItselfAloneAndIsNearToNothing) {
    EXPECT_EQ(weld({grey(nan, 0, 0), grey(nan, 0, 0), grey(0, 0, 0)}, 100), (standing_t{0, 0, 2}));
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(weld({grey(infinity, 0, 0), grey(infinity, 1, 0), grey(infinity, 0, 0)}, 100),
              (standing_t{0, 1, 0}));
}

TEST(Weld, VerticesWithoutATriangleStandForNothing) {
    const std::vector<vertex_t> vertices{grey(7, 7, 7), grey(1, 0, 0), grey(0, 1, 0), grey(0, 0, 1),
                                         grey(1, 0, 0)};
    EXPECT_EQ(welded_vertices(vertices, std::vector<triangle_corners_t>{{1, 2, 3}, {4, 3, 2}}, 0),
              (standing_t{no_vertex, 1, 2, 3, 1}));
    EXPECT_EQ(welded_vertices(vertices, {}, 0), standing_t(5, no_vertex));
}

TEST(Weld, ToleranceIsADistanceAndIncluded) {
    const std::vector<vertex_t> vertices{grey(0, 0, 0), grey(0.25F, 0, 0), grey(0.25F, 0.25F, 0.25F)};
    EXPECT_EQ(weld(vertices, 0.2499), (standing_t{0, 1, 2}));
    EXPECT_EQ(weld(vertices, 0.25), (standing_t{0, 0, 2}));
    EXPECT_EQ(weld(vertices, 0.434), (standing_t{0, 0, 0}));
    // The first two became one at the place of the first, which the third is too far from.
    EXPECT_EQ(weld(vertices, 0.36), (standing_t{0, 0, 2}));
}

TEST(Weld, TheNearestOneIsTakenAndAmongEquallyNearOnesTheFirst) {
    EXPECT_EQ(weld({grey(0, 0, 0), grey(1, 0, 0), grey(0.75F, 0, 0)}, 0.8), (standing_t{0, 1, 1}));
    EXPECT_EQ(weld({grey(0, 0, 0), grey(1, 0, 0), grey(0.5F, 0, 0)}, 0.8), (standing_t{0, 1, 0}));
}

/// Each vertex in turn looks at all that stand for others.
standing_t plainly_welded(const std::vector<vertex_t>& vertices, double tolerance) {
    standing_t standing;
    for (std::uint32_t i = 0; i < vertices.size(); ++i) {
        std::uint32_t best = i;
        double least = std::numeric_limits<double>::infinity();
        for (std::uint32_t k = 0; k < i; ++k) {
            const pos3 &p = vertices[i].position, &q = vertices[k].position;
            const double distance = std::hypot(double{p.x} - q.x, double{p.y} - q.y, double{p.z} - q.z);
            if (standing[k] == k && distance <= tolerance && distance < least &&
                vertices[i].color == vertices[k].color) {
                best = k;
                least = distance;
            }
        }
        standing.push_back(best);
    }
    return standing;
}

TEST(Weld, EqualsAPlainSearchInRandomClouds) {
    std::mt19937 random(7);
    for (const float size : {1e-30F, 0.01F, 1.0F, 1000.0F, 1e30F}) {
        std::uniform_real_distribution<float> coordinate(-size, size);
        std::vector<vertex_t> vertices;
        for (int n = 0; n < 300; ++n) {
            vertices.push_back(grey(coordinate(random), coordinate(random), coordinate(random)));
            vertices.back().color.r = static_cast<float>(n % 2);
        }
        for (const double part : {1e-60, 0.01, 0.05, 0.2, 0.7, 5.0, 1e60})
            EXPECT_EQ(weld(vertices, part * size), plainly_welded(vertices, part * size)) << size << part;
    }
}

TEST(Weld, OnceMoreJoinsNothing) {
    std::mt19937 random(8);
    std::uniform_real_distribution<float> coordinate(-1, 1);
    std::vector<vertex_t> vertices;
    for (int n = 0; n < 3000; ++n)
        vertices.push_back(grey(coordinate(random), coordinate(random), 0));
    const standing_t standing = weld(vertices, 0.05);
    std::vector<vertex_t> left;
    for (std::uint32_t n = 0; n < standing.size(); ++n)
        if (standing[n] == n)
            left.push_back(vertices[n]);
    ASSERT_LT(left.size(), 1500U);
    const standing_t again = weld(left, 0.05);
    for (std::uint32_t n = 0; n < again.size(); ++n)
        EXPECT_EQ(again[n], n);
}

TEST(Weld, AnyToleranceTakesLinearTime) {
    // So many vertices that a search among all of them, or among those of one place, would not end.
    std::vector<vertex_t> vertices;
    for (std::uint32_t n = 0; n < 200000; ++n) {
        vertices.push_back(grey(static_cast<float>(n % 1000), static_cast<float>(n / 1000), 0));
        vertices.back().texcoord.s = static_cast<float>(n);
    }
    for (const double tolerance : {1e-300, 0.5, 1e6, 1e300}) {
        const standing_t standing = weld(vertices, tolerance);
        EXPECT_EQ(std::ranges::count(standing, 0U), 1);
    }
    for (vertex_t& vertex : vertices)
        vertex.texcoord.s = 0;
    EXPECT_EQ(weld(vertices, 1e300), standing_t(vertices.size(), 0));
    // Whose place can not be told lies in no cell, nor do those that are beyond all cells lie in one.
    for (vertex_t& vertex : vertices)
        vertex.position = {vertex.position.x + 1, vertex.position.y + 1, nan};
    EXPECT_EQ(weld(vertices, 1e300)[199999], 199999U);
    for (vertex_t& vertex : vertices)
        vertex.position.z = 0;
    EXPECT_EQ(weld(vertices, 1e-310)[199999], 199999U);
}

}  // namespace
