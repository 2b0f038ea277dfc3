#include "model/math/colours.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

using namespace ulk3d;

TEST(Channel, OfAByteIsTimesTheConstant) {
    EXPECT_EQ(byte_to_channel(0), 0);
    EXPECT_EQ(byte_to_channel(128), 128 * 0.003921569F);
    EXPECT_EQ(byte_to_channel(255), 255 * 0.003921569F);
}

TEST(Channel, ToAByteRoundsAndClamps) {
    EXPECT_EQ(channel_to_byte(0.5F), 128);
    EXPECT_EQ(channel_to_byte(0.49F), 125);
    EXPECT_EQ(channel_to_byte(-3), 0);
    EXPECT_EQ(channel_to_byte(3), 255);
    EXPECT_EQ(channel_to_byte(std::numeric_limits<float>::infinity()), 255);
    EXPECT_EQ(channel_to_byte(std::numeric_limits<float>::quiet_NaN()), 255);
}

TEST(Channel, EveryByteComesBack) {
    for (int i = 0; i < 256; ++i) {
        const auto byte = static_cast<std::uint8_t>(i);
        EXPECT_EQ(channel_to_byte(byte_to_channel(byte)), byte);
    }
}

TEST(Colour, ConvertsChannelByChannel) {
    const col3aub bytes{1, 2, 3, 4};
    EXPECT_EQ(bytes_to_colour(bytes),
              (col3a{byte_to_channel(1), byte_to_channel(2), byte_to_channel(3), byte_to_channel(4)}));
    EXPECT_EQ(colour_to_bytes(bytes_to_colour(bytes)), bytes);
}

TEST(ColourMatrix, ToRgb) {
    EXPECT_EQ(ycbcr_to_rgb_matrix,
              (mtx3w{{1, 1, 1, 0, 0, -0.34414F, 1.772F, 0, 1.402F, -0.71414F, 0, 0, 0, 0, 0, 1}}));
}

TEST(ColourMatrix, ToYCbCr) {
    EXPECT_EQ(rgb_to_ycbcr_matrix, (mtx3w{{0.299F, -0.16874F, 0.5F, 0, 0.587F, -0.33126F, -0.41869F, 0,
                                           0.114F, 0.5F, -0.08131F, 0, 0, 0, 0, 1}}));
}

struct pair_t {
    col3ub rgb, ycbcr;
};

class YCbCr : public testing::TestWithParam<pair_t> {};

TEST_P(YCbCr, OfRgb) {
    EXPECT_EQ(rgb_to_ycbcr(GetParam().rgb), GetParam().ycbcr);
}

// Y by hand: 76.245, 149.685, 29.07; the strong chroma is 127 / 2 = 63.5, rounded away from zero.
// Red: Cb = -0.16874 * 127 = -21.43; green: Cb = -42.07, Cr = -53.17; blue: Cr = -10.33.
INSTANTIATE_TEST_SUITE_P(
    Primaries, YCbCr,
    testing::Values(pair_t{{0, 0, 0}, {0, 128, 128}}, pair_t{{255, 255, 255}, {255, 128, 128}},
                    pair_t{{128, 128, 128}, {128, 128, 128}}, pair_t{{255, 0, 0}, {76, 107, 192}},
                    pair_t{{0, 255, 0}, {150, 86, 75}}, pair_t{{0, 0, 255}, {29, 192, 118}}));

TEST(YCbCr, ToRgbByHand) {
    EXPECT_EQ(ycbcr_to_rgb({100, 128, 128}), (col3ub{100, 100, 100}));
    // Cb = 16 / 127: g = 100 - 0.34414 * 16 / 127 * 255 = 88.94, b = 100 + 1.772 * 32.126 = 156.93.
    EXPECT_EQ(ycbcr_to_rgb({100, 144, 128}), (col3ub{100, 89, 157}));
    // Cr = -16 / 127: r = 100 - 1.402 * 32.126 = 54.96, g = 100 + 0.71414 * 32.126 = 122.94.
    EXPECT_EQ(ycbcr_to_rgb({100, 128, 112}), (col3ub{55, 123, 100}));
}

TEST(YCbCr, ToRgbClamps) {
    EXPECT_EQ(ycbcr_to_rgb({255, 255, 255}), (col3ub{255, 0, 255}));
    EXPECT_EQ(ycbcr_to_rgb({0, 0, 0}), (col3ub{0, 255, 0}));
}

TEST(YCbCr, RoundTripStaysWithinTheStepsOfTheChroma) {
    for (int r = 0; r < 256; r += 15)
        for (int g = 0; g < 256; g += 15)
            for (int b = 0; b < 256; b += 15) {
                const col3ub rgb{static_cast<std::uint8_t>(r), static_cast<std::uint8_t>(g),
                                 static_cast<std::uint8_t>(b)};
                const col3ub back = ycbcr_to_rgb(rgb_to_ycbcr(rgb));
                EXPECT_LE(std::abs(back.r - r), 3);
                EXPECT_LE(std::abs(back.g - g), 3);
                EXPECT_LE(std::abs(back.b - b), 3);
            }
}

}  // namespace
