#include "utils/text/numbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <locale>
#include <random>
#include <string>
#include <vector>

using libutils::append_number;
using libutils::parse_bool;
using libutils::parse_double;
using libutils::parse_uint;

namespace {

template <class T>
std::string appended(T value) {
    std::string out = "<";
    append_number(out, value);
    return out.substr(1);
}

std::string scientific(float value) {
    std::string out = "<";
    libutils::append_scientific(out, value);
    return out.substr(1);
}

std::string printed(double value) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%g", value);
    return buffer;
}

/// The test process runs in the C locale, where the library's own function is the reference.
void expect_as_strtod(const std::string& text) {
    char* expected_end = nullptr;
    const double expected = std::strtod(text.c_str(), &expected_end);
    const char* end = nullptr;
    const double value = parse_double(text.c_str(), &end);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(expected)) << text;
    EXPECT_EQ(end - text.c_str(), expected_end - text.c_str()) << text;
}

void expect_as_strtoul(const std::string& text) {
    char* expected_end = nullptr;
    const unsigned long expected = std::strtoul(text.c_str(), &expected_end, 0);
    const char* end = nullptr;
    const std::uint32_t value = parse_uint(text.c_str(), &end);
    EXPECT_EQ(value, static_cast<std::uint32_t>(expected)) << text;
    EXPECT_EQ(end - text.c_str(), expected_end - text.c_str()) << text;
}

/// A facet with a decimal comma and grouped thousands, as the global C++ locale of a German user has it.
class comma_facet : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

class comma_locale {
  public:
    comma_locale() : original(std::locale::global(std::locale(std::locale(), new comma_facet))) {}
    ~comma_locale() { std::locale::global(original); }

  private:
    std::locale original;
};

}  // namespace

TEST(ParseDouble, ReadsWhatStrtodReads) {
    const std::vector<std::string> texts = {"",
                                            "0",
                                            "-0",
                                            "+0",
                                            "1",
                                            "1.5",
                                            "-1.5",
                                            "+1.5",
                                            ".5",
                                            "-.5",
                                            "5.",
                                            ".",
                                            "-",
                                            "+-1",
                                            "1e5",
                                            "1E5",
                                            "1e+5",
                                            "1e-5",
                                            "1e",
                                            "1e+",
                                            "1ex",
                                            "1.e3",
                                            "1..2",
                                            "0.1",
                                            "0.3333333",
                                            "123456789",
                                            "1e22",
                                            "1e23",
                                            "1e-22",
                                            "1e-23",
                                            "1e308",
                                            "1e309",
                                            "-1e309",
                                            "1e-320",
                                            "1e-400",
                                            "-1e-400",
                                            "4.9e-324",
                                            "2.4e-324",
                                            "0e999999",
                                            "1e999999",
                                            "1e-99999999",
                                            "nan",
                                            "-nan",
                                            "NAN",
                                            "nan(123)",
                                            "nan(x_1)z",
                                            "nan(",
                                            "inf",
                                            "-inf",
                                            "INFINITY",
                                            "infinit",
                                            "infinity1",
                                            "in",
                                            "0x10",
                                            "0X1.8p3",
                                            "-0x1p-2",
                                            "0x",
                                            "0xg",
                                            "0x.8",
                                            "0x1p",
                                            " 1",
                                            "\t\n\v\f\r1",
                                            "  -2.5,3",
                                            "  x",
                                            "1,5",
                                            "1 2",
                                            "1\r",
                                            "1.5abc",
                                            "00012",
                                            "0.00000",
                                            "1_000",
                                            "9007199254740992",
                                            "9007199254740993",
                                            "9007199254740993.0",
                                            "18446744073709551615",
                                            "18446744073709551616",
                                            "99999999999999999999999",
                                            "0.000000000000000000000000000000001",
                                            "2.2250738585072011e-308",
                                            "2.2250738585072014e-308",
                                            "1.7976931348623157e308",
                                            "1.7976931348623159e308",
                                            "8.41e+21",
                                            "0.1000000000000000055511151231257827021181583404541015625",
                                            "0.10000000000000001249000902703301107976585626602172851562501",
                                            "\xa0"
                                            "1",
                                            "e5",
                                            "-e5",
                                            "1e5.5",
                                            "\xef\xbc\x91"};
    for (const std::string& text : texts)
        expect_as_strtod(text);
}

TEST(ParseDouble, AgreesWithStrtodOnRandomNumbers) {
    std::mt19937_64 random(1);
    char text[128];
    for (int i = 0; i < 30000; ++i) {
        const double value = std::bit_cast<double>(random());
        if (!std::isfinite(value))
            continue;
        std::snprintf(text, sizeof text, "%.*g", static_cast<int>(1 + random() % 20), value);
        expect_as_strtod(text);
        std::snprintf(text, sizeof text, "%.*f", static_cast<int>(random() % 12),
                      static_cast<double>(random() % 2000000) / 1000 - 1000);
        expect_as_strtod(text);
        std::snprintf(
            text, sizeof text, "%llu.%llue%d", static_cast<unsigned long long>(random() >> random() % 64),
            static_cast<unsigned long long>(random() >> random() % 64), static_cast<int>(random() % 60) - 30);
        expect_as_strtod(text);
    }
}

