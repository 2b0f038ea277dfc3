#include <gtest/gtest.h>

#include "model/math/matrices.h"
#include "render/models/glnurbs.h"

namespace ulk3d {
namespace {

TEST(PickPlanes, StandInMemorySideBySide) {
    // The centre is 30 right of and 10 below the middle of the viewport.
    const mtx3w planes =
        pick_planes({.x = 130, .y = 40, .width = 4, .height = 10, .view_width = 200, .view_height = 100});
    EXPECT_EQ(planes, (mtx3w{{1, 0, 0, -0.28F,  //
                              -1, 0, 0, 0.32F,  //
                              0, 1, 0, 0.3F,    //
                              0, -1, 0, -0.1F}}));
}

TEST(PickPlanes, ASideOfOddPixelsReachesHalfAPixelFurther) {
    const mtx3w planes =
        pick_planes({.x = 4, .y = 4, .width = 3, .height = 5, .view_width = 8, .view_height = 8});
    EXPECT_EQ(planes, (mtx3w{{1, 0, 0, 0.375F,   //
                              -1, 0, 0, 0.375F,  //
                              0, 1, 0, 0.625F,   //
                              0, -1, 0, 0.625F}}));
}

TEST(PickPlanes, ProductsWithAClipPositionAreItsDistancesToTheFourSides) {
    const mtx3w planes =
        pick_planes({.x = 12, .y = 6, .width = 4, .height = 4, .view_width = 16, .view_height = 16});
    // In the plane of W = 2 the rectangle reaches from 0.5 to 1.5 in X and from -1 to 0 in Y.
    const vec3w clip{0.75F, -0.25F, 5, 2};
    const vec3w distances = mtx_times_vec(planes, clip);
    EXPECT_EQ(distances, (vec3w{0.25F, 0.75F, 0.75F, 0.25F}));
}

}  // namespace
}  // namespace ulk3d
