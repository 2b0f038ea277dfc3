#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <random>
#include <span>

#include "support/plain_nurbs.h"

/// Nets of all kinds that a file can hold.
namespace ulk_test {

/// Small whole numbers out of a seed.
class dice_t {
  public:
    explicit dice_t(std::uint32_t seed) : engine(seed) {}
    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(engine() % limit); }

  private:
    std::mt19937 engine;
};

/// The knots that designers make, and those that a file can hold.
inline void fill_random_knots(std::span<float> knots, std::uint64_t count, std::uint64_t order,
                              dice_t& dice) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    fill_clamped(knots, count, order);
    switch (dice.below(7)) {
        case 0:  // even to the ends: the surface has no span at the borders
            for (std::size_t n = 0; n < knots.size(); ++n)
                knots[n] = static_cast<float>(n) / static_cast<float>(knots.size() - 1);
            break;
        case 1:  // repeated, many of them where samples lie
            for (float& knot : knots)
                knot = static_cast<float>(dice.below(9)) / 8;
            std::ranges::sort(knots);
            break;
        case 2:  // in any order
            for (float& knot : knots)
                knot = static_cast<float>(dice.below(9)) / 8;
            break;
        case 3:  // falling
            std::ranges::reverse(knots);
            break;
        case 4:  // odd numbers
            knots[dice.below(static_cast<std::uint32_t>(
                knots.size()))] = std::array{std::numeric_limits<float>::quiet_NaN(),
                                             infinity,
                                             -infinity,
                                             -0.0F,
                                             3e38F,
                                             1e-45F}[dice.below(6)];
            break;
        default:
            break;
    }
}

/// Every row and column with knots of its own, all equal, or of two kinds.
inline void fill_random_table(ulk3d::matrix_t<float>& table, std::uint64_t count, std::uint64_t order,
                              dice_t& dice) {
    if (table.columns == 0)
        return;
    const std::uint32_t kinds = std::array{1U, 2U, 1000U}[dice.below(3)];
    for (std::uint64_t row = 0; row < table.rows; ++row) {
        if (row < kinds)
            fill_random_knots(table.row(row), count, order, dice);
        else
            std::ranges::copy(table.row(dice.below(kinds)), table.row(row).begin());
    }
}

inline std::uint64_t random_order(dice_t& dice) {
    return dice.below(12) == 0 ? 9 + dice.below(12) : 1 + dice.below(8);
}

inline net_t random_net_of_any_kind(dice_t& dice, std::uint32_t largest_count) {
    const std::uint64_t order1 = random_order(dice), order2 = random_order(dice);
    const std::uint64_t count1 = 1 + dice.below(largest_count), count2 = 1 + dice.below(largest_count);
    net_t net = random_net(count1, order1, count2, order2, dice.below(2) != 0, dice.below(10000));
    fill_random_table(net.knot1, count1, order1, dice);
    fill_random_table(net.knot2, count2, order2, dice);
    if (dice.below(3) == 0) {
        for (float& weight : net.weight.data)
            weight *= static_cast<float>(dice.below(4)) - 1;
    }
    if (dice.below(8) == 0)
        net.points.data[dice.below(static_cast<std::uint32_t>(net.points.data.size()))].position.y =
            std::numeric_limits<float>::infinity();
    return net;
}

}  // namespace ulk_test
