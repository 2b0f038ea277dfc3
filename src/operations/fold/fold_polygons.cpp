#include "operations/fold/fold_polygons.h"

#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "model/math/rotations.h"
#include "model/math/vectors.h"
#include "operations/strips/separate_strips.h"

namespace ulk3d {

namespace {

/// For each vertex the slot of its copy; restart_mark for vertices that are not torn. A vertex is torn when
/// both a touched element and another one refer to it.
std::vector<std::uint32_t> tear_vertices(strip_mesh_t& mesh, std::span<const std::size_t> touched) {
    const std::size_t vertex_count = mesh.vertices.size();
    std::vector<std::uint32_t> uses(vertex_count), marked_uses(vertex_count);
    for (const std::uint32_t element : mesh.elements)
        if (element < vertex_count)
            ++uses[element];
    for (const std::size_t place : touched)
        ++marked_uses[mesh.elements[place]];

    std::vector<std::uint32_t> copies(vertex_count, restart_mark);
    std::size_t slot = 0;
    for (std::size_t vertex = 0; vertex < vertex_count; ++vertex) {
        const bool split = marked_uses[vertex] > 0 && marked_uses[vertex] < uses[vertex];
        if (!split)
            continue;
        while (slot < vertex_count && uses[slot] != 0)
            ++slot;
        if (slot >= mesh.vertices.size()) {
            mesh.vertices.resize(slot + 1);
            mesh.frames.resize(slot + 1);
        }
        mesh.vertices[slot] = mesh.vertices[vertex];
        mesh.frames[slot] = mesh.frames[vertex];
        copies[vertex] = static_cast<std::uint32_t>(slot++);
    }
    return copies;
}

/// Gives the touched triangles their own copies of the vertices that they share with others.
void tear_off(strip_mesh_t& mesh, std::span<const std::size_t> touched) {
    const std::vector<std::uint32_t> copies = tear_vertices(mesh, touched);
    for (const std::size_t place : touched) {
        std::uint32_t& element = mesh.elements[place];
        if (copies[element] != restart_mark)
            element = copies[element];
    }
}

dir3 turned(const dir3& v, const mtx3w& m) {
    const vec3w out = vec_times_mtx({v.x, v.y, v.z, 0}, m);
    return {out.x, out.y, out.z};
}

/// Turns, once, every vertex that a touched element refers to.
void turn(strip_mesh_t& mesh, std::span<const std::size_t> touched, const pos3& a, const pos3& b,
          float angle) {
    const dir3 from_origin = a - origin;
    // Directions turn without translation: it leaves the rotation part of the matrix as it is.
    const mtx3w about_axis =
        translation(-from_origin) * rot3_to_mtx({angle, b - a}) * translation(from_origin);
    std::vector<bool> is_turned(mesh.vertices.size());
    for (const std::size_t place : touched) {
        const std::uint32_t vertex = mesh.elements[place];
        if (is_turned[vertex])
            continue;
        is_turned[vertex] = true;
        pos3& position = mesh.vertices[vertex].position;
        position = transform_point(position, about_axis);
        frame_t& frame = mesh.frames[vertex];
        frame = {turned(frame.tangent, about_axis), turned(frame.binormal, about_axis),
                 turned(frame.normal, about_axis)};
    }
}

}  // namespace

bool fold_polygons(const std::set<std::uint32_t>& selected, const pos3& a, const pos3& b, float angle,
                   strip_mesh_t& mesh) {
    separated_strips_t separated = separate_strips(mesh.elements, mesh.vertices.size(), selected);
    mesh.elements = std::move(separated.elements);
    tear_off(mesh, separated.touched);
    turn(mesh, separated.touched, a, b, angle);
    return true;
}

bool fold_polygons(const std::set<std::uint32_t>& selected, const pos3& a, const pos3& b, float angle,
                   array_t& vertices, array_t& normals, element_array_t& elements) {
    std::optional<strip_mesh_t> mesh = read_strip_mesh(vertices, normals, elements);
    return mesh && fold_polygons(selected, a, b, angle, *mesh) &&
           write_strip_mesh(*mesh, vertices, normals, elements);
}

}  // namespace ulk3d
