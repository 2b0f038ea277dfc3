#include <gtest/gtest.h>

#include "model/environment.h"
#include "model/texture.h"

namespace {

using namespace ulk3d;

TEST(SceneRecords, TextureDefaults) {
    const texture_t texture;
    EXPECT_EQ(texture.texture, "");
    EXPECT_EQ(texture.bumpmap, "");
    EXPECT_EQ(texture.specular, "");
    EXPECT_EQ(texture.aniso, 1.0F);
    EXPECT_EQ(texture.refractfactor, 0.0F);
    EXPECT_TRUE(texture.bumpofs);
    EXPECT_FALSE(texture.bump2mono);
    EXPECT_TRUE(texture.mipmap);
    EXPECT_TRUE(texture.nearlinear);
    EXPECT_TRUE(texture.maglinear);
    EXPECT_FALSE(texture.mercatorsphere);
    EXPECT_EQ(texture.bump_offset_u, 0.0F);
    EXPECT_EQ(texture.bump_offset_v, 0.0F);
    EXPECT_EQ(texture.color_handle, 0U);
    EXPECT_EQ(texture.bump_handle, 0U);
    EXPECT_EQ(texture.spec_handle, 0U);
}

TEST(SceneRecords, EnvironmentDefaults) {
    const environment_t environment;
    EXPECT_EQ(environment.cubetex, "");
    EXPECT_EQ(environment.cube_handle, 0U);
    EXPECT_EQ(environment.reflectalpha, 1.0F);
    EXPECT_EQ(environment.refractalpha, 0.0F);
    EXPECT_EQ(environment.refractfactor, 1.0F);
}

}  // namespace
