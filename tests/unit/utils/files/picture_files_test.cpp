#include "utils/files/picture_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <string>

#include "support/captured_stream.h"
#include "support/scene_text.h"
#include "utils/pictures/image_files.h"

namespace fs = std::filesystem;
using libutils::image_window_t;
using libutils::map_picture;
using ulk_test::captured_stream;

namespace {

/// Plain files that the kernel makes up: they can not be mapped, and have fewer bytes than they claim.
constexpr const char* unmappable = "/sys/class/net/lo/mtu";
constexpr const char* unreadable = "/sys/class/net/lo/speed";

TEST(PictureFiles, AreMapped) {
    const ulk_test::temporary_folder_t folder;
    image_window_t bytes;
    ASSERT_TRUE(map_picture(folder.write("a.bmp", "bytes").c_str(), bytes));
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "bytes");
    EXPECT_FALSE(bytes.writable());
    ASSERT_TRUE(map_picture(folder.write("empty.bmp", "").c_str(), bytes));
    EXPECT_TRUE(bytes.empty());
}

TEST(PictureFiles, AreReadWhereTheyCanNotBeMapped) {
    if (!fs::exists(unmappable))
        GTEST_SKIP() << "no file is here that can not be mapped";
    image_window_t bytes;
    const captured_stream errors(std::cerr);
    ASSERT_TRUE(map_picture(unmappable, bytes));
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), ulk_test::read_file(unmappable));
    EXPECT_EQ(errors.text(), "");
}

TEST(PictureFiles, ThatCanNotBeReadAreToldOf) {
    if (!fs::exists(unreadable))
        GTEST_SKIP() << "no file is here that can not be read";
    image_window_t bytes;
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(map_picture(unreadable, bytes));
    EXPECT_EQ(errors.text(), std::string(unreadable) + ": file load failed.\n");
}

TEST(PictureFiles, ThatAreNoPlainFilesAreToldOf) {
    const ulk_test::temporary_folder_t folder;
    for (const std::string& path : {folder.path("missing"), folder.path(""), std::string("/dev/zero")}) {
        image_window_t bytes;
        const captured_stream errors(std::cerr);
        EXPECT_FALSE(map_picture(path.c_str(), bytes));
        EXPECT_EQ(errors.text(), path + ": file stat failed.\n");
    }
}

TEST(PictureFiles, AnUnmappablePictureIsABadPictureAndNotTheEnd) {
    if (!fs::exists(unmappable))
        GTEST_SKIP() << "no file is here that can not be mapped";
    const ulk_test::temporary_folder_t folder;
    for (const char* const name : {"a.jpg", "a.bmp", "a.png", "a.tga"}) {
        fs::create_symlink(unmappable, folder.path(name));
        libutils::image2d image;
        const captured_stream errors(std::cerr);
        EXPECT_FALSE(libutils::autoloadformat(image, folder.path(name).c_str())) << name;
    }
}

}  // namespace
