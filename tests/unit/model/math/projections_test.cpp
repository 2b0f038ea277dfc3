#include "model/math/projections.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>

#include "model/math/matrices.h"
#include "model/math/vectors.h"
#include "near.h"

namespace {

using namespace ulk3d;
using ulk_test::near_to;
using ulk_test::values;

const projection skewed{-1, 3, -2, 4, 2, 10};

TEST(Lens, Defaults) {
    const lens_t lens = lens_default();
    EXPECT_EQ(std::bit_cast<std::uint64_t>(lens.fov), 0x3ff921fb54442cd2U);
    EXPECT_EQ(lens.aspect, 4.0 / 3.0);
    EXPECT_EQ(lens.near, 0.1);
    EXPECT_EQ(lens.far, 1000.1);
    EXPECT_EQ(lens, lens_t{});
}

TEST(Lens, AspectIsARealQuotient) {
    lens_t lens;
    lens_set_aspect(lens, 3, 2);
    EXPECT_EQ(lens.aspect, 1.5);
}

TEST(Lens, FocalLengthOfHalfTheDiagonalSeesARightAngle) {
    lens_t lens;
    lens_focal_to_fov(lens, 21.633307652783937);
    EXPECT_DOUBLE_EQ(lens.fov, std::acos(0.0));
    lens_focal_to_fov(lens, 50);
    EXPECT_DOUBLE_EQ(lens.fov, 2 * std::atan(21.633307652783937 / 50));
}

TEST(Lens, FocalOfFieldOfViewMultiplies) {
    lens_t lens;
    lens.fov = 2 * std::atan(2.0);
    EXPECT_NEAR(lens_fov_to_focal(lens), 2 * 21.633307652783937, 1e-12);
}

TEST(Lens, FarExtentHasTheFieldOfViewAsItsDiagonal) {
    const lens_t lens{2 * std::atan(0.5), 4.0 / 3.0, 1, 100};
    const projection p = lens_to_projection_far(lens);
    // Half the diagonal is 50, split 3 : 4 : 5.
    EXPECT_NEAR(p.right, 40, 1e-12);
    EXPECT_NEAR(p.top, 30, 1e-12);
    EXPECT_EQ(p.left, -p.right);
    EXPECT_EQ(p.bottom, -p.top);
    EXPECT_EQ(p.near, 1);
    EXPECT_EQ(p.far, 100);
}

TEST(Lens, NearExtentIsTheFarOneDrawnIn) {
    const lens_t lens{2 * std::atan(0.5), 4.0 / 3.0, 2, 100};
    const projection p = lens_to_projection_near(lens);
    EXPECT_NEAR(p.right, 0.8, 1e-12);
    EXPECT_NEAR(p.top, 0.6, 1e-12);
    EXPECT_EQ(p.left, -p.right);
    EXPECT_EQ(p.bottom, -p.top);
    EXPECT_EQ(p.near, 2);
    EXPECT_EQ(p.far, 100);
}

TEST(Ortho, BoxIsTwoHighAndAsWideAsTheAspect) {
    ortho_t camera{1, -10, 1000};
    ortho_set_aspect(camera, 3, 2);
    EXPECT_EQ(ortho_to_projection(camera), (projection{-1.5, 1.5, -1, 1, -10, 1000}));
}

TEST(Frustum, MatrixByHand) {
    EXPECT_THAT(values(frustum_matrix(skewed)),
                near_to({1, 0, 0, 0, 0, 2 / 3.0F, 0, 0, 0.5F, 1 / 3.0F, -1.5F, -1, 0, 0, -5, 0}, 1e-7F));
}

TEST(Frustum, InverseByHand) {
    EXPECT_THAT(values(frustum_inverse(skewed)),
                near_to({1, 0, 0, 0, 0, 1.5F, 0, 0, 0, 0, 0, -0.2F, 0.5F, 0.5F, -1, 0.3F}, 1e-7F));
}

TEST(Frustum, InverseUndoes) {
    EXPECT_THAT(values(frustum_matrix(skewed) * frustum_inverse(skewed)),
                near_to(values(mtx_identity), 1e-6F));
    EXPECT_THAT(values(inverse(frustum_matrix(skewed))), near_to(values(frustum_inverse(skewed)), 1e-6F));
}

TEST(Frustum, CornersGoToTheCornersOfTheCube) {
    const mtx3w m = frustum_matrix(skewed);
    EXPECT_THAT(values(dehomogenize(vec_times_mtx({-1, -2, -2, 1}, m))), near_to({-1, -1, -1}));
    EXPECT_THAT(values(dehomogenize(vec_times_mtx({15, 20, -10, 1}, m))), near_to({1, 1, 1}));
}

TEST(Ortho, MatrixByHand) {
    EXPECT_THAT(
        values(ortho_matrix(skewed)),
        near_to({0.5F, 0, 0, 0, 0, 1 / 3.0F, 0, 0, 0, 0, -0.25F, 0, -0.5F, -1 / 3.0F, -1.5F, 1}, 1e-7F));
}

TEST(Ortho, InverseByHand) {
    EXPECT_EQ(ortho_inverse(skewed), (mtx3w{{2, 0, 0, 0, 0, 3, 0, 0, 0, 0, -4, 0, 1, 1, -6, 1}}));
}

TEST(Ortho, InverseUndoes) {
    EXPECT_THAT(values(ortho_matrix(skewed) * ortho_inverse(skewed)), near_to(values(mtx_identity), 1e-6F));
}

TEST(Ortho, CornersGoToTheCornersOfTheCube) {
    const mtx3w m = ortho_matrix(skewed);
    EXPECT_THAT(values(transform_point({-1, -2, -2}, m)), near_to({-1, -1, -1}));
    EXPECT_THAT(values(transform_point({3, 4, -10}, m)), near_to({1, 1, 1}));
}

TEST(Frustum, IsComputedInDouble) {
    const projection p{-1, 1, -1, 1, 0.1, 0.3};
    ASSERT_NE(-(0.3F + 0.1F) / (0.3F - 0.1F), -2.0F);
    EXPECT_EQ(frustum_matrix(p)[10], -2);
    EXPECT_EQ(ortho_matrix(p)[14], -2);
    EXPECT_EQ(ortho_inverse(p)[10], -0.1F);
    EXPECT_EQ(frustum_inverse(p)[11], static_cast<float>(-1 / 0.3));
}

}  // namespace
