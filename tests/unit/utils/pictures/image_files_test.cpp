#include "utils/pictures/image_files.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/image_builder.h"
#include "unit/utils/codecs/bmp_bytes.h"
#include "unit/utils/codecs/codec_test.h"
#include "utils/pictures/image_transforms.h"

using namespace libutils;
using ulk_test::image_header;
using ulk_test::image_of;
using ulk_test::pixel_bytes;

namespace {

using bytes_t = std::vector<int>;
namespace format = image_format;

image2d random_image(std::uint32_t code, std::uint32_t bits = image_bits::bits_8) {
    image2d image = image_header(code, bits, 4, 3);
    EXPECT_TRUE(image.allocate());
    std::mt19937 random(11);
    ulk_test::fill_randomly(image, random);
    return image;
}

/// A loader that failed says its own words and nothing of the choice of a codec.
void expect_load_fails(const std::string& path, const std::string& message) {
    image2d image;
    const captured_descriptor_t errors;
    EXPECT_FALSE(autoloadformat(image, path.c_str())) << path;
    EXPECT_EQ(errors.text(), message);
}

}  // namespace

TEST(AutoloadFormat, PathWithoutAKnownExtensionFails) {
    const char* const paths[] = {"a.jpeg", "a.tif", "a.jpg ", "a.bmp.gz", "jpg",  "bmp",
                                 "a",      "",      "a.jp",   ".tg",      "ajpg", "a.png/b"};
    for (const std::string path : paths)
        expect_load_fails(path, "autoloadformat load fail, fname=" + path + "\n");
}

TEST(AutoloadFormat, ExistingFileOfAnUnknownExtensionFailsToo) {
    const temporary_folder_t folder;
    ASSERT_TRUE(autosaveformat(random_image(format::rgb), folder.path("a.jpg").c_str()));
    std::filesystem::rename(folder.path("a.jpg"), folder.path("a.jpeg"));
    expect_load_fails(folder.path("a.jpeg"),
                      "autoloadformat load fail, fname=" + folder.path("a.jpeg") + "\n");
}

TEST(AutoloadFormat, FailureOfACodecIsItsOwn) {
    const temporary_folder_t folder;
    expect_load_fails(folder.path("no.bmp"), folder.path("no.bmp") + ": file stat failed.\n");
    expect_load_fails(folder.path("no.png"),
                      folder.path("no.png") + ": file open error, No such file or directory\n");
    expect_load_fails(folder.path("no.tga"), "");
}

TEST(AutoloadFormat, ExtensionsAreKnownInAllCases) {
    const temporary_folder_t folder;
    const image2d image = random_image(format::rgb);
    for (const auto& [name, loaded_format] : {std::pair{"a.JPG", format::rgb},
                                              {"b.Jpg", format::rgb},
                                              {"c.BMP", format::bgr},
                                              {"d.PnG", format::rgb},
                                              {"e.TGA", format::bgr}}) {
        const std::string path = folder.path(name);
        ASSERT_TRUE(autosaveformat(image, path.c_str())) << name;
        image2d loaded;
        ASSERT_TRUE(autoloadformat(loaded, path.c_str())) << name;
        EXPECT_EQ(loaded.format, loaded_format) << name;
        EXPECT_EQ(loaded.width, 4U);
        EXPECT_EQ(loaded.height, 3U);
    }
}

TEST(AutoloadFormat, WholePathMayBeTheExtension) {
    const temporary_folder_t folder;
    const std::string path = folder.path(".png");
    ASSERT_TRUE(autosaveformat(random_image(format::rgb), path.c_str()));
    image2d loaded;
    EXPECT_TRUE(autoloadformat(loaded, path.c_str()));
}

TEST(AutoloadFormat, BitmapWithAPaletteBecomesRgb) {
    const temporary_folder_t folder;
    const std::string palette("\x03\x02\x01\x00\x06\x05\x04\x00", 8);
    const bmp_bytes_t bmp{.width = 3,
                          .height = 1,
                          .bit_count = 8,
                          .palette = palette,
                          .pixels = std::string("\x01\x00\x02\x00", 4)};
    image2d image;
    ASSERT_TRUE(autoloadformat(image, folder.write("a.bmp", bmp.bytes()).c_str()));
    EXPECT_EQ(image.format, format::rgb);
    EXPECT_EQ(image.palette.count, 0U);
    // The last index is behind the palette.
    EXPECT_EQ(pixel_bytes(image), (bytes_t{4, 5, 6, 1, 2, 3, 0, 0, 0}));
}

