#include "operations/cut/cut_pair.h"

#include <gtest/gtest.h>

#include <iostream>
#include <limits>

#include "model/math/vectors.h"
#include "support/captured_stream.h"

namespace {

using namespace ulk3d;
using ulk_test::captured_stream;

/// In the plane z = 0, its front up.
cutter_triangle_t level_cutter() {
    return cutter_triangle_t({{{0, 0, 0}, {4, 0, 0}, {0, 4, 0}}});
}

/// A victim whose edges at corner 0, which is up at `apex`, meet the plane half way, at p and q; its two
/// other corners are below.
corners_t victim_through(const pos2& p, const pos2& q, const pos2& apex) {
    return {{{apex.x, apex.y, 1},
             {2 * p.x - apex.x, 2 * p.y - apex.y, -1},
             {2 * q.x - apex.x, 2 * q.y - apex.y, -1}}};
}

corners_t turned(const corners_t& corners, std::uint32_t turns) {
    corners_t result;
    for (std::uint32_t k = 0; k < 3; ++k)
        result[(k + turns) % 3] = corners[k];
    return result;
}

/// Each decision is made for the three turns of a victim, with the corners in the answer turned likewise.
void expect_cut(const corners_t& victim, const pair_cut_t& expected,
                const cutter_triangle_t& cutter = level_cutter()) {
    for (std::uint32_t turns = 0; turns < 3; ++turns) {
        cutter_triangle_t copy = cutter;
        pair_cut_t turned_expected = expected;
        if (expected.new_vertices != 0)
            turned_expected.first = (expected.first + turns) % 3;
        const pair_cut_t cut = cut_pair(copy, turned(victim, turns), 0, 0);
        EXPECT_EQ(cut.new_vertices, turned_expected.new_vertices) << turns;
        EXPECT_EQ(cut.first, turned_expected.first) << turns;
        EXPECT_EQ(cut.t1, turned_expected.t1) << turns;
        EXPECT_EQ(cut.t2, turned_expected.t2) << turns;
    }
}

constexpr pair_cut_t nothing{};
constexpr pair_cut_t both_halves_at_apex{2, 0, 0.5F, 0.5F};

TEST(CutPair, VictimOnOneSideStaysWhole) {
    expect_cut({{{1, 1, 1}, {2, 1, 2}, {1, 2, 3}}}, nothing);
    expect_cut({{{1, 1, -1}, {2, 1, -2}, {1, 2, -3}}}, nothing);
}

TEST(CutPair, CoplanarVictimIsSkipped) {
    expect_cut({{{1, 1, 0}, {2, 1, 0}, {1, 2, 0}}}, nothing);
}

TEST(CutPair, EdgeInThePlaneSkipsTheVictim) {
    expect_cut({{{1, 1, 0}, {2, 1, 0}, {1, 2, 1}}}, nothing);
}

TEST(CutPair, CornerInThePlaneCutsTheOppositeEdgeWhereTheSegmentMeetsTheTriangle) {
    expect_cut({{{1, 1, 0}, {3, 1, 1}, {1, 1, -1}}}, {1, 1, 0.5F, 0});     // inside
    expect_cut({{{1, 1, 0}, {9, 3, 1}, {9, 3, -1}}}, {1, 1, 0.5F, 0});     // from inside to outside
    expect_cut({{{-1, -1, 0}, {5, 5, 1}, {5, 5, -3}}}, {1, 1, 0.25F, 0});  // across
    expect_cut({{{2, 0, 0}, {2, 6, 1}, {2, 6, -1}}}, {1, 1, 0.5F, 0});     // from the outline
    expect_cut({{{-1, 0, 0}, {3, 0, 1}, {3, 0, -1}}}, {1, 1, 0.5F, 0});    // along it
}

TEST(CutPair, CornerInThePlaneWithASegmentBesideTheTriangleLeavesTheVictimWhole) {
    expect_cut({{{-1, 1, 0}, {-3, 3, 1}, {-3, 3, -1}}}, nothing);
    expect_cut({{{3, 3, 0}, {3, -1, 1}, {7, 3, -1}}}, nothing);
    expect_cut({{{2, 0, 0}, {2, -3, 1}, {2, -3, -1}}}, nothing);  // away from the outline
    expect_cut({{{4, 0, 0}, {6, 1, 1}, {6, 1, -1}}}, nothing);    // away from a corner
}

TEST(CutPair, CornerInThePlaneWithTheOthersOnOneSideLeavesTheVictimWhole) {
    expect_cut({{{1, 1, 0}, {3, 1, 1}, {1, 1, 1}}}, nothing);
    expect_cut({{{1, 1, 0}, {3, 1, -1}, {1, 1, -1}}}, nothing);
}

TEST(CutPair, TwoCornersAndAnEdgeOutsideGiveOneNewVertex) {
    expect_cut({{{0, 0, 0}, {8, 6, 1}, {8, 6, -3}}}, {1, 1, 0.25F, 0});
}

TEST(CutPair, OneEndInsideCuts) {
    expect_cut(victim_through({1, 1}, {-2, 1}, {3, 3}), both_halves_at_apex);
    expect_cut(victim_through({-2, 1}, {1, 1}, {3, 3}), both_halves_at_apex);
    expect_cut(victim_through({1, 1}, {2, 1}, {3, 3}), both_halves_at_apex);
}

TEST(CutPair, NewVerticesStandWhereTheEdgesMeetThePlane) {
    expect_cut({{{1, 1, 1}, {1, 1, -3}, {5, 5, -7}}}, {2, 0, 0.25F, 0.875F});
}

TEST(CutPair, OneEndAtACornerCuts) {
    expect_cut(victim_through({0, 0}, {6, 5}, {1, 3}), both_halves_at_apex);
    expect_cut(victim_through({0, 0}, {1, 1}, {1, 3}), both_halves_at_apex);
}

TEST(CutPair, SegmentAlongAnEdgeCuts) {
    expect_cut(victim_through({-1, 0}, {5, 0}, {1, 3}), both_halves_at_apex);
    expect_cut(victim_through({4, 0}, {0, 4}, {1, 1}), both_halves_at_apex);
    expect_cut(victim_through({0, -1}, {0, 5}, {0, 1}), both_halves_at_apex);
    expect_cut(victim_through({-1, 1e-5F}, {5, -1e-5F}, {1, 3}), both_halves_at_apex);
}

TEST(CutPair, LineAlongAnEdgeBesideTheTriangleLeavesTheVictimWhole) {
    expect_cut(victim_through({7, 0}, {5, 0}, {1, 3}), nothing);
    expect_cut(victim_through({-1, 0}, {-3, 0}, {1, 3}), nothing);
}

TEST(CutPair, EdgeOfASmallTriangleIsMetByALongSegment) {
    // Seen from the ends of the segment, the edge's line is off by more than the tolerance.
    const cutter_triangle_t small({{{0, 1e-6F, 0}, {0.002F, 5e-7F, 0}, {0, 0.002F, 0}}});
    expect_cut(victim_through({-2, 0}, {2, 0}, {0, 3}), both_halves_at_apex, small);
}

TEST(CutPair, SegmentBesideTheTriangleLeavesTheVictimWhole) {
    expect_cut(victim_through({-1, 5}, {6, 1}, {3, 3}), nothing);
    expect_cut(victim_through({-1, -2}, {9, -1}, {3, 3}), nothing);
}

TEST(CutPair, SegmentThroughTwoEdgesCuts) {
    expect_cut(victim_through({-1, 1}, {5, 2}, {3, 3}), both_halves_at_apex);
}

TEST(CutPair, SegmentThatEndsOnBothOutlinesCuts) {
    // A hair outside of the first edge.
    expect_cut(victim_through({2, -1e-5F}, {0, 2}, {3, 3}), both_halves_at_apex);
}

TEST(CutPair, SegmentThatOnlyTouchesTheOutlineLeavesTheVictimWhole) {
    expect_cut(victim_through({2, 0}, {2.5F, -3}, {4, 3}), nothing);
}

TEST(CutPair, EndsJustInsideTheOutlineCut) {
    expect_cut(victim_through({1, 1e-5F}, {0, 0.1F}, {3, 3}), both_halves_at_apex);
}

TEST(CutPair, CrossingAtACornerOfTheVictimMakesNoTriangleWithoutHeight) {
    // Up to the tolerance, on both sides of the plane.
    for (const float off : {1e-5F, -1e-5F}) {
        expect_cut({{{3, 3, 1}, {1, 1, -off / 2}, {2, 0.5F, -1}}}, {1, 2, 0.5F, 0});
        expect_cut({{{3, 3, 1}, {1, 0.5F, -1}, {1, 1, -off / 2}}}, {1, 0, 0.5F, 0});
        expect_cut({{{1, 1, off / 2}, {2, 1, -1}, {1, 2, -1}}}, nothing);
    }
}

TEST(CutPair, SegmentAlongAnEdgeOfTheVictimLeavesItWhole) {
    expect_cut({{{1, 1, 1}, {1, 1, -1e-5F}, {2, 1, -1e-5F}}}, nothing);
}

TEST(CutPair, OverlapUpToTheToleranceIsNone) {
    expect_cut(victim_through({-1, 1}, {1e-5F, 1}, {3, 3}), nothing);
    expect_cut(victim_through({-1, 1}, {3e-5F, 1}, {3, 3}), both_halves_at_apex);
}

TEST(CutPair, VictimWithoutAreaStaysWhole) {
    expect_cut({{{-1, 5, 1}, {6, 1, -1}, {2.5F, 3, 0}}}, nothing);
}

TEST(CutPair, VictimInThePlaneUpToTheToleranceIsSkipped) {
    expect_cut({{{1, 1, 1e-5F}, {2, 1, -1e-5F}, {1, 2, 1e-5F}}}, nothing);
    expect_cut({{{1, 1, 1}, {2, 1, -1e-5F}, {1, 2, -1}}}, {1, 2, 0.5F, 0});
}

TEST(CutPair, BoxesThatAreApartAreNotCut) {
    cutter_triangle_t slanted({{{0, 0, 0}, {4, 0, 4}, {0, 4, 0}}});
    EXPECT_EQ(cut_pair(slanted, {{{5, 0, 4.5F}, {5, 1, 6}, {5, 0, 6}}}, 0, 0), nothing);
    EXPECT_TRUE(are_apart({{0, 0, 0}, {1, 1, 1}}, {{0, 0, 1.5F}, {1, 1, 2}}, 0.4F));
    EXPECT_TRUE(are_apart({{0, 1.5F, 0}, {1, 2, 1}}, {{0, 0, 0}, {1, 1, 1}}, 0.4F));
    EXPECT_TRUE(are_apart({{0, 0, 0}, {1, 1, 1}}, {{1.5F, 0, 0}, {2, 1, 1}}, 0.4F));
    EXPECT_FALSE(are_apart({{0, 0, 0}, {1, 1, 1}}, {{1.5F, 0, 0}, {2, 1, 1}}, 0.6F));
}

TEST(CutPair, WhatIsNotFiniteIsNotCut) {
    for (const float odd :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        expect_cut({{{1, 1, odd}, {1, 1, -1}, {2, 1, -1}}}, nothing);
        expect_cut({{{1, 1, 1}, {1, odd, -1}, {2, 1, -1}}}, nothing);
        expect_cut(victim_through({1, 1}, {2, 1}, {3, 3}), nothing,
                   cutter_triangle_t({{{0, 0, 0}, {4, 0, 0}, {odd, 4, 0}}}));
    }
}

/// A cutter with distances that no real triangle has: an edge of the victim is outside of all lines.
cutter_triangle_t cutter_with_odd_lines() {
    cutter_triangle_t cutter = level_cutter();
    cutter.cut.make_flat();
    for (auto& edge : cutter.cut.flat_edges)
        edge.line = {1, 0, -3};
    return cutter;
}

TEST(CutPair, AllEdgesOfTheCutterThroughTheVictimAreTold) {
    cutter_triangle_t cutter = cutter_with_odd_lines();
    const captured_stream messages(std::cerr);
    EXPECT_EQ(cut_pair(cutter, victim_through({-1, -1}, {5, 5}, {2, 2}), 2, 2), nothing);
    EXPECT_EQ(messages.text(), "ptn: on the line detect, ignore.\n");
}

TEST(CutPair, SegmentBetweenTwoOutlinesPassesThrough) {
    cutter_triangle_t cutter = cutter_with_odd_lines();
    const captured_stream messages(std::cerr);
    EXPECT_EQ(cut_pair(cutter, victim_through({0, 1}, {3.00003F, 1}, {0, 1}), 5, 6), nothing);
    EXPECT_EQ(messages.text(),
              "ptn: obj: single crosspoint.\n"
              "j: 5, i: 6\n"
              "r1: 3, r2: 0, r3: 0\n"
              "k1: 0, k2: 2, k3: 2\n");
}

TEST(CutPair, TwoCodesOfZeroAreCutWhereTheTriangleItselfIsMet) {
    // One edge of the cutter passes through the victim, and two of the victim's through the cutter.
    cutter_triangle_t cutter = cutter_with_odd_lines();
    const pair_cut_t cut = cut_pair(cutter, victim_through({1, 1}, {3.5F, 0.25F}, {3, 3}), 0, 0);
    EXPECT_EQ(cut.new_vertices, 2U);
    EXPECT_EQ(cut.first, 0U);
}

TEST(CutPair, SingleCrosspointIsToldWithAllCodes) {
    cutter_triangle_t cutter = cutter_with_odd_lines();
    const captured_stream messages(std::cerr);
    EXPECT_EQ(cut_pair(cutter, victim_through({-1, 1}, {5, 2}, {3, 3}), 11, 7), nothing);
    EXPECT_EQ(messages.text(),
              "ptn: obj: single crosspoint.\n"
              "j: 11, i: 7\n"
              "r1: 3, r2: 0, r3: 0\n"
              "k1: 0, k2: 3, k3: 3\n");
}

TEST(CutPair, DecisionsAreSilent) {
    const captured_stream messages(std::cerr);
    expect_cut(victim_through({-1, 1}, {5, 2}, {3, 3}), both_halves_at_apex);
    expect_cut(victim_through({7, 0}, {5, 0}, {1, 3}), nothing);
    EXPECT_EQ(messages.text(), "");
}

struct corner_row_t {
    std::uint64_t mi2, mi1;
    const char* message;
};

TEST(HasCorners, TellsTheFirstThatIsMissing) {
    const std::uint32_t elements[] = {0, 1, 2, 12, 13};
    const corner_row_t rows[] = {
        {0, 1, ""},
        {9, 8, "error, mi2: 9 over.\n"},
        {3, 5, "error, mi1: 5 over.\n"},
        {3, 4, "error, mi2: 3 , meptr[mi2]: 12 >= 8 over.\n"},
        {1, 4, "error, mi1: 4 , meptr[mi1]: 13 >= 8 over.\n"},
    };
    for (const corner_row_t& row : rows) {
        const captured_stream messages(std::cerr);
        EXPECT_EQ(has_corners(elements, 8, row.mi2, row.mi1), *row.message == '\0');
        EXPECT_EQ(messages.text(), row.message);
    }
}

}  // namespace
