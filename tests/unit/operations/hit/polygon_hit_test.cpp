#include "operations/hit/polygon_hit.h"

#include <gtest/gtest.h>

#include <bit>
#include <limits>

#include "model/math/matrices.h"
#include "model/math/projections.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

edge_lines_t window(float left, float right, float bottom, float top) {
    return {{{0, -1, top}, {0, 1, -bottom}, {1, 0, -left}, {-1, 0, right}}};
}

const edge_lines_t middle = window(-0.1F, 0.1F, -0.1F, 0.1F);

struct PolygonHit : testing::Test {
    bool hit(const std::vector<pos3>& places, const std::vector<std::uint32_t>& strips,
             const edge_lines_t& lines = middle) {
        return polygon_hit(hits, vertices_at(places), strips, lines, perspective, view);
    }
    const hit_t& nearest() const { return hits.begin()->second; }

    hit_map_t hits;
    mtx3w perspective = mtx_identity;
    mtx3w view = mtx_identity;
};

TEST_F(PolygonHit, WindowInsideALargeTriangleHits) {
    EXPECT_TRUE(hit({{-5, -5, 0.5F}, {5, -5, 0.5F}, {0, 9, 0.5F}}, {0, 1, 2}));
    ASSERT_EQ(hits.size(), 1U);
    EXPECT_EQ(hits.begin()->first, 0.5F);
}

TEST_F(PolygonHit, TriangleInsideTheWindowHits) {
    EXPECT_TRUE(hit({{-0.01F, 0, 3}, {0.01F, 0, 3}, {0, 0.01F, 3}}, {0, 1, 2}));
}

TEST_F(PolygonHit, TriangleBesideTheWindowDoesNotHit) {
    for (const pos3& away : {pos3{1, 0, 0}, pos3{-1, 0, 0}, pos3{0, 1, 0}, pos3{0, -1, 0}}) {
        EXPECT_FALSE(hit({away, {away.x + 0.1F, away.y, 0}, {away.x, away.y + 0.1F, 0}}, {0, 1, 2}));
        EXPECT_TRUE(hits.empty());
    }
}

TEST_F(PolygonHit, TriangleAroundACornerOfTheWindowDoesNotHit) {
    // Its corners are outside of two lines, one or the other, and its edge passes by the window.
    EXPECT_FALSE(hit({{0.3F, 0, 0}, {0, 0.3F, 0}, {0.3F, 0.3F, 0}}, {0, 1, 2}));
    EXPECT_TRUE(hit({{0.19F, 0, 0}, {0, 0.19F, 0}, {0.3F, 0.3F, 0}}, {0, 1, 2}));
}

TEST_F(PolygonHit, EdgeOnTheWindowHits) {
    EXPECT_TRUE(
        hit({{0.25F, -1, 0}, {0.25F, 1, 0}, {1, 0, 0}}, {0, 1, 2}, window(-0.25F, 0.25F, -0.25F, 0.25F)));
}

TEST_F(PolygonHit, NearestTriangleWinsWhateverTheOrder) {
    const std::vector<pos3> places{{-5, -5, 2}, {5, -5, 2}, {0, 9, 2}, {-5, -5, 1}, {5, -5, 1}, {0, 9, 1}};
    ASSERT_TRUE(hit(places, {0, 1, 2, mark, 3, 4, 5}));
    EXPECT_EQ(nearest().polygon_id, 1U);
    hits.clear();
    ASSERT_TRUE(hit(places, {3, 4, 5, mark, 0, 1, 2}));
    EXPECT_EQ(nearest().polygon_id, 0U);
    EXPECT_EQ(hits.size(), 1U);
    EXPECT_EQ(hits.begin()->first, 1);
}

TEST_F(PolygonHit, DepthAndPointAreThoseOfTheNearestCornerInTheWindow) {
    // A plane z = x: nearest in the window at its left line.
    ASSERT_TRUE(hit({{-4, -4, -4}, {4, -4, 4}, {4, 4, 4}, {-4, 4, -4}}, {0, 1, 3, 2},
                    window(0.25F, 0.5F, -1, -0.5F)));
    EXPECT_EQ(hits.begin()->first, 0.25F);
    EXPECT_EQ(nearest().point.x, 0.25F);
    EXPECT_EQ(nearest().point.z, 0.25F);
    EXPECT_EQ(nearest().polygon_id, 0U);
}

TEST_F(PolygonHit, CoincidentTrianglesGiveTheLaterId) {
    ASSERT_TRUE(hit({{-5, -5, 2}, {5, -5, 2}, {0, 9, 2}}, {0, 1, 2, mark, 0, 1, 2, mark, 2, 0, 1}));
    EXPECT_EQ(nearest().polygon_id, 2U);
}

TEST_F(PolygonHit, ZeroDepthsOfEitherSignAreEqual) {
    ASSERT_TRUE(hit({{-5, -5, 0}, {5, -5, 0}, {0, 9, 0}, {-5, -5, -0.0F}, {5, -5, -0.0F}, {0, 9, -0.0F}},
                    {0, 1, 2, mark, 3, 4, 5}));
    EXPECT_EQ(nearest().polygon_id, 1U);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(hits.begin()->first), 0U);
}

TEST_F(PolygonHit, RecordHoldsTheVerticesInTheWindingOfTheStrip) {
    const std::vector<pos3> places{{-9, -9, 5}, {9, -9, 5}, {-9, 0.5F, 5}, {9, 9, 1}};
    ASSERT_TRUE(hit(places, {0, 1, 2, 3}, window(3, 4, 3, 4)));
    EXPECT_EQ(nearest().polygon_id, 1U);
    const auto vertices = vertices_at(places);
    EXPECT_EQ(nearest().vertices, (std::array{vertices[2], vertices[1], vertices[3]}));
}

