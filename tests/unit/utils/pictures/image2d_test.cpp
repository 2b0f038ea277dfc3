#include "utils/pictures/image2d.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <fstream>
#include <limits>

#include "support/scene_text.h"
#include "utils/pictures/image1d.h"
#include "utils/pictures/image3d.h"

using namespace libutils;

namespace {

constexpr std::uint32_t most = std::numeric_limits<std::uint32_t>::max();

image2d image_of(std::uint32_t format, std::uint32_t bits, std::uint32_t width, std::uint32_t height) {
    image2d image;
    image.format = format;
    image.type = image_type::unsigned_integer;
    image.bits = bits;
    image.width = width;
    image.height = height;
    return image;
}

/// Grey, its bytes counted from 0.
image2d counting_image(std::uint32_t width, std::uint32_t height) {
    image2d image = image_of(image_format::grey, image_bits::bits_8, width, height);
    EXPECT_TRUE(image.allocate());
    for (std::uint64_t i = 0; i < image.size(); ++i)
        image.at(i) = static_cast<unsigned char>(i);
    return image;
}

}  // namespace

TEST(Image, BeginsWithoutBytesAndWithEverythingZero) {
    const image2d image;
    EXPECT_TRUE(image.empty());
    EXPECT_EQ(image.begin(), nullptr);
    EXPECT_EQ(image.format, 0U);
    EXPECT_EQ(image.type, 0U);
    EXPECT_EQ(image.bits, 0U);
    EXPECT_EQ(image.pack, nullptr);
    EXPECT_EQ(image.row_length, 0U);
    EXPECT_EQ(image.skip_x, 0U);
    EXPECT_EQ(image.skip_y, 0U);
    EXPECT_EQ(image.width, 0U);
    EXPECT_EQ(image.height, 0U);
    EXPECT_FALSE(image.compressed);
    EXPECT_EQ(image.palette.count, 0U);
    EXPECT_TRUE(image.palette.red.empty());
}

TEST(ImageFormat, ChannelsOfEachFormat) {
    constexpr std::uint32_t channels[] = {1, 2, 1, 1, 1, 1, 1, 2, 3, 4, 3, 4, 1, 2, 3, 4, 2, 1};
    for (std::uint32_t format = 0; format < std::size(channels); ++format)
        EXPECT_EQ(channel_count(format), channels[format]) << format;
}

TEST(ImageFormat, CodesHaveTheirNumbers) {
    EXPECT_EQ(image_format::grey, 0U);
    EXPECT_EQ(image_format::grey_alpha, 1U);
    EXPECT_EQ(image_format::rgb, 8U);
    EXPECT_EQ(image_format::rgba, 9U);
    EXPECT_EQ(image_format::bgr, 10U);
    EXPECT_EQ(image_format::bgra, 11U);
    EXPECT_EQ(image_format::ycbcr, 14U);
    EXPECT_EQ(image_format::index, 17U);
    EXPECT_EQ(image_type::signed_integer, 0U);
    EXPECT_EQ(image_type::unsigned_integer, 1U);
    EXPECT_EQ(image_type::floating_point, 2U);
    EXPECT_EQ(image_bits::bits_8, 3U);
    EXPECT_EQ(image_bits::packed_3_3_2, 9U);
    EXPECT_EQ(image_bits::packed_depth_stencil, 15U);
}

TEST(ImageFormat, BitsOfAPixelAreThoseOfItsChannelsOrOfThePackedPixel) {
    constexpr std::uint32_t channel_bits[] = {1, 2, 4, 8, 12, 16, 24, 32, 64};
    for (std::uint32_t bits = 0; bits < std::size(channel_bits); ++bits) {
        EXPECT_EQ(bits_per_pixel(image_format::grey, bits), channel_bits[bits]) << bits;
        EXPECT_EQ(bits_per_pixel(image_format::rgb, bits), 3 * channel_bits[bits]) << bits;
    }
    constexpr std::uint32_t pixel_bits[] = {8, 16, 16, 32, 8, 16, 32};
    for (std::uint32_t i = 0; i < std::size(pixel_bits); ++i) {
        EXPECT_EQ(bits_per_pixel(image_format::grey, 9 + i), pixel_bits[i]) << 9 + i;
        EXPECT_EQ(bits_per_pixel(image_format::bgra, 9 + i), pixel_bits[i]) << 9 + i;
    }
}

