#include "formats/scene/text_output.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>
#include <string>

#include "support/locale_scope.h"
#include "support/scene_text.h"

using ulk3d::text_output;

TEST(TextOutput, LinesEndInCarriageReturnAndLineFeed) {
    const ulk_test::temporary_folder_t folder;
    const std::string path = folder.path("text");
    text_output output(path.c_str());
    output.line("first");
    output.line();
    output.line("a", ',', std::string("b"));
    EXPECT_TRUE(output.complete());
    EXPECT_EQ(ulk_test::read_file(path), "first\r\n\r\na,b\r\n");
}

TEST(TextOutput, NumbersHaveTheDefaultFormInEveryLocale) {
    for (const char* name : ulk_test::file_locales) {
        const ulk_test::locale_scope_t scope(name);
        if (!scope.is_set())
            continue;
        const ulk_test::temporary_folder_t folder;
        const std::string path = folder.path("text");
        text_output output(path.c_str());
        output.line(1.0F / 3, ' ', 1e6F, ' ', 1234567.0F, ' ', 0.1F, ' ', -0.0F, ' ', std::nanf(""), ' ',
                    INFINITY);
        output.line(4294967295U, ' ', std::uint64_t{1234567}, ' ', -1);
        ASSERT_TRUE(output.complete());
        EXPECT_EQ(ulk_test::read_file(path),
                  "0.333333 1e+06 1.23457e+06 0.1 -0 nan inf\r\n4294967295 1234567 -1\r\n")
            << name;
    }
}

TEST(TextOutput, TruncatesWhatWasThere) {
    const ulk_test::temporary_folder_t folder;
    const std::string path = folder.write("text", "a longer text than the new one");
    text_output output(path.c_str());
    output.line("new");
    EXPECT_TRUE(output.complete());
    EXPECT_EQ(ulk_test::read_file(path), "new\r\n");
}

TEST(TextOutput, ManyLinesPassThroughTheBuffer) {
    const ulk_test::temporary_folder_t folder;
    const std::string path = folder.path("text");
    std::string expected;
    text_output output(path.c_str());
    for (int i = 0; i < 50'000; ++i) {
        output.line("line ", i);
        expected += "line " + std::to_string(i) + "\r\n";
    }
    EXPECT_TRUE(output.complete());
    EXPECT_EQ(ulk_test::read_file(path), expected);
}

TEST(TextOutput, APathThatCanNotBeOpenedFailsAtOnce) {
    const ulk_test::temporary_folder_t folder;
    const std::string fifo = folder.path("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {folder.path("missing/text"), folder.path(""), fifo, std::string()}) {
        text_output output(path.c_str());
        EXPECT_TRUE(output.failed()) << path;
        output.line("text");
        EXPECT_FALSE(output.flush()) << path;
        EXPECT_FALSE(output.complete()) << path;
    }
}

TEST(TextOutput, AFullDiskIsSeenAtTheFlush) {
    text_output output("/dev/full");
    output.line("text");
    EXPECT_FALSE(output.failed());
    EXPECT_FALSE(output.flush());
    EXPECT_TRUE(output.failed());
    EXPECT_FALSE(output.complete());
}

TEST(TextOutput, AFullDiskIsSeenAtTheClose) {
    text_output output("/dev/full");
    output.line("text");
    EXPECT_FALSE(output.complete());
}

TEST(TextOutput, AFullDiskIsSeenWhenTheBufferRunsOver) {
    text_output output("/dev/full");
    for (int i = 0; i < 20'000 && !output.failed(); ++i)
        output.line("text");
    EXPECT_TRUE(output.failed());
}

TEST(TextOutput, StaysFailedWhenMarkedSo) {
    const ulk_test::temporary_folder_t folder;
    text_output output(folder.path("text").c_str());
    output.fail();
    EXPECT_FALSE(output.flush());
    EXPECT_FALSE(output.complete());
}
