#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <vector>

#include "unit/utils/codecs/codec_test.h"
#include "unit/utils/codecs/jpeg_bytes.h"
#include "utils/codecs/jpeg_file.h"

namespace libutils {
namespace {

using namespace std::string_literals;
using ulk_test::read_file;

class JpegSave : public testing::Test {
  protected:
    JpegSave() { jpeg.filename = "a.jpg"; }

    temporary_folder_t folder;
    jpeg_t jpeg;
};

/// The picture of a file before it is encoded.
image2d picture_of(const jpeg_bytes_t& file, std::uint32_t format) {
    image2d image = counting_image(format, image_bits::bits_8, file.width, file.height);
    for (std::uint32_t y = 0; y < file.height; ++y)
        for (std::uint32_t x = 0; x < file.width; ++x)
            for (int channel = 0; channel < file.components; ++channel)
                image.pixel(x, file.height - 1 - y)[channel] =
                    static_cast<unsigned char>(file.sample(x, y, channel));
    return image;
}

TEST_F(JpegSave, EveryFormIsWhatTheLibraryMakesOfIt) {
    jpeg_bytes_t rgb, ycbcr, grey;
    ycbcr.given = JCS_YCbCr;
    grey.given = JCS_GRAYSCALE;
    grey.components = 1;
    for (const auto& [file, format] :
         {std::pair{&rgb, image_format::rgb}, std::pair{&ycbcr, image_format::ycbcr},
          std::pair{&grey, image_format::grey}})
        for (const int quality : {95, 30}) {
            file->width = 21;
            file->sample = jpeg_bytes_t::noise;
            file->quality = quality;
            const captured_descriptor_t errors;
            ASSERT_TRUE(compress(jpeg, picture_of(*file, format), quality, true));
            EXPECT_EQ(text_of(jpeg), file->bytes());
            EXPECT_EQ(errors.text(), "");
        }
}

TEST_F(JpegSave, CoarseTablesStayWithinABaselineFileWhenThatIsForced) {
    const image2d image = picture_of({}, image_format::rgb);
    // The library warns of such tables.
    const captured_descriptor_t errors;
    ASSERT_TRUE(compress(jpeg, image, 1, true));
    EXPECT_NE(find_marker(text_of(jpeg), 0xC0), std::string::npos);
    ASSERT_TRUE(compress(jpeg, image, 1, false));
    EXPECT_EQ(find_marker(text_of(jpeg), 0xC0), std::string::npos);
}

TEST_F(JpegSave, BlockIsCutToWhatWasWritten) {
    jpeg_bytes_t file;
    ASSERT_TRUE(compress(jpeg, picture_of(file, image_format::rgb), 95, true));
    EXPECT_LT(jpeg.block_size(), 2000U);
    EXPECT_EQ(text_of(jpeg).substr(0, 2), "\xFF\xD8");
    EXPECT_EQ(text_of(jpeg).substr(jpeg.size() - 2), "\xFF\xD9");
}

TEST_F(JpegSave, MarkersOfTheRecordAreWritten) {
    jpeg_bytes_t file;
    file.markers = {{0xFE, "a comment"}, {0xEF, ""}, {0xE1, std::string(65533, 'x')}};
    for (const auto& [code, content] : file.markers) {
        jpeg_t::marker_t marker{code, {}};
        ASSERT_TRUE(fit_window(marker.bytes, content.size()));
        std::copy(content.begin(), content.end(), marker.bytes.begin());
        jpeg.markers.push_back(marker);
    }
    ASSERT_TRUE(compress(jpeg, picture_of(file, image_format::rgb), 100, true));
    EXPECT_EQ(text_of(jpeg), file.bytes());
    EXPECT_EQ(jpeg.markers.size(), 3U);
}

TEST_F(JpegSave, MarkerThatIsTooLongFails) {
    jpeg_t::marker_t marker{0xFE, {}};
    ASSERT_TRUE(fit_window(marker.bytes, 65534));
    jpeg.markers.push_back(marker);
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(compress(jpeg, counting_image(image_format::rgb, image_bits::bits_8, 8, 8), 95, true));
    EXPECT_EQ(errors.text(), "a.jpg: error detected.\n");
    EXPECT_TRUE(jpeg.empty());
}

TEST_F(JpegSave, PartOfAnImageIsStoredAsThatPart) {
    jpeg_bytes_t file;
    file.sample = jpeg_bytes_t::noise;
    image2d part;
    ASSERT_TRUE(part.subimage(picture_of(file, image_format::rgb), 3, 2, 9, 8));
    // The rows count from the bottom in the image and from the top in the file.
    file.sample = [](std::uint32_t x, std::uint32_t y, int channel) {
        return jpeg_bytes_t::noise(x + 3, y + 16 - 2 - 8, channel);
    };
    file.width = 9;
    file.height = 8;
    ASSERT_TRUE(compress(jpeg, part, 100, true));
    EXPECT_EQ(text_of(jpeg), file.bytes());
}

struct refused_row_t {
    std::uint32_t format;
    std::uint32_t type;
    std::uint32_t bits;
};

TEST_F(JpegSave, OtherFormatsAreRefusedInSilence) {
    const captured_descriptor_t errors;
    for (const refused_row_t& row : std::vector<refused_row_t>{{1, 1, 3},
                                                               {9, 1, 3},
                                                               {10, 1, 3},
                                                               {11, 1, 3},
                                                               {17, 1, 3},
                                                               {15, 1, 3},
                                                               {8, 0, 3},
                                                               {8, 2, 3},
                                                               {8, 1, 5},
                                                               {0, 1, 0},
                                                               {0, 0, 3},
                                                               {14, 0, 3}}) {
        image2d image = counting_image(row.format, row.bits, 8, 8);
        image.type = row.type;
        jpeg.allocate(10);
        EXPECT_FALSE(compress(jpeg, image, 95, true)) << row.format << ' ' << row.type << ' ' << row.bits;
        EXPECT_TRUE(jpeg.empty());
    }
    EXPECT_EQ(errors.text(), "");
}

TEST_F(JpegSave, ImageWithoutItsPixelsIsRefusedInSilence) {
    image2d compressed = counting_image(image_format::rgb, image_bits::bits_8, 8, 8), cut = compressed;
    compressed.compressed = true;
    cut.height = 9;
    const captured_descriptor_t errors;
    EXPECT_FALSE(compress(jpeg, compressed, 95, true));
    EXPECT_FALSE(compress(jpeg, cut, 95, true));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(JpegSave, SizesThatTheLibraryRefusesFail) {
    image2d empty = counting_image(image_format::grey, image_bits::bits_8, 8, 8);
    empty.width = 0;
    for (const image2d& image : {empty, counting_image(image_format::grey, image_bits::bits_8, 65501, 1)}) {
        const captured_stream errors(std::cerr);
        EXPECT_FALSE(compress(jpeg, image, 95, true));
        EXPECT_EQ(errors.text(), "a.jpg: error detected.\n");
        EXPECT_TRUE(jpeg.empty());
    }
}

TEST_F(JpegSave, ResultThatOutgrowsItsBlockFails) {
    image2d image = counting_image(image_format::rgb, image_bits::bits_8, 3000, 3000);
    std::uint32_t noise = 1;
    for (unsigned char& byte : image.elements())
        byte = static_cast<unsigned char>((noise = noise * 1664525 + 1013904223) >> 24);
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(compress(jpeg, image, 100, true));
    EXPECT_EQ(errors.text(), "a.jpg: error detected.\n");
    EXPECT_TRUE(jpeg.empty());
}

TEST_F(JpegSave, RecordCanBeUsedAgainAfterAFailure) {
    const jpeg_bytes_t file;
    {
        const captured_stream errors(std::cerr);
        EXPECT_FALSE(
            compress(jpeg, counting_image(image_format::grey, image_bits::bits_8, 65501, 1), 95, true));
    }
    ASSERT_TRUE(compress(jpeg, picture_of(file, image_format::rgb), 100, true));
    EXPECT_EQ(text_of(jpeg), file.bytes());
}

TEST_F(JpegSave, FileIsTheBytesOfTheRecord) {
    ASSERT_TRUE(compress(jpeg, counting_image(image_format::rgb, image_bits::bits_8, 8, 8), 95, true));
    ASSERT_TRUE(save(jpeg, folder.path("a.jpg").c_str()));
    EXPECT_EQ(read_file(folder.path("a.jpg")), text_of(jpeg));
}

/// The file that was there is deleted, not overwritten: who has it mapped keeps it.
TEST_F(JpegSave, FileIsReplaced) {
    const std::string path = folder.write("a.jpg", "former");
    const std::string other_name = folder.path("other.jpg");
    std::filesystem::create_hard_link(path, other_name);
    ASSERT_TRUE(compress(jpeg, counting_image(image_format::rgb, image_bits::bits_8, 8, 8), 95, true));
    ASSERT_TRUE(save(jpeg, path.c_str()));
    EXPECT_EQ(read_file(path), text_of(jpeg));
    EXPECT_EQ(read_file(other_name), "former");
}

TEST_F(JpegSave, LoadedFileCanBeSavedOverItself) {
    const std::string bytes = jpeg_bytes_t().bytes();
    const std::string path = folder.write("a.jpg", bytes);
    ASSERT_TRUE(load(jpeg, path.c_str()));
    ASSERT_TRUE(save(jpeg, path.c_str()));
    EXPECT_EQ(read_file(path), bytes);
}

TEST_F(JpegSave, RecordWithoutBytesLeavesTheFileAlone) {
    const std::string path = folder.write("a.jpg", "former");
    EXPECT_FALSE(save(jpeg, path.c_str()));
    EXPECT_EQ(read_file(path), "former");
}

TEST_F(JpegSave, FileThatIsNotWrittenWholeIsAFailure) {
    ASSERT_TRUE(compress(jpeg, counting_image(image_format::rgb, image_bits::bits_8, 8, 8), 95, true));
    const std::string fifo = folder.path("fifo");
    const std::string empty_folder = folder.path("empty.jpg");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    ASSERT_TRUE(std::filesystem::create_directory(empty_folder));
    for (const std::string& path : {folder.path("missing/a.jpg"), empty_folder, fifo, "/dev/full"s}) {
        EXPECT_FALSE(save(jpeg, path.c_str())) << path;
    }
    EXPECT_TRUE(std::filesystem::is_directory(empty_folder));
    EXPECT_TRUE(std::filesystem::exists("/dev/full"));
    EXPECT_TRUE(std::filesystem::exists(fifo));
}

}  // namespace
}  // namespace libutils
