#include <benchmark/benchmark.h>

#include "operations/cut/mesh_cut.h"
#include "support/cut_meshes.h"
#include "support/plain_mesh_cut.h"

/// The mesh cut: the plain loop over all pairs of triangles, compared with the cut that the program uses. The
/// argument is the level of both meshes, spheres of 20 times 4 to that power triangles (320, 1,280, 5,120,
/// 20,480). The ratio of the times of two rows with the same scene and argument is the speed-up. Scenes: two
/// smooth spheres in strips, as in files; and two with every vertex displaced at random, one triangle to a
/// strip, as from a scanner.
namespace {

using namespace ulk3d;

struct scene_t {
    strip_mesh_t victim, cutter;
};

scene_t spheres(std::int64_t level) {
    return {ulk_test::in_strips(ulk_test::sphere({0, 0, 0}, 1, static_cast<int>(level))),
            ulk_test::in_strips(ulk_test::sphere({0.5F, 0.3F, 0.2F}, 1, static_cast<int>(level)))};
}

scene_t scans(std::int64_t level) {
    const auto scan = [level](const pos3& center, unsigned seed) {
        const float edge = 1.2F / static_cast<float>(1 << level);
        return ulk_test::shaken(ulk_test::sphere(center, 1, static_cast<int>(level)), 0.15F * edge, seed);
    };
    return {scan({0, 0, 0}, 1), scan({0.5F, 0.3F, 0.2F}, 2)};
}

template <typename Cut>
void run(benchmark::State& state, const scene_t& scene, Cut cut) {
    for (auto _ : state) {
        strip_mesh_t mesh = scene.victim;
        cut(mesh, scene.cutter);
        benchmark::DoNotOptimize(mesh.elements.data());
    }
}

template <scene_t (*scene_of)(std::int64_t)>
void plain(benchmark::State& state) {
    run(state, scene_of(state.range(0)),
        [](strip_mesh_t& victim, const strip_mesh_t& cutter) { ulk_test::plain_mesh_cut(victim, cutter); });
}

template <scene_t (*scene_of)(std::int64_t)>
void fast(benchmark::State& state) {
    run(state, scene_of(state.range(0)), [](strip_mesh_t& victim, const strip_mesh_t& cutter) {
        split_by(victim, cutter, {});
        remove_inside(victim, cutter, {});
    });
}

BENCHMARK(plain<spheres>)->Name("mesh_cut/spheres/plain")->DenseRange(2, 4)->Unit(benchmark::kMillisecond);
BENCHMARK(plain<spheres>)
    ->Name("mesh_cut/spheres/plain")
    ->Arg(5)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(fast<spheres>)->Name("mesh_cut/spheres/fast")->DenseRange(2, 5)->Unit(benchmark::kMillisecond);
BENCHMARK(plain<scans>)->Name("mesh_cut/scans/plain")->DenseRange(2, 4)->Unit(benchmark::kMillisecond);
BENCHMARK(plain<scans>)->Name("mesh_cut/scans/plain")->Arg(5)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(fast<scans>)->Name("mesh_cut/scans/fast")->DenseRange(2, 5)->Unit(benchmark::kMillisecond);

}  // namespace
