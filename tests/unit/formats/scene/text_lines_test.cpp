#include "formats/scene/text_lines.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <initializer_list>
#include <string>
#include <vector>

#include "support/ordinary_user.h"
#include "support/scene_text.h"
#include "utils/memory/memory_budget.h"

using ulk3d::text_line_t;
using ulk3d::text_lines;

namespace {

std::vector<std::string> all_lines(text_lines input) {
    std::vector<std::string> lines;
    for (;;) {
        const text_line_t line = input.next();
        if (input.failed())
            return lines;
        lines.emplace_back(line.view());
    }
}

using lines_t = std::vector<std::string>;

}  // namespace

TEST(TextLines, AreCutAtLineFeeds) {
    EXPECT_EQ(all_lines(text_lines("one\ntwo\n\nfour\n")), (lines_t{"one", "two", "", "four"}));
}

TEST(TextLines, KeepTheirCarriageReturn) {
    EXPECT_EQ(all_lines(text_lines("one\r\n\r\n")), (lines_t{"one\r", "\r"}));
}

TEST(TextLines, LastLineWithoutALineFeedIsReadOnce) {
    EXPECT_EQ(all_lines(text_lines("one\ntwo")), (lines_t{"one", "two"}));
}

TEST(TextLines, TheReadThatHitsTheEndYieldsAnEmptyLine) {
    text_lines input("one");
    EXPECT_EQ(input.next().view(), "one");
    EXPECT_FALSE(input.failed());
    EXPECT_EQ(input.next().view(), "");
    EXPECT_TRUE(input.failed());
    EXPECT_EQ(input.next().view(), "");
}

TEST(TextLines, AnEmptyTextHasNoLine) {
    text_lines input("");
    EXPECT_TRUE(input.is_open());
    EXPECT_FALSE(input.failed());
    EXPECT_EQ(input.next().view(), "");
    EXPECT_TRUE(input.failed());
}

TEST(TextLines, EveryLineEndsInNul) {
    text_lines input("one\ntwo");
    EXPECT_STREQ(input.next().text, "one");
    EXPECT_STREQ(input.next().text, "two");
    EXPECT_STREQ(input.next().text, "");
}

TEST(TextLines, KeepNulsInside) {
    const std::string text("a\0b\n\0\n", 6);
    EXPECT_EQ(all_lines(text_lines(text)), (lines_t{std::string("a\0b", 3), std::string("\0", 1)}));
}

TEST(TextLines, RemainingCountsTheBytesBehindTheLine) {
    text_lines input("one\ntwo\nx");
    EXPECT_EQ(input.remaining(), 9U);
    input.next();
    EXPECT_EQ(input.remaining(), 5U);
    input.next();
    EXPECT_EQ(input.remaining(), 1U);
    input.next();
    EXPECT_EQ(input.remaining(), 0U);
}

TEST(TextLines, OfAFileAreThoseOfItsText) {
    // Lines of all lengths around the size of the window, and many windows.
    std::string text;
    lines_t expected;
    for (std::size_t length = 0; length < 3000; length += 7)
        expected.push_back(std::string(length, static_cast<char>('a' + length % 26)));
    for (const std::size_t length :
         std::initializer_list<std::size_t>{262142, 262143, 262144, 262145, 524288, 3'000'000, 1, 0, 2})
        expected.push_back(std::string(length, 'x'));
    for (const std::string& line : expected)
        text += line + '\n';
    const ulk_test::temporary_folder_t folder;
    const std::string path = folder.write("lines", text);

    EXPECT_EQ(all_lines(text_lines::open(path.c_str())), expected);
    EXPECT_EQ(text_lines::open(path.c_str()).remaining(), text.size());
}

TEST(TextLines, OfAFileRemainingCountsWhatIsNotReadYet) {
    const ulk_test::temporary_folder_t folder;
    std::string text = "first\n";
    for (int i = 0; i < 100000; ++i)
        text += "another line\n";
    text_lines input = text_lines::open(folder.write("lines", text).c_str());
    for (std::size_t read = 0; read < text.size();) {
        read += input.next().length + 1;
        ASSERT_EQ(input.remaining(), text.size() - read);
    }
}

TEST(TextLines, OfAnEmptyFileAreNone) {
    const ulk_test::temporary_folder_t folder;
    text_lines input = text_lines::open(folder.write("empty", "").c_str());
    EXPECT_TRUE(input.is_open());
    input.next();
    EXPECT_TRUE(input.failed());
}

