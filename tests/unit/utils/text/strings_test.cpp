#include "utils/text/strings.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <list>
#include <sstream>
#include <string>
#include <vector>

using namespace libutils;

TEST(StrStart, ZeroWhenTheLineStartsWithTheKey) {
    EXPECT_EQ(strstart("end", "end"), 0);
    EXPECT_EQ(strstart("endless", "end"), 0);
    EXPECT_EQ(strstart("end", ""), 0);
    EXPECT_NE(strstart("en", "end"), 0);
    EXPECT_NE(strstart("", "end"), 0);
    EXPECT_NE(strstart("END", "end"), 0);
    EXPECT_NE(strstart("the end", "end"), 0);
}

TEST(StrStart, ViewsAsPlainStrings) {
    const auto start = [](std::string_view line, std::string_view key) { return strstart(line, key); };
    EXPECT_EQ(start("end", "end"), 0);
    EXPECT_EQ(start("endless", "end"), 0);
    EXPECT_EQ(start("end", ""), 0);
    EXPECT_NE(start("en", "end"), 0);
    EXPECT_NE(start("END", "end"), 0);
}

TEST(StrStart, SignTellsTheOrder) {
    EXPECT_LT(strstart("a", "b"), 0);
    EXPECT_GT(strstart("b", "a"), 0);
    EXPECT_LT(strstart(std::string_view("a"), std::string_view("b")), 0);
    EXPECT_GT(strstart(std::string_view("b"), std::string_view("a")), 0);
}

TEST(HasExtension, ZeroInAnyCaseOfLetters) {
    EXPECT_EQ(has_extension("a.stl", ".STL"), 0);
    EXPECT_EQ(has_extension("A.STL", ".stl"), 0);
    EXPECT_EQ(has_extension(".stl", ".stl"), 0);
    EXPECT_EQ(has_extension("a.stl", ""), 0);
    EXPECT_NE(has_extension("a.stk", ".stl"), 0);
    EXPECT_NE(has_extension("a.stl.png", ".stl"), 0);
    EXPECT_NE(has_extension("a[stl", "A{STL"), 0);
}

TEST(HasExtension, MinusOneWhenTheExtensionIsLonger) {
    EXPECT_EQ(has_extension("stl", ".stl"), -1);
    EXPECT_EQ(has_extension("", "a"), -1);
}

TEST(HasExtension, PlainPointersWithALength) {
    EXPECT_EQ(has_extension("a.stlXXX", 5, ".STLX", 4), 0);
    EXPECT_EQ(has_extension("a.stl", 3, ".stl", 4), -1);
}

TEST(Trim, ChompRemovesAllTrailingLineEnds) {
    for (const char* text : {"a b", "a b\n", "a b\r\n", "a b\n\r\r\n\n"}) {
        std::string string = text;
        chomp(string);
        EXPECT_EQ(string, "a b");
    }
    std::string string = "\r\n";
    chomp(string);
    EXPECT_EQ(string, "");
    string = "\na \t";
    chomp(string);
    EXPECT_EQ(string, "\na \t");
}

TEST(Trim, RtrimRemovesTrailingWhiteSpace) {
    std::string string(" a\0b \t\n\r\0\0 ", 12);
    rtrim(string);
    EXPECT_EQ(string, std::string(" a\0b", 4));
    string = "\v\f";
    rtrim(string);
    EXPECT_EQ(string, "\v\f");
    string = " \t";
    rtrim(string);
    EXPECT_EQ(string, "");
}

TEST(Split, CutsAtEveryDelimiter) {
    std::list<std::string> list = {"first"};
    split(list, "a,b;;c,", ",;");
    EXPECT_EQ(list, (std::list<std::string>{"first", "a", "b", "", "c", ""}));
}

TEST(Split, WithoutADelimiterIsOnePiece) {
    std::list<std::string> list;
    split(list, "abc", ",");
    split(list, "", ",");
    EXPECT_EQ(list, (std::list<std::string>{"abc", ""}));
}

TEST(Join, IsTheReverseOfSplit) {
    for (const char* text : {"", "a", "a,b", ",a,,b,"}) {
        std::list<std::string> list;
        split(list, text, ",");
        std::string joined = "old";
        join(joined, list, ",");
        EXPECT_EQ(joined, text);
    }
}

TEST(Join, SeparatorStandsBetweenThePieces) {
    std::string joined;
    join(joined, {"a", "b", "c"}, ", ");
    EXPECT_EQ(joined, "a, b, c");
    join(joined, {}, ", ");
    EXPECT_EQ(joined, "");
}

TEST(StreamHelpers, StringIgnoresWidthAndFill) {
    std::ostringstream stream;
    stream << std::setw(9) << std::setfill('*');
    put_string(stream, std::string_view("a\0b", 3));
    EXPECT_EQ(stream.str(), std::string("a\0b", 3));
}

TEST(StreamHelpers, CharactersAndBlanks) {
    std::ostringstream stream;
    put_chars(stream, 'x', 3);
    put_blanks(stream, 2);
    put_chars(stream, 'y', 0);
    EXPECT_EQ(stream.str(), "xxx  ");
}

TEST(CopyList, VectorTakesTheSizeOfTheList) {
    std::vector<std::string> vector = {"old", "old", "old"};
    copy_list(vector, std::list<std::string>{"a", "b"});
    EXPECT_EQ(vector, (std::vector<std::string>{"a", "b"}));
}

TEST(CopyList, PointersAreCopiedThemselves) {
    int one = 1;
    int two = 2;
    std::vector<int*> vector;
    copy_list(vector, std::list<int*>{&one, &two});
    EXPECT_EQ(vector, (std::vector<int*>{&one, &two}));
}
