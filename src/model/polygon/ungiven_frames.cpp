#include "model/polygon/ungiven_frames.h"

#include <array>

#include "model/math/vectors.h"
#include "model/polygon/polygon.h"
#include "model/polygon/strip_walk.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {

namespace {

bool has_normal(const frame_t& frame) {
    return frame.normal != dir3{};
}

/// Calls `visit(corners, frame)` for each triangle: the indices of its vertices, and the frame of its plane.
template <class Visit>
void visit_triangle_frames(std::span<const std::uint32_t> elements, std::span<const vertex_t> vertices,
                           Visit&& visit) {
    walk_strips(elements, vertices.size(), [&](const strip_triangle_t& triangle) {
        visit(std::array{triangle.a, triangle.b, triangle.c},
              triangle_frame(vertices[triangle.a].position, vertices[triangle.b].position,
                             vertices[triangle.c].position));
    });
}

}  // namespace

frame_t triangle_frame(const pos3& a, const pos3& b, const pos3& c) {
    const dir3 normal = unit_face_normal(a, b, c);
    const dir3 tangent = normalize(b - c);
    return {tangent, cross(normal, tangent), normal};
}

std::vector<bool> ungiven_frames(const polygon_t& polygon) {
    const array_span<const vertex_t> vertices(polygon.vertices);
    const array_span<const frame_t> frames(polygon.normals);
    const const_index_span elements(polygon.elements);
    if (vertices.size() != frames.size() || elements.size() != polygon.element_count())
        return {};
    std::vector<bool> ungiven(frames.size());
    for (std::size_t i = 0; i < frames.size(); ++i)
        ungiven[i] = !has_normal(frames[i]) || frames[i] == new_vertex_frame;
    visit_triangle_frames(elements.span(), vertices.span(), [&](const auto& corners, const frame_t& frame) {
        for (const std::uint32_t corner : corners)
            if (frames[corner] == frame)
                ungiven[corner] = true;
    });
    return ungiven;
}

bool make_frames(polygon_t& polygon, const std::vector<bool>& ungiven) {
    const array_span<const vertex_t> vertices(polygon.vertices);
    const array_span<frame_t> frames(polygon.normals);
    const const_index_span elements(polygon.elements);
    if (vertices.size() != ungiven.size() || frames.size() != ungiven.size() ||
        elements.size() != polygon.element_count())
        return false;
    for (std::size_t i = 0; i < frames.size(); ++i)
        if (ungiven[i])
            frames[i] = new_vertex_frame;
    visit_triangle_frames(elements.span(), vertices.span(), [&](const auto& corners, const frame_t& frame) {
        for (const std::uint32_t corner : corners)
            if (ungiven[corner] && has_normal(frame))
                frames[corner] = frame;
    });
    return true;
}

}  // namespace ulk3d
