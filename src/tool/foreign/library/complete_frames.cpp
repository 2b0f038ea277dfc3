#include "tool/foreign/library/complete_frames.h"

#include <cmath>

#include "model/math/vectors.h"
#include "model/polygon/strip_walk.h"

namespace ulktool {

using ulk3d::dir3;
using ulk3d::frame_t;
using ulk3d::vertex_t;

namespace {

/// Adds the directions of a triangle's map to the frames of its corners, by the triangle's size.
void add_directions(const ulk3d::strip_triangle_t& triangle, std::span<const vertex_t> vertices,
                    std::span<frame_t> frames) {
    const vertex_t &a = vertices[triangle.a], &b = vertices[triangle.b], &c = vertices[triangle.c];
    const dir3 first = b.position - a.position, second = c.position - a.position;
    const float u1 = b.texcoord.s - a.texcoord.s, v1 = b.texcoord.t - a.texcoord.t;
    const float u2 = c.texcoord.s - a.texcoord.s, v2 = c.texcoord.t - a.texcoord.t;
    const float side = u1 * v2 - u2 * v1 < 0 ? -1.0F : 1.0F;
    const dir3 along_u = (first * v2 - second * v1) * side;
    const dir3 along_v = (second * u1 - first * u2) * side;
    for (const std::uint32_t corner : {triangle.a, triangle.b, triangle.c}) {
        frames[corner].tangent = frames[corner].tangent + along_u;
        frames[corner].binormal = frames[corner].binormal + along_v;
    }
}

/// The part of a direction that is square to a unit normal, with length 1; zero when there is none.
dir3 square_to(const dir3& normal, const dir3& direction) {
    const dir3 part = direction - normal * dot(normal, direction);
    const float size = length(part);
    return std::isfinite(size) && size > 1e-6F * length(direction) ? part * (1 / size) : dir3{};
}

/// A direction that is not along the normal.
dir3 other_direction(const dir3& normal) {
    return std::abs(normal.x) < 0.75F ? dir3{1, 0, 0} : dir3{0, 1, 0};
}

void square_up(frame_t& frame) {
    dir3 tangent = square_to(frame.normal, frame.tangent);
    if (tangent == dir3{})
        tangent = square_to(frame.normal, other_direction(frame.normal));
    const dir3 binormal = cross(frame.normal, tangent);
    const bool is_mirrored = dot(binormal, frame.binormal) < 0;
    frame = {tangent, is_mirrored ? binormal * -1.0F : binormal, frame.normal};
}

}  // namespace

void complete_frames(std::span<const vertex_t> vertices, std::span<frame_t> frames,
                     std::span<const std::uint32_t> elements) {
    ulk3d::walk_strips(elements, vertices.size(), [&](const ulk3d::strip_triangle_t& triangle) {
        add_directions(triangle, vertices, frames);
    });
    for (frame_t& frame : frames) {
        if (frame.normal == dir3{})
            frame = {};
        else
            square_up(frame);
    }
}

}  // namespace ulktool
