#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <vector>

#include "unit/utils/codecs/tga_bytes.h"
#include "utils/codecs/tga_file.h"
#include "utils/files/picture_files.h"

namespace libutils {
namespace {

using namespace std::string_literals;
using ulk_test::read_file;

class TgaSave : public testing::Test {
  protected:
    std::string saved() {
        return save(tga, folder.path("a.tga").c_str()) ? read_file(folder.path("a.tga")) : "not written";
    }
    /// The bytes of the file that the image becomes.
    std::string written(const image2d& image) { return convert(tga, image) ? saved() : "not converted"; }

    void TearDown() override { EXPECT_EQ(errors.text(), ""); }

    temporary_folder_t folder;
    tga_t tga;
    /// No failure of this form has a message.
    captured_stream errors{std::cerr};
};

TEST_F(TgaSave, ColoursOf24BitsAreWrittenInTheOrderBlueGreenRed) {
    const std::string file = written(counting_image(image_format::rgb, image_bits::bits_8, 4, 2));
    EXPECT_EQ(file,
              "\0\0\2\0\0\0\0\0\0\0\0\0\4\0\2\0\x18\0"s
              "\3\2\1\6\5\4\x9\x8\7\xC\xB\xA\xF\xE\xD\x12\x11\x10\x15\x14\x13\x18\x17\x16"s);
}

TEST_F(TgaSave, ColoursOf32BitsKeepTheirAlpha) {
    const std::string file = written(counting_image(image_format::rgba, image_bits::bits_8, 1, 2));
    EXPECT_EQ(file, "\0\0\2\0\0\0\0\0\0\0\0\0\1\0\2\0\x20\0\3\2\1\4\7\6\5\x8"s);
}

TEST_F(TgaSave, PackedColoursOf16BitsAreWrittenAsTheyStand) {
    const image2d image = counting_image(image_format::rgba, image_bits::packed_5_5_5_1, 2, 2);
    EXPECT_EQ(written(image), "\0\0\2\0\0\0\0\0\0\0\0\0\2\0\2\0\x10\0"s + counting(8));
    EXPECT_EQ(std::as_const(tga.pixels).begin(), image.begin());
}

TEST_F(TgaSave, RowsArePaddedToFourBytes) {
    const std::string file = written(counting_image(image_format::rgb, image_bits::bits_8, 1, 2));
    EXPECT_EQ(file.substr(18), "\3\2\1\0\7\6\5\0"s);
}

TEST_F(TgaSave, PartOfAPackedImageIsStoredAsThatPart) {
    const image2d whole = counting_image(image_format::rgba, image_bits::packed_5_5_5_1, 4, 3);
    image2d part;
    ASSERT_TRUE(part.subimage(whole, 1, 1, 1, 2));
    EXPECT_EQ(written(part).substr(18), "\x0B\x0C\0\0\x13\x14\0\0"s);
}

struct refused_row_t {
    std::uint32_t format;
    std::uint32_t type;
    std::uint32_t bits;
};

TEST_F(TgaSave, OtherFormatsAreRefused) {
    const std::vector<refused_row_t> rows{{0, 1, 3},  {1, 1, 3},  {10, 1, 3}, {11, 1, 3}, {11, 1, 11},
                                          {14, 1, 3}, {17, 1, 3}, {8, 0, 3},  {9, 0, 3},  {9, 0, 11},
                                          {8, 2, 3},  {8, 1, 5},  {9, 1, 5},  {8, 1, 10}, {8, 1, 11}};
    for (const refused_row_t& row : rows) {
        image2d image = counting_image(row.format, row.bits, 4, 2);
        image.type = row.type;
        EXPECT_FALSE(convert(tga, image)) << row.format << ' ' << row.type << ' ' << row.bits;
    }
}

TEST_F(TgaSave, CompressedImageIsRefused) {
    image2d image = counting_image(image_format::rgba, image_bits::packed_5_5_5_1, 4, 2);
    image.compressed = true;
    EXPECT_FALSE(convert(tga, image));
}

TEST_F(TgaSave, ImageThatDoesNotHoldItsPixelsIsRefused) {
    for (const std::uint32_t bits : {image_bits::bits_8, image_bits::packed_5_5_5_1}) {
        image2d image = counting_image(image_format::rgba, bits, 4, 2);
        image.height = 3;
        EXPECT_FALSE(convert(tga, image));
    }
}

TEST_F(TgaSave, SidesThatDoNotFitTheirFieldsAreRefused) {
    EXPECT_TRUE(convert(tga, counting_image(image_format::rgb, image_bits::bits_8, 65535, 1)));
    EXPECT_FALSE(convert(tga, counting_image(image_format::rgb, image_bits::bits_8, 65536, 1)));
    EXPECT_TRUE(convert(tga, counting_image(image_format::rgb, image_bits::bits_8, 1, 65535)));
    EXPECT_FALSE(convert(tga, counting_image(image_format::rgb, image_bits::bits_8, 1, 65536)));
}

TEST_F(TgaSave, IdAndColourMapTellTheirLengths) {
    ASSERT_TRUE(convert(tga, counting_image(image_format::rgb, image_bits::bits_8, 4, 1)));
    tga.id = {'i', 'd'};
    tga.colour_map = {'a', 'b', 'c', 'd', 'e', 'f'};
    tga.colour_map_origin = 1;
    tga.colour_map_entry_size = 2;
    EXPECT_EQ(saved(),
              "\2\1\2\1\0\2\0\2\0\0\0\0\4\0\1\0\x18\0idabcdef"s
              "\3\2\1\6\5\4\x9\x8\7\xC\xB\xA"s);
}

TEST_F(TgaSave, MapFieldsWithoutAMapAreCleared) {
    ASSERT_TRUE(convert(tga, counting_image(image_format::rgb, image_bits::bits_8, 4, 1)));
    tga.id_length = 9;
    tga.colour_map_type = 1;
    tga.colour_map_length = 7;
    tga.colour_map_entry_size = 3;
    EXPECT_EQ(saved().substr(0, 18), "\0\0\2\0\0\0\0\0\0\0\0\0\4\0\1\0\x18\0"s);
}

TEST_F(TgaSave, ArraysThatTheHeaderCanNotTellAreRefused) {
    ASSERT_TRUE(convert(tga, counting_image(image_format::rgb, image_bits::bits_8, 4, 1)));
    const tga_t good = tga;
    tga.id.resize(256);
    EXPECT_EQ(saved(), "not written");
    tga = good;
    tga.colour_map.resize(5);
    EXPECT_EQ(saved(), "not written");
    tga.colour_map_entry_size = 2;
    EXPECT_EQ(saved(), "not written");
    tga.colour_map.resize(2);
    tga.colour_map_origin = 2;
    EXPECT_EQ(saved(), "not written");
    tga.colour_map_origin = 0;
    tga.colour_map.resize(65536 * 2);
    EXPECT_EQ(saved(), "not written");
    tga.colour_map.resize(65535 * 2);
    EXPECT_NE(saved(), "not written");
}

TEST_F(TgaSave, WrittenFileIsReadBackAsItWas) {
    const image2d image = counting_image(image_format::rgba, image_bits::bits_8, 3, 2);
    written(image);
    tga_t file;
    image2d read;
    ASSERT_TRUE(load(file, folder.path("a.tga").c_str()) && convert(read, file));
    EXPECT_EQ(read.format, image_format::bgra);
    EXPECT_EQ(read.width, 3U);
    EXPECT_EQ(read.height, 2U);
    EXPECT_EQ(pixels_of(read).substr(0, 8), "\3\2\1\4\7\6\5\x8"s);
    EXPECT_EQ(file.image_type, 2);
    EXPECT_EQ(file.descriptor, 0);
}

TEST_F(TgaSave, OwnFilesLoadAlsoWhenOtherProgramsSkewThem) {
    const image2d image = counting_image(image_format::rgb, image_bits::bits_8, 3, 2);
    written(image);
    tga_t file;
    image2d read;
    ASSERT_TRUE(load(file, folder.path("a.tga").c_str()) && convert(read, file));
    EXPECT_EQ(row_of(read, 1), "\xF\xE\xD\x12\x11\x10\x15\x14\x13"s);
}

TEST_F(TgaSave, MappedFileCanBeWrittenOver) {
    image2d image = counting_image(image_format::rgba, image_bits::packed_5_5_5_1, 4, 2);
    ASSERT_TRUE(map_picture(folder.write("a.tga", counting(16)).c_str(), image));
    EXPECT_EQ(written(image).substr(18), counting(16));
}

TEST_F(TgaSave, FileThatIsNotWrittenWholeIsAFailure) {
    ASSERT_TRUE(convert(tga, counting_image(image_format::rgb, image_bits::bits_8, 4, 2)));
    const std::string fifo = folder.path("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {folder.path("missing/a.tga"), folder.path(""), fifo, "/dev/full"s})
        EXPECT_FALSE(save(tga, path.c_str())) << path;
}

}  // namespace
}  // namespace libutils
