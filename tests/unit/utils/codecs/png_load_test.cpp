#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <vector>

#include "unit/utils/codecs/png_bytes.h"
#include "utils/codecs/png_image.h"

namespace libutils {
namespace {

using namespace std::string_literals;
using testing::EndsWith;

class PngLoad : public testing::Test {
  protected:
    int read_bytes(const std::string& bytes) {
        return read_png_image(image, folder.write("a.png", bytes).c_str());
    }
    int read(const png_bytes_t& file) { return read_bytes(file.bytes()); }

    temporary_folder_t folder;
    image2d image;
};

std::string palette_chunk(std::size_t colours) {
    return png_chunk("PLTE", counting(colours * 3));
}

/// The rows of the file as the image has them.
std::string bottom_up(const png_bytes_t& file) {
    std::string pixels;
    for (std::uint32_t y = file.height; y-- > 0;)
        pixels += file.row(y);
    return pixels;
}

struct form_row_t {
    int colour_type;
    int depth;
    std::uint32_t format;
    std::uint32_t bits;
};

const std::vector<form_row_t> form_rows{{0, 1, 0, 0},  {0, 2, 0, 1},  {0, 4, 0, 2},  {0, 8, 0, 3},
                                        {0, 16, 0, 5}, {2, 8, 8, 3},  {2, 16, 8, 5}, {3, 1, 17, 0},
                                        {3, 2, 17, 1}, {3, 4, 17, 2}, {3, 8, 17, 3}, {4, 8, 1, 3},
                                        {4, 16, 1, 5}, {6, 8, 9, 3},  {6, 16, 9, 5}};

TEST_F(PngLoad, EveryFormIsReadAsItStands) {
    for (const form_row_t& row : form_rows)
        for (const bool interlaced : {false, true}) {
            SCOPED_TRACE(testing::Message() << "type " << row.colour_type << ", depth " << row.depth << ", "
                                            << (interlaced ? "interlaced" : "plain"));
            png_bytes_t file;
            file.colour_type = row.colour_type;
            file.depth = row.depth;
            file.interlaced = interlaced;
            if (row.colour_type == 3)
                file.chunks = palette_chunk(std::size_t{1} << row.depth);
            const captured_descriptor_t errors;
            ASSERT_EQ(read(file), 0);
            EXPECT_EQ(errors.text(), "");
            EXPECT_EQ(image.format, row.format);
            EXPECT_EQ(image.type, 1U);
            EXPECT_EQ(image.bits, row.bits);
            EXPECT_EQ(image.width, 11U);
            EXPECT_EQ(image.height, 9U);
            EXPECT_EQ(pixels_of(image), bottom_up(file));
        }
}

TEST_F(PngLoad, InterlacedPicturesOfAllSmallSizesAreRead) {
    for (std::uint32_t width = 1; width <= 9; ++width)
        for (std::uint32_t height = 1; height <= 9; ++height) {
            png_bytes_t file;
            file.width = width;
            file.height = height;
            file.interlaced = true;
            ASSERT_EQ(read(file), 0);
            EXPECT_EQ(pixels_of(image), bottom_up(file)) << width << " by " << height;
        }
}

TEST_F(PngLoad, SamplesOf16BitsTellThatTheyAreSwapped) {
    png_bytes_t file;
    file.depth = 16;
    ASSERT_EQ(read(file), 0);
    ASSERT_NE(image.pack, nullptr);
    EXPECT_TRUE(image.pack->swap);
    EXPECT_EQ(image.pack->alignment, 4U);
    file.depth = 8;
    ASSERT_EQ(read(file), 0);
    EXPECT_EQ(image.pack, nullptr);
}

TEST_F(PngLoad, PaletteIsRoundedUpToAPowerOfTwoWithBlack) {
    struct row_t {
        std::uint32_t colours;
        std::uint32_t count;
    };
    for (const row_t& row :
         std::vector<row_t>{{1, 1}, {2, 2}, {3, 4}, {5, 8}, {8, 8}, {200, 256}, {256, 256}}) {
        SCOPED_TRACE(row.colours);
        png_bytes_t file;
        file.width = file.height = 1;
        file.colour_type = 3;
        file.chunks = palette_chunk(row.colours);
        // The one index of this file may lie beyond a short palette, which the library warns of.
        const captured_descriptor_t errors;
        ASSERT_EQ(read(file), 0);
        ASSERT_EQ(image.palette.count, row.count);
        const std::string bytes = counting(row.colours * 3);
        for (std::uint32_t i = 0; i < row.count; ++i) {
            const auto value = [&](std::size_t c) {
                return i < row.colours ? static_cast<unsigned char>(bytes[i * 3 + c]) * 257 : 0;
            };
            EXPECT_EQ(image.palette.red.at(i), value(0));
            EXPECT_EQ(image.palette.green.at(i), value(1));
            EXPECT_EQ(image.palette.blue.at(i), value(2));
        }
    }
}

TEST_F(PngLoad, TransparencyOtherThanAChannelIsDropped) {
    struct row_t {
        int colour_type;
        std::string chunks;
        std::uint32_t format;
    };
    const std::vector<row_t> rows{
        {0, png_chunk("tRNS", "\0\5"s), image_format::grey},
        {2, png_chunk("tRNS", "\0\1\0\2\0\3"s), image_format::rgb},
        {3, palette_chunk(256) + png_chunk("tRNS", counting(7)), image_format::index},
    };
    for (const row_t& row : rows) {
        png_bytes_t file;
        file.colour_type = row.colour_type;
        file.chunks = row.chunks;
        ASSERT_EQ(read(file), 0);
        EXPECT_EQ(image.format, row.format);
        EXPECT_EQ(pixels_of(image), bottom_up(file));
    }
}

TEST_F(PngLoad, OtherChunksChangeNoPixel) {
    png_bytes_t file;
    file.chunks = png_chunk("gAMA", big32(45455)) + png_chunk("sBIT", "\5\6\5") +
                  png_chunk("pHYs", big32(2835) + big32(2835) + "\1"s) +
                  png_chunk("tEXt", "Title\0a picture"s) + png_chunk("bKGD", "\0\1\0\2\0\3"s) +
                  png_chunk("prVt", "of some program");
    const captured_descriptor_t errors;
    ASSERT_EQ(read(file), 0);
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(pixels_of(image), bottom_up(file));
}

/// A small chunk can hold megabytes, and a file thousands of such chunks; the library warns of those that it
/// can not decompress.
TEST_F(PngLoad, CompressedTextsAndProfilesAreNotDecompressed) {
    png_bytes_t file;
    file.chunks = png_chunk("iCCP", "profile\0\0no stream"s) + png_chunk("zTXt", "Title\0\0no stream"s) +
                  png_chunk("iTXt", "Title\0\1\0\0\0no stream"s);
    const captured_descriptor_t errors;
    ASSERT_EQ(read(file), 0);
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(pixels_of(image), bottom_up(file));
}

TEST_F(PngLoad, PixelsMayComeInManyChunks) {
    png_bytes_t file;
    file.chunk_size = 7;
    ASSERT_EQ(read(file), 0);
    EXPECT_EQ(pixels_of(image), bottom_up(file));
}

TEST_F(PngLoad, ImageForgetsWhatItWasBefore) {
    image = counting_image(image_format::rgba, image_bits::bits_8, 2, 2);
    image.skip_x = 1;
    image.skip_y = 1;
    image.row_length = 50;
    image.compressed = true;
    ASSERT_TRUE(image.palette.allocate(2));
    const png_bytes_t file;
    ASSERT_EQ(read(file), 0);
    EXPECT_EQ(image.skip_x, 0U);
    EXPECT_EQ(image.skip_y, 0U);
    EXPECT_EQ(image.row_length, 0U);
    EXPECT_FALSE(image.compressed);
    EXPECT_EQ(image.palette.count, 0U);
    EXPECT_EQ(pixels_of(image), bottom_up(file));
}

TEST_F(PngLoad, FileThatCanNotBeOpenedIsToldWithTheReason) {
    const std::string fifo = folder.path("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    const std::vector<std::pair<std::string, std::string>> rows{
        {folder.path("missing.png"), "No such file or directory"},
        {folder.path(""), "Is a directory"},
        {fifo, "No such device"}};
    for (const auto& [path, reason] : rows) {
        const captured_stream errors(std::cerr);
        EXPECT_EQ(read_png_image(image, path.c_str()), -1);
        EXPECT_EQ(errors.text(), path + ": file open error, " + reason + "\n");
    }
}

TEST_F(PngLoad, FileThatMayNotBeReadIsToldWithTheReason) {
    const std::string path = folder.write("a.png", png_bytes_t().bytes());
    std::filesystem::permissions(path, std::filesystem::perms::none);
    std::filesystem::permissions(folder.path(""), std::filesystem::perms::all);
    const ulk_test::ordinary_user_t user;
    if (!user.is_ordinary())
        GTEST_SKIP() << "the superuser reads every file";
    const captured_stream errors(std::cerr);
    EXPECT_EQ(read_png_image(image, path.c_str()), -1);
    EXPECT_EQ(errors.text(), path + ": file open error, Permission denied\n");
}

TEST_F(PngLoad, FileWithoutTheFirstFourBytesOfTheFormIsRefusedInSilence) {
    const captured_descriptor_t errors;
    for (const std::string& bytes : {""s, "\x89"s, "\x89PN"s, "\x89PNg"s, "BM\0\0"s, "PNG\r\n\x1A\n\0"s})
        EXPECT_EQ(read_bytes(bytes), -1);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(PngLoad, FileWithAnotherEndOfTheSignatureFails) {
    std::string bytes = png_bytes_t().bytes();
    bytes[4] = 'x';
    const captured_descriptor_t errors;
    EXPECT_EQ(read_bytes(bytes), -4);
    EXPECT_THAT(errors.text(), EndsWith("\nFAIL\n"));
}

TEST_F(PngLoad, ErrorOfTheLibraryFails) {
    const std::string good = png_bytes_t().bytes();
    std::string bad_header = good, bad_pixels = good;
    bad_header[20] ^= 1;
    bad_pixels[100] ^= 1;
    png_bytes_t no_palette, long_palette;
    no_palette.colour_type = long_palette.colour_type = 3;
    long_palette.chunks = png_chunk("PLTE", counting(257 * 3));
    for (const std::string& bytes : {bad_header, bad_pixels, no_palette.bytes(), long_palette.bytes()}) {
        const captured_descriptor_t errors;
        EXPECT_EQ(read_bytes(bytes), -4);
        EXPECT_THAT(errors.text(), EndsWith("FAIL\n"));
    }
}

TEST_F(PngLoad, FailureIsOneLineOfItsOwn) {
    std::string bytes = png_bytes_t().bytes();
    bytes[20] ^= 1;
    const captured_descriptor_t library;
    const captured_stream errors(std::cerr);
    EXPECT_EQ(read_bytes(bytes), -4);
    EXPECT_EQ(errors.text(), "FAIL\n");
}

/// A header alone can ask for any memory; a file that is too short for its pixels gets none.
TEST_F(PngLoad, SizesThatTheFileDoesNotFillAreRefused) {
    struct row_t {
        std::uint32_t width, height;
        int depth, colour_type;
    };
    for (const row_t& row : std::vector<row_t>{{1000000, 1000000, 1, 0},
                                               {100000, 10000, 16, 6},
                                               {1000, 1000, 8, 2},
                                               {0x7FFFFFFF, 0x7FFFFFFF, 16, 6},
                                               {0xFFFFFFFF, 1, 8, 0},
                                               {0, 5, 8, 0}}) {
        SCOPED_TRACE(row.width);
        png_bytes_t file;
        file.width = file.height = 1;
        std::string bytes = file.bytes();
        const std::string header = big32(row.width) + big32(row.height) +
                                   std::string(1, static_cast<char>(row.depth)) +
                                   std::string(1, static_cast<char>(row.colour_type)) + "\0\0\0"s;
        bytes.replace(8, 25, png_chunk("IHDR", header));
        image = {};
        const captured_descriptor_t errors;
        EXPECT_EQ(read_bytes(bytes), -4);
        EXPECT_THAT(errors.text(), EndsWith("FAIL\n"));
        EXPECT_TRUE(image.empty());
    }
}

/// The library takes the memory of a chunk before it reads it: 1.8 GB here, for a file of 108 bytes.
TEST_F(PngLoad, ChunkThatIsLongerThanTheFileGetsNoMemory) {
    std::string bytes = png_bytes_t().bytes();
    bytes.insert(33, big32(0x6C000000) + "tEXtTitle\0text"s);
    const captured_descriptor_t errors;
    EXPECT_EQ(read_bytes(bytes), -4);
    EXPECT_THAT(errors.text(), testing::HasSubstr("insufficient memory to read chunk"));
    EXPECT_THAT(errors.text(), EndsWith("FAIL\n"));
}

/// The end of the pixels' stream is enough; what follows it is not looked at.
TEST_F(PngLoad, FileCutAnywhereIsReadOnlyWithAllItsPixels) {
    for (const bool interlaced : {false, true}) {
        png_bytes_t file;
        file.interlaced = interlaced;
        file.chunk_size = 100;
        const std::string bytes = file.bytes();
        const std::size_t end_of_pixels = bytes.size() - 12;
        for (std::size_t size = 0; size <= bytes.size(); ++size) {
            const captured_descriptor_t errors;
            const int code = read_bytes(bytes.substr(0, size));
            EXPECT_EQ(code, size < 4 ? -1 : size < end_of_pixels ? -4 : 0) << size;
            if (code == 0) {
                EXPECT_EQ(pixels_of(image), bottom_up(file)) << size;
            }
        }
    }
}

}  // namespace
}  // namespace libutils
