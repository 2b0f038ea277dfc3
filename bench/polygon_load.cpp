#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <vector>

#include "bench_context.h"
#include "model/math/vectors.h"
#include "model/polygon/polygon.h"
#include "model/polygon/strip_walk.h"
#include "render/gl/mapped_span.h"

namespace {

using namespace ulk3d;

constexpr std::uint32_t columns = 708;  // 707 rows of 1414 triangles: 999,698 of them

/// A wavy sheet of rows of strips. Every vertex has a zero normal.
void build_sheet(polygon_t& polygon) {
    const std::uint64_t strips = columns - 1;
    if (!polygon.allocate(std::uint64_t{columns} * columns, strips * (2 * columns + 1)))
        std::exit(1);
    const array_span<vertex_t> vertices(polygon.vertices);
    const index_span elements(polygon.elements);
    for (std::uint32_t row = 0; row < columns; ++row)
        for (std::uint32_t column = 0; column < columns; ++column) {
            const auto x = static_cast<float>(column);
            const auto y = static_cast<float>(row);
            vertices[row * columns + column] = {{x, y, static_cast<float>((row * column) % 7)}, {}, {}};
        }
    std::size_t next = 0;
    for (std::uint32_t row = 1; row < columns; ++row) {
        for (std::uint32_t column = 0; column < columns; ++column) {
            elements[next++] = row * columns + column;
            elements[next++] = (row - 1) * columns + column;
        }
        elements[next++] = restart_mark;
    }
}

void take_frames_away(polygon_t& polygon) {
    const array_span<frame_t> frames(polygon.normals);
    std::ranges::fill(frames.span(), frame_t{});
}

/// The steps in the most literal way: a lookup in the set for each id, and three indices written for each.
void load_plainly(polygon_t& polygon) {
    polygon.polyidvector = polygon_places_t(polygon.element_count() - 2);
    const array_span<vertex_t> vertices(polygon.vertices);
    const array_span<frame_t> frames(polygon.normals);
    const index_span elements(polygon.elements);
    const index_span selected(polygon.selectelems);
    walk_strips(elements.span(), vertices.size(), [&](const strip_triangle_t& t) {
        const bool is_selected = polygon.selectpolygons().contains(static_cast<std::uint32_t>(t.id));
        selected[3 * t.id] = is_selected ? t.a : restart_mark;
        selected[3 * t.id + 1] = is_selected ? t.b : restart_mark;
        selected[3 * t.id + 2] = is_selected ? t.c : restart_mark;
        polygon.polyidvector.number({t.position, t.flipped});
        if (frames[t.c].normal == dir3{}) {
            const pos3 &a = vertices[t.a].position, &b = vertices[t.b].position, &c = vertices[t.c].position;
            const dir3 normal = unit_face_normal(a, b, c);
            const dir3 tangent = normalize(b - c);
            frames[t.a] = frames[t.b] = frames[t.c] = {tangent, cross(normal, tangent), normal};
        }
    });
}

template <void (*load)(polygon_t&)>
void load_a_million_triangles(benchmark::State& state) {
    need_context();
    polygon_t polygon;
    build_sheet(polygon);
    for (std::uint32_t id = 0; id < 500'000; id += 5)
        if (state.range(0) != 0)
            polygon.selectpolygon(id);
    for (auto _ : state) {
        state.PauseTiming();
        if (state.range(1) != 0)
            take_frames_away(polygon);
        state.ResumeTiming();
        load(polygon);
    }
}

void load_fast(polygon_t& polygon) {
    polygon.afterload(nullptr);
}

BENCHMARK(load_a_million_triangles<load_plainly>)
    ->ArgNames({"selected", "frames"})
    ->Args({0, 0})
    ->Args({1, 0})
    ->Args({0, 1})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(load_a_million_triangles<load_fast>)
    ->ArgNames({"selected", "frames"})
    ->Args({0, 0})
    ->Args({1, 0})
    ->Args({0, 1})
    ->Unit(benchmark::kMillisecond);

}  // namespace
