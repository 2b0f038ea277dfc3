#include "utils/image_transforms.h"

#include <gtest/gtest.h>

#include <iostream>
#include <limits>

#include "support/captured_stream.h"
#include "support/image_builder.h"
#include "support/scene_text.h"

using namespace libutils;
using ulk_test::captured_stream;
using ulk_test::image_header;
using ulk_test::image_of;
using ulk_test::pixel_bytes;
using ulk_test::window_bytes;

namespace {

using bytes_t = std::vector<int>;
namespace format = image_format;

constexpr std::uint32_t most = std::numeric_limits<std::uint32_t>::max();

/// True when `copy` has the header of `image` and shares its bytes.
bool is_shallow_copy(const image2d& copy, const image2d& image) {
    return copy.format == image.format && copy.type == image.type && copy.bits == image.bits &&
           copy.pack == image.pack && copy.row_length == image.row_length && copy.skip_x == image.skip_x &&
           copy.skip_y == image.skip_y && copy.width == image.width && copy.height == image.height &&
           copy.compressed == image.compressed && copy.palette.count == image.palette.count &&
           copy.begin() == image.begin();
}

using transform_t = bool (*)(image2d&, const image2d&);

/// What a refused transform does: `source` stays, the target shares its bytes, and `message` is all that is
/// said.
void expect_refused(transform_t transform, const image2d& source, const char* message) {
    image2d target = image_of(format::grey, 1, 1, {5});
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(transform(target, source));
    EXPECT_EQ(errors.text(), message);
    EXPECT_TRUE(is_shallow_copy(target, source));
}

image2d with_type(image2d image, std::uint32_t type) {
    image.type = type;
    return image;
}

image2d with_bits(image2d image, std::uint32_t bits) {
    image.bits = bits;
    return image;
}

image2d compressed(image2d image) {
    image.compressed = true;
    return image;
}

image2d with_palette(image2d image, std::initializer_list<std::array<unsigned char, 3>> colours) {
    EXPECT_TRUE(image.palette.allocate(static_cast<std::uint32_t>(colours.size())));
    std::uint32_t i = 0;
    for (const auto& [red, green, blue] : colours)
        image.palette.set(i++, red, green, blue);
    return image;
}

image2d rgb_image() {
    return image_of(format::rgb, 2, 1, {1, 2, 3, 4, 5, 6});
}

image2d rgba_image() {
    return image_of(format::rgba, 2, 1, {1, 2, 3, 4, 5, 6, 7, 8});
}

}  // namespace

// --- Order of the channels ---

TEST(ChannelSwap, RgbBecomesBgr) {
    image2d target;
    ASSERT_TRUE(rgb2bgr(target, rgb_image()));
    EXPECT_EQ(target.format, format::bgr);
    EXPECT_EQ(target.type, image_type::unsigned_integer);
    EXPECT_EQ(target.bits, image_bits::bits_8);
    EXPECT_EQ(target.width, 2U);
    EXPECT_EQ(target.height, 1U);
    EXPECT_EQ(window_bytes(target), (bytes_t{3, 2, 1, 6, 5, 4, 0, 0}));
}

TEST(ChannelSwap, RgbaBecomesBgraWithAlphaInPlace) {
    image2d target;
    ASSERT_TRUE(rgb2bgr(target, rgba_image()));
    EXPECT_EQ(target.format, format::bgra);
    EXPECT_EQ(window_bytes(target), (bytes_t{3, 2, 1, 4, 7, 6, 5, 8}));
}

TEST(ChannelSwap, BgrBecomesRgb) {
    image2d target;
    ASSERT_TRUE(bgr2rgb(target, image_of(format::bgr, 1, 2, {1, 2, 3, 4, 5, 6})));
    EXPECT_EQ(target.format, format::rgb);
    EXPECT_EQ(window_bytes(target), (bytes_t{3, 2, 1, 0, 6, 5, 4, 0}));
}

TEST(ChannelSwap, BgraBecomesRgba) {
    image2d target;
    ASSERT_TRUE(bgr2rgb(target, image_of(format::bgra, 1, 1, {1, 2, 3, 4})));
    EXPECT_EQ(target.format, format::rgba);
    EXPECT_EQ(window_bytes(target), (bytes_t{3, 2, 1, 4}));
}

TEST(ChannelSwap, KeepsASignedType) {
    image2d target;
    ASSERT_TRUE(rgb2bgr(target, with_type(rgb_image(), image_type::signed_integer)));
    EXPECT_EQ(target.type, image_type::signed_integer);
}

TEST(ChannelSwap, LeavesTheSourceAndItsOtherHolders) {
    const image2d source = rgb_image();
    image2d target = source;
    ASSERT_TRUE(rgb2bgr(target, source));
    EXPECT_EQ(source.format, format::rgb);
    EXPECT_EQ(pixel_bytes(source), (bytes_t{1, 2, 3, 4, 5, 6}));
}

TEST(ChannelSwap, WorksInPlace) {
    image2d image = rgb_image();
    const image2d other = image;
    ASSERT_TRUE(rgb2bgr(image, image));
    EXPECT_EQ(pixel_bytes(image), (bytes_t{3, 2, 1, 6, 5, 4}));
    EXPECT_EQ(pixel_bytes(other), (bytes_t{1, 2, 3, 4, 5, 6}));
}

