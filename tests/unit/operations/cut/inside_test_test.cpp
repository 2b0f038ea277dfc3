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

/// A small triangle about a point, its front up.
corners_t level_triangle(const pos3& p, float size) {
    return {{{p.x - size, p.y - size, p.z}, {p.x + size, p.y - size, p.z}, {p.x, p.y + 2 * size, p.z}}};
}

/// Whether a triangle, given in the cutter's coordinates, is inside.
bool holds(const strip_mesh_t& cutter, const corners_t& triangle) {
    const box3 own = box_of(triangle);
    const unit_space_t space(box_around(box_of(cutter).value_or(own), own));
    inside_test_t test(cutter, space, own);
    return test.is_inside(
        {space.to_unit(triangle[0]), space.to_unit(triangle[1]), space.to_unit(triangle[2])});
}

bool is_inside(const strip_mesh_t& cutter, const pos3& p, float size = 0.01F) {
    return holds(cutter, level_triangle(p, size));
}

TEST(InsideTest, BoxHoldsWhatIsBetweenItsFaces) {
    const strip_mesh_t cutter = box({-1, -1, -1}, {1, 1, 1});
    EXPECT_TRUE(is_inside(cutter, {0.3F, 0.2F, 0.1F}));
    EXPECT_TRUE(is_inside(cutter, {0.3F, 0.2F, -0.9F}));
    EXPECT_FALSE(is_inside(cutter, {0.3F, 0.2F, -1.1F}));
    EXPECT_FALSE(is_inside(cutter, {0.3F, 0.2F, 1.1F}));
    EXPECT_FALSE(is_inside(cutter, {1.3F, 0.2F, 0.1F}));
}

TEST(InsideTest, RayThroughASharedEdgeCountsOnce) {
    const strip_mesh_t cutter = box({-1, -1, -1}, {1, 1, 1});
    EXPECT_TRUE(is_inside(cutter, {0, 0, 0}));
    EXPECT_FALSE(is_inside(cutter, {0, 0, -2}));
    EXPECT_TRUE(is_inside(cutter, {0.5F, -0.5F, 0}));
}

TEST(InsideTest, RayThroughACornerCountsOnce) {
    const strip_mesh_t cutter = tetrahedron({-1, -1, 0}, {2, -1, 0}, {-1, 2, 0}, {0, 0, 2});
    EXPECT_TRUE(is_inside(cutter, {0, 0, 1}));
    EXPECT_FALSE(is_inside(cutter, {0, 0, -1}));
    EXPECT_FALSE(is_inside(cutter, {0, 0, 2.5F}));
}

const std::vector<corner_ids_t> octahedron_faces{{4, 0, 2}, {4, 2, 1}, {4, 1, 3}, {4, 3, 0},
                                                 {5, 2, 0}, {5, 1, 2}, {5, 3, 1}, {5, 0, 3}};
const strip_mesh_t octahedron =
    mesh_of({{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}}, octahedron_faces);

TEST(InsideTest, RayPastACornerIsAskedAgainBesideIt) {
    // The sum of a ray that only touches a corner from outside counts its upper side alone.
    for (const pos3& side : {pos3{1, 0, -2}, {-1, 0, -2}, {0, 1, -2}, {0, -1, -2}}) {
        EXPECT_FALSE(is_inside(octahedron, side)) << side.x << ' ' << side.y;
        EXPECT_FALSE(is_inside(octahedron, side, 0.5F)) << side.x << ' ' << side.y;
    }
    EXPECT_TRUE(is_inside(octahedron, {0, 0, 0}));
}

TEST(InsideTest, WithoutAClearRayTheSumDecides) {
    // All inner points are within the tolerance of the ray through the corners.
    EXPECT_TRUE(is_inside(octahedron, {0, 0, 0.25F}, 1e-5F));
    EXPECT_FALSE(is_inside(octahedron, {0, 0, -2}, 1e-5F));
}