TEST(ImageFormatDeathTest, CodesBehindTheTablesTrap) {
    EXPECT_DEATH((void)channel_count(18), "");
    EXPECT_DEATH((void)bits_per_pixel(18, image_bits::bits_8), "");
    EXPECT_DEATH((void)bits_per_pixel(image_format::grey, 16), "");
    image2d image = image_of(most, image_bits::bits_8, 1, 1);
    EXPECT_DEATH((void)image.linesize(), "");
}

TEST(Image, LineIsRoundedToBytesAndThenToTheAlignment) {
    const pack_t aligned_by_0{.alignment = 0};
    const pack_t aligned_by_1{.alignment = 1};
    const pack_t aligned_by_8{.alignment = 8};
    struct row_t {
        std::uint32_t format, bits, width, row_length;
        const pack_t* pack;
        std::uint64_t linesize;
    };
    const row_t rows[] = {
        {image_format::rgb, image_bits::bits_8, 3, 0, nullptr, 12},
        {image_format::rgb, image_bits::bits_8, 4, 0, nullptr, 12},
        {image_format::rgb, image_bits::bits_8, 5, 0, nullptr, 16},
        {image_format::rgb, image_bits::bits_8, 3, 0, &aligned_by_0, 12},
        {image_format::rgb, image_bits::bits_8, 3, 0, &aligned_by_1, 9},
        {image_format::rgb, image_bits::bits_8, 3, 0, &aligned_by_8, 16},
        {image_format::rgb, image_bits::bits_8, 3, 7, nullptr, 24},
        {image_format::index, image_bits::bits_1, 1, 0, nullptr, 4},
        {image_format::index, image_bits::bits_1, 9, 0, &aligned_by_1, 2},
        {image_format::index, image_bits::bits_4, 8, 0, nullptr, 4},
        {image_format::index, image_bits::bits_4, 9, 0, nullptr, 8},
        {image_format::bgra, image_bits::packed_5_5_5_1, 3, 0, nullptr, 8},
        {image_format::grey, image_bits::bits_12, 3, 0, &aligned_by_1, 5},
        {image_format::rgba, image_bits::bits_64, most, 0, nullptr, std::uint64_t{most} * 32},
        {image_format::grey, image_bits::bits_8, 0, 0, nullptr, 0},
    };
    for (const row_t& row : rows) {
        image2d image = image_of(row.format, row.bits, row.width, 1);
        image.row_length = row.row_length;
        image.pack = row.pack;
        EXPECT_EQ(image.linesize(), row.linesize) << row.format << ' ' << row.bits << ' ' << row.width;
    }
}

TEST(Image, AlignmentThatDoesNotFitGivesNoLine) {
    const pack_t huge{.alignment = no_size - 1};
    image2d image = image_of(image_format::grey, image_bits::bits_8, 3, 1);
    image.pack = &huge;
    EXPECT_EQ(image.linesize(), no_size - 1);
    EXPECT_FALSE(image.allocate());
    EXPECT_EQ(row_size(no_size / 4, 1, &huge), no_size - 1);
    EXPECT_EQ(row_size(no_size, 8, nullptr), no_size);
    EXPECT_EQ(row_size(no_size / 8, 8, &huge), no_size - 1);
    EXPECT_EQ(size_product(1ULL << 32, 1ULL << 32), no_size);
    EXPECT_EQ(size_product(3, 5), 15U);
    EXPECT_EQ(size_sum(no_size, 1), no_size);
    EXPECT_EQ(size_sum(3, 5), 8U);
}

TEST(Image, PixelLiesBehindTheSkipsInItsLine) {
    image2d image = image_of(image_format::rgb, image_bits::bits_8, 2, 2);
    image.row_length = 5;
    image.skip_x = 1;
    image.skip_y = 2;
    ASSERT_TRUE(image.allocate());
    EXPECT_EQ(image.pixel(0, 0) - image.begin(), 2 * 16 + 3);
    EXPECT_EQ(image.pixel(1, 1) - image.begin(), 3 * 16 + 6);
    const image2d& constant = image;
    EXPECT_EQ(constant.pixel(1, 1) - constant.begin(), 3 * 16 + 6);
}

