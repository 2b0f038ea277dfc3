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
using ulk_test::stored_bytes;
using ulk_test::texture_parameter;

using faces_t = std::array<image2d, 6>;

class TextureCubeMap : public ulk_test::texture_test {
  protected:
    void SetUp() override {
        texture_test::SetUp();
        bind_fresh(GL_TEXTURE_CUBE_MAP);
    }
    grTextureCubeMap texture;
};

/// Faces of one colour each: the number of the face plus `base` in all channels.
faces_t numbered_faces(std::uint32_t side, std::uint8_t base = 0) {
    faces_t faces;
    for (std::size_t i = 0; i < 6; ++i) {
        const auto value = static_cast<std::uint8_t>(base + i);
        faces[i] = plain_image(side, side, {value, value, value, value});
    }
    return faces;
}

constexpr GLenum face_targets[] = {GL_TEXTURE_CUBE_MAP_POSITIVE_X, GL_TEXTURE_CUBE_MAP_NEGATIVE_X,
                                   GL_TEXTURE_CUBE_MAP_POSITIVE_Y, GL_TEXTURE_CUBE_MAP_NEGATIVE_Y,
                                   GL_TEXTURE_CUBE_MAP_POSITIVE_Z, GL_TEXTURE_CUBE_MAP_NEGATIVE_Z};

/// The first channel of each face.
std::vector<int> face_values(GLint level = 0) {
    std::vector<int> values;
    for (const GLenum face : face_targets) {
        const bytes_t bytes = stored_bytes(face, level);
        values.push_back(bytes.empty() ? -1 : bytes[0]);
    }
    return values;
}

