#include "tool/tidy/strips.h"

#include <meshoptimizer.h>

#include <algorithm>
#include <utility>

#include "model/polygon/strip_walk.h"
#include "render/gl/element_array.h"

namespace ulktool {

namespace {

using ulk3d::strip_triangle_t;

bool is_empty(const strip_triangle_t& triangle) {
    return triangle.a == triangle.b || triangle.b == triangle.c || triangle.c == triangle.a;
}

/// Strips to which others are added.
class strip_list_t {
  public:
    void add(std::span<const std::uint32_t> strip) {
        if (!elements.empty())
            elements.push_back(ulk3d::restart_mark);
        elements.insert(elements.end(), strip.begin(), strip.end());
    }

    /// Adds a part of a strip, the first triangle of which is flipped in that strip.
    void add_flipped(std::span<const std::uint32_t> part) {
        if (part.size() % 2 == 1) {
            add(part);
            std::reverse(elements.end() - static_cast<std::ptrdiff_t>(part.size()), elements.end());
            return;
        }
        add(std::array{part[1], part[0], part[2]});
        if (part.size() > 3)
            add(part.subspan(1));
    }

    std::vector<std::uint32_t> elements;
};

/// The library joins parts of strips by empty triangles. This divides them there.
std::vector<std::uint32_t> divided(std::span<const std::uint32_t> joined, std::size_t vertex_count) {
    strip_list_t list;
    list.elements.reserve(joined.size());
    std::size_t begin = 0, end = 0;  // of a part without empty triangles
    bool is_flipped = false;         // its first triangle
    const auto add_part = [&] {
        if (begin == end)
            return;
        const auto part = joined.subspan(begin, end - begin);
        is_flipped ? list.add_flipped(part) : list.add(part);
    };
    ulk3d::walk_strips(joined, vertex_count, [&](const strip_triangle_t& triangle) {
        if (is_empty(triangle))
            return;
        if (begin == end || triangle.position + 2 != end) {
            add_part();
            begin = triangle.position;
            is_flipped = triangle.flipped;
        }
        end = triangle.position + 3;
    });
    add_part();
    return std::move(list.elements);
}

std::vector<triangle_corners_t> triangles_of(std::span<const std::uint32_t> strips,
                                             std::size_t vertex_count) {
    std::vector<triangle_corners_t> triangles;
    ulk3d::walk_strips(strips, vertex_count, [&](const strip_triangle_t& triangle) {
        triangles.push_back({triangle.a, triangle.b, triangle.c});
    });
    return triangles;
}

/// The strips that the library makes of triangles, which it sorts first.
std::vector<triangle_corners_t> in_library_order(std::vector<triangle_corners_t>&& triangles,
                                                 std::size_t vertex_count) {
    if (triangles.empty())
        return {};
    sort_triangles(triangles);
    const std::span<const std::uint32_t> indices = indices_of(triangles);
    std::vector<std::uint32_t> ordered(indices.size());
    meshopt_optimizeVertexCacheStrip(ordered.data(), indices.data(), indices.size(), vertex_count);
    std::vector<std::uint32_t> strips(meshopt_stripifyBound(ordered.size()));
    strips.resize(
        meshopt_stripify(strips.data(), ordered.data(), ordered.size(), vertex_count, ulk3d::restart_mark));
    return triangles_of(divided(strips, vertex_count), vertex_count);
}

}  // namespace

std::vector<std::uint32_t> join_strips(std::span<const triangle_corners_t> triangles) {
    std::vector<std::uint32_t> strips;
    std::size_t length = 0;  // of the last strip
    for (const triangle_corners_t& corners : triangles) {
        // The edge at which the strip goes on, in the direction that it has in the next triangle.
        std::uint32_t from = length == 0 ? no_vertex : strips[strips.size() - 2];
        std::uint32_t to = length == 0 ? no_vertex : strips.back();
        if (length % 2 == 1)
            std::swap(from, to);
        const auto first = std::ranges::find(corners, from) - corners.begin();
        if (first < 3 && corners[static_cast<std::size_t>(first + 1) % 3] == to) {
            strips.push_back(corners[static_cast<std::size_t>(first + 2) % 3]);
            ++length;
            continue;
        }
        if (!strips.empty())
            strips.push_back(ulk3d::restart_mark);
        strips.insert(strips.end(), corners.begin(), corners.end());
        length = 3;
    }
    return strips;
}

std::vector<std::uint32_t> make_strips(std::vector<triangle_corners_t>& triangles, std::size_t vertex_count) {
    std::vector<std::uint32_t> present = join_strips(triangles);
    std::vector<std::uint32_t> made = join_strips(in_library_order(std::move(triangles), vertex_count));
    return made.size() < present.size() ? made : present;
}

}  // namespace ulktool
