#include "gl/render/maps/model_textures_test.h"

#include <gmock/gmock.h>

#include "support/forced_marks.h"
#include "support/image_builder.h"
#include "support/working_directory.h"

namespace ulk3d {
namespace {

using libgr::model_textures;
using libutils::image2d;
using testing::ElementsAre;
using ulk_test::captured_stream;
using ulk_test::pixel_bytes;
using ulk_test::plain_picture;
using ulk_test::write_picture;
namespace image_format = libutils::image_format;

using ModelTextures = ulk_test::model_textures_test;

// --- defaults ---------------------------------------------------------------------------------------------

struct default_case_t {
    const char* key;
    std::uint32_t texture_t::*handle;
    std::uint32_t type;
    std::vector<int> pixel;
    GLint internal_format;
};

TEST_F(ModelTextures, WithoutNamesAreMapsOfOnePixel) {
    ASSERT_TRUE(open(texture));
    const default_case_t rows[] = {
        {"color", &texture_t::color_handle, 1, {255, 255, 255, 255}, GL_RGBA8},
        {"bump", &texture_t::bump_handle, 0, {0, 0, 127}, GL_RGB8_SNORM},
        {"specular", &texture_t::spec_handle, 1, {255, 255, 255, 255}, GL_RGBA8},
    };
    for (const default_case_t& row : rows) {
        const std::uint32_t handle = texture.*row.handle;
        EXPECT_EQ(model_textures.find(row.key), handle) << row.key;
        const image2d& image = entry_of(handle).image;
        EXPECT_EQ(image.type, row.type) << row.key;
        EXPECT_EQ(image.format, row.pixel.size() == 4 ? image_format::rgba : image_format::rgb);
        EXPECT_EQ(pixel_bytes(image), row.pixel) << row.key;
        EXPECT_EQ(level_parameter(handle, 0, GL_TEXTURE_WIDTH), 1);
        EXPECT_EQ(level_parameter(handle, 0, GL_TEXTURE_INTERNAL_FORMAT), row.internal_format) << row.key;
    }
}

TEST_F(ModelTextures, DefaultsAreLinearWhateverTheModelWants) {
    texture.nearlinear = false;
    texture.maglinear = false;
    texture.aniso = 2.0F;
    ASSERT_TRUE(open(texture));
    for (const std::uint32_t handle : {texture.color_handle, texture.bump_handle, texture.spec_handle}) {
        EXPECT_EQ(parameter(handle, GL_TEXTURE_MIN_FILTER), GL_LINEAR);
        EXPECT_EQ(parameter(handle, GL_TEXTURE_MAG_FILTER), GL_LINEAR);
        EXPECT_EQ(parameter(handle, GL_TEXTURE_WRAP_S), GL_REPEAT);
        EXPECT_EQ(parameter(handle, GL_TEXTURE_WRAP_T), GL_REPEAT);
        EXPECT_EQ(parameter(handle, GL_TEXTURE_MAX_ANISOTROPY_EXT), 2);
    }
}

TEST_F(ModelTextures, DefaultsAreSharedByAllModels) {
    texture_t other;
    ASSERT_TRUE(open(texture));
    ASSERT_TRUE(open(other));
    EXPECT_EQ(texture.color_handle, other.color_handle);
    EXPECT_EQ(texture.bump_handle, other.bump_handle);
    EXPECT_EQ(texture.spec_handle, other.spec_handle);
    EXPECT_EQ(model_textures.slots.size(), 3U);
}

TEST_F(ModelTextures, NeedNoBaseFile) {
    EXPECT_TRUE(texture.open(nullptr));
    EXPECT_NE(texture.spec_handle, 0U);
}

TEST_F(ModelTextures, DefaultsWithoutMemoryHaveTheirWords) {
    if (!ulk_test::no_more_pages_t::is_possible())
        GTEST_SKIP() << "a build with tools that need memory";
    struct row_t {
        std::vector<const char*> present;  ///< defaults that are there already
        const char* words;
    };
    const row_t rows[] = {
        {{}, "(color)texobj.img2d.allocate() failed.\n"},
        {{"color"}, "(bump)texobj.img2d.allocate() fail.\n"},
        {{"color", "bump"}, "(spec)texobj.img2d.allocate() failed.\n"},
    };
    for (const row_t& row : rows) {
        libgr::clear_texture_stores();
        for (const char* key : row.present)
            model_textures.insert(key, {});
        const captured_stream errors(std::cerr);
        bool done = true;
        {
            const ulk_test::no_more_pages_t limit;
            done = texture.open("");
        }
        EXPECT_FALSE(done);
        EXPECT_EQ(errors.text(), row.words);
    }
}

// --- colour maps ------------------------------------------------------------------------------------------

TEST_F(ModelTextures, ColourMapIsKeptUnderItsPath) {
    const std::string path = write_picture(folder, "red.png", plain_picture(4, 2, {255, 0, 0}));
    texture.texture = "red.png";
    ASSERT_TRUE(open(texture));
    EXPECT_EQ(model_textures.find(path), texture.color_handle);
    EXPECT_EQ(level_parameter(texture.color_handle, 0, GL_TEXTURE_WIDTH), 4);
    EXPECT_EQ(level_parameter(texture.color_handle, 0, GL_TEXTURE_HEIGHT), 2);
    EXPECT_EQ(level_parameter(texture.color_handle, 2, GL_TEXTURE_WIDTH), 1) << "with mipmaps";
}

TEST_F(ModelTextures, WithoutMipmapHasOneLevel) {
    write_picture(folder, "red.png", plain_picture(4, 2, {255, 0, 0}));
    texture.texture = "red.png";
    texture.mipmap = false;
    ASSERT_TRUE(open(texture));
    EXPECT_EQ(level_parameter(texture.color_handle, 1, GL_TEXTURE_WIDTH), 0);
}

struct filter_case_t {
    bool nearlinear;
    bool mipmap;
    bool maglinear;
    GLint min_filter;
    GLint mag_filter;
};

TEST_F(ModelTextures, FiltersFollowTheSettings) {
    constexpr filter_case_t rows[] = {
        {false, false, false, GL_NEAREST, GL_NEAREST},
        {true, false, false, GL_LINEAR, GL_NEAREST},
        {false, true, false, GL_NEAREST_MIPMAP_NEAREST, GL_NEAREST},
        {true, true, false, GL_LINEAR_MIPMAP_LINEAR, GL_NEAREST},
        {true, true, true, GL_LINEAR_MIPMAP_LINEAR, GL_LINEAR},
        {false, false, true, GL_NEAREST, GL_LINEAR},
    };
    write_picture(folder, "red.png", plain_picture(2, 2, {255, 0, 0}));
    for (const filter_case_t& row : rows) {
        libgr::clear_texture_stores();
        texture.texture = texture.bumpmap = texture.specular = "red.png";
        texture.nearlinear = row.nearlinear;
        texture.mipmap = row.mipmap;
        texture.maglinear = row.maglinear;
        texture.aniso = 3.0F;
        ASSERT_TRUE(open(texture));
        for (const std::uint32_t handle : {texture.color_handle, texture.bump_handle, texture.spec_handle}) {
            EXPECT_EQ(parameter(handle, GL_TEXTURE_MIN_FILTER), row.min_filter);
            EXPECT_EQ(parameter(handle, GL_TEXTURE_MAG_FILTER), row.mag_filter);
            EXPECT_EQ(parameter(handle, GL_TEXTURE_WRAP_S), GL_REPEAT);
            EXPECT_EQ(parameter(handle, GL_TEXTURE_WRAP_T), GL_REPEAT);
            EXPECT_EQ(parameter(handle, GL_TEXTURE_MAX_ANISOTROPY_EXT), 3);
        }
    }
}

TEST_F(ModelTextures, FirstModelOfAPictureDecidesItsFilters) {
    write_picture(folder, "red.png", plain_picture(4, 4, {255, 0, 0}));
    texture.texture = "red.png";
    ASSERT_TRUE(open(texture));
    texture_t other;
    other.texture = "red.png";
    other.mipmap = false;
    other.maglinear = false;
    ASSERT_TRUE(open(other));
    EXPECT_EQ(other.color_handle, texture.color_handle);
    EXPECT_EQ(parameter(other.color_handle, GL_TEXTURE_MIN_FILTER), GL_LINEAR_MIPMAP_LINEAR);
    EXPECT_EQ(parameter(other.color_handle, GL_TEXTURE_MAG_FILTER), GL_LINEAR);
}

TEST_F(ModelTextures, PictureThatIsInTheStoreIsNotReadAgain) {
    const std::string path = write_picture(folder, "red.png", plain_picture(4, 4, {255, 0, 0}));
    texture.texture = "red.png";
    ASSERT_TRUE(open(texture));
    ASSERT_EQ(std::remove(path.c_str()), 0);
    texture_t other;
    other.texture = "red.png";
    EXPECT_EQ(words(other), "");
}

TEST_F(ModelTextures, NamesAreRelativeToTheSceneFile) {
    const ulk_test::working_directory elsewhere("/");
    write_picture(folder, "red.png", plain_picture(1, 1, {255, 0, 0}));
    texture.texture = "./red.png";
    ASSERT_TRUE(open(texture));
    EXPECT_NE(model_textures.find(folder.path("") + "./red.png"), 0U);
}

TEST_F(ModelTextures, WithoutABaseFileNamesAreRelativeToTheWorkingDirectory) {
    const ulk_test::working_directory here(folder.path(""));
    write_picture(folder, "red.png", plain_picture(1, 1, {255, 0, 0}));
    texture.texture = "red.png";
    EXPECT_TRUE(texture.open(nullptr));
    EXPECT_EQ(model_textures.find("red.png"), texture.color_handle);
}

TEST_F(ModelTextures, FullPathStillHasTheSceneFilesFolderInFront) {
    texture.texture = write_picture(folder, "red.png", plain_picture(1, 1, {255, 0, 0}));
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(open(texture));
    EXPECT_NE(model_textures.find(folder.path("") + texture.texture), 0U);
}

// What leads up to the first colon of a scene file's path counts as a drive, on systems without drives too.
TEST_F(ModelTextures, FolderOfTheSceneMayHaveAColon) {
    std::filesystem::create_directories(folder.path("a:b/c:d"));
    const std::string path = write_picture(folder, "a:b/c:d/red.png", plain_picture(1, 1, {255, 0, 0}));
    texture.texture = texture.bumpmap = texture.specular = "red.png";
    EXPECT_TRUE(texture.open(folder.path("a:b/c:d/scene.ulk").c_str()));
    EXPECT_EQ(model_textures.find(path), texture.color_handle);
    EXPECT_EQ(model_textures.find(path), texture.spec_handle);
    EXPECT_EQ(model_textures.find(path + ".sint"), texture.bump_handle);
}

TEST_F(ModelTextures, NameOfTheSceneFileUpToItsColonStandsBeforeTheNamesOfPictures) {
    const std::string beside = write_picture(folder, "red.png", plain_picture(1, 1, {255, 0, 0}));
    const std::string path = write_picture(folder, "a:red.png", plain_picture(2, 1, {255, 0, 0}));
    texture.texture = texture.bumpmap = texture.specular = "red.png";
    EXPECT_TRUE(texture.open(folder.path("a:b.ulk").c_str()));
    EXPECT_EQ(model_textures.find(path), texture.color_handle);
    EXPECT_EQ(model_textures.find(path), texture.spec_handle);
    EXPECT_EQ(model_textures.find(path + ".sint"), texture.bump_handle);
    EXPECT_EQ(model_textures.find(beside), 0U);
}

TEST_F(ModelTextures, NamesOfPicturesKeepTheirColons) {
    const std::string path = write_picture(folder, "q:red.png", plain_picture(1, 1, {255, 0, 0}));
    texture.texture = texture.bumpmap = texture.specular = "q:red.png";
    EXPECT_TRUE(open(texture));
    EXPECT_EQ(model_textures.find(path), texture.color_handle);
    EXPECT_EQ(model_textures.find(path), texture.spec_handle);
    EXPECT_EQ(model_textures.find(path + ".sint"), texture.bump_handle);
}

TEST_F(ModelTextures, FolderOfTheSceneMayBeLong) {
    const std::string deep = std::string(150, 'a') + "/" + std::string(150, 'b') + "/";
    std::filesystem::create_directories(folder.path(deep));
    write_picture(folder, deep + "red.png", plain_picture(1, 1, {255, 0, 0}));
    texture.texture = texture.bumpmap = texture.specular = "red.png";
    EXPECT_TRUE(texture.open(folder.path(deep + "scene.ulk").c_str()));
    EXPECT_EQ(model_textures.find(folder.path(deep) + "red.png"), texture.color_handle);
}

TEST_F(ModelTextures, ColourMapThatIsMissingEndsTheOpenWithItsWords) {
    texture.texture = "missing.png";
    texture.bump_handle = 77;
    const std::string path = folder.path("missing.png");
    EXPECT_EQ(words_of_failure(texture), path + ": file open error, No such file or directory\n" + scene +
                                             ": base filename.\n" + path +
                                             ": color autoloadformat failed.\n");
    EXPECT_EQ(model_textures.find(path), texture.color_handle);
    EXPECT_EQ(entry_of(texture.color_handle).object.texture_id(), 0U);
    EXPECT_EQ(texture.bump_handle, 77U) << "not reached";
    EXPECT_EQ(texture.spec_handle, 0U);
}

TEST_F(ModelTextures, FailureWithoutABaseFileStillTellsItsLines) {
    texture.texture = "missing.xyz";
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(texture.open(nullptr));
    EXPECT_EQ(errors.text(),
              "autoloadformat load fail, fname=missing.xyz\n"
              ": base filename.\nmissing.xyz: color autoloadformat failed.\n");
}

TEST_F(ModelTextures, NameThatHasFailedIsNotTriedAgain) {
    texture.texture = "missing.png";
    EXPECT_NE(words_of_failure(texture), "");
    EXPECT_EQ(words(texture), "");
    EXPECT_FALSE(entry_of(texture.color_handle).object.IsLoaded());
    EXPECT_NE(texture.bump_handle, 0U);
}

TEST_F(ModelTextures, PictureThatCanNotBeShownIsOneThatCanNotBeRead) {
    const std::string cut = write_cut_picture();
    const std::string grey = write_picture(folder, "grey2.png", [] {
        image2d image = ulk_test::image_header(image_format::grey, libutils::image_bits::bits_2, 4, 1);
        EXPECT_TRUE(image.allocate());
        return image;
    }());
    const std::string unsupported = "Not supported image format!\nimgformat: 0\nimgtype: 1\nimgbits: 1\n";
    const std::pair<std::string, std::string> rows[] = {{cut, ""}, {grey, unsupported}};
    for (const auto& [path, reason] : rows) {
        SCOPED_TRACE(path);
        const std::string name = path.substr(folder.path("").size());
        texture_t color, bump, specular;
        color.texture = bump.bumpmap = specular.specular = name;
        EXPECT_EQ(words_of_failure(color),
                  reason + scene + ": base filename.\n" + path + ": color autoloadformat failed.\n");
        EXPECT_EQ(entry_of(color.color_handle).object.texture_id(), 0U);
        libgr::clear_texture_stores();
        EXPECT_EQ(words_of_failure(bump), reason + path + ": bump autoloadformat failed.\n");
        EXPECT_EQ(entry_of(bump.bump_handle).object.texture_id(), 0U);
        libgr::clear_texture_stores();
        EXPECT_EQ(words_of_failure(specular), reason + path + ": autoloadformat failed.\n");
        EXPECT_EQ(entry_of(specular.spec_handle).object.texture_id(), 0U);
        libgr::clear_texture_stores();
    }
}

// --- specular maps ----------------------------------------------------------------------------------------

TEST_F(ModelTextures, SpecularMapIsKeptUnderItsPath) {
    const std::string path = write_picture(folder, "gloss.png", plain_picture(2, 1, {9, 9, 9}));
    texture.specular = "gloss.png";
    ASSERT_TRUE(open(texture));
    EXPECT_EQ(model_textures.find(path), texture.spec_handle);
    EXPECT_EQ(level_parameter(texture.spec_handle, 0, GL_TEXTURE_WIDTH), 2);
}

TEST_F(ModelTextures, PictureForColourAndSpecularIsLoadedOnce) {
    write_picture(folder, "both.png", plain_picture(2, 1, {9, 9, 9}));
    texture.texture = texture.specular = "both.png";
    ASSERT_TRUE(open(texture));
    EXPECT_EQ(texture.color_handle, texture.spec_handle);
}

TEST_F(ModelTextures, SpecularMapThatIsMissingHasItsWords) {
    texture.specular = "missing.png";
    const std::string path = folder.path("missing.png");
    EXPECT_EQ(words_of_failure(texture),
              path + ": file open error, No such file or directory\n" + path + ": autoloadformat failed.\n");
    EXPECT_EQ(model_textures.find(path), texture.spec_handle);
    EXPECT_EQ(words(texture), "") << "the name is in the store now";
}

// --- the whole --------------------------------------------------------------------------------------------

TEST_F(ModelTextures, MarksStandBehindTheFirstTwoStages) {
    const ulk_test::forced_marks marks;
    EXPECT_TRUE(open(texture));
    EXPECT_THAT(marks.beginning_with("texture_t::"), ElementsAre("texture_t::open(5)", "texture_t::open(6)"));
}

TEST_F(ModelTextures, OpenWithAFullStoreIsFalseAndSpoilsNoEntry) {
    write_picture(folder, "red.png", plain_picture(1, 1, {255, 0, 0}));
    ASSERT_TRUE(open(texture));
    const std::vector<int> first = pixel_bytes(model_textures.get(0)->image);
    model_textures.slots.resize(model_textures.slot_limit);
    for (std::string texture_t::*name : {&texture_t::texture, &texture_t::bumpmap, &texture_t::specular}) {
        texture_t other;
        other.*name = "red.png";
        EXPECT_EQ(words_of_failure(other), "");
    }
    EXPECT_EQ(pixel_bytes(model_textures.get(0)->image), first);
    EXPECT_TRUE(open(texture)) << "what is there can still be used";
}

}  // namespace
}  // namespace ulk3d
