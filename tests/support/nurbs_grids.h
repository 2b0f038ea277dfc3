#pragma once

#include <gtest/gtest.h>

#include <iostream>
#include <string>
#include <vector>

#include "model/nurbs/nurbs_grid.h"
#include "support/captured_stream.h"
#include "support/plain_nurbs.h"

/// Grids of surfaces, as the evaluator makes them and as the double loop does.
namespace ulk_test {

struct printed_grid_t {
    std::vector<ulk3d::vertex_t> vertices;
    std::string lines;
};

/// With the plain recursion for orders that it can bear.
inline float bounded_basis(std::uint64_t i, std::uint64_t order, float t, ulk3d::knot_view_t knots) {
    return order >= 1 && order <= 4 ? plain_basis(i, order, t, knots) : ulk3d::basis(i, order, t, knots);
}

inline printed_grid_t double_loop_grid(const net_t& net, std::uint32_t resolution1,
                                       std::uint32_t resolution2) {
    printed_grid_t grid;
    const captured_stream errors(std::cerr);
    for (std::uint32_t r = 0; r < resolution2; ++r) {
        for (std::uint32_t c = 0; c < resolution1; ++c) {
            const float u = static_cast<float>(c) / static_cast<float>(resolution1 - 1);
            const float v = static_cast<float>(r) / static_cast<float>(resolution2 - 1);
            const auto sums = plain_sums(net, u, v, bounded_basis);
            const auto point = std::fabs(sums[7]) <= 2e-5F ? net.surface(u, v) : plain_mean(sums);
            grid.vertices.push_back({point.position, point.color, {u, v}});
        }
    }
    grid.lines = errors.text();
    return grid;
}

/// Every sample of the grid of each kernel equals the double loop's result, and all print the same lines.
inline void expect_grid_equals_double_loop(const net_t& net, std::uint32_t resolution1,
                                           std::uint32_t resolution2) {
    const printed_grid_t expected = double_loop_grid(net, resolution1, resolution2);
    for (const ulk3d::kernel_t& kernel : ulk3d::kernels()) {
        SCOPED_TRACE(kernel.name);
        std::vector<ulk3d::vertex_t> grid(expected.vertices.size());
        const captured_stream errors(std::cerr);
        ulk3d::evaluate_surface(net.view(), resolution1, resolution2, grid, kernel);
        EXPECT_EQ(errors.text(), expected.lines);
        for (std::size_t n = 0; n < grid.size(); ++n) {
            ASSERT_TRUE(same_bits(grid[n], expected.vertices[n]))
                << "row " << n / resolution1 << ", column " << n % resolution1 << ": " << grid[n].position.x
                << " instead of " << expected.vertices[n].position.x;
        }
    }
}

}  // namespace ulk_test
