#include <gmock/gmock.h>

#include <cstring>
#include <iostream>

#include "gl/gltextures/textures/texture_test.h"
#include "gltextures/textures/gr_texture_object.h"
#include "support/captured_stream.h"
#include "support/forced_marks.h"
#include "support/pictures.h"

namespace libgr {
namespace {

using libutils::image2d;
using testing::ElementsAre;
using ulk_test::captured_stream;
using ulk_test::forced_marks;
using ulk_test::plain_image;

/// Content without any images: the tests fill the texture themselves.
class no_content_t : public grTexturableImageGL {
  public:
    std::uint32_t GetTarget() const override { return 2; }
    void Load() override {}
    GLenum GetInternalFormat() const override { return GL_RGBA8; }
};

/// The two forms of GetTextureImage.
enum class form_t { bound, by_name, by_name_before_gl_4_5 };

class GetTextureImage : public ulk_test::texture_test, public testing::WithParamInterface<form_t> {
  protected:
    void TearDown() override {
        glBindTexture(GL_TEXTURE_2D, 0);
        texture_test::TearDown();
    }

    /// Makes a texture of 2 by 1 texels.
    void make(GLint internal_format, GLenum format, GLenum type, const void* pixels) {
        object.Set(&content);
        glTexImage2D(GL_TEXTURE_2D, 0, internal_format, 2, 1, 0, format, type, pixels);
    }

    bool read(image2d& image, GLint level = 0) {
        if (GetParam() == form_t::bound)
            return grTextureObject::GetTextureImage(GL_TEXTURE_2D, level, image);
        glBindTexture(GL_TEXTURE_2D, 0);
        const auto original = __glewGetTextureImage;
        if (GetParam() == form_t::by_name_before_gl_4_5)
            __glewGetTextureImage = nullptr;
        const bool done = object.GetTextureImage(level, image);
        __glewGetTextureImage = original;
        return done;
    }

    no_content_t content;
    grTextureObject object;
};

constexpr std::array<float, 8> two_texels{0.5F, -2, 3, 4, 5, 6, 7.25F, 8};

TEST_P(GetTextureImage, ReadsFloats) {
    make(GL_RGBA32F, GL_RGBA, GL_FLOAT, two_texels.data());
    image2d image = plain_image(9, 9, {});
    image.compressed = true;
    image.pack = &libutils::tight_rows;
    ASSERT_TRUE(read(image));
    EXPECT_EQ(image.width, 2U);
    EXPECT_EQ(image.height, 1U);
    EXPECT_EQ(image.format, 9U);
    EXPECT_EQ(image.type, 2U);
    EXPECT_EQ(image.bits, 7U);
    EXPECT_FALSE(image.compressed);
    EXPECT_EQ(image.pack, nullptr);
    std::array<float, 8> texels{};
    ASSERT_EQ(image.size(), sizeof texels);
    std::memcpy(texels.data(), image.begin(), sizeof texels);
    EXPECT_EQ(texels, two_texels);
}

TEST_P(GetTextureImage, HasItsMarks) {
    make(GL_RGBA32F, GL_RGBA, GL_FLOAT, two_texels.data());
    image2d image;
    const forced_marks marks;
    EXPECT_TRUE(read(image));
    EXPECT_THAT(
        marks.beginning_with(""),
        ElementsAre("get texture level parameter (width)", "get texture level parameter (height)",
                    "get texture level parameter (red_type)", "get texture level parameter (red_size)"));
}

TEST_P(GetTextureImage, WithoutMemoryHasItsWords) {
    if (!ulk_test::no_more_pages_t::is_possible())
        GTEST_SKIP() << "a build with tools that need memory";
    make(GL_RGBA32F, GL_RGBA, GL_FLOAT, two_texels.data());
    image2d image;
    const captured_stream errors(std::cerr);
    bool done = true;
    {
        const ulk_test::no_more_pages_t limit;
        done = read(image);
    }
    EXPECT_FALSE(done);
    EXPECT_EQ(errors.text(), "grTextureObject::GetTextureImage() img allocate fail.\n");
}

struct read_codes_t {
    GLint internal_format;
    GLenum format;
    GLenum type;
    std::uint32_t image_type;
    std::uint32_t bits;
};

TEST_P(GetTextureImage, CodesFollowTheRedChannelAndGLRefusesOtherReads) {
    // The channel's type is asked for as it is: none of these is a type that an RGBA read may have.
    constexpr read_codes_t rows[] = {
        {GL_RGBA8, GL_RGBA, GL_FLOAT, 2, 3},
        {GL_RGBA16, GL_RGBA, GL_FLOAT, 2, 5},
        {GL_RGBA8_SNORM, GL_RGBA, GL_FLOAT, 2, 3},
        {GL_RGBA32I, GL_RGBA_INTEGER, GL_INT, 0, 7},
        {GL_RGBA32UI, GL_RGBA_INTEGER, GL_UNSIGNED_INT, 1, 7},
    };
    for (const read_codes_t& row : rows) {
        make(row.internal_format, row.format, row.type, two_texels.data());
        image2d image;
        EXPECT_TRUE(read(image));
        EXPECT_EQ(image.type, row.image_type) << row.internal_format;
        EXPECT_EQ(image.bits, row.bits) << row.internal_format;
        EXPECT_NE(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << row.internal_format;
        EXPECT_EQ(image.begin()[0], 0) << row.internal_format;
    }
}

TEST_P(GetTextureImage, SizeWithoutACodeHasItsWords) {
    make(GL_RGB10_A2, GL_RGBA, GL_FLOAT, two_texels.data());
    image2d image;
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(read(image));
    EXPECT_EQ(errors.text(), "red size is not recognized.\n");
}

TEST_P(GetTextureImage, WithoutARedChannelIsFalseAndSilent) {
    make(GL_DEPTH_COMPONENT24, GL_DEPTH_COMPONENT, GL_FLOAT, two_texels.data());
    image2d image = plain_image(9, 9, {});
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(read(image));
    EXPECT_EQ(errors.text(), "");
    EXPECT_TRUE(image.empty());
}

TEST_P(GetTextureImage, OfALevelThatIsNotThereIsFalse) {
    make(GL_RGBA32F, GL_RGBA, GL_FLOAT, two_texels.data());
    image2d image = plain_image(9, 9, {});
    EXPECT_FALSE(read(image, 3));
    EXPECT_TRUE(image.empty());
    EXPECT_EQ(image.width, 0U);
}

TEST_P(GetTextureImage, NeverWritesBehindTheImage) {
    // Half floats are stored in 8 bytes for each texel, and read as floats of 16.
    make(GL_RGBA16F, GL_RGBA, GL_FLOAT, two_texels.data());
    image2d image;
    const bool done = read(image);
    EXPECT_EQ(image.bits, 5U);
    EXPECT_EQ(image.size(), 16U);
    if (GetParam() == form_t::by_name)
        EXPECT_TRUE(done && glGetError() == GL_INVALID_OPERATION) << "GL itself keeps within the image";
    else
        EXPECT_FALSE(done);
}

std::string form_name(const testing::TestParamInfo<form_t>& form) {
    switch (form.param) {
        case form_t::bound:
            return "Bound";
        case form_t::by_name:
            return "ByName";
        default:
            return "ByNameBeforeGL45";
    }
}

INSTANTIATE_TEST_SUITE_P(Forms, GetTextureImage,
                         testing::Values(form_t::bound, form_t::by_name, form_t::by_name_before_gl_4_5),
                         form_name);

}  // namespace
}  // namespace libgr
