#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <vector>

#include "unit/utils/codecs/bmp_bytes.h"
#include "utils/codecs/bmp_file.h"

namespace libutils {
namespace {

using namespace std::string_literals;

class BmpLoad : public testing::Test {
  protected:
    bool load_bytes(const std::string& bytes) {
        // The same name each time: images that are mapped from the file before keep it.
        std::filesystem::remove(folder.path("a.bmp"));
        return load(bmp, folder.write("a.bmp", bytes).c_str());
    }
    bool read(const bmp_bytes_t& file) { return load_bytes(file.bytes()) && convert(image, bmp); }

    temporary_folder_t folder;
    bmp_file_t bmp;
    image2d image;
};

TEST_F(BmpLoad, NameThatLeadsToNoPlainFileIsToldWithItsPath) {
    const std::string fifo = folder.path("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {folder.path("missing.bmp"), folder.path(""), fifo, ""s}) {
        const captured_stream errors(std::cerr);
        EXPECT_FALSE(load(bmp, path.c_str()));
        EXPECT_EQ(errors.text(), path + ": file stat failed.\n");
    }
}

TEST_F(BmpLoad, FileThatMayNotBeReadIsToldWithItsPath) {
    const std::string path = folder.write("a.bmp", bmp_bytes_t().bytes());
    std::filesystem::permissions(path, std::filesystem::perms::none);
    std::filesystem::permissions(folder.path(""), std::filesystem::perms::all);
    const ulk_test::ordinary_user_t user;
    if (!user.is_ordinary())
        GTEST_SKIP() << "the superuser reads every file";
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(load(bmp, path.c_str()));
    EXPECT_EQ(errors.text(), path + ": file load failed.\n");
}

TEST_F(BmpLoad, FileShorterThanItsHeadersIsRefusedInSilence) {
    const captured_stream errors(std::cerr);
    for (std::size_t size = 0; size < 54; ++size)
        EXPECT_FALSE(load_bytes(bmp_bytes_t().bytes().substr(0, size))) << size;
    EXPECT_TRUE(load_bytes(bmp_bytes_t().bytes().substr(0, 54)));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(BmpLoad, WindowsLieWhereTheFileHasTheirParts) {
    bmp_bytes_t file;
    file.bit_count = 8;
    file.palette = counting(8);
    ASSERT_TRUE(load_bytes(file.bytes()));
    EXPECT_EQ(bmp.file_header.offset, 0U);
    EXPECT_EQ(bmp.file_header.size(), 1U);
    EXPECT_EQ(bmp.file_header.front().bfType, 0x4D42);
    EXPECT_EQ(bmp.info_header.offset, 14U);
    EXPECT_EQ(bmp.info_header.size(), 1U);
    EXPECT_EQ(bmp.info_header.front().biBitCount, 8);
    EXPECT_EQ(bmp.palette.offset, 54U);
    EXPECT_EQ(bmp.palette.size(), 2U);
    EXPECT_EQ(bmp.pixels.offset, 62U);
    EXPECT_EQ(text_of(bmp.pixels), counting(24));
}

TEST_F(BmpLoad, AllWindowsLookAtOneBlock) {
    ASSERT_TRUE(load_bytes(bmp_bytes_t().bytes()));
    EXPECT_EQ(bmp.pixels.use_count(), 4U);
    EXPECT_FALSE(bmp.pixels.writable());
}

struct depth_row_t {
    std::uint16_t bit_count;
    std::size_t colours;
    bool taken;
    std::uint32_t format;
    std::uint32_t bits;
    std::uint32_t kept_colours;
};

const std::vector<depth_row_t> depth_rows{
    {1, 2, true, 17, 0, 2},  {4, 16, true, 17, 2, 16}, {8, 3, true, 17, 3, 3},      {24, 2, true, 10, 3, 0},
    {32, 2, false, 0, 0, 0}, {16, 2, false, 0, 0, 0},  {2, 4, false, 0, 0, 0},      {0, 1, false, 0, 0, 0},
    {1, 0, true, 0, 0, 0},   {4, 0, true, 0, 2, 0},    {8, 0, true, 0, 3, 0},       {24, 0, true, 10, 3, 0},
    {32, 0, true, 11, 3, 0}, {16, 0, false, 0, 0, 0},  {2, 0, false, 0, 0, 0},      {0, 0, false, 0, 0, 0},
    {64, 0, false, 0, 0, 0}, {9, 2, false, 0, 0, 0},   {0xFFFF, 0, false, 0, 0, 0},
};

TEST_F(BmpLoad, DepthAndPaletteGiveTheLayout) {
    for (const depth_row_t& row : depth_rows) {
        SCOPED_TRACE(testing::Message() << row.bit_count << " bits, " << row.colours << " colours");
        bmp_bytes_t file;
        file.bit_count = row.bit_count;
        file.palette = counting(row.colours * 4);
        const captured_stream errors(std::cerr);
        ASSERT_EQ(read(file), row.taken);
        EXPECT_EQ(errors.text(), "");
        if (!row.taken)
            continue;
        EXPECT_EQ(image.format, row.format);
        EXPECT_EQ(image.type, 1U);
        EXPECT_EQ(image.bits, row.bits);
        EXPECT_EQ(image.palette.count, row.kept_colours);
        EXPECT_EQ(image.width, 4U);
        EXPECT_EQ(image.height, 2U);
        EXPECT_EQ(image.pack, nullptr);
        EXPECT_FALSE(image.compressed);
    }
}

TEST_F(BmpLoad, PaletteGoesFromBlueGreenRedToDoubledChannels) {
    bmp_bytes_t file;
    file.bit_count = 8;
    file.palette = "\x01\x02\x03\x04\xFF\x80\x7F\x00"s;
    ASSERT_TRUE(read(file));
    ASSERT_EQ(image.palette.count, 2U);
    EXPECT_EQ(image.palette.red.at(0), 0x0303);
    EXPECT_EQ(image.palette.green.at(0), 0x0202);
    EXPECT_EQ(image.palette.blue.at(0), 0x0101);
    EXPECT_EQ(image.palette.red.at(1), 0x7F7F);
    EXPECT_EQ(image.palette.green.at(1), 0x8080);
    EXPECT_EQ(image.palette.blue.at(1), 0xFFFF);
}

TEST_F(BmpLoad, PaletteEndsWithTheFile) {
    bmp_bytes_t file;
    file.bit_count = 8;
    file.palette = counting(12);
    file.pixels = "";
    file.offset_error = 1000;
    ASSERT_TRUE(read(file));
    EXPECT_EQ(image.palette.count, 3U);
    EXPECT_FALSE(image.holds_pixels());
}

TEST_F(BmpLoad, PixelOffsetInsideTheHeadersMeansNoPalette) {
    for (const std::int64_t offset : {0, 14, 53, 54, 55, 57}) {
        SCOPED_TRACE(offset);
        bmp_bytes_t file;
        file.bit_count = 8;
        file.offset_error = offset - 54;
        ASSERT_TRUE(read(file));
        EXPECT_EQ(image.format, image_format::grey);
        EXPECT_EQ(image.palette.count, 0U);
        EXPECT_EQ(bmp.pixels.offset, static_cast<std::uint64_t>(offset));
    }
}

TEST_F(BmpLoad, PixelOffsetBehindTheFileGivesNoPixels) {
    bmp_bytes_t file;
    file.offset_error = 0xFFFFFFFF - 54;
    ASSERT_TRUE(read(file));
    EXPECT_TRUE(image.elements().empty());
    EXPECT_FALSE(image.holds_pixels());
}

TEST_F(BmpLoad, CompressedPixelsAreRefusedInSilence) {
    for (const std::uint32_t compression : {1U, 2U, 3U, 6U, 0xFFFFFFFFU}) {
        bmp_bytes_t file;
        file.compression = compression;
        const captured_stream errors(std::cerr);
        ASSERT_TRUE(load_bytes(file.bytes()));
        EXPECT_FALSE(convert(image, bmp)) << compression;
        EXPECT_EQ(errors.text(), "");
    }
}

TEST_F(BmpLoad, RowsArePaddedAndComeFromTheBottomUp) {
    bmp_bytes_t file;
    file.width = 3;
    file.pixels = "abcdefghi\0\0\0ABCDEFGHI\0\0\0"s;
    ASSERT_TRUE(read(file));
    EXPECT_EQ(image.linesize(), 12U);
    EXPECT_EQ(row_of(image, 0), "abcdefghi");
    EXPECT_EQ(row_of(image, 1), "ABCDEFGHI");
}

TEST_F(BmpLoad, NegativeHeightIsAHugeOneThatTheImageDoesNotHold) {
    bmp_bytes_t file;
    file.height = -2;
    ASSERT_TRUE(read(file));
    EXPECT_EQ(image.height, 0xFFFFFFFEU);
    EXPECT_FALSE(image.holds_pixels());
}

TEST_F(BmpLoad, NegativeWidthIsAHugeOneThatTheImageDoesNotHold) {
    bmp_bytes_t file;
    file.width = -1;
    ASSERT_TRUE(read(file));
    EXPECT_EQ(image.width, 0xFFFFFFFFU);
    EXPECT_FALSE(image.holds_pixels());
}

TEST_F(BmpLoad, ImageLooksIntoTheMappedFile) {
    ASSERT_TRUE(read({}));
    EXPECT_EQ(image.begin(), bmp.pixels.begin());
    EXPECT_EQ(image.use_count(), 5U);
}

TEST_F(BmpLoad, ImageOutlivesTheRecordAndTheNameOfTheFile) {
    ASSERT_TRUE(read({}));
    bmp = {};
    std::filesystem::remove(folder.path("a.bmp"));
    EXPECT_EQ(image.use_count(), 1U);
    EXPECT_EQ(pixels_of(image), counting(24));
}

TEST_F(BmpLoad, ImageForgetsWhatItWasBefore) {
    image = counting_image(image_format::rgba, image_bits::bits_8, 2, 2);
    image.skip_x = 1;
    image.row_length = 9;
    image.compressed = true;
    ASSERT_TRUE(image.palette.allocate(2));
    ASSERT_TRUE(read({}));
    EXPECT_EQ(image.skip_x, 0U);
    EXPECT_EQ(image.row_length, 0U);
    EXPECT_FALSE(image.compressed);
    EXPECT_EQ(image.palette.count, 0U);
    EXPECT_EQ(pixels_of(image), counting(24));
}

TEST_F(BmpLoad, OneFileCanBeLoadedTwice) {
    ASSERT_TRUE(read({}));
    bmp_file_t second;
    ASSERT_TRUE(load(second, folder.path("a.bmp").c_str()));
    EXPECT_EQ(text_of(second.pixels), text_of(bmp.pixels));
}

TEST_F(BmpLoad, FileThatIsCutLaterShowsBlackWhereItWas) {
    bmp_bytes_t file;
    file.width = 64;
    file.height = 256;
    file.pixels = std::string(64 * 256 * 3, 'x');
    ASSERT_TRUE(read(file));
    std::filesystem::resize_file(folder.path("a.bmp"), 54 + 100);
    EXPECT_EQ(pixels_of(image), std::string(100, 'x') + std::string(64 * 256 * 3 - 100, '\0'));
}

TEST_F(BmpLoad, EmptyRecordIsRefused) {
    EXPECT_FALSE(convert(image, bmp));
}

/// Wherever a file ends, the image shows what is there and holds its pixels only when they are all there.
TEST_F(BmpLoad, FileCutAnywhereShowsNoMoreThanItHas) {
    bmp_bytes_t file;
    file.bit_count = 8;
    file.height = 3;
    file.palette = counting(20);
    file.pixels = counting(12);
    const std::string bytes = file.bytes();
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        SCOPED_TRACE(size);
        const bool loaded = load_bytes(bytes.substr(0, size)) && convert(image, bmp);
        EXPECT_EQ(loaded, size >= 54);
        if (!loaded)
            continue;
        EXPECT_EQ(image.palette.count, std::min<std::size_t>(size - 54, 20) / 4);
        EXPECT_EQ(text_of(image), size > 74 ? counting(size - 74) : "");
        EXPECT_EQ(image.holds_pixels(), size == bytes.size());
    }
}

}  // namespace
}  // namespace libutils
