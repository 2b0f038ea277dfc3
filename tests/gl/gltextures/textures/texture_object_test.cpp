#include <gmock/gmock.h>

#include "gl/gltextures/textures/texture_test.h"
#include "gltextures/textures/gr_texture_object.h"
#include "gltextures/textures/gr_textures.h"
#include "render/offscreen/offscreen_context.h"
#include "support/forced_marks.h"
#include "support/gl_state.h"

namespace libgr {
namespace {

using libutils::image2d;
using testing::ElementsAre;
using ulk_test::bytes_t;
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

TEST_F(TextureObject, WithoutANameGivesNoImage) {
    image2d image = plain_image(2, 2, {});
    EXPECT_FALSE(object.GetTextureImage(0, image));
    EXPECT_TRUE(image.empty());
}

}  // namespace
}  // namespace libgr
