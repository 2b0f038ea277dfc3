#include "operations/cut/unit_space.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/cut_meshes.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

TEST(UnitSpace, MovesTheMiddleToTheOriginAndScalesByAPowerOfTwo) {
    const unit_space_t space({{100, 10, -3}, {106, 11, -1}});
    EXPECT_EQ(space.to_unit({103, 10.5F, -2}), (pos3{0, 0, 0}));
    EXPECT_EQ(space.to_unit({106, 10, -1}), (pos3{0.375F, -0.0625F, 0.125F}));
    EXPECT_EQ(space.from_unit({0.375F, -0.0625F, 0.125F}), (pos3{106, 10, -1}));
}

TEST(UnitSpace, LongestSideIsAboveOneHalfAndAtMostOne) {
    for (const float side : {1e-30F, 1e-3F, 0.75F, 1.0F, 1.5F, 1e4F, 3e38F}) {
        const unit_space_t space({{0, 0, 0}, {0, side, side / 2}});
        const float unit_side = space.to_unit({0, side, 0}).y - space.to_unit({0, 0, 0}).y;
        EXPECT_GE(unit_side, 0.5F) << side;
        EXPECT_LE(unit_side, 1.0F) << side;
    }
}

TEST(UnitSpace, PointAloneKeepsItsSize) {
    const unit_space_t space({{5, 6, 7}, {5, 6, 7}});
    EXPECT_EQ(space.to_unit({6, 6, 7}), (pos3{1, 0, 0}));
}

TEST(UnitSpace, RoomIsInUnits) {
    const unit_space_t space({{0, 0, 0}, {3, 1, 1}});
    EXPECT_EQ(space.widened({{1, 1, 1}, {2, 2, 2}}, 0.25), (box3{{0, 0, 0}, {3, 3, 3}}));
}

TEST(BoxOfMesh, HasOnlyFiniteVerticesOfTheStrips) {
    strip_mesh_t mesh = mesh_of({{0, 0, 0}, {1, 2, 3}, {-1, 5, 1}, {99, 99, 99}}, {{0, 1, 2}});
    EXPECT_EQ(box_of(mesh), (box3{{-1, 0, 0}, {1, 5, 3}}));
    mesh.vertices[2].position.x = std::numeric_limits<float>::infinity();
    EXPECT_EQ(box_of(mesh), (box3{{0, 0, 0}, {1, 2, 3}}));
    mesh.elements = {restart_mark};
    EXPECT_EQ(box_of(mesh), std::nullopt);
}

}  // namespace
