#include "tool/foreign/library/strip_builder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "model/polygon/strip_walk.h"

namespace {

using ulktool::corners_t;

std::vector<std::uint32_t> strips_of(const std::vector<corners_t>& triangles) {
    ulktool::strip_builder_t builder;
    for (const corners_t& triangle : triangles)
        builder.add(triangle);
    return builder.finish();
}

/// With the smallest corner first, and the same winding.
corners_t turned(corners_t corners) {
    std::rotate(corners.begin(), std::ranges::min_element(corners), corners.end());
    return corners;
}

std::vector<corners_t> triangles_of(const std::vector<std::uint32_t>& elements) {
    std::vector<corners_t> triangles;
    ulk3d::walk_strips(elements, 1000, [&](const ulk3d::strip_triangle_t& triangle) {
        triangles.push_back(turned({triangle.a, triangle.b, triangle.c}));
    });
    return triangles;
}

constexpr std::uint32_t mark = 0xFFFFFFFF;

TEST(StripBuilder, TheHalvesOfASquareAreOneStrip) {
    EXPECT_EQ(strips_of({{0, 1, 2}, {0, 2, 3}}), (std::vector<std::uint32_t>{1, 2, 0, 3, mark}));
}

TEST(StripBuilder, TrianglesWithoutACommonEdgeAreStripsOfTheirOwn) {
    EXPECT_EQ(strips_of({{0, 1, 2}, {3, 4, 5}}), (std::vector<std::uint32_t>{0, 1, 2, mark, 3, 4, 5, mark}));
}

TEST(StripBuilder, ANeighbourThatLooksToTheOtherSideBeginsAStrip) {
    EXPECT_EQ(strips_of({{0, 1, 2}, {0, 1, 3}}), (std::vector<std::uint32_t>{0, 1, 2, mark, 0, 1, 3, mark}));
}

TEST(StripBuilder, NoTrianglesAreNoElements) {
    EXPECT_TRUE(strips_of({}).empty());
}

TEST(StripBuilder, AnyTrianglesKeepTheirOrderAndWinding) {
    std::mt19937 random(5);
    std::uniform_int_distribution<std::uint32_t> corner(0, 5);
    for (int round = 0; round < 2000; ++round) {
        std::vector<corners_t> triangles(8), expected;
        for (corners_t& triangle : triangles) {
            do
                triangle = {corner(random), corner(random), corner(random)};
            while (triangle[0] == triangle[1] || triangle[1] == triangle[2] || triangle[0] == triangle[2]);
            expected.push_back(turned(triangle));
        }
        ASSERT_EQ(triangles_of(strips_of(triangles)), expected);
    }
}

}  // namespace