TEST(Image, PixelOfLessThanAByteIsItsByte) {
    image2d image = image_of(image_format::index, image_bits::bits_4, 5, 1);
    ASSERT_TRUE(image.allocate());
    EXPECT_EQ(image.pixel(1, 0) - image.begin(), 0);
    EXPECT_EQ(image.pixel(4, 0) - image.begin(), 2);
}

TEST(Image, PixelCountsFromTheWindow) {
    image2d image = counting_image(4, 4);
    image.offset = 4;
    EXPECT_EQ(*image.pixel(1, 1), 9);
}

TEST(Image, AllocateTakesSkippedRowsTooAndTheLimitOff) {
    image2d image = image_of(image_format::rgb, image_bits::bits_8, 3, 2);
    image.skip_y = 3;
    image.limit = 1;
    ASSERT_TRUE(image.allocate());
    EXPECT_EQ(image.limit, image2d::no_limit);
    EXPECT_EQ(image.size(), 5 * 12U);
}

TEST(Image, AllocateOfNoPixelsIsAnEmptyBlock) {
    image2d image = image_of(image_format::rgb, image_bits::bits_8, 0, 7);
    EXPECT_TRUE(image.allocate());
    EXPECT_TRUE(image.empty());
    EXPECT_TRUE(image.holds_pixels());
}

TEST(Image, AllocateOfASmallerSizeKeepsWhatFits) {
    image2d image = counting_image(4, 4);
    image.height = 2;
    ASSERT_TRUE(image.allocate());
    EXPECT_EQ(image.size(), 8U);
    EXPECT_EQ(image.at(7), 7);
}

TEST(Image, AllocateOfALargerSizeIsAFreshBlock) {
    image2d image = counting_image(4, 4);
    image.height = 4096;
    ASSERT_TRUE(image.allocate());
    EXPECT_EQ(image.size(), 4096 * 4U);
    EXPECT_TRUE(image.holds_pixels());
    *image.pixel(3, 4095) = 1;
}

TEST(Image, AllocateLeavesTheBytesOfOtherHolders) {
    image2d image = counting_image(4, 4);
    const image2d other = image;
    ASSERT_TRUE(image.allocate());
    image.at(1) = 99;
    EXPECT_EQ(other.at(1), 1);
    EXPECT_EQ(other.size(), 16U);
    EXPECT_EQ(image.at(2), 0);
}

TEST(Image, AllocateAfterAWindowInsideABlockBeginsAtTheBlock) {
    image2d image = counting_image(4, 4);
    image.offset = 8;
    ASSERT_TRUE(image.allocate());
    EXPECT_EQ(image.offset, 0U);
    EXPECT_EQ(image.size(), 16U);
}

TEST(Image, AllocateOverAMappedFileTakesMemory) {
    const ulk_test::temporary_folder_t folder;
    const std::string file = folder.write("a.bin", std::string(64, 'x'));
    image2d image = image_of(image_format::grey, image_bits::bits_8, 4, 4);
    ASSERT_TRUE(image.allocate(0, file.c_str(), 0));
    ASSERT_FALSE(image.writable());
    ASSERT_TRUE(image.allocate());
    ASSERT_TRUE(image.writable());
    *image.pixel(0, 0) = 'y';
    EXPECT_EQ(image.size(), 16U);
}

TEST(Image, AllocateOfSizesBeyondMemoryFails) {
    image2d image = image_of(image_format::rgba, image_bits::bits_64, most, most);
    image.skip_y = most;
    EXPECT_FALSE(image.allocate());
    EXPECT_TRUE(image.empty());
    EXPECT_FALSE(image.holds_pixels());
    image = counting_image(4, 4);
    image.width = 1U << 16;
    image.height = 1U << 16;
    EXPECT_FALSE(image.allocate());
    EXPECT_TRUE(image.empty());
    EXPECT_EQ(image.begin(), nullptr);
}

