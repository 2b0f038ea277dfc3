#include "utils/text/evalnumber.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <iostream>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "support/captured_stream.h"
#include "unit/utils/text/evalnumber_reference.h"

using libutils::evalgroup;
using libutils::evalnumber;
using libutils::evalsum;
using libutils::token_t;
using kind_t = libutils::token_t::kind_t;

namespace {

struct outcome_t {
    float value = 0;
    std::size_t end = 0;
    std::string messages;
};

outcome_t evaluate(const std::string& text) {
    const ulk_test::captured_stream errors(std::cerr);
    const char* end = nullptr;
    outcome_t outcome;
    outcome.value = evalnumber(text.c_str(), &end);
    outcome.end = static_cast<std::size_t>(end - text.c_str());
    outcome.messages = errors.text();
    return outcome;
}

/// The value of a text that is evaluated to its end without a message.
float value_of(const std::string& text) {
    const outcome_t outcome = evaluate(text);
    EXPECT_EQ(outcome.messages, "") << text;
    EXPECT_EQ(outcome.end, text.size()) << text;
    return outcome.value;
}

bool same_bits(float a, float b) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}

void expect_as_reference(const std::string& text) {
    evalnumber_reference::evaluator reference;
    const char* end = nullptr;
    const float value = reference.evalnumber(text.c_str(), &end);
    const outcome_t outcome = evaluate(text);
    ASSERT_TRUE(same_bits(outcome.value, value)) << '"' << text << "\" " << outcome.value << ' ' << value;
    ASSERT_EQ(outcome.end, static_cast<std::size_t>(end - text.c_str())) << '"' << text << '"';
    ASSERT_EQ(outcome.messages, reference.messages.str()) << '"' << text << '"';
}

constexpr float infinity = std::numeric_limits<float>::infinity();

}  // namespace

