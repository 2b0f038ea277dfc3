#include <benchmark/benchmark.h>
#include <sisl.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

#include "model/nurbs/nurbs_grid.h"
#include "support/plain_nurbs.h"

/// SISL's evaluation of the surfaces of nurbs_bench.cpp on the same grids: the seven numbers of a point, in
/// double precision, with weights as ours always has them and without. Before it is timed its surface is held
/// against ours. It knows one knot vector for each direction only. Arguments: as there, but for `weights` in
/// the place of `differ`.
namespace {

using ulk_test::net_t, ulk_test::seven_floats;

constexpr int numbers = 7;
constexpr double tolerance = 1e-4;  ///< of points between -10 and 10

struct surface_deleter {
    void operator()(SISLSurf* surface) const { freeSurf(surface); }
};
using surface_ptr = std::unique_ptr<SISLSurf, surface_deleter>;

/// Points come with their weights multiplied in and, when there are weights, followed by these.
surface_ptr surface_of(const net_t& net, bool has_weights) {
    std::vector<double> points;
    for (std::size_t n = 0; n < net.points.data.size(); ++n) {
        const double weight = net.weight.data[n];
        for (const float number : std::bit_cast<seven_floats>(net.points.data[n]))
            points.push_back(weight * number);
        if (has_weights)
            points.push_back(weight);
    }
    const auto row = net.knot1.row(0), column = net.knot2.row(0);
    std::vector<double> knots1(row.begin(), row.end()), knots2(column.begin(), column.end());
    constexpr int polynomial = 1, rational = 2, copies = 1;
    return surface_ptr(newSurf(static_cast<int>(net.count1), static_cast<int>(net.count2),
                               static_cast<int>(net.order1), static_cast<int>(net.order2), knots1.data(),
                               knots2.data(), points.data(), has_weights ? rational : polynomial, numbers,
                               copies));
}

bool agrees_with_ours(const net_t& net, std::uint32_t side, const std::vector<double>& points) {
    std::vector<ulk3d::vertex_t> vertices(std::size_t{side} * side);
    ulk3d::evaluate_surface(net.view(), side, side, vertices);
    for (std::size_t n = 0; n < vertices.size(); ++n) {
        const auto ours =
            std::bit_cast<seven_floats>(ulk3d::control_point_t{vertices[n].position, vertices[n].color});
        for (std::size_t i = 0; i < numbers; ++i)
            if (!(std::abs(ours[i] - points[n * numbers + i]) < tolerance))
                return false;
    }
    return true;
}

/// As many samples to each side.
class grid_t {
  public:
    explicit grid_t(std::uint32_t side) : points(std::size_t{side} * side * numbers) {
        for (std::uint32_t n = 0; n < side; ++n)
            parameters.push_back(static_cast<float>(n) / static_cast<float>(side - 1));
    }
    /// False when SISL reports a failure.
    bool evaluate(SISLSurf& surface) {
        constexpr int no_derivatives = 0;
        double* const no_normals = nullptr;
        const int side = static_cast<int>(parameters.size());
        int status = 0;
        s1506(&surface, no_derivatives, side, parameters.data(), side, parameters.data(), points.data(),
              no_normals, &status);
        return status == 0;
    }

    std::vector<double> parameters;
    std::vector<double> points;  ///< `numbers` for each sample, row by row
};

void nurbs_sisl(benchmark::State& state) {
    const auto order = static_cast<std::uint64_t>(state.range(2));
    const auto side = static_cast<std::uint32_t>(state.range(3));
    const bool has_weights = state.range(4) != 0;
    net_t net = ulk_test::random_net(static_cast<std::uint64_t>(state.range(0)), order,
                                     static_cast<std::uint64_t>(state.range(1)), order, false);
    if (!has_weights)
        std::ranges::fill(net.weight.data, 1.0F);
    const surface_ptr surface = surface_of(net, has_weights);
    grid_t grid(side);
    if (!grid.evaluate(*surface) || !agrees_with_ours(net, side, grid.points)) {
        state.SkipWithError("another surface");
        return;
    }
    for (auto _ : state) {
        grid.evaluate(*surface);
        benchmark::DoNotOptimize(grid.points.data());
        benchmark::ClobberMemory();
    }
    state.counters["samples"] = benchmark::Counter(static_cast<double>(state.range(3) * state.range(3)),
                                                   benchmark::Counter::kIsIterationInvariantRate);
}

BENCHMARK(nurbs_sisl)
    ->ArgNames({"columns", "rows", "order", "side", "weights"})
    ->ArgsProduct({{8}, {8}, {3}, {33, 257}, {0, 1}})
    ->ArgsProduct({{20}, {20}, {4}, {33, 257}, {0, 1}})
    ->ArgsProduct({{64}, {64}, {4}, {33, 257}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

}  // namespace
