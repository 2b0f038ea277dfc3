#include <gtest/gtest.h>

#include <string>

#include "operations/strips/strip_surgery.h"
#include "strip_changes.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;
using enum strip_place_t;

indices_t without(const indices_t& elements, std::uint32_t first, std::uint32_t last, strip_place_t place) {
    strip_mesh_t mesh = numbered_mesh(elements);
    const strip_mesh_t before = mesh;
    del_elements(mesh, first, last, place);
    EXPECT_EQ(mesh.vertices, before.vertices);
    EXPECT_EQ(mesh.frames, before.frames);
    return mesh.elements;
}

/// Removes the triangles whose bit is set, in one walk.
void expect_removal(const indices_t& list, std::uint32_t bits) {
    SCOPED_TRACE(testing::PrintToString(list) + " bits " + std::to_string(bits));
    strip_mesh_t mesh = numbered_mesh(list);
    expect_changes(mesh, [bits](std::size_t number) {
        return change_t{(bits >> number & 1) != 0 ? change_kind_t::remove : change_kind_t::keep};
    });
}

TEST(StripDeletion, LastTriangleTakesItsIndexAlong) {
    EXPECT_EQ(without({0, 1, 2, 3, 4}, 4, 4, at_end), (indices_t{0, 1, 2, 3}));
    EXPECT_EQ(without({0, 1, 2, 3, mark, 4, 5, 6}, 3, 3, at_end), (indices_t{0, 1, 2, mark, 4, 5, 6}));
}

TEST(StripDeletion, OnlyTriangleOfAStripLeavesTheMarkBehindIt) {
    EXPECT_EQ(without({3, 4, 5, mark, 0, 1, 2, mark, 6, 7, 8}, 4, 6, at_end),
              (indices_t{3, 4, 5, mark, mark, 6, 7, 8}));
}

TEST(StripDeletion, WholeStripGoesWithItsMark) {
    EXPECT_EQ(without({0, 1, 2, mark, 6, 7, 8}, 0, 3, at_end), (indices_t{6, 7, 8}));
}

TEST(StripDeletion, OnlyTriangleOfAMeshLeavesNoElements) {
    EXPECT_EQ(without({0, 1, 2}, 0, 2, at_end), indices_t{});
}

TEST(StripDeletion, FirstTriangleTurnsTheNextAndStartsTheRestAnew) {
    EXPECT_EQ(without({0, 1, 2, 3}, 0, 0, at_start), (indices_t{2, 1, 3}));
    EXPECT_EQ(without({9, mark, 0, 1, 2, 3, mark, 5}, 2, 2, at_start),
              (indices_t{9, mark, 2, 1, 3, mark, 5}));
    EXPECT_EQ(without({0, 1, 2, 3, 4}, 0, 0, at_start), (indices_t{2, 1, 3, mark, 2, 3, 4}));
    EXPECT_EQ(without({0, 1, 2, 3, 4, 5}, 0, 0, at_start), (indices_t{2, 1, 3, mark, 2, 3, 4, 5}));
}

TEST(StripDeletion, EvenTriangleTurnsTheNextAndStartsTheRestAnew) {
    EXPECT_EQ(without({0, 1, 2, 3, 4, 5}, 4, 4, even_ahead), (indices_t{0, 1, 2, 3, mark, 4, 3, 5}));
    EXPECT_EQ(without({0, 1, 2, 3, 4, 5, mark, 0}, 4, 4, even_ahead),
              (indices_t{0, 1, 2, 3, mark, 4, 3, 5, mark, 0}));
    EXPECT_EQ(without({0, 1, 2, 3, 4, 5, 6, 7}, 4, 4, even_ahead),
              (indices_t{0, 1, 2, 3, mark, 4, 3, 5, mark, 4, 5, 6, 7}));
}

TEST(StripDeletion, OddTriangleStartsTheRestAnew) {
    EXPECT_EQ(without({0, 1, 2, 3, 4}, 3, 3, odd_ahead), (indices_t{0, 1, 2, mark, 2, 3, 4}));
    EXPECT_EQ(without({0, 1, 2, 3, 4, 5}, 3, 3, odd_ahead), (indices_t{0, 1, 2, mark, 2, 3, 4, 5}));
}

TEST(StripDeletion, DeletionInTheMiddleLeavesTwoStripsWithAllOthers) {
    const strip_mesh_t mesh = numbered_mesh(without({0, 1, 2, 3, 4, 5, 6}, 4, 4, even_ahead));
    EXPECT_EQ(triangles_of(mesh), (triangles_t{{0, 1, 2}, {1, 3, 2}, {3, 5, 4}, {4, 5, 6}}));
}

TEST(StripDeletion, ImpossiblePositionsDoNothing) {
    struct impossible_t {
        indices_t elements;
        std::uint32_t first, last;
        strip_place_t place;
    };
    const impossible_t cases[] = {
        {{}, 0, 0, at_end},
        {{}, 0, 0, at_start},
        {{}, 0, 0, even_ahead},
        {{}, 0, 0, odd_ahead},
        {{0}, 0, 0, at_start},
        {{0}, 0, 0, even_ahead},
        {{0, 1}, 1, 1, odd_ahead},
        {{0, 1, 2}, 0, 3, at_end},
        {{0, 1, 2}, 2, 1, at_end},
        {{0, 1, 2}, mark, mark, at_end},
        {{0, 1, 2}, 0, mark, at_end},
        {{0, 1, 2}, 0, 0, at_start},
        {{0, 1, 2, mark}, 0, 0, at_start},
        {{0, 1, mark, 2, 3}, 0, 0, at_start},
        {{0, mark, 1, 2, 3}, 0, 0, at_start},
        {{0, 1, 2}, 2, 2, even_ahead},
        {{0, 1, 2, mark}, 2, 2, even_ahead},
        {{0, 1, 2, 3}, 0, 0, even_ahead},
        {{0, mark, 2, 3}, 2, 2, even_ahead},
        {{0, 1, 2}, 2, 2, odd_ahead},
        {{0, 1, 2, mark}, 2, 2, odd_ahead},
        {{0, 1, 2, 3}, 0, 0, odd_ahead},
        {{0, mark, 2, 3}, 2, 2, odd_ahead},
    };
    for (const impossible_t& impossible : cases) {
        EXPECT_EQ(without(impossible.elements, impossible.first, impossible.last, impossible.place),
                  impossible.elements)
            << testing::PrintToString(impossible.elements) << " " << impossible.first << " "
            << impossible.last << " mode " << static_cast<int>(impossible.place);
    }
}

TEST(StripDeletion, EveryChoiceOfTrianglesLeavesTheOthers) {
    for (std::uint32_t triangles = 1; triangles <= 10; ++triangles) {
        for (std::uint32_t bits = 0; bits < 1U << triangles; ++bits) {
            expect_removal(strip_of(triangles), bits);
            if (HasFailure())
                return;
        }
    }
}

TEST(StripDeletion, StripsBeforeAndBehindStay) {
    const std::vector<indices_t> lists = {
        {0, 1, 2, mark, 3, 4, 5, mark, 6, 7, 8},
        {mark, 0, 1, 2, 3, mark, mark, 4, 5, 6, 7, 8, mark, 9, 10},
        {0, 1, mark, 2, 3, 4, 5, 6, mark, 7, 8, 9, 10, mark},
    };
    for (const indices_t& list : lists) {
        const std::size_t triangles = triangles_of(numbered_mesh(list)).size();
        for (std::uint32_t bits = 0; bits < 1U << triangles; ++bits)
            expect_removal(list, bits);
    }
}

}  // namespace