/// Memory that the system does not give ends the process elsewhere; a picture's size may come from a file.
TEST(Image, AllocateOfMoreThanTheSystemGivesFails) {
    std::uint64_t mapped_pages = 0;
    std::ifstream("/proc/self/statm") >> mapped_pages;
    rlimit unlimited{};
    ASSERT_EQ(getrlimit(RLIMIT_AS, &unlimited), 0);
    rlimit limited = unlimited;
    limited.rlim_cur = mapped_pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)) + (64U << 20);

    image2d image = image_of(image_format::grey, image_bits::bits_8, 1U << 15, 1U << 15);
    ASSERT_EQ(setrlimit(RLIMIT_AS, &limited), 0);
    const bool done = image.allocate();
    ASSERT_EQ(setrlimit(RLIMIT_AS, &unlimited), 0);
    EXPECT_FALSE(done);
    EXPECT_TRUE(image.empty());
    EXPECT_TRUE(image.allocate());
}

TEST(Image, CopiesShareTheBytesAndThePalette) {
    image2d image = counting_image(4, 4);
    ASSERT_TRUE(image.palette.allocate(2));
    image.row_length = 3;
    const image2d copy(image);
    image2d assigned;
    assigned = image;
    *image.pixel(1, 0) = 77;
    image.palette.set(1, 1, 2, 3);
    for (const image2d* other : {&copy, static_cast<const image2d*>(&assigned)}) {
        EXPECT_EQ(*other->pixel(1, 0), 77);
        EXPECT_EQ(other->palette.count, 2U);
        EXPECT_EQ(other->palette.red.at(1), 257);
        EXPECT_EQ(other->row_length, 3U);
        EXPECT_EQ(other->width, 4U);
    }
}

TEST(Image, ClearDropsBytesPaletteAndSizes) {
    image2d image = counting_image(4, 4);
    ASSERT_TRUE(image.palette.allocate(2));
    image.row_length = 8;
    image.skip_x = 1;
    image.skip_y = 1;
    image.offset = 2;
    image.clear();
    EXPECT_TRUE(image.empty());
    EXPECT_EQ(image.use_count(), 0U);
    EXPECT_EQ(image.offset, 0U);
    EXPECT_EQ(image.row_length, 0U);
    EXPECT_EQ(image.skip_x, 0U);
    EXPECT_EQ(image.skip_y, 0U);
    EXPECT_EQ(image.width, 0U);
    EXPECT_EQ(image.height, 0U);
    EXPECT_EQ(image.palette.count, 0U);
    EXPECT_TRUE(image.palette.red.empty());
    EXPECT_EQ(image.type, image_type::unsigned_integer);
}

TEST(Subimage, IsAViewOfTheSameBytes) {
    image2d image = counting_image(8, 8);
    image2d view;
    ASSERT_TRUE(view.subimage(image, 2, 3, 4, 2));
    EXPECT_EQ(view.row_length, 8U);
    EXPECT_EQ(view.skip_x, 2U);
    EXPECT_EQ(view.skip_y, 3U);
    EXPECT_EQ(view.width, 4U);
    EXPECT_EQ(view.height, 2U);
    EXPECT_TRUE(view.holds_pixels());
    EXPECT_EQ(*view.pixel(0, 0), 3 * 8 + 2);
    EXPECT_EQ(*view.pixel(3, 1), 4 * 8 + 5);
    *view.pixel(0, 0) = 200;
    EXPECT_EQ(*image.pixel(2, 3), 200);
}

TEST(Subimage, IsCutToWhatThereIsToTheRightAndAbove) {
    const image2d image = counting_image(8, 8);
    image2d view;
    ASSERT_TRUE(view.subimage(image, 5, 6, most, 100));
    EXPECT_EQ(view.width, 3U);
    EXPECT_EQ(view.height, 2U);
    EXPECT_TRUE(view.holds_pixels());
}

