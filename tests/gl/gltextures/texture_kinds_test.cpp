#include <gmock/gmock.h>

#include <iostream>

#include "gl/gltextures/texture_test.h"
#include "gltextures/gr_textures.h"
#include "support/captured_stream.h"
#include "support/forced_marks.h"
#include "support/gl_state.h"

namespace libgr {
namespace {

using libutils::image1d;
using libutils::image2d;
using libutils::image3d;
using testing::ElementsAre;
using ulk_test::bytes_t;
using ulk_test::captured_stream;
using ulk_test::gl_integer;
using ulk_test::level_parameter;
using ulk_test::plain_image;
using ulk_test::row_image;
using ulk_test::stored_bytes;
using ulk_test::texture_parameter;
using ulk_test::volume_image;

constexpr std::array<float, 4> orange{1, 0.5F, 0, 1};

std::array<float, 4> border_color_of(GLenum target) {
    std::array<float, 4> color{};
    glGetTexParameterfv(target, GL_TEXTURE_BORDER_COLOR, color.data());
    return color;
}

// --- one dimension ----------------------------------------------------------------------------------------

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

// --- three dimensions -------------------------------------------------------------------------------------

class Texture3D : public ulk_test::texture_test {
  protected:
    void SetUp() override {
        texture_test::SetUp();
        bind_fresh(GL_TEXTURE_3D);
    }
    grTexture3D texture;
};

/// RGBA pixels with all channels 0, 1, 2 and so on.
image3d numbered_volume(std::uint32_t width, std::uint32_t height, std::uint32_t depth) {
    bytes_t bytes;
    for (std::uint32_t i = 0; i < width * height * depth; ++i)
        bytes.insert(bytes.end(), 4, static_cast<std::uint8_t>(i));
    return volume_image(width, height, depth, bytes);
}

std::vector<int> first_channels(const bytes_t& rgba) {
    std::vector<int> values;
    for (std::size_t i = 0; i < rgba.size(); i += 4)
        values.push_back(rgba[i]);
    return values;
}

TEST_F(Texture3D, UploadsItsLevels) {
    const image3d images[] = {numbered_volume(2, 2, 2), numbered_volume(1, 1, 1)};
    texture.set_levels(images, 0, 0);
    texture.Load();
    EXPECT_THAT(first_channels(stored_bytes(GL_TEXTURE_3D)), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7));
    EXPECT_EQ(level_parameter(GL_TEXTURE_3D, 1, GL_TEXTURE_WIDTH), 1);
}

TEST_F(Texture3D, ShowsAPartOfAVolume) {
    image3d image = numbered_volume(3, 3, 3);
    image.row_length = 3;
    image.image_height = 3;
    image.skip_x = 1;
    image.skip_y = 1;
    image.skip_z = 1;
    image.width = 2;
    image.height = 2;
    image.depth = 2;
    texture.set_level(image, 0, 0);
    texture.Load();
    EXPECT_THAT(first_channels(stored_bytes(GL_TEXTURE_3D)), ElementsAre(13, 14, 16, 17, 22, 23, 25, 26));
    EXPECT_EQ(gl_integer(GL_UNPACK_IMAGE_HEIGHT), 3);
    EXPECT_EQ(gl_integer(GL_UNPACK_SKIP_IMAGES), 1);
}

TEST_F(Texture3D, PictureAfterAPartOfAVolumeIsUploaded) {
    image3d volume = numbered_volume(1, 1, 3);
    volume.skip_z = 1;
    volume.depth = 2;
    texture.set_level(volume, 0, 0);
    texture.Load();
    bind_fresh(GL_TEXTURE_2D);
    grTexture2D picture;
    picture.set_level(plain_image(1, 1, {7, 7, 7, 7}), 0, 0);
    picture.Load();
    EXPECT_THAT(first_channels(stored_bytes(GL_TEXTURE_2D)), ElementsAre(7));
}

TEST_F(Texture3D, CutVolumeIsLeftOutSilently) {
    image3d image = numbered_volume(2, 2, 2);
    image.limit = 31;
    texture.set_level(image, 0, 0);
    const captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(level_parameter(GL_TEXTURE_3D, 0, GL_TEXTURE_WIDTH), 0);
}

TEST_F(Texture3D, GetsItsMipmapsFromGL) {
    texture.set_level(volume_image(2, 2, 2, bytes_t(32, 90)), 0, 0);
    texture.set_mipmap(true);
    texture.Load();
    EXPECT_THAT(first_channels(stored_bytes(GL_TEXTURE_3D, 1)), ElementsAre(90));
}

TEST_F(Texture3D, WithoutAnyWayToMipmapsHasItsFirstLevel) {
    ulk_test::gl_flags_t flags;
    flags.without_gl_3_0();
    flags.without_mipmap_flag();
    texture.set_level(numbered_volume(2, 1, 1), 0, 0);
    texture.set_mipmap(true);
    texture.Load();
    EXPECT_THAT(first_channels(stored_bytes(GL_TEXTURE_3D)), ElementsAre(0, 1));
    EXPECT_EQ(level_parameter(GL_TEXTURE_3D, 1, GL_TEXTURE_WIDTH), 0);
}

TEST_F(Texture3D, SuppliedLevelOverwritesTheOneThatWasBuilt) {
    const image3d images[] = {numbered_volume(2, 2, 2), volume_image(1, 1, 1, {9, 9, 9, 9})};
    texture.set_levels(images, 0, 0);
    texture.set_mipmap(true);
    texture.Load();
    EXPECT_THAT(first_channels(stored_bytes(GL_TEXTURE_3D, 1)), ElementsAre(9));
}

TEST_F(Texture3D, PadsIntoCubicStorageThatWeighsTheDepth) {
    texture.set_level(numbered_volume(2, 1, 3), 1, 0);
    texture.Load();
    EXPECT_EQ(level_parameter(GL_TEXTURE_3D, 0, GL_TEXTURE_WIDTH), 4);
    EXPECT_EQ(level_parameter(GL_TEXTURE_3D, 0, GL_TEXTURE_HEIGHT), 4);
    EXPECT_EQ(level_parameter(GL_TEXTURE_3D, 0, GL_TEXTURE_DEPTH), 4);
    EXPECT_EQ(first_channels(stored_bytes(GL_TEXTURE_3D))[16], 2);
}

image3d compressed_volume() {
    image3d image = numbered_volume(1, 1, 1);
    image.compressed = true;
    return image;
}

TEST_F(Texture3D, CompressedVolumeHasWordsWhereThereAreNoMipmapsAndIsHandedOver) {
    const ulk_test::compressed_calls_t calls;
    texture.set_level(compressed_volume(), 0, 0);
    texture.set_mipmap(true);
    ulk_test::gl_flags_t flags;
    flags.without_mipmap_flag();
    const captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(errors.text(), "Compressed image are can't build mipmaps in this environment.\n");
    ASSERT_EQ(calls.calls().size(), 1U);
    EXPECT_EQ(calls.calls()[0].function, "image 3d");
    EXPECT_THAT(calls.calls()[0].extent, ElementsAre(1, 1, 1));
}

TEST_F(Texture3D, CompressedVolumeInAFormatThatTheFlagDoesNotTakeHasOtherWords) {
    const ulk_test::compressed_calls_t calls;
    image3d image = compressed_volume();
    image.format = 6;
    texture.set_level(image, 0, 0);
    texture.set_mipmap(true);
    ulk_test::gl_flags_t flags;
    flags.with_mipmap_flag();
    const captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(errors.text(), "Compressed 'special format' image is ablen't to build mipmaps, fallback.\n");
    EXPECT_EQ(calls.calls().size(), 1U);
}

TEST_F(Texture3D, TakesItsParameters) {
    const tex_parameters_3d_t parameters{.min_filter = GL_LINEAR,
                                         .mag_filter = GL_NEAREST,
                                         .wrap_s = GL_CLAMP_TO_EDGE,
                                         .wrap_t = GL_MIRRORED_REPEAT,
                                         .wrap_r = GL_CLAMP_TO_BORDER,
                                         .aniso = 2.0F};
    texture.set_level(numbered_volume(1, 1, 1), 0, 0);
    texture.set_parameters(&parameters);
    texture.Load();
    EXPECT_EQ(texture_parameter(GL_TEXTURE_3D, GL_TEXTURE_MIN_FILTER), GL_LINEAR);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_3D, GL_TEXTURE_MAG_FILTER), GL_NEAREST);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_3D, GL_TEXTURE_WRAP_S), GL_CLAMP_TO_EDGE);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_3D, GL_TEXTURE_WRAP_T), GL_MIRRORED_REPEAT);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_3D, GL_TEXTURE_WRAP_R), GL_CLAMP_TO_BORDER);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_3D, GL_TEXTURE_MAX_ANISOTROPY_EXT), 2);
}