TEST_F(TextureCubeMap, FacesGoInTheirOrder) {
    texture.set_level(numbered_faces(2), 0, 0);
    texture.Load();
    EXPECT_THAT(face_values(), ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST_F(TextureCubeMap, LevelsAreSixImagesEach) {
    std::vector<image2d> images;
    for (const faces_t& faces : {numbered_faces(2, 10), numbered_faces(1, 20)})
        images.insert(images.end(), faces.begin(), faces.end());
    texture.set_levels(images, 0, 0);
    texture.Load();
    EXPECT_THAT(face_values(0), ElementsAre(10, 11, 12, 13, 14, 15));
    EXPECT_THAT(face_values(1), ElementsAre(20, 21, 22, 23, 24, 25));
}

TEST_F(TextureCubeMap, SettingALevelDropsThoseAbove) {
    texture.set_level(numbered_faces(2), 0, 0);
    texture.set_level(numbered_faces(1), 0, 1);
    texture.set_level(numbered_faces(2, 50), 0, 0);
    texture.Load();
    EXPECT_THAT(face_values(0), ElementsAre(50, 51, 52, 53, 54, 55));
    EXPECT_THAT(face_values(1), ElementsAre(-1, -1, -1, -1, -1, -1));
}

TEST_F(TextureCubeMap, SetsALevelAboveOthers) {
    texture.set_level(numbered_faces(2, 10), 0, 0);
    texture.set_level(numbered_faces(1, 20), 0, 1);
    texture.Load();
    EXPECT_THAT(face_values(0), ElementsAre(10, 11, 12, 13, 14, 15));
    EXPECT_THAT(face_values(1), ElementsAre(20, 21, 22, 23, 24, 25));
}

TEST_F(TextureCubeMap, WithFewerThanSixImagesUploadsNoneOfThem) {
    const tex_parameters_cube_t parameters{.min_filter = GL_LINEAR};
    const faces_t faces = numbered_faces(2);
    texture.set_levels(std::span(faces).first(5), 0, 0);
    texture.set_parameters(&parameters);
    texture.Load();
    EXPECT_THAT(face_values(), ElementsAre(-1, -1, -1, -1, -1, -1));
    EXPECT_EQ(texture_parameter(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MIN_FILTER), GL_LINEAR);
}

TEST_F(TextureCubeMap, WithoutImagesDoesNothing) {
    const tex_parameters_cube_t parameters{.min_filter = GL_LINEAR};
    texture.set_parameters(&parameters);
    texture.Load();
    EXPECT_EQ(texture_parameter(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MIN_FILTER), GL_NEAREST);
    EXPECT_EQ(texture.GetInternalFormat(), 1281U);
}

TEST_F(TextureCubeMap, BuildsMipmapsOfEveryFace) {
    texture.set_level(numbered_faces(4, 60), 0, 0);
    texture.set_mipmap(true);
    texture.Load();
    EXPECT_THAT(face_values(2), ElementsAre(60, 61, 62, 63, 64, 65));
}

TEST_F(TextureCubeMap, MipmapsComeFromTheFirstLevelAlone) {
    texture.set_level(numbered_faces(2, 60), 0, 0);
    texture.set_level(numbered_faces(1, 90), 0, 1);
    texture.set_mipmap(true);
    texture.Load();
    EXPECT_THAT(face_values(1), ElementsAre(60, 61, 62, 63, 64, 65));
}

TEST_F(TextureCubeMap, FaceOfAnUnsupportedFormatIsSkipped) {
    faces_t faces = numbered_faces(1, 1);
    faces[2].format = 7;
    texture.set_level(faces, 0, 0);
    const captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(errors.text(), "Not supported image format!\nimgformat: 7\nimgtype: 1\nimgbits: 3\n");
    EXPECT_THAT(face_values(), ElementsAre(1, 2, -1, 4, 5, 6));
}

TEST_F(TextureCubeMap, UnsupportedFirstFaceEndsTheMipmapPathAtOnce) {
    const tex_parameters_cube_t parameters{.min_filter = GL_LINEAR};
    faces_t faces = numbered_faces(1, 1);
    faces[0].format = 7;
    texture.set_level(faces, 0, 0);
    texture.set_mipmap(true);
    texture.set_parameters(&parameters);
    const captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(errors.text(), "Not supported image format!\nimgformat: 7\nimgtype: 1\nimgbits: 3\n");
    EXPECT_THAT(face_values(), ElementsAre(-1, -1, -1, -1, -1, -1));
    EXPECT_EQ(texture_parameter(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MIN_FILTER), GL_NEAREST);
}

TEST_F(TextureCubeMap, CutFaceLeavesOutTheMipmapsSilently) {
    faces_t faces = numbered_faces(2, 1);
    faces[3].limit = 5;
    texture.set_level(faces, 0, 0);
    texture.set_mipmap(true);
    const captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(errors.text(), "");
    EXPECT_THAT(face_values(0), ElementsAre(1, 2, 3, -1, 5, 6));
    EXPECT_THAT(face_values(1), ElementsAre(-1, -1, -1, -1, -1, -1));
}

TEST_F(TextureCubeMap, FacesOfDifferentSizesAreAnErrorAtTheMark) {
    faces_t faces = numbered_faces(2);
    faces[5] = plain_image(4, 4, {});
    texture.set_level(faces, 0, 0);
    texture.set_mipmap(true);
    const captured_stream errors(std::cerr);
    texture.Load();
    EXPECT_EQ(errors.text(), "after-generate_mipmap: Error 1282: invalid operation\n");
}

TEST_F(TextureCubeMap, GreyFacesShowGrey) {
    faces_t faces;
    faces.fill(ulk_test::image_of(libutils::image_format::grey, 1, 1, {77}));
    texture.set_level(faces, 0, 0);
    texture.Load();
    GLint swizzle[4];
    glGetTexParameteriv(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_SWIZZLE_RGBA, swizzle);
    EXPECT_THAT(swizzle, ElementsAre(GL_RED, GL_RED, GL_RED, GL_ONE));
}

TEST_F(TextureCubeMap, TakesItsParameters) {
    const tex_parameters_cube_t parameters{
        .min_filter = GL_LINEAR_MIPMAP_LINEAR, .mag_filter = GL_NEAREST, .aniso = 2.0F};
    const GLint wrap = texture_parameter(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_WRAP_S);
    texture.set_level(numbered_faces(1), 0, 0);
    texture.set_parameters(&parameters);
    texture.Load();
    EXPECT_EQ(texture_parameter(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MIN_FILTER), GL_LINEAR_MIPMAP_LINEAR);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAG_FILTER), GL_NEAREST);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAX_ANISOTROPY_EXT), 2);
    EXPECT_EQ(texture_parameter(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_WRAP_S), wrap);
}

TEST_F(TextureCubeMap, ReloadUploadsAgain) {
    texture.set_level(numbered_faces(1, 1), 0, 0);
    texture.Load();
    texture.set_level(numbered_faces(2, 31), 0, 0);
    texture.Reload();
    EXPECT_EQ(level_parameter(GL_TEXTURE_CUBE_MAP_POSITIVE_X, 0, GL_TEXTURE_WIDTH), 2);
    EXPECT_THAT(face_values(), ElementsAre(31, 32, 33, 34, 35, 36));
}