TEST(Subimage, OfAViewAddsToItsSkips) {
    image2d view = counting_image(8, 8);
    ASSERT_TRUE(view.subimage(view, 1, 2, 6, 5));
    ASSERT_TRUE(view.subimage(view, 2, 1, 100, 100));
    EXPECT_EQ(view.row_length, 8U);
    EXPECT_EQ(view.skip_x, 3U);
    EXPECT_EQ(view.skip_y, 3U);
    EXPECT_EQ(view.width, 4U);
    EXPECT_EQ(view.height, 4U);
    EXPECT_EQ(*view.pixel(0, 0), 3 * 8 + 3);
}

TEST(Subimage, WithItsCornerOnTheEdgeIsEmpty) {
    const image2d image = counting_image(8, 8);
    image2d view;
    ASSERT_TRUE(view.subimage(image, 8, 8, 1, 1));
    EXPECT_EQ(view.width, 0U);
    EXPECT_EQ(view.height, 0U);
}

TEST(Subimage, WithItsCornerOutsideIsRefused) {
    const image2d image = counting_image(8, 8);
    image2d view = counting_image(2, 2);
    EXPECT_FALSE(view.subimage(image, 9, 0, 1, 1));
    EXPECT_FALSE(view.subimage(image, 0, 9, 1, 1));
    EXPECT_FALSE(view.subimage(image, most, most, 1, 1));
    EXPECT_EQ(view.width, 2U);
    EXPECT_EQ(view.size(), 8U);
}

TEST(Subimage, WithSkipsThatDoNotFitIsRefused) {
    image2d image = counting_image(8, 8);
    image2d view;
    image.skip_x = most - 1;
    EXPECT_TRUE(view.subimage(image, 1, 0, 1, 1));
    EXPECT_FALSE(view.subimage(image, 2, 0, 1, 1));
    image.skip_x = 0;
    image.skip_y = most - 1;
    EXPECT_TRUE(view.subimage(image, 0, 1, 1, 1));
    EXPECT_FALSE(view.subimage(image, 0, 2, 1, 1));
}

TEST(Subimage, OfACompressedImageIsRefused) {
    image2d image = counting_image(8, 8);
    image.compressed = true;
    image2d view;
    EXPECT_FALSE(view.subimage(image, 0, 0, 1, 1));
}

TEST(ImageHoldsPixels, WhenTheWindowHasAllLines) {
    image2d image = counting_image(5, 3);
    EXPECT_TRUE(image.holds_pixels());
    image.height = 4;
    EXPECT_FALSE(image.holds_pixels());
    image.height = 3;
    image.limit = 23;
    EXPECT_FALSE(image.holds_pixels());
    image.limit = 24;
    EXPECT_TRUE(image.holds_pixels());
    image.offset = 1;
    EXPECT_FALSE(image.holds_pixels());
    image.offset = 1000;
    EXPECT_FALSE(image.holds_pixels());
}

TEST(ImageHoldsPixels, NotOfSizesThatWrapAround) {
    image2d image = counting_image(4, 4);
    // A height of -1 as a file with its top row first has it.
    image.height = most;
    EXPECT_FALSE(image.holds_pixels());
    // 2^32 rows of 2^32 bytes are 0 bytes when counted in 64 bits.
    image.width = most;
    image.skip_y = 1;
    EXPECT_FALSE(image.holds_pixels());
}

TEST(ImageHoldsPixels, NotWithSkipsBeyondTheData) {
    image2d image = counting_image(4, 4);
    image.skip_y = 1;
    EXPECT_FALSE(image.holds_pixels());
    image.height = 3;
    EXPECT_TRUE(image.holds_pixels());
    image.skip_x = 1;
    EXPECT_FALSE(image.holds_pixels());
    image.width = 3;
    image.row_length = 4;
    EXPECT_TRUE(image.holds_pixels());
    image.skip_x = most;
    EXPECT_FALSE(image.holds_pixels());
}

TEST(ImageHoldsPixels, WithoutABlockOnlyWhenThereAreNone) {
    image2d image = image_of(image_format::rgb, image_bits::bits_8, 1, 1);
    EXPECT_FALSE(image.holds_pixels());
    image.width = 0;
    EXPECT_TRUE(image.holds_pixels());
}

