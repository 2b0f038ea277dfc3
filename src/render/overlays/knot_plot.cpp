#include "render/overlays/knot_plot.h"

#include <GL/glew.h>

#include <algorithm>

#include "gltextures/gr_check_error.h"
#include "model/math/matrices.h"
#include "model/modeling.h"
#include "model/nurbs/basis.h"
#include "render/gl/mapped_span.h"
#include "render/shaders/build_program.h"
#include "render/shaders/shaders.h"
#include "utils/memory/memory_budget.h"

namespace ulk3d {

using libgr::grCheckError;
using libutils::fits_into_memory;
using libutils::size_product;
using libutils::size_sum;

namespace {

constexpr program_plan_t knot_plot_plan = {
    .vertex = {&shaders::selection_vsd, "selection.vsd: selection vertex shader init failed."},
    .fragment = {&shaders::selection_fsd, "selection.fsd: selection fragment shader init failed.",
                 "KnotDraw::init(2)"},
    .link_failure = "selection program link failed.",
};

constexpr col3a curve_color{0.5F, 0.5F, 0.5F, 1};

/// Writes one strip per function, each over as many vertices as the picture has columns.
void write_strips(std::span<std::uint32_t> indices, std::uint64_t width, std::uint64_t count) {
    std::uint32_t vertex = 0;
    auto index = indices.begin();
    for (std::uint64_t function = 0; function < count; ++function) {
        for (std::uint64_t x = 0; x < width; ++x)
            *index++ = vertex++;
        *index++ = restart_mark;
    }
}

}  // namespace

std::vector<control_point_t> knot_plot_samples(std::uint64_t width, std::uint64_t count, std::uint64_t order,
                                               std::span<const float> knots) {
    std::vector<control_point_t> samples(width * count);
    const knot_view_t view{knots.data()};
    const bool ascending = is_ascending(knots.size(), view);
    std::vector<float> values;
    for (std::uint64_t x = 0; x < width; ++x) {
        const float t = static_cast<float>(x) / static_cast<float>(width);
        for (std::uint64_t function = 0; function < count; ++function)
            samples[function * width + x] = {{2 * t - 1, 0, 0}, curve_color};
        values.clear();
        const basis_run_t run = basis_run(count, order, t, view, ascending, values);
        for (std::uint64_t i = 0; i < run.count; ++i)
            samples[(run.first + i) * width + x].position.y = values[run.values + i];
    }
    return samples;
}

void knot_plot_t::init(const char* base_directory) {
    grCheckError("KnotDraw::init(0)");
    glDisable(GL_DEPTH_TEST);
    glClearColor(0.18F, 0.18F, 0.18F, 1.0F);
    grCheckError("KnotDraw::init(1)");
    build_program(knot_plot_plan, {vertex, fragment, program}, base_directory);
    Modelview = program.uniform("Modelview");
    Projection = program.uniform("Projection");
    grCheckError("KnotDraw::init(3)");
}

void knot_plot_t::reshape(int width, int height, std::uint64_t count, std::uint64_t order,
                          std::span<const float> knots) {
    glViewport(0, 0, width, height);
    const auto columns = static_cast<std::uint64_t>(std::max(width, 0));
    const bool is_whole = knots.size() >= size_sum(count, order);
    const std::uint64_t bytes = size_product(size_product(columns + 1, count), sizeof(control_point_t));
    const std::uint64_t functions = is_whole && fits_into_memory(bytes) ? count : 0;
    const std::vector<control_point_t> samples = knot_plot_samples(columns, functions, order, knots);
    const auto index_count = static_cast<std::int64_t>(functions == 0 ? 0 : (columns + 1) * functions);
    // For no samples the pointer must be null, because a size of 0 stands for the whole store.
    const void* const source = samples.empty() ? nullptr : samples.data();
    const auto source_bytes = static_cast<std::int64_t>(samples.size() * sizeof(control_point_t));
    if (!array.allocate(static_cast<std::int64_t>(samples.size()), control_point_elements(), source,
                        source_bytes) ||
        !elements.allocate(index_count)) {
        elements.release();
        return;
    }
    if (!vertex_array)
        vertex_array = vertex_array_ref::make();
    vertex_array->allocate();
    array.bind_to(vertex_array, 0);
    const index_span indices(elements);
    if (indices)
        write_strips(indices.span(), columns, functions);
}

void knot_plot_t::draw() const {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    program.use();
    glUniformMatrix4fv(Modelview, 1, GL_TRUE, mtx_identity.m.data());
    glUniformMatrix4fv(Projection, 1, GL_TRUE, mtx_identity.m.data());
    glPrimitiveRestartIndex(restart_mark);
    glEnable(GL_PRIMITIVE_RESTART);
    elements.draw(vertex_array, GL_LINE_STRIP);
    glDisable(GL_PRIMITIVE_RESTART);
    program_t::unuse();
}

}  // namespace ulk3d