TEST(ParseDouble, AgreesWithStrtodOnRandomCharacters) {
    std::mt19937 random(2);
    const std::string characters = "0123456789..eE+-xX nafi\t,";
    for (int i = 0; i < 100000; ++i) {
        std::string text;
        for (std::size_t length = random() % 9; length > 0; --length)
            text += characters[random() % characters.size()];
        expect_as_strtod(text);
    }
}

TEST(ParseDouble, ExponentBeyondAnIntegerMeetsAnEvenLongerFraction) {
    const std::string fraction = "0." + std::string(100005, '0') + "1";
    expect_as_strtod(fraction + "e100000");
    expect_as_strtod(fraction + "e100006");
    expect_as_strtod(fraction + "e10000100");
    expect_as_strtod("0." + std::string(1009, '0') + "1e1000");
    expect_as_strtod("1e99999999999999999999999");
    expect_as_strtod(std::string(5000, '9') + "e-4990");
}

TEST(ParseDouble, EndMayBeNull) {
    EXPECT_EQ(parse_double("2.5", nullptr), 2.5);
    EXPECT_EQ(parse_double("0x10", nullptr), 16);
}

TEST(ParseDouble, IsFreeOfTheGlobalLocale) {
    const comma_locale guard;
    const char* end = nullptr;
    const char* text = "1.5,2";
    EXPECT_EQ(parse_double(text, &end), 1.5);
    EXPECT_STREQ(end, ",2");
}

TEST(ParseUint, ReadsWhatStrtoulReadsCutTo32Bits) {
    const std::vector<std::string> texts = {"",
                                            "0",
                                            "1",
                                            "-1",
                                            "+1",
                                            "- 1",
                                            "--1",
                                            "4294967295",
                                            "4294967296",
                                            "4294967301",
                                            "-5",
                                            "0x10",
                                            "0XfF",
                                            "0x",
                                            "0xg",
                                            "010",
                                            "08",
                                            "00",
                                            "0",
                                            "00x1",
                                            "-010",
                                            "-0x1",
                                            " 7",
                                            "\t\n7",
                                            "\v\f7",
                                            "\r-7",
                                            " x",
                                            "12,3",
                                            "1e5",
                                            "1.5",
                                            "true",
                                            "0-",
                                            "+",
                                            "-",
                                            "a",
                                            "0,1",
                                            "\xa0"
                                            "1",
                                            "9999999999999999999",
                                            "10000000000000000000",
                                            "18446744073709551615",
                                            "18446744073709551616",
                                            "-18446744073709551615",
                                            "-18446744073709551616",
                                            "99999999999999999999999",
                                            "0000000000000000000000012"};
    for (const std::string& text : texts)
        expect_as_strtoul(text);
}

TEST(ParseUint, AgreesWithStrtoulOnRandomCharacters) {
    std::mt19937 random(3);
    const std::string characters = "0123456789+-xa ,";
    for (int i = 0; i < 100000; ++i) {
        std::string text;
        for (std::size_t length = random() % 7; length > 0; --length)
            text += characters[random() % characters.size()];
        expect_as_strtoul(text);
    }
}

TEST(ParseUint, MinusOneIsTheRestartMark) {
    EXPECT_EQ(parse_uint("-1", nullptr), 4294967295U);
}

TEST(ParseUint, SaturatesBeyond64BitsBeforeTheCut) {
    EXPECT_EQ(parse_uint("18446744073709551616", nullptr), 4294967295U);
    EXPECT_EQ(parse_uint("4294967296", nullptr), 0U);
}

TEST(ParseBool, WordOrNumber) {
    const std::vector<std::pair<const char*, bool>> rows = {
        {"true", true},  {"truest", true}, {"true,false", true}, {"tru", false},
        {"True", false}, {" true", false}, {"false", false},     {"0", false},
        {"1", true},     {"2", true},      {" 1", true},         {"-1", true},
        {"0x0", false},  {"0x10", true},   {"", false},          {"4294967296", true}};
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(parse_bool(text), expected) << text;
}

