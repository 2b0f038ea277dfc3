#include <benchmark/benchmark.h>

#include <array>
#include <bit>
#include <cmath>
#include <map>

#include "support/cut_meshes.h"
#include "support/triangle_soup.h"
#include "tool/tidy/weld.h"

/// Welding the corners of a wavy sheet of single triangles, as it comes out of an STL file. `plain` looks
/// each corner up in a map of those before it; `exact` and `near` are what the program uses, without and with
/// a tolerance of a hundredth of an edge. The argument is the number of triangles; the ratio of the counter
/// `triangles` (per second) between two rows with the same argument is the speed-up.
namespace {

using namespace ulk3d;
using namespace ulktool;

struct soup_t {
    strip_mesh_t mesh;
    std::vector<triangle_corners_t> triangles;
};

constexpr float size = 1;

std::uint32_t cells_of(std::int64_t triangles) {
    return static_cast<std::uint32_t>(std::lround(std::sqrt(static_cast<double>(triangles) / 2)));
}

soup_t soup(std::int64_t triangles) {
    const auto height = [](float x, float y) { return 0.1F * std::sin(9 * x) * std::cos(7 * y); };
    soup_t made{ulk_test::soup_of(ulk_test::sheet(cells_of(triangles), size, height)), {}};
    for (std::uint32_t first = 0; first < made.mesh.vertices.size(); first += 3)
        made.triangles.push_back({first, first + 1, first + 2});
    return made;
}

std::vector<std::uint32_t> plainly_welded(std::span<const vertex_t> vertices) {
    std::map<std::array<std::uint32_t, 9>, std::uint32_t> known;
    std::vector<std::uint32_t> standing;
    for (const vertex_t& vertex : vertices) {
        const auto key = std::bit_cast<std::array<std::uint32_t, 9>>(vertex);
        standing.push_back(known.try_emplace(key, static_cast<std::uint32_t>(standing.size())).first->second);
    }
    return standing;
}

template <class Weld>
void run(benchmark::State& state, Weld weld) {
    const soup_t input = soup(state.range(0));
    if (weld(input) != plainly_welded(input.mesh.vertices)) {
        state.SkipWithError("the results differ");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(weld(input));
    state.counters["triangles"] = benchmark::Counter(static_cast<double>(input.triangles.size()),
                                                     benchmark::Counter::kIsIterationInvariantRate);
}

void weld_plain(benchmark::State& state) {
    run(state, [](const soup_t& input) { return plainly_welded(input.mesh.vertices); });
}

void weld_exact(benchmark::State& state) {
    run(state, [](const soup_t& input) { return welded_vertices(input.mesh.vertices, input.triangles, 0); });
}

void weld_near(benchmark::State& state) {
    const double tolerance = 0.01 * static_cast<double>(size) / cells_of(state.range(0));
    run(state, [tolerance](const soup_t& input) {
        return welded_vertices(input.mesh.vertices, input.triangles, tolerance);
    });
}

BENCHMARK(weld_plain)->Arg(20000)->Arg(500000)->Unit(benchmark::kMillisecond);
BENCHMARK(weld_exact)->Arg(20000)->Arg(500000)->Unit(benchmark::kMillisecond);
BENCHMARK(weld_near)->Arg(20000)->Arg(500000)->Unit(benchmark::kMillisecond);

}  // namespace
