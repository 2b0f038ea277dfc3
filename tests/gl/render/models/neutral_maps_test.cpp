#include "render/models/neutral_maps.h"

#include <GL/glew.h>

#include "render/offscreen/offscreen_context.h"
#include "support/gl_context.h"
#include "support/gl_state.h"

namespace ulk3d {
namespace {

using ulk_test::gl_integer;

struct NeutralMaps : ulk_test::gl_test {};

struct neutral_row_t {
    map_unit_t unit;
    GLint internal_format;
    std::array<float, 4> texel;
};

TEST_F(NeutralMaps, AreWhiteFlatAndFullyShiny) {
    const neutral_row_t rows[] = {
        {map_unit_t::color, GL_RGBA8, {1, 1, 1, 1}},
        {map_unit_t::bump, GL_RGB8_SNORM, {0, 0, 1, 1}},
        {map_unit_t::specular, GL_RGBA8, {1, 1, 1, 1}},
    };
    neutral_maps_t maps;
    maps.init();
    for (const neutral_row_t& row : rows) {
        ASSERT_TRUE(maps.bind(row.unit));
        GLint format = 0;
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_INTERNAL_FORMAT, &format);
        EXPECT_EQ(format, row.internal_format);
        std::array<float, 4> texel{};
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_FLOAT, texel.data());
        EXPECT_EQ(texel, row.texel);
        neutral_maps_t::unbind();
    }
}

TEST_F(NeutralMaps, BindFillsAnEmptyUnitOnly) {
    neutral_maps_t maps;
    maps.init();
    EXPECT_TRUE(maps.bind(map_unit_t::color));
    EXPECT_NE(gl_integer(GL_TEXTURE_BINDING_2D), 0);

    const GLint bound = gl_integer(GL_TEXTURE_BINDING_2D);
    EXPECT_FALSE(maps.bind(map_unit_t::specular));
    EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_2D), bound);
    neutral_maps_t::unbind();
    EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_2D), 0);
}

TEST_F(NeutralMaps, InitLeavesNothingBound) {
    neutral_maps_t maps;
    maps.init();
    EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_2D), 0);
}

TEST_F(NeutralMaps, DestructionReleasesTheNames) {
    GLuint id = 0;
    {
        neutral_maps_t maps;
        maps.init();
        ASSERT_TRUE(maps.bind(map_unit_t::bump));
        id = static_cast<GLuint>(gl_integer(GL_TEXTURE_BINDING_2D));
        neutral_maps_t::unbind();
        EXPECT_TRUE(glIsTexture(id));
    }
    EXPECT_FALSE(glIsTexture(id));
}

TEST_F(NeutralMaps, DestructionWithoutAContextDoesNothing) {
    {
        neutral_maps_t maps;
        maps.init();
        offscreen_context_t::make_none_current();
    }
    EXPECT_TRUE(ulk_test::make_gl_context_current());
}

}  // namespace
}  // namespace ulk3d
