#include "model/nurbs/nurbs_normals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>
#include <vector>

#include "model/math/vectors.h"

namespace ulk3d {

void PrintTo(const work_frame_t& frame, std::ostream* out) {
    for (const dir3& d : {frame.first, frame.second, frame.third, frame.fourth})
        *out << "(" << d.x << ", " << d.y << ", " << d.z << ") ";
}

}  // namespace ulk3d

namespace {

using ulk3d::dir3;
using ulk3d::pos3;
using ulk3d::work_frame_t;

/// Positions of R rows of W samples that a test can move, and the records made of them.
struct samples_t {
    samples_t(std::uint32_t columns, std::uint32_t rows) : W(columns), R(rows), positions(W * R) {
        // No two places are the same and no two differences are parallel.
        for (std::uint32_t r = 0; r < R; ++r) {
            for (std::uint32_t c = 0; c < W; ++c) {
                const auto x = static_cast<float>(c);
                const auto y = static_cast<float>(r);
                P(r, c) = {x + 0.1F * y * y, y + 0.05F * x * x, 0.3F * x * y};
            }
        }
    }

    pos3& P(std::uint32_t r, std::uint32_t c) { return positions[r * W + c]; }
    work_frame_t frame(std::uint32_t r, std::uint32_t c) const {
        std::vector<work_frame_t> frames(positions.size());
        ulk3d::fill_work_frames(positions, W, R, frames);
        return frames[r * W + c];
    }

