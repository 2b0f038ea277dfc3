#include <gmock/gmock.h>

#include <iostream>

#include "gl/gltextures/textures/texture_test.h"
#include "gltextures/textures/gr_textures.h"
#include "support/captured_stream.h"
#include "support/gl_state.h"

namespace libgr {
namespace {

using libutils::image3d;
using testing::ElementsAre;
using ulk_test::border_color_of;
using ulk_test::bytes_t;
using ulk_test::captured_stream;
using ulk_test::gl_integer;
using ulk_test::level_parameter;
using ulk_test::plain_image;
using ulk_test::stored_bytes;
using ulk_test::texture_parameter;
using ulk_test::volume_image;

constexpr std::array<float, 4> orange{1, 0.5F, 0, 1};

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

}  // namespace
}  // namespace libgr