TEST(ChannelSwap, RefusesAllOtherImages) {
    const image2d bgr = image_of(format::bgr, 1, 1, {1, 2, 3});
    expect_refused(rgb2bgr, bgr, "");
    expect_refused(rgb2bgr, image_of(format::bgra, 1, 1, {1, 2, 3, 4}), "");
    expect_refused(rgb2bgr, image_of(format::grey, 1, 1, {1}), "");
    expect_refused(rgb2bgr, image_of(format::ycbcr, 1, 1, {1, 2, 3}), "");
    expect_refused(rgb2bgr, with_type(rgb_image(), image_type::floating_point), "");
    expect_refused(rgb2bgr, with_bits(rgb_image(), image_bits::bits_4), "");
    expect_refused(rgb2bgr, with_bits(rgba_image(), image_bits::packed_5_5_5_1), "");
    expect_refused(rgb2bgr, compressed(rgb_image()), "");
    expect_refused(bgr2rgb, rgb_image(), "");
    expect_refused(bgr2rgb, rgba_image(), "");
    expect_refused(bgr2rgb, with_type(bgr, image_type::floating_point), "");
    expect_refused(bgr2rgb, with_bits(bgr, image_bits::bits_16), "");
    expect_refused(bgr2rgb, compressed(bgr), "");
}

// --- Palettes ---

TEST(IndexToRgb, TakesTheColourOfEachByte) {
    const image2d source =
        with_palette(image_of(format::index, 3, 1, {2, 0, 1}), {{10, 20, 30}, {40, 50, 60}, {70, 80, 90}});
    image2d target;
    ASSERT_TRUE(index2rgb(target, source));
    EXPECT_EQ(target.format, format::rgb);
    EXPECT_EQ(target.type, image_type::unsigned_integer);
    EXPECT_EQ(target.bits, image_bits::bits_8);
    EXPECT_EQ(target.palette.count, 0U);
    EXPECT_EQ(window_bytes(target), (bytes_t{70, 80, 90, 10, 20, 30, 40, 50, 60, 0, 0, 0}));
}

TEST(IndexToRgb, TakesTheHighByteOfAnEntry) {
    image2d source = with_palette(image_of(format::index, 1, 1, {0}), {{0, 0, 0}});
    source.palette.red.at(0) = 0x12FF;
    source.palette.green.at(0) = 0x00FF;
    source.palette.blue.at(0) = 0xFF00;
    image2d target;
    ASSERT_TRUE(index2rgb(target, source));
    EXPECT_EQ(pixel_bytes(target), (bytes_t{0x12, 0, 0xFF}));
}

TEST(IndexToRgb, TakesTheHighHalfOfAByteFirst) {
    image2d source = with_palette(image_header(format::index, image_bits::bits_4, 3, 1),
                                  {{10, 20, 30}, {40, 50, 60}, {70, 80, 90}});
    ASSERT_TRUE(source.allocate());
    source.at(0) = 0x21;
    source.at(1) = 0x0F;
    image2d target;
    ASSERT_TRUE(index2rgb(target, source));
    EXPECT_EQ(pixel_bytes(target), (bytes_t{70, 80, 90, 40, 50, 60, 10, 20, 30}));
}

TEST(IndexToRgb, ViewMayBeginWithTheLowHalfOfAByte) {
    image2d source = with_palette(image_header(format::index, image_bits::bits_4, 4, 1),
                                  {{10, 20, 30}, {40, 50, 60}, {70, 80, 90}});
    ASSERT_TRUE(source.allocate());
    source.at(0) = 0x02;
    source.at(1) = 0x10;
    ASSERT_TRUE(source.subimage(source, 1, 0, 3, 1));
    image2d target;
    ASSERT_TRUE(index2rgb(target, source));
    EXPECT_EQ(pixel_bytes(target), (bytes_t{70, 80, 90, 40, 50, 60, 10, 20, 30}));
}

TEST(IndexToRgb, IndexBeyondThePaletteIsBlack) {
    const image2d source = with_palette(image_of(format::index, 3, 1, {1, 2, 255}), {{9, 9, 9}, {7, 7, 7}});
    image2d target;
    ASSERT_TRUE(index2rgb(target, source));
    EXPECT_EQ(pixel_bytes(target), (bytes_t{7, 7, 7, 0, 0, 0, 0, 0, 0}));
}

TEST(IndexToRgb, PaletteWithoutChannelsIsBlack) {
    image2d source = image_of(format::index, 1, 1, {3});
    source.palette.count = 256;
    image2d target;
    ASSERT_TRUE(index2rgb(target, source));
    EXPECT_EQ(pixel_bytes(target), (bytes_t{0, 0, 0}));
}

TEST(IndexToRgb, OtherBitsFailWithABlackImage) {
    for (const std::uint32_t bits : {image_bits::bits_1, image_bits::bits_2, image_bits::bits_16}) {
        image2d source = with_palette(image_header(format::index, bits, 2, 1), {{9, 9, 9}});
        ASSERT_TRUE(source.allocate());
        image2d target = image_of(format::rgb, 2, 1, {1, 2, 3, 4, 5, 6});
        EXPECT_FALSE(index2rgb(target, source));
        EXPECT_EQ(target.format, format::rgb);
        EXPECT_EQ(target.bits, image_bits::bits_8);
        EXPECT_EQ(window_bytes(target), bytes_t(8)) << bits;
    }
}

TEST(IndexToRgb, ImageOfAnotherFormatIsCopiedShallow) {
    const image2d source = image_of(format::grey, 1, 1, {77});
    image2d target;
    EXPECT_TRUE(index2rgb(target, source));
    EXPECT_TRUE(is_shallow_copy(target, source));
}

