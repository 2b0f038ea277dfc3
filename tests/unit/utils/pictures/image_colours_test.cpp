#include "unit/utils/pictures/image_transform_cases.h"

using namespace libutils;
using namespace ulk_test;

namespace {

constexpr float no_number = std::numeric_limits<float>::quiet_NaN();

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

}  // namespace
