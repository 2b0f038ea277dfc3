#include "tool/foreign/picture_paths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/scene_text.h"

namespace {

namespace fs = std::filesystem;
using ulktool::name_from_folder;
using ulktool::name_of_foreign_picture;

class PicturePaths : public testing::Test {
  protected:
    PicturePaths() {
        fs::create_directories(here() + "maps");
        for (const char* const name : {"maps/a.png", "maps/my wood.png", "100%25.png"})
            folder.write(name, "x");
    }

    std::string here() const { return folder.path(""); }

    ulk_test::temporary_folder_t folder;
};

TEST_F(PicturePaths, ANameLeadsToTheSamePictureFromAnotherFolder) {
    EXPECT_EQ(name_from_folder("maps/a.png", here(), here() + "out/"), "../maps/a.png");
    EXPECT_EQ(name_from_folder("../a.png", here() + "maps/", here()), "a.png");
    EXPECT_EQ(name_from_folder("a.png", here(), here()), "a.png");
}

TEST_F(PicturePaths, NoNameStaysNone) {
    EXPECT_EQ(name_from_folder("", here(), here() + "out/"), "");
}

TEST_F(PicturePaths, AnEmptyFolderIsTheWorkingFolder) {
    const std::string working = fs::current_path().string() + "/";
    EXPECT_EQ(name_from_folder("maps/a.png", "", working + "out/"), "../maps/a.png");
    EXPECT_EQ(name_from_folder("maps/a.png", working + "in/", ""), "in/maps/a.png");
}

TEST_F(PicturePaths, ForeignNamesGetSlashes) {
    EXPECT_EQ(name_of_foreign_picture("maps\\a.png", here()), "maps/a.png");
}

TEST_F(PicturePaths, ANameFromTheRootBecomesRelative) {
    EXPECT_EQ(name_of_foreign_picture(here() + "maps/a.png", here()), "maps/a.png");
}

TEST_F(PicturePaths, AUriIsDecodedWhenThatLeadsToAPicture) {
    EXPECT_EQ(name_of_foreign_picture("maps/my%20wood.png", here()), "maps/my wood.png");
    EXPECT_EQ(name_of_foreign_picture("maps/none%20here.png", here()), "maps/none%20here.png");
    EXPECT_EQ(name_of_foreign_picture("100%25.png", here()), "100%25.png");
    EXPECT_EQ(name_of_foreign_picture("maps/my%2", here()), "maps/my%2");
}

TEST_F(PicturePaths, ANameThatWouldEndALineIsNoName) {
    EXPECT_EQ(name_of_foreign_picture("a.png\nend", here()), "");
}

}  // namespace
