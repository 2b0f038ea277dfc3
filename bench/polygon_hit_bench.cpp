#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

#include "model/math/projections.h"
#include "render/gl/element_array.h"
#include "support/plain_polygon_hit.h"

/// Picking polygons: the plain loop that clips every triangle, compared with the hit test that the program
/// uses. The argument is the number of triangles. The counter `triangles` is triangles per second: the ratio
/// between two rows with the same scene and argument is the speed-up. Scenes: a sphere in strips, as in
/// files, and a heap of large triangles all over the view, every other one of which crosses the row of the
/// pick.
namespace {

using namespace ulk3d;

struct scene_of_triangles_t {
    std::vector<vertex_t> vertices;
    std::vector<std::uint32_t> strips;
};

vertex_t vertex(float x, float y, float z) {
    return {{x, y, z}, {1, 1, 1, 1}, {}};
}

scene_of_triangles_t sphere(std::int64_t triangles) {
    const auto side = static_cast<std::uint32_t>(std::lround(std::sqrt(static_cast<double>(triangles) / 2)));
    scene_of_triangles_t scene;
    for (std::uint32_t row = 0; row <= side; ++row)
        for (std::uint32_t column = 0; column <= side; ++column) {
            const float up = static_cast<float>(row) / static_cast<float>(side) * 3.1415927F;
            const float round = static_cast<float>(column) / static_cast<float>(side) * 6.2831853F;
            scene.vertices.push_back(
                vertex(std::sin(up) * std::cos(round), std::cos(up), std::sin(up) * std::sin(round)));
        }
    for (std::uint32_t row = 0; row < side; ++row) {
        for (std::uint32_t column = 0; column <= side; ++column) {
            scene.strips.push_back(row * (side + 1) + column);
            scene.strips.push_back((row + 1) * (side + 1) + column);
        }
        scene.strips.push_back(restart_mark);
    }
    return scene;
}

scene_of_triangles_t heap(std::int64_t triangles) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> place(-1.2F, 1.2F);
    scene_of_triangles_t scene;
    for (std::int64_t i = 0; i < 3 * triangles; ++i) {
        if (i % 3 == 0 && i != 0)
            scene.strips.push_back(restart_mark);
        scene.strips.push_back(static_cast<std::uint32_t>(scene.vertices.size()));
        scene.vertices.push_back(vertex(place(random), place(random), place(random)));
    }
    return scene;
}

/// The window of 3 by 3 pixels near the middle of a viewport of 960 by 540.
edge_lines_t pick_window() {
    const float x = 0.1F, y = 0.05F, w = 1.5F / 480, h = 1.5F / 270;
    return {{{0, -1, y + h}, {0, 1, -(y - h)}, {1, 0, -(x - w)}, {-1, 0, x + w}}};
}

template <scene_of_triangles_t (*scene_of)(std::int64_t), class Hit>
void run(benchmark::State& state, Hit hit) {
    const scene_of_triangles_t scene = scene_of(state.range(0));
    const edge_lines_t lines = pick_window();
    const mtx3w perspective = frustum_matrix(lens_to_projection_near(lens_default()));
    const mtx3w view = rotation(20, {1, 2, 0}) * translation({0, 0, -3});
    for (auto _ : state) {
        hit_map_t hits;
        benchmark::DoNotOptimize(hit(hits, scene, lines, perspective, view));
        benchmark::DoNotOptimize(hits);
    }
    state.counters["triangles"] = benchmark::Counter(static_cast<double>(state.range(0)),
                                                     benchmark::Counter::kIsIterationInvariantRate);
}

template <scene_of_triangles_t (*scene_of)(std::int64_t)>
void plain(benchmark::State& state) {
    run<scene_of>(state, [](hit_map_t& hits, const scene_of_triangles_t& scene, const auto&... rest) {
        return ulk_test::plain_polygon_hit(hits, scene.vertices, scene.strips, rest...);
    });
}

template <scene_of_triangles_t (*scene_of)(std::int64_t)>
void fast(benchmark::State& state) {
    run<scene_of>(state, [](hit_map_t& hits, const scene_of_triangles_t& scene, const auto&... rest) {
        return polygon_hit(hits, scene.vertices, scene.strips, rest...);
    });
}

BENCHMARK(plain<sphere>)
    ->Name("polygon_hit/sphere/plain")
    ->Arg(1000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(fast<sphere>)
    ->Name("polygon_hit/sphere/fast")
    ->Arg(1000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(plain<heap>)
    ->Name("polygon_hit/heap/plain")
    ->Arg(1000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(fast<heap>)
    ->Name("polygon_hit/heap/fast")
    ->Arg(1000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMicrosecond);

}  // namespace