TEST(AutoloadFormat, BitmapOfFourBitsWithAPaletteBecomesRgb) {
    const temporary_folder_t folder;
    const std::string palette("\x03\x02\x01\x00\x06\x05\x04\x00", 8);
    const bmp_bytes_t bmp{.width = 3,
                          .height = 1,
                          .bit_count = 4,
                          .palette = palette,
                          .pixels = std::string("\x01\x10\x00\x00", 4)};
    image2d image;
    ASSERT_TRUE(autoloadformat(image, folder.write("a.bmp", bmp.bytes()).c_str()));
    EXPECT_EQ(pixel_bytes(image), (bytes_t{1, 2, 3, 4, 5, 6, 4, 5, 6}));
}

TEST(AutoloadFormat, BitmapWithAnEmptyPaletteIsGrey) {
    const temporary_folder_t folder;
    const bmp_bytes_t bmp{
        .width = 3, .height = 1, .bit_count = 8, .palette = "", .pixels = std::string("\x01\x00\x02\x00", 4)};
    image2d image;
    ASSERT_TRUE(autoloadformat(image, folder.write("a.bmp", bmp.bytes()).c_str()));
    EXPECT_EQ(image.format, format::grey);
    EXPECT_EQ(pixel_bytes(image), (bytes_t{1, 0, 2}));
}

TEST(AutoloadFormat, BitmapOfOneBitWithAPaletteFails) {
    const temporary_folder_t folder;
    const bmp_bytes_t bmp{.width = 3,
                          .height = 1,
                          .bit_count = 1,
                          .palette = std::string(8, '\x7F'),
                          .pixels = std::string(4, '\x55')};
    const std::string path = folder.write("a.bmp", bmp.bytes());
    expect_load_fails(path, "");
    image2d image;
    EXPECT_FALSE(autoloadformat(image, path.c_str()));
    // It keeps what the codec had set.
    EXPECT_EQ(image.format, format::index);
    EXPECT_EQ(image.bits, image_bits::bits_1);
    EXPECT_EQ(image.width, 3U);
}

TEST(AutoloadFormat, TopDownBitmapWithAPaletteFails) {
    const temporary_folder_t folder;
    const bmp_bytes_t bmp{.width = 3,
                          .height = -1,
                          .bit_count = 8,
                          .palette = std::string(8, '\x7F'),
                          .pixels = std::string(4, '\1')};
    expect_load_fails(folder.write("a.bmp", bmp.bytes()), "");
}

TEST(AutosaveFormat, PathWithoutAKnownExtensionFails) {
    for (const std::string path : {"a.jpeg", "a.tif", "png", ""}) {
        const captured_descriptor_t errors;
        EXPECT_FALSE(autosaveformat(random_image(format::rgb), path.c_str()));
        EXPECT_EQ(errors.text(), "autosaveformat load fail, fname=" + path + "\n");
    }
}

namespace {

/// What becomes of a save: the result, what is said, and whether there is a file.
struct outcome_t {
    bool result;
    const char* message;
    bool file;
};

constexpr outcome_t written{true, "", true};
constexpr outcome_t refused{false, "", false};
constexpr outcome_t nothing_to_do{true, "", false};
constexpr outcome_t not_for_bmp{false, "convert(to bmp): not supported format.\n", false};
/// The library finds out when the file is open, and says so in words of its own first.
constexpr outcome_t not_for_png{false, "libpng error: Valid palette required for paletted images\nFAIL\n",
                                true};

struct save_row_t {
    std::uint32_t format;
    outcome_t jpg, bmp, png, tga;
};

constexpr save_row_t save_rows[] = {
    {format::rgb, written, written, written, written},
    {format::rgba, refused, not_for_bmp, written, written},
    {format::grey, written, refused, written, refused},
    {format::bgr, refused, refused, nothing_to_do, refused},
    {format::bgra, refused, refused, nothing_to_do, refused},
    {format::ycbcr, written, refused, nothing_to_do, refused},
    {format::index, refused, refused, not_for_png, refused},
};

void expect_save(const image2d& image, const std::string& path, const outcome_t& outcome) {
    const captured_descriptor_t errors;
    EXPECT_EQ(autosaveformat(image, path.c_str()), outcome.result) << path << ' ' << image.format;
    EXPECT_EQ(errors.text(), outcome.message) << path << ' ' << image.format;
    EXPECT_EQ(std::filesystem::exists(path), outcome.file) << path << ' ' << image.format;
}

}  // namespace