TEST(TextLines, AFileThatShrinksEndsThere) {
    const ulk_test::temporary_folder_t folder;
    const std::string path = folder.write("shrinking", std::string(600'000, '\n'));
    text_lines input = text_lines::open(path.c_str());
    input.next();
    ASSERT_EQ(truncate(path.c_str(), 300'000), 0);
    std::size_t lines = 1;
    for (input.next(); !input.failed(); input.next())
        ++lines;
    EXPECT_EQ(lines, 300'000U);
    EXPECT_EQ(input.remaining(), 0U);
}

TEST(TextLines, ALineLongerThanTheBudgetEndsTheLines) {
    const ulk_test::temporary_folder_t folder;
    const std::string path = folder.write("long", "one\n" + std::string(5'000'000, 'x') + "\nthree\n");
    const libutils::load_budget_t budget(4'000'000);
    text_lines input = text_lines::open(path.c_str());
    EXPECT_EQ(input.next().view(), "one");
    EXPECT_FALSE(input.met_overlong_line());
    EXPECT_EQ(input.next().view(), "");
    EXPECT_TRUE(input.met_overlong_line());
    EXPECT_TRUE(input.failed());
    EXPECT_EQ(input.remaining(), 0U);
    EXPECT_EQ(input.next().view(), "");
}

/// The window is never larger than the file, so a budget of the file's size suffices for any line.
TEST(TextLines, AWindowGrowsNoFurtherThanTheFile) {
    const ulk_test::temporary_folder_t folder;
    const std::string line(5'000'000, 'x');
    const std::string path = folder.write("long", line);
    const libutils::load_budget_t budget(line.size());
    text_lines input = text_lines::open(path.c_str());
    EXPECT_TRUE(input.next().view() == line);
    EXPECT_FALSE(input.met_overlong_line());
    EXPECT_GE(libutils::memory_budget(), 200'000U);
    EXPECT_EQ(input.next().view(), "");
    EXPECT_TRUE(input.failed());
}

TEST(TextLines, AFileThatGrowsIsReadOn) {
    const ulk_test::temporary_folder_t folder;
    const std::string path = folder.write("growing", "one\n");
    text_lines input = text_lines::open(path.c_str());
    const std::string line(3'000'000, 'x');
    std::ofstream(path, std::ios::binary | std::ios::app) << line << "\nlast";
    EXPECT_EQ(input.next().view(), "one");
    EXPECT_TRUE(input.next().view() == line);
    EXPECT_EQ(input.next().view(), "last");
    EXPECT_FALSE(input.failed());
}

TEST(TextLines, ALongCommentTakesNoMemory) {
    const ulk_test::temporary_folder_t folder;
    const std::string comment = '#' + std::string(3'000'000, 'x');
    const std::string path =
        folder.write("comments", "one\n" + comment + "\ntwo\n" + comment + "\n" + comment);
    const libutils::load_budget_t budget(0);
    text_lines input = text_lines::open(path.c_str());
    EXPECT_EQ(input.next().view(), "one");
    EXPECT_TRUE(input.next().is_comment());
    EXPECT_EQ(input.next().view(), "two");
    EXPECT_TRUE(input.next().is_comment());
    EXPECT_TRUE(input.next().is_comment());
    EXPECT_FALSE(input.failed());
    input.next();
    EXPECT_TRUE(input.failed());
    EXPECT_FALSE(input.met_overlong_line());
}

TEST(TextLines, APathThatIsNoPlainFileIsNotOpened) {
    const ulk_test::temporary_folder_t folder;
    const std::string fifo = folder.path("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {folder.path("missing"), folder.path(""), fifo, std::string("/dev/zero"),
                                    std::string("/dev/null"), std::string()})
        EXPECT_FALSE(text_lines::open(path.c_str()).is_open()) << path;
}

TEST(TextLines, AFileWithoutReadingRightsIsNotOpened) {
    const ulk_test::temporary_folder_t folder;
    ASSERT_EQ(chmod(folder.path("").c_str(), 0755), 0);
    const std::string open_to_all = folder.write("open", "text");
    const std::string secret = folder.write("secret", "text");
    ASSERT_EQ(chmod(open_to_all.c_str(), 0644), 0);
    ASSERT_EQ(chmod(secret.c_str(), 0), 0);
    const ulk_test::ordinary_user_t user;
    ASSERT_TRUE(user.is_ordinary());
    EXPECT_TRUE(text_lines::open(open_to_all.c_str()).is_open());
    EXPECT_FALSE(text_lines::open(secret.c_str()).is_open());
}

TEST(TextLine, StartsWithComparesBytesAndCase) {
    constexpr std::string_view end = "end";
    text_lines input("endless\nen\nEnd\n end\n");
    EXPECT_TRUE(input.next().starts_with(end));
    EXPECT_FALSE(input.next().starts_with(end));
    EXPECT_FALSE(input.next().starts_with(end));
    EXPECT_FALSE(input.next().starts_with(end));
}

TEST(TextLine, StartsWithAKeyAsWithItsText) {
    const char* const texts[] = {
        "",           "e",     "end",        "endless",      "position",     "position ", "positions",
        "positioN 1", "posit", "resolution", "resolution 3", "resolutioN 3", "resoluti",  "resoluti 12"};
    for (const char* key : {"end", "position", "resolution", "p"}) {
        for (const char* text : texts) {
            const text_line_t line{text, std::strlen(text)};
            EXPECT_EQ(line.starts_with_key(key), line.starts_with(std::string_view(key)))
                << key << ' ' << text;
        }
    }
}

TEST(TextLine, IsBlankWhenEmptyOrALoneCarriageReturn) {
    const struct {
        std::string text;
        bool blank, comment;
    } rows[] = {{"", true, false},    {"\r", true, false},
                {" ", false, false},  {"\r\r", false, false},
                {"#", false, true},   {"# text", false, true},
                {" #", false, false}, {std::string(1, '\0'), false, false}};
    for (const auto& row : rows) {
        const text_line_t line{row.text.c_str(), row.text.size()};
        EXPECT_EQ(line.is_blank(), row.blank) << row.text;
        EXPECT_EQ(line.is_comment(), row.comment) << row.text;
    }
}
