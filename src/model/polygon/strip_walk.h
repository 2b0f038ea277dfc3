#pragma once

#include <cstdint>
#include <span>

namespace ulk3d {

/// A triangle of a strip. `position` is the index in the element list of its first element (whose vertex is
/// `a`, or `b` when flipped); `number` counts the triangles of its strip, `id` those of all strips, from 0.
struct strip_triangle_t {
    std::uint32_t a, b, c;
    std::uint32_t position;
    std::uint32_t number;
    bool flipped;
    std::uint64_t id;
};

/// The one rule by which triangles are read from strips. Calls `visit(const strip_triangle_t&)` for each.
///
/// An index at or above `vertex_count` ends a strip. The n-th accepted index of a strip, n from 1, closes a
/// triangle for n >= 3: elements (i-2, i-1, i) for odd n, (i-1, i-2, i) for even n (`flipped`), so that all
/// triangles of a strip turn the same way. Worked example: 0 1 2 3 | 4 5 6, where | is the restart mark,
/// gives (0,1,2), (2,1,3), (4,5,6) with the ids 0, 1, 2 and the positions 0, 1, 5.
template <typename Visit>
void walk_strips(std::span<const std::uint32_t> elements, std::uint64_t vertex_count, Visit&& visit) {
    std::uint64_t accepted = 0;
    std::uint64_t id = 0;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (elements[i] >= vertex_count) {
            accepted = 0;
            continue;
        }
        if (++accepted < 3)
            continue;
        const bool flipped = accepted % 2 == 0;
        const std::uint32_t first = elements[i - 2];
        const std::uint32_t second = elements[i - 1];
        visit(strip_triangle_t{flipped ? second : first, flipped ? first : second, elements[i],
                               static_cast<std::uint32_t>(i - 2), static_cast<std::uint32_t>(accepted - 3),
                               flipped, id++});
    }
}

}  // namespace ulk3d
