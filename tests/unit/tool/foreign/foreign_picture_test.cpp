#include "tool/foreign/foreign_picture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/scene_text.h"

namespace {

namespace fs = std::filesystem;
using ulktool::name_of_foreign_picture;

class ForeignPicture : public testing::Test {
  protected:
    ForeignPicture() {
        fs::create_directories(here() + "maps");
        for (const char* const name : {"maps/a.png", "maps/my wood.png", "100%25.png"})
            folder.write(name, "x");
    }

    std::string here() const { return folder.path(""); }

    ulk_test::temporary_folder_t folder;
};

TEST_F(ForeignPicture, ForeignNamesGetSlashes) {
    EXPECT_EQ(name_of_foreign_picture("maps\\a.png", here()), "maps/a.png");
}

TEST_F(ForeignPicture, ANameFromTheRootBecomesRelative) {
    EXPECT_EQ(name_of_foreign_picture(here() + "maps/a.png", here()), "maps/a.png");
}

TEST_F(ForeignPicture, AUriIsDecodedWhenThatLeadsToAPicture) {
    EXPECT_EQ(name_of_foreign_picture("maps/my%20wood.png", here()), "maps/my wood.png");
    EXPECT_EQ(name_of_foreign_picture("maps/none%20here.png", here()), "maps/none%20here.png");
    EXPECT_EQ(name_of_foreign_picture("100%25.png", here()), "100%25.png");
    EXPECT_EQ(name_of_foreign_picture("maps/my%2", here()), "maps/my%2");
}

TEST_F(ForeignPicture, ANameThatWouldEndALineIsNoName) {
    EXPECT_EQ(name_of_foreign_picture("a.png\nend", here()), "");
}

}  // namespace
