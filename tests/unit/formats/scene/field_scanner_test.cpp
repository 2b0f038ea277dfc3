#include "formats/scene/field_scanner.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iostream>
#include <string>
#include <vector>

#include "support/captured_stream.h"
#include "support/locale_scope.h"

using ulk3d::field_scanner;

namespace {

std::vector<float> exprs(const std::string& text, std::size_t count = 3) {
    const ulk_test::captured_stream warnings(std::cerr);
    field_scanner fields(text.c_str());
    std::vector<float> values;
    while (values.size() < count)
        values.push_back(fields.expr());
    return values;
}

std::vector<float> dbls(const std::string& text, std::size_t count = 3) {
    field_scanner fields(text.c_str());
    std::vector<float> values;
    while (values.size() < count)
        values.push_back(fields.dbl());
    return values;
}

std::vector<std::uint32_t> uints(const std::string& text, std::size_t count = 4) {
    field_scanner fields(text.c_str());
    std::vector<std::uint32_t> values;
    while (values.size() < count)
        values.push_back(fields.uint());
    return values;
}

using floats = std::vector<float>;
using words = std::vector<std::uint32_t>;

}  // namespace

TEST(FieldScanner, ExpressionsAreEvaluatedFieldByField) {
    EXPECT_EQ(exprs("1+1,2*3,-(1)"), (floats{2, 6, -1}));
}

TEST(FieldScanner, PlainNumbersTakeNoExpression) {
    EXPECT_EQ(dbls("1+1,2*3,-(1)"), (floats{1, 1, 2}));
    EXPECT_EQ(dbls("1/2", 1), (floats{1}));
}

TEST(FieldScanner, NotANumberIsForPlainNumbersOnly) {
    EXPECT_EQ(exprs("nan,0,0"), (floats{0, 0, 0}));
    const floats values = dbls("nan,inf,-inf");
    EXPECT_TRUE(std::isnan(values[0]));
    EXPECT_EQ(values[1], INFINITY);
    EXPECT_EQ(values[2], -INFINITY);
}

TEST(FieldScanner, ABadExpressionIsWalkedOneCharacterAtATime) {
    const ulk_test::captured_stream warnings(std::cerr);
    field_scanner fields("nan,0,0");
    EXPECT_EQ(fields.expr(), 0);
    EXPECT_EQ(fields.expr(), 0);
    EXPECT_EQ(fields.expr(), 0);
    EXPECT_EQ(warnings.text(),
              "110 \nn: warning: invalid char detect.\n97 \na: warning: invalid char detect.\n"
              "110 \nn: warning: invalid char detect.\n");
}

TEST(FieldScanner, SeparatorsAreSteppedOverWhateverTheyAre) {
    EXPECT_EQ(uints("1;2x3 4"), (words{1, 2, 3, 4}));
    EXPECT_EQ(dbls("1 2:3"), (floats{1, 2, 3}));
}

TEST(FieldScanner, MissingFieldsAreZero) {
    EXPECT_EQ(exprs("5"), (floats{5, 0, 0}));
    EXPECT_EQ(exprs("5\r"), (floats{5, 0, 0}));
    EXPECT_EQ(exprs(""), (floats{0, 0, 0}));
    EXPECT_EQ(exprs("\r"), (floats{0, 0, 0}));
    EXPECT_EQ(exprs("1,2"), (floats{1, 2, 0}));
    EXPECT_EQ(dbls("1,2"), (floats{1, 2, 0}));
    EXPECT_EQ(dbls(""), (floats{0, 0, 0}));
    EXPECT_EQ(uints("7"), (words{7, 0, 0, 0}));
    EXPECT_EQ(uints("7,\r"), (words{7, 0, 0, 0}));
}

TEST(FieldScanner, NeverStepsPastTheTerminator) {
    const std::string text("1,2\0,3,4", 8);
    EXPECT_EQ(uints(text), (words{1, 2, 0, 0}));
    EXPECT_EQ(dbls(text, 4), (floats{1, 2, 0, 0}));
    EXPECT_EQ(exprs(text, 4), (floats{1, 2, 0, 0}));
}

TEST(FieldScanner, EmptyFieldsAreZero) {
    EXPECT_EQ(exprs(",1,2"), (floats{0, 1, 2}));
    EXPECT_EQ(dbls(",,2"), (floats{0, 0, 2}));
    EXPECT_EQ(uints(",1,,2"), (words{0, 1, 0, 2}));
}

TEST(FieldScanner, UnsignedIntegersHaveTheFormsOfTheCLibrary) {
    EXPECT_EQ(uints("-1,0xFFFFFFFF,010,0x10"), (words{4294967295U, 4294967295U, 8, 16}));
    EXPECT_EQ(uints("4294967296,4294967297, 3,-2"), (words{0, 1, 3, 4294967294U}));
}

TEST(FieldScanner, NumbersDoNotDependOnTheLocale) {
    for (const char* name : ulk_test::file_locales) {
        const ulk_test::locale_scope_t scope(name);
        if (!scope.is_set())
            continue;
        EXPECT_EQ(exprs("1.5,2.25,0.5+0.25"), (floats{1.5F, 2.25F, 0.75F})) << name;
        EXPECT_EQ(dbls("1.5,2.25,-0.75"), (floats{1.5F, 2.25F, -0.75F})) << name;
    }
}
