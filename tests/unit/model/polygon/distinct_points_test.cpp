#include "model/polygon/distinct_points.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <map>
#include <random>
#include <utility>
#include <vector>

namespace {

using namespace ulk3d;

/// Points with their sizes, as a draw takes them.
struct points_t {
    std::vector<vertex_t> vertices;
    std::vector<float> sizes;

    void add(const vertex_t& vertex, float size = 3) {
        vertices.push_back(vertex);
        sizes.push_back(size);
    }
    std::vector<std::uint32_t> uncovered() const { return uncovered_points(vertices, sizes); }
};

using numbers = std::vector<std::uint32_t>;

constexpr vertex_t first{{1, 2, 3}, {0.1F, 0.2F, 0.3F, 1}, {}};
constexpr vertex_t second{{4, 5, 6}, {0.1F, 0.2F, 0.3F, 1}, {}};

TEST(UncoveredPoints, AreTheLastOfThoseThatLookAlike) {
    points_t points;
    for (const vertex_t& vertex : {first, second, first, first, second, first})
        points.add(vertex);
    EXPECT_EQ(points.uncovered(), (numbers{4, 5}));
}

TEST(UncoveredPoints, TextureCoordinatesDoNotShow) {
    points_t points;
    points.add({first.position, first.color, {0.25F, 0.5F}});
    points.add(first);
    EXPECT_EQ(points.uncovered(), (numbers{1}));
}

/// A row of points in which one differs from the others by one of its numbers.
TEST(UncoveredPoints, DifferByEachNumberThatShows) {
    for (int word = 0; word < 7; ++word) {
        points_t points;
        vertex_t other = first;
        float* const numbers_of_other = word < 3 ? &other.position.x + word : &other.color.r + (word - 3);
        *numbers_of_other += 0.5F;
        points.add(other);
        for (int i = 0; i < 7; ++i)
            points.add(first);
        EXPECT_EQ(points.uncovered(), (numbers{0, 7})) << "number " << word;
    }
}

TEST(UncoveredPoints, OfTwoSizesBothShow) {
    points_t points;
    points.add(first, 5);
    points.add(first, 5);
    points.add(first);
    points.add(first);
    EXPECT_EQ(points.uncovered(), (numbers{1, 3}));
}

TEST(UncoveredPoints, AreToldApartByTheirBits) {
    points_t points;
    const float no_number = std::numeric_limits<float>::quiet_NaN();
    for (int i = 0; i < 3; ++i) {
        points.add({{0.0F, 0, 0}, first.color, {}});
        points.add({{-0.0F, 0, 0}, first.color, {}});
        points.add({{no_number, 0, 0}, first.color, {}});
    }
    EXPECT_EQ(points.uncovered(), (numbers{6, 7, 8}));
}

TEST(UncoveredPoints, AreNotListedWhenMoreThanHalfShow) {
    points_t points;
    points.add(first);
    points.add(second);
    points.add(first);
    EXPECT_EQ(points.uncovered(), numbers{});
    points.add(second);
    EXPECT_EQ(points.uncovered(), (numbers{2, 3}));
    EXPECT_EQ(points_t{}.uncovered(), numbers{});
}

TEST(UncoveredPoints, WithoutSizesAreNone) {
    points_t points;
    points.add(first);
    points.add(first);
    points.sizes.clear();
    EXPECT_EQ(points.uncovered(), numbers{});
}

/// A cloud on a grid of places, in so many colours and sizes: far more points than the table has entries.
points_t random_points(std::mt19937& random, std::size_t count, int places) {
    const auto number = [&](int limit) {
        return static_cast<float>(std::uniform_int_distribution<int>(0, limit - 1)(random));
    };
    points_t points;
    for (std::size_t i = 0; i < count; ++i)
        points.add({{number(places), number(places), number(2)}, {number(2), 0.5F, 1, 1}, {number(9), 0}},
                   3 + 2 * number(2));
    return points;
}

/// A point may only be missing when one that is there, and comes later, looks the same.
void expect_covered(const points_t& points, const numbers& kept) {
    ASSERT_EQ(std::ranges::adjacent_find(kept, std::ranges::greater_equal{}), kept.end());
    std::vector<bool> is_kept(points.vertices.size(), false);
    for (const std::uint32_t index : kept)
        is_kept.at(index) = true;
    using place_t = std::array<float, 8>;
    std::map<place_t, std::size_t> later;
    for (std::size_t i = points.vertices.size(); i-- > 0;) {
        const vertex_t& vertex = points.vertices[i];
        const place_t place{vertex.position.x, vertex.position.y, vertex.position.z, vertex.color.r,
                            vertex.color.g,    vertex.color.b,    vertex.color.a,    points.sizes[i]};
        if (is_kept[i])
            later.emplace(place, i);
        else
            ASSERT_TRUE(later.contains(place)) << "point " << i;
    }
}

TEST(UncoveredPoints, LeaveOutOnlyWhatALaterOneCovers) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        const auto count = std::uniform_int_distribution<std::size_t>(0, 400)(random);
        const points_t points = random_points(random, count, 1 + round % 9);
        const numbers kept = points.uncovered();
        if (!kept.empty())
            expect_covered(points, kept);
    }
    const points_t many = random_points(random, 300'000, 60);
    const numbers kept = many.uncovered();
    ASSERT_FALSE(kept.empty());
    expect_covered(many, kept);
}

/// Each place of a sheet comes six times, as in an STL file; the first of a row lies thousands of points
/// before its last.
TEST(UncoveredPoints, OfASheetOfTrianglesAreFewerThanAQuarter) {
    constexpr int side = 600;
    points_t points;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            for (const auto& [right, up] : {std::pair{0, 0}, {1, 0}, {0, 1}, {1, 0}, {1, 1}, {0, 1}})
                points.add({{static_cast<float>(x + right) / 7, static_cast<float>(y + up) / 3, 0}, {}, {}});
    const numbers kept = points.uncovered();
    ASSERT_FALSE(kept.empty());
    EXPECT_LT(kept.size(), points.vertices.size() / 4);
    expect_covered(points, kept);
}

}  // namespace
