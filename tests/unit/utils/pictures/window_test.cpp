#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "support/scene_text.h"
#include "unit/utils/memory/shared_vectors.h"

using namespace libutils;

TEST(Window, BeginsWithoutABlockAtZeroAndWithoutALimit) {
    const window_t window;
    EXPECT_TRUE(window.empty());
    EXPECT_EQ(window.size(), 0U);
    EXPECT_EQ(window.begin(), nullptr);
    EXPECT_EQ(window.offset, 0U);
    EXPECT_EQ(window.limit, std::numeric_limits<std::uint64_t>::max());
}

TEST(Window, ShowsTheElementsBehindItsOffset) {
    window_t window = counting_window(10);
    window.offset = 4;
    EXPECT_EQ(window.size(), 6U);
    EXPECT_EQ(window.end() - window.begin(), 6);
    EXPECT_EQ(*window.begin(), 4);
    EXPECT_EQ(window.at(5), 9);
    EXPECT_EQ(window.front(), 4);
    const window_t& constant = window;
    EXPECT_EQ(constant.front(), 4);
    EXPECT_EQ(constant.at(1), 5);
    EXPECT_EQ(constant.end() - constant.begin(), 6);
}

TEST(Window, FrontOfTheBaseIsTheFirstElementOfTheWindow) {
    window_t window = counting_window(10);
    window.offset = 4;
    refvector2<unsigned char, alloc_mmap_win>& base = window;
    const refvector2<unsigned char, alloc_mmap_win>& constant = window;
    EXPECT_EQ(base.front(), 4);
    EXPECT_EQ(constant.front(), 4);
}

TEST(Window, SizeNeverExceedsTheLimit) {
    window_t window = counting_window(10);
    window.offset = 4;
    window.limit = 3;
    EXPECT_EQ(window.size(), 3U);
    window.limit = 7;
    EXPECT_EQ(window.size(), 6U);
}

TEST(Window, LimitOfZeroIsEmptyThoughTheBlockIsNot) {
    window_t window = counting_window(10);
    window.limit = 0;
    EXPECT_TRUE(window.empty());
    EXPECT_EQ(window.size(), 0U);
    EXPECT_EQ(window.block_size(), 10U);
}

TEST(Window, OffsetCountsBytesAndLimitElements) {
    word_window_t window;
    ASSERT_TRUE(window.allocate(4));
    for (std::uint32_t i = 0; i < 4; ++i)
        window.at(i) = i;
    window.offset = 8;
    EXPECT_EQ(window.size(), 2U);
    EXPECT_EQ(window.front(), 2U);
    window.limit = 1;
    EXPECT_EQ(window.size(), 1U);
}

TEST(Window, SizeOfAWindowBehindItsBlockWrapsAround) {
    window_t window = counting_window(10);
    window.offset = 11;
    EXPECT_EQ(window.size(), std::numeric_limits<std::uint64_t>::max());
    window.limit = 3;
    EXPECT_EQ(window.size(), 3U);
}

TEST(Window, ElementsAreThoseInsideTheBlock) {
    window_t window = counting_window(10);
    window.offset = 8;
    EXPECT_EQ(window.elements().size(), 2U);
    EXPECT_EQ(window.elements()[1], 9);
    window.offset = 11;
    EXPECT_TRUE(window.elements().empty());
    EXPECT_TRUE(static_cast<const window_t&>(window).elements().empty());
    EXPECT_TRUE(window_t().elements().empty());
}

TEST(Window, CopiesTakeOffsetAndLimitAlong) {
    window_t window = counting_window(10);
    window.offset = 4;
    window.limit = 2;
    const window_t copy(window);
    window_t assigned;
    assigned = window;
    EXPECT_EQ(copy.size(), 2U);
    EXPECT_EQ(assigned.offset, 4U);
    EXPECT_EQ(assigned.limit, 2U);
    window.front() = 99;
    EXPECT_EQ(copy.front(), 99);
    EXPECT_EQ(assigned.front(), 99);
    EXPECT_EQ(window.use_count(), 3U);
}

TEST(Window, WindowsOfDifferentElementsOutliveTheReader) {
    const ulk_test::temporary_folder_t folder;
    const std::string file = folder.write("a.bin", std::string("head\1\0\0\0\2\0\0\0pixels", 18));
    word_window_t words;
    window_t pixels;
    {
        window_t reader;
        ASSERT_TRUE(reader.allocate(0, file.c_str(), 0));
        words = word_window_t(reader, 4, 2);
        pixels = window_t(reader, 12);
        EXPECT_EQ(reader.use_count(), 3U);
    }
    EXPECT_EQ(words.size(), 2U);
    EXPECT_EQ(words.at(0), 1U);
    EXPECT_EQ(words.at(1), 2U);
    EXPECT_EQ(text(pixels), "pixels");
    EXPECT_EQ(words.use_count(), 2U);
}

TEST(Window, AllocateShowsTheWholeBlock) {
    window_t window = counting_window(10);
    window.offset = 4;
    window.limit = 2;
    ASSERT_TRUE(window.allocate(20));
    EXPECT_EQ(window.offset, 0U);
    EXPECT_EQ(window.size(), 20U);
}

TEST(Window, ReallocateClearsTheLimitAndKeepsTheOffset) {
    window_t window = counting_window(10);
    window.offset = 4;
    window.limit = 2;
    ASSERT_TRUE(window.reallocate(8));
    EXPECT_EQ(window.offset, 4U);
    EXPECT_EQ(window.size(), 4U);
    EXPECT_EQ(window.front(), 4);
}

TEST(Window, DeallocateForgetsOffsetAndLimit) {
    window_t window = counting_window(10);
    window.offset = 4;
    window.limit = 2;
    window.deallocate();
    EXPECT_TRUE(window.empty());
    EXPECT_EQ(window.size(), 0U);
    EXPECT_EQ(window.offset, 0U);
    EXPECT_EQ(window.limit, window_t::no_limit);
}
