#include "model/math/print.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <limits>
#include <locale>
#include <sstream>
#include <string>

#include "model/math/matrices.h"

namespace {

using namespace ulk3d;

template <class Record>
std::string text(const Record& record) {
    std::ostringstream os;
    os << record;
    return os.str();
}

/// A locale as German writes numbers, without need of an installed one.
struct german_numbers : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

const std::string identity_text =
    "mtx3w(\t1.000000, 0.000000, 0.000000, 0.000000,\n"
    "\t0.000000, 1.000000, 0.000000, 0.000000,\n"
    "\t0.000000, 0.000000, 1.000000, 0.000000,\n"
    "\t0.000000, 0.000000, 0.000000, 1.000000)";

TEST(Print, PositionsAndDirections) {
    EXPECT_EQ(text(pos3{1, -2.5F, 0.125F}), "pos3(1.000000, -2.500000, 0.125000)");
    EXPECT_EQ(text(dir3{1, -2.5F, 0.125F}), "dir3(1.000000, -2.500000, 0.125000)");
    EXPECT_EQ(text(pos2{1, -2.5F}), "pos2(1.000000, -2.500000)");
    EXPECT_EQ(text(dir2{1, -2.5F}), "dir2(1.000000, -2.500000)");
    EXPECT_EQ(text(pos2l{-1, 2147483647}), "pos2l(-1, 2147483647)");
    EXPECT_EQ(text(dir2l{7, -8}), "dir2l(7, -8)");
    EXPECT_EQ(text(vec3w{1, 2, 3, 4}), "vec3w(1.000000, 2.000000, 3.000000, 4.000000)");
}

TEST(Print, Rotations) {
    EXPECT_EQ(text(qua{1, 2, 3, 4}), "qua(1.000000, 2.000000, 3.000000, 4.000000)");
    EXPECT_EQ(text(rot3{90, {0, 1, 0}}), "rot3(90.000000, dir3(0.000000, 1.000000, 0.000000))");
    EXPECT_EQ(text(pst3w{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}),
              "pst3w(rev3(1.000000, 2.000000, 3.000000), rev3(4.000000, 5.000000, 6.000000), "
              "pos3(7.000000, 8.000000, 9.000000))");
    EXPECT_EQ(text(plr3{1, 2, 3}), "plr3(1.000000, 2.000000, 3.000000)");
    EXPECT_EQ(text(ang3{1, 2, 3}), "ang3(1.000000, 2.000000, 3.000000)");
    EXPECT_EQ(text(rev3{1, 2, 3}), "rev3(1.000000, 2.000000, 3.000000)");
    EXPECT_EQ(text(srt3{1, {2, 3, 4}}), "srt3(1.000000, dir3(2.000000, 3.000000, 4.000000))");
    EXPECT_EQ(text(irt3{{1, 2, 3}, {4, {5, 6, 7}}}),
              "irt3(rev3(1.000000, 2.000000, 3.000000), "
              "srt3(4.000000, dir3(5.000000, 6.000000, 7.000000)))");
}

TEST(Print, Colours) {
    EXPECT_EQ(text(col3{0, 0.5F, 1}), "col3(0.000000, 0.500000, 1.000000)");
    EXPECT_EQ(text(col3a{0, 0.5F, 1, 0.25F}), "col3a(0.000000, 0.500000, 1.000000, 0.250000)");
    EXPECT_EQ(text(col3aub{255, 128, 0, 10}), "col3aub(ff80000a)");
    EXPECT_EQ(text(col3ub{1, 2, 171}), "col3ub(0102ab)");
    EXPECT_EQ(text(col1aub{15, 240}), "col1aub(0ff0)");
    EXPECT_EQ(text(col1ub{9}), "col1ub(09)");
}

TEST(Print, TextureCoordinates) {
    EXPECT_EQ(text(txc1{1}), "txc1(1.000000)");
    EXPECT_EQ(text(txc2{1, 2}), "txc2(1.000000, 2.000000)");
    EXPECT_EQ(text(txc2q{1, 2, 3}), "txc2q(1.000000, 2.000000, 3.000000)");
    EXPECT_EQ(text(txc3{1, 2, 3}), "txc3(1.000000, 2.000000, 3.000000)");
    EXPECT_EQ(text(txc3q{1, 2, 3, 4}), "txc3q(1.000000, 2.000000, 3.000000, 4.000000)");
}

TEST(Print, MatrixHasFourLines) {
    EXPECT_EQ(text(mtx_identity), identity_text);
    EXPECT_EQ(text(mtx3w{{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}}),
              "mtx3w(\t1.000000, 2.000000, 3.000000, 4.000000,\n"
              "\t5.000000, 6.000000, 7.000000, 8.000000,\n"
              "\t9.000000, 10.000000, 11.000000, 12.000000,\n"
              "\t13.000000, 14.000000, 15.000000, 16.000000)");
}

TEST(Print, ViewsBoxesAndSizes) {
    EXPECT_EQ(text(projection{-1, 1, -2, 2, 0.0625, 1024}),
              "projection(-1.000000, 1.000000, -2.000000, 2.000000, 0.062500, 1024.000000)");
    EXPECT_EQ(text(box2{{1, 2}, {3, 4}}), "box2(pos2(1.000000, 2.000000), pos2(3.000000, 4.000000))");
    EXPECT_EQ(text(box3{{1, 2, 3}, {4, 5, 6}}),
              "box3(pos3(1.000000, 2.000000, 3.000000), pos3(4.000000, 5.000000, 6.000000))");
    EXPECT_EQ(text(dim2{1, std::numeric_limits<std::uint64_t>::max()}), "dim2(1, 18446744073709551615)");
    EXPECT_EQ(text(dim3{1920, 1080, 4}), "dim3(1920, 1080, 4)");
}

TEST(Print, PlanesAndLines) {
    EXPECT_EQ(text(surface{1, 2, 3, 4}), "surface(1.000000, 2.000000, 3.000000, 4.000000)");
    EXPECT_EQ(text(line2d{1, 2, 3}), "line2d(1.000000, 2.000000, 3.000000)");
    EXPECT_EQ(text(line3d{{0, 0, 1}, mtx_identity, mtx_identity}),
              "line3d(dir3(0.000000, 0.000000, 1.000000), " + identity_text + ", " + identity_text + ")");
}

TEST(Print, LargeAndSmallNumbersHaveNoExponent) {
    EXPECT_EQ(text(txc2{1e9F, 1e-9F}), "txc2(1000000000.000000, 0.000000)");
}

TEST(Print, KeepsThePrecisionOfTheStream) {
    std::ostringstream os;
    os << std::setprecision(2) << txc1{0.125F};
    EXPECT_EQ(os.str(), "txc1(0.12)");
}

TEST(Print, SetsFixedForThePrintOnly) {
    std::ostringstream os;
    os << std::scientific << std::hex << std::showpoint;
    const auto before = os.flags();
    os << pos2{1, 2} << mtx_identity << dim2{255, 16} << rot3{};
    EXPECT_EQ(os.flags(), before);
    EXPECT_EQ(os.str().substr(0, 24), "pos2(1.000000, 2.000000)");
    EXPECT_NE(os.str().find("dim2(255, 16)"), std::string::npos);
}

TEST(Print, ShowbasePutsOnePrefixAheadOfAColour) {
    std::ostringstream os;
    os << std::showbase;
    const auto before = os.flags();
    os << col3aub{1, 2, 3, 4} << ' ' << col3ub{1, 2, 3} << ' ' << col1aub{1, 2} << ' ' << col1ub{1};
    EXPECT_EQ(os.str(), "0xcol3aub(01020304) 0xcol3ub(010203) 0xcol1aub(0102) 0xcol1ub(01)");
    EXPECT_EQ(os.flags(), before);
}

TEST(Print, ColoursHaveTwoLowerCaseDigitsWhateverTheStreamSays) {
    std::ostringstream os;
    os << std::uppercase << std::left << std::oct << std::setfill('*') << col3ub{10, 11, 12};
    EXPECT_EQ(os.str(), "col3ub(0a0b0c)");
}

TEST(Print, LooksTheSameInEveryLocale) {
    std::ostringstream os;
    os.imbue(std::locale(std::locale::classic(), new german_numbers));
    const std::locale before = os.getloc();
    os << txc1{12345.5F} << dim2{1234567, 1};
    EXPECT_EQ(os.str(), "txc1(12345.500000)dim2(1234567, 1)");
    EXPECT_EQ(os.getloc(), before);
    os << 12345.5;
    EXPECT_EQ(os.str(), "txc1(12345.500000)dim2(1234567, 1)12.345,5");
}

}  // namespace