TEST_F(PolygonHit, IdsCountOverAllStripsAndBadIndicesEndAStrip) {
    const std::vector<pos3> places{{3, 3, 0},   {4, 3, 0},  {3, 4, 0}, {4, 4, 0},
                                   {-1, -1, 0}, {1, -1, 0}, {0, 1, 0}};
    ASSERT_TRUE(hit(places, {0, 1, 2, 3, mark, 0, 1, 7, 0, 1, 2, 1000, 4, 5, 6}));
    EXPECT_EQ(nearest().polygon_id, 3U);
}

TEST_F(PolygonHit, WithoutElementsNothingIsHit) {
    EXPECT_FALSE(hit({{-5, -5, 0.5F}, {5, -5, 0.5F}, {0, 9, 0.5F}}, {}));
    EXPECT_FALSE(hit({}, {}));
    EXPECT_FALSE(hit({}, {0, 1, 2}));
    EXPECT_TRUE(hits.empty());
}

TEST_F(PolygonHit, AddsToTheHitsOfOtherModels) {
    ASSERT_TRUE(hit({{-5, -5, 2}, {5, -5, 2}, {0, 9, 2}}, {0, 1, 2}));
    ASSERT_TRUE(hit({{-5, -5, 1}, {5, -5, 1}, {0, 9, 1}}, {0, 1, 2}));
    ASSERT_FALSE(hit({{5, 5, 0}, {6, 5, 0}, {6, 6, 0}}, {0, 1, 2}));
    EXPECT_EQ(hits.size(), 2U);
    // Of equal depths the latest model counts.
    ASSERT_TRUE(
        hit({{5, 5, 0}, {6, 5, 0}, {6, 6, 0}, {-4, -4, 1}, {4, -4, 1}, {0, 9, 1}}, {0, 1, 2, mark, 3, 4, 5}));
    EXPECT_EQ(hits.size(), 2U);
    EXPECT_EQ(nearest().polygon_id, 1U);
}

TEST_F(PolygonHit, PointsGoThroughTheViewAndThenThroughTheProjection) {
    perspective = frustum_matrix({-1, 1, -1, 1, 1, 100});
    view = translation({0, 0, -4});
    // At z = 0 the distance is 4: x is divided by 4.
    ASSERT_TRUE(hit({{2, -1, 0}, {2, 1, 0}, {2.5F, 0, 0}}, {0, 1, 2}, window(0.5F, 0.6F, -0.05F, 0.05F)));
    EXPECT_GE(nearest().point.x, 0.5F);
    EXPECT_LE(nearest().point.x, 0.6F);
    EXPECT_NEAR(hits.begin()->first, (101.0F / 99 * 4 - 200.0F / 99) / 4, 1e-6F);
    EXPECT_FALSE(hit({{2, -1, 0}, {2, 1, 0}, {2.5F, 0, 0}}, {0, 1, 2}, window(0.3F, 0.4F, -0.05F, 0.05F)));
}

TEST_F(PolygonHit, TriangleBehindTheCameraHitsUpsideDown) {
    perspective = frustum_matrix({-1, 1, -1, 1, 1, 100});
    const std::vector<pos3> behind{{2, 1, 4}, {2, 3, 4}, {4, 2, 4}};
    EXPECT_FALSE(hit(behind, {0, 1, 2}, window(0.5F, 0.7F, 0.4F, 0.6F)));
    EXPECT_TRUE(hit(behind, {0, 1, 2}, window(-0.7F, -0.5F, -0.6F, -0.4F)));
}

TEST_F(PolygonHit, TriangleInThePlaneOfTheCameraFailsNoLineAndDoesNotStopTheWalk) {
    // Its w is 0: its places become infinite or no numbers, its depth -infinity.
    perspective = frustum_matrix({-1, 1, -1, 1, 1, 100});
    ASSERT_TRUE(hit({{1, 0, 0}, {2, 0, 0}, {1, 1, 0}, {-9, -9, -4}, {9, -9, -4}, {0, 9, -4}},
                    {0, 1, 2, mark, 3, 4, 5, mark, 2, 1, 0}));
    EXPECT_EQ(hits.begin()->first, -std::numeric_limits<float>::infinity());
    EXPECT_EQ(nearest().polygon_id, 2U);
}

TEST_F(PolygonHit, DepthThatIsNoNumberComesAfterAllOthers) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const std::vector<pos3> places{{-5, -5, nan}, {5, -5, nan}, {0, 9, nan},
                                   {-5, -5, 1},   {5, -5, 1},   {0, 9, 1}};
    for (const auto& strips :
         {std::vector<std::uint32_t>{0, 1, 2, mark, 3, 4, 5}, {3, 4, 5, mark, 0, 1, 2}}) {
        hits.clear();
        ASSERT_TRUE(hit(places, strips));
        EXPECT_EQ(hits.begin()->first, 1);
        EXPECT_EQ(nearest().vertices[0].position.z, 1);
    }
    hits.clear();
    ASSERT_TRUE(hit(places, {0, 1, 2}));
    EXPECT_NE(hits.begin()->first, hits.begin()->first);
    ASSERT_TRUE(hit(places, {3, 4, 5}));
    EXPECT_EQ(hits.begin()->first, 1);
    EXPECT_EQ(hits.size(), 2U);
}

}  // namespace