TEST(Palette, EntriesBeginBlackAndTakeBytesDoubled) {
    palette_t palette;
    ASSERT_TRUE(palette.allocate(3));
    EXPECT_EQ(palette.count, 3U);
    palette.set(1, 255, 128, 1);
    EXPECT_EQ(palette.red.at(1), 65535);
    EXPECT_EQ(palette.green.at(1), 128 * 257);
    EXPECT_EQ(palette.blue.at(1), 257);
    EXPECT_EQ(palette.colour(1), (std::array<unsigned char, 3>{255, 128, 1}));
    EXPECT_EQ(palette.colour(2), (std::array<unsigned char, 3>{0, 0, 0}));
}

TEST(Palette, ColoursBehindTheEntriesAreBlack) {
    palette_t palette;
    ASSERT_TRUE(palette.allocate(2));
    palette.set(1, 9, 9, 9);
    EXPECT_EQ(palette.colour(2), (std::array<unsigned char, 3>{0, 0, 0}));
    palette.count = 1;
    EXPECT_EQ(palette.colour(1), (std::array<unsigned char, 3>{0, 0, 0}));
    // A count that the channels do not have.
    palette.count = 1000;
    EXPECT_EQ(palette.colour(999), (std::array<unsigned char, 3>{0, 0, 0}));
}

TEST(Palette, AllocateDropsWhatItSharedAndZeroDropsAll) {
    palette_t palette;
    ASSERT_TRUE(palette.allocate(2));
    palette.set(0, 9, 9, 9);
    const palette_t other = palette;
    ASSERT_TRUE(palette.allocate(4));
    EXPECT_EQ(palette.colour(0), (std::array<unsigned char, 3>{0, 0, 0}));
    EXPECT_EQ(other.colour(0), (std::array<unsigned char, 3>{9, 9, 9}));
    ASSERT_TRUE(palette.allocate(0));
    EXPECT_EQ(palette.count, 0U);
    EXPECT_TRUE(palette.red.empty());
}

TEST(Image1d, AllocatesItsRowWithTheSkippedPixels) {
    image1d image;
    image.format = image_format::rgb;
    image.bits = image_bits::bits_8;
    image.width = 3;
    image.skip_x = 2;
    EXPECT_FALSE(image.holds_pixels());
    ASSERT_TRUE(image.allocate());
    EXPECT_EQ(image.size(), 16U);
    EXPECT_TRUE(image.holds_pixels());
    image.skip_x = 3;
    EXPECT_FALSE(image.holds_pixels());
    image.width = 0;
    EXPECT_TRUE(image.holds_pixels());
}

TEST(Image3d, AllocatesAllPicturesWithTheSkippedOnes) {
    image3d image;
    image.format = image_format::rgb;
    image.bits = image_bits::bits_8;
    image.width = 3;
    image.height = 5;
    image.depth = 2;
    image.skip_z = 1;
    EXPECT_EQ(image.linesize(), 12U);
    EXPECT_EQ(image.imagesize(), 60U);
    EXPECT_FALSE(image.holds_pixels());
    ASSERT_TRUE(image.allocate());
    EXPECT_EQ(image.size(), 180U);
    EXPECT_TRUE(image.holds_pixels());
    image.depth = 3;
    EXPECT_FALSE(image.holds_pixels());
    image.depth = 0;
    EXPECT_TRUE(image.holds_pixels());
}

TEST(Image3d, SkipsBeyondTheDataAreNotHeld) {
    image3d image;
    image.format = image_format::grey;
    image.bits = image_bits::bits_8;
    image.width = 4;
    image.height = 4;
    image.depth = 2;
    ASSERT_TRUE(image.allocate());
    image.skip_y = 1;
    EXPECT_FALSE(image.holds_pixels());
    image.image_height = 4;
    image.height = 3;
    EXPECT_TRUE(image.holds_pixels());
    image.skip_x = 1;
    EXPECT_FALSE(image.holds_pixels());
    image.row_length = 4;
    image.width = 3;
    EXPECT_TRUE(image.holds_pixels());
    image.height = most;
    image.depth = most;
    image.image_height = most;
    EXPECT_FALSE(image.holds_pixels());
}
