#include "operations/hit/clip_polygon.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

using namespace ulk3d;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr edge_line_t right_of_zero{1, 0, 0};

clip_polygon_t polygon_of(const std::vector<clip_vertex_t>& corners) {
    clip_polygon_t polygon;
    for (const clip_vertex_t& corner : corners) {
        polygon.positions.at(polygon.count) = corner.position;
        polygon.attributes.at(polygon.count) = corner.attribute;
        ++polygon.count;
    }
    return polygon;
}

clip_polygon_t at(const std::vector<pos3>& places) {
    std::vector<clip_vertex_t> corners;
    for (const pos3& place : places)
        corners.push_back({place, {}});
    return polygon_of(corners);
}

std::vector<pos3> positions_of(const clip_polygon_t& polygon) {
    return {polygon.positions.begin(),
            polygon.positions.begin() + static_cast<std::ptrdiff_t>(polygon.count)};
}

std::vector<pos3> clipped(const clip_polygon_t& polygon, const edge_line_t& line) {
    clip_polygon_t out;
    out.count = 5;
    clip_by_line(out, polygon, line);
    return positions_of(out);
}

TEST(ClipByLine, EmptyPolygonStaysEmpty) {
    EXPECT_EQ(clipped({}, right_of_zero), std::vector<pos3>());
}

TEST(ClipByLine, AllInsideIsHandedOn) {
    const auto triangle = at({{1, 0, 5}, {2, 0, 6}, {1, 1, 7}});
    EXPECT_EQ(clipped(triangle, right_of_zero), positions_of(triangle));
}

TEST(ClipByLine, AllOutsideLeavesNothing) {
    EXPECT_EQ(clipped(at({{-1, 0, 5}, {-2, 0, 6}, {-1, 1, 7}}), right_of_zero), std::vector<pos3>());
}

TEST(ClipByLine, CornersOnTheLineAreInside) {
    const auto triangle = at({{0, 0, 1}, {0, 1, 2}, {0, 2, 3}});
    EXPECT_EQ(clipped(triangle, right_of_zero), positions_of(triangle));
}

TEST(ClipByLine, OneCornerOutsideGivesAQuad) {
    EXPECT_EQ(clipped(at({{2, 0, 0}, {2, 4, 4}, {-2, 0, 8}}), right_of_zero),
              (std::vector<pos3>{{2, 0, 0}, {2, 4, 4}, {0, 2, 6}, {0, 0, 4}}));
}

TEST(ClipByLine, TwoCornersOutsideGiveATriangle) {
    EXPECT_EQ(clipped(at({{-2, 0, 0}, {2, 4, 4}, {-2, 8, 8}}), right_of_zero),
              (std::vector<pos3>{{0, 2, 2}, {2, 4, 4}, {0, 6, 6}}));
}

TEST(ClipByLine, AttributeIsInterpolatedWithThePosition) {
    clip_polygon_t out;
    clip_by_line(
        out, polygon_of({{{3, 0, 0}, {0, 10, 20, 1}}, {{3, 4, 0}, {1, 1, 1, 1}}, {{-1, 0, 0}, {4, 2, 0, 5}}}),
        right_of_zero);
    ASSERT_EQ(out.count, 4U);
    EXPECT_EQ(out.attributes[0], (vec3w{0, 10, 20, 1}));
    EXPECT_EQ(out.attributes[1], (vec3w{1, 1, 1, 1}));
    EXPECT_EQ(out.attributes[2], (vec3w{3.25F, 1.75F, 0.25F, 4}));
    EXPECT_EQ(out.attributes[3], (vec3w{3, 4, 5, 4}));
}

