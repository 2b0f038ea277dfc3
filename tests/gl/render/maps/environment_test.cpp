#include "model/environment.h"

#include <GL/glew.h>
#include <gmock/gmock.h>

#include <filesystem>
#include <iostream>

#include "gltextures/textures/texture_stores.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/image_builder.h"
#include "support/pictures.h"
#include "support/working_directory.h"

namespace ulk3d {
namespace {

using libgr::cube_entry_t;
using libgr::cube_textures;
using testing::ElementsAre;
using ulk_test::captured_stream;
using ulk_test::colour_t;
using ulk_test::plain_picture;
using ulk_test::write_cube;
using ulk_test::write_picture;

constexpr std::array<colour_t, 6> face_colours{
    {{10, 0, 0}, {20, 0, 0}, {30, 0, 0}, {40, 0, 0}, {50, 0, 0}, {60, 0, 0}}};

class EnvironmentTextures : public ulk_test::gl_test {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        libgr::clear_texture_stores();
    }
    void TearDown() override {
        libgr::clear_texture_stores();
        glBindTexture(GL_TEXTURE_CUBE_MAP, 0);
        gl_test::TearDown();
    }

    bool init(environment_t& which) const { return which.initex(scene.c_str()); }
    std::string words_of_failure(environment_t& which) const {
        const captured_stream errors(std::cerr);
        EXPECT_FALSE(init(which));
        return errors.text();
    }

