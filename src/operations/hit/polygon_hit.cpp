#include "operations/hit/polygon_hit.h"

#include <optional>
#include <utility>
#include <vector>

#include "model/math/matrices.h"
#include "model/math/vectors.h"
#include "model/polygon/polygon.h"
#include "model/polygon/strip_walk.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {
namespace {

/// Bit k is set where a point is outside line k.
using outside_code_t = std::uint8_t;

constexpr pos3 project(const pos3& p, const mtx3w& m) {
    return dehomogenize(vec_times_mtx(homogenize(p), m));
}

/// The codes of up to `block_size` vertices. The coordinates are first copied into one array for each axis,
/// so that the compiler computes several vertices at once.
constexpr std::size_t block_size = 128;

void code_block(std::span<const vertex_t> vertices, const mtx3w& to_window, const edge_lines_t& window,
                outside_code_t* codes) {
    std::array<float, block_size> xs{}, ys{}, zs{};
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const pos3& p = vertices[i].position;
        xs[i] = p.x;
        ys[i] = p.y;
        zs[i] = p.z;
    }
    const mtx3w m = to_window;
    const edge_lines_t lines = window;
    std::array<std::uint32_t, block_size> wide{};
    for (std::size_t i = 0; i < block_size; ++i) {
        const pos3 p = project({xs[i], ys[i], zs[i]}, m);
        const auto bit = [&](std::size_t k) {
            return lines[k].a * p.x + lines[k].b * p.y + lines[k].c < 0 ? 1U << k : 0U;
        };
        wide[i] = bit(0) | bit(1) | bit(2) | bit(3);
    }
    for (std::size_t i = 0; i < vertices.size(); ++i)
        codes[i] = static_cast<outside_code_t>(wide[i]);
}

std::vector<outside_code_t> outside_codes(std::span<const vertex_t> vertices, const mtx3w& to_window,
                                          const edge_lines_t& lines) {
    std::vector<outside_code_t> codes(vertices.size());
    for (std::size_t first = 0; first < vertices.size(); first += block_size)
        code_block(vertices.subspan(first, std::min(block_size, vertices.size() - first)), to_window, lines,
                   codes.data() + first);
    return codes;
}

/// True when the first line that has a corner outside it has all three outside. The lines before it then pass
/// the triangle on unchanged, to the last bit, and this one leaves nothing of it, whatever its values are,
/// including infinities and not-a-numbers. Asking for any line with all corners outside would be wrong:
/// rounding, or an infinite corner, can move a crossing with an earlier line to its inner side.
bool leaves_nothing(outside_code_t a, outside_code_t b, outside_code_t c) {
    const unsigned any = static_cast<unsigned>(a | b | c);
    const unsigned all = static_cast<unsigned>(a & b & c);
    return (all & any & (~any + 1U)) != 0;
}

/// The nearest point offered so far, and its triangle.
class nearest_t {
  public:
    void offer(const pos3& point, const strip_triangle_t& triangle) {
        if (best && nearer_t()(best->depth, point.z))
            return;
        // Of equal depths the last record is kept under the first key: 0 and -0 are equal.
        const bool takes_key = !best || nearer_t()(point.z, best->depth);
        best = record_t{takes_key ? point.z : best->depth, point, triangle};
    }

    bool put_into(hit_map_t& hits, std::span<const vertex_t> vertices) const {
        if (!best)
            return false;
        const auto& [depth, point, triangle] = *best;
        hits[depth] = {{vertices[triangle.a], vertices[triangle.b], vertices[triangle.c]},
                       point,
                       static_cast<std::uint32_t>(triangle.id)};
        return true;
    }

  private:
    struct record_t {
        float depth;
        pos3 point;
        strip_triangle_t triangle;
    };
    std::optional<record_t> best;
};

/// Offers the corners of what clipping by the four lines leaves of a projected triangle.
void clip_and_offer(nearest_t& nearest, const std::array<pos3, 3>& corners, const strip_triangle_t& triangle,
                    const edge_lines_t& lines) {
    clip_polygon_t polygons[2];
    clip_polygon_t* polygon = &polygons[0];
    clip_polygon_t* clipped = &polygons[1];
    polygon->count = corners.size();
    std::ranges::copy(corners, polygon->positions.begin());
    for (const edge_line_t& line : lines) {
        clip_by_line(*clipped, *polygon, line);
        if (clipped->count == 0)
            return;
        std::swap(polygon, clipped);
    }
    for (std::size_t i = 0; i < polygon->count; ++i)
        nearest.offer(polygon->positions[i], triangle);
}

}  // namespace

bool polygon_hit(hit_map_t& hits, std::span<const vertex_t> vertices, std::span<const std::uint32_t> strips,
                 const edge_lines_t& lines, const mtx3w& perspective, const mtx3w& view) {
    if (strips.empty())
        return false;
    const mtx3w to_window = view * perspective;
    const std::vector<outside_code_t> codes = outside_codes(vertices, to_window, lines);
    nearest_t nearest;
    walk_strips(strips, vertices.size(), [&](const strip_triangle_t& triangle) {
        const auto [a, b, c] = std::array{triangle.a, triangle.b, triangle.c};
        if (leaves_nothing(codes[a], codes[b], codes[c]))
            return;
        clip_and_offer(nearest,
                       {project(vertices[a].position, to_window), project(vertices[b].position, to_window),
                        project(vertices[c].position, to_window)},
                       triangle, lines);
    });
    return nearest.put_into(hits, vertices);
}

bool polygon_hit(hit_map_t& hits, const polygon_t& polygon, const edge_lines_t& lines,
                 const mtx3w& perspective, const mtx3w& view) {
    const array_span<const vertex_t> vertices(polygon.vertices);
    const const_index_span strips(polygon.elements);
    return polygon_hit(hits, vertices.span(), strips.span(), lines, perspective, view);
}

}  // namespace ulk3d