TEST_F(Texture3D, BorderColorGoesToTheCubeMapThatIsBound) {
    bind_fresh(GL_TEXTURE_CUBE_MAP);
    image3d image = numbered_volume(1, 1, 1);
    image.format = 7;  // a border itself is no matter for a core context
    texture.set_level(image, 0, 0);
    texture.set_border(true);
    texture.set_border_color(orange.data());
    const captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(border_color_of(GL_TEXTURE_CUBE_MAP), orange);
    EXPECT_EQ(border_color_of(GL_TEXTURE_3D), (std::array<float, 4>{}));
}

TEST_F(Texture3D, ReloadUploadsAgain) {
    texture.set_level(numbered_volume(1, 1, 1), 0, 0);
    texture.Load();
    texture.set_level(numbered_volume(2, 2, 2), 0, 0);
    texture.Reload();
    EXPECT_EQ(level_parameter(GL_TEXTURE_3D, 0, GL_TEXTURE_DEPTH), 2);
}

// --- rectangles -------------------------------------------------------------------------------------------

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

// --- parameters by themselves -----------------------------------------------------------------------------

class TexParameter : public ulk_test::texture_test {};

TEST_F(TexParameter, OfNullDoesNothing) {
    const ulk_test::forced_marks marks;
    grTexParameter(static_cast<const tex_parameters_1d_t*>(nullptr));
    grTexParameter(static_cast<const tex_parameters_2d_t*>(nullptr));
    grTexParameter(static_cast<const tex_parameters_3d_t*>(nullptr));
    grTexParameter(static_cast<const tex_parameters_cube_t*>(nullptr));
    grTexBorderColor(GL_TEXTURE_2D, nullptr);
    EXPECT_TRUE(marks.beginning_with("").empty());
}

