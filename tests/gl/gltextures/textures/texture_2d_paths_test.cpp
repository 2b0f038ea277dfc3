#include <gmock/gmock.h>

#include <iostream>

#include "gl/gltextures/textures/texture_test.h"
#include "gltextures/textures/gr_textures.h"
#include "support/captured_stream.h"

namespace libgr {
namespace {

using libutils::image2d;
using testing::ElementsAre;
using ulk_test::bytes_t;
using ulk_test::captured_stream;
using ulk_test::level_parameter;
using ulk_test::plain_image;
using ulk_test::repeated;
using ulk_test::stored_bytes;
using ulk_test::unsupported_7;
using ulk_test::unsupported_image;

/// Mipmaps, padding and compressed images.
class Texture2DPaths : public ulk_test::texture_test {
  protected:
    void SetUp() override {
        texture_test::SetUp();
        bind_fresh(GL_TEXTURE_2D);
    }
    grTexture2D texture;
};

/// Four by two pixels, black and white by turns: all levels above are grey.
image2d chequered_image() {
    bytes_t pixels;
    for (int i = 0; i < 8; ++i) {
        const auto value = static_cast<std::uint8_t>((i + i / 4) % 2 != 0 ? 255 : 0);
        for (const std::uint8_t byte : {value, value, value, std::uint8_t{255}})
            pixels.push_back(byte);
    }
    return ulk_test::image_of(libutils::image_format::rgba, 4, 2, pixels);
}

TEST_F(Texture2DPaths, BuildsMipmapsDownToOneTexel) {
    texture.set_level(chequered_image(), 0, 0);
    texture.set_mipmap(true);
    texture.Load();
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 1, GL_TEXTURE_WIDTH), 2);
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 1, GL_TEXTURE_HEIGHT), 1);
    EXPECT_NEAR(stored_bytes(GL_TEXTURE_2D, 2).at(0), 127, 1);
}

TEST_F(Texture2DPaths, WithoutAskingHasNoMipmaps) {
    texture.set_level(chequered_image(), 0, 0);
    texture.Load();
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 1, GL_TEXTURE_WIDTH), 0);
}

TEST_F(Texture2DPaths, SuppliedLevelOverwritesTheOneThatWasBuilt) {
    const image2d images[] = {chequered_image(), plain_image(2, 1, {10, 20, 30, 40})};
    texture.set_levels(images, 0, 0);
    texture.set_mipmap(true);
    texture.Load();
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D, 1), repeated(2, {10, 20, 30, 40}));
    EXPECT_NEAR(stored_bytes(GL_TEXTURE_2D, 2).at(0), 127, 1) << "built from level 0";
}

TEST_F(Texture2DPaths, UnsupportedFirstLevelLeavesTheSuppliedOnes) {
    const image2d images[] = {unsupported_image(), plain_image(2, 1, {10, 20, 30, 40})};
    texture.set_levels(images, 0, 0);
    texture.set_mipmap(true);
    const captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(errors.text(), unsupported_7);
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH), 0);
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D, 1), repeated(2, {10, 20, 30, 40}));
}

TEST_F(Texture2DPaths, WithoutGL30MipmapsAreBuiltOnTheHost) {
    ulk_test::gl_flags_t flags;
    flags.without_gl_3_0();
    flags.without_mipmap_flag();
    texture.set_level(plain_image(3, 3, {10, 20, 30, 40}), 0, 0);
    texture.set_mipmap(true);
    texture.Load();
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH), 4) << "the next power of two";
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D, 2), repeated(1, {10, 20, 30, 40}));
}

