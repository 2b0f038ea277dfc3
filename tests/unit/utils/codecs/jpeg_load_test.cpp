#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "unit/utils/codecs/codec_test.h"
#include "unit/utils/codecs/jpeg_bytes.h"
#include "utils/codecs/jpeg_file.h"

namespace libutils {
namespace {

using namespace std::string_literals;

constexpr int frame_baseline = 0xC0;
constexpr int frame_progressive = 0xC2;
constexpr int scan = 0xDA;

class JpegLoad : public testing::Test {
  protected:
    bool read_bytes(const std::string& bytes) {
        // The same name each time: what is mapped from the file before keeps it.
        std::filesystem::remove(path());
        return load(jpeg, folder.write("a.jpg", bytes).c_str()) && decompress(image, jpeg);
    }
    bool read(const jpeg_bytes_t& file) { return read_bytes(file.bytes()); }

    std::string path() const { return folder.path("a.jpg"); }
    std::string stop() const {
        return path() + ": error detected.\n" + path() + ": jpeg decompress fail, stop.\n";
    }
    std::string go_on() const {
        return path() + ": error detected.\n" + path() + ": jpeg decompress fail, but continue.\n";
    }

    temporary_folder_t folder;
    jpeg_t jpeg;
    image2d image;
};

/// The largest difference between the image and the file's picture, in any channel of any pixel of the rows
/// from `first_row`, the top one being 0, up to `end_row`.
int largest_error(const image2d& image, const jpeg_bytes_t& file, std::uint32_t first_row,
                  std::uint32_t end_row) {
    int error = 0;
    for (std::uint32_t y = first_row; y < end_row; ++y)
        for (std::uint32_t x = 0; x < file.width; ++x)
            for (int channel = 0; channel < file.components; ++channel)
                error = std::max(error, std::abs(image.pixel(x, file.height - 1 - y)[channel] -
                                                 file.sample(x, y, channel)));
    return error;
}

TEST_F(JpegLoad, NameThatLeadsToNoPlainFileIsToldWithItsPath) {
    const std::string fifo = folder.path("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& name : {folder.path("missing.jpg"), folder.path(""), fifo, ""s}) {
        const captured_stream errors(std::cerr);
        EXPECT_FALSE(load(jpeg, name.c_str()));
        EXPECT_EQ(errors.text(), name + ": file stat failed.\n");
    }
}

TEST_F(JpegLoad, RecordIsTheMappedFileAndItsName) {
    const std::string bytes = jpeg_bytes_t().bytes();
    ASSERT_TRUE(load(jpeg, folder.write("a.jpg", bytes).c_str()));
    EXPECT_EQ(text_of(jpeg), bytes);
    EXPECT_EQ(jpeg.filename, path());
    EXPECT_FALSE(jpeg.writable());
}

TEST_F(JpegLoad, ColoursBecomeRgbFromTheBottomUp) {
    jpeg_bytes_t file;
    file.full_chroma = true;
    const captured_descriptor_t errors;
    ASSERT_TRUE(read(file));
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(image.format, image_format::rgb);
    EXPECT_EQ(image.type, 1U);
    EXPECT_EQ(image.bits, image_bits::bits_8);
    EXPECT_EQ(image.width, 16U);
    EXPECT_EQ(image.height, 16U);
    EXPECT_LE(largest_error(image, file, 0, 16), 2);
}

TEST_F(JpegLoad, GreyStaysGrey) {
    jpeg_bytes_t file;
    file.components = 1;
    file.given = JCS_GRAYSCALE;
    ASSERT_TRUE(read(file));
    EXPECT_EQ(image.format, image_format::grey);
    EXPECT_EQ(image.type, 1U);
    EXPECT_EQ(image.bits, image_bits::bits_8);
    EXPECT_LE(largest_error(image, file, 0, 16), 2);
}

TEST_F(JpegLoad, ColoursThatAreStoredAsRgbAreReadToo) {
    jpeg_bytes_t file;
    file.stored = JCS_RGB;
    ASSERT_TRUE(read(file));
    EXPECT_EQ(image.format, image_format::rgb);
    EXPECT_LE(largest_error(image, file, 0, 16), 2);
}

TEST_F(JpegLoad, EveryKindOfCodingIsRead) {
    jpeg_bytes_t plain, progressive, arithmetic, both, restarted, small_chroma;
    progressive.progressive = both.progressive = true;
    arithmetic.arithmetic = both.arithmetic = true;
    restarted.restart = 1;
    for (jpeg_bytes_t* file : {&plain, &progressive, &arithmetic, &both, &restarted})
        file->full_chroma = true;
    for (const jpeg_bytes_t* file : {&plain, &progressive, &arithmetic, &both, &restarted, &small_chroma}) {
        const captured_descriptor_t errors;
        ASSERT_TRUE(read(*file));
        EXPECT_EQ(errors.text(), "");
        EXPECT_LE(largest_error(image, *file, 0, 16), file->full_chroma ? 2 : 130);
    }
}

TEST_F(JpegLoad, RowsAreAlignedToFourBytesByOneSharedRecord) {
    jpeg_bytes_t file;
    file.width = 3;
    ASSERT_TRUE(read(file));
    EXPECT_EQ(image.linesize(), 12U);
    ASSERT_NE(image.pack, nullptr);
    EXPECT_EQ(image.pack->alignment, 4U);
    EXPECT_FALSE(image.pack->swap);
    const pack_t* const first = image.pack;
    ASSERT_TRUE(read(file));
    EXPECT_EQ(image.pack, first);
}

TEST_F(JpegLoad, ImageForgetsWhatItWasBefore) {
    image = counting_image(image_format::rgba, image_bits::bits_8, 2, 2);
    image.skip_x = 1;
    image.row_length = 50;
    image.compressed = true;
    ASSERT_TRUE(image.palette.allocate(2));
    ASSERT_TRUE(read({}));
    EXPECT_EQ(image.skip_x, 0U);
    EXPECT_EQ(image.row_length, 0U);
    EXPECT_FALSE(image.compressed);
    EXPECT_EQ(image.palette.count, 0U);
}

TEST_F(JpegLoad, OtherComponentsAreRefusedWithTheMessageOfTheLibrary) {
    jpeg_bytes_t cmyk, ycck, two;
    cmyk.components = ycck.components = 4;
    cmyk.given = ycck.given = JCS_CMYK;
    ycck.stored = JCS_YCCK;
    two.components = 2;
    two.given = JCS_UNKNOWN;
    for (const jpeg_bytes_t* file : {&cmyk, &ycck, &two}) {
        const captured_descriptor_t errors;
        EXPECT_FALSE(read(*file));
        EXPECT_EQ(errors.text(), "Unsupported color conversion request\n");
    }
}

TEST_F(JpegLoad, CommentsAndApplicationDataAreKept) {
    jpeg_bytes_t file;
    file.markers = {
        {0xFE, "a comment"}, {0xE1, "one"}, {0xEF, ""}, {0xE2, std::string(65533, 'x')}, {0xFE, "\0\1"s}};
    ASSERT_TRUE(read(file));
    ASSERT_EQ(jpeg.markers.size(), 6U);
    // The library's own marker comes first.
    EXPECT_EQ(jpeg.markers.front().code, 0xE0);
    EXPECT_EQ(text_of(jpeg.markers.front().bytes).substr(0, 5), "JFIF\0"s);
    auto marker = std::next(jpeg.markers.begin());
    for (const auto& [code, content] : file.markers) {
        EXPECT_EQ(marker->code, code);
        EXPECT_EQ(text_of(marker->bytes), content);
        EXPECT_EQ(marker->bytes.use_count(), 1U);
        ++marker;
    }
}

TEST_F(JpegLoad, MarkersAreThoseOfTheLastFile) {
    jpeg_bytes_t file;
    file.markers = {{0xFE, "a comment"}};
    ASSERT_TRUE(read(file));
    ASSERT_TRUE(read({}));
    EXPECT_EQ(jpeg.markers.size(), 1U);
}

TEST_F(JpegLoad, MillionsOfMarkersDoNotFillTheMemory) {
    jpeg_bytes_t file;
    file.markers.assign(5000, {0xFE, ""});
    ASSERT_TRUE(read(file));
    EXPECT_EQ(jpeg.markers.size(), 4096U);
}

/// The library would walk over all that it has kept for each one more: hours.
TEST_F(JpegLoad, MillionsOfMarkersAreReadWithoutWalkingOverThem) {
    jpeg_bytes_t file;
    file.full_chroma = true;
    for (const int code : {0xFE, 0xE0, 0xE1, 0xEE}) {
        file.markers.assign(1000000, {code, ""});
        ASSERT_TRUE(read(file));
        EXPECT_EQ(jpeg.markers.size(), 4096U);
        EXPECT_LE(largest_error(image, file, 0, 16), 2);
    }
}

TEST_F(JpegLoad, MarkersAmongTheScansAreNotWalkedOver) {
    jpeg_bytes_t file;
    file.full_chroma = file.progressive = true;
    std::string bytes = file.bytes();
    std::string markers;
    for (int i = 0; i < 1000000; ++i)
        markers += "\xFF\xFE\0\2"s;
    bytes.insert(find_marker(bytes, scan, 1), markers);
    ASSERT_TRUE(read_bytes(bytes));
    EXPECT_EQ(jpeg.markers.size(), 1U);
    EXPECT_LE(largest_error(image, file, 0, 16), 2);
}

TEST_F(JpegLoad, WhatIsNoJpegStops) {
    for (const std::string& bytes :
         {""s, "\xFF"s, "BM"s, "\xFF\xD8"s, "\xFF\xD8\xFF\xD9"s, std::string(100, '\0')}) {
        const captured_descriptor_t errors;
        EXPECT_FALSE(read_bytes(bytes));
        EXPECT_EQ(errors.text(), stop());
    }
}

TEST_F(JpegLoad, HeadersThatTheLibraryRefusesStop) {
    const std::string good = jpeg_bytes_t().bytes();
    std::string deep = good;
    deep[find_marker(good, frame_baseline) + 4] = 12;
    for (const std::string& bytes :
         {deep, with_size(good, frame_baseline, 0, 16), with_size(good, frame_baseline, 16, 0)}) {
        const captured_descriptor_t errors;
        EXPECT_FALSE(read_bytes(bytes));
        EXPECT_EQ(errors.text(), stop());
    }
}

TEST_F(JpegLoad, SkipBehindTheEndStops) {
    const captured_descriptor_t errors;
    EXPECT_FALSE(read_bytes("\xFF\xD8\xFF\xDC\xFF\xFFrest"));
    EXPECT_EQ(errors.text(), stop());
}

TEST_F(JpegLoad, FileCutInTheMiddleShowsItsUpperHalf) {
    jpeg_bytes_t file;
    file.height = 160;
    file.full_chroma = true;
    file.sample = [](std::uint32_t, std::uint32_t y, int) { return 40 + static_cast<int>(y / 8 * 10); };
    const std::string bytes = file.bytes();
    const std::size_t pixels = find_marker(bytes, scan);
    const captured_descriptor_t errors;
    ASSERT_TRUE(read_bytes(bytes.substr(0, (pixels + bytes.size()) / 2)));
    EXPECT_EQ(errors.text(), go_on());
    EXPECT_LE(largest_error(image, file, 0, 40), 2);
    EXPECT_EQ(image.height, 160U);
    EXPECT_EQ(row_of(image, 0), std::string(16 * 3, '\0'));
}

TEST_F(JpegLoad, ProgressiveFileCutBehindItsFirstScanShowsThePicture) {
    jpeg_bytes_t file;
    file.height = 160;
    file.full_chroma = true;
    file.progressive = true;
    file.sample = [](std::uint32_t, std::uint32_t y, int) { return 40 + static_cast<int>(y / 8 * 10); };
    for (const bool arithmetic : {false, true}) {
        SCOPED_TRACE(arithmetic);
        file.arithmetic = arithmetic;
        const std::string bytes = file.bytes();
        const std::size_t second = find_marker(bytes, scan, 1);
        ASSERT_NE(second, std::string::npos);
        const captured_descriptor_t errors;
        ASSERT_TRUE(read_bytes(bytes.substr(0, second)));
        EXPECT_EQ(errors.text(), go_on());
        EXPECT_LE(largest_error(image, file, 0, 160), 8);
    }
}

TEST_F(JpegLoad, ProgressiveFileCutInItsFirstScanShowsItsUpperHalf) {
    jpeg_bytes_t file;
    file.width = 64;
    file.height = 160;
    file.full_chroma = true;
    file.progressive = true;
    file.sample = [](std::uint32_t, std::uint32_t y, int) { return 40 + static_cast<int>(y / 8 * 10); };
    const std::string bytes = file.bytes();
    const std::size_t first = find_marker(bytes, scan);
    const std::size_t second = find_marker(bytes, scan, 1);
    const captured_descriptor_t errors;
    ASSERT_TRUE(read_bytes(bytes.substr(0, (first + second) / 2)));
    EXPECT_EQ(errors.text(), go_on());
    EXPECT_LE(largest_error(image, file, 0, 40), 8);
}

TEST_F(JpegLoad, FileThatIsCutBetweenLoadAndDecodingIsDamaged) {
    jpeg_bytes_t file;
    file.width = file.height = 200;
    file.sample = jpeg_bytes_t::noise;
    ASSERT_TRUE(load(jpeg, folder.write("a.jpg", file.bytes()).c_str()));
    std::filesystem::resize_file(path(), 5000);
    const captured_descriptor_t errors;
    EXPECT_TRUE(decompress(image, jpeg));
    EXPECT_NE(errors.text(), "");
}

TEST_F(JpegLoad, FileCutAnywhereShowsHowFarItGot) {
    jpeg_bytes_t plain, progressive, arithmetic, marked;
    plain.full_chroma = true;
    progressive.progressive = arithmetic.progressive = marked.progressive = true;
    arithmetic.arithmetic = true;
    marked.restart = 1;
    for (const jpeg_bytes_t& file : {plain, progressive, arithmetic, marked}) {
        const std::string bytes = file.bytes();
        // The first scan's header: its mark, two bytes that tell its length, and that many.
        const std::size_t place = find_marker(bytes, scan);
        const std::size_t pixels = place + 2 + static_cast<unsigned char>(bytes[place + 3]);
        for (std::size_t size = 0; size <= bytes.size(); ++size) {
            SCOPED_TRACE(size);
            const captured_descriptor_t errors;
            EXPECT_EQ(read_bytes(bytes.substr(0, size)), size >= pixels);
            EXPECT_EQ(errors.text(), size < pixels ? stop() : size < bytes.size() ? go_on() : "");
        }
    }
}

/// The arithmetic decoder makes up what is missing, so that its files end where their bytes do.
TEST_F(JpegLoad, FileThatLacksOnlyItsEndMarkIsWhole) {
    jpeg_bytes_t plain, small_chroma, progressive, restarted;
    progressive.progressive = true;
    restarted.restart = 1;
    for (jpeg_bytes_t* file : {&plain, &progressive, &restarted})
        file->full_chroma = true;
    for (jpeg_bytes_t* file : {&plain, &small_chroma, &progressive, &restarted}) {
        file->width = file->height = 100;
        file->sample = jpeg_bytes_t::noise;
        const std::string bytes = file->bytes();
        ASSERT_TRUE(read_bytes(bytes));
        const std::string whole = pixels_of(image);
        for (const std::size_t lacking : {std::size_t{1}, std::size_t{2}}) {
            const captured_descriptor_t errors;
            ASSERT_TRUE(read_bytes(bytes.substr(0, bytes.size() - lacking)));
            EXPECT_TRUE(pixels_of(image) == whole);
            EXPECT_EQ(errors.text(), go_on());
        }
    }
}

TEST_F(JpegLoad, DamagedPixelsAreShownWithAWarningOfTheLibrary) {
    jpeg_bytes_t file;
    file.width = file.height = 64;
    file.sample = jpeg_bytes_t::noise;
    std::string bytes = file.bytes();
    for (std::size_t i = bytes.size() - 400; i < bytes.size() - 300; ++i)
        bytes[i] = '\x55';
    const captured_descriptor_t errors;
    ASSERT_TRUE(read_bytes(bytes));
    EXPECT_THAT(errors.text(), testing::StartsWith("Corrupt JPEG data"));
}

/// 12 GiB are more than an image can have; 69 MB are more than a file of some hundred bytes can hold.
TEST_F(JpegLoad, SizesThatTheFileDoesNotFillAreRefused) {
    const captured_descriptor_t errors;
    for (const std::uint16_t side : std::vector<std::uint16_t>{65500, 4800}) {
        EXPECT_FALSE(read_bytes(with_size(jpeg_bytes_t().bytes(), frame_baseline, side, side)));
        EXPECT_TRUE(image.empty());
    }
    EXPECT_EQ(errors.text(), "");
}

TEST_F(JpegLoad, LargePictureOfWhichLittleIsLeftIsShown) {
    const std::string bytes = with_size(jpeg_bytes_t().bytes(), frame_baseline, 4700, 4700);
    const captured_descriptor_t errors;
    EXPECT_TRUE(read_bytes(bytes.substr(0, bytes.size() - 2)));
    EXPECT_TRUE(image.holds_pixels());
    EXPECT_EQ(errors.text(), go_on());
}

/// A progressive picture is kept whole, 98 MB here, before its first row comes out.
TEST_F(JpegLoad, CoefficientsThatTheFileDoesNotFillAreNotWaitedFor) {
    jpeg_bytes_t file;
    file.progressive = true;
    file.components = 1;
    file.given = JCS_GRAYSCALE;
    const captured_descriptor_t errors;
    EXPECT_TRUE(read_bytes(with_size(file.bytes(), frame_progressive, 7000, 7000)));
    EXPECT_EQ(errors.text(), go_on());
}

int scans_of(const std::string& bytes) {
    int scans = 0;
    while (find_marker(bytes, scan, scans) != std::string::npos)
        ++scans;
    return scans;
}

/// The file with its last scan `count` times.
std::string with_last_scan(const std::string& bytes, int count) {
    const std::size_t last = find_marker(bytes, scan, scans_of(bytes) - 1);
    const std::string last_scan = bytes.substr(last, bytes.size() - 2 - last);
    std::string result = bytes.substr(0, last);
    for (int i = 0; i < count; ++i)
        result += last_scan;
    return result + "\xFF\xD9";
}

TEST_F(JpegLoad, ScansWithoutEndAreNotWaitedFor) {
    jpeg_bytes_t file;
    file.progressive = true;
    const std::string bytes = file.bytes();
    const captured_descriptor_t errors;
    EXPECT_TRUE(read_bytes(with_last_scan(bytes, 500 - scans_of(bytes))));
    EXPECT_THAT(errors.text(), testing::Not(testing::HasSubstr("error detected")));
    EXPECT_TRUE(read_bytes(with_last_scan(bytes, 600)));
    EXPECT_THAT(errors.text(), testing::EndsWith(go_on()));
    EXPECT_GE(*image.pixel(0, 15), 250) << "red, not black";
}

/// 18.5 million pixels: 58 scans are 2 to the power of 30 of them.
TEST_F(JpegLoad, ScansOverALargePictureAreFewer) {
    jpeg_bytes_t file;
    file.width = file.height = 4300;
    file.components = 1;
    file.given = JCS_GRAYSCALE;
    file.progressive = true;
    file.sample = [](std::uint32_t, std::uint32_t, int) { return 200; };
    const std::string bytes = file.bytes();
    const int others = scans_of(bytes) - 1;
    for (const int scans : {58, 59}) {
        SCOPED_TRACE(scans);
        const captured_descriptor_t errors;
        EXPECT_TRUE(read_bytes(with_last_scan(bytes, scans - others)));
        EXPECT_EQ(*image.pixel(0, 0), 200);
        if (scans == 58)
            EXPECT_THAT(errors.text(), testing::Not(testing::HasSubstr("error detected")));
        else
            EXPECT_THAT(errors.text(), testing::EndsWith(go_on()));
    }
}

TEST_F(JpegLoad, PaddingIsZeroToTheRightAndAbove) {
    jpeg_bytes_t file;
    file.width = 13;
    file.height = 5;
    file.sample = [](std::uint32_t, std::uint32_t, int) { return 200; };
    ASSERT_TRUE(load(jpeg, folder.write("a.jpg", file.bytes()).c_str()));
    ASSERT_TRUE(decompress(image, jpeg, 8, 4));
    ASSERT_EQ(image.width, 16U);
    ASSERT_EQ(image.height, 8U);
    for (std::uint32_t y = 0; y < 8; ++y)
        for (std::uint32_t x = 0; x < 16; ++x)
            EXPECT_NEAR(*image.pixel(x, y), x < 13 && y < 5 ? 200 : 0, x < 13 && y < 5 ? 2 : 0)
                << x << ' ' << y;
    ASSERT_TRUE(decompress(image, jpeg, 13, 5));
    EXPECT_EQ(image.width, 13U);
    EXPECT_EQ(image.height, 5U);
}

TEST_F(JpegLoad, PaddingThatNoMemoryHasFails) {
    ASSERT_TRUE(load(jpeg, folder.write("a.jpg", jpeg_bytes_t().bytes()).c_str()));
    EXPECT_FALSE(decompress(image, jpeg, 0xFFFFFFFF, 0xFFFFFFFF));
    EXPECT_FALSE(decompress(image, jpeg, 0xFFFFFFF0, 1));
}

TEST_F(JpegLoad, EmptyRecordStops) {
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(decompress(image, jpeg));
    EXPECT_EQ(errors.text(), ": error detected.\n: jpeg decompress fail, stop.\n");
}

}  // namespace
}  // namespace libutils
