#include "operations/cut/walls/patched_mesh.h"

#include <utility>

#include "operations/strips/separate_strips.h"

namespace ulk3d {

patched_mesh_t::patched_mesh_t(strip_mesh_t& patched)
    : mesh(patched),
      triangles(triangles_of(patched)),
      places(places_of(patched.vertices)),
      strip_triangles(triangles.size()) {}

std::uint32_t patched_mesh_t::add_vertex(std::uint32_t place, std::uint32_t from, std::uint32_t to, float t) {
    vertex_t vertex = mesh.vertices[from] * (1 - t) + mesh.vertices[to] * t;
    vertex.position = position_of(place);
    const auto number = static_cast<std::uint32_t>(mesh.vertices.size());
    mesh.vertices.push_back(vertex);
    mesh.frames.push_back(mesh.frames[from] * (1 - t) + mesh.frames[to] * t);
    places.push_back(place);
    return number;
}

std::uint32_t patched_mesh_t::add_triangle(const triangle_vertices_t& triangle) {
    triangles.push_back(triangle);
    return static_cast<std::uint32_t>(triangles.size() - 1);
}

void patched_mesh_t::take_out(std::uint32_t number) {
    triangles[number] = {};
    if (number < strip_triangles)
        taken_out.insert(number);
}

void patched_mesh_t::write_strips() {
    std::vector<std::uint32_t> elements;
    const auto append = [&](std::uint32_t element) {
        const bool is_idle_mark = element == restart_mark && (elements.empty() || elements.back() == element);
        if (!is_idle_mark)
            elements.push_back(element);
    };
    separated_strips_t strips = separate_strips(mesh.elements, mesh.vertices.size(), taken_out);
    for (const std::size_t place : strips.touched)
        strips.elements[place] = restart_mark;
    for (const std::uint32_t element : strips.elements)
        append(element);
    for (std::size_t n = strip_triangles; n < triangles.size(); ++n) {
        if (triangles[n] == triangle_vertices_t{})
            continue;
        append(restart_mark);
        for (const std::uint32_t vertex : triangles[n])
            append(vertex);
    }
    if (!elements.empty() && elements.back() == restart_mark)
        elements.pop_back();
    mesh.elements = std::move(elements);
}

}  // namespace ulk3d