    std::uint32_t W, R;
    std::vector<pos3> positions;
};

/// A tube: every row is a circle whose last sample lies on its first.
samples_t tube() {
    samples_t s(9, 5);
    for (std::uint32_t r = 0; r < s.R; ++r) {
        for (std::uint32_t c = 0; c < s.W; ++c) {
            const float angle = static_cast<float>(c) * 0.7853982F;
            s.P(r, c) = {std::cos(angle), static_cast<float>(r), std::sin(angle)};
        }
        s.P(r, s.W - 1) = s.P(r, 0);
    }
    return s;
}

/// The same places with rows and columns exchanged.
samples_t exchanged(const samples_t& source) {
    samples_t s(source.R, source.W);
    for (std::uint32_t r = 0; r < s.R; ++r) {
        for (std::uint32_t c = 0; c < s.W; ++c)
            s.P(r, c) = source.positions[c * source.W + r];
    }
    return s;
}

/// A ring that closes both ways.
samples_t torus() {
    samples_t s(9, 9);
    for (std::uint32_t r = 0; r < s.R; ++r) {
        for (std::uint32_t c = 0; c < s.W; ++c) {
            const float around = static_cast<float>(c % 8) * 0.7853982F;
            const float across = static_cast<float>(r % 8) * 0.7853982F;
            const float distance = 3 + std::cos(across);
            s.P(r, c) = {distance * std::cos(around), distance * std::sin(around), std::sin(across)};
        }
    }
    return s;
}

work_frame_t left_plain(samples_t& s, std::uint32_t r) {
    return {s.P(r, 1) - s.P(r, 0), s.P(r + 1, 0) - s.P(r, 0), s.P(r, 1) - s.P(r, 0),
            s.P(r, 0) - s.P(r - 1, 0)};
}

work_frame_t bottom_plain(samples_t& s, std::uint32_t c) {
    return {s.P(0, c + 1) - s.P(0, c), s.P(1, c) - s.P(0, c), s.P(0, c) - s.P(0, c - 1),
            s.P(1, c) - s.P(0, c)};
}

/// One difference each way, for a corner.
work_frame_t corner_plain(samples_t& s, std::uint32_t r, std::uint32_t c) {
    const dir3 along = c == 0 ? s.P(r, 1) - s.P(r, 0) : s.P(r, c) - s.P(r, c - 1);
    const dir3 rise = r == 0 ? s.P(1, c) - s.P(0, c) : s.P(r, c) - s.P(r - 1, c);
    return {along, rise, along, rise};
}

TEST(WorkFrames, InnerVertexHasForwardAndBackwardDifferences) {
    samples_t s(5, 4);
    EXPECT_EQ(s.frame(2, 3), (work_frame_t{s.P(2, 4) - s.P(2, 3), s.P(3, 3) - s.P(2, 3),
                                           s.P(2, 3) - s.P(2, 2), s.P(2, 3) - s.P(1, 3)}));
}

TEST(WorkFrames, LeftEdgeRepeatsItsOnlyDifferenceAlongTheRow) {
    samples_t s(5, 4);
    EXPECT_EQ(s.frame(2, 0), left_plain(s, 2));
}

TEST(WorkFrames, RightEdgeRepeatsItsOnlyDifferenceAlongTheRow) {
    samples_t s(5, 4);
    const dir3 along = s.P(2, 4) - s.P(2, 3);
    EXPECT_EQ(s.frame(2, 4), (work_frame_t{along, s.P(3, 4) - s.P(2, 4), along, s.P(2, 4) - s.P(1, 4)}));
}

TEST(WorkFrames, FoldAtTheLeftEdgeTakesTheNeighbouringColumn) {
    samples_t s(5, 4);
    s.P(3, 0) = s.P(1, 0);
    const dir3 along = s.P(2, 1) - s.P(2, 0);
    EXPECT_EQ(s.frame(2, 0), (work_frame_t{along, s.P(3, 1) - s.P(2, 1), along, s.P(2, 1) - s.P(1, 1)}));
}

TEST(WorkFrames, FoldAtTheRightEdgeHasNoSecondVector) {
    samples_t s(5, 4);
    s.P(3, 4) = s.P(1, 4);
    const dir3 along = s.P(2, 4) - s.P(2, 3);
    EXPECT_EQ(s.frame(2, 4), (work_frame_t{along, dir3{}, along, s.P(2, 3) - s.P(1, 3)}));
}

TEST(WorkFrames, TubeHasOneRecordOnBothSidesOfItsSeam) {
    samples_t s = tube();
    const work_frame_t seam{s.P(2, 1) - s.P(2, 0), s.P(3, 0) - s.P(2, 0), s.P(2, 8) - s.P(2, 7),
                            s.P(2, 8) - s.P(1, 8)};
    EXPECT_EQ(s.frame(2, 0), seam);
    EXPECT_EQ(s.frame(2, 8), seam);
    EXPECT_NE(seam, left_plain(s, 2));
}

TEST(WorkFrames, SeamHoldsWithinTheTolerance) {
    samples_t s = tube();
    for (std::uint32_t r = 1; r < 4; ++r)
        s.P(r, 8).y += 1e-5F;
    EXPECT_EQ(s.frame(2, 0), s.frame(2, 8));
}

TEST(WorkFrames, SeamNeedsAllThreePairsOfARow) {
    for (std::uint32_t moved = 1; moved <= 3; ++moved) {
        samples_t s = tube();
        s.P(moved, 8).y += 1e-3F;
        EXPECT_EQ(s.frame(2, 0), left_plain(s, 2)) << moved;
    }
}

TEST(WorkFrames, SeamWithACreaseIsNone) {
    samples_t s = tube();
    for (std::uint32_t r = 0; r < 5; ++r)
        s.P(r, 7) = s.P(r, 1);
    EXPECT_EQ(s.frame(2, 0), left_plain(s, 2));
}

TEST(WorkFrames, SeamThatTurnsBackAlongTheColumnIsNone) {
    samples_t s = tube();
    s.P(3, 0).y = s.P(3, 8).y = 1.5F;
    EXPECT_EQ(s.frame(2, 0), left_plain(s, 2));
}

TEST(WorkFrames, BottomAndTopRepeatTheirOnlyDifferenceAlongTheColumn) {
    samples_t s(5, 4);
    EXPECT_EQ(s.frame(0, 2), bottom_plain(s, 2));
    const dir3 rise = s.P(3, 2) - s.P(2, 2);
    EXPECT_EQ(s.frame(3, 2), (work_frame_t{s.P(3, 3) - s.P(3, 2), rise, s.P(3, 2) - s.P(3, 1), rise}));
}

TEST(WorkFrames, PoleAtTheBottomTakesTheSecondRow) {
    samples_t s(5, 4);
    s.P(0, 3) = s.P(0, 1);
    const dir3 rise = s.P(1, 2) - s.P(0, 2);
    EXPECT_EQ(s.frame(0, 2), (work_frame_t{s.P(1, 3) - s.P(1, 2), rise, s.P(1, 2) - s.P(1, 1), rise}));
}

TEST(WorkFrames, PoleAtTheTopTakesTheRowBelow) {
    samples_t s(5, 4);
    s.P(3, 3) = s.P(3, 1);
    const dir3 rise = s.P(3, 2) - s.P(2, 2);
    EXPECT_EQ(s.frame(3, 2), (work_frame_t{s.P(2, 3) - s.P(2, 2), rise, s.P(2, 2) - s.P(2, 1), rise}));
}

TEST(WorkFrames, TubeAcrossTheRowsHasOneRecordOnBothSidesOfItsSeam) {
    samples_t s = exchanged(tube());
    const work_frame_t seam{s.P(0, 3) - s.P(0, 2), s.P(1, 2) - s.P(0, 2), s.P(8, 2) - s.P(8, 1),
                            s.P(8, 2) - s.P(7, 2)};
    EXPECT_EQ(s.frame(0, 2), seam);
    EXPECT_EQ(s.frame(8, 2), seam);
    EXPECT_NE(seam, bottom_plain(s, 2));
}

TEST(WorkFrames, SeamNeedsAllThreePairsOfAColumn) {
    for (std::uint32_t moved = 1; moved <= 3; ++moved) {
        samples_t s = exchanged(tube());
        s.P(8, moved).y += 1e-3F;
        EXPECT_EQ(s.frame(0, 2), bottom_plain(s, 2)) << moved;
    }
}

TEST(WorkFrames, SeamAcrossTheRowsWithACreaseIsNone) {
    samples_t s = exchanged(tube());
    for (std::uint32_t c = 0; c < 5; ++c)
        s.P(7, c) = s.P(1, c);
    EXPECT_EQ(s.frame(0, 2), bottom_plain(s, 2));
}

TEST(WorkFrames, SeamAcrossTheRowsThatTurnsBackIsNone) {
    samples_t s = exchanged(tube());
    s.P(0, 3).y = s.P(8, 3).y = 1.5F;
    EXPECT_EQ(s.frame(0, 2), bottom_plain(s, 2));
}

TEST(WorkFrames, CornersOfAnOpenPatchHaveOneDifferenceEachWay) {
    samples_t s(5, 4);
    const auto both = [](const dir3& row, const dir3& column) {
        return work_frame_t{row, column, row, column};
    };
    EXPECT_EQ(s.frame(0, 0), both(s.P(0, 1) - s.P(0, 0), s.P(1, 0) - s.P(0, 0)));
    EXPECT_EQ(s.frame(0, 4), both(s.P(0, 4) - s.P(0, 3), s.P(1, 4) - s.P(0, 4)));
    EXPECT_EQ(s.frame(3, 0), both(s.P(3, 1) - s.P(3, 0), s.P(3, 0) - s.P(2, 0)));
    EXPECT_EQ(s.frame(3, 4), both(s.P(3, 4) - s.P(3, 3), s.P(3, 4) - s.P(2, 4)));
}

TEST(WorkFrames, CornersOfATorusShareOneRecord) {
    samples_t s = torus();
    const work_frame_t joined{s.P(0, 1) - s.P(0, 0), s.P(1, 0) - s.P(0, 0), s.P(8, 8) - s.P(8, 7),
                              s.P(8, 8) - s.P(7, 8)};
    for (const std::uint32_t r : {0U, 8U}) {
        for (const std::uint32_t c : {0U, 8U})
            EXPECT_EQ(s.frame(r, c), joined) << r << " " << c;
    }
}

/// Each neighbour is displaced where the joined record does not read it, so that only the comparison of its
/// pair can tell that the surface does not close there.
TEST(WorkFrames, CornersOfATorusWithADisplacedNeighbourAreNotJoined) {
    for (const auto& [r, c] : {std::pair{8U, 1U}, {1U, 8U}, {0U, 7U}, {7U, 0U}}) {
        samples_t s = torus();
        const work_frame_t joined = s.frame(0, 0);
        s.P(r, c).z += 0.5F;
        for (const std::uint32_t row : {0U, 8U}) {
            for (const std::uint32_t column : {0U, 8U})
                EXPECT_NE(s.frame(row, column), joined) << r << " " << c << ": " << row << " " << column;
        }
    }
}

/// Two corners are moved apart, each within the tolerance of the other two corners.
TEST(WorkFrames, CornersOfATorusAreJoinedOnlyWhenEachPairMeets) {
    constexpr float apart = 1.5e-5F;
    constexpr std::pair<std::uint32_t, std::uint32_t> corners[] = {{0, 0}, {0, 8}, {8, 0}, {8, 8}};
    for (std::size_t first = 0; first < 4; ++first) {
        for (std::size_t second = first + 1; second < 4; ++second) {
            samples_t s = torus();
            s.P(corners[first].first, corners[first].second).y += apart;
            s.P(corners[second].first, corners[second].second).y -= apart;
            EXPECT_NE(s.frame(0, 8), s.frame(8, 0)) << first << " " << second;
        }
    }
}

TEST(WorkFrames, CornersOfACreasedTorusAreNotJoined) {
    samples_t s = torus();
    for (std::uint32_t r = 0; r < 9; ++r)
        s.P(r, 7) = s.P(r, 1);
    EXPECT_NE(s.frame(0, 0), s.frame(8, 8));
}

TEST(WorkFrames, BottomRowThatClosesTakesItsNeighboursDifferences) {
    samples_t s(5, 4);
    s.P(0, 4) = s.P(0, 0);
    s.P(1, 4) = s.P(1, 0);
    const dir3 left_rise = s.P(1, 0) - s.P(0, 0);
    EXPECT_EQ(s.frame(0, 0),
              (work_frame_t{s.P(1, 1) - s.P(1, 0), left_rise, s.P(0, 1) - s.P(0, 0), left_rise}));
    const dir3 right_rise = s.P(1, 4) - s.P(0, 4);
    EXPECT_EQ(s.frame(0, 4),
              (work_frame_t{s.P(0, 4) - s.P(0, 3), right_rise, s.P(1, 4) - s.P(1, 3), right_rise}));
}

TEST(WorkFrames, LeftColumnThatClosesTakesItsNeighboursDifferences) {
    samples_t s(5, 4);
    s.P(3, 0) = s.P(0, 0);
    s.P(3, 1) = s.P(0, 1);
    const dir3 low_rise = s.P(1, 1) - s.P(0, 1);
    EXPECT_EQ(s.frame(0, 0),
              (work_frame_t{s.P(0, 1) - s.P(0, 0), low_rise, s.P(0, 1) - s.P(0, 0), low_rise}));
    const dir3 high_rise = s.P(3, 1) - s.P(2, 1);
    EXPECT_EQ(s.frame(3, 0),
              (work_frame_t{s.P(3, 1) - s.P(3, 0), high_rise, s.P(2, 1) - s.P(2, 0), high_rise}));
}

TEST(WorkFrames, RightColumnThatClosesMirrorsTheLeftOne) {
    samples_t s(5, 4);
    s.P(3, 4) = s.P(0, 4);
    s.P(3, 3) = s.P(0, 3);
    const dir3 low_rise = s.P(1, 3) - s.P(0, 3);
    EXPECT_EQ(s.frame(0, 4),
              (work_frame_t{s.P(0, 4) - s.P(0, 3), low_rise, s.P(0, 4) - s.P(0, 3), low_rise}));
    const dir3 high_rise = s.P(3, 3) - s.P(2, 3);
    EXPECT_EQ(s.frame(3, 4),
              (work_frame_t{s.P(3, 4) - s.P(3, 3), high_rise, s.P(2, 4) - s.P(2, 3), high_rise}));
}

TEST(WorkFrames, TopRowThatClosesMirrorsTheBottomOne) {
    samples_t s(5, 4);
    s.P(3, 4) = s.P(3, 0);
    s.P(2, 4) = s.P(2, 0);
    const dir3 left_rise = s.P(3, 0) - s.P(2, 0);
    EXPECT_EQ(s.frame(3, 0),
              (work_frame_t{s.P(2, 1) - s.P(2, 0), left_rise, s.P(3, 1) - s.P(3, 0), left_rise}));
    const dir3 right_rise = s.P(3, 4) - s.P(2, 4);
    EXPECT_EQ(s.frame(3, 4),
              (work_frame_t{s.P(3, 4) - s.P(3, 3), right_rise, s.P(2, 4) - s.P(2, 3), right_rise}));
}

TEST(WorkFrames, ClosedRowNeedsTheRowNextToItClosedToo) {
    samples_t s(5, 4);
    s.P(0, 4) = s.P(0, 0);
    EXPECT_EQ(s.frame(0, 0).first, s.P(0, 1) - s.P(0, 0));
    s.P(3, 0) = s.P(0, 0);
    EXPECT_EQ(s.frame(3, 0).second, s.P(3, 0) - s.P(2, 0));
}

/// The ends of the line next to an edge meet, and those of the edge itself do not.
TEST(WorkFrames, CornersOfAnEdgeWithOpenEndsArePlainThoughTheLineNextToItIsClosed) {
    struct place_t {
        std::uint32_t r, c;
    };
    struct row_t {
        place_t moved, onto;    // the two ends of the line next to the edge
        place_t first, second;  // the corners of the edge
    };
    constexpr row_t rows[] = {
        {{1, 4}, {1, 0}, {0, 0}, {0, 4}},  // bottom
        {{2, 4}, {2, 0}, {3, 0}, {3, 4}},  // top
        {{3, 1}, {0, 1}, {0, 0}, {3, 0}},  // left
        {{3, 3}, {0, 3}, {0, 4}, {3, 4}},  // right
    };
    for (const row_t& row : rows) {
        samples_t s(5, 4);
        s.P(row.moved.r, row.moved.c) = s.P(row.onto.r, row.onto.c);
        EXPECT_EQ(s.frame(row.first.r, row.first.c), corner_plain(s, row.first.r, row.first.c));
        EXPECT_EQ(s.frame(row.second.r, row.second.c), corner_plain(s, row.second.r, row.second.c));
    }
}

/// Both ends of the bottom row and both ends of the left and right columns meet, and nothing is smooth: two
/// rules apply to each of these corners.
TEST(WorkFrames, CornerOfTwoClosedEdgesFollowsTheLaterRule) {
    samples_t s(5, 4);
    s.P(0, 4) = s.P(3, 0) = s.P(3, 4) = s.P(0, 0);
    s.P(1, 4) = s.P(1, 0);
    s.P(2, 4) = s.P(2, 0);
    s.P(3, 1) = s.P(0, 1);
    s.P(3, 3) = s.P(0, 3);
    // Left column over bottom row.
    EXPECT_EQ(s.frame(0, 0).second, s.P(1, 1) - s.P(0, 1));
    // Right column over bottom row.
    EXPECT_EQ(s.frame(0, 4).second, s.P(1, 3) - s.P(0, 3));
    // Top row over left and right column.
    EXPECT_EQ(s.frame(3, 0).second, s.P(3, 0) - s.P(2, 0));
    EXPECT_EQ(s.frame(3, 0).first, s.P(2, 1) - s.P(2, 0));
    EXPECT_EQ(s.frame(3, 4).second, s.P(3, 4) - s.P(2, 4));
}

TEST(WorkFrames, PatchOfFourVerticesHasCornersOnly) {
    samples_t s(2, 2);
    const dir3 along = s.P(1, 1) - s.P(1, 0);
    const dir3 up = s.P(1, 0) - s.P(0, 0);
    EXPECT_EQ(s.frame(1, 0), (work_frame_t{along, up, along, up}));
}

TEST(WorkFrames, ResolutionOfOneGivesZeros) {
    const std::vector<pos3> positions{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
    for (const auto& [columns, rows] : {std::pair{3U, 1U}, {1U, 3U}}) {
        std::vector<work_frame_t> frames(3, {{1, 1, 1}, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}});
        ulk3d::fill_work_frames(positions, columns, rows, frames);
        for (const work_frame_t& frame : frames)
            EXPECT_EQ(frame, work_frame_t{});
    }
}

}  // namespace
