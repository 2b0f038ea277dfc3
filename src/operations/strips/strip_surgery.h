#pragma once

#include <cstdint>

#include "operations/strips/strip_mesh.h"

namespace ulk3d {

/// Splits and removes single triangles of a mesh in strips without rebuilding it: all other triangles stay,
/// with their order and winding. Strips are read by the rule of strip_walk.h; the elements must hold no index
/// at or above the vertex count other than the restart mark, as with those from `read_strip_mesh`.
///
/// The functions are called during a walk over the elements. At position i the walk has a run count n, the
/// number of accepted indices of the strip so far including the one at i, and the number of the triangle that
/// this index closes, n - 3: 0 for the first triangle of a strip. An even number means an odd n and the
/// triangle (i - 2, i - 1, i); a triangle with an odd number is flipped, (i - 1, i - 2, i).
///
///     std::uint32_t run_count = 0;
///     for (std::uint32_t i = 0; i < mesh.elements.size(); ++i) {
///         if (mesh.elements[i] >= mesh.vertices.size()) {
///             run_count = 0;
///             continue;
///         }
///         if (++run_count < 3)
///             continue;
///         std::int32_t triangle_number = static_cast<std::int32_t>(run_count) - 3;
///         ...
///         i += add_vertex(mesh, triangle_number, run_count, i0, i1, i2, t1, t2);
///     }
///
/// A split returns the advance: i + advance is the last position that the walk has to treat as passed. After
/// it come the untouched triangles, each once, and none of the new ones. The run count and the triangle
/// number are set to their values at that position; the number is again the run count less 3, and like it is
/// one higher at the next index. An advance of 0 means that nothing was changed.
///
/// Corners are element positions: i0, i1, i2 are the three positions i - 2, i - 1, i, in an order that gives
/// the triangle's winding. Positions beyond the list, three positions that are not consecutive, a number
/// below 0 and corners that are restart marks are refused silently. Three of the six orders run against the
/// winding of the triangle: where the triangle number is even they are refused with two lines on the standard
/// error stream that name the positions i (the highest) and l (the lowest), otherwise silently:
///
///     i(5) == i0(5)    i==i1(5)      i==i2(5)
///     l(3) == i2(5)    l==i0(3)      l==i1(3)

/// Puts one new vertex n at `t` on the edge from i0 to i1: the triangle (a, b, c) of the corners becomes (a,
/// n, c) and (n, b, c). Vertex and frame of n are (1 - t) times those of a plus t times those of b, in all
/// components and without normalising anything.
[[nodiscard]] std::uint32_t add_vertex0(strip_mesh_t& mesh, std::int32_t& triangle_number,
                                        std::uint32_t& run_count, std::uint32_t i0, std::uint32_t i1,
                                        std::uint32_t i2, float t);

/// Puts two new vertices on the edges at the apex i0: n1 on the edge from i0 to i1 at `t1` and n2 on the edge
/// from i2 to i0 at `t2`. The triangle (a, b, c) becomes (a, n1, n2) and two triangles that cover (n1, b, c,
/// n2). Where the rest of the strip has to be restarted after them, the walk has already passed the two
/// indices that are repeated: the triangle number is then -1 and the run count 2.
[[nodiscard]] std::uint32_t add_vertex(strip_mesh_t& mesh, std::int32_t& triangle_number,
                                       std::uint32_t& run_count, std::uint32_t i0, std::uint32_t i1,
                                       std::uint32_t i2, float t1, float t2);

/// Where in its strip the triangle lies that `del_elements` removes.
enum class strip_place_t : std::uint32_t {
    at_end = 0,  ///< a whole strip, first to last, or the last triangle of one: first = last = its last index
    at_start = 1,    ///< the first triangle, followed by an index: first = last = its first index
    even_ahead = 2,  ///< an even number of triangles before, an index after: first = last = its last index
    odd_ahead = 3,   ///< the same with an odd number before
};

/// Removes the triangle at the positions `first` to `last`; vertices stay. A walk continues at position
/// `first` itself, which is the next to examine, with a run count of 0, whatever the place was. Does nothing,
/// silently, for impossible positions and for positions without the neighbours that the place implies.
void del_elements(strip_mesh_t& mesh, std::uint32_t first, std::uint32_t last, strip_place_t place);

}  // namespace ulk3d