TEST(AutosaveFormat, EachFormStoresItsFormats) {
    for (const save_row_t& row : save_rows) {
        const temporary_folder_t folder;
        const image2d image = random_image(row.format);
        expect_save(image, folder.path("a.jpg"), row.jpg);
        expect_save(image, folder.path("a.bmp"), row.bmp);
        expect_save(image, folder.path("a.png"), row.png);
        expect_save(image, folder.path("a.tga"), row.tga);
    }
}

TEST(AutosaveFormat, BitmapsAndTargaFilesHaveTheDepthOfTheirPixels) {
    const temporary_folder_t folder;
    const std::string bmp = folder.path("a.bmp");
    const std::string tga = folder.path("a.tga");
    ASSERT_TRUE(autosaveformat(random_image(format::rgb), bmp.c_str()));
    EXPECT_EQ(ulk_test::read_file(bmp).substr(28, 2), little16(24));
    ASSERT_TRUE(autosaveformat(random_image(format::rgb), tga.c_str()));
    EXPECT_EQ(ulk_test::read_file(tga).at(16), 24);
    ASSERT_TRUE(autosaveformat(random_image(format::rgba), tga.c_str()));
    EXPECT_EQ(ulk_test::read_file(tga).at(16), 32);
}

TEST(AutosaveFormat, WhatIsSavedWithoutLossIsLoadedAgain) {
    const temporary_folder_t folder;
    const image2d rgb = random_image(format::rgb);
    image2d bgr;
    ASSERT_TRUE(rgb2bgr(bgr, rgb));
    for (const char* name : {"a.bmp", "a.tga", "a.png"}) {
        const std::string path = folder.path(name);
        ASSERT_TRUE(autosaveformat(rgb, path.c_str()));
        image2d loaded;
        ASSERT_TRUE(autoloadformat(loaded, path.c_str()));
        EXPECT_EQ(pixel_bytes(loaded), pixel_bytes(loaded.format == format::bgr ? bgr : rgb)) << name;
    }
}

TEST(AutosaveFormat, JpegIsCloseToThePicture) {
    const temporary_folder_t folder;
    image2d image = image_header(format::rgb, image_bits::bits_8, 16, 16);
    ASSERT_TRUE(image.allocate());
    for (std::uint32_t y = 0; y < 16; ++y)
        for (std::uint32_t x = 0; x < 16; ++x) {
            unsigned char* const pixel = image.pixel(x, y);
            pixel[0] = static_cast<unsigned char>(16 * y);
            pixel[1] = 100;
            pixel[2] = 50;
        }
    const std::string path = folder.path("a.jpg");
    ASSERT_TRUE(autosaveformat(image, path.c_str()));
    image2d loaded;
    ASSERT_TRUE(autoloadformat(loaded, path.c_str()));
    const bytes_t before = pixel_bytes(image);
    const bytes_t after = pixel_bytes(loaded);
    ASSERT_EQ(before.size(), after.size());
    // Quality 95, and the bottom row at the bottom.
    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_NEAR(before[i], after[i], 6) << i;
}

TEST(AutosaveFormat, ErrorOfTheJpegLibraryNamesTheFileAndLeavesItAlone) {
    const temporary_folder_t folder;
    const std::string path = folder.write("a.jpg", "former");
    image2d image = image_header(format::grey, image_bits::bits_8, 65501, 1);
    ASSERT_TRUE(image.allocate());
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(autosaveformat(image, path.c_str()));
    EXPECT_EQ(errors.text(), path + ": error detected.\n");
    EXPECT_EQ(ulk_test::read_file(path), "former");
}
