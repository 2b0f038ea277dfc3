#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

#include "gl/gltextures/textures/texture_test.h"
#include "gltextures/textures/gr_textures.h"
#include "support/captured_stream.h"
#include "support/gl_state.h"
#include "support/pictures.h"

namespace libgr {
namespace {

using libutils::image2d;
using libutils::pack_t;
using ulk_test::bytes_t;
using ulk_test::captured_stream;
using ulk_test::gl_integer;
using ulk_test::image_of;
using ulk_test::level_parameter;
using ulk_test::rgba_float_t;
using ulk_test::shown_texels;
using ulk_test::stored_bytes;
namespace image_format = libutils::image_format;

/// Images that are parts of others, packed in every way, and cut off.
class ImageWindow : public ulk_test::texture_test {
  protected:
    void SetUp() override {
        texture_test::SetUp();
        bind_fresh(GL_TEXTURE_2D);
    }
    void load(const image2d& image) {
        texture.set_level(image, 0, 0);
        texture.Load();
    }
    grTexture2D texture;
};

/// Grey pixels 0, 1, 2 and so on.
image2d numbered_image(std::uint32_t width, std::uint32_t height) {
    bytes_t pixels(std::size_t{width} * height);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<std::uint8_t>(i);
    return image_of(image_format::grey, width, height, pixels);
}

std::vector<int> red_values(const std::vector<rgba_float_t>& texels) {
    std::vector<int> values;
    for (const rgba_float_t& texel : texels)
        values.push_back(static_cast<int>(texel[0] * 255 + 0.5F));
    return values;
}

TEST_F(ImageWindow, PartOfAnImageShowsThatPart) {
    const image2d whole = numbered_image(6, 5);
    image2d part;
    ASSERT_TRUE(part.subimage(whole, 2, 1, 3, 2));
    load(part);
    EXPECT_EQ(red_values(shown_texels()), (std::vector<int>{8, 9, 10, 14, 15, 16}));
}

TEST_F(ImageWindow, WholeImageAfterAPartIsReadFromItsBeginning) {
    image2d part;
    ASSERT_TRUE(part.subimage(numbered_image(6, 5), 2, 1, 3, 2));
    load(part);
    load(numbered_image(2, 2));
    EXPECT_EQ(red_values(shown_texels()), (std::vector<int>{0, 1, 2, 3}));
}

TEST_F(ImageWindow, OffsetOfTheWindowCounts) {
    image2d image = numbered_image(4, 3);
    image.offset = 4;
    image.height = 2;
    load(image);
    EXPECT_EQ(red_values(shown_texels()), (std::vector<int>{4, 5, 6, 7, 8, 9, 10, 11}));
}

TEST_F(ImageWindow, RowsFollowTheAlignment) {
    for (const std::uint64_t alignment : {1U, 2U, 4U, 8U, 0U}) {
        const pack_t pack{.swap = false, .alignment = alignment};
        image2d image;
        image.format = image_format::rgb;
        image.type = 1;
        image.bits = 3;
        image.width = 3;
        image.height = 2;
        image.pack = &pack;
        ASSERT_TRUE(image.allocate());
        for (std::uint32_t y = 0; y < 2; ++y)
            for (std::uint32_t x = 0; x < 3; ++x)
                image.pixel(x, y)[0] = static_cast<std::uint8_t>(10 * y + x);
        load(image);
        EXPECT_EQ(red_values(shown_texels()), (std::vector<int>{0, 1, 2, 10, 11, 12})) << alignment;
    }
}

image2d image_of_16_bits(const pack_t* pack, std::initializer_list<std::uint8_t> bytes) {
    image2d image;
    image.format = image_format::grey;
    image.type = 1;
    image.bits = libutils::image_bits::bits_16;
    image.width = 2;
    image.height = 1;
    image.pack = pack;
    EXPECT_TRUE(image.allocate());
    std::copy(bytes.begin(), bytes.end(), image.begin());
    return image;
}

TEST_F(ImageWindow, SwappedBytesAreSwapped) {
    const pack_t swapped{.swap = true, .alignment = 4};
    load(image_of_16_bits(&swapped, {0x80, 0x00, 0x00, 0xFF}));
    EXPECT_EQ(red_values(shown_texels()), (std::vector<int>{128, 1}));
}

TEST_F(ImageWindow, WithoutAPackingRecordNothingOfTheImageBeforeHolds) {
    const pack_t swapped{.swap = true, .alignment = 1};
    load(image_of_16_bits(&swapped, {0x80, 0x00, 0x00, 0xFF}));
    load(image_of_16_bits(nullptr, {0x80, 0x00, 0x00, 0xFF}));
    EXPECT_EQ(red_values(shown_texels()), (std::vector<int>{0, 254}));
    load(numbered_image(3, 2));  // its rows are aligned to 4 bytes
    EXPECT_EQ(red_values(shown_texels()), (std::vector<int>{0, 1, 2, 3, 4, 5}));
}

TEST_F(ImageWindow, UnpackStateStaysAsTheImageNeededIt) {
    const pack_t pack{.swap = true, .alignment = 2};
    image2d part;
    ASSERT_TRUE(part.subimage(numbered_image(8, 5), 2, 1, 3, 2));
    part.pack = &pack;
    load(part);
    EXPECT_EQ(gl_integer(GL_UNPACK_SWAP_BYTES), 1);
    EXPECT_EQ(gl_integer(GL_UNPACK_ALIGNMENT), 2);
    EXPECT_EQ(gl_integer(GL_UNPACK_ROW_LENGTH), 8);
    EXPECT_EQ(gl_integer(GL_UNPACK_SKIP_PIXELS), 2);
    EXPECT_EQ(gl_integer(GL_UNPACK_SKIP_ROWS), 1);
}

// --- images that promise more than they hold --------------------------------------------------------------

/// True when the image leaves the texture without storage, and says nothing.
bool is_left_out(grTexture2D& texture, const image2d& image, std::uint32_t max_size = 0) {
    const captured_stream errors(std::cerr);
    texture.set_level(image, max_size, 0);
    texture.Load();
    return level_parameter(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH) == 0 && errors.text().empty();
}

TEST_F(ImageWindow, CutImageIsLeftOutSilently) {
    image2d image = numbered_image(4, 4);
    image.limit = 15;
    EXPECT_TRUE(is_left_out(texture, image));
}

TEST_F(ImageWindow, CutImageIsLeftOutOnTheMipmapPathToo) {
    image2d image = numbered_image(4, 4);
    image.limit = 15;
    texture.set_mipmap(true);
    EXPECT_TRUE(is_left_out(texture, image));
    ulk_test::gl_flags_t flags;
    flags.without_gl_3_0();
    EXPECT_TRUE(is_left_out(texture, image));
}

TEST_F(ImageWindow, CutImageGetsNoPaddedStorage) {
    image2d image = numbered_image(4, 4);
    image.limit = 15;
    EXPECT_TRUE(is_left_out(texture, image, 4));
}

TEST_F(ImageWindow, ImageWithoutBytesIsLeftOut) {
    image2d image;
    image.format = image_format::rgba;
    image.type = 1;
    image.bits = 3;
    image.width = 4;
    image.height = 4;
    EXPECT_TRUE(is_left_out(texture, image));
}

TEST_F(ImageWindow, ImageOfANegativeHeightIsLeftOut) {
    image2d image = numbered_image(4, 4);
    image.height = static_cast<std::uint32_t>(-4);
    EXPECT_TRUE(is_left_out(texture, image));
}

TEST_F(ImageWindow, WindowBehindItsBlockIsLeftOut) {
    image2d image = numbered_image(4, 4);
    image.offset = 1000;
    EXPECT_TRUE(is_left_out(texture, image));
}

TEST_F(ImageWindow, SkipsBeyondTheBytesAreLeftOut) {
    image2d image = numbered_image(4, 4);
    image.height = 3;
    image.skip_y = 2;
    EXPECT_TRUE(is_left_out(texture, image));
    image.skip_y = 1;
    image.skip_x = 1;
    EXPECT_TRUE(is_left_out(texture, image));
    image.skip_x = 0xFFFFFFFF;
    EXPECT_TRUE(is_left_out(texture, image));
}

TEST_F(ImageWindow, PaddingOfTheLastRowNeedNotBeThere) {
    image2d image = numbered_image(3, 2);
    image.limit = 7;
    load(image);
    EXPECT_EQ(red_values(shown_texels()), (std::vector<int>{0, 1, 2, 3, 4, 5}));
}

TEST_F(ImageWindow, ChannelsThatShareBytesAreLeftOutWhereGLReadsOneByteForEach) {
    // Three channels of 4 bits: 24 bytes in the image, 48 as GL reads it.
    image2d image;
    image.format = image_format::rgb;
    image.type = 1;
    image.bits = libutils::image_bits::bits_4;
    image.width = 4;
    image.height = 4;
    ASSERT_TRUE(image.allocate());
    EXPECT_TRUE(is_left_out(texture, image));
}

TEST_F(ImageWindow, LevelThatIsLeftOutDoesNotStopTheOthers) {
    image2d cut = numbered_image(4, 4);
    cut.limit = 1;
    const image2d images[] = {cut, numbered_image(2, 2)};
    texture.set_levels(images, 0, 0);
    texture.Load();
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH), 0);
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 1, GL_TEXTURE_WIDTH), 2);
}

