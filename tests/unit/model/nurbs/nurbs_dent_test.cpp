#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <vector>

#include "model/math/vectors.h"
#include "model/nurbs/nurbs.h"

namespace {

using ulk3d::bell;
using ulk3d::dir3;
using ulk3d::nurbs_t;
using ulk3d::pos3;

constexpr dir3 delta{1, -2, 0.375F};

struct flat_net {
    flat_net(std::uint64_t columns, std::uint64_t rows) : nurbs(nullptr, nullptr) {
        EXPECT_TRUE(nurbs.allocate(columns, 2, rows, 2));
        for (std::uint64_t r = 0; r < rows; ++r) {
            for (std::uint64_t c = 0; c < columns; ++c)
                nurbs.points.row(r)[c].position = {static_cast<float>(c), static_cast<float>(r), 1};
        }
    }
    pos3 at(std::uint64_t row, std::uint64_t column) const { return nurbs.points.row(row)[column].position; }
    /// How far a point has moved along x, of 1.
    float moved(std::uint64_t row, std::uint64_t column) const {
        return at(row, column).x - static_cast<float>(column);
    }
    nurbs_t nurbs;
};

/// Every point of the dented net, one formula after the other.
std::vector<pos3> dented_points(std::uint64_t n, std::uint64_t m, std::uint64_t c, std::uint64_t r) {
    std::vector<pos3> result;
    const auto f = [](std::uint64_t value) { return static_cast<float>(value); };
    for (std::uint64_t i = 0; i < m; ++i) {
        for (std::uint64_t j = 0; j < n; ++j) {
            float X = 1;
            if (j < c)
                X = bell((f(c) - f(j)) / f(c) - 1);
            if (j > c)
                X = bell((f(j) - f(c)) / (f(n) - f(c)) - 1);
            const pos3 before{f(j), f(i), 1};
            dir3 step;
            if (i < r) {
                const float Y = std::cos(((f(r) - f(i)) / f(r)) * 3.1415927F * 0.5F);
                step = {-delta.x * X * Y * 0.25F, -delta.y * X * Y * 0.25F, -delta.z * X * Y * 0.25F};
            } else if (i > r) {
                const float Y = bell((f(m) - f(i)) / (f(m) - f(r)) - 1);
                step = {-delta.x * X * Y * 0.25F, -delta.y * X * Y * 0.25F, -delta.z * X * Y * 0.25F};
            } else if (j != c) {
                step = {-delta.x * X * 0.25F, -delta.y * X * 0.25F, -delta.z * X * 0.25F};
            } else {
                step = delta;
            }
            result.push_back({before.x + step.x, before.y + step.y, before.z + step.z});
        }
    }
    return result;
}

TEST(NurbsDent, MovesEveryPointByItsFormula) {
    for (const auto& [n, m] : {std::pair{7U, 6U}, {1U, 1U}, {2U, 5U}, {5U, 1U}, {1U, 4U}}) {
        for (std::uint64_t r = 0; r < m; ++r) {
            for (std::uint64_t c = 0; c < n; ++c) {
                flat_net net(n, m);
                net.nurbs.dent(c, r, delta);
                const std::vector<pos3> expected = dented_points(n, m, c, r);
                for (std::uint64_t place = 0; place < expected.size(); ++place)
                    EXPECT_EQ(net.at(place / n, place % n), expected[place])
                        << n << "x" << m << " at " << c << ", " << r << ": point " << place;
            }
        }
    }
}

TEST(NurbsDent, PointMovesByDeltaAndItsRowAgainstIt) {
    flat_net net(9, 9);
    net.nurbs.dent(4, 4, {1, 0, 0});
    EXPECT_FLOAT_EQ(net.moved(4, 4), 1);
    // bell(-0.75) is 0.853553, bell(-0.8) is 0.904508.
    EXPECT_NEAR(net.moved(4, 3), -0.25F * 0.853553F, 1e-6F);
    EXPECT_NEAR(net.moved(4, 5), -0.25F * 0.904508F, 1e-6F);
    EXPECT_NEAR(net.moved(4, 0), 0, 1e-6F);
}

TEST(NurbsDent, RowsAboveFollowACosineAndRowsBelowRiseTowardsTheLast) {
    flat_net net(9, 9);
    net.nurbs.dent(4, 4, {1, 0, 0});
    EXPECT_NEAR(net.moved(3, 4), -0.25F * 0.923880F, 1e-6F);
    EXPECT_NEAR(net.moved(0, 4), 0, 1e-6F);
    EXPECT_NEAR(net.moved(5, 4), -0.25F * 0.095492F, 1e-6F);
    EXPECT_NEAR(net.moved(8, 4), -0.25F * 0.904508F, 1e-6F);
}

TEST(NurbsDent, ColoursStay) {
    flat_net net(3, 3);
    net.nurbs.points.row(1)[1].color = {0.5F, 0.25F, 1, 1};
    net.nurbs.dent(1, 1, delta);
    EXPECT_EQ(net.nurbs.points.row(1)[1].color, (ulk3d::col3a{0.5F, 0.25F, 1, 1}));
}

TEST(NurbsDent, PlaceOutsideTheNetDoesNothing) {
    flat_net net(3, 2);
    net.nurbs.dent(3, 0, delta);
    net.nurbs.dent(0, 2, delta);
    net.nurbs.dent(~std::uint64_t{0}, ~std::uint64_t{0}, delta);
    for (std::uint64_t r = 0; r < 2; ++r) {
        for (std::uint64_t c = 0; c < 3; ++c)
            EXPECT_EQ(net.at(r, c), (pos3{static_cast<float>(c), static_cast<float>(r), 1}));
    }
}

}  // namespace
