#include "dialogs/tables/table_lines.h"

#include <gtest/gtest.h>

#include <vector>

namespace ulk3d {
namespace {

/// Two groups of a large and a small line behind a first one.
table_lines_t five_lines() {
    table_lines_t lines(5, 1, 2, 2);
    lines.fit(0, 10);
    lines.fit(1, 30);
    lines.fit(4, 5);
    return lines;
}

std::vector<int> begins(const table_lines_t& lines) {
    std::vector<int> places;
    for (unsigned line = 0; line <= lines.lines(); ++line)
        places.push_back(lines.begin(line));
    return places;
}

TEST(TableLines, StandOneBehindTheOther) {
    const table_lines_t lines = five_lines();
    EXPECT_EQ(begins(lines), (std::vector{0, 12, 44, 51, 83, 90}));
    EXPECT_EQ(lines.end(1), 10);
    EXPECT_EQ(lines.end(5), 88);
    EXPECT_EQ(lines.least(), 88);
}

TEST(TableLines, ALineIsAsLargeAsTheLargestLikeIt) {
    table_lines_t lines = five_lines();
    lines.fit(3, 40);
    lines.fit(1, 20);
    EXPECT_EQ(begins(lines), (std::vector{0, 12, 54, 61, 103, 110}));
}

TEST(TableLines, WhatIsLeftOfTheViewIsSpreadOverAll) {
    table_lines_t lines = five_lines();
    lines.fill(98);
    EXPECT_EQ(begins(lines), (std::vector{0, 14, 48, 57, 91, 100}));
    EXPECT_EQ(lines.end(5), 98);
    lines.fill(20);
    EXPECT_EQ(lines.end(5), 88);
}

TEST(TableLines, BlocksAreFirstLinesAndGroups) {
    const table_lines_t lines = five_lines();
    EXPECT_EQ(lines.blocks(), 3U);
    std::vector<unsigned> blocks, firsts;
    for (unsigned line = 0; line < 5; ++line)
        blocks.push_back(lines.block_of(line));
    for (unsigned block = 0; block < 4; ++block)
        firsts.push_back(lines.first_line(block));
    EXPECT_EQ(blocks, (std::vector{0U, 1U, 1U, 2U, 2U}));
    EXPECT_EQ(firsts, (std::vector{0U, 1U, 3U, 5U}));
}

TEST(TableLines, EveryPixelHasItsBlock) {
    const table_lines_t lines = five_lines();
    for (const auto& [pixel, block] : {std::pair{-5.0, 0U},
                                       {0.0, 0U},
                                       {11.5, 0U},
                                       {12.0, 1U},
                                       {50.9, 1U},
                                       {51.0, 2U},
                                       {87.0, 2U},
                                       {1000.0, 2U}})
        EXPECT_EQ(lines.block_at(pixel), block) << pixel;
}

TEST(TableLines, AnyPlaceOfAViewIsCoveredByAsManyBlocks) {
    table_lines_t lines(1000, 1, 4);
    lines.fit(0, 3);
    for (unsigned line = 1; line < 5; ++line)
        lines.fit(line, 25);
    const unsigned count = lines.blocks_in(480);
    EXPECT_LE(count, 8U);
    for (int place = 0; place < 2000; ++place) {
        const unsigned first = lines.block_at(place);
        ASSERT_GE(lines.begin(lines.first_line(first + count)), place + 480) << place;
    }
}

TEST(TableLines, MillionsOfLinesAreFound) {
    table_lines_t lines(4'000'000, 0, 4);
    lines.fit(0, 500);
    lines.fit(1, 500);
    lines.fit(2, 500);
    lines.fit(3, 20);
    EXPECT_EQ(lines.least(), 1'520'000'000);
    EXPECT_EQ(lines.begin(3'999'996), 1'519'998'480);
    EXPECT_EQ(lines.block_at(1'519'998'480), 999'999U);
    EXPECT_EQ(lines.block_at(1'519'998'479), 999'998U);
}

TEST(TableLines, NoLinesTakeNoPlace) {
    const table_lines_t lines(0, 1, 2, 2);
    EXPECT_EQ(lines.least(), 0);
    EXPECT_EQ(lines.blocks(), 0U);
    EXPECT_EQ(lines.block_at(10), 0U);
    EXPECT_GE(lines.blocks_in(100), 1U);
}

}  // namespace
}  // namespace ulk3d
