#include <gmock/gmock.h>

#include <iostream>

#include "gl/gltextures/textures/texture_test.h"
#include "gltextures/textures/gr_textures.h"
#include "support/captured_stream.h"
#include "support/forced_marks.h"

namespace libgr {
namespace {

using libutils::image2d;
using testing::ElementsAre;
using ulk_test::bytes_t;
using ulk_test::captured_stream;
using ulk_test::forced_marks;
using ulk_test::level_parameter;
using ulk_test::plain_image;
using ulk_test::repeated;
using ulk_test::stored_bytes;
using ulk_test::texture_parameter;
using ulk_test::unsupported_7;
using ulk_test::unsupported_image;

class Texture2D : public ulk_test::texture_test {
  protected:
    void SetUp() override {
        texture_test::SetUp();
        bind_fresh(GL_TEXTURE_2D);
    }
    grTexture2D texture;
};

TEST_F(Texture2D, WithoutLevelsHasNoFormatAndUploadsNothing) {
    EXPECT_EQ(texture.GetInternalFormat(), 1281U);
    tex_parameters_2d_t parameters{.min_filter = GL_LINEAR};
    texture.set_parameters(&parameters);
    texture.Load();
    texture.Reload();
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH), 0);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER), GL_NEAREST);
}

TEST_F(Texture2D, HasTheInternalFormatOfItsFirstLevel) {
    texture.set_level(plain_image(1, 1, {}), 0, 0);
    EXPECT_EQ(texture.GetInternalFormat(), static_cast<GLenum>(GL_RGBA8));
}

TEST_F(Texture2D, OfAnUnsupportedImageHasNoFormatAndSaysSo) {
    texture.set_level(unsupported_image(), 0, 0);
    const captured_stream errors(std::cerr);
    EXPECT_EQ(texture.GetInternalFormat(), 1281U);
    EXPECT_EQ(errors.text(), unsupported_7);
}

TEST_F(Texture2D, InternalFormatLooksAtTheImagesOwnFlag) {
    image2d image = plain_image(1, 1, {});
    image.format = 6;
    image.compressed = true;
    texture.set_level(image, 0, 0);
    EXPECT_EQ(texture.GetInternalFormat(), static_cast<GLenum>(GL_COMPRESSED_ALPHA));
    image.compressed = false;
    texture.set_level(image, 0, 0);
    texture.set_compressed(true);
    EXPECT_EQ(texture.GetInternalFormat(), static_cast<GLenum>(GL_ALPHA));
}

TEST_F(Texture2D, UploadsEveryLevel) {
    const image2d images[] = {plain_image(4, 4, {1, 2, 3, 4}), plain_image(2, 2, {5, 6, 7, 8})};
    texture.set_levels(images, 0, 0);
    texture.Load();
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D, 0), repeated(16, {1, 2, 3, 4}));
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D, 1), repeated(4, {5, 6, 7, 8}));
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 2, GL_TEXTURE_WIDTH), 0);
}

TEST_F(Texture2D, SettingALevelDropsThoseAbove) {
    const image2d images[] = {plain_image(4, 4, {}), plain_image(2, 2, {}), plain_image(1, 1, {})};
    texture.set_levels(images, 0, 0);
    texture.set_level(plain_image(4, 4, {9, 9, 9, 9}), 0, 0);
    texture.Load();
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D, 0), repeated(16, {9, 9, 9, 9}));
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 1, GL_TEXTURE_WIDTH), 0);
}

TEST_F(Texture2D, SettingARunOfLevelsKeepsThoseAbove) {
    const image2d images[] = {plain_image(4, 4, {}), plain_image(2, 2, {}), plain_image(1, 1, {3, 3, 3, 3})};
    texture.set_levels(images, 0, 0);
    const image2d middle[] = {plain_image(2, 2, {7, 7, 7, 7})};
    texture.set_levels(middle, 0, 1);
    texture.Load();
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D, 1), repeated(4, {7, 7, 7, 7}));
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D, 2), repeated(1, {3, 3, 3, 3}));
}

TEST_F(Texture2D, LevelSharesTheBytesOfItsImage) {
    image2d image = plain_image(1, 1, {1, 1, 1, 1});
    texture.set_level(image, 0, 0);
    image.begin()[0] = 200;
    texture.Load();
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D), (bytes_t{200, 1, 1, 1}));
}