TEST(IndexToRgb, RefusesCompressedIndices) {
    expect_refused(index2rgb, compressed(image_of(format::index, 1, 1, {0})), "");
}

TEST(IndexToRgb, WorksInPlace) {
    image2d image = with_palette(image_of(format::index, 2, 1, {1, 0}), {{10, 20, 30}, {40, 50, 60}});
    ASSERT_TRUE(index2rgb(image, image));
    EXPECT_EQ(pixel_bytes(image), (bytes_t{40, 50, 60, 10, 20, 30}));
}

// --- Grey ---

TEST(RgbToGrey, IsTheWeightedSumTruncated) {
    // 0.587 * 20 + 0.299 * 10 + 0.114 * 30 is 18.15; the whole green is 149.685.
    const image2d source =
        image_of(format::rgb, 5, 1, {10, 20, 30, 0, 255, 0, 255, 0, 0, 0, 0, 255, 0, 0, 0});
    image2d target;
    ASSERT_TRUE(rgb2grey(target, source));
    EXPECT_EQ(target.format, format::grey);
    EXPECT_EQ(target.type, image_type::unsigned_integer);
    EXPECT_EQ(target.bits, image_bits::bits_8);
    EXPECT_EQ(window_bytes(target), (bytes_t{18, 149, 76, 29, 0, 0, 0, 0}));
}

TEST(RgbToGrey, SumOfSinglesCanFallBelowTheWholeNumber) {
    // Equal channels sum up to themselves; in single precision 13 of the 256 come out just below. The sum is
    // formed from the left, green, red, blue.
    int below = 0;
    for (int value = 0; value < 256; ++value) {
        image2d target;
        ASSERT_TRUE(rgb2grey(target, image_of(format::rgb, 1, 1, {value, value, value})));
        const int grey = pixel_bytes(target).front();
        EXPECT_TRUE(grey == value || grey == value - 1) << value;
        below += value - grey;
    }
    EXPECT_EQ(below, 13);
}

TEST(RgbToGrey, RefusalsInTheirOrder) {
    expect_refused(rgb2grey, image_of(format::bgr, 1, 1, {1, 2, 3}), "10: image format is not RGB.\n");
    expect_refused(rgb2grey, with_bits(with_type(rgba_image(), 2), 5), "9: image format is not RGB.\n");
    expect_refused(rgb2grey, with_bits(with_type(rgb_image(), 0), 5), "0: image type is not UINT.\n");
    expect_refused(rgb2grey, with_type(rgb_image(), 2), "2: image type is not UINT.\n");
    expect_refused(rgb2grey, with_bits(rgb_image(), 5), "5: image bits is not 8.\n");
    expect_refused(rgb2grey, compressed(with_bits(rgb_image(), 5)), "5: image bits is not 8.\n");
}

TEST(RgbToGrey, CompressedSourceGivesGreyWithoutBytes) {
    image2d target = image_of(format::rgba, 1, 1, {1, 2, 3, 4});
    const captured_stream errors(std::cerr);
    EXPECT_TRUE(rgb2grey(target, compressed(rgb_image())));
    EXPECT_EQ(target.format, format::grey);
    EXPECT_EQ(target.width, 2U);
    EXPECT_FALSE(target.compressed);
    EXPECT_TRUE(target.empty());
    EXPECT_FALSE(target.holds_pixels());
    EXPECT_EQ(errors.text(), "");
}

// --- Normals ---

TEST(Normalmap, FlatHeightsPointUp) {
    image2d target;
    ASSERT_TRUE(heightmap2normalmap(target, image_of(format::grey, 2, 2, {90, 90, 90, 90})));
    EXPECT_EQ(target.format, format::rgb);
    EXPECT_EQ(target.type, image_type::signed_integer);
    EXPECT_EQ(target.bits, image_bits::bits_8);
    EXPECT_EQ(window_bytes(target), (bytes_t{0, 0, 127, 0, 0, 127, 0, 0, 0, 0, 127, 0, 0, 127, 0, 0}));
}

TEST(Normalmap, OnePixelIsItsOwnNeighbour) {
    image2d target;
    ASSERT_TRUE(heightmap2normalmap(target, image_of(format::grey, 1, 1, {200})));
    EXPECT_EQ(window_bytes(target), (bytes_t{0, 0, 127, 0}));
}

TEST(Normalmap, StepToTheRightLeansAndTheFarEdgeSeesTheWrap) {
    // A whole step is dx = 1 with a root of 0, so that z is 1 from dy alone: (1, 0, 1) over the root of 2,
    // times 127 is 89.80.
    image2d target;
    ASSERT_TRUE(heightmap2normalmap(target, image_of(format::grey, 3, 1, {0, 255, 255})));
    EXPECT_EQ(pixel_bytes(target), (bytes_t{90, 0, 90, 0, 0, 127, 256 - 90, 0, 90}));
}

TEST(Normalmap, StepUpwardsLeansAndTheTopRowSeesTheWrap) {
    image2d target;
    ASSERT_TRUE(heightmap2normalmap(target, image_of(format::grey, 1, 3, {0, 255, 255})));
    EXPECT_EQ(pixel_bytes(target), (bytes_t{0, 90, 90, 0, 0, 127, 0, 256 - 90, 90}));
}