TEST(AppendNumber, KnownForms) {
    EXPECT_EQ(appended(1.0F / 3), "0.333333");
    EXPECT_EQ(appended(1e6F), "1e+06");
    EXPECT_EQ(appended(999999.0F), "999999");
    EXPECT_EQ(appended(999999.5F), "1e+06");
    EXPECT_EQ(appended(0.0F), "0");
    EXPECT_EQ(appended(-0.0F), "-0");
    EXPECT_EQ(appended(-1.0F), "-1");
    EXPECT_EQ(appended(100.0F), "100");
    EXPECT_EQ(appended(0.5F), "0.5");
    EXPECT_EQ(appended(1e-5F), "1e-05");
    EXPECT_EQ(appended(std::numeric_limits<float>::infinity()), "inf");
    EXPECT_EQ(appended(-std::numeric_limits<float>::infinity()), "-inf");
    EXPECT_EQ(appended(std::numeric_limits<float>::quiet_NaN()), "nan");
    EXPECT_EQ(appended(std::copysign(std::numeric_limits<float>::quiet_NaN(), -1.0F)), "-nan");
    EXPECT_EQ(appended(std::copysign(std::numeric_limits<double>::quiet_NaN(), -1.0)), "-nan");
    EXPECT_EQ(appended(1e300), "1e+300");
    EXPECT_EQ(appended(0.1), "0.1");
}

TEST(AppendNumber, Integers) {
    EXPECT_EQ(appended(std::uint64_t{18446744073709551615U}), "18446744073709551615");
    EXPECT_EQ(appended(std::uint32_t{4294967295U}), "4294967295");
    EXPECT_EQ(appended(-1), "-1");
    EXPECT_EQ(appended(0), "0");
}

TEST(AppendNumber, AgreesWithPrintfOnRandomBits) {
    std::mt19937_64 random(4);
    for (int i = 0; i < 200000; ++i) {
        const float single = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        ASSERT_EQ(appended(single), printed(single));
        const double wide = std::bit_cast<double>(random());
        ASSERT_EQ(appended(wide), printed(wide));
    }
}

TEST(AppendNumber, AgreesWithPrintfInTheRangeWithoutExponent) {
    std::mt19937_64 random(5);
    const auto low = std::bit_cast<std::uint32_t>(9e-5F);
    const auto high = std::bit_cast<std::uint32_t>(1.1e6F);
    for (int i = 0; i < 500000; ++i) {
        const auto bits = static_cast<std::uint32_t>(low + random() % (high - low));
        const float value = std::bit_cast<float>(bits);
        ASSERT_EQ(appended(value), printed(value));
        ASSERT_EQ(appended(-value), printed(-value));
    }
}

TEST(AppendNumber, AgreesWithPrintfAroundEveryPowerOfTen) {
    for (int exponent = -12; exponent <= 12; ++exponent) {
        const auto centre = std::bit_cast<std::uint32_t>(static_cast<float>(std::pow(10.0, exponent)));
        for (std::uint32_t bits = centre - 2000; bits != centre + 2000; ++bits) {
            const float value = std::bit_cast<float>(bits);
            ASSERT_EQ(appended(value), printed(value));
        }
    }
}

TEST(AppendNumber, TiesGoToTheEvenDigit) {
    for (int whole = 0; whole < 1000; ++whole) {
        for (int part = 1; part < 1024; part += 2) {
            const float value = static_cast<float>(whole) + static_cast<float>(part) / 1024;
            ASSERT_EQ(appended(value), printed(value));
        }
    }
}

TEST(AppendScientific, SixDigitsBehindThePointAndAnExponent) {
    EXPECT_EQ(scientific(1.0F / 3), "3.333333e-01");
    EXPECT_EQ(scientific(0.0F), "0.000000e+00");
    EXPECT_EQ(scientific(-0.0F), "-0.000000e+00");
    EXPECT_EQ(scientific(-1234567.5F), "-1.234568e+06");
    EXPECT_EQ(scientific(std::numeric_limits<float>::max()), "3.402823e+38");
    EXPECT_EQ(scientific(std::numeric_limits<float>::denorm_min()), "1.401298e-45");
    EXPECT_EQ(scientific(INFINITY), "inf");
    EXPECT_EQ(scientific(-INFINITY), "-inf");
    EXPECT_EQ(scientific(std::numeric_limits<float>::quiet_NaN()), "nan");
    EXPECT_EQ(scientific(std::copysign(std::numeric_limits<float>::quiet_NaN(), -1.0F)), "-nan");
}

TEST(AppendScientific, AgreesWithPrintfOnRandomBits) {
    std::mt19937 random(6);
    for (int i = 0; i < 200000; ++i) {
        const float value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        char expected[64];
        std::snprintf(expected, sizeof expected, "%e", static_cast<double>(value));
        ASSERT_EQ(scientific(value), expected);
    }
}

TEST(AppendScientific, IsFreeOfTheGlobalLocale) {
    const comma_locale guard;
    EXPECT_EQ(scientific(1234.5F), "1.234500e+03");
}

TEST(AppendNumber, IsFreeOfTheGlobalLocale) {
    const comma_locale guard;
    EXPECT_EQ(appended(1234.5F), "1234.5");
    EXPECT_EQ(appended(1234.56789), "1234.57");
    EXPECT_EQ(appended(1234567U), "1234567");
}