TEST(InsideTest, FaceOnAFaceGoesWhenBothLookTheSameWay) {
    const strip_mesh_t cutter = box({-1, -1, -1}, {1, 1, 1});
    const corners_t on_top = level_triangle({0.3F, 0.2F, 1}, 0.1F);
    const corners_t on_floor = level_triangle({0.3F, 0.2F, -1}, 0.1F);
    EXPECT_TRUE(holds(cutter, on_top));
    EXPECT_FALSE(holds(cutter, {on_top[0], on_top[2], on_top[1]}));
    EXPECT_FALSE(holds(cutter, on_floor));
    EXPECT_TRUE(holds(cutter, {on_floor[0], on_floor[2], on_floor[1]}));
    // On the line between the two triangles of a side.
    const corners_t on_side{{{1, -0.1F, -0.1F}, {1, 0.2F, -0.1F}, {1, -0.1F, 0.2F}}};
    EXPECT_TRUE(holds(cutter, on_side));
    EXPECT_FALSE(holds(cutter, {on_side[0], on_side[2], on_side[1]}));
}

TEST(InsideTest, InThePlaneOfAFaceButBesideItIsOutside) {
    const strip_mesh_t cutter = box({-1, -1, -1}, {1, 1, 1});
    EXPECT_FALSE(is_inside(cutter, {1.5F, 0.2F, 1}));
    EXPECT_FALSE(is_inside(cutter, {1.5F, 0.2F, -1}));
    for (const float z : {-2.0F, 2.0F})
        for (const float y : {0.0F, 0.2F})
            EXPECT_FALSE(holds(cutter, {{{1, y - 0.1F, z}, {1, y + 0.1F, z}, {1, y, z + 0.3F}}}));
}

TEST(InsideTest, TriangleAcrossAFaceIsNotOnIt) {
    const strip_mesh_t cutter = box({-1, -1, -1}, {1, 1, 1});
    // Its centroid is in the plane of the top; up from there is nothing.
    EXPECT_FALSE(holds(cutter, {{{0.3F, 0.2F, 0.5F}, {0.4F, 0.2F, 0.5F}, {0.35F, 0.3F, 2.1F}}}));
    // A needle within the tolerance of the top that does not look its way.
    EXPECT_FALSE(holds(cutter, {{{0, 0.2F, 1 + 1e-5F}, {0.4F, 0.2F, 1 + 1e-5F}, {0.4F, 0.2F, 1 + 2e-5F}}}));
}

TEST(InsideTest, LevelTopIsCrossedAtEveryHeight) {
    for (int n = 1; n <= 200; ++n) {
        const float top = static_cast<float>(n) * 0.0371F;
        const strip_mesh_t cutter = box({-1, -1, -1}, {1, 1, top});
        EXPECT_TRUE(is_inside(cutter, {0.3F, 0.2F, top - 0.01F})) << top;
        EXPECT_FALSE(is_inside(cutter, {0.3F, 0.2F, -1.5F})) << top;
    }
}

TEST(InsideTest, SizesAndPlacesDoNotMatter) {
    for (const float scale : {1e-3F, 1.0F, 1e4F})
        for (const float high : {-3.0F, 0.0F, 5.0F, 1000.0F}) {
            const float low = high - 2;
            const strip_mesh_t cutter = box({-scale, -scale, low * scale}, {scale, scale, high * scale});
            const auto inside_at = [&](float z) {
                return is_inside(cutter, {0.3F * scale, 0.2F * scale, z * scale}, 0.01F * scale);
            };
            EXPECT_TRUE(inside_at(low + 0.5F)) << scale << ' ' << high;
            EXPECT_FALSE(inside_at(low - 0.5F)) << scale << ' ' << high;
        }
}

TEST(InsideTest, OpenSheetDecidesByItsCount) {
    const strip_mesh_t cutter = sheet(2, 2, [](float, float) { return 1.0F; });
    EXPECT_TRUE(is_inside(cutter, {0.3F, 0.1F, 0}));
    EXPECT_FALSE(is_inside(cutter, {0.3F, 0.1F, 2}));
}

TEST(InsideTest, TrianglesWithoutAreaAreLeftOut) {
    EXPECT_FALSE(is_inside(mesh_of({{0, 0, 1}, {1, 1, 1}, {2, 2, 1}}, {{0, 1, 2}}), {1, 1, 0}));
}

TEST(InsideTest, EmptyMeshHoldsNothing) {
    EXPECT_FALSE(is_inside({}, {0, 0, -1}));
}

}  // namespace
