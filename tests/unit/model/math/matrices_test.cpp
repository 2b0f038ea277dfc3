#include "model/math/matrices.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <utility>

#include "near.h"

namespace {

using namespace ulk3d;
using ulk_test::near_to;
using ulk_test::values;

const mtx3w counting{{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}};
const mtx3w regular{{2, 0, 1, 0, 1, 3, 0, 1, 0, 1, 1, 0, 5, 6, 7, 1}};

mtx3w random_matrix(std::mt19937& random) {
    std::uniform_real_distribution<float> number(-1, 1);
    mtx3w m;
    for (float& e : m.m)
        e = number(random);
    for (std::size_t i = 0; i < 16; i += 5)
        m[i] += 3;  // well away from singular
    return m;
}

TEST(Matrix, Identity) {
    EXPECT_EQ(mtx_identity, (mtx3w{{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}}));
}

TEST(Matrix, RowVectorTimesMatrix) {
    EXPECT_EQ(vec_times_mtx({1, 2, 3, 4}, counting), (vec3w{90, 100, 110, 120}));
}

TEST(Matrix, MatrixTimesColumnVector) {
    EXPECT_EQ(mtx_times_vec(counting, {1, 2, 3, 4}), (vec3w{30, 70, 110, 150}));
}

TEST(Matrix, TransformPointAddsTheTranslationInElements12To14) {
    const mtx3w m{{1, 0, 0, 0, 0, 2, 0, 0, 0, 0, 3, 0, 10, 20, 30, 1}};
    EXPECT_EQ(transform_point({1, 1, 1}, m), (pos3{11, 22, 33}));
}

TEST(Matrix, Transpose) {
    EXPECT_EQ(transpose(counting), (mtx3w{{1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15, 4, 8, 12, 16}}));
}

TEST(Matrix, Determinant) {
    EXPECT_EQ(determinant(mtx_identity), 1);
    EXPECT_EQ(determinant(scale(2, 3, 4)), 24);
    EXPECT_EQ(determinant(counting), 0);
    // By hand, along the first row: 2 * det(3,0,1; 1,1,0; 6,7,1) + 1 * det(1,3,1; 0,1,0; 5,6,1).
    EXPECT_EQ(determinant(regular), 2 * (3 * 1 + 1 * (7 - 6)) + 1 * (1 - 5));
}

TEST(Matrix, DeterminantTurnsItsSignWithTwoRows) {
    mtx3w swapped = regular;
    for (std::size_t j = 0; j < 4; ++j)
        std::swap(swapped[j], swapped[8 + j]);
    EXPECT_EQ(determinant(swapped), -determinant(regular));
}

TEST(Matrix, InverseByHand) {
    EXPECT_EQ(inverse(translation({1, 2, 3})), translation({-1, -2, -3}));
    EXPECT_EQ(inverse(scale(2, 4, 8)), scale(0.5F, 0.25F, 0.125F));
}

TEST(Matrix, InverseUndoesFromBothSides) {
    std::mt19937 random(1);
    for (int i = 0; i < 200; ++i) {
        const mtx3w m = random_matrix(random);
        EXPECT_THAT(values(m * inverse(m)), near_to(values(mtx_identity), 1e-5F));
        EXPECT_THAT(values(inverse(m) * m), near_to(values(mtx_identity), 1e-5F));
    }
}

TEST(Matrix, InverseOfASingularMatrixIsNotFinite) {
    for (const float e : inverse(scale(1, 1, 0)).m)
        EXPECT_FALSE(std::isfinite(e));
}

TEST(Matrix, ProductIsRowsOfTheLeftTimesTheRight) {
    EXPECT_EQ(counting * regular,
              (mtx3w{{24, 33, 32, 6, 56, 73, 68, 14, 88, 113, 104, 22, 120, 153, 140, 30}}));
}

TEST(Matrix, ProductDoesTheLeftFirst) {
    const mtx3w m = scale(2, 2, 2) * translation({1, 0, 0});
    EXPECT_EQ(transform_point({1, 1, 1}, m), (pos3{3, 2, 2}));
}

TEST(Matrix, VectorThroughAProductIsThroughBothInTurn) {
    std::mt19937 random(2);
    for (int i = 0; i < 200; ++i) {
        const mtx3w a = random_matrix(random);
        const mtx3w b = random_matrix(random);
        const vec3w v{0.5F, -1, 2, 1};
        EXPECT_THAT(values(vec_times_mtx(v, a * b)),
                    near_to(values(vec_times_mtx(vec_times_mtx(v, a), b)), 1e-4F));
        EXPECT_THAT(values(transpose(a * b)), near_to(values(transpose(b) * transpose(a)), 1e-5F));
    }
}

TEST(Matrix, TranslationAndScale) {
    EXPECT_EQ(translation({1, 2, 3}), (mtx3w{{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}}));
    EXPECT_EQ(scale(2, 3, 4), (mtx3w{{2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 0, 0, 0, 1}}));
}

struct turn_t {
    float degrees;
    dir3 axis;
    pos3 from, to;
};

class Rotation : public testing::TestWithParam<turn_t> {};

TEST_P(Rotation, TurnsCounterClockwiseAboutTheAxis) {
    const turn_t& turn = GetParam();
    EXPECT_THAT(values(transform_point(turn.from, rotation(turn.degrees, turn.axis))),
                near_to(values(turn.to)));
}

INSTANTIATE_TEST_SUITE_P(Table, Rotation,
                         testing::Values(turn_t{90, {0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
                                         turn_t{90, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                                         turn_t{90, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}},
                                         turn_t{-90, {0, 0, 1}, {1, 0, 0}, {0, -1, 0}},
                                         turn_t{180, {1, 0, 0}, {0, 0, -1}, {0, 0, 1}},
                                         turn_t{90, {0, 0, 20}, {1, 0, 0}, {0, 1, 0}},
                                         turn_t{120, {1, 1, 1}, {1, 2, 3}, {3, 1, 2}},
                                         turn_t{77, {0, 0, 1}, {0, 0, 4}, {0, 0, 4}}));

TEST(RotationMatrix, FollowsTheFormulaInDoublePrecision) {
    const double pi = std::acos(-1.0);
    const double c = std::cos(50 * pi / 180), s = std::sin(50 * pi / 180);
    const double u[3] = {1 / 3.0, -2 / 3.0, 2 / 3.0};
    const double skew[3][3] = {{0, u[2], -u[1]}, {-u[2], 0, u[0]}, {u[1], -u[0], 0}};
    mtx3w expected = mtx_identity;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            expected[4 * i + j] =
                static_cast<float>(u[i] * u[j] + c * ((i == j ? 1 : 0) - u[i] * u[j]) + s * skew[i][j]);
    EXPECT_THAT(values(rotation(50, {1, -2, 2})), near_to(values(expected), 3e-7F));
}

TEST(RotationMatrix, WithoutAxisAndAngleIsTheIdentity) {
    EXPECT_EQ(rotation(0, {0, 0, 0}), mtx_identity);
}

}  // namespace
