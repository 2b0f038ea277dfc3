#include "utils/text/typed_number.h"

#include <gtest/gtest.h>

#include <iostream>
#include <string>

#include "support/captured_stream.h"
#include "support/locale_scope.h"

using libutils::parse_typed_number;

namespace {

struct row_t {
    const char* text;
    double value;
};

class TypedNumber : public testing::Test {
  protected:
    ulk_test::captured_stream errors{std::cerr};
};

TEST_F(TypedNumber, PlainNumbersAreReadInDoublePrecisionWithoutAWord) {
    for (const auto& [text, value] : {row_t{"0.1", 0.1},
                                      {"+5", 5},
                                      {"-2.5", -2.5},
                                      {"1e-3", 1e-3},
                                      {"-.5", -0.5},
                                      {"7.", 7},
                                      {"0x10", 16},
                                      {" 1.25 ", 1.25},
                                      {"1e300", 1e300}})
        EXPECT_EQ(parse_typed_number(text), value) << text;
    EXPECT_EQ(errors.text(), "");
}

TEST_F(TypedNumber, SumsAreReadAsInFiles) {
    for (const auto& [text, value] : {row_t{"2/3", 2.0F / 3.0F},
                                      {"1 + 2 * 3", 7},
                                      {"(1+2)/4", 0.75},
                                      {"- 5", -5},
                                      {"2*(3)+4", 14},
                                      {"1 2", 3},
                                      {"1e-3*2 ", 1e-3F * 2}})
        EXPECT_EQ(parse_typed_number(text), value) << text;
    EXPECT_EQ(errors.text(), "");
}

TEST_F(TypedNumber, WhatCanNotBeReadIsNoNumber) {
    for (const char* text :
         {"",   " ", "-",  "+",   "abc", "1,5", "1,",   ",1",  "1.5mm", "2/",     "*2", "2**3",
          "1+", "(", "()", "1/0", "0/0", "inf", "-inf", "nan", "1e999", "1.2.3x", "１"})
        EXPECT_EQ(parse_typed_number(text), std::nullopt) << text;
}

TEST_F(TypedNumber, FaultsOfSumsAreTold) {
    EXPECT_EQ(parse_typed_number("2*"), std::nullopt);
    EXPECT_EQ(errors.text(), "last '*' detect.\n");
}

TEST_F(TypedNumber, ThePointIsTheDecimalSignInEveryLocale) {
    for (const char* locale : ulk_test::file_locales) {
        const ulk_test::locale_scope_t scope(locale);
        if (!scope.is_set())
            continue;
        EXPECT_EQ(parse_typed_number("1.5"), 1.5) << locale;
        EXPECT_EQ(parse_typed_number("1.5*2"), 3) << locale;
        EXPECT_EQ(parse_typed_number("1,5"), std::nullopt) << locale;
    }
}

}  // namespace
