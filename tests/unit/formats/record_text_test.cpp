#include "formats/record_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iostream>
#include <limits>
#include <vector>

#include "support/captured_stream.h"
#include "support/locale_scope.h"

namespace {

using namespace ulk3d;
using ulk_test::captured_stream;

/// The second attribute, of two words, of vertices of five.
constexpr record_member_t middle{5, 2, 2};

std::vector<float> counting(std::size_t words) {
    std::vector<float> values(words);
    for (std::size_t i = 0; i < words; ++i)
        values[i] = static_cast<float>(i);
    return values;
}

TEST(RecordText, IsALineForEachVertexWithTheComponentsOfTheAttribute) {
    EXPECT_EQ(member_text(counting(15), middle), "2,3\n7,8\n12,13\n");
    EXPECT_EQ(member_text(counting(15), record_member_t{5, 0, 1}), "0\n5\n10\n");
}

TEST(RecordText, NumbersHaveSixSignificantDigits) {
    const std::vector<float> words{1.0F / 3, -0.0F, 1234567.0F, std::numeric_limits<float>::infinity()};
    EXPECT_EQ(member_text(words, record_member_t{4, 0, 4}), "0.333333,-0,1.23457e+06,inf\n");
}

TEST(RecordText, AnAttributeThatDoesNotExistIsEmpty) {
    std::vector<float> words = counting(15);
    EXPECT_EQ(member_text(words, record_member_t{}), "");
    store_member_text(words, record_member_t{}, "9,9\n9,9\n");
    EXPECT_EQ(words, counting(15));
}

TEST(RecordText, AVertexThatIsNotWholeIsNone) {
    EXPECT_EQ(member_text(counting(9), middle), "2,3\n");
}

TEST(RecordText, StoresTheAttributeAndNothingElse) {
    std::vector<float> words = counting(10);
    store_member_text(words, middle, "20,30\n70,80\n");
    EXPECT_EQ(words, (std::vector<float>{0, 1, 20, 30, 4, 5, 6, 70, 80, 9}));
    store_member_text(words, record_member_t{5, 4, 1}, "40\n90\n");
    EXPECT_EQ(words, (std::vector<float>{0, 1, 20, 30, 40, 5, 6, 70, 80, 90}));
}

TEST(RecordText, RoundsToSixDigitsWhenNothingIsEdited) {
    std::vector<float> words{1.0F / 3, 2.0F / 3};
    store_member_text(words, record_member_t{2, 0, 2}, member_text(words, record_member_t{2, 0, 2}));
    EXPECT_EQ(words, (std::vector<float>{0.333333F, 0.666667F}));
    EXPECT_NE(words[0], 1.0F / 3);
}

TEST(RecordText, ComponentsAreSums) {
    std::vector<float> words(3, 0);
    store_member_text(words, record_member_t{3, 0, 3}, "1/3,2*(1+3), 1 - 4 \n");
    EXPECT_EQ(words, (std::vector<float>{1.0F / 3, 8, -3}));
}

TEST(RecordText, VerticesBeyondTheLastLineStay) {
    for (const char* text : {"20,30\n", "20,30"}) {
        std::vector<float> words = counting(10);
        store_member_text(words, middle, text);
        EXPECT_EQ(words, (std::vector<float>{0, 1, 20, 30, 4, 5, 6, 7, 8, 9})) << text;
    }
}

TEST(RecordText, AnEmptyTextStoresNothing) {
    std::vector<float> words = counting(10);
    store_member_text(words, middle, "");
    EXPECT_EQ(words, counting(10));
}

TEST(RecordText, LinesBeyondTheLastVertexAreIgnored) {
    std::vector<float> words = counting(5);
    store_member_text(words, middle, "20,30\n70,80\nrubbish");
    EXPECT_EQ(words, (std::vector<float>{0, 1, 20, 30, 4}));
}

TEST(RecordText, WhatALineLacksIsZero) {
    std::vector<float> words = counting(15);
    store_member_text(words, middle, "\n20\n,5\n");
    EXPECT_EQ(words, (std::vector<float>{0, 1, 0, 0, 4, 5, 6, 20, 0, 9, 10, 11, 0, 5, 14}));
}

TEST(RecordText, TooManyNumbersOfALineAreIgnored) {
    std::vector<float> words = counting(10);
    store_member_text(words, middle, "1,2,3,4,5\n6,7\n");
    EXPECT_EQ(words, (std::vector<float>{0, 1, 1, 2, 4, 5, 6, 6, 7, 9}));
}

TEST(RecordText, GarbageIsToldAndTakesNoMoreThanItsLine) {
    std::vector<float> words = counting(10);
    captured_stream messages(std::cerr);
    store_member_text(words, middle, "x,y\n7,8\n");
    EXPECT_EQ(messages.text(), "120 \nx: warning: invalid char detect.\n");
    EXPECT_EQ(words, (std::vector<float>{0, 1, 0, 0, 4, 5, 6, 7, 8, 9}));
}

TEST(RecordText, IsTheSameInEveryLocale) {
    for (const char* name : ulk_test::file_locales) {
        const ulk_test::locale_scope_t scope(name);
        if (!scope.is_set())
            continue;
        std::vector<float> words(2, 0);
        store_member_text(words, record_member_t{2, 0, 2}, "1234.5,0.25\n");
        EXPECT_EQ(words, (std::vector<float>{1234.5F, 0.25F})) << name;
        EXPECT_EQ(member_text(words, record_member_t{2, 0, 2}), "1234.5,0.25\n") << name;
    }
}

TEST(IndexText, TakesDecimalHexadecimalAndOctalNumbers) {
    std::vector<std::uint32_t> indices(6, 99);
    store_index_text(indices, "12\n0x10\n010\n-1\n 7 \n4294967297\n");
    EXPECT_EQ(indices, (std::vector<std::uint32_t>{12, 16, 8, restart_mark, 7, 1}));
}

TEST(IndexText, WhatIsNoNumberIsZero) {
    std::vector<std::uint32_t> indices(3, 99);
    store_index_text(indices, "x\n\n5");
    EXPECT_EQ(indices, (std::vector<std::uint32_t>{0, 0, 5}));
}

TEST(IndexText, IndicesBeyondTheLastLineStay) {
    std::vector<std::uint32_t> indices{1, 2, 3};
    store_index_text(indices, "9\n");
    EXPECT_EQ(indices, (std::vector<std::uint32_t>{9, 2, 3}));
    store_index_text(indices, "4\n5\n6\n7\n8\n");
    EXPECT_EQ(indices, (std::vector<std::uint32_t>{4, 5, 6}));
}

}  // namespace
