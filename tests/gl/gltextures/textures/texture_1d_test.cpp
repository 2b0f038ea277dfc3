#include <gmock/gmock.h>

#include <algorithm>
#include <iostream>

#include "gl/gltextures/textures/texture_test.h"
#include "gltextures/textures/gr_textures.h"
#include "support/captured_stream.h"
#include "support/gl_state.h"

namespace libgr {
namespace {

using libutils::image1d;
using testing::ElementsAre;
using ulk_test::border_color_of;
using ulk_test::bytes_t;
using ulk_test::captured_stream;
using ulk_test::gl_integer;
using ulk_test::level_parameter;
using ulk_test::row_image;
using ulk_test::stored_bytes;
using ulk_test::texture_parameter;

constexpr std::array<float, 4> orange{1, 0.5F, 0, 1};

class Texture1D : public ulk_test::texture_test {
  protected:
    void SetUp() override {
        texture_test::SetUp();
        bind_fresh(GL_TEXTURE_1D);
    }
    grTexture1D texture;
};

TEST_F(Texture1D, UploadsItsLevels) {
    const image1d images[] = {row_image({1, 2, 3, 4, 5, 6, 7, 8}), row_image({9, 9, 9, 9})};
    texture.set_levels(images, 0, 0);
    texture.Load();
    EXPECT_EQ(stored_bytes(GL_TEXTURE_1D, 0), (bytes_t{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(stored_bytes(GL_TEXTURE_1D, 1), (bytes_t{9, 9, 9, 9}));
    EXPECT_EQ(texture.GetInternalFormat(), static_cast<GLenum>(GL_RGBA8));
}

TEST_F(Texture1D, WithoutLevelsHasNoFormatAndDoesNothing) {
    texture.set_border_color(orange.data());
    texture.Load();
    EXPECT_EQ(texture.GetInternalFormat(), 1281U);
    EXPECT_EQ(border_color_of(GL_TEXTURE_1D), (std::array<float, 4>{}));
}

TEST_F(Texture1D, SkipsPixelsAndLeavesTheRowStateAlone) {
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 5);
    image1d image = row_image({1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3});
    image.skip_x = 1;
    image.width = 2;
    texture.set_level(image, 0, 0);
    texture.Load();
    EXPECT_EQ(stored_bytes(GL_TEXTURE_1D), (bytes_t{2, 2, 2, 2, 3, 3, 3, 3}));
    EXPECT_EQ(gl_integer(GL_UNPACK_SKIP_PIXELS), 1);
    EXPECT_EQ(gl_integer(GL_UNPACK_ROW_LENGTH), 5);
}

TEST_F(Texture1D, BuildsMipmapsScaledToAPowerOfTwo) {
    texture.set_level(row_image({50, 50, 50, 50, 50, 50, 50, 50, 50, 50, 50, 50}), 0, 0);
    texture.set_mipmap(true);
    texture.Load();
    EXPECT_EQ(level_parameter(GL_TEXTURE_1D, 0, GL_TEXTURE_WIDTH), 4);
    EXPECT_EQ(stored_bytes(GL_TEXTURE_1D, 2), (bytes_t{50, 50, 50, 50}));
}

TEST_F(Texture1D, MipmapsOfWhatTheHostDoesNotKnowComeFromGL) {
    image1d image;
    image.format = libutils::image_format::grey_alpha;
    image.type = 1;
    image.bits = 3;
    image.width = 2;
    ASSERT_TRUE(image.allocate());
    std::fill_n(image.begin(), 4, std::uint8_t{80});
    texture.set_level(image, 0, 0);
    texture.set_mipmap(true);
    texture.Load();
    EXPECT_EQ(level_parameter(GL_TEXTURE_1D, 1, GL_TEXTURE_WIDTH), 1);
    EXPECT_EQ(stored_bytes(GL_TEXTURE_1D, 1), (bytes_t{80, 80, 0, 255}));
}

TEST_F(Texture1D, PadsIntoStorageOnDemand) {
    texture.set_level(row_image({1, 2, 3, 4, 5, 6, 7, 8, 9, 9, 9, 9}), 2, 0);
    texture.Load();
    EXPECT_EQ(level_parameter(GL_TEXTURE_1D, 0, GL_TEXTURE_WIDTH), 4);
    const bytes_t bytes = stored_bytes(GL_TEXTURE_1D);
    EXPECT_EQ(bytes_t(bytes.begin(), bytes.begin() + 4), (bytes_t{1, 2, 3, 4}));
}

TEST_F(Texture1D, BorderColorNeedsNoBorder) {
    texture.set_level(row_image({1, 2, 3, 4}), 0, 0);
    texture.set_border_color(orange.data());
    texture.Load();
    EXPECT_EQ(border_color_of(GL_TEXTURE_1D), orange);
}

TEST_F(Texture1D, TakesItsParameters) {
    const tex_parameters_1d_t parameters{
        .min_filter = GL_LINEAR, .mag_filter = GL_NEAREST, .wrap_s = GL_CLAMP_TO_EDGE};
    texture.set_level(row_image({1, 2, 3, 4}), 0, 0);
    texture.set_parameters(&parameters);
    texture.Load();
    EXPECT_EQ(texture_parameter(GL_TEXTURE_1D, GL_TEXTURE_MIN_FILTER), GL_LINEAR);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_1D, GL_TEXTURE_MAG_FILTER), GL_NEAREST);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_1D, GL_TEXTURE_WRAP_S), GL_CLAMP_TO_EDGE);
}

