#include <benchmark/benchmark.h>

#include <list>

#include "model/edit_history.h"
#include "model/vertex.h"
#include "render/offscreen/offscreen_context.h"
#include "support/points_model.h"

/// Recording and moving selected points; the argument is their number: the plain way, with a list node and a
/// read or write of the buffer for each point; the list with one mapping for each step; and the edit history.
/// The ratio of the times of two rows with the same argument is the speed-up.
namespace {

using namespace ulk3d;

bool make_context() {
    static offscreen_context_t context;
    static const bool is_made = context.create();
    return is_made;
}

bool fill(benchmark::State& state, ulk_test::points_model_t& model) {
    const auto count = static_cast<std::size_t>(state.range(0));
    if (!make_context() || !model.add(control_point_elements(), std::vector<float>(7 * count, 1.5F))) {
        state.SkipWithError("no GL context or no memory");
        return false;
    }
    model.selection.assign(count, true);
    return true;
}

void plain(benchmark::State& state) {
    ulk_test::points_model_t model;
    if (!fill(state, model))
        return;
    for (auto _ : state) {
        std::list<edit_point_t> points;
        for (std::uint64_t i = 0; i < model.selection.size(); ++i) {
            control_point_t point;
            model.arrays[0].read_one(static_cast<std::int64_t>(i), &point);
            const auto& [x, y, z] = point.position;
            points.push_back({{x, y, z, 0}, i});
        }
        for (const edit_point_t& recorded : points) {
            const auto index = static_cast<std::int64_t>(recorded.index);
            control_point_t point;
            model.arrays[0].read_one(index, &point);
            point.position = {recorded.value.x + 1, recorded.value.y, recorded.value.z};
            model.arrays[0].write_one(index, &point);
        }
    }
}

/// One mapping for each step, one list node for each point.
void listed(benchmark::State& state) {
    ulk_test::points_model_t model;
    if (!fill(state, model))
        return;
    for (auto _ : state) {
        std::list<edit_point_t> points;
        {
            const array_span<const control_point_t> mapped(model.arrays[0]);
            for (std::uint64_t i = 0; i < model.selection.size(); ++i)
                if (model.selection[i]) {
                    const auto& [x, y, z] = mapped[i].position;
                    points.push_back({{x, y, z, 0}, i});
                }
        }
        const array_span<control_point_t> mapped(model.arrays[0]);
        for (const auto& [value, index] : points)
            mapped[index].position = {value.x + 1, value.y, value.z};
        for (const auto& [value, index] : points)
            model.elementchanged(0, index);
        model.changes.clear();
    }
}

void fast(benchmark::State& state) {
    ulk_test::points_model_t model;
    if (!fill(state, model))
        return;
    model.changes.reserve(model.selection.size());
    for (auto _ : state) {
        edit_history_t history;
        history.open(0, 0, model);
        history.move(model, {1, 0, 0});
        model.changes.clear();
    }
}

BENCHMARK(plain)->Name("edit_history/plain")->Arg(1000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(listed)->Name("edit_history/listed")->Arg(1000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(fast)->Name("edit_history/fast")->Arg(1000)->Arg(1000000)->Unit(benchmark::kMicrosecond);

}  // namespace
