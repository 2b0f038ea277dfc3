#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

#include "model/nurbs/nurbs_evaluate.h"

/// The evaluation of B-spline surfaces by its definition, step by step and without shortcuts: the reference
/// for the fast evaluator.
namespace ulk_test {

inline float plain_basis(std::uint64_t i, std::uint64_t k, float t, ulk3d::knot_view_t K) {
    if (k == 1) {
        if (K[i] == K[i + 1])
            return 0;
        return t >= K[i] && t <= K[i + 1] ? 1.0F : 0.0F;
    }
    float a = plain_basis(i, k - 1, t, K);
    const float d = K[i + k - 1] - K[i];
    if (a != 0 && d != 0)
        a = a * (t - K[i]) / d;
    float b = plain_basis(i + 1, k - 1, t, K);
    const float e = K[i + k] - K[i + 1];
    if (b != 0 && e != 0)
        b = b * (K[i + k] - t) / e;
    return a + b;
}

using seven_floats = std::array<float, 7>;

/// The tables of a surface, to be filled and passed to any evaluator.
struct net_t {
    net_t(std::uint64_t columns, std::uint64_t row_order, std::uint64_t rows, std::uint64_t column_order)
        : count1(columns), order1(row_order), count2(rows), order2(column_order) {
        knot1.resize(count2, count1 + order1);
        knot2.resize(count1, count2 + order2);
        weight.resize(count2, count1);
        points.resize(count2, count1);
    }

    ulk3d::nurbs_net_t<ulk3d::control_point_t> view() const {
        return {count1, count2, order1, order2, knot1, knot2, weight, points};
    }
    ulk3d::control_point_t surface(float u, float v) const {
        return ulk3d::nurbs_surface(count1, count2, order1, order2, u, v, knot1, knot2, weight, points);
    }

    std::uint64_t count1, order1, count2, order2;
    ulk3d::matrix_t<float> knot1, knot2, weight;
    ulk3d::matrix_t<ulk3d::control_point_t> points;
};

/// The weighted sums over all control points, followed by the sum of the factors.
template <typename Basis>
std::array<float, 8> plain_sums(const net_t& net, float u, float v, Basis basis_function) {
    std::array<float, 8> sums{};
    for (std::uint64_t j = 0; j < net.count2; ++j) {
        for (std::uint64_t i = 0; i < net.count1; ++i) {
            const float A = basis_function(i, net.order1, u, {net.knot1.row(j).data()});
            const float B = basis_function(j, net.order2, v, {net.knot2.row(i).data()});
            const float c = A * net.weight.row(j)[i] * B;
            const auto point = std::bit_cast<seven_floats>(net.points.row(j)[i]);
            for (std::size_t n = 0; n < 7; ++n)
                sums[n] += c * point[n];
            sums[7] += c;
        }
    }
    return sums;
}

/// The surface point; valid where the sum of the factors is not 0.
inline ulk3d::control_point_t plain_mean(const std::array<float, 8>& sums) {
    seven_floats result;
    const float scale = 1 / sums[7];
    for (std::size_t n = 0; n < 7; ++n)
        result[n] = sums[n] * scale;
    return std::bit_cast<ulk3d::control_point_t>(result);
}

/// Fills in clamped knots from 0 to 1 with equal inner intervals.
inline void fill_clamped(std::span<float> knots, std::uint64_t count, std::uint64_t order) {
    for (std::uint64_t n = 0; n < knots.size(); ++n) {
        if (n < order)
            knots[n] = 0;
        else if (n >= count)
            knots[n] = 1;
        else
            knots[n] = static_cast<float>(n - order + 1) / static_cast<float>(count - order + 1);
    }
}

/// A net with random points, weights from 0.5 to 1.5 and clamped knots. With `different_knots` the inner
/// knots of every row and column are shifted a little, so that no two knot vectors are equal.
inline net_t random_net(std::uint64_t count1, std::uint64_t order1, std::uint64_t count2,
                        std::uint64_t order2, bool different_knots, std::uint32_t seed = 1) {
    net_t net(count1, order1, count2, order2);
    std::mt19937 random(seed);
    const auto between = [&random](float low, float high) {
        return low + (high - low) * static_cast<float>(random() % 65536U) / 65536.0F;
    };
    const auto fill = [&](ulk3d::matrix_t<float>& table, std::uint64_t count, std::uint64_t order) {
        for (std::uint64_t row = 0; row < table.rows; ++row) {
            fill_clamped(table.row(row), count, order);
            if (!different_knots || count <= order)
                continue;
            const float spacing = 1.0F / static_cast<float>(count - order + 1);
            for (std::uint64_t n = order; n < count; ++n)
                table.row(row)[n] += between(-0.4F, 0.4F) * spacing;
        }
    };
    fill(net.knot1, count1, order1);
    fill(net.knot2, count2, order2);
    for (float& weight : net.weight.data)
        weight = between(0.5F, 1.5F);
    for (auto& point : net.points.data) {
        seven_floats floats;
        for (float& value : floats)
            value = between(-10, 10);
        point = std::bit_cast<ulk3d::control_point_t>(floats);
    }
    return net;
}

/// Equal to the last bit; any two NaNs are equal.
inline bool same_bits(float a, float b) {
    return (std::isnan(a) && std::isnan(b)) ||
           std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}

template <typename Record>
bool same_bits(const Record& a, const Record& b) {
    using floats = std::array<float, sizeof(Record) / sizeof(float)>;
    const auto left = std::bit_cast<floats>(a);
    const auto right = std::bit_cast<floats>(b);
    for (std::size_t n = 0; n < left.size(); ++n) {
        if (!same_bits(left[n], right[n]))
            return false;
    }
    return true;
}

}  // namespace ulk_test
