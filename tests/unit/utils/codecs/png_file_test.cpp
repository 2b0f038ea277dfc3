#include "utils/codecs/png_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace libutils {
namespace {

namespace fs = std::filesystem;

class PngFile : public testing::Test {
  protected:
    void SetUp() override {
        folder = fs::path(testing::TempDir()) /
                 ("png_file_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    void TearDown() override { fs::remove_all(folder); }
    std::string path(const char* name) const { return (folder / name).string(); }

    fs::path folder;
    const rgba_picture_t three_by_two{
        3,
        2,
        {{255, 0, 0, 255}, {0, 255, 0, 128}, {0, 0, 255, 0}, {1, 2, 3, 4}, {9, 8, 7, 6}, {50, 60, 70, 80}}};
};

TEST_F(PngFile, ReadGivesBackWhatWasWritten) {
    ASSERT_TRUE(write_png(path("a.png").c_str(), three_by_two));
    rgba_picture_t read;
    ASSERT_TRUE(read_png(path("a.png").c_str(), read));
    EXPECT_EQ(read, three_by_two);
}

TEST_F(PngFile, FirstRowIsTheTopOne) {
    ASSERT_TRUE(write_png(path("a.png").c_str(), three_by_two));
    rgba_picture_t read;
    ASSERT_TRUE(read_png(path("a.png").c_str(), read));
    EXPECT_EQ(read.at(1, 0), (rgba_picture_t::pixel_t{0, 255, 0, 128}));
    EXPECT_EQ(read.at(0, 1), (rgba_picture_t::pixel_t{1, 2, 3, 4}));
}

TEST_F(PngFile, EmptyPictureIsNotWritten) {
    EXPECT_FALSE(write_png(path("a.png").c_str(), {}));
    EXPECT_FALSE(fs::exists(path("a.png")));
}

TEST_F(PngFile, FolderThatDoesNotExistFailsTheWrite) {
    EXPECT_FALSE(write_png(path("missing/a.png").c_str(), three_by_two));
}

TEST_F(PngFile, FullDiskFailsTheWrite) {
    ASSERT_TRUE(fs::exists("/dev/full"));
    // Through a link: should the write ever remove its file, the device is safe.
    fs::create_symlink("/dev/full", path("full.png"));
    EXPECT_FALSE(write_png(path("full.png").c_str(), three_by_two));
}

TEST_F(PngFile, MissingFileFailsTheRead) {
    rgba_picture_t read = three_by_two;
    EXPECT_FALSE(read_png(path("a.png").c_str(), read));
    EXPECT_EQ(read, rgba_picture_t{});
}

TEST_F(PngFile, FileThatIsCutShortFailsTheRead) {
    ASSERT_TRUE(write_png(path("a.png").c_str(), three_by_two));
    fs::resize_file(path("a.png"), fs::file_size(path("a.png")) - 30);
    rgba_picture_t read = three_by_two;
    EXPECT_FALSE(read_png(path("a.png").c_str(), read));
    EXPECT_EQ(read, rgba_picture_t{});
}

TEST_F(PngFile, OtherContentFailsTheRead) {
    std::ofstream(path("a.png")) << "this is no picture";
    rgba_picture_t read;
    EXPECT_FALSE(read_png(path("a.png").c_str(), read));
}

}  // namespace
}  // namespace libutils
