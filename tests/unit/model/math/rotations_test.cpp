#include "model/math/rotations.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "model/math/angles.h"
#include "model/math/vectors.h"
#include "near.h"

namespace {

using namespace ulk3d;
using ulk_test::near_to;
using ulk_test::values;

const float half_root = std::sqrt(0.5F);

dir3 random_unit(std::mt19937& random) {
    std::normal_distribution<float> number;
    return normalize(dir3{number(random), number(random), number(random)});
}

TEST(Angles, ConvertByTheConstantsInDouble) {
    EXPECT_EQ(to_radians(180), static_cast<float>(180 * 0.017453292519943122));
    EXPECT_EQ(to_degrees(1), static_cast<float>(57.29577951308232));
    EXPECT_EQ(to_degrees(to_radians(90)), 90);
}

TEST(Rot3, IdentityIsNoTurnAboutZ) {
    EXPECT_EQ(rot3_identity, (rot3{0, {0, 0, 1}}));
}

TEST(Qua, ProductsOfUnits) {
    const qua one{1, 0, 0, 0}, i{0, 1, 0, 0}, j{0, 0, 1, 0}, k{0, 0, 0, 1}, minus_one{-1, 0, 0, 0};
    EXPECT_EQ(qua_mul(i, j), k);
    EXPECT_EQ(qua_mul(j, k), i);
    EXPECT_EQ(qua_mul(k, i), j);
    EXPECT_EQ(qua_mul(j, i), (qua{0, 0, 0, -1}));
    EXPECT_EQ(qua_mul(i, i), minus_one);
    EXPECT_EQ(qua_mul(j, j), minus_one);
    EXPECT_EQ(qua_mul(k, k), minus_one);
    EXPECT_EQ(qua_mul(one, j), j);
}

TEST(Qua, ProductByHand) {
    EXPECT_EQ(qua_mul({1, 2, 3, 4}, {5, 6, 7, 8}), (qua{-60, 12, 30, 24}));
    EXPECT_EQ(qua_mul({5, 6, 7, 8}, {1, 2, 3, 4}), (qua{-60, 20, 14, 32}));
}

TEST(Qua, ProductWithADirection) {
    EXPECT_EQ(qua_mul_dir({1, 2, 3, 4}, {6, 7, 8}), (dir3{2, 15, 4}));
    EXPECT_EQ(dir_mul_qua({6, 7, 8}, {1, 2, 3, 4}), (dir3{10, -1, 12}));
}

TEST(Qua, ToMatrixByHand) {
    EXPECT_EQ(qua_to_mtx({1, 2, 3, 4}), (mtx3w{{-20, 20, 10, 0, 4, -10, 28, 0, 22, 20, 4, 0, 0, 0, 0, 1}}));
}

TEST(Qua, MatrixIsThatOfTheRotationRecord) {
    std::mt19937 random(3);
    for (float angle = -360; angle <= 360; angle += 17) {
        const rot3 r{angle, random_unit(random)};
        EXPECT_THAT(values(qua_to_mtx(rot3_to_qua(r))), near_to(values(rot3_to_mtx(r)), 1e-6F)) << angle;
    }
}

TEST(Qua, OfARotationRecordTakesTheHalfAngle) {
    EXPECT_THAT(values(rot3_to_qua({90, {0, 1, 0}})), near_to({half_root, 0, half_root, 0}, 1e-7F));
    EXPECT_EQ(rot3_to_qua(rot3_identity), (qua{1, 0, 0, 0}));
}

TEST(Qua, ToRotationRecord) {
    EXPECT_THAT(values(qua_to_rot3({half_root, 0, -half_root, 0})), near_to({90, 0, -1, 0}, 1e-5F));
    EXPECT_EQ(qua_to_rot3({1, 0, 0, 0}), rot3_identity);
}

TEST(Qua, RoundedAboveOneIsStillARotation) {
    EXPECT_EQ(qua_to_rot3({std::nextafter(1.0F, 2.0F), 0, 0, 0}), rot3_identity);
    EXPECT_EQ(qua_to_rot3({-1.0001F, 0, 0, 0}).angle, 360);
}

TEST(Rot3, ToMatrix) {
    EXPECT_EQ(rot3_to_mtx({30, {1, 2, 3}}), rotation(30, {1, 2, 3}));
    EXPECT_EQ(rot3_to_mtx(rot3_identity), mtx_identity);
}

TEST(Rot3, OfTheIdentityMatrixHasAngleZero) {
    EXPECT_EQ(mtx_to_rot3(mtx_identity).angle, 0);
}

TEST(Rot3, OfAMatrixIsTheRotationItCameFrom) {
    std::mt19937 random(4);
    for (float angle = 5; angle < 178; angle += 6) {
        const rot3 r{angle, random_unit(random)};
        const rot3 back = mtx_to_rot3(rot3_to_mtx(r));
        EXPECT_NEAR(back.angle, r.angle, 1e-3);
        EXPECT_THAT(values(back.axis), near_to(values(r.axis), 2e-5F));
    }
}

TEST(Rot3, OfATraceThatIsNoCosineIsTheIdentity) {
    EXPECT_EQ(mtx_to_rot3(scale(2, 2, 2)), rot3_identity);
    mtx3w broken = rotation(40, {1, 0, 0});
    broken[5] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(mtx_to_rot3(broken), rot3_identity);
}

TEST(Rot3FromDirs, TurnsTheFirstIntoTheSecond) {
    EXPECT_THAT(values(rot3_from_dirs({1, 0, 0}, {0, 1, 0})), near_to({90, 0, 0, 1}, 1e-5F));
    std::mt19937 random(5);
    for (int i = 0; i < 200; ++i) {
        const dir3 a = random_unit(random);
        const dir3 b = random_unit(random);
        const pos3 turned = transform_point(as_pos(a), rot3_to_mtx(rot3_from_dirs(a, b)));
        EXPECT_THAT(values(turned), near_to(values(b), 1e-3F));
    }
}

TEST(Rot3FromDirs, OfParallelVectorsIsTheIdentity) {
    EXPECT_EQ(rot3_from_dirs({0, 1, 0}, {0, 1, 0}), rot3_identity);
}

TEST(Rot3FromDirs, OfOppositeVectorsIsTheIdentity) {
    EXPECT_EQ(rot3_from_dirs({0, 0, -1}, {0, 0, 1}), rot3_identity);
}

TEST(Rot3FromDirs, OfVectorsRoundedBeyondUnitLengthStaysFinite) {
    const float one = std::nextafter(1.0F, 2.0F);
    const rot3 r = rot3_from_dirs({1e-5F, 0, one}, {0, 0, one});
    EXPECT_EQ(r.angle, 0);
    EXPECT_EQ(r.axis, (dir3{0, -1, 0}));
}

TEST(RotationToLevel, TurnsNormalsUp) {
    std::mt19937 random(6);
    for (int i = 0; i < 200; ++i) {
        const dir3 n = random_unit(random);
        EXPECT_THAT(values(transform_point(as_pos(n), rotation_to_level(n))), near_to({0, 0, 1}, 1e-3F));
    }
}

TEST(RotationToLevel, TurnsTheNormalThatPointsDownHalfRoundAboutX) {
    const mtx3w half_round{{1, 0, 0, 0, 0, -1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1}};
    EXPECT_THAT(values(rotation_to_level({0, 0, -1})), near_to(values(half_round), 1e-6F));
    EXPECT_THAT(values(rotation_to_level({-0.0F, 0, -1})), near_to(values(half_round), 1e-6F));
}

TEST(RotationToLevel, LeavesWhatPointsUpOrNowhere) {
    EXPECT_EQ(rotation_to_level({0, 0, 1}), mtx_identity);
    EXPECT_EQ(rotation_to_level({0, 0, 0}), mtx_identity);
}

TEST(Srt3FromDirs, DividesTheCrossProductByTheDot) {
    const srt3 r = srt3_from_dirs({1, 2, 3}, {4, 0, 0});
    EXPECT_EQ(r.s, 4);
    EXPECT_EQ(r.d, (dir3{0, 3, -2}));
}

TEST(Srt3FromDirs, KeepsTheCrossProductOfPerpendicularVectors) {
    EXPECT_EQ(srt3_from_dirs({2, 0, 0}, {0, 3, 0}), (srt3{0, {0, 0, 6}}));
}

}  // namespace