// --- what a core context does not read --------------------------------------------------------------------

TEST_F(ImageWindow, GreyWithAlphaShowsGreyAndItsAlpha) {
    load(image_of(image_format::grey_alpha, 2, 1, {10, 200, 250, 0}));
    const auto texels = shown_texels();
    ASSERT_EQ(texels.size(), 2U);
    for (std::size_t channel = 0; channel < 3; ++channel) {
        EXPECT_NEAR(texels[0][channel], 10 / 255.0, 1e-4);
        EXPECT_NEAR(texels[1][channel], 250 / 255.0, 1e-4);
    }
    EXPECT_NEAR(texels[0][3], 200 / 255.0, 1e-4);
    EXPECT_EQ(texels[1][3], 0.0F);
}

TEST_F(ImageWindow, ColourImageInATextureThatWasGreyShowsItsColours) {
    load(numbered_image(2, 2));
    load(image_of(image_format::rgb, 1, 1, {255, 0, 255}));
    EXPECT_EQ(shown_texels().at(0), (rgba_float_t{1, 0, 1, 1}));
}

/// Red, green and blue.
libutils::palette_t three_colours() {
    libutils::palette_t palette;
    EXPECT_TRUE(palette.allocate(3));
    palette.set(0, 255, 0, 0);
    palette.set(1, 0, 255, 0);
    palette.set(2, 0, 0, 255);
    return palette;
}

