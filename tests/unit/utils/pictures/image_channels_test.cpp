#include "unit/utils/pictures/image_transform_cases.h"

using namespace libutils;
using namespace ulk_test;

namespace {

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

}  // namespace
