#include <gmock/gmock.h>

#include <iostream>

#include "gl/gltextures/textures/texture_test.h"
#include "gltextures/textures/gr_textures.h"
#include "support/captured_stream.h"

namespace libgr {
namespace {

using libutils::image2d;
using ulk_test::border_color_of;
using ulk_test::bytes_t;
using ulk_test::captured_stream;
using ulk_test::level_parameter;
using ulk_test::plain_image;
using ulk_test::stored_bytes;
using ulk_test::texture_parameter;

constexpr std::array<float, 4> orange{1, 0.5F, 0, 1};

class TextureRectangle : public ulk_test::texture_test {
  protected:
    void SetUp() override {
        texture_test::SetUp();
        bind_fresh(GL_TEXTURE_RECTANGLE);
        bind_fresh(GL_TEXTURE_2D);
    }
    grTextureRectangle texture;
};

TEST_F(TextureRectangle, UploadsToItsOwnTarget) {
    texture.set_image(plain_image(2, 1, {1, 2, 3, 4}), 0);
    texture.Load();
    EXPECT_EQ(stored_bytes(GL_TEXTURE_RECTANGLE), (bytes_t{1, 2, 3, 4, 1, 2, 3, 4}));
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH), 0);
    EXPECT_EQ(texture.GetInternalFormat(), static_cast<GLenum>(GL_RGBA8));
}

TEST_F(TextureRectangle, ParametersGoTo2D) {
    const tex_parameters_2d_t parameters{.min_filter = GL_LINEAR};
    texture.set_image(plain_image(1, 1, {}), 0);
    texture.set_parameters(&parameters);
    texture.Load();
    EXPECT_EQ(texture_parameter(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER), GL_LINEAR);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_RECTANGLE, GL_TEXTURE_MIN_FILTER), GL_NEAREST);
}

TEST_F(TextureRectangle, WithoutAnImageDoesNothing) {
    const tex_parameters_2d_t parameters{.min_filter = GL_LINEAR};
    texture.set_parameters(&parameters);
    texture.Load();
    EXPECT_EQ(texture.GetInternalFormat(), 1281U);
    image2d flat = plain_image(1, 1, {});
    flat.height = 0;
    texture.set_image(flat, 0);
    texture.Load();
    EXPECT_EQ(texture_parameter(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER), GL_NEAREST);
}

TEST_F(TextureRectangle, IgnoresMipmapBorderAndPadding) {
    texture.set_image(plain_image(3, 1, {1, 2, 3, 4}), 8);
    texture.set_mipmap(true);
    texture.set_border(true);
    texture.set_border_color(orange.data());
    texture.Load();
    EXPECT_EQ(level_parameter(GL_TEXTURE_RECTANGLE, 0, GL_TEXTURE_WIDTH), 3);
    EXPECT_EQ(border_color_of(GL_TEXTURE_RECTANGLE), (std::array<float, 4>{}));
    EXPECT_EQ(border_color_of(GL_TEXTURE_2D), (std::array<float, 4>{}));
}

TEST_F(TextureRectangle, CompressedFormatComesFromTheImagesOwnFlag) {
    image2d image = ulk_test::image_of(0, 4, 4, bytes_t(16, 128));
    image.format = 6;
    image.compressed = true;
    texture.set_image(image, 0);
    texture.Load();
    const auto texels = ulk_test::shown_texels(GL_TEXTURE_RECTANGLE);
    ASSERT_EQ(texels.size(), 16U);
    EXPECT_NEAR(texels[0][3], 128 / 255.0, 0.02);
}

TEST_F(TextureRectangle, HasNoUnpackStateOfItsOwn) {
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 1);
    image2d image = ulk_test::image_of(libutils::image_format::rgba, 2, 1, {1, 1, 1, 1, 2, 2, 2, 2});
    image.width = 1;
    texture.set_image(image, 0);
    texture.Load();
    EXPECT_EQ(stored_bytes(GL_TEXTURE_RECTANGLE), (bytes_t{2, 2, 2, 2}));
}

TEST_F(TextureRectangle, IsLeftOutWhereThatStateReadsBeyondTheImage) {
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 2);
    texture.set_image(plain_image(2, 1, {}), 0);
    texture.Load();
    EXPECT_EQ(level_parameter(GL_TEXTURE_RECTANGLE, 0, GL_TEXTURE_WIDTH), 0);
}

TEST_F(TextureRectangle, GreyShowsGrey) {
    texture.set_image(ulk_test::image_of(libutils::image_format::grey, 1, 1, {51}), 0);
    texture.Load();
    const auto texels = ulk_test::shown_texels(GL_TEXTURE_RECTANGLE);
    ASSERT_EQ(texels.size(), 1U);
    EXPECT_NEAR(texels[0][0], 0.2, 1e-4);
    EXPECT_NEAR(texels[0][2], 0.2, 1e-4);
    EXPECT_EQ(texels[0][3], 1.0F);
}

TEST_F(TextureRectangle, IndexedImageShowsTheColoursOfItsPalette) {
    image2d image = ulk_test::image_of(libutils::image_format::index, 2, 1, {1, 0});
    ASSERT_TRUE(image.palette.allocate(2));
    image.palette.set(0, 255, 0, 0);
    image.palette.set(1, 0, 0, 255);
    texture.set_image(image, 0);
    texture.Load();
    EXPECT_EQ(stored_bytes(GL_TEXTURE_RECTANGLE), (bytes_t{0, 0, 255, 255, 255, 0, 0, 255}));
}

TEST_F(TextureRectangle, ReloadRefills) {
    texture.set_image(plain_image(2, 1, {1, 1, 1, 1}), 0);
    texture.Load();
    texture.set_image(plain_image(1, 1, {9, 9, 9, 9}), 0);
    texture.Reload();
    EXPECT_EQ(stored_bytes(GL_TEXTURE_RECTANGLE), (bytes_t{9, 9, 9, 9, 1, 1, 1, 1}));
}

TEST_F(TextureRectangle, UnsupportedImageHasItsWords) {
    image2d image = plain_image(1, 1, {});
    image.format = 7;
    texture.set_image(image, 0);
    const captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(errors.text(), "Not supported image format!\nimgformat: 7\nimgtype: 1\nimgbits: 3\n");
}

}  // namespace
}  // namespace libgr