image1d alpha_row() {
    image1d image = row_image({1, 2, 3, 4});
    image.format = 6;
    image.compressed = true;
    return image;
}

TEST_F(Texture1D, AsksForACompressedFormatOnTheMipmapPathOnly) {
    const ulk_test::compressed_calls_t calls;
    texture.set_level(alpha_row(), 0, 0);
    texture.set_compressed(true);
    texture.Load();
    texture.set_mipmap(true);
    texture.Load();
    ASSERT_EQ(calls.calls().size(), 2U);
    EXPECT_EQ(calls.calls()[0].function, "image 1d");
    EXPECT_EQ(calls.calls()[0].format, static_cast<GLenum>(GL_ALPHA));
    EXPECT_EQ(calls.calls()[1].format, static_cast<GLenum>(GL_COMPRESSED_ALPHA));
}

TEST_F(Texture1D, CompressedImageIsHandedOverForMipmapsWithoutWords) {
    const ulk_test::compressed_calls_t calls;
    texture.set_level(alpha_row(), 0, 0);
    texture.set_mipmap(true);
    const captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(errors.text(), "");
    ASSERT_EQ(calls.calls().size(), 1U);
    EXPECT_THAT(calls.calls()[0].extent, ElementsAre(1));
    EXPECT_EQ(calls.calls()[0].length, 4);
}

TEST_F(Texture1D, CutImageIsLeftOutSilently) {
    image1d image = row_image({1, 2, 3, 4, 5, 6, 7, 8});
    image.limit = 7;
    texture.set_level(image, 0, 0);
    const captured_stream errors(std::cerr);
    texture.Load();
    texture.set_mipmap(true);
    texture.Load();
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(level_parameter(GL_TEXTURE_1D, 0, GL_TEXTURE_WIDTH), 0);
}

TEST_F(Texture1D, ReloadUploadsAgain) {
    texture.set_level(row_image({1, 2, 3, 4}), 0, 0);
    texture.Load();
    texture.set_level(row_image({1, 2, 3, 4, 5, 6, 7, 8}), 0, 0);
    texture.Reload();
    EXPECT_EQ(level_parameter(GL_TEXTURE_1D, 0, GL_TEXTURE_WIDTH), 2);
}

}  // namespace
}  // namespace libgr
