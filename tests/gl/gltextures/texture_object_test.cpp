#include "gltextures/gr_texture_object.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <cstring>
#include <iostream>

#include "gl/gltextures/texture_test.h"
#include "gltextures/texture_stores.h"
#include "render/offscreen/offscreen_context.h"
#include "support/captured_stream.h"
#include "support/forced_marks.h"
#include "support/gl_state.h"

namespace libgr {
namespace {

using libutils::image2d;
using testing::ElementsAre;
using ulk_test::bytes_t;
using ulk_test::captured_stream;
using ulk_test::forced_marks;
using ulk_test::gl_integer;
using ulk_test::plain_image;
using ulk_test::stored_bytes;

/// Content that notes what is asked of it.
class noting_content_t : public grTexturableImageGL {
  public:
    explicit noting_content_t(std::uint32_t target_code = 2) : code(target_code) {}
    std::uint32_t GetTarget() const override { return code; }
    void Load() override { ++loads; }
    void Reload() override { ++reloads; }
    GLenum GetInternalFormat() const override { return GL_RGBA8; }

    std::uint32_t code;
    int loads = 0;
    int reloads = 0;
};

class TextureObject : public ulk_test::texture_test {
  protected:
    void TearDown() override {
        glBindTexture(GL_TEXTURE_2D, 0);
        texture_test::TearDown();
    }
    noting_content_t content;
    grTextureObject object;
};

TEST_F(TextureObject, BeforeSetIsSilentAndDoesNothing) {
    const GLuint other = bind_fresh(GL_TEXTURE_2D);
    const forced_marks marks;
    object.Load();
    object.Reload();
    object.Unload();
    object.Release();
    object.BindImage(0, 0, GL_READ_ONLY);
    object.UnbindImage(0);
    EXPECT_FALSE(object.IsResident());
    EXPECT_FALSE(object.IsLoaded());
    EXPECT_TRUE(marks.beginning_with("").empty());
    EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_2D), static_cast<GLint>(other));
}

TEST_F(TextureObject, SetMakesTheNameBindsItAndLoadsTheContent) {
    object.Set(&content);
    EXPECT_TRUE(object.IsLoaded());
    EXPECT_EQ(object.GetTarget(), 2U);
    EXPECT_EQ(content.loads, 1);
    EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_2D), static_cast<GLint>(object.texture_id()));
    EXPECT_TRUE(glIsTexture(object.texture_id()));
}

TEST_F(TextureObject, SetAgainKeepsTheName) {
    object.Set(&content);
    const GLuint id = object.texture_id();
    object.Set(&content);
    EXPECT_EQ(object.texture_id(), id);
    EXPECT_EQ(content.loads, 2);
}

TEST_F(TextureObject, LoadBinds) {
    object.Set(&content);
    glBindTexture(GL_TEXTURE_2D, 0);
    object.Load();
    EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_2D), static_cast<GLint>(object.texture_id()));
    EXPECT_EQ(content.loads, 1) << "a draw uploads nothing";
}

TEST_F(TextureObject, LoadHasItsMarks) {
    object.Set(&content);
    const forced_marks marks;
    object.Load();
    EXPECT_THAT(marks.beginning_with(""),
                ElementsAre("grTextureObject::Load(0)", "grTextureObject::Load(2)"));
}

TEST_F(TextureObject, BeforeGL30LoadEnablesTheTarget) {
    object.Set(&content);
    ulk_test::gl_flags_t flags;
    flags.without_gl_3_0();
    {
        const forced_marks marks;
        object.Load();
        EXPECT_THAT(
            marks.beginning_with(""),
            ElementsAre("grTextureObject::Load(0)", "grTextureObject::Load(1)", "grTextureObject::Load(2)"));
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_ENUM)) << "a core context enables no targets";
}

TEST_F(TextureObject, UnloadBindsNothing) {
    object.Set(&content);
    object.Unload();
    EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_2D), 0);
}

TEST_F(TextureObject, ReloadBindsAndReloadsTheContent) {
    object.Set(&content);
    glBindTexture(GL_TEXTURE_2D, 0);
    object.Reload();
    EXPECT_EQ(content.reloads, 1);
    EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_2D), static_cast<GLint>(object.texture_id()));
}

TEST_F(TextureObject, IsResidentOnceItIsSet) {
    object.Set(&content);
    EXPECT_TRUE(object.IsResident());
}