TEST_F(Texture2DPaths, MipmapsOfSignedNormalsKeepTheirSigns) {
    bytes_t slopes;
    for (int i = 0; i < 4; ++i)
        for (const int byte : {-64, 32, 100})
            slopes.push_back(static_cast<std::uint8_t>(byte));
    image2d image = ulk_test::image_of(libutils::image_format::rgb, 2, 2, slopes);
    image.type = libutils::image_type::signed_integer;
    texture.set_level(image, 0, 0);
    texture.set_mipmap(true);
    texture.Load();
    const auto texels = ulk_test::shown_texels(GL_TEXTURE_2D, 1);
    ASSERT_EQ(texels.size(), 1U);
    EXPECT_NEAR(texels[0][0], -64 / 127.0, 0.01);
    EXPECT_NEAR(texels[0][1], 32 / 127.0, 0.01);
    EXPECT_NEAR(texels[0][2], 100 / 127.0, 0.01);
}

struct storage_case_t {
    std::uint64_t max_size;
    bool border;
    std::uint32_t side;
};

TEST(StorageSide, IsThePowerOfTwoThatHoldsTheSizeAndTheBorderOnTop) {
    constexpr storage_case_t rows[] = {
        {1, false, 1},
        {2, false, 2},
        {3, false, 4},
        {64, false, 64},
        {65, false, 128},
        {66, true, 66},
        {67, true, 130},
        {64, true, 66},
        {3, true, 3},
        {1, true, 3},
        {~0ULL, false, 1U << 30U},
    };
    for (const storage_case_t& row : rows)
        EXPECT_EQ(storage_side(row.max_size, row.border), row.side) << row.max_size << ", " << row.border;
}

struct demand_case_t {
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t max_size;
    GLint side;  ///< of the storage, in both directions; 0 for the image's own size
};

TEST_F(Texture2DPaths, PadsAnImageIntoSquareStorageOnDemand) {
    constexpr demand_case_t rows[] = {{3, 2, 0, 0}, {3, 2, 1, 4}, {2, 5, 1, 8}, {3, 2, 6, 8}, {4, 4, 4, 4}};
    for (const demand_case_t& row : rows) {
        bind_fresh(GL_TEXTURE_2D);
        texture.set_level(plain_image(row.width, row.height, {1, 2, 3, 4}), row.max_size, 0);
        texture.Load();
        const GLint width = level_parameter(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH);
        EXPECT_EQ(width, row.side != 0 ? row.side : static_cast<GLint>(row.width));
        EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT),
                  row.side != 0 ? row.side : static_cast<GLint>(row.height));
        const bytes_t bytes = stored_bytes(GL_TEXTURE_2D);
        for (std::uint32_t y = 0; y < row.height; ++y)
            for (std::uint32_t x = 0; x < row.width; ++x)
                EXPECT_EQ(bytes[(y * static_cast<std::uint32_t>(width) + x) * 4 + 2], 3);
    }
}

TEST_F(Texture2DPaths, RunOfPaddedLevelsHasTheDemandOfTheLargest) {
    const image2d images[] = {plain_image(9, 1, {}), plain_image(2, 2, {})};
    texture.set_levels(images, 2, 0);
    texture.Load();
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH), 16);
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 1, GL_TEXTURE_WIDTH), 16);
}

TEST_F(Texture2DPaths, ErrorsOfPaddingTellTheirValues) {
    // A core context takes no borders, so there is no storage and no place for the image.
    texture.set_level(plain_image(3, 2, {1, 2, 3, 4}), 1, 0);
    texture.set_border(true);
    const captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(errors.text(),
              "before-tex-sub-image2d: Error 1281: invalid value\n"
              "internalformat: 32856\nm_border: 1\nformat: 6408\ntype: 5121\n"
              "after-tex-sub-image2d: Error 1282: invalid operation\n"
              "real_max: 3\nm_width: 3\nm_height: 2\nformat: 6408\ntype: 5121\n");
}

TEST_F(Texture2DPaths, OnlyLevelZeroHasABorder) {
    const image2d images[] = {plain_image(4, 4, {}), plain_image(2, 2, {5, 6, 7, 8})};
    texture.set_levels(images, 0, 0);
    texture.set_border(true);
    const captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(errors.text(), "after-teximage2d(not-mipmap): Error 1281: invalid value\n");
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D, 1), repeated(4, {5, 6, 7, 8}));
}