    ulk_test::temporary_folder_t folder;
    std::string scene = folder.path("scene.ulk");
    environment_t environment;
};

cube_entry_t& entry_of(const environment_t& environment) {
    EXPECT_NE(environment.cube_handle, 0U);
    return *cube_textures.get(environment.cube_handle);
}

/// The red channel of the first texel of each face.
std::vector<int> face_values(const environment_t& environment, GLint level = 0) {
    entry_of(environment).object.Load();
    std::vector<int> values;
    for (GLenum face = GL_TEXTURE_CUBE_MAP_POSITIVE_X; face <= GL_TEXTURE_CUBE_MAP_NEGATIVE_Z; ++face) {
        GLint width = 0;
        glGetTexLevelParameteriv(face, level, GL_TEXTURE_WIDTH, &width);
        std::vector<unsigned char> texels(static_cast<std::size_t>(width * width) * 4);
        glGetTexImage(face, level, GL_RGBA, GL_UNSIGNED_BYTE, texels.data());
        values.push_back(texels.empty() ? -1 : texels[0]);
    }
    return values;
}

GLint parameter(const environment_t& environment, GLenum name) {
    entry_of(environment).object.Load();
    GLint value = -1;
    glGetTexParameteriv(GL_TEXTURE_CUBE_MAP, name, &value);
    return value;
}

TEST_F(EnvironmentTextures, FaceWhosePixelsAreNotAllThereIsOneThatIsMissing) {
    for (const char* suffix : ulk_test::cube_suffixes)
        write_picture(folder, std::string("sky") + suffix + ".bmp", plain_picture(4, 4, {255, 0, 0}));
    const std::string cut = folder.path("sky_negy.bmp");
    std::filesystem::resize_file(cut, 54 + 2 * 12);
    environment.cubetex = "sky.bmp";
    EXPECT_EQ(words_of_failure(environment),
              scene + ": base filename.\n" + cut + ": autoloadformat failed.\n");
    EXPECT_EQ(entry_of(environment).object.texture_id(), 0U);
}

TEST_F(EnvironmentTextures, FolderOfTheSceneMayBeLong) {
    const std::string deep = std::string(150, 'a') + "/" + std::string(150, 'b') + "/";
    std::filesystem::create_directories(folder.path(deep));
    write_cube(folder, deep + "sky", face_colours);
    environment.cubetex = "sky.png";
    EXPECT_TRUE(environment.initex(folder.path(deep + "scene.ulk").c_str()));
    EXPECT_EQ(face_values(environment), (std::vector{10, 20, 30, 40, 50, 60}));
}

// What leads up to the first colon of a scene file's path counts as a drive, on systems without drives too.
TEST_F(EnvironmentTextures, FolderOfTheSceneMayHaveAColon) {
    std::filesystem::create_directories(folder.path("a:b/c:d"));
    write_cube(folder, "a:b/c:d/sky", face_colours);
    environment.cubetex = "sky.png";
    EXPECT_TRUE(environment.initex(folder.path("a:b/c:d/scene.ulk").c_str()));
    EXPECT_EQ(cube_textures.find(folder.path("a:b/c:d/sky.png")), environment.cube_handle);
}

TEST_F(EnvironmentTextures, NameOfTheSceneFileUpToItsColonStandsBeforeTheName) {
    write_cube(folder, "a:sky", face_colours);
    environment.cubetex = "sky.png";
    EXPECT_TRUE(environment.initex(folder.path("a:b.ulk").c_str()));
    EXPECT_EQ(cube_textures.find(folder.path("a:sky.png")), environment.cube_handle);
}

TEST_F(EnvironmentTextures, FacesComeFromTheirFilesInOrder) {
    write_cube(folder, "sky", face_colours);
    environment.cubetex = "sky.png";
    ASSERT_TRUE(init(environment));
    EXPECT_EQ(cube_textures.find(folder.path("sky.png")), environment.cube_handle);
    EXPECT_THAT(face_values(environment), ElementsAre(10, 20, 30, 40, 50, 60));
}

TEST_F(EnvironmentTextures, HasMipmapsAndItsFilters) {
    write_cube(folder, "sky", face_colours);
    environment.cubetex = "sky.png";
    ASSERT_TRUE(init(environment));
    EXPECT_THAT(face_values(environment, 1), ElementsAre(10, 20, 30, 40, 50, 60));
    EXPECT_EQ(parameter(environment, GL_TEXTURE_MIN_FILTER), GL_LINEAR_MIPMAP_LINEAR);
    EXPECT_EQ(parameter(environment, GL_TEXTURE_MAG_FILTER), GL_LINEAR);
    EXPECT_EQ(parameter(environment, GL_TEXTURE_MAX_ANISOTROPY_EXT), 1);
}

TEST_F(EnvironmentTextures, NameInTheStoreIsNotReadAgain) {
    write_cube(folder, "sky", face_colours);
    environment.cubetex = "sky.png";
    ASSERT_TRUE(init(environment));
    ASSERT_EQ(std::remove(folder.path("sky_posx.png").c_str()), 0);
    environment_t other;
    other.cubetex = "sky.png";
    EXPECT_TRUE(init(other));
    EXPECT_EQ(other.cube_handle, environment.cube_handle);
}

TEST_F(EnvironmentTextures, ComingBackToANameFindsItsCube) {
    write_cube(folder, "sky", face_colours);
    environment.cubetex = "sky.png";
    ASSERT_TRUE(init(environment));
    const std::uint32_t handle = environment.cube_handle;
    environment.cubetex.clear();
    ASSERT_TRUE(init(environment));
    EXPECT_NE(environment.cube_handle, handle);
    environment.cubetex = "sky.png";
    ASSERT_TRUE(init(environment));
    EXPECT_EQ(environment.cube_handle, handle);
    EXPECT_THAT(face_values(environment), ElementsAre(10, 20, 30, 40, 50, 60));
}

TEST_F(EnvironmentTextures, WithoutANameIsBlack) {
    ASSERT_TRUE(init(environment));
    EXPECT_EQ(cube_textures.find("cube"), environment.cube_handle);
    EXPECT_THAT(face_values(environment), ElementsAre(0, 0, 0, 0, 0, 0));
    const cube_entry_t& entry = entry_of(environment);
    for (const libutils::image2d& image : entry.images) {
        EXPECT_EQ(ulk_test::pixel_bytes(image), (std::vector<int>{0, 0, 0}));
        EXPECT_EQ(image.begin(), entry.images[0].begin()) << "one picture for all faces";
    }
}

TEST_F(EnvironmentTextures, WithoutANameNeedsNoBaseFile) {
    EXPECT_TRUE(environment.initex(nullptr));
    EXPECT_NE(environment.cube_handle, 0U);
}

TEST_F(EnvironmentTextures, WithoutANameASecondTimeDoesNothing) {
    ASSERT_TRUE(init(environment));
    glBindTexture(GL_TEXTURE_CUBE_MAP, 0);
    environment_t other;
    EXPECT_TRUE(init(other));
    EXPECT_EQ(other.cube_handle, environment.cube_handle);
    GLint bound = -1;
    glGetIntegerv(GL_TEXTURE_BINDING_CUBE_MAP, &bound);
    EXPECT_EQ(bound, 0) << "no work for GL";
    EXPECT_EQ(cube_textures.slots.size(), 1U);
}

TEST_F(EnvironmentTextures, WithoutMemoryHasItsWords) {
    if (!ulk_test::no_more_pages_t::is_possible())
        GTEST_SKIP() << "a build with tools that need memory";
    const captured_stream errors(std::cerr);
    bool done = true;
    {
        const ulk_test::no_more_pages_t limit;
        done = environment.initex("");
    }
    EXPECT_FALSE(done);
    EXPECT_EQ(errors.text(), "environment_t::initex(): allocate fail.\n");
}

TEST_F(EnvironmentTextures, FaceThatIsMissingEndsItWithItsWords) {
    write_cube(folder, "sky", face_colours);
    const std::string missing = folder.path("sky_posy.png");
    ASSERT_EQ(std::remove(missing.c_str()), 0);
    environment.cubetex = "sky.png";
    EXPECT_EQ(words_of_failure(environment), missing + ": file open error, No such file or directory\n" +
                                                 scene + ": base filename.\n" + missing +
                                                 ": autoloadformat failed.\n");
    const cube_entry_t& entry = entry_of(environment);
    EXPECT_EQ(entry.object.texture_id(), 0U);
    EXPECT_FALSE(entry.images[1].empty()) << "loaded before";
    EXPECT_TRUE(entry.images[5].empty()) << "never tried";
    EXPECT_TRUE(init(environment)) << "the name is in the store now";
}

TEST_F(EnvironmentTextures, FailureWithoutABaseFileStillTellsItsLines) {
    const ulk_test::working_directory here(folder.path(""));
    environment.cubetex = "sky.xyz";
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(environment.initex(nullptr));
    EXPECT_EQ(errors.text(),
              "autoloadformat load fail, fname=sky_posx.xyz\n"
              ": base filename.\nsky_posx.xyz: autoloadformat failed.\n");
}

TEST_F(EnvironmentTextures, FullPathIsAppendedToTheSceneFilesFolder) {
    environment.cubetex = "/far/sky.png";
    const std::string face = folder.path("") + "/far/sky_posx.png";
    EXPECT_NE(words_of_failure(environment).find(face + ": autoloadformat failed.\n"), std::string::npos);
    EXPECT_NE(cube_textures.find(folder.path("") + "/far/sky.png"), 0U);
}

TEST_F(EnvironmentTextures, DriveOfTheNameIsDropped) {
    write_cube(folder, "sky", face_colours);
    for (const char* name : {"Q:sky.png", "far/q:sky.png"}) {
        environment.cubetex = name;
        EXPECT_TRUE(init(environment)) << name;
        EXPECT_EQ(cube_textures.find(folder.path("sky.png")), environment.cube_handle) << name;
    }
}

TEST_F(EnvironmentTextures, FacesOfDifferentSizesAreReportedByGL) {
    write_cube(folder, "sky", face_colours);
    write_picture(folder, "sky_negz.png", plain_picture(4, 4, {1, 1, 1}));
    environment.cubetex = "sky.png";
    const captured_stream errors(std::cerr);
    EXPECT_TRUE(init(environment));
    EXPECT_EQ(errors.text(), "after-generate_mipmap: Error 1282: invalid operation\n");
}

TEST_F(EnvironmentTextures, WithAFullStoreIsFalse) {
    cube_textures.slots.resize(cube_textures.slot_limit);
    EXPECT_EQ(words_of_failure(environment), "");
    EXPECT_EQ(environment.cube_handle, 0U);
}

}  // namespace
}  // namespace ulk3d
