#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <vector>

#include "unit/utils/codecs/bmp_bytes.h"
#include "utils/codecs/bmp_file.h"

namespace libutils {
namespace {

using namespace std::string_literals;
using ulk_test::read_file;

class BmpSave : public testing::Test {
  protected:
    /// The bytes of the file that the image becomes.
    std::string written(const image2d& image) {
        const std::string path = folder.path("a.bmp");
        return convert(bmp, image) && save(bmp, path.c_str()) ? read_file(path) : "not written";
    }

    temporary_folder_t folder;
    bmp_save_t bmp;
};

struct stored_row_t {
    std::uint32_t format;
    std::uint32_t bits;
    std::uint16_t bit_count;
    std::size_t line;
};

const std::vector<stored_row_t> stored_rows{{0, 0, 1, 4}, {0, 2, 4, 4}, {0, 3, 8, 8}, {10, 3, 24, 16}};

TEST_F(BmpSave, FileIsTheHeadersAndThePixels) {
    for (const stored_row_t& row : stored_rows) {
        SCOPED_TRACE(row.bit_count);
        const std::string file = written(counting_image(row.format, row.bits, 5, 2));
        const std::string pixels = counting(row.line * 2);
        const auto size = static_cast<std::uint32_t>(pixels.size());
        EXPECT_EQ(file, "BM" + little32(54 + size) + "\0\0\0\0"s + little32(54) + little32(40) + little32(5) +
                            little32(2) + little16(1) + little16(row.bit_count) + little32(0) +
                            little32(size) + little32(72) + little32(72) + little32(0) + little32(0) +
                            pixels);
    }
}

TEST_F(BmpSave, SignedIntegersAreStoredAsTheyStand) {
    image2d image = counting_image(image_format::bgr, image_bits::bits_8, 4, 1);
    const std::string as_unsigned = written(image);
    image.type = image_type::signed_integer;
    EXPECT_EQ(written(image), as_unsigned);
}

struct refused_row_t {
    std::uint32_t format;
    std::uint32_t type;
    std::uint32_t bits;
};

TEST_F(BmpSave, OtherFormatsAreRefusedWithTheirMessage) {
    const std::vector<refused_row_t> rows{{0, 1, 1},  {0, 1, 5},  {0, 2, 3},  {1, 1, 3},
                                          {8, 1, 3},  {9, 1, 3},  {9, 1, 11}, {10, 2, 3},
                                          {10, 1, 5}, {11, 1, 3}, {14, 1, 3}, {17, 1, 3}};
    for (const refused_row_t& row : rows) {
        image2d image = counting_image(row.format, row.bits, 4, 1);
        image.type = row.type;
        const captured_stream errors(std::cerr);
        EXPECT_FALSE(convert(bmp, image)) << row.format << ' ' << row.type << ' ' << row.bits;
        EXPECT_EQ(errors.text(), "convert(to bmp): not supported format.\n");
    }
}

TEST_F(BmpSave, CompressedImageIsRefusedInSilence) {
    image2d image = counting_image(image_format::bgr, image_bits::bits_8, 4, 1);
    image.compressed = true;
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(convert(bmp, image));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(BmpSave, ImageThatDoesNotHoldItsPixelsIsRefusedInSilence) {
    image2d image = counting_image(image_format::bgr, image_bits::bits_8, 4, 2);
    image.height = 3;
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(convert(bmp, image));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(BmpSave, PixelsAreShared) {
    const image2d image = counting_image(image_format::bgr, image_bits::bits_8, 5, 2);
    ASSERT_TRUE(convert(bmp, image));
    EXPECT_EQ(std::as_const(bmp.pixels).begin(), image.begin());
    EXPECT_EQ(image.use_count(), 2U);
}

TEST_F(BmpSave, PartOfAnImageIsStoredAsThatPart) {
    const image2d whole = counting_image(image_format::grey, image_bits::bits_8, 8, 4);
    image2d part;
    ASSERT_TRUE(part.subimage(whole, 2, 1, 3, 2));
    EXPECT_EQ(written(part).substr(54), "\x0B\x0C\x0D\x00\x13\x14\x15\x00"s);
}

TEST_F(BmpSave, RowsThatAreAlignedInAnotherWayArePadded) {
    image2d image = counting_image(image_format::grey, image_bits::bits_8, 3, 2);
    static const pack_t tight{false, 1};
    image.pack = &tight;
    EXPECT_EQ(written(image).substr(54), "\x01\x02\x03\x00\x04\x05\x06\x00"s);
}

TEST_F(BmpSave, WrittenFileIsReadBackAsItWas) {
    for (const stored_row_t& row : stored_rows) {
        const image2d image = counting_image(row.format, row.bits, 5, 3);
        written(image);
        bmp_file_t file;
        image2d read;
        ASSERT_TRUE(load(file, folder.path("a.bmp").c_str()) && convert(read, file));
        EXPECT_EQ(read.format, row.format);
        EXPECT_EQ(read.bits, row.bits);
        EXPECT_EQ(read.width, 5U);
        EXPECT_EQ(pixels_of(read), pixels_of(image));
    }
}

TEST_F(BmpSave, MappedFileCanBeWrittenOverItself) {
    const bmp_bytes_t file;
    const std::string path = folder.write("a.bmp", file.bytes());
    bmp_file_t loaded;
    image2d image;
    ASSERT_TRUE(load(loaded, path.c_str()) && convert(image, loaded));
    EXPECT_EQ(written(image), file.bytes());
}

TEST_F(BmpSave, EmptyPictureIsAFileOfHeaders) {
    image2d image;
    image.type = image_type::unsigned_integer;
    image.bits = image_bits::bits_8;
    EXPECT_EQ(written(image).size(), 54U);
}

TEST_F(BmpSave, FileThatIsNotWrittenWholeIsAFailure) {
    ASSERT_TRUE(convert(bmp, counting_image(image_format::bgr, image_bits::bits_8, 5, 2)));
    const std::string fifo = folder.path("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {folder.path("missing/a.bmp"), folder.path(""), fifo, "/dev/full"s})
        EXPECT_FALSE(save(bmp, path.c_str())) << path;
}

}  // namespace
}  // namespace libutils
