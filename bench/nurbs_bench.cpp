#include <benchmark/benchmark.h>

#include "model/nurbs/nurbs_grid.h"
#include "support/plain_nurbs.h"

/// Evaluating a surface at a grid of samples: the plain double loop with the plain recursion, the double loop
/// with basis functions of bounded work, and the evaluator that the program uses. Arguments: points along a
/// row, points along a column, order, samples per side, and whether all knot vectors differ. The counter
/// `samples` is samples per second: the ratio between two rows with the same arguments is the speed-up.
namespace {

using ulk_test::net_t;

net_t net_of(const benchmark::State& state) {
    const auto order = static_cast<std::uint64_t>(state.range(2));
    return ulk_test::random_net(static_cast<std::uint64_t>(state.range(0)), order,
                                static_cast<std::uint64_t>(state.range(1)), order, state.range(4) != 0);
}

void count_samples(benchmark::State& state) {
    state.counters["samples"] = benchmark::Counter(static_cast<double>(state.range(3) * state.range(3)),
                                                   benchmark::Counter::kIsIterationInvariantRate);
}

template <typename Basis>
void run_double_loop(benchmark::State& state, Basis basis_function) {
    const net_t net = net_of(state);
    const auto side = static_cast<std::uint32_t>(state.range(3));
    const auto parameter = [side](std::uint32_t n) {
        return static_cast<float>(n) / static_cast<float>(side - 1);
    };
    std::vector<ulk3d::control_point_t> surface(side * side);
    for (auto _ : state) {
        for (std::uint32_t r = 0; r < side; ++r) {
            for (std::uint32_t c = 0; c < side; ++c)
                surface[r * side + c] = ulk_test::plain_mean(
                    ulk_test::plain_sums(net, parameter(c), parameter(r), basis_function));
        }
        benchmark::DoNotOptimize(surface.data());
        benchmark::ClobberMemory();
    }
    count_samples(state);
}

void nurbs_plain_recursion(benchmark::State& state) {
    run_double_loop(state, ulk_test::plain_basis);
}

void nurbs_double_loop(benchmark::State& state) {
    run_double_loop(state, ulk3d::basis);
}

void run_evaluator(benchmark::State& state, const ulk3d::kernel_t& kernel) {
    const net_t net = net_of(state);
    const auto side = static_cast<std::uint32_t>(state.range(3));
    std::vector<ulk3d::vertex_t> vertices(side * side);
    for (auto _ : state) {
        ulk3d::evaluate_surface(net.view(), side, side, vertices, kernel);
        benchmark::DoNotOptimize(vertices.data());
        benchmark::ClobberMemory();
    }
    count_samples(state);
    state.SetLabel(kernel.name);
}

void nurbs_evaluator(benchmark::State& state) {
    run_evaluator(state, ulk3d::best_kernel());
}

/// What a machine runs that has nothing but the instructions that all of its kind have.
void nurbs_evaluator_baseline(benchmark::State& state) {
    run_evaluator(state, ulk3d::kernels().front());
}

// Sizes for which a double loop takes seconds are left out.
BENCHMARK(nurbs_plain_recursion)
    ->ArgNames({"columns", "rows", "order", "side", "differ"})
    ->ArgsProduct({{8}, {8}, {3}, {33, 257}, {0, 1}})
    ->ArgsProduct({{20}, {20}, {4}, {33}, {0, 1}})
    ->ArgsProduct({{64}, {64}, {4}, {33}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(nurbs_double_loop)
    ->ArgNames({"columns", "rows", "order", "side", "differ"})
    ->ArgsProduct({{8}, {8}, {3}, {33, 257}, {0, 1}})
    ->ArgsProduct({{20}, {20}, {4}, {33}, {0, 1}})
    ->ArgsProduct({{64}, {64}, {4}, {33}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(nurbs_evaluator)
    ->ArgNames({"columns", "rows", "order", "side", "differ"})
    ->ArgsProduct({{8}, {8}, {3}, {33, 257}, {0, 1}})
    ->ArgsProduct({{20}, {20}, {4}, {33, 257}, {0, 1}})
    ->ArgsProduct({{64}, {64}, {4}, {33, 257}, {0, 1}})
    ->ArgsProduct({{1000}, {2}, {2}, {33}, {0, 1}})
    ->ArgsProduct({{64}, {64}, {64}, {33}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(nurbs_evaluator_baseline)
    ->ArgNames({"columns", "rows", "order", "side", "differ"})
    ->ArgsProduct({{8}, {8}, {3}, {33, 257}, {0, 1}})
    ->ArgsProduct({{20}, {20}, {4}, {33, 257}, {0, 1}})
    ->ArgsProduct({{64}, {64}, {4}, {33, 257}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

}  // namespace