TEST(EvalNumber, Values) {
    const std::vector<std::pair<const char*, float>> rows = {
        {"0.5", 0.5F},
        {"1e5", 1e5F},
        {"1e-3", 1e-3F},
        {"0x10", 16},
        {"1.", 1},
        {"0.1", 0.1F},
        {"16777217", 16777216},
        {"1e39", infinity},
        {"2*(1+3))", 8},
        {"1+2*3", 7},
        {"8/2/2", 2},
        {"2*3/4", 1.5F},
        {"1-2-3", -4},
        {"1/3", 1.0F / 3},
        {"-3", -3},
        {"+3", 3},
        {"- 3", -3},
        {" \t3 \t", 3},
        {"2*-3", -6},
        {"6/-3", -2},
        {"1 2", 3},
        {"2(3)", 5},
        {"1+-2", 3},
        {"1--2", 3},
        {"(1+2)*3", 9},
        {"-(1+2)*3", -9},
        {"2*-(3)", -6},
        {"12/-(3)", -4},
        {"2*-(3)+4", -2},
        {"2*(3))", 6},
        {"2*(3)+4)", 14},
        {"12/(3))", 4},
        {"((1+2)*3)", 9},
        {"()", 0},
        {"()5", 5},
        {"3*()", 0},
        {"1)+5", 1},
        {"1+2)*100", 3},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(value_of(text), expected) << text;
}

TEST(EvalNumber, DivisionByZeroIsNoError) {
    EXPECT_EQ(value_of("1/0"), infinity);
    EXPECT_EQ(value_of("-1/0"), -infinity);
    EXPECT_TRUE(std::isnan(value_of("0/0")));
}

TEST(EvalNumber, SumsBeginAtPositiveZero) {
    EXPECT_TRUE(same_bits(value_of("-0"), 0.0F));
    EXPECT_TRUE(same_bits(value_of("+0"), 0.0F));
    EXPECT_TRUE(same_bits(value_of("0"), 0.0F));
    EXPECT_TRUE(same_bits(value_of("0*-1"), 0.0F));
}

TEST(EvalNumber, ArithmeticIsInSinglePrecision) {
    EXPECT_EQ(value_of("16777216+1"), 16777216);
    EXPECT_EQ(value_of("0.1*3"), 0.1F * 3.0F);
    EXPECT_EQ(value_of("1e38*10/10"), infinity);
}

TEST(EvalNumber, EmptyFieldIsZeroAtItsStart) {
    for (const char* text : {"", ",1", "\r1"}) {
        const outcome_t outcome = evaluate(text);
        EXPECT_EQ(outcome.value, 0) << text;
        EXPECT_EQ(outcome.end, 0U) << text;
        EXPECT_EQ(outcome.messages, "") << text;
    }
}

TEST(EvalNumber, FieldEndsAtACommaOrACarriageReturn) {
    for (const char* text : {"1,2", "1\r\n", "1,", "1\r"}) {
        const outcome_t outcome = evaluate(text);
        EXPECT_EQ(outcome.value, 1) << text;
        EXPECT_EQ(outcome.end, 1U) << text;
        EXPECT_EQ(outcome.messages, "") << text;
    }
    const outcome_t sum = evaluate("(1+2)*3,4");
    EXPECT_EQ(sum.value, 9);
    EXPECT_EQ(sum.end, 7U);
}

TEST(EvalNumber, BlanksBeforeTheEndOfAFieldAreSkipped) {
    const outcome_t outcome = evaluate(" 1 + 2 \t,5");
    EXPECT_EQ(outcome.value, 3);
    EXPECT_EQ(outcome.end, 8U);
    EXPECT_EQ(outcome.messages, "");
    EXPECT_EQ(evaluate("  ,5").end, 2U);
    EXPECT_EQ(evaluate("  ,5").value, 0);
}

TEST(EvalNumber, EndMayBeNull) {
    EXPECT_EQ(evalnumber("7,8", nullptr), 7);
    EXPECT_EQ(evalnumber("7+1,8", nullptr), 8);
}

TEST(EvalNumber, BalancedParenthesisBehindAnOperatorEndsWithTheTokens) {
    EXPECT_EQ(value_of("2*(3)"), 6);
    EXPECT_EQ(value_of("2*(3)+4"), 14);
    EXPECT_EQ(value_of("12/(3)"), 4);
    EXPECT_EQ(value_of("12/(3)+1"), 3);
    EXPECT_EQ(value_of("1+2*(3)"), 7);
    EXPECT_EQ(value_of("2*(2*(2*(2)))"), 16);
    EXPECT_EQ(value_of("2*(3)*(4)"), 24);
    EXPECT_EQ(value_of("(2*(3))+1"), 7);
}

TEST(EvalNumber, GroupThatIsNeverClosedEndsWithTheTokens) {
    EXPECT_EQ(value_of("(1"), 1);
    EXPECT_EQ(value_of("(1+2"), 3);
    EXPECT_EQ(value_of("((((1"), 1);
    EXPECT_EQ(value_of("2-(1+2"), -1);
    EXPECT_EQ(value_of("2*-(3"), -6);
    EXPECT_EQ(value_of("("), 0);
    EXPECT_EQ(value_of("2+("), 2);
    EXPECT_EQ(value_of("2*("), 0);
    EXPECT_EQ(value_of("2*-("), 0);
}

TEST(EvalNumber, Messages) {
    struct row_t {
        const char* text;
        float value;
        std::size_t end;
        const char* messages;
    };
    const std::vector<row_t> rows = {
        {"2*", 2, 2, "last '*' detect.\n"},
        {"2/", 2, 2, "last '/' detect.\n"},
        {"*2", 0, 2, "beginning '*' detect.\n"},
        {"/2", 0, 2, "beginning '/' detect.\n"},
        {"2**3", 2, 4, "*: right operand is not a value.\n"},
        {"2/*3", 2, 4, "*: right operand is not a value.\n"},
        {"2*+3", 2, 4, "*: right operand is not a value.\n"},
        {"2*)", 2, 3, "*: right operand is not a value.\n"},
        {"2*--3", 2, 5, "-: right operand is not a value.\n"},
        {"2*-)", 2, 4, "-: right operand is not a value.\n"},
        {"2/-*3", 2, 5, "-: right operand is not a value.\n"},
        {"2*-", 2, 3, "last '-' detect.\n"},
        {"2/-", 2, 3, "last '-' detect.\n"},
        {"3+", 3, 2, "last '+' detect.\n"},
        {"3-", 3, 2, "last '-' detect.\n"},
        {"+", 0, 1, "last '+' detect.\n"},
        {"-", 0, 1, "last '-' detect.\n"},
        {"3+-", 3, 3, ""},
        {"2+*3", 2, 4, "last '+' detect.\n"},
        {".5", 0, 0, "46 \n.: warning: invalid char detect.\n"},
        {"1e", 1, 1, "101 \ne: warning: invalid char detect.\n"},
        {"-1e,", -1, 2, "101 \ne: warning: invalid char detect.\n"},
        {"0x", 0, 1, "120 \nx: warning: invalid char detect.\n"},
        {"nan", 0, 0, "110 \nn: warning: invalid char detect.\n"},
        {"1+2a,3", 3, 3, "97 \na: warning: invalid char detect.\n"},
        {"1\n", 1, 1, "10 \n\n: warning: invalid char detect.\n"},
        {"\xe3", 0, 0, "-29 \n\xe3: warning: invalid char detect.\n"},
        {"2*a", 2, 2, "97 \na: warning: invalid char detect.\nlast '*' detect.\n"},
        {"(2*)+5", 7, 6, "*: right operand is not a value.\n"},
        {"(2*+3)+5", 5, 8, "*: right operand is not a value.\n"},
        {"(*2)+5", 2, 6, "beginning '*' detect.\n"},
        {"(2+)+5", 7, 6, "last '+' detect.\n"},
        {"(2*-+1)", 3, 7, "-: right operand is not a value.\n"},
    };
    for (const row_t& row : rows) {
        const outcome_t outcome = evaluate(row.text);
        EXPECT_EQ(outcome.value, row.value) << row.text;
        EXPECT_EQ(outcome.end, row.end) << row.text;
        EXPECT_EQ(outcome.messages, row.messages) << row.text;
    }
}

TEST(EvalNumber, DeepNestingIsBoundedByTheTextAlone) {
    constexpr std::size_t depth = 200'000;
    EXPECT_EQ(value_of(std::string(depth, '(') + "7" + std::string(depth, ')')), 7);
    EXPECT_EQ(value_of(std::string(depth, '(') + "7"), 7);
    std::string factors = "1";
    for (std::size_t i = 0; i < depth; ++i)
        factors += "*(1";
    EXPECT_EQ(value_of(factors), 1);
    std::string negated = "1";
    for (std::size_t i = 0; i < depth; ++i)
        negated += "*-(1";
    EXPECT_EQ(value_of(negated), 1);
}

TEST(EvalNumber, AgreesWithThePlainEvaluatorOnRandomFields) {
    std::mt19937 random(1);
    const std::array<const char*, 22> pieces = {"0", "1", "2",  "3.5", "0x1f", "1e3", "7", "(",
                                                "(", ")", ")",  "*",   "*",    "/",   "+", "-",
                                                "-", " ", "\t", ",",   "\r",   "."};
    for (int i = 0; i < 100000; ++i) {
        std::string text;
        for (std::size_t count = random() % 14; count > 0; --count) {
            // The last three end the field, so they are drawn less often.
            const std::size_t choices = random() % 8 == 0 ? pieces.size() : pieces.size() - 3;
            text += pieces[random() % choices];
        }
        expect_as_reference(text);
        if (HasFatalFailure())
            return;
    }
}

TEST(EvalNumber, AgreesWithThePlainEvaluatorOnSingleNumbers) {
    std::mt19937_64 random(2);
    const std::array<const char*, 8> before = {"", "", "-", "+", " ", " -", "- ", "--"};
    const std::array<const char*, 6> after = {"", ",1", "\r", " ,", "x", "+1"};
    char digits[64];
    for (int i = 0; i < 30000; ++i) {
        const float value = std::fabs(std::bit_cast<float>(static_cast<std::uint32_t>(random())));
        std::snprintf(digits, sizeof digits, "%.*g", static_cast<int>(1 + random() % 10),
                      static_cast<double>(value));
        std::string text = before[random() % before.size()];
        text += digits;
        text += after[random() % after.size()];
        expect_as_reference(text);
        if (HasFatalFailure())
            return;
    }
}

TEST(EvalGroup, StopsOnItsClosingParenthesis) {
    const std::array<token_t, 4> tokens = {
        {{kind_t::value, 2}, {kind_t::plus}, {kind_t::value, 3}, {kind_t::close}}};
    const token_t* cursor = tokens.data();
    EXPECT_EQ(evalgroup(cursor, tokens.data() + tokens.size()), 5);
    EXPECT_EQ(cursor, tokens.data() + 3);
}

TEST(EvalGroup, StopsAtTheEndOfTheTokens) {
    const std::array<token_t, 3> tokens = {{{kind_t::value, 2}, {kind_t::times}, {kind_t::value, 3}}};
    const token_t* cursor = tokens.data();
    EXPECT_EQ(evalgroup(cursor, tokens.data() + tokens.size()), 6);
    EXPECT_EQ(cursor, tokens.data() + tokens.size());
}

TEST(EvalSum, NothingIsZero) {
    EXPECT_EQ(evalsum({}), 0);
}

TEST(EvalSum, OperatorTakesTheNextTermOfAnyKind) {
    const std::array<token_t, 4> terms = {
        {{kind_t::value, 1}, {kind_t::plus}, {kind_t::minus, 10}, {kind_t::value, 100}}};
    EXPECT_EQ(evalsum(terms), 111);
}

TEST(EvalSum, OtherKindEndsTheSumWithAMessage) {
    const std::array<token_t, 3> terms = {{{kind_t::value, 1}, {kind_t::times}, {kind_t::value, 100}}};
    const ulk_test::captured_stream errors(std::cerr);
    EXPECT_EQ(evalsum(terms), 1);
    EXPECT_EQ(errors.text(), "3: op detect.\n");
}
