#include "operations/place/placement.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace {

using namespace ulk3d;

constexpr float infinity = std::numeric_limits<float>::infinity();

placement_t turned_by(const position_t& degrees) {
    placement_t placement;
    placement.turn(degrees);
    return placement;
}

std::array<std::uint32_t, 3> bits(const pos3& p) {
    return std::bit_cast<std::array<std::uint32_t, 3>>(p);
}

TEST(Placement, WhatChangesNothingKeepsEveryBit) {
    placement_t placement;
    placement.move({0, 0, 0});
    placement.move({-0.0, 0, 0});
    placement.turn({0, 360, -720});
    placement.scale(1);
    EXPECT_TRUE(placement.is_identity());
    for (const pos3& p : {pos3{-0.0F, 0, 1e-45F}, pos3{infinity, 3e38F, -0.0F}, pos3{0.1F, 0.2F, 0.3F}})
        EXPECT_EQ(bits(rounded(placement.of(p))), bits(p));
    // A move along one axis leaves the others alone.
    placement.move({1, 0, 0});
    EXPECT_EQ(bits(rounded(placement.of(pos3{1, -0.0F, infinity}))), bits({2, -0.0F, infinity}));
}

TEST(Placement, RightAnglesAreExact) {
    const pos3 p{0.1F, 2e30F, -3e-30F};
    EXPECT_EQ(rounded(turned_by({90, 0, 0}).of(p)), (pos3{p.x, -p.z, p.y}));
    EXPECT_EQ(rounded(turned_by({0, 90, 0}).of(p)), (pos3{p.z, p.y, -p.x}));
    EXPECT_EQ(rounded(turned_by({0, 0, 90}).of(p)), (pos3{-p.y, p.x, p.z}));
    EXPECT_EQ(rounded(turned_by({0, 0, -270}).of(p)), (pos3{-p.y, p.x, p.z}));
    EXPECT_EQ(rounded(turned_by({180, 0, 0}).of(p)), (pos3{p.x, -p.y, -p.z}));
    EXPECT_EQ(rounded(turned_by({0, -90, 0}).of(p)), (pos3{-p.z, p.y, p.x}));
    EXPECT_EQ(rounded(turned_by({0, 0, 36000090}).of(p)), (pos3{-p.y, p.x, p.z}));
    EXPECT_EQ(rounded(turned_by({270, 0, 0}).of(pos3{infinity, 1, 2})), (pos3{infinity, 2, -1}));
}

TEST(Placement, TurnsAboutXThenYThenZ) {
    // (0, 1, 0) goes to z about x, to x about y, and to y about z.
    EXPECT_EQ(rounded(turned_by({90, 90, 90}).of(pos3{0, 1, 0})), (pos3{0, 1, 0}));
    EXPECT_EQ(rounded(turned_by({90, 90, 0}).of(pos3{0, 1, 0})), (pos3{1, 0, 0}));
}

TEST(Placement, StepsGoInOrder) {
    placement_t placement;
    placement.move({1, 2, 3});
    placement.scale(2);
    placement.turn({0, 0, 90});
    placement.move({0, 0, -1});
    EXPECT_EQ(rounded(placement.of(pos3{1, 1, 1})), (pos3{-6, 4, 7}));
    // Directions only turn.
    EXPECT_EQ(placement.of(dir3{1, 0, 0}), (dir3{0, 1, 0}));
}

TEST(Placement, EqualsMatricesInDoublePrecision) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> number(-200, 200);
    for (int round = 0; round < 200; ++round) {
        const position_t degrees{number(random), number(random), number(random)};
        const position_t by{number(random), number(random), number(random)};
        const double factor = std::fabs(number(random)) + 0.01;
        placement_t placement;
        placement.turn(degrees);
        placement.scale(factor);
        placement.move(by);
        const auto angle = [&](std::size_t axis) { return degrees[axis] * std::numbers::pi / 180; };
        const double cx = std::cos(angle(0)), sx = std::sin(angle(0)), cy = std::cos(angle(1)),
                     sy = std::sin(angle(1)), cz = std::cos(angle(2)), sz = std::sin(angle(2));
        // Rz Ry Rx, written out.
        const double m[3][3] = {{cz * cy, cz * sy * sx - sz * cx, cz * sy * cx + sz * sx},
                                {sz * cy, sz * sy * sx + cz * cx, sz * sy * cx - cz * sx},
                                {-sy, cy * sx, cy * cx}};
        const pos3 p{static_cast<float>(number(random)), static_cast<float>(number(random)),
                     static_cast<float>(number(random))};
        const position_t placed = placement.of(p);
        const dir3 turned = placement.of(dir3{p.x, p.y, p.z});
        const float turned_parts[] = {turned.x, turned.y, turned.z};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double plain = m[axis][0] * p.x + m[axis][1] * p.y + m[axis][2] * p.z;
            EXPECT_NEAR(placed[axis], plain * factor + by[axis], 1e-9);
            EXPECT_NEAR(turned_parts[axis], plain, 3e-5);
        }
    }
}

}  // namespace