// --- marks and the ways to mipmaps ------------------------------------------------------------------------

std::vector<std::string> repeated(std::size_t count, const std::vector<std::string>& marks) {
    std::vector<std::string> all;
    for (std::size_t i = 0; i < count; ++i)
        all.insert(all.end(), marks.begin(), marks.end());
    return all;
}

constexpr const char* start_of_parameters = "grTexParameter(cubemap) start";
constexpr const char* end_of_parameters = "grTexParameter(cubemap) end";

TEST_F(TextureCubeMap, MarksOfPlainFaces) {
    const tex_parameters_cube_t parameters;
    texture.set_level(numbered_faces(1), 0, 0);
    texture.set_parameters(&parameters);
    std::vector<std::string> expected =
        repeated(6, {"before-teximage2d(not-mipmap)", "after-teximage2d(not-mipmap)"});
    expected.insert(expected.end(), {start_of_parameters, end_of_parameters});
    const forced_marks marks;
    texture.Load();
    EXPECT_EQ(marks.beginning_with(""), expected);
}

TEST_F(TextureCubeMap, MarksOfGeneratedMipmaps) {
    texture.set_level(numbered_faces(1), 0, 0);
    texture.set_mipmap(true);
    std::vector<std::string> expected = repeated(6, {"after-teximage2d(not-mipmap)"});
    expected.insert(expected.end(), {"before-generate_mipmap", "after-generate_mipmap"});
    const forced_marks marks;
    texture.Load();
    EXPECT_EQ(marks.beginning_with(""), expected);
}

TEST_F(TextureCubeMap, MarksOfMipmapsByTheFlag) {
    texture.set_level(numbered_faces(1), 0, 0);
    texture.set_mipmap(true);
    ulk_test::gl_flags_t flags;
    flags.without_gl_3_0();
    flags.with_mipmap_flag();
    std::vector<std::string> expected{"after-texparameter_cubemap-sgis-true"};
    for (const std::string& mark : repeated(6, {"after-teximage2d(not-mipmap)"}))
        expected.push_back(mark);
    expected.insert(expected.end(),
                    {"before-texparameter_cubemap-sgis-false", "after-texparameter_cubemap-sgis-false"});
    {
        const forced_marks marks;
        texture.Load();
        EXPECT_EQ(marks.beginning_with(""), expected);
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_ENUM)) << "a core context has no such flag";
}

TEST_F(TextureCubeMap, MarksOfMipmapsBuiltOnTheHost) {
    texture.set_level(numbered_faces(2, 40), 0, 0);
    texture.set_mipmap(true);
    ulk_test::gl_flags_t flags;
    flags.without_gl_3_0();
    flags.without_mipmap_flag();
    {
        const forced_marks marks;
        texture.Load();
        EXPECT_EQ(marks.beginning_with("after-"),
                  repeated(6, {"after-unpack_window_subset", "after-gluBuild2DMipmaps"}));
    }
}

TEST_F(TextureCubeMap, HostBuildsEveryFace) {
    texture.set_level(numbered_faces(2, 40), 0, 0);
    texture.set_mipmap(true);
    ulk_test::gl_flags_t flags;
    flags.without_gl_3_0();
    flags.without_mipmap_flag();
    texture.Load();
    EXPECT_THAT(face_values(1), ElementsAre(40, 41, 42, 43, 44, 45));
}

TEST_F(TextureCubeMap, CompressedFacesFallBackWithTheirWords) {
    const ulk_test::compressed_calls_t calls;
    faces_t faces = numbered_faces(2);
    for (image2d& face : faces)
        face.compressed = true;
    texture.set_level(faces, 0, 0);
    texture.set_mipmap(true);
    ulk_test::gl_flags_t flags;
    flags.without_gl_3_0();
    flags.without_mipmap_flag();
    const captured_stream errors(std::cerr);
    texture.Load();
    std::string words;
    for (int i = 0; i < 6; ++i)
        words += "Compressed 'special format' image is ablen't to build mipmaps, fallback.\n";
    EXPECT_EQ(errors.text(), words);
    ASSERT_EQ(calls.calls().size(), 6U);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(calls.calls()[i].target, face_targets[i]);
}

}  // namespace
}  // namespace libgr