TEST_F(Texture2D, SkipsAnUnsupportedLevelAndGoesOn) {
    const image2d images[] = {plain_image(4, 4, {1, 1, 1, 1}), unsupported_image(),
                              plain_image(1, 1, {2, 2, 2, 2})};
    texture.set_levels(images, 0, 0);
    const captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(errors.text(), unsupported_7);
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 1, GL_TEXTURE_WIDTH), 0);
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D, 2), repeated(1, {2, 2, 2, 2}));
}

TEST_F(Texture2D, TakesItsParameters) {
    const tex_parameters_2d_t parameters{.min_filter = GL_LINEAR_MIPMAP_LINEAR,
                                         .mag_filter = GL_NEAREST,
                                         .wrap_s = GL_CLAMP_TO_EDGE,
                                         .wrap_t = GL_MIRRORED_REPEAT,
                                         .aniso = 2.0F};
    texture.set_level(plain_image(1, 1, {}), 0, 0);
    texture.set_parameters(&parameters);
    texture.Load();
    EXPECT_EQ(texture_parameter(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER), GL_LINEAR_MIPMAP_LINEAR);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER), GL_NEAREST);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S), GL_CLAMP_TO_EDGE);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T), GL_MIRRORED_REPEAT);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_2D, GL_TEXTURE_MAX_ANISOTROPY_EXT), 2);
}

TEST_F(Texture2D, BorderColorGoesWithABorderOnly) {
    constexpr std::array<float, 4> orange{1, 0.5F, 0, 1};
    texture.set_level(unsupported_image(), 0, 0);  // a border itself is no matter for a core context
    texture.set_border_color(orange.data());
    const captured_stream errors(std::cerr);
    std::array<float, 4> color{};
    texture.Load();
    glGetTexParameterfv(GL_TEXTURE_2D, GL_TEXTURE_BORDER_COLOR, color.data());
    EXPECT_EQ(color, (std::array<float, 4>{}));
    texture.set_border(true);
    texture.Load();
    glGetTexParameterfv(GL_TEXTURE_2D, GL_TEXTURE_BORDER_COLOR, color.data());
    EXPECT_EQ(color, orange);
}

TEST_F(Texture2D, MarksOfPlainLevels) {
    const image2d images[] = {plain_image(2, 2, {}), plain_image(1, 1, {})};
    texture.set_levels(images, 0, 0);
    const forced_marks marks;
    texture.Load();
    EXPECT_THAT(marks.beginning_with(""),
                ElementsAre("before-teximage2d(not-mipmap)", "after-teximage2d(not-mipmap)",
                            "before-teximage2d(not-mipmap)", "after-teximage2d(not-mipmap)"));
}

TEST_F(Texture2D, MarkOfTheMipmapPath) {
    texture.set_level(plain_image(2, 2, {}), 0, 0);
    texture.set_mipmap(true);
    const forced_marks marks;
    texture.Load();
    EXPECT_THAT(marks.beginning_with(""), ElementsAre("after-teximage2d(not-mipmap)"));
}

TEST_F(Texture2D, MarksOfPadding) {
    texture.set_level(plain_image(2, 2, {}), 2, 0);
    const forced_marks marks;
    texture.Load();
    EXPECT_THAT(marks.beginning_with(""), ElementsAre("before-tex-sub-image2d", "after-tex-sub-image2d"));
}

TEST_F(Texture2D, ReloadRefillsTheStorageThatIsThere) {
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 2, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 bytes_t({1, 1, 1, 1, 2, 2, 2, 2}).data());
    texture.set_level(plain_image(1, 1, {9, 8, 7, 6}), 0, 0);
    texture.Reload();
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D), (bytes_t{9, 8, 7, 6, 2, 2, 2, 2}));
}

TEST_F(Texture2D, ReloadRenewsMipmapsAndParameters) {
    texture.set_level(plain_image(2, 2, {1, 1, 1, 1}), 0, 0);
    texture.set_mipmap(true);
    texture.Load();
    const tex_parameters_2d_t parameters{.min_filter = GL_LINEAR};
    texture.set_level(plain_image(2, 2, {9, 9, 9, 9}), 0, 0);
    texture.set_parameters(&parameters);
    texture.Reload();
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D, 1), repeated(1, {9, 9, 9, 9}));
    EXPECT_EQ(texture_parameter(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER), GL_LINEAR);
}

TEST_F(Texture2D, ReloadWithoutStorageIsAnErrorOfGL) {
    texture.set_level(plain_image(1, 1, {}), 0, 0);
    const captured_stream errors(std::cerr);
    texture.Reload();
    EXPECT_EQ(errors.text(), "after-teximage2d(not-mipmap): Error 1282: invalid operation\n");
}

}  // namespace
}  // namespace libgr
