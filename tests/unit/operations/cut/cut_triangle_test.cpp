#include "operations/cut/cut_triangle.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "model/math/tolerance.h"
#include "model/math/vectors.h"

namespace {

using namespace ulk3d;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

/// In the plane z = 0, its front up.
cut_triangle_t level_triangle() {
    return {{0, 0, 0}, {4, 0, 0}, {0, 4, 0}};
}

/// With the given distances from its edge lines at every point of the plane.
cut_triangle_t triangle_with_distances(const std::array<float, 3>& distances) {
    cut_triangle_t triangle = level_triangle();
    triangle.make_flat();
    for (std::size_t k = 0; k < 3; ++k)
        triangle.flat_edges[k].line = {0, 0, distances[k]};
    return triangle;
}

int code_at(float x, float y, cut_triangle_t triangle = level_triangle()) {
    crossing_t crossing;
    return classify_edge(crossing, 0, {x, y, 1}, {x, y, -1}, triangle);
}

TEST(CutTriangle, KeepsCentroidAndUnitNormal) {
    const cut_triangle_t triangle({0, 0, 3}, {6, 0, 3}, {0, 6, 3});
    EXPECT_EQ(triangle.centroid.x, 6 * 0.33333334F);
    EXPECT_EQ(triangle.centroid.y, 6 * 0.33333334F);
    EXPECT_EQ(triangle.centroid.z, 9 * 0.33333334F);
    EXPECT_EQ(triangle.normal, (dir3{0, 0, 1}));
    EXPECT_TRUE(triangle.has_area());
    EXPECT_FALSE(triangle.flat_ready);
}

TEST(CutTriangle, WithoutAreaHasNoNormal) {
    EXPECT_FALSE(cut_triangle_t({0, 0, 0}, {1, 1, 1}, {2, 2, 2}).has_area());
}

TEST(CutTriangle, FlatEdgesAreDistancesNegativeInside) {
    cut_triangle_t triangle({1, 0, 0}, {1, 4, 0}, {1, 0, 3});
    triangle.make_flat();
    EXPECT_TRUE(triangle.flat_ready);
    for (std::size_t k = 0; k < 3; ++k) {
        const line2d& line = triangle.flat_edges[k].line;
        EXPECT_NEAR(line.a * line.a + line.b * line.b, 1, 1e-6F);
        const pos3& opposite = triangle.flat_points[(k + 2) % 3];
        EXPECT_LT(line.a * opposite.x + line.b * opposite.y + line.c, -2);
        EXPECT_NEAR(triangle.flat_points[k].z, 1, 1e-6F);
    }
}

TEST(CutTriangle, OutlineOfDownwardTriangleRunsCounterClockwise) {
    EXPECT_EQ(code_at(1, 1, {{0, 0, 0}, {0, 4, 0}, {4, 0, 0}}), edge_inside);
    EXPECT_EQ(code_at(3, 3, {{0, 0, 0}, {0, 4, 0}, {4, 0, 0}}), edge_outside);
}

struct side_row_t {
    float za, zb;
    int code;
    std::uint32_t side;
    float t;
};

TEST(ClassifyEdge, SideFollowsTheEndsAndTouchingCrosses) {
    const side_row_t rows[] = {
        {-1, 1, 3, 1, 0.5F}, {1, -1, 3, 0, 0.5F}, {-1, 3, 3, 1, 0.25F}, {0, -1, 3, 0, 0},  {0, 1, 3, 1, 0},
        {-1, 0, 3, 1, 1},    {1, 0, 3, 0, 1},     {1, 2, 0, 7, 9},      {-1, -2, 0, 7, 9}, {0, 0, -1, 0, 9},
    };
    for (const side_row_t& row : rows) {
        cut_triangle_t triangle = level_triangle();
        crossing_t crossing{9, 7, {}, {}};
        EXPECT_EQ(classify_edge(crossing, 0, {1, 1, row.za}, {1, 1, row.zb}, triangle), row.code)
            << row.za << ' ' << row.zb;
        EXPECT_EQ(crossing.side, row.side) << row.za << ' ' << row.zb;
        EXPECT_EQ(crossing.t, row.t) << row.za << ' ' << row.zb;
    }
}

TEST(ClassifyEdge, EndsApartNeedNoFlatData) {
    cut_triangle_t triangle = level_triangle();
    crossing_t crossing;
    EXPECT_EQ(classify_edge(crossing, 0, {1, 1, 1}, {1, 1, 2}, triangle), edge_apart);
    EXPECT_FALSE(triangle.flat_ready);
}

TEST(ClassifyEdge, PlaceThatIsNotANumberIsParallel) {
    cut_triangle_t triangle = level_triangle();
    crossing_t crossing;
    EXPECT_EQ(classify_edge(crossing, 0, {1, 1, -infinity}, {1, 1, infinity}, triangle), edge_parallel);
    EXPECT_EQ(crossing.t, -1);
}

TEST(ClassifyEdge, EndThatIsNotANumberIsParallelOrApart) {
    cut_triangle_t triangle = level_triangle();
    crossing_t crossing;
    EXPECT_EQ(classify_edge(crossing, 0, {1, 1, nan}, {1, 1, -1}, triangle), edge_parallel);
    EXPECT_EQ(classify_edge(crossing, 0, {1, 1, nan}, {1, 1, 1}, triangle), edge_apart);
    EXPECT_EQ(classify_edge(crossing, 0, {1, 1, -1}, {1, 1, nan}, triangle), edge_apart);
}

TEST(ClassifyEdge, CornerWithinToleranceComesBeforeTheOutline) {
    for (const auto& [x, y] : {std::pair{0.0F, 0.0F}, {4.0F, 0.0F}, {0.0F, 4.0F}}) {
        EXPECT_EQ(code_at(x, y), edge_at_corner);
        EXPECT_EQ(code_at(x + 1.5e-5F, y - 1.5e-5F), edge_at_corner);
        EXPECT_EQ(code_at(x - 4e-5F, y - 4e-5F), edge_outside);
    }
}

TEST(ClassifyEdge, RecordHoldsPointAndDistances) {
    cut_triangle_t triangle = level_triangle();
    crossing_t crossing;
    EXPECT_EQ(classify_edge(crossing, 0, {1, 1, 1}, {1, 3, -1}, triangle), edge_inside);
    EXPECT_EQ(crossing.point, (pos3{1, 2, 0}));
    EXPECT_EQ(crossing.distances[0], -2);
    EXPECT_NEAR(crossing.distances[1], -std::sqrt(0.5F), 1e-6F);
    EXPECT_EQ(crossing.distances[2], -1);
}

TEST(ClassifyEdge, EveryRowOfTheDistances) {
    const float values[] = {-1, 0, 1};
    for (const float e0 : values)
        for (const float e1 : values)
            for (const float e2 : values) {
                const std::array<float, 3> e{e0, e1, e2};
                const auto negative = std::ranges::count(e, -1.0F);
                const auto on = std::ranges::count(e, 0.0F);
                const int expected = negative == 3              ? edge_inside
                                     : negative == 0 && on == 0 ? edge_apart
                                     : negative + on == 3       ? edge_on_outline
                                                                : edge_outside;
                EXPECT_EQ(code_at(1, 1, triangle_with_distances(e)), expected)
                    << e0 << ' ' << e1 << ' ' << e2;
            }
}

TEST(ClassifyEdge, DistancesWithinToleranceAreOnTheLine) {
    EXPECT_EQ(code_at(1, 1, triangle_with_distances({-eps, -1, -1})), edge_on_outline);
    EXPECT_EQ(code_at(1, 1, triangle_with_distances({eps, -1, -1})), edge_on_outline);
    EXPECT_EQ(code_at(1, 1, triangle_with_distances({-2.1e-5F, -1, -1})), edge_inside);
    EXPECT_EQ(code_at(1, 1, triangle_with_distances({2.1e-5F, -1, -1})), edge_outside);
    EXPECT_EQ(code_at(1, 1, triangle_with_distances({nan, -1, -1})), edge_outside);
}

}  // namespace
