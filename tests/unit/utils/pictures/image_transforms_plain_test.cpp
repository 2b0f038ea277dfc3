#include <gtest/gtest.h>

#include <functional>

#include "support/image_builder.h"
#include "support/plain_image_transforms.h"
#include "utils/pictures/image_transforms.h"

/// The transforms against the loops as they are told, byte by byte.
using namespace libutils;
using ulk_test::image_header;
using ulk_test::window_bytes;

namespace {

namespace format = image_format;

using quick_t = std::function<bool(image2d&, const image2d&)>;
using plain_t = std::function<void(image2d&, const image2d&)>;

/// An image in random surroundings: a view of a larger one, its rows aligned in all ways, in a window that
/// begins inside its block.
image2d random_view(std::uint32_t code, std::uint32_t bits, std::mt19937& random) {
    static constexpr pack_t packs[] = {
        {.alignment = 0}, {.alignment = 1}, {.alignment = 2}, {.alignment = 8}};
    const auto below = [&](std::uint32_t limit) { return static_cast<std::uint32_t>(random()) % limit; };
    image2d image = image_header(code, bits, 1 + below(90), 1 + below(6));
    if (below(3) != 0)
        image.pack = &packs[below(std::size(packs))];
    const std::uint64_t before = below(20);
    EXPECT_TRUE(image.image_window_t::allocate(image.linesize() * image.height + before));
    ulk_test::fill_randomly(image, random);
    image.offset = before;
    if (below(2) != 0) {
        EXPECT_TRUE(
            image.subimage(image, below(image.width), below(image.height), 1 + below(90), 1 + below(6)));
    }
    return image;
}

void expect_same_bytes(std::uint32_t code, std::uint32_t bits, const quick_t& quick, const plain_t& plain) {
    std::mt19937 random(code * 100 + bits);
    for (int round = 0; round < 400; ++round) {
        image2d source = random_view(code, bits, random);
        if (code == format::index) {
            ASSERT_TRUE(source.palette.allocate(static_cast<std::uint32_t>(random()) % 300));
            for (std::uint32_t i = 0; i < source.palette.count; ++i) {
                source.palette.red.at(i) = static_cast<unsigned short>(random());
                source.palette.green.at(i) = static_cast<unsigned short>(random());
                source.palette.blue.at(i) = static_cast<unsigned short>(random());
            }
        }
        image2d quick_target;
        image2d plain_target;
        ASSERT_TRUE(quick(quick_target, source));
        plain(plain_target, source);
        ASSERT_EQ(quick_target.format, plain_target.format);
        ASSERT_EQ(quick_target.type, plain_target.type);
        ASSERT_EQ(quick_target.width, plain_target.width);
        ASSERT_EQ(quick_target.height, plain_target.height);
        ASSERT_EQ(window_bytes(quick_target), window_bytes(plain_target))
            << source.width << " by " << source.height << " round " << round;
    }
}

plain_t plain_swap_to(std::uint32_t code) {
    return [code](image2d& target, const image2d& source) { ulk_test::plain_swap(target, source, code); };
}

}  // namespace

TEST(ImageTransformsAndPlainLoops, SwapChannelsAlike) {
    expect_same_bytes(format::rgb, image_bits::bits_8, rgb2bgr, plain_swap_to(format::bgr));
    expect_same_bytes(format::rgba, image_bits::bits_8, rgb2bgr, plain_swap_to(format::bgra));
    expect_same_bytes(format::bgr, image_bits::bits_8, bgr2rgb, plain_swap_to(format::rgb));
    expect_same_bytes(format::bgra, image_bits::bits_8, bgr2rgb, plain_swap_to(format::rgba));
}

TEST(ImageTransformsAndPlainLoops, ExpandIndicesAlike) {
    expect_same_bytes(format::index, image_bits::bits_8, index2rgb, ulk_test::plain_index2rgb);
    expect_same_bytes(format::index, image_bits::bits_4, index2rgb, ulk_test::plain_index2rgb);
}

TEST(ImageTransformsAndPlainLoops, MakeGreyAlike) {
    expect_same_bytes(format::rgb, image_bits::bits_8, rgb2grey, ulk_test::plain_rgb2grey);
}

TEST(ImageTransformsAndPlainLoops, MakeGreyOfEveryColourAlike) {
    constexpr std::uint32_t side = 4096;
    image2d source = image_header(format::rgb, image_bits::bits_8, side, side);
    ASSERT_TRUE(source.allocate());
    unsigned char* to = source.begin();
    for (std::uint32_t colour = 0; colour < side * side; ++colour, to += 3) {
        to[0] = static_cast<unsigned char>(colour);
        to[1] = static_cast<unsigned char>(colour >> 8);
        to[2] = static_cast<unsigned char>(colour >> 16);
    }
    image2d quick;
    image2d plain;
    ASSERT_TRUE(rgb2grey(quick, source));
    ulk_test::plain_rgb2grey(plain, source);
    ASSERT_EQ(quick.size(), plain.size());
    EXPECT_TRUE(std::equal(quick.begin(), quick.end(), plain.begin()));
}

TEST(ImageTransformsAndPlainLoops, MakeNormalsAlike) {
    std::mt19937 random(3);
    for (int round = 0; round < 60; ++round) {
        const auto width = 1 + static_cast<std::uint32_t>(random()) % 600;
        const auto height = 1 + static_cast<std::uint32_t>(random()) % 40;
        image2d source = image_header(format::grey, image_bits::bits_8, width, height);
        ASSERT_TRUE(source.allocate());
        ulk_test::fill_randomly(source, random);
        // Every other picture is smooth: neighbours differ by little, as in pictures of heights they do.
        if (round % 2 == 0)
            for (unsigned char& byte : source.elements())
                byte = static_cast<unsigned char>(100 + byte % 8);
        image2d quick;
        image2d plain;
        ASSERT_TRUE(heightmap2normalmap(quick, source));
        ulk_test::plain_heightmap2normalmap(plain, source);
        ASSERT_EQ(window_bytes(quick), window_bytes(plain)) << width << " by " << height;
    }
}

TEST(ImageTransformsAndPlainLoops, MakeNormalsOfEverySlopeAlike) {
    // Rows count up to the right in steps of their own, so that each pair of bytes meets as neighbours.
    image2d source = image_header(format::grey, image_bits::bits_8, 256, 512);
    ASSERT_TRUE(source.allocate());
    std::mt19937 random(5);
    for (std::uint32_t y = 0; y < source.height; ++y)
        for (std::uint32_t x = 0; x < source.width; ++x)
            *source.pixel(x, y) = static_cast<unsigned char>(y % 2 == 0 ? x * (y / 2) : random());
    image2d quick;
    image2d plain;
    ASSERT_TRUE(heightmap2normalmap(quick, source));
    ulk_test::plain_heightmap2normalmap(plain, source);
    EXPECT_EQ(window_bytes(quick), window_bytes(plain));
}
