#include <gmock/gmock.h>

#include <iostream>

#include "gl/gltextures/textures/texture_test.h"
#include "gltextures/textures/gr_texture_object.h"
#include "gltextures/textures/gr_textures.h"
#include "gltextures/upload/gr_pixel_map.h"
#include "support/captured_stream.h"
#include "support/gl_state.h"

/// Uploads on a context that still has the old formats: nothing is translated there, and the ways to mipmaps
/// that a core context has no call for are real ones.
namespace libgr {
namespace {

using libutils::image2d;
using ulk_test::bytes_t;
using ulk_test::gl_integer;
using ulk_test::image_of;
using ulk_test::level_parameter;
using ulk_test::plain_image;
using ulk_test::stored_bytes;
namespace image_format = libutils::image_format;

class LegacyContext : public ulk_test::texture_test {
  protected:
    void SetUp() override {
        texture_test::SetUp();
        if (!context.is_current())
            GTEST_SKIP() << "the driver has core contexts only";
        glGenTextures(1, &name);
        glBindTexture(GL_TEXTURE_2D, name);
    }
    void TearDown() override {
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        if (context.is_current()) {
            glBindTexture(GL_TEXTURE_2D, 0);
            glDeleteTextures(1, &name);
        }
        texture_test::TearDown();
    }

    ulk_test::legacy_context_t context;
    ulk_test::gl_flags_t flags;
    grTexture2D texture;
    GLuint name = 0;
};

TEST_F(LegacyContext, GreyIsStoredAsLuminance) {
    texture.set_level(image_of(image_format::grey, 1, 1, {77}), 0, 0);
    texture.Load();
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 0, GL_TEXTURE_INTERNAL_FORMAT), GL_LUMINANCE8);
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 0, GL_TEXTURE_LUMINANCE_SIZE), 8);
}

TEST_F(LegacyContext, BorderIsTakenAndPaddingGoesAroundIt) {
    texture.set_level(plain_image(4, 4, {1, 2, 3, 4}), 6, 0);
    texture.set_border(true);
    texture.Load();
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH) -
                  2 * level_parameter(GL_TEXTURE_2D, 0, GL_TEXTURE_BORDER),
              4);
}

TEST_F(LegacyContext, MipmapFlagBuildsMipmapsAndIsCleared) {
    flags.without_gl_3_0();
    flags.with_mipmap_flag();
    texture.set_level(plain_image(4, 4, {10, 20, 30, 40}), 0, 0);
    texture.set_mipmap(true);
    texture.Load();
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D, 2), (bytes_t{10, 20, 30, 40}));
    EXPECT_EQ(ulk_test::texture_parameter(GL_TEXTURE_2D, GL_GENERATE_MIPMAP), GL_FALSE);
}

TEST_F(LegacyContext, HostBuildsMipmapsInAFormatThatTheFlagDoesNotTake) {
    flags.without_gl_3_0();
    flags.with_mipmap_flag();
    texture.set_level(image_of(image_format::grey, 2, 2, {80, 80, 80, 80}), 0, 0);
    texture.set_mipmap(true);
    texture.Load();
    EXPECT_EQ(level_parameter(GL_TEXTURE_2D, 1, GL_TEXTURE_INTERNAL_FORMAT), GL_LUMINANCE8);
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D, 1).at(0), 80);
}

TEST_F(LegacyContext, LoadEnablesTheTargetBeforeGL30AndUnloadDisablesIt) {
    texture.set_level(plain_image(1, 1, {}), 0, 0);
    grTextureObject object;
    object.Set(&texture);
    flags.without_gl_3_0();
    object.Load();
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    object.Unload();
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_2D), 0);
}

TEST_F(LegacyContext, SetTextureIsResident) {
    texture.set_level(plain_image(1, 1, {}), 0, 0);
    grTextureObject object;
    object.Set(&texture);
    EXPECT_TRUE(object.IsResident());
}

TEST_F(LegacyContext, PixelMapHoldsThePalette) {
    libutils::palette_t palette;
    ASSERT_TRUE(palette.allocate(4));
    palette.set(2, 10, 20, 30);
    grPixelMapSet(true, palette);
    EXPECT_EQ(gl_integer(GL_MAP_COLOR), 1);
    std::uint16_t red[4]{};
    std::uint16_t green[4]{};
    std::uint16_t blue[4]{};
    EXPECT_EQ(gl_integer(GL_PIXEL_MAP_I_TO_R_SIZE), 4);
    glGetPixelMapusv(GL_PIXEL_MAP_I_TO_R, red);
    glGetPixelMapusv(GL_PIXEL_MAP_I_TO_G, green);
    glGetPixelMapusv(GL_PIXEL_MAP_I_TO_B, blue);
    EXPECT_EQ(red[2], 2570);
    EXPECT_EQ(green[2], 5140);
    EXPECT_EQ(blue[2], 7710);
    grPixelMapSet(false, palette);
    EXPECT_EQ(gl_integer(GL_MAP_COLOR), 0);
}

TEST_F(LegacyContext, LoadOfAnIndexedImageUsesThePixelMap) {
    image2d image = image_of(image_format::index, 1, 1, {0});
    ASSERT_TRUE(image.palette.allocate(2));
    image.palette.set(1, 1, 1, 1);
    texture.set_level(image, 0, 0);
    const ulk_test::captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(errors.text(), "after-teximage2d(not-mipmap): Error 1281: invalid value\n")
        << "colour index is a form of pixels, but GL stores none";
    EXPECT_EQ(gl_integer(GL_PIXEL_MAP_I_TO_R_SIZE), 2);
    EXPECT_EQ(gl_integer(GL_MAP_COLOR), 0);
}

}  // namespace
}  // namespace libgr
