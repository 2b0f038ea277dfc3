// Maps of a model that make its surface bumpy: heights become normals, colours are read as normals.

#include "gl/render/maps/model_textures_test.h"
#include "support/image_builder.h"
#include "utils/pictures/image_transforms.h"

namespace ulk3d {
namespace {

using libgr::model_textures;
using libutils::image2d;
using ulk_test::captured_stream;
using ulk_test::image_of;
using ulk_test::pixel_bytes;
using ulk_test::plain_picture;
using ulk_test::write_picture;
namespace image_format = libutils::image_format;

using BumpMaps = ulk_test::model_textures_test;

/// Heights with a step in both directions.
image2d heights() {
    return image_of(image_format::grey, 3, 2, {0, 100, 200, 50, 60, 70});
}

image2d normals_of(const image2d& grey) {
    image2d normals;
    EXPECT_TRUE(libutils::heightmap2normalmap(normals, grey));
    return normals;
}

TEST_F(BumpMaps, GreyBecomesNormals) {
    const std::string path = write_picture(folder, "heights.png", heights());
    texture.bumpmap = "heights.png";
    ASSERT_TRUE(open(texture));
    EXPECT_EQ(texture.bump_handle, model_textures.find(path + ".norm"));
    EXPECT_NE(model_textures.find(path), 0U);
    EXPECT_EQ(model_textures.find(path + ".mono"), 0U);
    const image2d& image = entry_of(texture.bump_handle).image;
    EXPECT_EQ(image.format, image_format::rgb);
    EXPECT_EQ(image.type, libutils::image_type::signed_integer);
    EXPECT_EQ(pixel_bytes(image), pixel_bytes(normals_of(heights())));
    EXPECT_EQ(level_parameter(texture.bump_handle, 0, GL_TEXTURE_WIDTH), 3);
    EXPECT_EQ(entry_of(model_textures.find(path)).object.texture_id(), 0U) << "the heights are not shown";
}

image2d coloured_heights(std::uint32_t format) {
    return image_of(format, 2, 1, {200, 40, 10, 30, 120, 90});
}

TEST_F(BumpMaps, Bump2MonoMakesHeightsOfColours) {
    const std::string path = write_picture(folder, "rgb.png", coloured_heights(image_format::rgb));
    texture.bumpmap = "rgb.png";
    texture.bump2mono = true;
    ASSERT_TRUE(open(texture));
    image2d grey;
    ASSERT_TRUE(libutils::rgb2grey(grey, coloured_heights(image_format::rgb)));
    EXPECT_EQ(pixel_bytes(entry_of(model_textures.find(path + ".mono")).image), pixel_bytes(grey));
    EXPECT_EQ(texture.bump_handle, model_textures.find(path + ".norm"));
    EXPECT_EQ(pixel_bytes(entry_of(texture.bump_handle).image), pixel_bytes(normals_of(grey)));
}

TEST_F(BumpMaps, Bump2MonoReadsBlueGreenRedToo) {
    const std::string path = write_picture(folder, "bgr.bmp", coloured_heights(image_format::rgb));
    texture.bumpmap = "bgr.bmp";
    texture.bump2mono = true;
    ASSERT_TRUE(open(texture));
    ASSERT_EQ(entry_of(model_textures.find(path)).image.format, image_format::bgr);
    image2d grey;
    ASSERT_TRUE(libutils::rgb2grey(grey, coloured_heights(image_format::rgb)));
    EXPECT_EQ(pixel_bytes(entry_of(model_textures.find(path + ".mono")).image), pixel_bytes(grey));
}

TEST_F(BumpMaps, Bump2MonoOfOtherFormatsLeavesTheSurfaceSmooth) {
    const std::string path =
        write_picture(folder, "rgba.png", image_of(image_format::rgba, 1, 1, {200, 40, 10, 255}));
    texture.bumpmap = "rgba.png";
    texture.bump2mono = true;
    EXPECT_EQ(words(texture), "normalmap(): image type not supported.\nheightmap2normalmap failed.\n");
    EXPECT_EQ(texture.bump_handle, model_textures.find(path + ".norm"));
    EXPECT_EQ(entry_of(texture.bump_handle).object.texture_id(), 0U);
    EXPECT_EQ(texture.bump_offset_u, 0.0F);
    EXPECT_EQ(texture.bump_offset_v, 0.0F);
}

TEST_F(BumpMaps, HeightsThatDoNotBecomeNormalsAreToldAndTheOpenGoesOn) {
    image2d deep = ulk_test::image_header(image_format::grey, libutils::image_bits::bits_16, 1, 1);
    ASSERT_TRUE(deep.allocate());
    write_picture(folder, "deep.png", deep);
    texture.bumpmap = "deep.png";
    EXPECT_EQ(words(texture), "normalmap(): image type not supported.\nheightmap2normalmap failed.\n");
    EXPECT_NE(texture.spec_handle, 0U);
    EXPECT_EQ(entry_of(texture.bump_handle).object.texture_id(), 0U) << "heights are no normals";
}

TEST_F(BumpMaps, ColouredIsReadAsSigned) {
    const std::string path = write_picture(folder, "rgb.png", coloured_heights(image_format::rgb));
    texture.bumpmap = "rgb.png";
    ASSERT_TRUE(open(texture));
    EXPECT_EQ(texture.bump_handle, model_textures.find(path + ".sint"));
    const image2d& image = entry_of(texture.bump_handle).image;
    EXPECT_EQ(image.type, libutils::image_type::signed_integer);
    EXPECT_EQ(pixel_bytes(image), pixel_bytes(coloured_heights(image_format::rgb)));
    EXPECT_EQ(image.begin(), entry_of(model_textures.find(path)).image.begin()) << "the bytes are shared";
    EXPECT_EQ(entry_of(model_textures.find(path)).image.type, libutils::image_type::unsigned_integer);
}

TEST_F(BumpMaps, SignedEntryIsRenewedAtEachOpen) {
    const std::string path = write_picture(folder, "rgb.png", coloured_heights(image_format::rgb));
    texture.bumpmap = "rgb.png";
    ASSERT_TRUE(open(texture));
    const std::uint32_t handle = texture.bump_handle;
    entry_of(model_textures.find(path)).image = coloured_heights(image_format::rgb);
    entry_of(model_textures.find(path)).image.begin()[0] = 99;
    ASSERT_TRUE(open(texture));
    EXPECT_EQ(texture.bump_handle, handle);
    EXPECT_EQ(entry_of(handle).image.begin()[0], 99);
}

TEST_F(BumpMaps, SignedIsUsedAsItIs) {
    const std::uint32_t handle = model_textures.insert(folder.path("signed.png"), {});
    entry_of(handle).image = coloured_heights(image_format::rgb);
    entry_of(handle).image.type = libutils::image_type::signed_integer;
    texture.bumpmap = "signed.png";
    ASSERT_TRUE(open(texture));
    EXPECT_EQ(texture.bump_handle, handle);
    EXPECT_NE(entry_of(handle).object.texture_id(), 0U);
    EXPECT_EQ(model_textures.find(folder.path("signed.png") + ".sint"), 0U);
}

TEST_F(BumpMaps, LastModelOfAMapDecidesItsFilters) {
    write_picture(folder, "heights.png", heights());
    texture.bumpmap = "heights.png";
    ASSERT_TRUE(open(texture));
    texture_t other;
    other.bumpmap = "heights.png";
    other.mipmap = false;
    other.maglinear = false;
    ASSERT_TRUE(open(other));
    EXPECT_EQ(other.bump_handle, texture.bump_handle);
    EXPECT_EQ(parameter(other.bump_handle, GL_TEXTURE_MIN_FILTER), GL_LINEAR);
    EXPECT_EQ(parameter(other.bump_handle, GL_TEXTURE_MAG_FILTER), GL_NEAREST);
    // The first model again, as an update of the scene opens the maps of all models in turn.
    ASSERT_TRUE(open(texture));
    EXPECT_EQ(parameter(texture.bump_handle, GL_TEXTURE_MIN_FILTER), GL_LINEAR_MIPMAP_LINEAR);
    EXPECT_EQ(parameter(texture.bump_handle, GL_TEXTURE_MAG_FILTER), GL_LINEAR);
}

TEST_F(BumpMaps, OffsetIsHalfATexel) {
    write_picture(folder, "heights.png", heights());
    texture.bumpmap = "heights.png";
    ASSERT_TRUE(open(texture));
    EXPECT_EQ(texture.bump_offset_u, -0.5F / 3);
    EXPECT_EQ(texture.bump_offset_v, -0.25F);
}

TEST_F(BumpMaps, WithoutBumpofsTheOffsetStays) {
    write_picture(folder, "heights.png", heights());
    texture.bumpmap = "heights.png";
    texture.bumpofs = false;
    texture.bump_offset_u = 3;
    ASSERT_TRUE(open(texture));
    EXPECT_EQ(texture.bump_offset_u, 3.0F);
    EXPECT_EQ(texture.bump_offset_v, 0.0F);
}

TEST_F(BumpMaps, WithoutAMapTheOffsetStays) {
    texture.bumpofs = true;
    ASSERT_TRUE(open(texture));
    EXPECT_EQ(texture.bump_offset_u, 0.0F);
    EXPECT_EQ(texture.bump_offset_v, 0.0F);
}

TEST_F(BumpMaps, MapThatIsMissingEndsTheOpenWithItsWords) {
    texture.bumpmap = "missing.png";
    const std::string path = folder.path("missing.png");
    EXPECT_EQ(words_of_failure(texture), path + ": file open error, No such file or directory\n" + path +
                                             ": bump autoloadformat failed.\n");
    EXPECT_EQ(model_textures.find(path), texture.bump_handle);
    EXPECT_EQ(entry_of(texture.bump_handle).object.texture_id(), 0U);
    EXPECT_NE(texture.color_handle, 0U);
    EXPECT_EQ(texture.spec_handle, 0U) << "not reached";
}

TEST_F(BumpMaps, MapThatHasFailedStaysWithoutATexture) {
    texture.bumpmap = "missing.png";
    EXPECT_NE(words_of_failure(texture), "");
    EXPECT_EQ(words(texture), "normalmap(): image type not supported.\nheightmap2normalmap failed.\n");
    EXPECT_EQ(entry_of(texture.bump_handle).object.texture_id(), 0U);
    EXPECT_EQ(texture.bump_offset_u, 0.0F);
}

TEST_F(BumpMaps, MapThatCanNotBeShownIsNotShownToTheNextModelEither) {
    write_cut_picture();
    // A picture of which its codec leaves the upper half when it fails.
    const std::string half = write_picture(folder, "half.png", plain_picture(40, 40, {1, 2, 3}));
    std::filesystem::resize_file(half, std::filesystem::file_size(half) - 20);
    for (const char* name : {"cut.bmp", "half.png"}) {
        const captured_stream errors(std::cerr);
        texture_t first, second;
        first.bumpmap = second.bumpmap = name;
        open(first);
        open(second);
        for (const texture_t* model : {&first, &second}) {
            EXPECT_EQ(entry_of(model->bump_handle).object.texture_id(), 0U) << name;
            EXPECT_EQ(model->bump_offset_u, 0.0F) << name;
        }
    }
}

TEST_F(BumpMaps, OpenWithoutRoomForADerivedMapIsFalse) {
    const std::string grey = write_picture(folder, "heights.png", heights());
    const std::string rgb = write_picture(folder, "rgb.png", coloured_heights(image_format::rgb));
    ASSERT_TRUE(open(texture));
    entry_of(model_textures.insert(grey, {})).image = heights();
    entry_of(model_textures.insert(rgb, {})).image = coloured_heights(image_format::rgb);
    model_textures.slots.resize(model_textures.slot_limit);
    for (const char* name : {"heights.png", "rgb.png"}) {
        for (const bool mono : {false, true}) {
            texture_t other;
            other.bumpmap = name;
            other.bump2mono = mono;
            EXPECT_EQ(words_of_failure(other), "") << name;
        }
    }
}

}  // namespace
}  // namespace ulk3d
