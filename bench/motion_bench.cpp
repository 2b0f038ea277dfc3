#include <GL/glew.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <iostream>

#include "sheet_stage.h"

/// What one mouse event costs, by the number of triangles of the wavy sheet that is the only model in the
/// scene. One frame of the screen is 16 ms.
namespace {

using namespace ulk_bench;

struct place_t {
    int x, y;
};
/// Two places near the middle of the perspective view: the events alternate between them.
constexpr place_t places[] = {{960, 240}, {968, 246}};
/// The same in the front view.
constexpr place_t front_places[] = {{320, 720}, {328, 726}};

/// Motion with a button held down; an event counts as finished when GL has done all of its work.
void run_motions(benchmark::State& state, stage_t& stage, const place_t (&between)[2]) {
    stage.editor.mouse_button(left_button, false, between[0].x, between[0].y);
    std::size_t event = 0;
    for (auto _ : state) {
        const auto [x, y] = between[++event % 2];
        benchmark::DoNotOptimize(stage.editor.mouse_motion(x, y));
        glFinish();
    }
    stage.editor.mouse_button(left_button, true, between[0].x, between[0].y);
    state.counters["points"] = static_cast<double>(stage.editor.current_model()->polygon.vertex_count());
}

void motion_picks_points(benchmark::State& state) {
    stage_t stage(sheet_in_strips, state.range(0));
    run_motions(state, stage, places);
}

void motion_picks_points_in_front(benchmark::State& state) {
    stage_t stage(sheet_in_strips, state.range(0));
    run_motions(state, stage, front_places);
}

/// Every event hits all points of the model, none of them selected: the most that a pick can be asked for.
void motion_marks_all_points(benchmark::State& state) {
    stage_t stage(sheet_in_strips, state.range(0));
    stage.editor.press_modifier(modifier_alt, modifier_alt);
    for (int notch = 0; notch < 100; ++notch)
        stage.editor.mouse_wheel(-1, front_places[0].x, front_places[0].y);
    stage.editor.release_key(modifier_alt);
    polygon_t& polygon = stage.editor.current_model()->polygon;
    stage.editor.mouse_button(left_button, false, 320, 719);
    for (auto _ : state) {
        state.PauseTiming();
        polygon.clearselection();
        state.ResumeTiming();
        benchmark::DoNotOptimize(stage.editor.mouse_motion(320, 719));
        glFinish();
    }
    state.counters["marked"] = static_cast<double>(std::ranges::count(polygon.selection, true));
}

void motion_picks_polygons(benchmark::State& state) {
    stage_t stage(sheet_in_strips, state.range(0));
    stage.editor.set_mode(operation_mode_t::clipping);
    // Printing the reports is not what is measured.
    std::cout.setstate(std::ios::failbit);
    run_motions(state, stage, places);
}

/// A brush drawn across the sheet in a thousand motions, none of which is left out, with a frame at the end:
/// the queue of events has to drain faster than a hand fills it.
void stroke_of_a_brush(benchmark::State& state) {
    constexpr int motions = 1000;
    stage_t stage(sheet_in_strips, state.range(0));
    stage.editor.set_mode(operation_mode_t::clipping);
    std::cout.setstate(std::ios::failbit);
    const auto [x, y] = places[0];
    for (auto _ : state) {
        stage.editor.mouse_button(left_button, false, x, y);
        for (int i = 0; i < motions; ++i)
            benchmark::DoNotOptimize(stage.editor.mouse_motion(x + i % 100 - 50, y + i / 100));
        stage.editor.mouse_button(left_button, true, x, y);
        stage.editor.display();
        glFinish();
        stage.editor.scene().clear_polygons();
    }
    state.SetItemsProcessed(state.iterations() * motions);
}

/// All points are selected and follow the mouse.
void motion_drags_points(benchmark::State& state) {
    stage_t stage(sheet_in_strips, state.range(0));
    modeling_t& model = stage.editor.current_model()->polygon;
    model.selection.assign(model.selection.size(), true);
    stage.editor.press_modifier(modifier_shift, modifier_shift);
    run_motions(state, stage, places);
}

/// The press that takes hold of the surface under the pointer.
void press_of_the_camera(benchmark::State& state) {
    stage_t stage(sheet_in_strips, state.range(0));
    stage.editor.press_modifier(modifier_alt, modifier_alt);
    for (auto _ : state) {
        stage.editor.mouse_button(left_button, false, places[0].x, places[0].y);
        stage.editor.mouse_button(left_button, true, places[0].x, places[0].y);
    }
}

void sizes(benchmark::internal::Benchmark* each) {
    // The calling thread sleeps while the driver's own threads draw, so wall clock time is what a user waits.
    each->ArgName("triangles")
        ->Arg(1'000)
        ->Arg(100'000)
        ->Arg(1'000'000)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

BENCHMARK(motion_picks_points)->Apply(sizes);
BENCHMARK(motion_picks_points_in_front)->Apply(sizes);
BENCHMARK(motion_marks_all_points)->Apply(sizes);
BENCHMARK(motion_picks_polygons)->Apply(sizes);
BENCHMARK(stroke_of_a_brush)->Apply(sizes);
BENCHMARK(motion_drags_points)->Apply(sizes);
BENCHMARK(press_of_the_camera)->Apply(sizes);

}  // namespace
