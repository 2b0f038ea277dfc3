#include "render/overlays/drawline.h"

#include <GL/glew.h>

#include <array>
#include <iostream>

#include "model/math/matrices.h"
#include "render/gl/mapped_span.h"
#include "render/overlays/line_vertex.h"
#include "render/shaders/build_program.h"
#include "render/shaders/shaders.h"

namespace ulk3d {

namespace {

constexpr std::int64_t most_vertices = 8;
constexpr col3a band_color{0, 1, 0, 1};
constexpr col3a line_color{1, 1, 1, 1};

constexpr program_plan_t drawline_plan = {
    .vertex = {&shaders::drawline_vsd, "drawline.vsd: drawline vertex shader init failed."},
    .fragment = {&shaders::drawline_fsd, "drawline.fsd: drawline fragment shader init failed."},
    .link_failure = "program link failed.",
};

const element_list_t& drawline_elements() {
    static const element_list_t list = make_element_list({e_type_t::Position, e_type_t::RGBA});
    return list;
}

}  // namespace

bool drawline_t::init(const char* base_directory) {
    build_program(drawline_plan, {vertex, fragment, program}, base_directory);
    Modelview = program.uniform("Modelview");
    Projection = program.uniform("Projection");

    // The content has the store made here, so that a lack of memory shows once and not in each frame.
    constexpr std::array<line_vertex_t, most_vertices> nothing{};
    if (!vertices.allocate(most_vertices, drawline_elements(), nothing.data())) {
        std::cerr << "drawline vertices.allocate() failed." << std::endl;
        return false;
    }
    if (!array)
        array = vertex_array_ref::make();
    array->allocate();
    vertices.bind_to(array, 0);
    return true;
}

bool drawline_t::take_vertices(std::int64_t count) {
    if (vertices.extend(count))
        return true;
    std::cerr << "drawline vertices.extend() failed." << std::endl;
    return false;
}

void drawline_t::set_matrices(const mtx3w& projection_matrix, const mtx3w& modelview_matrix) const {
    program.use();
    glUniformMatrix4fv(Modelview, 1, GL_TRUE, modelview_matrix.m.data());
    glUniformMatrix4fv(Projection, 1, GL_TRUE, projection_matrix.m.data());
    program_t::unuse();
}

void drawline_t::band(std::span<const float, 16> points) {
    if (!take_vertices(8))
        return;
    set_matrices(mtx_identity, mtx_identity);
    const array_span<line_vertex_t> batch(vertices);
    for (std::size_t i = 0; i < batch.size(); ++i)
        batch[i] = {{points[2 * i], points[2 * i + 1], 0}, band_color};
}

void drawline_t::line(const pos3& from, const pos3& to, const mtx3w& projection_matrix,
                      const mtx3w& modelview_matrix) {
    if (!take_vertices(2))
        return;
    set_matrices(projection_matrix, modelview_matrix);
    const array_span<line_vertex_t> batch(vertices);
    if (batch.size() != 2)
        return;
    batch[0] = {from, line_color};
    batch[1] = {to, line_color};
}

void drawline_t::draw() const {
    program.use();
    ulk3d::draw(array, GL_LINES, vertices.element_count());
    program_t::unuse();
}

}  // namespace ulk3d
