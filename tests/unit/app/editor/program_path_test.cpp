#include "app/editor/program_path.h"

#include <gtest/gtest.h>

namespace {

using ulk3d::program_directory;
using ulk3d::program_title;

struct title_row_t {
    const char* argv0;
    const char* title;
};

class ProgramTitle : public testing::TestWithParam<title_row_t> {};

TEST_P(ProgramTitle, IsTheFileNameWithoutItsExtension) {
    EXPECT_EQ(program_title(GetParam().argv0), GetParam().title);
}

INSTANTIATE_TEST_SUITE_P(Paths, ProgramTitle,
                         testing::Values(title_row_t{"view.exe", "view"}, title_row_t{"a.b.exe", "a.b"},
                                         title_row_t{"view", "view"}, title_row_t{"a.exe.exe", "a"},
                                         title_row_t{"a.EXE.exe", "a"}, title_row_t{"/usr/bin/view", "view"},
                                         title_row_t{"/view", "view"}, title_row_t{"C:\\x\\view.exe", "view"},
                                         title_row_t{"a/b\\view.bin", "view"},
                                         title_row_t{"a\\b/view", "view"},
                                         title_row_t{"/opt/v1.2/view", "view"}, title_row_t{"", ""}));

TEST(ProgramPath, TitleIsCutTo259Bytes) {
    EXPECT_EQ(program_title(std::string(400, 'x').c_str()), std::string(259, 'x'));
}

TEST(ProgramPath, DirectoryKeepsItsSeparator) {
    EXPECT_EQ(program_directory("/usr/bin/view"), "/usr/bin/");
    EXPECT_EQ(program_directory("C:\\x\\view.exe"), "C:\\x\\");
    EXPECT_EQ(program_directory("./view"), "./");
    EXPECT_EQ(program_directory("/view"), "/");
}

TEST(ProgramPath, DirectoryOfABareNameIsEmpty) {
    EXPECT_EQ(program_directory("view"), "");
    EXPECT_EQ(program_directory(""), "");
}

}  // namespace
