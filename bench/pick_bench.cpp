#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <random>

#include "bench_context.h"
#include "model/math/matrices.h"
#include "model/math/projections.h"
#include "model/polygon/polygon.h"
#include "render/gl/mapped_span.h"
#include "render/models/glnurbs.h"

/// Picking points with a rectangle of 5 by 5 pixels in a viewport of 640 by 480, in perspective.
namespace {

using namespace ulk3d;

constexpr pick_rectangle_t rectangle{
    .x = 320, .y = 240, .width = 5, .height = 5, .view_width = 640, .view_height = 480};

mtx3w perspective() {
    const lens_t lens{.fov = 1.5707963267948966, .aspect = 640.0 / 480.0, .near = 0.0625, .far = 1024};
    return frustum_matrix(lens_to_projection_near(lens));
}

/// Points spread over a box of 3 by 3 by 3.
void build_cloud(polygon_t& polygon, std::int64_t count) {
    if (!polygon.allocate(static_cast<std::uint64_t>(count), 0))
        std::exit(1);
    std::mt19937 random(1);
    std::uniform_real_distribution<float> coordinate(-1.5F, 1.5F);
    const array_span<vertex_t> vertices(polygon.vertices);
    for (vertex_t& vertex : vertices.span())
        vertex = {{coordinate(random), coordinate(random), coordinate(random)}, {1, 1, 1, 1}, {}};
}

/// The same query answered on the processor from the mapped vertices, point by point.
void pick_on_the_host(pick_hits_t& hits, polygon_t& polygon, const mtx3w& planes, const mtx3w& projection,
                      const mtx3w& modelview) {
    const array_span<const vertex_t> vertices(polygon.vertices);
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const pos3& p = vertices[i].position;
        const vec3w clip = vec_times_mtx(vec_times_mtx({p.x, p.y, p.z, 1}, modelview), projection);
        const vec3w distance = mtx_times_vec(planes, clip);
        if (distance.x >= 0 && distance.y >= 0 && distance.z >= 0 && distance.w >= 0)
            hits.emplace(distance.z, i);
    }
}

template <class Pick>
void run_picks(benchmark::State& state, Pick pick) {
    polygon_t polygon;
    build_cloud(polygon, state.range(0));
    const mtx3w planes = pick_planes(rectangle);
    const mtx3w projection = perspective();
    const mtx3w modelview = translation({0, 0, -3});
    std::size_t found = 0;
    for (auto _ : state) {
        pick_hits_t hits;
        pick(hits, polygon, planes, projection, modelview);
        found = hits.size();
        benchmark::DoNotOptimize(found);
    }
    state.counters["hits"] = static_cast<double>(found);
}

void pick_points_on_the_host(benchmark::State& state) {
    need_context();
    run_picks(state, pick_on_the_host);
}

void pick_points(benchmark::State& state) {
    need_context();
    glnurbs_t glnurbs;
    if (!glnurbs.init(nullptr))
        std::exit(1);
    run_picks(state, [&](pick_hits_t& hits, polygon_t& polygon, const mtx3w& planes, const mtx3w& projection,
                         const mtx3w& modelview) {
        glnurbs.selection(hits, polygon, planes, projection, modelview);
    });
}

// The calling thread sleeps while the driver's own threads draw, so wall clock time is what a user waits.
BENCHMARK(pick_points_on_the_host)
    ->ArgName("points")
    ->Arg(1'000)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(pick_points)
    ->ArgName("points")
    ->Arg(1'000)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
