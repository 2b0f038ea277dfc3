#include <benchmark/benchmark.h>

#include <cmath>
#include <set>

#include "bench_context.h"
#include "operations/fold/fold_polygons.h"
#include "render/gl/element_array.h"
#include "support/plain_fold.h"

/// Folding a sheet in strips, of which some triangles are selected: `half` of the sheet, as a user selects
/// one side of a crease, or `every_other` triangle, which makes as many cuts as possible. `plain` cuts the
/// strips in place, one insertion at a time, and scans all elements for each torn vertex; `fast` is what the
/// program uses; `model` is everything that the fold button does to a model, including reading and writing
/// its GL buffers and renewing what depends on them. The argument is the number of triangles; the ratio of
/// the counter `triangles` (per second) between two rows with the same argument is the speed-up. The plain
/// way is quadratic: it has no rows for large sheets.
namespace {

using namespace ulk3d;

strip_mesh_t sheet(std::int64_t triangles) {
    const auto side = static_cast<std::uint32_t>(std::lround(std::sqrt(static_cast<double>(triangles) / 2)));
    strip_mesh_t mesh;
    for (std::uint32_t row = 0; row <= side; ++row)
        for (std::uint32_t column = 0; column <= side; ++column) {
            const float step = 1.0F / static_cast<float>(side);
            mesh.vertices.push_back(
                {{static_cast<float>(column) * step, static_cast<float>(row) * step, 0}, {1, 1, 1, 1}, {}});
            mesh.frames.push_back({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
        }
    for (std::uint32_t row = 0; row < side; ++row) {
        for (std::uint32_t column = 0; column <= side; ++column) {
            mesh.elements.push_back((row + 1) * (side + 1) + column);
            mesh.elements.push_back(row * (side + 1) + column);
        }
        mesh.elements.push_back(restart_mark);
    }
    return mesh;
}

/// The right half of each strip.
std::set<std::uint32_t> half(std::int64_t triangles) {
    const auto side = static_cast<std::uint32_t>(std::lround(std::sqrt(static_cast<double>(triangles) / 2)));
    std::set<std::uint32_t> ids;
    for (std::uint32_t row = 0; row < side; ++row)
        for (std::uint32_t i = side; i < 2 * side; ++i)
            ids.insert(ids.end(), row * 2 * side + i);
    return ids;
}

std::set<std::uint32_t> every_other(std::int64_t triangles) {
    std::set<std::uint32_t> ids;
    for (std::uint32_t id = 0; id < triangles; id += 2)
        ids.insert(ids.end(), id);
    return ids;
}

template <std::set<std::uint32_t> (*marks_of)(std::int64_t), class Fold>
void run(benchmark::State& state, Fold fold) {
    const strip_mesh_t flat = sheet(state.range(0));
    const std::set<std::uint32_t> marks = marks_of(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        strip_mesh_t mesh = flat;
        state.ResumeTiming();
        fold(marks, pos3{0.5F, 0, 0}, pos3{0.5F, 1, 0}, 60.0F, mesh);
        benchmark::DoNotOptimize(mesh);
    }
    state.counters["triangles"] = benchmark::Counter(static_cast<double>(state.range(0)),
                                                     benchmark::Counter::kIsIterationInvariantRate);
}

template <std::set<std::uint32_t> (*marks_of)(std::int64_t)>
void plain(benchmark::State& state) {
    run<marks_of>(state, [](auto&&... arguments) { ulk_test::plain_fold(arguments...); });
}

template <std::set<std::uint32_t> (*marks_of)(std::int64_t)>
void fast(benchmark::State& state) {
    run<marks_of>(state, [](const auto& marks, const pos3& a, const pos3& b, float angle,
                            strip_mesh_t& mesh) { fold_polygons(marks, a, b, angle, mesh); });
}

template <std::set<std::uint32_t> (*marks_of)(std::int64_t)>
void model(benchmark::State& state) {
    need_context();
    const strip_mesh_t flat = sheet(state.range(0));
    const std::set<std::uint32_t> marks = marks_of(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        polygon_t polygon;
        if (!polygon.allocate(flat.vertices.size(), flat.elements.size()) ||
            !write_strip_mesh(polygon, flat)) {
            state.SkipWithError("no memory");
            break;
        }
        for (const std::uint32_t id : marks)
            polygon.selectpolygon(id);
        state.ResumeTiming();
        if (!fold_polygons(polygon.selectpolygons(), {0.5F, 0, 0}, {0.5F, 1, 0}, 60.0F, polygon.vertices,
                           polygon.normals, polygon.elements) ||
            !polygon.extend(polygon.vertices.element_count(), polygon.elements.element_count())) {
            state.SkipWithError("no memory");
            break;
        }
    }
    state.counters["triangles"] = benchmark::Counter(static_cast<double>(state.range(0)),
                                                     benchmark::Counter::kIsIterationInvariantRate);
}

void small(benchmark::internal::Benchmark* rows) {
    rows->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);
}
void large(benchmark::internal::Benchmark* rows) {
    rows->Arg(2000)->Arg(20000)->Arg(1000000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(plain<half>)->Name("fold/half/plain")->Apply(small);
BENCHMARK(fast<half>)->Name("fold/half/fast")->Apply(large);
BENCHMARK(model<half>)->Name("fold/half/model")->Apply(large);
BENCHMARK(plain<every_other>)->Name("fold/every_other/plain")->Apply(small);
BENCHMARK(fast<every_other>)->Name("fold/every_other/fast")->Apply(large);
BENCHMARK(model<every_other>)->Name("fold/every_other/model")->Apply(large);

}  // namespace