TEST_F(TexParameter, OfACubeMapHasItsMarks) {
    bind_fresh(GL_TEXTURE_CUBE_MAP);
    const tex_parameters_cube_t parameters;
    const ulk_test::forced_marks marks;
    grTexParameter(&parameters);
    EXPECT_THAT(marks.beginning_with(""),
                ElementsAre("grTexParameter(cubemap) start", "grTexParameter(cubemap) end"));
}

TEST_F(TexParameter, AnisotropyOfVolumesAndCubeMapsNeedsTheExtension) {
    const GLboolean extension = __GLEW_EXT_texture_filter_anisotropic;
    __GLEW_EXT_texture_filter_anisotropic = GL_FALSE;
    bind_fresh(GL_TEXTURE_3D);
    bind_fresh(GL_TEXTURE_CUBE_MAP);
    bind_fresh(GL_TEXTURE_2D);
    const tex_parameters_3d_t volume{.aniso = 2.0F};
    const tex_parameters_cube_t cube{.aniso = 2.0F};
    const tex_parameters_2d_t plane{.aniso = 2.0F};
    grTexParameter(&volume);
    grTexParameter(&cube);
    grTexParameter(&plane);
    __GLEW_EXT_texture_filter_anisotropic = extension;
    EXPECT_EQ(texture_parameter(GL_TEXTURE_3D, GL_TEXTURE_MAX_ANISOTROPY_EXT), 1);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAX_ANISOTROPY_EXT), 1);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_2D, GL_TEXTURE_MAX_ANISOTROPY_EXT), 2) << "asked for always";
}

}  // namespace
}  // namespace libgr