TEST_F(TextureObject, ReleaseDeletesTheNameAndForgetsTheTarget) {
    object.Set(&content);
    const GLuint id = object.texture_id();
    object.Release();
    EXPECT_FALSE(glIsTexture(id));
    EXPECT_FALSE(object.IsLoaded());
    EXPECT_EQ(object.GetTarget(), 0U);
    EXPECT_EQ(object.texture_id(), 0U);
}

TEST_F(TextureObject, CopiesShareTheNameAndTheLastDeletesIt) {
    GLuint id = 0;
    {
        grTextureObject copy;
        {
            grTextureObject first;
            first.Set(&content);
            id = first.texture_id();
            copy = first;
        }
        EXPECT_TRUE(glIsTexture(id));
        EXPECT_EQ(copy.texture_id(), id);
    }
    EXPECT_FALSE(glIsTexture(id));
}

TEST_F(TextureObject, DestructionWithoutAContextDoesNothing) {
    {
        grTextureObject gone;
        gone.Set(&content);
        ulk3d::offscreen_context_t::make_none_current();
    }
    EXPECT_TRUE(ulk_test::make_gl_context_current());
}

TEST_F(TextureObject, OfEveryTargetBindsIt) {
    struct row_t {
        std::uint32_t code;
        GLenum binding;
    };
    constexpr row_t rows[] = {{1, GL_TEXTURE_BINDING_1D},
                              {2, GL_TEXTURE_BINDING_2D},
                              {3, GL_TEXTURE_BINDING_3D},
                              {6, GL_TEXTURE_BINDING_CUBE_MAP}};
    for (const row_t& row : rows) {
        noting_content_t of_kind(row.code);
        grTextureObject texture;
        texture.Set(&of_kind);
        EXPECT_EQ(gl_integer(row.binding), static_cast<GLint>(texture.texture_id()));
        EXPECT_EQ(texture.GetTarget(), row.code);
        texture.Unload();
        EXPECT_EQ(gl_integer(row.binding), 0);
    }
}

TEST_F(TextureObject, OfARectangleBinds2D) {
    grTextureRectangle rectangle;
    rectangle.set_image(plain_image(1, 1, {1, 2, 3, 4}), 0);
    object.Set(&rectangle);
    EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_2D), static_cast<GLint>(object.texture_id()));
    EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_RECTANGLE), 0);
    EXPECT_EQ(stored_bytes(GL_TEXTURE_RECTANGLE), (bytes_t{1, 2, 3, 4})) << "of the texture without a name";
}

TEST_F(TextureObject, GivesItsLevelToAnImageUnit) {
    if (glBindImageTexture == nullptr)
        GTEST_SKIP() << "no image units";
    grTexture2D picture;
    picture.set_level(plain_image(1, 1, {}), 0, 0);
    object.Set(&picture);
    object.BindImage(1, 0, GL_READ_WRITE);
    GLint value = 0;
    glGetIntegeri_v(GL_IMAGE_BINDING_NAME, 1, &value);
    EXPECT_EQ(value, static_cast<GLint>(object.texture_id()));
    glGetIntegeri_v(GL_IMAGE_BINDING_FORMAT, 1, &value);
    EXPECT_EQ(value, GL_RGBA8);
    glGetIntegeri_v(GL_IMAGE_BINDING_ACCESS, 1, &value);
    EXPECT_EQ(value, GL_READ_WRITE);
    object.UnbindImage(1);
    glGetIntegeri_v(GL_IMAGE_BINDING_NAME, 1, &value);
    EXPECT_EQ(value, 0);
    glGetIntegeri_v(GL_IMAGE_BINDING_FORMAT, 1, &value);
    EXPECT_EQ(value, GL_R8);
}

TEST_F(TextureObject, WhereThereAreNoImageUnitsDoesNothing) {
    const auto original = __glewBindImageTexture;
    __glewBindImageTexture = nullptr;
    object.Set(&content);
    object.BindImage(0, 0, GL_READ_ONLY);
    object.UnbindImage(0);
    __glewBindImageTexture = original;
}

// --- reading back -----------------------------------------------------------------------------------------

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

    noting_content_t content;
    grTextureObject object;
};

constexpr std::array<float, 8> two_texels{0.5F, -2, 3, 4, 5, 6, 7.25F, 8};