constexpr rgba_float_t red{1, 0, 0, 1};
constexpr rgba_float_t green{0, 1, 0, 1};
constexpr rgba_float_t blue{0, 0, 1, 1};
constexpr rgba_float_t black{0, 0, 0, 1};
constexpr rgba_float_t white{1, 1, 1, 1};

TEST_F(ImageWindow, IndexedImageShowsTheColoursOfItsPalette) {
    image2d image = image_of(image_format::index, 3, 2, {0, 1, 2, 2, 1, 0});
    image.palette = three_colours();
    load(image);
    EXPECT_EQ(shown_texels(), (std::vector{red, green, blue, blue, green, red}));
}

TEST_F(ImageWindow, IndexBeyondThePaletteIsBlack) {
    image2d image = image_of(image_format::index, 3, 1, {3, 255, 2});
    image.palette = three_colours();
    load(image);
    EXPECT_EQ(shown_texels(), (std::vector{black, black, blue}));
}

TEST_F(ImageWindow, IndexedImageWithoutAPaletteIsBlack) {
    load(image_of(image_format::index, 2, 1, {0, 1}));
    EXPECT_EQ(shown_texels(), (std::vector{black, black}));
}

TEST_F(ImageWindow, PartOfAnIndexedImageShowsThatPart) {
    image2d whole = image_of(image_format::index, 3, 3, {0, 0, 0, 0, 1, 2, 0, 2, 1});
    whole.palette = three_colours();
    image2d part;
    ASSERT_TRUE(part.subimage(whole, 1, 1, 2, 2));
    load(part);
    EXPECT_EQ(shown_texels(), (std::vector{green, blue, blue, green}));
}

TEST_F(ImageWindow, MipmapsOfAnIndexedImageAreOfItsColours) {
    image2d image = image_of(image_format::index, 2, 1, {0, 2});
    image.palette = three_colours();
    texture.set_mipmap(true);
    load(image);
    const auto texels = shown_texels(GL_TEXTURE_2D, 1);
    ASSERT_EQ(texels.size(), 1U);
    EXPECT_NEAR(texels[0][0], 0.5, 0.01);
    EXPECT_NEAR(texels[0][2], 0.5, 0.01);
}

