#include "support/golden.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "utils/codecs/png_file.h"

namespace ulk_test {
namespace {

namespace fs = std::filesystem;
using libutils::rgba_picture_t;

rgba_picture_t plain_picture(int width, int height) {
    rgba_picture_t picture{width, height, {}};
    picture.pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height),
                          {100, 100, 100, 255});
    return picture;
}

class Golden : public testing::Test {
  protected:
    void SetUp() override {
        unsetenv("ULK_UPDATE_GOLDEN");
        root = fs::path(testing::TempDir()) /
               ("golden_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(root);
        folders = {root / "golden", root / "failures"};
        fs::create_directories(folders.golden);
        ASSERT_TRUE(libutils::write_png((folders.golden / "plain.png").c_str(), picture));
    }
    void TearDown() override {
        unsetenv("ULK_UPDATE_GOLDEN");
        fs::remove_all(root);
    }

    fs::path root;
    golden_folders_t folders;
    rgba_picture_t picture = plain_picture(40, 30);
};

TEST_F(Golden, EqualPictureMatches) {
    EXPECT_TRUE(matches_golden(picture, "plain", folders));
    EXPECT_FALSE(fs::exists(folders.failures));
}

TEST_F(Golden, SmallDifferencesEverywhereMatch) {
    for (rgba_picture_t::pixel_t& pixel : picture.pixels)
        pixel[1] = 108;
    EXPECT_TRUE(matches_golden(picture, "plain", folders));
}

TEST_F(Golden, SinglePixelsMatch) {
    for (int x = 0; x < 6; ++x)
        picture.at(6 * x, 10) = {255, 0, 0, 255};
    EXPECT_TRUE(matches_golden(picture, "plain", folders));
}

TEST_F(Golden, BlockOfFourPixelsFailsAndTellsItsPlace) {
    for (const auto& [x, y] : {std::pair{17, 9}, {18, 9}, {17, 10}, {18, 10}})
        picture.at(x, y)[0] = 109;
    const testing::AssertionResult result = matches_golden(picture, "plain", folders);
    EXPECT_FALSE(result);
    EXPECT_EQ(std::string(result.message()), "see " + (folders.failures / "plain.png").string() +
                                                 ": 4 pixels differ, a block of them at 17, 9");
}

TEST_F(Golden, ManySinglePixelsFail) {
    for (int x = 0; x < 7; ++x)
        picture.at(5 * x, 10) = {255, 0, 0, 255};
    EXPECT_FALSE(matches_golden(picture, "plain", folders));
}

TEST_F(Golden, OtherSizeFails) {
    EXPECT_FALSE(matches_golden(plain_picture(40, 31), "plain", folders));
}

TEST_F(Golden, MissingGoldenPictureFailsAndLeavesThePicture) {
    EXPECT_FALSE(matches_golden(picture, "other", folders));
    rgba_picture_t left;
    ASSERT_TRUE(libutils::read_png((folders.failures / "other.png").c_str(), left));
    EXPECT_EQ(left, picture);
}

TEST_F(Golden, FailureLeavesPictureAndDifference) {
    for (const auto& [x, y] : {std::pair{0, 0}, {1, 0}, {0, 1}, {1, 1}})
        picture.at(x, y) = {255, 0, 0, 255};
    EXPECT_FALSE(matches_golden(picture, "plain", folders));
    rgba_picture_t left;
    ASSERT_TRUE(libutils::read_png((folders.failures / "plain.png").c_str(), left));
    EXPECT_EQ(left, picture);
    ASSERT_TRUE(libutils::read_png((folders.failures / "plain-difference.png").c_str(), left));
    EXPECT_EQ(left.at(1, 1), (rgba_picture_t::pixel_t{255, 255, 255, 255}));
    EXPECT_EQ(left.at(2, 1), (rgba_picture_t::pixel_t{0, 0, 0, 255}));
}

TEST_F(Golden, UpdateReplacesTheGoldenPicture) {
    setenv("ULK_UPDATE_GOLDEN", "1", 1);
    for (rgba_picture_t::pixel_t& pixel : picture.pixels)
        pixel = {1, 2, 3, 4};
    EXPECT_TRUE(matches_golden(picture, "plain", folders));
    rgba_picture_t golden;
    ASSERT_TRUE(libutils::read_png((folders.golden / "plain.png").c_str(), golden));
    EXPECT_EQ(golden, picture);
}

}  // namespace
}  // namespace ulk_test