TEST_P(GetTextureImage, ReadsFloats) {
    make(GL_RGBA32F, GL_RGBA, GL_FLOAT, two_texels.data());
    image2d image = plain_image(9, 9, {});
    ASSERT_TRUE(read(image));
    EXPECT_EQ(image.width, 2U);
    EXPECT_EQ(image.height, 1U);
    EXPECT_EQ(image.format, 9U);
    EXPECT_EQ(image.type, 2U);
    EXPECT_EQ(image.bits, 7U);
    EXPECT_FALSE(image.compressed);
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

TEST_F(TextureObject, WithoutANameGivesNoImage) {
    image2d image = plain_image(2, 2, {});
    EXPECT_FALSE(object.GetTextureImage(0, image));
    EXPECT_TRUE(image.empty());
}

// --- the stores -------------------------------------------------------------------------------------------

class TextureStores : public ulk_test::texture_test {
  protected:
    void TearDown() override {
        clear_texture_stores();
        glBindTexture(GL_TEXTURE_2D, 0);
        glBindTexture(GL_TEXTURE_CUBE_MAP, 0);
        texture_test::TearDown();
    }

    /// Puts a picture of one pixel into the store; its entry.
    static texture_entry_t& add_picture(const std::string& name) {
        texture_entry_t& entry = *model_textures.get(model_textures.insert(name, {}));
        entry.image = plain_image(1, 1, {1, 2, 3, 4});
        entry.content.set_level(entry.image, 0, 0);
        entry.object.Set(&entry.content);
        return entry;
    }

    static cube_entry_t& add_cube(const std::string& name) {
        cube_entry_t& entry = *cube_textures.get(cube_textures.insert(name, {}));
        entry.images.fill(plain_image(1, 1, {1, 2, 3, 4}));
        entry.content.set_level(entry.images, 0, 0);
        entry.object.Set(&entry.content);
        return entry;
    }
};

TEST_F(TextureStores, EntriesStayUsableWhenOthersCome) {
    texture_entry_t& first = add_picture("first");
    for (int i = 0; i < 100; ++i)
        add_picture(std::to_string(i));
    first.object.Load();
    first.object.Reload();
    EXPECT_EQ(stored_bytes(GL_TEXTURE_2D), (bytes_t{1, 2, 3, 4}));
}

TEST_F(TextureStores, ClearDeletesTheNames) {
    const GLuint picture = add_picture("picture").object.texture_id();
    const GLuint cube = add_cube("cube").object.texture_id();
    clear_texture_stores();
    EXPECT_FALSE(glIsTexture(picture));
    EXPECT_FALSE(glIsTexture(cube));
    EXPECT_EQ(model_textures.find("picture"), 0U);
    EXPECT_EQ(cube_textures.find("cube"), 0U);
}

TEST_F(TextureStores, ClearWithoutAContextLetsGoOfTheNames) {
    add_picture("picture");
    add_cube("cube");
    ulk3d::offscreen_context_t::make_none_current();
    clear_texture_stores();
    ASSERT_TRUE(ulk_test::make_gl_context_current());
    EXPECT_EQ(model_textures.find("picture"), 0U);
}

class TextureStoresDeathTest : public TextureStores {
  protected:
    void SetUp() override {
        testing::FLAGS_gtest_death_test_style = "threadsafe";
        TextureStores::SetUp();
    }
};

/// Registered before the hook, so it runs after it.
void tell_what_is_left() {
    std::cerr << "left: " << model_textures.slots.size() + cube_textures.slots.size() << std::endl;
}

TEST_F(TextureStoresDeathTest, AreEmptiedAtExitWithAContext) {
    EXPECT_EXIT(
        {
            std::atexit(tell_what_is_left);
            clear_texture_stores_at_exit();
            add_picture("picture");
            add_cube("cube");
            std::exit(0);
        },
        testing::ExitedWithCode(0), "left: 0");
}

TEST_F(TextureStoresDeathTest, AreEmptiedAtExitWithoutAContext) {
    EXPECT_EXIT(
        {
            std::atexit(tell_what_is_left);
            clear_texture_stores_at_exit();
            clear_texture_stores_at_exit();
            add_picture("picture");
            add_cube("cube");
            ulk3d::offscreen_context_t::make_none_current();
            std::exit(0);
        },
        testing::ExitedWithCode(0), "left: 0");
}

}  // namespace
}  // namespace libgr