TEST_F(ImageWindow, ReloadOfAnIndexedImageShowsItsColours) {
    image2d image = image_of(image_format::index, 1, 1, {0});
    image.palette = three_colours();
    load(image);
    image.begin()[0] = 1;
    texture.Reload();
    EXPECT_EQ(shown_texels(), (std::vector{green}));
}

TEST_F(ImageWindow, ExpansionLeavesTheImagesUnpackStateBehind) {
    image2d part;
    ASSERT_TRUE(part.subimage(image_of(image_format::index, 3, 3, bytes_t(9)), 1, 1, 2, 2));
    load(part);
    EXPECT_EQ(gl_integer(GL_UNPACK_ALIGNMENT), 4);
    EXPECT_EQ(gl_integer(GL_UNPACK_ROW_LENGTH), 3);
    EXPECT_EQ(gl_integer(GL_UNPACK_SKIP_PIXELS), 1);
    EXPECT_EQ(gl_integer(GL_UNPACK_SKIP_ROWS), 1);
}

/// An image of pixels that share bytes; rows of 4 bytes.
image2d packed_image(std::uint32_t format, std::uint32_t bits, std::uint32_t width,
                     std::initializer_list<std::uint8_t> row) {
    image2d image;
    image.format = format;
    image.type = 1;
    image.bits = bits;
    image.width = width;
    image.height = 1;
    EXPECT_TRUE(image.allocate());
    std::copy(row.begin(), row.end(), image.begin());
    return image;
}

TEST_F(ImageWindow, BitsOfAnIndexedImageAreReadFromTheHighest) {
    image2d image = packed_image(image_format::index, libutils::image_bits::bits_1, 10, {0x50, 0x80});
    image.palette = three_colours();
    load(image);
    EXPECT_EQ(shown_texels(), (std::vector{red, green, red, green, red, red, red, red, green, red}));
}

TEST_F(ImageWindow, BitsOfAGreyImageAreBlackAndWhite) {
    load(packed_image(image_format::grey, libutils::image_bits::bits_1, 9, {0xA0, 0x80}));
    EXPECT_EQ(shown_texels(), (std::vector{white, black, white, black, black, black, black, black, white}));
}

TEST_F(ImageWindow, HalfBytesOfAGreyImageAreSixteenSteps) {
    load(packed_image(image_format::grey, libutils::image_bits::bits_4, 3, {0x0F, 0x70}));
    EXPECT_EQ(red_values(shown_texels()), (std::vector<int>{0, 255, 119}));
}

TEST_F(ImageWindow, PartOfBitsBeginsInsideOfAByte) {
    image2d part;
    const image2d whole = packed_image(image_format::grey, libutils::image_bits::bits_1, 16, {0x01, 0x40});
    ASSERT_TRUE(part.subimage(whole, 6, 0, 4, 1));
    load(part);
    EXPECT_EQ(shown_texels(), (std::vector{black, white, black, white}));
}

TEST_F(ImageWindow, BitsThatThereIsNoMemoryToUnpackAreLeftOut) {
    if (!ulk_test::no_more_pages_t::is_possible())
        GTEST_SKIP() << "a build with tools that need memory";
    image2d bits = packed_image(image_format::grey, libutils::image_bits::bits_1, 4096, {});
    bits.height = 4096;
    ASSERT_TRUE(bits.allocate());
    texture.set_level(bits, 0, 0);
    {
        const ulk_test::no_more_pages_t limit;
        texture.Load();
    }
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH), 0);
}

TEST_F(ImageWindow, CutImagesOfBitsAndIndicesAreLeftOut) {
    image2d bits = packed_image(image_format::grey, libutils::image_bits::bits_1, 9, {0xA0, 0x80});
    bits.limit = 1;
    EXPECT_TRUE(is_left_out(texture, bits));
    image2d indices = image_of(image_format::index, 3, 2, {0, 1, 2, 2, 1, 0});
    indices.limit = 6;
    EXPECT_TRUE(is_left_out(texture, indices));
    indices.limit = 100;
    indices.skip_y = 0xFFFFFFFF;
    EXPECT_TRUE(is_left_out(texture, indices));
}

}  // namespace
}  // namespace libgr