image2d compressed_image(std::uint64_t limit = image2d::no_limit) {
    image2d image = plain_image(4, 2, {});
    image.compressed = true;
    image.offset = 8;
    image.limit = limit;
    return image;
}

TEST_F(Texture2DPaths, CompressedImageIsHandedOverUpToTheEndOfItsBlock) {
    const ulk_test::compressed_calls_t calls;
    const image2d image = compressed_image();
    texture.set_level(image, 0, 0);
    texture.set_border(true);
    texture.Load();
    ASSERT_EQ(calls.calls().size(), 1U);
    const auto& call = calls.calls().front();
    EXPECT_EQ(call.function, "image 2d");
    EXPECT_EQ(call.target, static_cast<GLenum>(GL_TEXTURE_2D));
    EXPECT_EQ(call.level, 0);
    EXPECT_EQ(call.format, static_cast<GLenum>(GL_RGBA8));
    EXPECT_THAT(call.extent, ElementsAre(4, 2));
    EXPECT_EQ(call.border, 1);
    EXPECT_EQ(call.length, 24);
    EXPECT_EQ(call.data, image.begin());
}

TEST_F(Texture2DPaths, CompressedImageIsCutToItsLimit) {
    const ulk_test::compressed_calls_t calls;
    texture.set_level(compressed_image(10), 0, 0);
    texture.Load();
    ASSERT_EQ(calls.calls().size(), 1U);
    EXPECT_EQ(calls.calls().front().length, 10);
}

TEST_F(Texture2DPaths, ReloadOfACompressedImageRefills) {
    const ulk_test::compressed_calls_t calls;
    texture.set_level(compressed_image(10), 0, 0);
    texture.Reload();
    ASSERT_EQ(calls.calls().size(), 1U);
    EXPECT_EQ(calls.calls().front().function, "refill 2d");
    EXPECT_EQ(calls.calls().front().length, 10);
}

TEST_F(Texture2DPaths, CompressedImageIsSkippedWithItsWordsWhereGLTakesNone) {
    const ulk_test::compressed_calls_t calls;
    const image2d images[] = {compressed_image(), plain_image(2, 1, {4, 4, 4, 4})};
    texture.set_levels(images, 0, 0);
    ulk_test::gl_flags_t flags;
    flags.without_compression();
    const captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(errors.text(),
              "error, ARB_texture_compression unsupported when compressed image loading, skip.\n");
    EXPECT_TRUE(calls.calls().empty());
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D, 1), repeated(2, {4, 4, 4, 4}));
}

TEST_F(Texture2DPaths, CompressedImageWithoutAnyWayToMipmapsFallsBackWithItsWords) {
    const ulk_test::compressed_calls_t calls;
    texture.set_level(compressed_image(), 0, 0);
    texture.set_mipmap(true);
    ulk_test::gl_flags_t flags;
    flags.without_gl_3_0();
    flags.without_mipmap_flag();
    const captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(errors.text(), "Compressed 'special format' image is ablen't to build mipmaps, fallback.\n");
    ASSERT_EQ(calls.calls().size(), 1U);
    EXPECT_EQ(calls.calls().front().function, "image 2d");
}

TEST_F(Texture2DPaths, CompressedAlphaIsStoredAsOneCompressedChannelThatReadsAsAlpha) {
    image2d image = ulk_test::image_of(0, 4, 4, bytes_t(16, 128));
    image.format = 6;
    texture.set_level(image, 0, 0);
    texture.set_compressed(true);
    texture.Load();
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 0, GL_TEXTURE_COMPRESSED), GL_TRUE);
    const auto texels = ulk_test::shown_texels();
    ASSERT_EQ(texels.size(), 16U);
    EXPECT_EQ(texels[5][0], 0.0F);
    EXPECT_NEAR(texels[5][3], 128 / 255.0, 0.02);
}

}  // namespace
}  // namespace libgr
