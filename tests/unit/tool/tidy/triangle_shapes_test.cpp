#include "tool/tidy/triangle_shapes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace {

using namespace ulktool;

triangle_mesh_t triangle(const ulk3d::pos3& a, const ulk3d::pos3& b, const ulk3d::pos3& c) {
    triangle_mesh_t mesh;
    for (const ulk3d::pos3& position : {a, b, c})
        mesh.vertices.push_back({position, {}, {}});
    return mesh;
}

TEST(TriangleShapes, ANormalIsTheSameFromEachCornerToTheLastBit) {
    std::mt19937 random(1);
    // Only where sizes differ much are the sums not exact.
    const auto number = [&random] {
        const int exponent = std::uniform_int_distribution(-20, 20)(random);
        return std::ldexp(std::uniform_real_distribution<float>(-1, 1)(random), exponent);
    };
    const auto point = [&] { return ulk3d::pos3{number(), number(), number()}; };
    for (int round = 0; round < 1000; ++round) {
        const triangle_mesh_t mesh = triangle(point(), point(), point());
        const dir3d normal = unit_normal(mesh, {0, 1, 2});
        EXPECT_EQ(unit_normal(mesh, {1, 2, 0}), normal);
        EXPECT_EQ(unit_normal(mesh, {2, 0, 1}), normal);
        EXPECT_NEAR(dot(unit_normal(mesh, {1, 0, 2}), normal), -1, 1e-6);
    }
    EXPECT_EQ(unit_normal(triangle({0, 0, 5}, {1, 0, 5}, {0, 3, 5}), {0, 1, 2}), (dir3d{0, 0, 1}));
}

TEST(TriangleShapes, WithoutAreaOrFiniteCoordinatesThereIsNoNormal) {
    const float nan = std::numeric_limits<float>::quiet_NaN(),
                infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(unit_normal(triangle({0, 0, 0}, {1, 1, 1}, {2, 2, 2}), {0, 1, 2}), dir3d());
    EXPECT_EQ(unit_normal(triangle({0, 0, 0}, {1, 0, 0}, {0, nan, 0}), {0, 1, 2}), dir3d());
    EXPECT_EQ(unit_normal(triangle({0, 0, 0}, {infinity, 0, 0}, {0, 1, 0}), {0, 1, 2}), dir3d());
    EXPECT_EQ(unit_normal(triangle({0, 0, 0}, {3e38F, 0, 0}, {0, 3e38F, 0}), {0, 1, 2}), (dir3d{0, 0, 1}));
    EXPECT_EQ(unit_normal(triangle({0, 0, 0}, {1e-45F, 0, 0}, {0, 1e-45F, 0}), {0, 1, 2}), (dir3d{0, 0, 1}));
}

TEST(TriangleShapes, ACornerHasAnAngleAndADirectionOfS) {
    const ulk3d::vertex_t a{{0, 0, 0}, {}, {0, 0}}, b{{2, 0, 0}, {}, {0, 1}}, c{{2, 2, 0}, {}, {-1, 1}};
    const corner_shape_t shape = corner_shape(a, b, c);
    EXPECT_NEAR(shape.angle, std::numbers::pi / 4, 1e-12);
    EXPECT_EQ(shape.along_s, (dir3d{0, -1, 0}));
    EXPECT_FALSE(shape.is_mirrored);
    EXPECT_NEAR(corner_shape(b, c, a).angle, std::numbers::pi / 2, 1e-12);
    // The same map, mirrored.
    const ulk3d::vertex_t m{{2, 2, 0}, {}, {1, 1}};
    EXPECT_EQ(corner_shape(a, b, m).along_s, (dir3d{0, 1, 0}));
    EXPECT_TRUE(corner_shape(a, b, m).is_mirrored);
    // No map.
    EXPECT_EQ(corner_shape(a, a, b).along_s, dir3d());
    EXPECT_FALSE(corner_shape(a, a, b).is_mirrored);
}

}  // namespace
