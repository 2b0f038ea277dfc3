#include <gmock/gmock.h>

#include "gl/gltextures/textures/texture_test.h"
#include "gltextures/textures/gr_textures.h"
#include "support/forced_marks.h"

namespace libgr {
namespace {

using testing::ElementsAre;
using ulk_test::texture_parameter;

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
