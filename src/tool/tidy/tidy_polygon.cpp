#include "tool/tidy/tidy_polygon.h"

#include <algorithm>
#include <utility>

#include "model/try_allocate.h"
#include "render/gl/mapped_span.h"

namespace ulktool {

namespace {

using ulk3d::array_span;
using ulk3d::const_index_span;
using ulk3d::polygon_t;

constexpr const char* out_of_memory = "there is not enough memory";

/// Puts a mesh into an empty model. False when there is no memory for it.
bool fill(polygon_t& polygon, const ulk3d::strip_mesh_t& mesh, const std::string& name) {
    if (!polygon.allocate(mesh.vertices.size(), mesh.elements.size()))
        return false;
    {
        const array_span<ulk3d::vertex_t> vertices(polygon.vertices);
        const array_span<ulk3d::frame_t> frames(polygon.normals);
        const ulk3d::index_span elements(polygon.elements);
        if (vertices.size() != mesh.vertices.size() || frames.size() != mesh.frames.size() ||
            elements.size() != mesh.elements.size())
            return false;
        std::ranges::copy(mesh.vertices, vertices.begin());
        std::ranges::copy(mesh.frames, frames.begin());
        std::ranges::copy(mesh.elements, elements.begin());
    }
    return polygon.afterload(name.c_str());
}

/// The first half of the work, between mapping the buffers and unmapping them.
bool take(const polygon_t& polygon, const tidy_options_t& options, tidied_t& tidied, taken_mesh_t& taken) {
    const array_span<const ulk3d::vertex_t> vertices(polygon.vertices);
    const array_span<const ulk3d::frame_t> frames(polygon.normals);
    const const_index_span elements(polygon.elements);
    if (vertices.size() != polygon.vertex_count() || frames.size() != polygon.vertex_count() ||
        elements.size() != polygon.element_count())
        return false;
    const mesh_view_t mesh{vertices.span(), frames.span(), elements.span()};
    tidied.before = tidied.after = count_mesh(mesh);
    taken = take_mesh(mesh, options);
    if (taken.mesh.triangles.empty() && !take_mesh(mesh, {}).mesh.triangles.empty())
        tidied.failure = "no triangle would be left";
    return true;
}

void tidy(polygon_t& polygon, const tidy_options_t& options, tidied_t& tidied) {
    taken_mesh_t taken;
    if (!take(polygon, options, tidied, taken)) {
        tidied.failure = out_of_memory;
        return;
    }
    if (taken.mesh.triangles.empty())
        return;
    const std::string name = polygon.name;
    polygon.clear();
    const ulk3d::strip_mesh_t mesh = tidy_mesh(taken, options);
    if (!fill(polygon, mesh, name))
        tidied.failure = out_of_memory;
    tidied.after = count_mesh({mesh.vertices, mesh.frames, mesh.elements});
}

}  // namespace

tidied_t tidy_polygon(polygon_t& polygon, const tidy_options_t& options) {
    tidied_t tidied;
    if (!polygon.vertices.has_buffer())
        return tidied;
    if (!ulk3d::try_allocate([&] {
            tidy(polygon, options, tidied);
            return true;
        }))
        tidied.failure = out_of_memory;
    return tidied;
}

}  // namespace ulktool
