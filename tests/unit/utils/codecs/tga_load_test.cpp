#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <vector>

#include "unit/utils/codecs/tga_bytes.h"
#include "utils/codecs/tga_file.h"

namespace libutils {
namespace {

using namespace std::string_literals;

class TgaLoad : public testing::Test {
  protected:
    bool load_bytes(const std::string& bytes) { return load(tga, folder.write("a.tga", bytes).c_str()); }
    bool read(const tga_bytes_t& file) { return load_bytes(file.bytes()) && convert(image, tga); }

    void TearDown() override { EXPECT_EQ(errors.text(), ""); }

    temporary_folder_t folder;
    tga_t tga;
    image2d image;
    /// No failure of this form has a message.
    captured_stream errors{std::cerr};
};

TEST_F(TgaLoad, NameThatLeadsToNoFileThatCanBeReadFails) {
    const std::string fifo = folder.path("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {folder.path("missing.tga"), folder.path(""), fifo, ""s, "/dev/zero"s})
        EXPECT_FALSE(load(tga, path.c_str())) << path;
}

TEST_F(TgaLoad, HeaderIsReadFieldByField) {
    ASSERT_FALSE(load_bytes("\x00\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10\x11\x12"s));
    EXPECT_EQ(tga.id_length, 0);
    EXPECT_EQ(tga.colour_map_type, 2);
    EXPECT_EQ(tga.image_type, 3);
    EXPECT_EQ(tga.colour_map_origin, 0x0504);
    EXPECT_EQ(tga.colour_map_length, 0x0706);
    EXPECT_EQ(tga.colour_map_entry_size, 8);
    EXPECT_EQ(tga.x_origin, 0x0A09);
    EXPECT_EQ(tga.y_origin, 0x0C0B);
    EXPECT_EQ(tga.width, 0x0E0D);
    EXPECT_EQ(tga.height, 0x100F);
    EXPECT_EQ(tga.depth, 0x11);
    EXPECT_EQ(tga.descriptor, 0x12);
}

TEST_F(TgaLoad, IdAndColourMapComeBeforeThePixels) {
    tga_bytes_t file;
    file.id = "named";
    file.map_type = 1;
    file.map_origin = 1;
    file.map_length = 2;
    file.map_entry_size = 3;
    file.map = "abcdefghi";
    ASSERT_TRUE(load_bytes(file.bytes()));
    EXPECT_EQ(std::string(tga.id.begin(), tga.id.end()), "named");
    EXPECT_EQ(std::string(tga.colour_map.begin(), tga.colour_map.end()), "abcdefghi");
    EXPECT_EQ(text_of(tga.pixels), counting(24));
}

/// 24 is a usual entry size, of three bytes; it is taken for 24 bytes.
TEST_F(TgaLoad, EntrySizeInBitsCountsBytes) {
    tga_bytes_t file;
    file.map_type = 1;
    file.map_length = 2;
    file.map_entry_size = 24;
    file.map = counting(48);
    ASSERT_TRUE(load_bytes(file.bytes()));
    EXPECT_EQ(tga.colour_map.size(), 48U);
    file.map = counting(6);
    EXPECT_FALSE(load_bytes(file.bytes()));
}

TEST_F(TgaLoad, ColourMapFieldsWithoutAMapReadNothing) {
    tga_bytes_t file;
    file.map_length = 500;
    file.map_entry_size = 24;
    ASSERT_TRUE(load_bytes(file.bytes()));
    EXPECT_TRUE(tga.colour_map.empty());
    EXPECT_EQ(text_of(tga.pixels), counting(24));
}

TEST_F(TgaLoad, RowsOfWholeFourBytesAreReadAsTheyStand) {
    ASSERT_TRUE(read({}));
    EXPECT_EQ(row_of(image, 0), counting(12));
    EXPECT_EQ(row_of(image, 1), counting(24).substr(12));
}

TEST_F(TgaLoad, RowsOfOtherLengthsAreTooShort) {
    tga_bytes_t file;
    file.width = 3;
    file.pixels = counting(18);
    EXPECT_FALSE(load_bytes(file.bytes()));
}

TEST_F(TgaLoad, TrailerThatFillsTheGapSkewsTheRows) {
    tga_bytes_t file;
    file.width = 3;
    file.pixels = counting(18) + std::string(26, 'T');
    ASSERT_TRUE(read(file));
    EXPECT_EQ(row_of(image, 0), counting(9));
    EXPECT_EQ(row_of(image, 1), counting(18).substr(12) + "TTT");
}

struct depth_row_t {
    std::uint8_t depth;
    bool taken;
    std::uint32_t format;
    std::uint32_t bits;
};

TEST_F(TgaLoad, DepthGivesTheLayout) {
    const std::vector<depth_row_t> rows{
        {8, true, 0, 3},  {16, true, 11, 11}, {24, true, 10, 3}, {32, true, 11, 3}, {0, false, 0, 0},
        {1, false, 0, 0}, {15, false, 0, 0},  {17, false, 0, 0}, {64, false, 0, 0}, {255, false, 0, 0}};
    for (const depth_row_t& row : rows) {
        SCOPED_TRACE(testing::Message() << row.depth << " bits");
        tga_bytes_t file;
        file.depth = row.depth;
        file.pixels = counting(256);
        ASSERT_EQ(read(file), row.taken);
        if (!row.taken)
            continue;
        EXPECT_EQ(image.format, row.format);
        EXPECT_EQ(image.type, 1U);
        EXPECT_EQ(image.bits, row.bits);
        EXPECT_EQ(image.width, 4U);
        EXPECT_EQ(image.height, 2U);
        EXPECT_EQ(pixels_of(image), counting(row.depth));
    }
}

TEST_F(TgaLoad, OnlyImageTypesOneAndTwoAreTaken) {
    for (const int type : {0, 1, 2, 3, 9, 10, 11, 32, 255}) {
        tga_bytes_t file;
        file.image_type = static_cast<std::uint8_t>(type);
        ASSERT_TRUE(load_bytes(file.bytes()));
        EXPECT_EQ(convert(image, tga), type == 1 || type == 2) << type;
    }
}

TEST_F(TgaLoad, FileWithItsTopRowFirstIsRefused) {
    for (const int descriptor : {0x00, 0x08, 0x10, 0x20, 0x28, 0xDF, 0xFF}) {
        tga_bytes_t file;
        file.descriptor = static_cast<std::uint8_t>(descriptor);
        ASSERT_TRUE(load_bytes(file.bytes()));
        EXPECT_EQ(convert(image, tga), (descriptor & 0x20) == 0) << descriptor;
    }
}

TEST_F(TgaLoad, ColourMapIsNotUsed) {
    tga_bytes_t file;
    file.image_type = 1;
    file.map_type = 1;
    file.map_length = 2;
    file.map_entry_size = 3;
    file.map = "abcdef";
    file.depth = 8;
    ASSERT_TRUE(read(file));
    EXPECT_EQ(image.format, image_format::grey);
    EXPECT_EQ(image.palette.count, 0U);
}

TEST_F(TgaLoad, ImageSharesTheBlockOfTheRecordAndOutlivesIt) {
    ASSERT_TRUE(read({}));
    EXPECT_EQ(image.begin(), tga.pixels.begin());
    EXPECT_EQ(image.use_count(), 2U);
    tga = {};
    EXPECT_EQ(pixels_of(image), counting(24));
}

TEST_F(TgaLoad, ImageForgetsWhatItWasBefore) {
    image = counting_image(image_format::rgba, image_bits::bits_8, 2, 2);
    image.skip_y = 1;
    image.compressed = true;
    ASSERT_TRUE(image.palette.allocate(2));
    ASSERT_TRUE(read({}));
    EXPECT_EQ(image.skip_y, 0U);
    EXPECT_FALSE(image.compressed);
    EXPECT_EQ(image.palette.count, 0U);
}

TEST_F(TgaLoad, PictureWithoutPixelsLoads) {
    tga_bytes_t file;
    file.width = 0;
    file.pixels = "";
    ASSERT_TRUE(read(file));
    EXPECT_EQ(image.width, 0U);
    EXPECT_EQ(image.height, 2U);
}

/// A header can promise 137 GB; a file that does not have them is refused before any memory is asked for.
TEST_F(TgaLoad, SizesThatTheFileDoesNotFillAreRefused) {
    tga_bytes_t file;
    file.width = file.height = 0xFFFF;
    file.depth = 255;
    EXPECT_FALSE(load_bytes(file.bytes()));
    EXPECT_TRUE(tga.pixels.empty());
    file = {};
    file.map_type = 1;
    file.map_origin = file.map_length = 0xFFFF;
    file.map_entry_size = 255;
    EXPECT_FALSE(load_bytes(file.bytes()));
    EXPECT_TRUE(tga.colour_map.empty());
}

TEST_F(TgaLoad, FileCutAnywhereIsRefused) {
    tga_bytes_t file;
    file.id = "id";
    file.map_type = 1;
    file.map_length = 2;
    file.map_entry_size = 2;
    file.map = "mapp";
    const std::string bytes = file.bytes();
    for (std::size_t size = 0; size < bytes.size(); ++size)
        EXPECT_FALSE(load_bytes(bytes.substr(0, size))) << size;
    EXPECT_TRUE(load_bytes(bytes));
}

}  // namespace
}  // namespace libutils
