#include "render/overlays/grid.h"

#include <GL/glew.h>

#include <array>
#include <iostream>
#include <vector>

#include "render/gl/program.h"
#include "render/gl/shader.h"
#include "render/overlays/grid_lines.h"
#include "render/shaders/build_program.h"
#include "render/shaders/shaders.h"

namespace ulk3d {

namespace {

constexpr program_plan_t grid_plan = {
    .vertex = {&shaders::selection_vsd, "selection vertex shader init failed."},
    .fragment = {&shaders::selection_fsd, "selection fragment shader init failed."},
    .link_failure = "program link failed.",
};

/// The program that all grids share.
struct grid_program_t {
    shader_t vertex;
    shader_t fragment;
    program_t program;
    GLint Modelview = -1;
    GLint Projection = -1;
    std::uint32_t inits = 0;
};
grid_program_t shared;

const element_list_t& grid_elements() {
    static const element_list_t list = make_element_list({e_type_t::Position, e_type_t::RGBA});
    return list;
}

bool allocate(array_t& array, const std::vector<line_vertex_t>& lines, const char* message) {
    const void* const content = lines.empty() ? nullptr : lines.data();
    const std::size_t bytes = lines.size() * sizeof(line_vertex_t);
    if (array.allocate(static_cast<std::int64_t>(lines.size()), grid_elements(), content,
                       static_cast<std::int64_t>(bytes)))
        return true;
    std::cerr << message << std::endl;
    return false;
}

void draw_lines(const vertex_array_ref& vertex_array, const array_t& array, const mtx3w& projection_matrix,
                const mtx3w& modelview_matrix) {
    shared.program.use();
    glUniformMatrix4fv(shared.Modelview, 1, GL_TRUE, modelview_matrix.m.data());
    glUniformMatrix4fv(shared.Projection, 1, GL_TRUE, projection_matrix.m.data());
    draw(vertex_array, GL_LINES, array.element_count());
    program_t::unuse();
}

}  // namespace

bool grid_t::init(const char* base_directory) {
    if (shared.inits++ != 0)
        return true;
    build_program(grid_plan, {shared.vertex, shared.fragment, shared.program}, base_directory);
    shared.Modelview = shared.program.uniform("Modelview");
    shared.Projection = shared.program.uniform("Projection");
    return true;
}

void grid_t::set_size(float view_width, float view_height) {
    width = view_width;
    height = view_height;
}

bool grid_t::rebuild(const mtx3w& front_inverse, const mtx3w& side_inverse, const mtx3w& top_inverse) {
    const double aspect = static_cast<double>(width) / static_cast<double>(height);
    const grid_axes_t axes = grid_axes(aspect, front_inverse, side_inverse, top_inverse);
    const std::vector<line_vertex_t> xy = grid_lines_xy(axes);
    const std::vector<line_vertex_t> xz = grid_lines_xz(axes);
    const std::vector<line_vertex_t> zy = grid_lines_zy(axes);

    if (!allocate(array_xy, xy, "array_xy: can't allocate()") ||
        !allocate(array_xz, xz, "array_xz: can't allocate()") ||
        !allocate(array_zy, zy, "array_zy: can't allocate()"))
        return false;
    for (vertex_array_ref* const vertex_array : {&vertex_xy, &vertex_xz, &vertex_zy}) {
        if (!*vertex_array)
            *vertex_array = vertex_array_ref::make();
        (*vertex_array)->allocate();
    }
    array_xy.bind_to(vertex_xy, 0);
    array_xz.bind_to(vertex_xz, 0);
    array_zy.bind_to(vertex_zy, 0);
    return true;
}

void grid_t::draw_xy(const mtx3w& Projection, const mtx3w& Modelview) const {
    draw_lines(vertex_xy, array_xy, Projection, Modelview);
}

void grid_t::draw_xz(const mtx3w& Projection, const mtx3w& Modelview) const {
    draw_lines(vertex_xz, array_xz, Projection, Modelview);
}

void grid_t::draw_zy(const mtx3w& Projection, const mtx3w& Modelview) const {
    draw_lines(vertex_zy, array_zy, Projection, Modelview);
}

}  // namespace ulk3d
