#include "model/polygon/unset_frames.h"

#include <array>

#include "model/math/vectors.h"
#include "model/polygon/polygon.h"
#include "model/polygon/strip_walk.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {

frame_t triangle_frame(const pos3& a, const pos3& b, const pos3& c) {
    const dir3 normal = unit_face_normal(a, b, c);
    const dir3 tangent = normalize(b - c);
    return {tangent, cross(normal, tangent), normal};
}

bool make_unset_frames(polygon_t& polygon) {
    const array_span<const vertex_t> vertices(polygon.vertices);
    const array_span<frame_t> frames(polygon.normals);
    const const_index_span elements(polygon.elements);
    if (vertices.size() != polygon.vertex_count() || frames.size() != polygon.vertex_count() ||
        elements.size() != polygon.element_count())
        return false;
    std::vector<bool> unset = polygon.unset_frames;
    unset.resize(frames.size());
    for (std::size_t i = 0; i < frames.size(); ++i)
        if (unset[i])
            frames[i] = new_vertex_frame;
    walk_strips(elements.span(), vertices.size(), [&](const strip_triangle_t& triangle) {
        const frame_t frame = triangle_frame(vertices[triangle.a].position, vertices[triangle.b].position,
                                             vertices[triangle.c].position);
        if (frame.normal == dir3{})
            return;
        for (const std::uint32_t corner : {triangle.a, triangle.b, triangle.c})
            if (unset[corner])
                frames[corner] = frame;
    });
    return true;
}

}  // namespace ulk3d
