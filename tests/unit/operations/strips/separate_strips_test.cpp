#include "operations/strips/separate_strips.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

#include "model/polygon/strip_walk.h"
#include "support/plain_fold.h"

namespace {

using namespace ulk3d;
using indices_t = std::vector<std::uint32_t>;
using places_t = std::vector<std::size_t>;
using ids_t = std::set<std::uint32_t>;

constexpr std::uint32_t mark = restart_mark;
constexpr std::uint64_t vertex_count = 10;
constexpr std::uint32_t foreign = 10;  // the first index that is no vertex

struct row_t {
    const char* name;
    indices_t elements;
    ids_t selected;
    indices_t separated;
    places_t touched;
};

class SeparateStrips : public testing::TestWithParam<row_t> {};

TEST_P(SeparateStrips, GivesExactlyThis) {
    const row_t& row = GetParam();
    const separated_strips_t out = separate_strips(row.elements, vertex_count, row.selected);
    EXPECT_EQ(out.elements, row.separated);
    EXPECT_EQ(out.touched, row.touched);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SeparateStrips,
    testing::Values(
        row_t{"NothingSelected", {0, 1, 2, 3}, {}, {0, 1, 2, 3}, {}},
        row_t{"ASingleTriangle", {0, 1, 2}, {0}, {0, 1, 2}, {0, 1, 2}},
        row_t{"AWholeStrip", {0, 1, 2, 3, 4}, {0, 1, 2}, {0, 1, 2, 3, 4}, {0, 1, 2, 3, 4}},
        // A run that begins inside of a strip.
        row_t{"BeginsOddAtTheEnd", {0, 1, 2, 3, 4}, {2}, {0, 1, 2, 3, mark, 2, 3, 4}, {5, 6, 7}},
        row_t{"BeginsOddAndGoesOn", {0, 1, 2, 3, 4, 5}, {2, 3}, {0, 1, 2, 3, mark, 2, 3, 4, 5}, {5, 6, 7, 8}},
        row_t{"BeginsEvenAtTheEnd", {0, 1, 2, 3}, {1}, {0, 1, 2, mark, 2, 1, 3}, {4, 5, 6}},
        row_t{"BeginsEvenBeforeAMark",
              {0, 1, 2, 3, mark, 4, 5, 6},
              {1},
              {0, 1, 2, mark, 2, 1, 3, mark, 4, 5, 6},
              {4, 5, 6}},
        row_t{"BeginsEvenBeforeAForeignIndex",
              {0, 1, 2, 3, foreign, 4, 5, 6},
              {1},
              {0, 1, 2, mark, 2, 1, 3, foreign, 4, 5, 6},
              {4, 5, 6}},
        row_t{"BeginsEvenWithMoreBehindIt",
              {0, 1, 2, 3, 4},
              {1},
              {0, 1, 2, mark, 2, 1, 3, mark, 2, 3, 4},
              {4, 5, 6}},
        row_t{"BeginsEvenAndGoesOn",
              {0, 1, 2, 3, 4, 5},
              {1, 2, 3},
              {0, 1, 2, mark, 2, 1, 3, mark, 2, 3, 4, 5},
              {4, 5, 6, 8, 9, 10, 11}},
        row_t{"BeginsAtTheFourthTriangleWithMoreBehindIt",
              {0, 1, 2, 3, 4, 5, 6},
              {3},
              {0, 1, 2, 3, 4, mark, 4, 3, 5, mark, 4, 5, 6},
              {6, 7, 8}},
        // A run that ends inside of a strip.
        row_t{"EndsOdd", {0, 1, 2, 3, 4}, {0, 1}, {0, 1, 2, 3, mark, 2, 3, 4}, {0, 1, 2, 3}},
        row_t{"EndsOddWithMoreBehindIt",
              {0, 1, 2, 3, 4, 5},
              {0, 1},
              {0, 1, 2, 3, mark, 2, 3, 4, 5},
              {0, 1, 2, 3}},
        row_t{"EndsEvenAtTheEnd", {0, 1, 2, 3}, {0}, {0, 1, 2, mark, 2, 1, 3}, {0, 1, 2}},
        row_t{"EndsEvenBeforeAMark",
              {0, 1, 2, 3, mark, 4, 5, 6},
              {0},
              {0, 1, 2, mark, 2, 1, 3, mark, 4, 5, 6},
              {0, 1, 2}},
        row_t{"EndsEvenWithMoreBehindIt",
              {0, 1, 2, 3, 4},
              {0},
              {0, 1, 2, mark, 2, 1, 3, mark, 2, 3, 4},
              {0, 1, 2}},
        // Behind a triangle that was set apart a strip begins like any other.
        row_t{"EveryOtherTriangle",
              {0, 1, 2, 3, 4, 5},
              {0, 2},
              {0, 1, 2, mark, 2, 1, 3, mark, 2, 3, 4, mark, 4, 3, 5},
              {0, 1, 2, 8, 9, 10}},
        row_t{"EveryOtherTriangleFromTheSecond",
              {0, 1, 2, 3, 4, 5, 6},
              {1, 3},
              {0, 1, 2, mark, 2, 1, 3, mark, 2, 3, 4, mark, 4, 3, 5, mark, 4, 5, 6},
              {4, 5, 6, 12, 13, 14}},
        // Several strips.
        row_t{"ARunEndsWithItsStrip", {0, 1, 2, mark, 3, 4, 5}, {0}, {0, 1, 2, mark, 3, 4, 5}, {0, 1, 2}},
        row_t{"TheNextStripBeginsARunOfItsOwn",
              {0, 1, 2, mark, 3, 4, 5, 6},
              {0, 1},
              {0, 1, 2, mark, 3, 4, 5, mark, 5, 4, 6},
              {0, 1, 2, 4, 5, 6}},
        row_t{"AForeignIndexEndsARunAsAMarkDoes",
              {0, 1, 2, foreign, 3, 4, 5},
              {0, 1},
              {0, 1, 2, foreign, 3, 4, 5},
              {0, 1, 2, 4, 5, 6}},
        row_t{"IdsGoOnAcrossStrips",
              {0, 1, 2, 3, mark, mark, 7, 8, mark, 4, 5, 6, 7},
              {3},
              {0, 1, 2, 3, mark, mark, 7, 8, mark, 4, 5, 6, mark, 6, 5, 7},
              {13, 14, 15}},
        row_t{"EndsBeforeAStripWithoutTriangles",
              {0, 1, 2, mark, 3, 4, mark, 5, 6, 7},
              {0, 1},
              {0, 1, 2, mark, 3, 4, mark, 5, 6, 7},
              {0, 1, 2, 7, 8, 9}},
        // What is not there.
        row_t{"IdsBeyond", {0, 1, 2, 3}, {2, 9, restart_mark}, {0, 1, 2, 3}, {}},
        row_t{"AnIdBeyondBesidesOneThatIs", {0, 1, 2}, {0, 5}, {0, 1, 2}, {0, 1, 2}},
        row_t{"NoElements", {}, {0}, {}, {}}, row_t{"TwoElements", {0, 1}, {0}, {0, 1}, {}},
        row_t{"OnlyMarks", {mark, foreign, mark}, {0}, {mark, foreign, mark}, {}},
        row_t{"ATriangleWithoutArea", {0, 1, 1, 2}, {1}, {0, 1, 1, mark, 1, 1, 2}, {4, 5, 6}}),
    [](const auto& row) { return std::string(row.param.name); });

// All strips of up to eight triangles with all sets, against the rule.

using corners_t = std::array<std::uint32_t, 3>;

std::vector<corners_t> triangles_of(const indices_t& elements) {
    std::vector<corners_t> triangles;
    walk_strips(elements, vertex_count, [&](const strip_triangle_t& t) {
        triangles.push_back({t.a, t.b, t.c});
    });
    return triangles;
}

/// The places of the triangles that are in the set, or of those that are not; rising.
places_t places_of(const indices_t& elements, const ids_t& selected, bool wanted) {
    std::set<std::size_t> places;
    walk_strips(elements, vertex_count, [&](const strip_triangle_t& t) {
        if (selected.contains(static_cast<std::uint32_t>(t.id)) == wanted)
            places.insert({t.position, t.position + std::size_t{1}, t.position + std::size_t{2}});
    });
    return {places.begin(), places.end()};
}

void expect_rule(const indices_t& elements, const ids_t& selected) {
    const separated_strips_t out = separate_strips(elements, vertex_count, selected);
    // The same triangles in the same order, each with its winding: also its first corner stays.
    EXPECT_EQ(triangles_of(out.elements), triangles_of(elements));
    // The touched places are those of the set, and of no other triangle.
    EXPECT_EQ(out.touched, places_of(out.elements, selected, true));
    const places_t others = places_of(out.elements, selected, false);
    places_t common;
    std::ranges::set_intersection(out.touched, others, std::back_inserter(common));
    EXPECT_EQ(common, places_t{});
    // What is separated stays as it is.
    EXPECT_EQ(separate_strips(out.elements, vertex_count, selected).elements, out.elements);

    ulk_test::plain_strips_t plain = ulk_test::plain_separate(elements, vertex_count, selected);
    std::ranges::sort(plain.touched);
    EXPECT_EQ(out.elements, plain.elements);
    EXPECT_EQ(out.touched, plain.touched);
}

ids_t ids_of(unsigned bits) {
    ids_t ids;
    for (std::uint32_t id = 0; id < 32; ++id)
        if (bits >> id & 1U)
            ids.insert(id);
    return ids;
}

TEST(SeparateStripsRule, HoldsForAllSetsOfOneStrip) {
    for (std::uint32_t triangles = 1; triangles <= 8; ++triangles) {
        indices_t strip;
        for (std::uint32_t i = 0; i < triangles + 2; ++i)
            strip.push_back(i);
        for (unsigned bits = 0; bits < 1U << triangles; ++bits) {
            SCOPED_TRACE(testing::Message() << triangles << " triangles, set " << bits);
            expect_rule(strip, ids_of(bits));
        }
    }
}

TEST(SeparateStripsRule, HoldsForAllSetsOfTwoStrips) {
    for (std::uint32_t first = 1; first <= 4; ++first) {
        for (std::uint32_t second = 1; second <= 4; ++second) {
            indices_t strips;
            for (std::uint32_t i = 0; i < first + 2; ++i)
                strips.push_back(i);
            strips.push_back(mark);
            for (std::uint32_t i = 0; i < second + 2; ++i)
                strips.push_back(9 - i);
            for (unsigned bits = 0; bits < 1U << (first + second); ++bits) {
                SCOPED_TRACE(testing::Message() << first << " and " << second << " triangles, set " << bits);
                expect_rule(strips, ids_of(bits));
            }
        }
    }
}

TEST(SeparateStripsRule, HoldsForAnyElements) {
    std::mt19937 random(11);
    for (int round = 0; round < 3000; ++round) {
        const std::size_t count = random() % 40;
        const std::uint32_t range = random() % 2 == 0 ? 12 : 40;  // few or many indices that end a strip
        indices_t elements;
        for (std::size_t i = 0; i < count; ++i) {
            const auto index = static_cast<std::uint32_t>(random() % range);
            elements.push_back(index == foreign + 1 ? mark : index);
        }
        ids_t selected;
        const std::size_t density = random() % 5;
        for (std::uint32_t id = 0; id < 45; ++id)
            if (random() % 4 < density)
                selected.insert(id);
        SCOPED_TRACE(round);
        expect_rule(elements, selected);
    }
}

}  // namespace
