#include <benchmark/benchmark.h>

#include <cstdlib>

#include "render/models/glnurbs.h"
#include "render/models/glpolygon.h"
#include "sheet_stage.h"

/// What a frame of all four views costs, and what its parts do, by the number of triangles of the wavy sheet
/// that is the only model: in strips as long as the sheet, and with three vertices and a strip for each
/// triangle as STL files have it.
namespace {

using namespace ulk_bench;

template <class Draw>
void time_draws(benchmark::State& state, Draw&& draw) {
    for (auto _ : state) {
        draw();
        glFinish();
    }
}

template <auto build>
void frame(benchmark::State& state) {
    stage_t stage(build, state.range(0));
    time_draws(state, [&] { stage.editor.display(); });
}

/// The surface alone, in the perspective view.
template <auto build>
void surface(benchmark::State& state) {
    stage_t stage(build, state.range(0));
    const viewport_t area = stage.editor.layout().perspective();
    const camera_t& camera = stage.editor.camera();
    model_entry_t& model = *stage.editor.current_model();
    time_draws(state, [&] {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glViewport(area.x, area.y, area.width, area.height);
        glEnable(GL_DEPTH_TEST);
        stage.editor.view().glpolygon.drawsolid(stage.editor.environment(), false, model.texture,
                                                model.polygon,
                                                {.Globalview = mtx_identity,
                                                 .Modelview = camera.view.matrix,
                                                 .invModelview = camera.view.inverse,
                                                 .Projection = camera.perspective.matrix,
                                                 .LightPosition = {}});
        glDisable(GL_DEPTH_TEST);
    });
}

/// The points alone, in one view.
void draw_points(benchmark::State& state, stage_t& stage, const viewport_t& area, const mtx3w& projection,
                 const mtx3w& view) {
    glnurbs_t glnurbs;
    if (!glnurbs.init(nullptr))
        std::exit(1);
    model_entry_t& model = *stage.editor.current_model();
    time_draws(state, [&] {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glViewport(area.x, area.y, area.width, area.height);
        glnurbs.draw_points(model.polygon, projection, view);
    });
}

template <auto build>
void points_in_perspective(benchmark::State& state) {
    stage_t stage(build, state.range(0));
    const camera_t& camera = stage.editor.camera();
    draw_points(state, stage, stage.editor.layout().perspective(), camera.perspective.matrix,
                camera.view.matrix);
}

template <auto build>
void points_in_front(benchmark::State& state) {
    stage_t stage(build, state.range(0));
    const camera_t& camera = stage.editor.camera();
    draw_points(state, stage, stage.editor.layout().front(), camera.ortho.matrix, camera.front.matrix);
}

/// Of that, what comes before the rasterizer.
template <auto build>
void points_without_pixels(benchmark::State& state) {
    need_context();
    glEnable(GL_RASTERIZER_DISCARD);
    points_in_front<build>(state);
    glDisable(GL_RASTERIZER_DISCARD);
}

void sizes(benchmark::internal::Benchmark* each) {
    four_sizes(each);
    // The calling thread sleeps while the driver's own threads draw, so wall clock time is what a user waits.
    each->UseRealTime();
}

BENCHMARK(frame<sheet_in_strips>)->Name("frame/strips")->Apply(sizes);
BENCHMARK(frame<sheet_in_triangles>)->Name("frame/stl")->Apply(sizes);
BENCHMARK(surface<sheet_in_strips>)->Name("frame_surface/strips")->Apply(sizes);
BENCHMARK(surface<sheet_in_triangles>)->Name("frame_surface/stl")->Apply(sizes);
BENCHMARK(points_in_perspective<sheet_in_strips>)->Name("frame_points_perspective/strips")->Apply(sizes);
BENCHMARK(points_in_perspective<sheet_in_triangles>)->Name("frame_points_perspective/stl")->Apply(sizes);
BENCHMARK(points_in_front<sheet_in_triangles>)->Name("frame_points_front/stl")->Apply(sizes);
BENCHMARK(points_without_pixels<sheet_in_triangles>)->Name("frame_points_discarded/stl")->Apply(sizes);

}  // namespace
