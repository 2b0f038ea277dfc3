#include "operations/hit/clip_polygon.h"

#include <algorithm>

#include "model/math/vectors.h"

namespace ulk3d {
namespace {

clip_vertex_t corner(const clip_polygon_t& polygon, std::size_t i) {
    return {polygon.positions[i], polygon.attributes[i]};
}

void append(clip_polygon_t& polygon, const clip_vertex_t& vertex) {
    if (polygon.count >= clip_places)
        return;
    polygon.positions[polygon.count] = vertex.position;
    polygon.attributes[polygon.count] = vertex.attribute;
    ++polygon.count;
}

vec3w interpolate(const vec3w& start, const vec3w& end, float f) {
    return {start.x + (end.x - start.x) * f, start.y + (end.y - start.y) * f, start.z + (end.z - start.z) * f,
            start.w + (end.w - start.w) * f};
}

clip_vertex_t crossing(const clip_vertex_t& inside, const clip_vertex_t& outside, float f) {
    return {inside.position + (outside.position - inside.position) * f,
            interpolate(inside.attribute, outside.attribute, f)};
}

}  // namespace

void clip_by_line(clip_polygon_t& out, const clip_polygon_t& in, const edge_line_t& line) {
    out.count = 0;
    const std::size_t count = std::min<std::uint64_t>(in.count, clip_places);
    std::array<float, clip_places> values{};
    for (std::size_t i = 0; i < count; ++i)
        values[i] = line.a * in.positions[i].x + line.b * in.positions[i].y + line.c;

    const auto is_outside = [&values](std::size_t i) { return values[i] < 0; };
    const auto append_crossing = [&](std::size_t inside, std::size_t outside) {
        const float f = values[inside] / (values[inside] - values[outside]);
        append(out, crossing(corner(in, inside), corner(in, outside), f));
    };
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t j = i + 1 == count ? 0 : i + 1;
        if (!is_outside(i)) {
            append(out, corner(in, i));
            if (is_outside(j))
                append_crossing(i, j);
        } else if (!is_outside(j)) {
            append_crossing(j, i);
        }
    }
}

}  // namespace ulk3d