TEST(ClipByLine, CrossingIsComputedFromTheInsideCorner) {
    // From either end the place on the edge rounds differently.
    const pos3 inside{0.1F, 0.7F, 0.3F};
    const pos3 outside{-0.5F, 0.9F, -0.9F};
    const float f = 0.1F / (0.1F - -0.5F);
    const float back = -0.5F / (-0.5F - 0.1F);
    const pos3 crossing{0.1F + (-0.5F - 0.1F) * f, 0.7F + (0.9F - 0.7F) * f, 0.3F + (-0.9F - 0.3F) * f};
    ASSERT_NE(crossing.y, 0.9F + (0.7F - 0.9F) * back);
    const auto leaving = clipped(at({inside, outside}), right_of_zero);
    ASSERT_EQ(leaving.size(), 3U);
    EXPECT_EQ(leaving[1], crossing);
    const auto entering = clipped(at({outside, inside}), right_of_zero);
    ASSERT_EQ(entering.size(), 3U);
    EXPECT_EQ(entering[0], crossing);
}

TEST(ClipByLine, FourthFloatOfALineMeansNothing) {
    const auto triangle = at({{2, 0, 0}, {2, 4, 4}, {-2, 0, 8}});
    EXPECT_EQ(clipped(triangle, {1, 0, 0, nan}), clipped(triangle, right_of_zero));
}

TEST(ClipByLine, ValueThatIsNoNumberIsInside) {
    const auto kept = clipped(at({{nan, 0, 0}, {nan, 1, 0}, {0, nan, 0}}), {1, 1, 0});
    EXPECT_EQ(kept.size(), 3U);
    EXPECT_EQ(clipped(at({{1, 0, 0}, {2, 0, 0}, {3, 0, 0}}), {nan, 0, 0}).size(), 3U);
}

TEST(ClipByLine, InfiniteCornerIsOutsideAndGivesACrossingThatIsNoNumber) {
    const auto kept = clipped(at({{1, 0, 0}, {-infinity, 0, 0}, {1, 1, 0}}), right_of_zero);
    ASSERT_EQ(kept.size(), 4U);
    EXPECT_TRUE(std::isnan(kept[1].x));
    EXPECT_EQ(kept[1].y, 0);
}

TEST(ClipByLine, TriangleAfterFourClipsHasUpToSevenCorners) {
    clip_polygon_t polygon = at({{0, 10, 0}, {-10, -6, 0}, {10, -6, 0}});
    for (const edge_line_t& line :
         {edge_line_t{0, -1, 6}, edge_line_t{0, 1, 4}, edge_line_t{1, 0, 6}, edge_line_t{-1, 0, 6}}) {
        clip_polygon_t out;
        clip_by_line(out, polygon, line);
        polygon = out;
    }
    // Top cut off: 4; the level base is moved up: 4; each lower corner is cut off: 5 and 6. A turned base
    // keeps a corner more.
    EXPECT_EQ(polygon.count, 6U);
    polygon = at({{0, 10, 0}, {-10, -6, 0}, {10, -2, 0}});
    for (const edge_line_t& line :
         {edge_line_t{0, -1, 6}, edge_line_t{0, 1, 4}, edge_line_t{1, 0, 6}, edge_line_t{-1, 0, 6}}) {
        clip_polygon_t out;
        clip_by_line(out, polygon, line);
        polygon = out;
    }
    EXPECT_EQ(polygon.count, 7U);
}

TEST(ClipByLine, CornersBeyondThePlacesAreLeftOut) {
    // Zigzag across the line: no convex polygon does so. All crossings would make it 11.
    const auto zigzag = at({{1, 0, 0}, {-1, 1, 0}, {1, 2, 0}, {-1, 3, 0}, {1, 4, 0}, {-1, 5, 0}, {1, 6, 0}});
    EXPECT_EQ(clipped(zigzag, right_of_zero).size(), clip_places);
}

TEST(ClipByLine, CountBeyondThePlacesReadsNoFurther) {
    clip_polygon_t polygon = at({{1, 0, 0}, {2, 0, 0}, {1, 1, 0}});
    polygon.count = 0xFFFFFFFFFFFFFFFF;
    EXPECT_EQ(clipped(polygon, right_of_zero).size(), clip_places);
}

}  // namespace
