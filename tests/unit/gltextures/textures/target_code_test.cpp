#include <gtest/gtest.h>

#include "gltextures/textures/gr_target.h"
#include "gltextures/textures/gr_texture_object.h"
#include "gltextures/textures/gr_textures.h"

namespace libgr {
namespace {

struct target_case_t {
    std::uint32_t code;
    GLenum target;
};

constexpr target_case_t targets[] = {
    {0, 1281}, {1, GL_TEXTURE_1D},       {2, GL_TEXTURE_2D}, {3, GL_TEXTURE_3D}, {4, 1281},
    {5, 1281}, {6, GL_TEXTURE_CUBE_MAP}, {7, 1281},          {0xFFFFFFFF, 1281},
};

TEST(TargetCode, GivesTheTargetOrTheMarkForNone) {
    for (const target_case_t& row : targets)
        EXPECT_EQ(target_of_code(row.code), row.target) << "code " << row.code;
}

TEST(TargetCode, OfATargetIsTheInverse) {
    for (const target_case_t& row : targets)
        EXPECT_EQ(code_of_target(row.target), row.target == 1281 ? 0 : row.code) << "target " << row.target;
    EXPECT_EQ(code_of_target(GL_TEXTURE_RECTANGLE), 0U);
    EXPECT_EQ(code_of_target(0), 0U);
}

TEST(TargetCode, OfEachClassIsConstant) {
    EXPECT_EQ(grTexture1D().GetTarget(), 1U);
    EXPECT_EQ(grTexture2D().GetTarget(), 2U);
    EXPECT_EQ(grTexture3D().GetTarget(), 3U);
    EXPECT_EQ(grTextureCubeMap().GetTarget(), 6U);
    EXPECT_EQ(grTextureRectangle().GetTarget(), 2U) << "though it uploads to another target";
}

TEST(TargetCode, OfAFreshObjectIsZero) {
    EXPECT_EQ(grTextureObject().GetTarget(), 0U);
}

}  // namespace
}  // namespace libgr
