#pragma once

#include <GL/glew.h>

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iostream>

#include "app/editor/ulkedit.h"
#include "bench_context.h"
#include "render/gl/mapped_span.h"
#include "render/offscreen/offscreen_target.h"

namespace ulk_bench {

using namespace ulk3d;

inline constexpr int width = 1280, height = 960;

/// Sheets of four sizes, by the number of their triangles.
inline void four_sizes(benchmark::internal::Benchmark* each) {
    each->ArgName("triangles")
        ->Arg(10'000)
        ->Arg(100'000)
        ->Arg(1'000'000)
        ->Arg(4'000'000)
        ->Unit(benchmark::kMillisecond);
}

/// Where a corner of the sheet lies; `u` and `v` from 0 to 1.
inline vertex_t sheet_vertex(float u, float v) {
    const float x = 2 * u - 1, y = 2 * v - 1;
    return {{x, y, 0.2F * std::sin(5 * x) * std::cos(4 * y)}, {1, 1, 1, 1}, {}};
}

/// The quads along each side of a sheet of so many triangles.
inline std::uint32_t sheet_side(std::int64_t triangles) {
    return static_cast<std::uint32_t>(std::sqrt(static_cast<double>(triangles) / 2));
}

/// A wavy sheet with one long strip for each row of quads.
inline void sheet_in_strips(polygon_t& polygon, std::int64_t triangles) {
    const std::uint32_t side = sheet_side(triangles);
    const std::uint32_t row = side + 1;
    if (!polygon.allocate(std::uint64_t{row} * row, std::uint64_t{side} * (2 * row + 1)))
        std::exit(1);
    {
        const array_span<vertex_t> vertices(polygon.vertices);
        const array_span<frame_t> normals(polygon.normals);
        const auto steps = static_cast<float>(side);
        for (std::uint32_t i = 0; i < row * row; ++i) {
            vertices[i] =
                sheet_vertex(static_cast<float>(i % row) / steps, static_cast<float>(i / row) / steps);
            normals[i] = {};
        }
        const index_span elements(polygon.elements);
        std::size_t at = 0;
        for (std::uint32_t j = 0; j < side; ++j) {
            for (std::uint32_t i = 0; i < row; ++i) {
                elements[at++] = j * row + i;
                elements[at++] = (j + 1) * row + i;
            }
            elements[at++] = restart_mark;
        }
    }
    polygon.afterload("sheet");
}

/// The corners of a quad's two triangles, as steps to the right and up.
inline constexpr std::array<std::array<std::uint32_t, 2>, 6> sheet_corners{
    {{0, 0}, {0, 1}, {1, 0}, {0, 1}, {1, 1}, {1, 0}}};

/// The same sheet as it comes out of an STL file: three vertices and a strip of its own for each triangle.
inline void sheet_in_triangles(polygon_t& polygon, std::int64_t triangles) {
    const std::uint32_t side = sheet_side(triangles);
    const std::uint64_t count = std::uint64_t{2} * side * side;
    if (!polygon.allocate(3 * count, 4 * count))
        std::exit(1);
    {
        const array_span<vertex_t> vertices(polygon.vertices);
        const array_span<frame_t> normals(polygon.normals);
        const index_span elements(polygon.elements);
        const auto steps = static_cast<float>(side);
        std::uint32_t vertex = 0;
        std::size_t element = 0;
        for (std::uint32_t quad = 0; quad < side * side; ++quad)
            for (std::size_t i = 0; i < sheet_corners.size(); ++i) {
                const auto [right, up] = sheet_corners[i];
                vertices[vertex] = sheet_vertex(static_cast<float>(quad % side + right) / steps,
                                                static_cast<float>(quad / side + up) / steps);
                normals[vertex] = {};
                elements[element++] = vertex++;
                if (i % 3 == 2)
                    elements[element++] = restart_mark;
            }
    }
    polygon.afterload("sheet");
}

/// The scene editor with a sheet, all of whose points are visible in the perspective view, drawing into a
/// target of 1280 by 960 pixels of its own.
class stage_t {
  public:
    stage_t(void (*build)(polygon_t&, std::int64_t), std::int64_t triangles)
        : target((need_context(), width), height), editor("ulk_bench") {
        constexpr std::uint32_t key_return = 0xff0d;
        target.bind();
        editor.init();
        editor.reshape(width, height);
        editor.add_model(model_kind_t::polygon);
        build(editor.current_model()->polygon, triangles);
        editor.key_command(key_return);
        editor.display();
    }
    ~stage_t() { std::cout.clear(); }

    offscreen_target_t target;
    ulkedit_t editor;
};

}  // namespace ulk_bench
