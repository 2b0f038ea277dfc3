#include "operations/hit/polygon_hit.h"

#include <gtest/gtest.h>

#include "model/math/matrices.h"
#include "model/polygon/polygon.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

constexpr edge_lines_t middle{{{0, -1, 0.1F}, {0, 1, 0.1F}, {1, 0, 0.1F}, {-1, 0, 0.1F}}};

struct PolygonHitInBuffers : gl_test {
    bool hit() { return polygon_hit(hits, polygon, middle, mtx_identity, mtx_identity); }

    polygon_t polygon;
    hit_map_t hits;
};

TEST_F(PolygonHitInBuffers, NearestTriangleOfThePolygonModel) {
    const auto vertices =
        vertices_at({{-5, -5, 2}, {5, -5, 2}, {0, 9, 2}, {-5, -5, 1}, {5, -5, 1}, {0, 9, 1}});
    build_polygon(polygon, vertices, {0, 1, 2, mark, 3, 4, 5, mark, 0, 1, 2});
    ASSERT_TRUE(hit());
    ASSERT_EQ(hits.size(), 1U);
    const auto& [depth, record] = *hits.begin();
    EXPECT_EQ(depth, 1);
    EXPECT_EQ(record.polygon_id, 1U);
    EXPECT_EQ(record.vertices, (std::array{vertices[3], vertices[4], vertices[5]}));
    EXPECT_EQ(record.point.z, 1);
}

TEST_F(PolygonHitInBuffers, ModelWithoutElementsHasNoHit) {
    build_polygon(polygon, vertices_at({{-5, -5, 2}, {5, -5, 2}, {0, 9, 2}}), {});
    EXPECT_FALSE(hit());
    EXPECT_TRUE(hits.empty());
}

TEST_F(PolygonHitInBuffers, BuffersAreFreeAgainAfterwards) {
    build_polygon(polygon, vertices_at({{-5, -5, 2}, {5, -5, 2}, {0, 9, 2}}), {0, 1, 2});
    EXPECT_TRUE(hit());
    EXPECT_TRUE(hit());
    EXPECT_EQ(vertices_of(polygon).size(), 3U);
    EXPECT_EQ(elements_of(polygon), (std::vector<std::uint32_t>{0, 1, 2}));
}

}  // namespace
