#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <vector>

#include "unit/utils/codecs/bmp_bytes.h"
#include "unit/utils/codecs/png_bytes.h"
#include "utils/codecs/bmp_file.h"
#include "utils/codecs/png_file.h"
#include "utils/codecs/png_image.h"
#include "utils/codecs/png_library.h"

namespace libutils {
namespace {

using namespace std::string_literals;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using ulk_test::read_file;

class PngSave : public testing::Test {
  protected:
    int write(const image2d& image, const char* title = nullptr) {
        return write_png_image(path().c_str(), image, title);
    }
    std::string path() const { return folder.path("a.png"); }

    temporary_folder_t folder;
};

struct form_row_t {
    std::uint32_t format;
    std::uint32_t bits;
    int colour_type;
    int depth;
    std::string significant_bits;
};

const std::vector<form_row_t> form_rows{{0, 0, 0, 1, "\1"},
                                        {0, 1, 0, 2, "\2"},
                                        {0, 2, 0, 4, "\4"},
                                        {0, 3, 0, 8, "\x8"},
                                        {0, 5, 0, 16, "\x10"},
                                        {1, 3, 4, 8, "\x8\x8"},
                                        {1, 5, 4, 16, "\x10\x10"},
                                        {8, 3, 2, 8, "\x8\x8\x8"},
                                        {8, 5, 2, 16, "\x10\x10\x10"},
                                        {9, 3, 6, 8, "\x8\x8\x8\x8"},
                                        {9, 5, 6, 16, "\x10\x10\x10\x10"}};

TEST_F(PngSave, HeaderAndSignificantBitsFollowTheFormatAndTheBits) {
    for (const form_row_t& row : form_rows) {
        SCOPED_TRACE(testing::Message() << "format " << row.format << ", bits " << row.bits);
        ASSERT_EQ(write(counting_image(row.format, row.bits, 11, 3)), 0);
        const std::string header = big32(11) + big32(3) + std::string(1, static_cast<char>(row.depth)) +
                                   std::string(1, static_cast<char>(row.colour_type)) + "\0\0\0"s;
        const std::string start =
            "\x89PNG\r\n\x1A\n" + png_chunk("IHDR", header) + png_chunk("sBIT", row.significant_bits);
        EXPECT_EQ(read_file(path()).substr(0, start.size()), start);
    }
}

TEST_F(PngSave, WrittenFileIsReadBackAsItWas) {
    for (const form_row_t& row : form_rows) {
        SCOPED_TRACE(testing::Message() << "format " << row.format << ", bits " << row.bits);
        image2d image = counting_image(row.format, row.bits, 11, 3), read;
        static const pack_t swapped{true, 4};
        if (row.depth == 16)
            image.pack = &swapped;
        ASSERT_EQ(write(image), 0);
        ASSERT_EQ(read_png_image(read, path().c_str()), 0);
        EXPECT_EQ(read.format, row.format);
        EXPECT_EQ(read.bits, row.bits);
        EXPECT_EQ(read.width, 11U);
        EXPECT_EQ(read.height, 3U);
        std::string expected = pixels_of(image);
        // Bits behind the last pixel of a row are of no picture.
        if (row.depth < 8)
            for (std::uint32_t y = 0; y < 3; ++y) {
                const unsigned used = static_cast<unsigned>(11 * row.depth % 8);
                const auto last = row_of(image, y).size() * (y + 1) - 1;
                const auto mask = static_cast<unsigned char>(0xFF << (8 - used));
                const auto kept = [mask](char byte) {
                    return static_cast<char>(static_cast<unsigned char>(byte) & mask);
                };
                expected[last] = kept(expected[last]);
                auto* byte = read.pixel(0, y) + row_of(image, y).size() - 1;
                *byte = static_cast<unsigned char>(*byte & mask);
            }
        EXPECT_EQ(pixels_of(read), expected);
    }
}

TEST_F(PngSave, TopRowComesFirst) {
    const image2d image = counting_image(image_format::rgb, image_bits::bits_8, 1, 2);
    ASSERT_EQ(write(image), 0);
    rgba_picture_t picture;
    ASSERT_TRUE(read_png(path().c_str(), picture));
    EXPECT_EQ(picture.at(0, 0), (rgba_picture_t::pixel_t{5, 6, 7, 255}));
    EXPECT_EQ(picture.at(0, 1), (rgba_picture_t::pixel_t{1, 2, 3, 255}));
}

TEST_F(PngSave, PartOfAnImageIsStoredAsThatPart) {
    const image2d whole = counting_image(image_format::grey, image_bits::bits_8, 8, 4);
    image2d part, read;
    ASSERT_TRUE(part.subimage(whole, 2, 1, 3, 2));
    ASSERT_EQ(write(part), 0);
    ASSERT_EQ(read_png_image(read, path().c_str()), 0);
    EXPECT_EQ(pixels_of(read), "\x0B\x0C\x0D\x13\x14\x15");
}

/// The machine has the low byte of a sample first, the file the high one.
TEST_F(PngSave, MappedFileCanBeWrittenOverUnderAnotherName) {
    bmp_bytes_t file;
    file.bit_count = 8;
    file.height = 6;
    const std::string bitmap = folder.write("a.bmp", file.bytes());
    const std::string symbolic = folder.path("symbolic.png");
    std::filesystem::create_hard_link(bitmap, path());
    std::filesystem::create_symlink(bitmap, symbolic);
    for (const std::string& name : {path(), symbolic}) {
        SCOPED_TRACE(name);
        std::ofstream(bitmap, std::ios::binary) << file.bytes();
        bmp_file_t loaded;
        image2d image, read;
        ASSERT_TRUE(load(loaded, bitmap.c_str()) && convert(image, loaded));
        ASSERT_FALSE(image.writable());
        ASSERT_EQ(write_png_image(name.c_str(), image), 0);
        ASSERT_EQ(read_png_image(read, name.c_str()), 0);
        EXPECT_EQ(pixels_of(read), file.pixels);
    }
}

TEST_F(PngSave, SamplesOf16BitsKeepTheirValues) {
    const image2d image = counting_image(image_format::grey, image_bits::bits_16, 2, 1);
    image2d read;
    ASSERT_EQ(write(image), 0);
    ASSERT_EQ(read_png_image(read, path().c_str()), 0);
    EXPECT_TRUE(read.pack->swap);
    EXPECT_EQ(pixels_of(read), "\2\1\4\3");
}

TEST_F(PngSave, FormatsWithoutAPlaceInTheFormAreLeftUnwritten) {
    for (std::uint32_t format = 0; format <= 17; ++format) {
        const bool stored = format == 0 || format == 1 || format == 8 || format == 9 || format == 17;
        if (stored)
            continue;
        EXPECT_EQ(write(counting_image(format, image_bits::bits_8, 2, 2)), 0) << format;
        EXPECT_FALSE(std::filesystem::exists(path()));
    }
}

TEST_F(PngSave, BitsWithoutAPlaceInTheFormAreLeftUnwritten) {
    for (const std::uint32_t bits : {4U, 6U, 7U, 8U, 9U, 10U, 11U, 12U, 13U, 14U, 15U}) {
        EXPECT_EQ(write(counting_image(image_format::rgba, bits, 2, 2)), 0) << bits;
        EXPECT_FALSE(std::filesystem::exists(path()));
    }
}

TEST_F(PngSave, ImageWithoutItsPixelsIsRefusedInSilence) {
    image2d compressed = counting_image(image_format::rgb, image_bits::bits_8, 2, 2), cut = compressed;
    compressed.compressed = true;
    cut.height = 3;
    const captured_descriptor_t errors;
    EXPECT_EQ(write(compressed), -1);
    EXPECT_EQ(write(cut), -1);
    EXPECT_EQ(errors.text(), "");
    EXPECT_FALSE(std::filesystem::exists(path()));
}

TEST_F(PngSave, WhatTheLibraryRefusesFails) {
    image2d indices = counting_image(image_format::index, image_bits::bits_8, 2, 2);
    ASSERT_TRUE(indices.palette.allocate(256));
    image2d empty = counting_image(image_format::rgb, image_bits::bits_8, 2, 2);
    empty.width = 0;
    for (const image2d& image : {indices, empty, counting_image(image_format::rgb, image_bits::bits_4, 2, 2),
                                 counting_image(image_format::grey_alpha, image_bits::bits_1, 8, 2)}) {
        const captured_descriptor_t library;
        const captured_stream errors(std::cerr);
        EXPECT_EQ(write(image), -4);
        EXPECT_EQ(errors.text(), "FAIL\n");
        std::filesystem::remove(path());
    }
}

TEST_F(PngSave, TitleIsATextOfItsOwn) {
    const image2d image = counting_image(image_format::rgb, image_bits::bits_8, 2, 2);
    ASSERT_EQ(write(image, "a picture"), 0);
    EXPECT_THAT(read_file(path()), HasSubstr(png_chunk("tEXt", "Title\0a picture"s)));
    ASSERT_EQ(write(image), 0);
    EXPECT_THAT(read_file(path()), Not(HasSubstr("tEXt")));
}

TEST_F(PngSave, FileThatCanNotBeMadeIsRefusedInSilence) {
    const image2d image = counting_image(image_format::rgb, image_bits::bits_8, 2, 2);
    const std::string fifo = folder.path("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    const captured_descriptor_t errors;
    for (const std::string& place : {folder.path("missing/a.png"), folder.path(""), fifo})
        EXPECT_EQ(write_png_image(place.c_str(), image), -1) << place;
    EXPECT_EQ(errors.text(), "");
}

TEST_F(PngSave, FullDiskFailsTheWrite) {
    ASSERT_TRUE(std::filesystem::exists("/dev/full"));
    for (const std::uint32_t side : {2U, 200U}) {
        const image2d image = counting_image(image_format::rgb, image_bits::bits_8, side, side);
        const captured_descriptor_t library;
        const captured_stream errors(std::cerr);
        EXPECT_EQ(write_png_image("/dev/full", image), -4);
        EXPECT_EQ(errors.text(), "FAIL\n");
    }
}

TEST(PngVersion, OtherLibraryThanTheCompiledOneIsTold) {
    const captured_stream errors(std::cerr);
    EXPECT_TRUE(same_png_version("1.6.37", "1.6.37"));
    EXPECT_EQ(errors.text(), "");
    EXPECT_FALSE(same_png_version("1.6.37", "1.6.39"));
    EXPECT_EQ(errors.text(), "libpng version different.\n  header: 1.6.37\n  source: 1.6.39\n");
}

}  // namespace
}  // namespace libutils
