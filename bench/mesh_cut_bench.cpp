#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <type_traits>

#include "bench_context.h"
#include "counted_memory.h"
#include "mesh_cut_scenes.h"
#include "operations/cut/mesh_cut.h"
#include "operations/cut/walls/cut_walls.h"
#include "support/plain_mesh_cut.h"

/// The mesh cut. Rows, by the last part of their names:
///
/// - `plain`: the plain loop over all pairs of triangles;
/// - `fast`: the cut that the program uses, on the host;
/// - `walls`: the same, and then the walls of its openings;
/// - `command`: the whole command on models in GL buffers, which also copies both models to the host and
///   writes the victim back;
/// - `cgal`: CGAL's difference of the same two meshes, see peers/cgal_mesh_cut.cpp.
///
/// The argument is the level of both meshes, 20 times 4 to that power triangles each (320, 1,280, 5,120,
/// 20,480, 81,920). The ratio of the times of two rows with the same scene and argument is the speed-up; that
/// of two levels in one row tells how the time grows with four times the triangles. The rows of a million
/// triangles have 12 in the other model. Times are those of one cut; the meshes and their copies are made
/// outside.
///
/// `memory` tells what one cut on the host needs: `peak_per_model` is the most that it has allocated at
/// any time beyond the two models, divided by the bytes of both.
namespace {

using namespace ulk3d;
using namespace mesh_cut_scenes;

void cut_plainly(strip_mesh_t& victim, const strip_mesh_t& cutter) {
    ulk_test::plain_mesh_cut(victim, cutter);
}

void cut_fast(strip_mesh_t& victim, const strip_mesh_t& cutter) {
    split_by(victim, cutter, {});
    remove_inside(victim, cutter, {});
}

void cut_with_walls(strip_mesh_t& victim, const strip_mesh_t& cutter) {
    const strip_mesh_t before = victim;
    cut_fast(victim, cutter);
    add_walls(victim, before, cutter, {});
}

/// A copy with the room behind the records that `read_strip_mesh` leaves.
strip_mesh_t as_read(const strip_mesh_t& mesh) {
    const auto copy_of = [](const auto& records) {
        std::remove_cvref_t<decltype(records)> copies;
        copies.reserve(records.size() + records.size() / 16);
        copies.assign(records.begin(), records.end());
        return copies;
    };
    return {copy_of(mesh.vertices), copy_of(mesh.frames), copy_of(mesh.elements)};
}

template <void (*cut)(strip_mesh_t&, const strip_mesh_t&)>
void run(benchmark::State& state, const cut_scene_t& scene, bool is_hit) {
    strip_mesh_t mesh;
    for (auto _ : state) {
        state.PauseTiming();
        mesh = as_read(scene.victim);
        state.ResumeTiming();
        cut(mesh, scene.cutter);
        benchmark::DoNotOptimize(mesh.elements.data());
    }
    if ((mesh != scene.victim) != is_hit)
        state.SkipWithError(is_hit ? "nothing was cut" : "something was cut");
}

template <cut_scene_t (*scene_of)(std::int64_t)>
void plain(benchmark::State& state) {
    run<cut_plainly>(state, scene_of(state.range(0)), true);
}

template <cut_scene_t (*scene_of)(std::int64_t)>
void fast(benchmark::State& state) {
    run<cut_fast>(state, scene_of(state.range(0)), true);
}

template <cut_scene_t (*scene_of)(std::int64_t)>
void walls(benchmark::State& state) {
    run<cut_with_walls>(state, scene_of(state.range(0)), true);
}

template <cut_scene_t (*scene_of)(), bool is_hit>
void fast_in_a_million(benchmark::State& state) {
    run<cut_fast>(state, scene_of(), is_hit);
}

void fill(polygon_t& polygon, const strip_mesh_t& mesh) {
    if (!polygon.allocate(mesh.vertices.size(), mesh.elements.size()) || !write_strip_mesh(polygon, mesh))
        std::exit(1);
}

template <cut_scene_t (*scene_of)(std::int64_t)>
void command(benchmark::State& state) {
    need_context();
    const cut_scene_t scene = scene_of(state.range(0));
    model_list_t models;
    fill(models.emplace_back(std::make_unique<model_entry_t>(model_kind_t::polygon))->polygon, scene.cutter);
    for (auto _ : state) {
        state.PauseTiming();
        models.resize(1);
        polygon_t& victim =
            models.emplace_back(std::make_unique<model_entry_t>(model_kind_t::polygon))->polygon;
        fill(victim, scene.victim);
        state.ResumeTiming();
        if (!mesh_cut({}, 0, models))
            state.SkipWithError("The cut has failed.");
    }
    if (models.back()->polygon.vertex_count() == scene.victim.vertices.size())
        state.SkipWithError("nothing was cut");
}

double bytes_of(const strip_mesh_t& mesh) {
    return static_cast<double>(mesh.vertices.size() * (sizeof(vertex_t) + sizeof(frame_t)) +
                               mesh.elements.size() * sizeof(std::uint32_t));
}

template <cut_scene_t (*scene_of)(std::int64_t)>
void memory(benchmark::State& state) {
    const cut_scene_t scene = scene_of(state.range(0));
    strip_mesh_t mesh = as_read(scene.victim);
    double peak = 0;
    for (auto _ : state) {
        start_counting_memory();
        cut_fast(mesh, scene.cutter);
        peak = peak_of_counted_memory();
    }
    state.counters["peak_per_model"] = peak / (bytes_of(scene.victim) + bytes_of(scene.cutter));
}

BENCHMARK(plain<spheres>)->Name("mesh_cut/spheres/plain")->DenseRange(2, 3)->Unit(benchmark::kMillisecond);
BENCHMARK(plain<spheres>)
    ->Name("mesh_cut/spheres/plain")
    ->Arg(4)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(fast<spheres>)->Name("mesh_cut/spheres/fast")->DenseRange(2, 6)->Unit(benchmark::kMillisecond);
BENCHMARK(walls<spheres>)->Name("mesh_cut/spheres/walls")->DenseRange(2, 6)->Unit(benchmark::kMillisecond);
BENCHMARK(command<spheres>)
    ->Name("mesh_cut/spheres/command")
    ->DenseRange(2, 6)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(memory<spheres>)
    ->Name("mesh_cut/spheres/memory")
    ->Arg(6)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

BENCHMARK(plain<scans>)->Name("mesh_cut/scans/plain")->DenseRange(2, 3)->Unit(benchmark::kMillisecond);
BENCHMARK(plain<scans>)->Name("mesh_cut/scans/plain")->Arg(4)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(fast<scans>)->Name("mesh_cut/scans/fast")->DenseRange(2, 5)->Unit(benchmark::kMillisecond);

BENCHMARK(walls<scans>)->Name("mesh_cut/scans/walls")->DenseRange(2, 5)->Unit(benchmark::kMillisecond);

BENCHMARK(fast_in_a_million<cap_of_a_million, true>)
    ->Name("mesh_cut/12_cut_a_million/fast")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(fast_in_a_million<hole_of_a_million, false>)
    ->Name("mesh_cut/a_million_around_12/fast")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(fast_in_a_million<beside_a_million, false>)
    ->Name("mesh_cut/a_million_beside_12/fast")
    ->Unit(benchmark::kMillisecond);

}  // namespace
