#include "unit/utils/pictures/image_transform_cases.h"

using namespace libutils;
using namespace ulk_test;

namespace {

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

}  // namespace