TEST(Normalmap, StepBothWaysLiesInThePlane) {
    // dx = dy = 1: (1, 1, 0) over the root of 2.
    image2d target;
    ASSERT_TRUE(heightmap2normalmap(target, image_of(format::grey, 2, 2, {0, 255, 255, 255})));
    EXPECT_EQ(pixel_bytes(target), (bytes_t{90, 90, 0, 256 - 90, 0, 90, 0, 256 - 90, 90, 0, 0, 127}));
}

TEST(Normalmap, HalfAStepLeansLess) {
    // dx = 128 / 255: (0.50196, 0, 0.86490 + 1) over 1.93128, times 127: 33.0 and 122.6.
    image2d target;
    ASSERT_TRUE(heightmap2normalmap(target, image_of(format::grey, 2, 1, {0, 128})));
    EXPECT_EQ(pixel_bytes(target), (bytes_t{33, 0, 123, 256 - 33, 0, 123}));
}

TEST(Normalmap, RgbOfBytesIsTakenForNormals) {
    for (const std::uint32_t type : {image_type::signed_integer, image_type::unsigned_integer}) {
        const image2d source = with_type(rgb_image(), type);
        image2d target;
        EXPECT_TRUE(heightmap2normalmap(target, source));
        EXPECT_TRUE(is_shallow_copy(target, source));
    }
}

TEST(Normalmap, RefusesCompressedImagesFirst) {
    const char* const message = "normalmap(): compressed format not supported.\n";
    expect_refused(heightmap2normalmap, compressed(rgb_image()), message);
    expect_refused(heightmap2normalmap, compressed(image_of(format::grey, 1, 1, {1})), message);
}

TEST(Normalmap, RefusesAllOtherImages) {
    const char* const message = "normalmap(): image type not supported.\n";
    const image2d grey = image_of(format::grey, 1, 1, {1});
    expect_refused(heightmap2normalmap, with_bits(rgb_image(), image_bits::bits_16), message);
    expect_refused(heightmap2normalmap, with_type(rgb_image(), image_type::floating_point), message);
    expect_refused(heightmap2normalmap, with_type(grey, image_type::signed_integer), message);
    expect_refused(heightmap2normalmap, with_type(grey, image_type::floating_point), message);
    expect_refused(heightmap2normalmap, with_bits(grey, image_bits::bits_16), message);
    expect_refused(heightmap2normalmap, rgba_image(), message);
    expect_refused(heightmap2normalmap, image_of(format::bgr, 1, 1, {1, 2, 3}), message);
    expect_refused(heightmap2normalmap, image_of(format::grey_alpha, 1, 1, {1, 2}), message);
}

TEST(Normalmap, WithoutMemorySaysSo) {
    expect_refused(heightmap2normalmap, image_header(format::grey, image_bits::bits_8, 1U << 16, 1U << 16),
                   "normalmap allocate() fail.\n");
}

TEST(Normalmap, SkipsPlayNoPart) {
    image2d source = image_of(format::grey, 3, 2, {0, 255, 255, 9, 9, 9});
    source.skip_x = 1;
    source.skip_y = 1;
    source.height = 1;
    image2d target;
    ASSERT_TRUE(heightmap2normalmap(target, source));
    EXPECT_EQ(target.skip_x, 0U);
    EXPECT_EQ(target.skip_y, 0U);
    EXPECT_EQ(pixel_bytes(target), (bytes_t{90, 0, 90, 0, 0, 127, 256 - 90, 0, 90}));
}

TEST(Normalmap, KeepsThePackOfTheSourceAndItsRowsFourBytesApart) {
    static constexpr pack_t tight{.alignment = 1};
    image2d source = image_of(format::grey, 3, 2, {0, 255, 255, 0, 255, 255});
    source.pack = &tight;
    image2d target;
    ASSERT_TRUE(heightmap2normalmap(target, source));
    EXPECT_EQ(target.pack, &tight);
    EXPECT_EQ(target.linesize(), 9U);
    const bytes_t row{90, 0, 90, 0, 0, 127, 256 - 90, 0, 90, 0, 0, 0};
    bytes_t rows = row;
    rows.insert(rows.end(), row.begin(), row.end());
    EXPECT_EQ(window_bytes(target), rows);
}

TEST(Normalmap, WidePackGetsTheMemoryOfItsLines) {
    static constexpr pack_t wide{.alignment = 64};
    image2d source = image_of(format::grey, 1, 2, {0, 0});
    source.pack = &wide;
    image2d target;
    ASSERT_TRUE(heightmap2normalmap(target, source));
    EXPECT_TRUE(target.holds_pixels());
}

// --- Half the size ---

TEST(Scaledown, TakesTheMeanOfFourPixelsRoundedDown) {
    const image2d source = image_of(format::rgb, 2, 2, {1, 10, 100, 2, 20, 101, 3, 30, 102, 5, 41, 104});
    image2d target;
    ASSERT_TRUE(scaledown(target, source));
    EXPECT_EQ(target.format, format::rgb);
    EXPECT_EQ(target.width, 1U);
    EXPECT_EQ(target.height, 1U);
    EXPECT_EQ(window_bytes(target), (bytes_t{2, 25, 101, 0}));
}

