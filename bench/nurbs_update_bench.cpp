#include <benchmark/benchmark.h>

#include <list>

#include "model/nurbs/nurbs_grid.h"
#include "model/nurbs/nurbs_normals.h"
#include "model/scene.h"
#include "render/models/glpolygon.h"
#include "render/offscreen/offscreen_context.h"
#include "support/plain_nurbs.h"

/// The release of a dragged point. The argument tells whether all knot vectors differ.
namespace {

using namespace ulk3d;

constexpr std::uint32_t side = 257;
constexpr std::uint64_t dragged = 32 * 64 + 32;

void evaluate_whole(benchmark::State& state) {
    ulk_test::net_t net = ulk_test::random_net(64, 4, 64, 4, state.range(0) != 0);
    std::vector<vertex_t> vertices(side * side);
    for (auto _ : state) {
        net.points.data[dragged].position.z += 0.01F;
        evaluate_surface(net.view(), side, side, vertices);
        benchmark::DoNotOptimize(vertices.data());
    }
}

void evaluate_changed_point(benchmark::State& state) {
    ulk_test::net_t net = ulk_test::random_net(64, 4, 64, 4, state.range(0) != 0);
    std::vector<vertex_t> vertices(side * side);
    evaluate_surface(net.view(), side, side, vertices);
    for (auto _ : state) {
        net.points.data[dragged].position.z += 0.01F;
        evaluate_changes(net.view(), std::array{dragged}, side, side, vertices);
        benchmark::DoNotOptimize(vertices.data());
    }
}

/// A scene of 50 surfaces on the GL that is there.
class surfaces_t {
  public:
    bool make(bool different_knots) {
        static offscreen_context_t context;
        static const bool has_context = context.create();
        if (!has_context || !glpolygon.init(nullptr))
            return false;
        const ulk_test::net_t net = ulk_test::random_net(64, 4, 64, 4, different_knots);
        for (int n = 0; n < 50; ++n) {
            nurbs_t& nurbs = models.emplace_back(model_kind_t::nurbs).nurbs;
            if (!nurbs.allocate(64, 4, 64, 4))
                return false;
            nurbs.knot1 = net.knot1;
            nurbs.knot2 = net.knot2;
            nurbs.weight = net.weight;
            nurbs.points = net.points;
            nurbs.resolution1 = nurbs.resolution2 = side;
            if (!nurbs.afterload("surface"))
                return false;
        }
        update();
        return true;
    }
    void update() {
        for (model_entry_t& model : models)
            model.nurbs.update(glpolygon);
    }

    std::list<model_entry_t> models;
    glpolygon_t glpolygon;
};

template <class Work>
void time_on_surfaces(benchmark::State& state, Work&& work) {
    surfaces_t surfaces;
    if (!surfaces.make(state.range(0) != 0)) {
        state.SkipWithError("no GL context or no memory");
        return;
    }
    for (auto _ : state)
        work(surfaces);
}

void update_after_drag(benchmark::State& state) {
    time_on_surfaces(state, [](surfaces_t& surfaces) {
        surfaces.models.front().nurbs.points.data[dragged].position.z += 0.01F;
        surfaces.update();
    });
}

/// Of that, looking for what has changed.
void update_of_nothing(benchmark::State& state) {
    time_on_surfaces(state, [](surfaces_t& surfaces) { surfaces.update(); });
}

/// Of that, the frames of one surface on GL.
void update_of_frames(benchmark::State& state) {
    time_on_surfaces(state, [](surfaces_t& surfaces) {
        static_cast<void>(surfaces.glpolygon.update_frames(surfaces.models.front().polygon));
    });
}

void update_of_normals(benchmark::State& state) {
    std::vector<pos3> positions(side * side);
    std::vector<work_frame_t> frames(side * side);
    for (auto _ : state) {
        fill_work_frames(positions, side, side, frames);
        benchmark::DoNotOptimize(frames.data());
    }
}

BENCHMARK(evaluate_whole)->Name("nurbs_drag/evaluate_whole")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(evaluate_changed_point)
    ->Name("nurbs_drag/evaluate_changed_point")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(update_after_drag)->Name("nurbs_drag/update_50")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(update_of_nothing)->Name("nurbs_drag/update_50_unchanged")->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(update_of_frames)->Name("nurbs_drag/frames_on_gl")->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(update_of_normals)->Name("nurbs_drag/normals")->Arg(0)->Unit(benchmark::kMillisecond);

}  // namespace
