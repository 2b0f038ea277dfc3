#include "formats/stl/stl_check.h"

#include <gtest/gtest.h>

#include <string>

#include "support/scene_text.h"
#include "support/stl_bytes.h"

namespace {

using namespace ulk_test;

std::optional<ulk3d::stl_check_t> check(const std::string& bytes) {
    const temporary_folder_t folder;
    return ulk3d::check_stl(folder.write("model.stl", bytes).c_str());
}

}  // namespace

TEST(StlCheck, AWholeFileFits) {
    for (const std::string& bytes : {stl_file({}), stl_file({flat_triangle(), flat_triangle(1)})}) {
        const auto found = check(bytes);
        ASSERT_TRUE(found);
        EXPECT_TRUE(found->fits());
        EXPECT_FALSE(found->is_text);
    }
}

TEST(StlCheck, TellsCountAndLengths) {
    const std::string bytes = stl_file({flat_triangle(), flat_triangle(1)}, 3);
    const auto found = check(bytes);
    ASSERT_TRUE(found);
    EXPECT_FALSE(found->fits());
    EXPECT_EQ(found->announced, 3U);
    EXPECT_EQ(found->expected_size, 234U);
    EXPECT_EQ(found->file_size, 184U);
    EXPECT_FALSE(check(stl_file({flat_triangle()}) + 'x')->fits());
    EXPECT_FALSE(check(stl_file({flat_triangle()}).substr(0, 133))->fits());
}

TEST(StlCheck, TheLargestCountDoesNotOverflow) {
    EXPECT_EQ(check(stl_file({}, 0xFFFFFFFF))->expected_size, 84 + 50 * std::uint64_t{0xFFFFFFFF});
}

TEST(StlCheck, AFileThatEndsBeforeItsCountAnnouncesNothing) {
    const auto found = check(stl_file({}).substr(0, 83));
    ASSERT_TRUE(found);
    EXPECT_FALSE(found->fits());
    EXPECT_EQ(found->announced, 0U);
    EXPECT_EQ(found->file_size, 83U);
}

TEST(StlCheck, ATextIsKnownByItsFirstWordAndALengthThatDoesNotFit) {
    EXPECT_TRUE(check("solid\nendsolid\n")->is_text);
    EXPECT_TRUE(check("solid a part\n" + std::string(500, ' ') + "endsolid\n")->is_text);
    EXPECT_FALSE(check("Solid\n" + std::string(500, ' '))->is_text);
    // Programs that write binary files put this word into the header as well.
    std::string binary = stl_file({flat_triangle()});
    binary.replace(0, 5, "solid");
    EXPECT_TRUE(check(binary)->fits());
    EXPECT_FALSE(check(binary)->is_text);
}

TEST(StlCheck, NothingIsToldOfAnEmptyFileAndOfOneThatCanNotBeRead) {
    const temporary_folder_t folder;
    EXPECT_FALSE(check(""));
    EXPECT_FALSE(ulk3d::check_stl(folder.path("none").c_str()));
    EXPECT_FALSE(ulk3d::check_stl(folder.path("").c_str()));
}