TEST(Scaledown, TakesEachFormatWithItsChannels) {
    image2d target;
    ASSERT_TRUE(scaledown(target, image_of(format::bgr, 2, 2, {4, 0, 0, 4, 0, 0, 0, 0, 8, 0, 0, 8})));
    EXPECT_EQ(target.format, format::bgr);
    EXPECT_EQ(pixel_bytes(target), (bytes_t{2, 0, 4}));
    for (const std::uint32_t code : {format::rgba, format::bgra}) {
        ASSERT_TRUE(
            scaledown(target, image_of(code, 2, 2, {4, 0, 0, 8, 4, 0, 0, 8, 0, 0, 8, 4, 0, 0, 8, 4})));
        EXPECT_EQ(target.format, code);
        EXPECT_EQ(pixel_bytes(target), (bytes_t{2, 0, 4, 6}));
    }
}

TEST(Scaledown, LeavesTheOddColumnAndRowOut) {
    image2d target;
    ASSERT_TRUE(
        scaledown(target, image_of(format::rgba, 3, 3, {8,  8,  8,  8,  8,  8,  8,  8,  99, 99, 99, 99,  //
                                                        8,  8,  8,  8,  8,  8,  8,  8,  99, 99, 99, 99,  //
                                                        99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99})));
    EXPECT_EQ(pixel_bytes(target), (bytes_t{8, 8, 8, 8}));
}

TEST(Scaledown, GreyShowsTheLeftHalf) {
    // Columns x and x + 1 make output column x: the picture keeps its horizontal scale.
    const image2d source = image_of(format::grey, 4, 2, {0, 4, 8, 100, 0, 4, 8, 100});
    image2d target;
    ASSERT_TRUE(scaledown(target, source));
    EXPECT_EQ(target.width, 2U);
    EXPECT_EQ(pixel_bytes(target), (bytes_t{2, 6}));
}

TEST(Scaledown, OfOnePixelIsAnImageOfSizeZero) {
    image2d target;
    ASSERT_TRUE(scaledown(target, image_of(format::rgb, 1, 1, {1, 2, 3})));
    EXPECT_EQ(target.width, 0U);
    EXPECT_EQ(target.height, 0U);
    EXPECT_TRUE(target.empty());
}

TEST(Scaledown, OfOneColumnHasNoPixels) {
    image2d target;
    ASSERT_TRUE(scaledown(target, image_of(format::grey, 1, 4, {1, 2, 3, 4})));
    EXPECT_EQ(target.width, 0U);
    EXPECT_EQ(target.height, 2U);
    EXPECT_TRUE(target.empty());
}

TEST(Scaledown, DoesNotTestTheBitCode) {
    image2d source = image_of(format::grey, 8, 2, {0, 4, 8, 12, 9, 9, 9, 9, 0, 4, 8, 12, 9, 9, 9, 9});
    source.bits = image_bits::bits_16;
    source.width = 4;
    image2d target;
    ASSERT_TRUE(scaledown(target, source));
    EXPECT_EQ(target.bits, image_bits::bits_16);
    EXPECT_EQ(window_bytes(target), (bytes_t{2, 6, 0, 0}));
}

TEST(Scaledown, RefusesOtherFormatsByNumber) {
    expect_refused(scaledown, image_of(format::grey_alpha, 2, 2, {1, 2, 3, 4, 5, 6, 7, 8}),
                   "scaledown(): 1: unsupported format.\n");
    expect_refused(scaledown, image_of(format::index, 2, 2, {1, 2, 3, 4}),
                   "scaledown(): 17: unsupported format.\n");
    expect_refused(scaledown, image_of(format::ycbcr, 1, 1, {1, 2, 3}),
                   "scaledown(): 14: unsupported format.\n");
}

TEST(Scaledown, WithoutMemorySaysSoFirst) {
    expect_refused(scaledown, image_header(format::ycbcr, image_bits::bits_64, most, most),
                   "scaledown(): allocate() fail.\n");
}

TEST(Scaledown, RefusesPixelsOfLessThanAByteAChannel) {
    image2d source = image_header(format::grey, image_bits::bits_4, 8, 2);
    ASSERT_TRUE(source.allocate());
    expect_refused(scaledown, source, "");
    source = image_header(format::bgra, image_bits::packed_5_5_5_1, 8, 2);
    ASSERT_TRUE(source.allocate());
    expect_refused(scaledown, source, "");
}

TEST(Scaledown, RefusesCompressedImages) {
    expect_refused(scaledown, compressed(image_of(format::grey, 2, 2, {1, 2, 3, 4})), "");
}

// --- Turns ---

TEST(Rotation, OfNoTurnIsAShallowCopy) {
    const image2d source = rgb_image();
    image2d target;
    EXPECT_TRUE(rotate(0, target, source));
    EXPECT_TRUE(is_shallow_copy(target, source));
}

TEST(Rotation, OfQuarterTurnsGoesCounterclockwise) {
    // The bottom row is 1 2 3: a quarter turn makes it the right column, from the bottom up.
    const image2d source = image_of(format::grey, 3, 2, {1, 2, 3, 4, 5, 6});
    image2d target;
    ASSERT_TRUE(rotate(1, target, source));
    EXPECT_EQ(target.width, 2U);
    EXPECT_EQ(target.height, 3U);
    EXPECT_EQ(window_bytes(target), (bytes_t{4, 1, 0, 0, 5, 2, 0, 0, 6, 3, 0, 0}));
    ASSERT_TRUE(rotate(2, target, source));
    EXPECT_EQ(target.width, 3U);
    EXPECT_EQ(target.height, 2U);
    EXPECT_EQ(window_bytes(target), (bytes_t{6, 5, 4, 0, 3, 2, 1, 0}));
    ASSERT_TRUE(rotate(3, target, source));
    EXPECT_EQ(target.width, 2U);
    EXPECT_EQ(target.height, 3U);
    EXPECT_EQ(window_bytes(target), (bytes_t{3, 6, 0, 0, 2, 5, 0, 0, 1, 4, 0, 0}));
}

