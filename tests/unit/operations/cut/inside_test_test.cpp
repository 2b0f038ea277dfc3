#include "operations/cut/inside_test.h"

#include <gtest/gtest.h>

#include "support/cut_meshes.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

constexpr std::uint8_t in = 0, out = 1;

struct sum_row_t {
    const char* name;
    std::vector<crossing_hit_t> hits;
    int sum;
};

class SumOfHits : public testing::TestWithParam<sum_row_t> {};

TEST_P(SumOfHits, IsTheRowsSum) {
    EXPECT_EQ(sum_of_hits(GetParam().hits), GetParam().sum);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SumOfHits,
    testing::Values(
        sum_row_t{"None", {}, 0}, sum_row_t{"InsideGoingIn", {{0.1F, 3, in, 0}}, 2},
        sum_row_t{"InsideGoingOut", {{0.1F, 3, out, 0}}, -2},
        sum_row_t{"OutlineGoingIn", {{0.1F, 2, in, 0}}, 1},
        sum_row_t{"OutlineGoingOut", {{0.1F, 2, out, 0}}, -1},
        sum_row_t{"CornerGoingIn", {{0.1F, 1, in, 0}}, 2},
        sum_row_t{"CornerGoingOut", {{0.1F, 1, out, 0}}, -2},
        sum_row_t{"ThroughAndThrough", {{0.1F, 3, in, 0}, {0.2F, 3, out, 0}}, 0},
        sum_row_t{"TwoOutlinesAreOneFace", {{0.1F, 2, out, 0}, {0.1F, 2, out, 0}}, -2},
        sum_row_t{"LowerSlopeTellsTheCornersSide", {{0.1F, 1, in, 0.5F}, {0.1F, 1, out, -0.5F}}, -2},
        sum_row_t{"HigherSlopeDoesNot", {{0.1F, 1, in, -0.5F}, {0.1F, 1, out, 0.5F}}, 2},
        sum_row_t{"FirstOfEqualSlopesStays", {{0.1F, 1, in, 0.5F}, {0.1F, 1, out, 0.5F}}, 2},
        sum_row_t{"CornerAboveTheFirstCountsNoMore", {{0.1F, 1, in, 0}, {0.2F, 1, out, -1}}, 2},
        sum_row_t{"CornerBetweenFaces", {{0.1F, 3, in, 0}, {0.2F, 1, out, 0}, {0.3F, 3, in, 0}}, 2}),
    [](const auto& row) { return row.param.name; });

TEST(InsertHit, KeepsTheOrderOfEqualPlaces) {
    std::vector<crossing_hit_t> hits;
    for (const crossing_hit_t& hit : {crossing_hit_t{0.5F, 3, in, 1},
                                      {0.25F, 3, in, 2},
                                      {0.5F, 3, in, 3},
                                      {0.75F, 3, in, 4},
                                      {0.25F, 3, in, 5}})
        insert_hit(hits, hit);
    std::vector<float> order;
    for (const crossing_hit_t& hit : hits)
        order.push_back(hit.slope);
    EXPECT_EQ(order, (std::vector<float>{2, 5, 1, 3, 4}));
}

TEST(InsideTest, BoxHoldsWhatIsBetweenItsFaces) {
    inside_test_t test(box({-1, -1, -1}, {1, 1, 1}));
    EXPECT_TRUE(test.is_inside({0.3F, 0.2F, 0.1F}));
    EXPECT_TRUE(test.is_inside({0.3F, 0.2F, -0.9F}));
    EXPECT_FALSE(test.is_inside({0.3F, 0.2F, -1.1F}));
    EXPECT_FALSE(test.is_inside({0.3F, 0.2F, 1.1F}));
    EXPECT_FALSE(test.is_inside({1.3F, 0.2F, 0.1F}));
}

TEST(InsideTest, RayThroughASharedEdgeCountsOnce) {
    inside_test_t test(box({-1, -1, -1}, {1, 1, 1}));
    EXPECT_TRUE(test.is_inside({0, 0, 0}));
    EXPECT_FALSE(test.is_inside({0, 0, -2}));
    EXPECT_TRUE(test.is_inside({0.5F, -0.5F, 0}));
}

TEST(InsideTest, RayThroughACornerCountsOnce) {
    inside_test_t test(tetrahedron({-1, -1, 0}, {2, -1, 0}, {-1, 2, 0}, {0, 0, 2}));
    EXPECT_TRUE(test.is_inside({0, 0, 1}));
    EXPECT_FALSE(test.is_inside({0, 0, -1}));
    EXPECT_FALSE(test.is_inside({0, 0, 2.5F}));
}

TEST(InsideTest, LevelTopIsCrossedAtEveryHeight) {
    // The ray has to end above the top: on it, the rounding of the top's plane decides.
    for (int n = 1; n <= 200; ++n) {
        const float top = static_cast<float>(n) * 0.0371F;
        inside_test_t test(box({-1, -1, -1}, {1, 1, top}));
        EXPECT_TRUE(test.is_inside({0.3F, 0.2F, top - 0.01F})) << top;
        EXPECT_FALSE(test.is_inside({0.3F, 0.2F, -1.5F})) << top;
    }
}

TEST(InsideTest, SizesAndPlacesDoNotMatter) {
    for (const float scale : {1e-3F, 1.0F, 1e4F})
        for (const float high : {-3.0F, 0.0F, 5.0F}) {
            const float low = high - 2;
            inside_test_t test(box({-scale, -scale, low * scale}, {scale, scale, high * scale}));
            EXPECT_TRUE(test.is_inside({0.3F * scale, 0.2F * scale, (low + 0.5F) * scale}))
                << scale << ' ' << high;
            EXPECT_FALSE(test.is_inside({0.3F * scale, 0.2F * scale, (low - 0.5F) * scale}))
                << scale << ' ' << high;
        }
}

TEST(InsideTest, OpenSheetDecidesByItsCount) {
    inside_test_t below(sheet(2, 2, [](float, float) { return 1.0F; }));
    EXPECT_TRUE(below.is_inside({0.3F, 0.1F, 0}));
    EXPECT_FALSE(below.is_inside({0.3F, 0.1F, 2}));
}

TEST(InsideTest, TrianglesWithoutAreaAreLeftOut) {
    inside_test_t test(mesh_of({{0, 0, 1}, {1, 1, 1}, {2, 2, 1}}, {{0, 1, 2}}));
    EXPECT_FALSE(test.is_inside({1, 1, 0}));
}

TEST(InsideTest, EmptyMeshHoldsNothing) {
    inside_test_t test({});
    EXPECT_FALSE(test.is_inside({0, 0, -1}));
}

}  // namespace