TEST(Rotation, MovesAllBytesOfAPixel) {
    image2d target;
    ASSERT_TRUE(rotate(1, target, rgba_image()));
    EXPECT_EQ(pixel_bytes(target), (bytes_t{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(target.height, 2U);
    ASSERT_TRUE(rotate(2, target, rgb_image()));
    EXPECT_EQ(pixel_bytes(target), (bytes_t{4, 5, 6, 1, 2, 3}));
}

TEST(Rotation, FourQuarterTurnsGiveThePictureBack) {
    const image2d source = image_of(format::rgb, 2, 2, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    image2d image = source;
    for (int turn = 0; turn < 4; ++turn)
        ASSERT_TRUE(rotate(1, image, image));
    EXPECT_EQ(pixel_bytes(image), pixel_bytes(source));
}

TEST(Rotation, KeepsThePaletteAndTheBits) {
    image2d target;
    const image2d source = with_palette(image_of(format::index, 1, 1, {0}), {{9, 8, 7}});
    ASSERT_TRUE(rotate(1, target, source));
    EXPECT_EQ(target.palette.colour(0), (std::array<unsigned char, 3>{9, 8, 7}));
    image2d wide = image_header(format::grey, image_bits::bits_16, 2, 1);
    ASSERT_TRUE(wide.allocate());
    wide.at(0) = 1;
    wide.at(3) = 2;
    ASSERT_TRUE(rotate(2, target, wide));
    EXPECT_EQ(window_bytes(target), (bytes_t{0, 2, 1, 0}));
}

TEST(Rotation, OfMoreThanThreeQuartersIsRefused) {
    for (const std::uint32_t turns : {4U, 5U, most}) {
        const image2d source = rgb_image();
        image2d target;
        EXPECT_FALSE(rotate(turns, target, source));
        EXPECT_TRUE(is_shallow_copy(target, source));
    }
}

TEST(Rotation, RefusesCompressedImagesAndPartsOfBytes) {
    const transform_t turn = [](image2d& target, const image2d& source) { return rotate(1, target, source); };
    expect_refused(turn, compressed(rgb_image()), "");
    image2d source = image_header(format::grey, image_bits::bits_4, 2, 1);
    ASSERT_TRUE(source.allocate());
    expect_refused(turn, source, "");
}

// --- Copies ---

TEST(TightCopy, TakesTheHeaderWithoutTheSkipsAndFillsRowsWithZeros) {
    image2d view =
        with_palette(image_of(format::grey, 4, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}), {{1, 2, 3}});
    static constexpr pack_t wide{.alignment = 8};
    ASSERT_TRUE(view.subimage(view, 1, 1, 3, 2));
    image2d target;
    ASSERT_TRUE(tight_copy(target, view));
    EXPECT_EQ(target.width, 3U);
    EXPECT_EQ(target.row_length, 0U);
    EXPECT_EQ(target.skip_x, 0U);
    EXPECT_EQ(target.skip_y, 0U);
    EXPECT_EQ(target.palette.count, 1U);
    EXPECT_EQ(window_bytes(target), (bytes_t{6, 7, 8, 0, 10, 11, 12, 0}));
    EXPECT_EQ(target.use_count(), 1U);
    view = image_of(format::grey, 8, 1, {1, 2, 3, 4, 5, 6, 7, 8});
    view.pack = &wide;
    ASSERT_TRUE(view.subimage(view, 0, 0, 5, 1));
    ASSERT_TRUE(tight_copy(target, view));
    EXPECT_EQ(target.pack, &wide);
    EXPECT_EQ(window_bytes(target), (bytes_t{1, 2, 3, 4, 5, 0, 0, 0}));
}

TEST(TightCopy, OfBitsTakesWholeBytes) {
    image2d source = image_header(format::grey, image_bits::bits_1, 19, 1);
    ASSERT_TRUE(source.allocate());
    for (unsigned char& byte : source.elements())
        byte = 255;
    image2d target;
    ASSERT_TRUE(tight_copy(target, source));
    EXPECT_EQ(window_bytes(target), (bytes_t{255, 255, 0, 0}));
}

TEST(TightCopy, RefusesCompressedImages) {
    expect_refused(tight_copy, compressed(rgb_image()), "");
}

// --- Colours ---

namespace {

image_colour_t used_colour{};

bool fill_with_used_colour(image2d& target, const image2d& source) {
    return fill_colour(target, source, used_colour);
}

bool add_used_colour(image2d& target, const image2d& source) {
    return add_colour(target, source, used_colour);
}

constexpr float no_number = std::numeric_limits<float>::quiet_NaN();

}  // namespace

TEST(FillColour, RoundsEachChannelIntoItsRange) {
    const image2d source = rgba_image();
    image2d target;
    ASSERT_TRUE(fill_colour(target, source, {0.5F, -1.0F, 2.0F, no_number}));
    // 0.5 * 255 + 0.5 is 128.
    EXPECT_EQ(pixel_bytes(target), (bytes_t{128, 0, 255, 255, 128, 0, 255, 255}));
    EXPECT_EQ(pixel_bytes(source), (bytes_t{1, 2, 3, 4, 5, 6, 7, 8}));
    ASSERT_TRUE(fill_colour(target, source, {0.0F, 1.0F, 0.25F, 0.001F}));
    EXPECT_EQ(pixel_bytes(target), (bytes_t{0, 255, 64, 0, 0, 255, 64, 0}));
}

TEST(FillColour, TakesThreeChannelsOfRgb) {
    image2d target;
    ASSERT_TRUE(fill_colour(target, rgb_image(), {1.0F, 0.0F, 0.5F, 1.0F}));
    EXPECT_EQ(window_bytes(target), (bytes_t{255, 0, 128, 255, 0, 128, 0, 0}));
}

TEST(AddColour, AddsInFloatsAndLimitsTheSum) {
    image2d target;
    ASSERT_TRUE(
        add_colour(target, image_of(format::rgba, 1, 1, {10, 200, 100, 7}), {0.5F, 0.5F, -1.0F, 0.0F}));
    // 10 / 255 + 0.5 is 0.5392, times 255 is 137.5: the step of a byte is a little more than 1 / 255.
    EXPECT_EQ(pixel_bytes(target), (bytes_t{138, 255, 0, 7}));
    ASSERT_TRUE(add_colour(target, image_of(format::rgb, 1, 1, {0, 1, 2}), {no_number, 0.0F, 0.0F, 0.0F}));
    EXPECT_EQ(pixel_bytes(target), (bytes_t{255, 1, 2}));
}

TEST(AddColour, OfBlackKeepsEveryByte) {
    for (int value = 0; value < 256; ++value) {
        image2d target;
        ASSERT_TRUE(add_colour(target, image_of(format::rgb, 1, 1, {value, value, value}), {0, 0, 0, 0}));
        EXPECT_EQ(pixel_bytes(target), (bytes_t{value, value, value}));
    }
}

TEST(Colours, RefusalsInTheirOrder) {
    for (const transform_t transform : {fill_with_used_colour, add_used_colour}) {
        const image2d grey = image_of(format::grey, 1, 1, {1});
        expect_refused(transform, with_bits(with_type(grey, 0), 5), "not support image type.\n");
        expect_refused(transform, with_type(rgb_image(), 2), "not support image type.\n");
        expect_refused(transform, with_bits(grey, 5), "not support image bits.\n");
        expect_refused(transform, grey, "not support format.\n");
        expect_refused(transform, image_of(format::bgr, 1, 1, {1, 2, 3}), "not support format.\n");
        expect_refused(transform, compressed(rgb_image()), "");
    }
}

TEST(NormalizationCube, HoldsTheDirectionsThroughSixFaces) {
    std::array<image2d, 6> faces;
    ASSERT_TRUE(normalization_cube(faces));
    for (const image2d& face : faces) {
        EXPECT_EQ(face.width, 256U);
        EXPECT_EQ(face.height, 256U);
        EXPECT_EQ(face.format, format::rgb);
        EXPECT_EQ(face.type, image_type::signed_integer);
        EXPECT_EQ(face.bits, image_bits::bits_8);
        ASSERT_TRUE(face.holds_pixels());
    }
    const auto pixel = [&](std::size_t face, std::uint32_t x, std::uint32_t y) {
        const unsigned char* const bytes = faces[face].pixel(x, y);
        return bytes_t{bytes[0], bytes[1], bytes[2]};
    };
    // The middle is at 127 steps of 1 over 127 from -1: 0.5 in a byte is 128.
    const bytes_t middles[] = {{255, 128, 128}, {0, 128, 128},   {128, 255, 128},
                               {128, 0, 128},   {128, 128, 255}, {128, 128, 0}};
    for (std::size_t face = 0; face < faces.size(); ++face)
        EXPECT_EQ(pixel(face, 127, 127), middles[face]) << face;
    // Column 254 is at 1: on the middle row (1, 0, 1) over the root of 2, 0.7071 / 2 + 0.5 is 217.7 in a
    // byte.
    EXPECT_EQ(pixel(4, 254, 127), (bytes_t{218, 128, 218}));
    EXPECT_EQ(pixel(4, 0, 127), (bytes_t{37, 128, 218}));
    EXPECT_EQ(pixel(4, 127, 0), (bytes_t{128, 218, 218}));
}

TEST(NormalizationCube, FacesMeetAtTheirEdges) {
    std::array<image2d, 6> faces;
    ASSERT_TRUE(normalization_cube(faces));
    const auto same = [&](std::size_t a, std::uint32_t ax, std::uint32_t ay, std::size_t b, std::uint32_t bx,
                          std::uint32_t by) {
        return std::equal(faces[a].pixel(ax, ay), faces[a].pixel(ax, ay) + 3, faces[b].pixel(bx, by));
    };
    for (std::uint32_t i = 0; i <= 254; ++i) {
        EXPECT_TRUE(same(4, 254, i, 0, 0, i)) << "+z to +x at " << i;
        EXPECT_TRUE(same(0, 254, i, 5, 0, i)) << "+x to -z at " << i;
        EXPECT_TRUE(same(5, 254, i, 1, 0, i)) << "-z to -x at " << i;
        EXPECT_TRUE(same(1, 254, i, 4, 0, i)) << "-x to +z at " << i;
        EXPECT_TRUE(same(2, i, 254, 4, i, 0)) << "+y to +z at " << i;
        EXPECT_TRUE(same(3, i, 0, 4, i, 254)) << "-y to +z at " << i;
    }
}

// --- What all of them guard ---

namespace {

bool turn_once(image2d& target, const image2d& source) {
    return rotate(1, target, source);
}

struct guarded_t {
    const char* name;
    transform_t transform;
    std::uint32_t format;
};

const guarded_t guarded[] = {
    {"rgb2bgr", rgb2bgr, format::rgb},
    {"rgb2bgr of 4", rgb2bgr, format::rgba},
    {"bgr2rgb", bgr2rgb, format::bgr},
    {"bgr2rgb of 4", bgr2rgb, format::bgra},
    {"index2rgb", index2rgb, format::index},
    {"rgb2grey", rgb2grey, format::rgb},
    {"heightmap2normalmap", heightmap2normalmap, format::grey},
    {"scaledown", scaledown, format::rgb},
    {"scaledown of grey", scaledown, format::grey},
    {"rotate", turn_once, format::rgb},
    {"tight_copy", tight_copy, format::rgb},
    {"fill_colour", fill_with_used_colour, format::rgb},
    {"add_colour", add_used_colour, format::rgba},
};

image2d random_image(std::uint32_t code, std::uint32_t width, std::uint32_t height) {
    std::mt19937 random(7);
    image2d image = image_header(code, image_bits::bits_8, width, height);
    EXPECT_TRUE(image.allocate());
    ulk_test::fill_randomly(image, random);
    return image;
}

}  // namespace

TEST(ImageTransforms, WindowThatDoesNotHoldTheRowsIsRefusedWithoutAWord) {
    for (const guarded_t& row : guarded) {
        SCOPED_TRACE(row.name);
        image2d source = random_image(row.format, 8, 8);
        source.limit = source.size() - 1;
        expect_refused(row.transform, source, "");
        source.limit = image2d::no_limit;
        source.offset = 1;
        expect_refused(row.transform, source, "");
        source.offset = 1U << 20;
        expect_refused(row.transform, source, "");
        source.deallocate();
        expect_refused(row.transform, source, "");
    }
}

TEST(ImageTransforms, SkipsBeyondTheDataAreRefusedWithoutAWord) {
    for (const guarded_t& row : guarded) {
        if (row.transform == heightmap2normalmap)
            continue;
        SCOPED_TRACE(row.name);
        image2d source = random_image(row.format, 8, 8);
        source.skip_y = 1;
        expect_refused(row.transform, source, "");
        source.skip_y = most;
        expect_refused(row.transform, source, "");
        source.skip_y = 0;
        source.skip_x = 1;
        expect_refused(row.transform, source, "");
        source.skip_x = most;
        expect_refused(row.transform, source, "");
    }
}

TEST(ImageTransforms, HeightOfATopDownFileIsRefused) {
    for (const guarded_t& row : guarded) {
        SCOPED_TRACE(row.name);
        image2d source = random_image(row.format, 8, 8);
        source.height = most - 7;
        image2d target;
        const captured_stream errors(std::cerr);
        EXPECT_FALSE(row.transform(target, source));
        EXPECT_TRUE(is_shallow_copy(target, source));
    }
}

TEST(ImageTransforms, ImagesWithoutPixelsGiveImagesWithoutPixels) {
    for (const guarded_t& row : guarded)
        for (const auto& [width, height] : {std::pair{0U, 0U}, {0U, 5U}, {5U, 0U}}) {
            SCOPED_TRACE(row.name);
            image2d target = random_image(format::rgb, 2, 2);
            EXPECT_TRUE(row.transform(target, image_header(row.format, image_bits::bits_8, width, height)));
            EXPECT_TRUE(target.empty());
            EXPECT_TRUE(target.holds_pixels());
        }
}

TEST(ImageTransforms, MappedFileIsReadAndNeverWritten) {
    const ulk_test::temporary_folder_t folder;
    for (const guarded_t& row : guarded) {
        SCOPED_TRACE(row.name);
        const image2d in_memory = random_image(row.format, 7, 5);
        const auto bytes = in_memory.elements();
        const std::string contents(bytes.begin(), bytes.end());
        const std::string path = folder.write("pixels.bin", contents);
        image2d mapped = image_header(row.format, image_bits::bits_8, 7, 5);
        ASSERT_TRUE(mapped.image_window_t::allocate(0, path.c_str(), 0));
        const image2d other = mapped;
        image2d expected;
        ASSERT_TRUE(row.transform(expected, in_memory));
        ASSERT_TRUE(row.transform(mapped, mapped));
        EXPECT_EQ(window_bytes(mapped), window_bytes(expected));
        EXPECT_TRUE(mapped.writable());
        EXPECT_EQ(window_bytes(other), window_bytes(in_memory));
    }
}

TEST(ImageTransforms, TargetThatWasUsedBeforeGetsTheSameBytes) {
    for (const guarded_t& row : guarded) {
        SCOPED_TRACE(row.name);
        const image2d source = random_image(row.format, 7, 5);
        image2d fresh;
        ASSERT_TRUE(row.transform(fresh, source));
        image2d used = random_image(format::rgba, 40, 40);
        used.skip_x = 3;
        used.skip_y = 2;
        used.row_length = 40;
        ASSERT_TRUE(row.transform(used, source));
        EXPECT_EQ(window_bytes(used), window_bytes(fresh));
        EXPECT_EQ(used.row_length, 0U);
        EXPECT_EQ(used.skip_x, 0U);
        EXPECT_EQ(used.skip_y, 0U);
    }
}
