#include "tool/tidy/weld.h"

#include <meshoptimizer.h>

#include "tool/tidy/near_vertices.h"

namespace ulktool {

namespace {

/// Turns the library's numbers of distinct vertices, in place, into the first vertex that has each. It gives
/// none to vertices that are not used.
void take_first_vertices(std::vector<std::uint32_t>& numbers, std::size_t distinct) {
    std::vector<std::uint32_t> first(distinct, no_vertex);
    for (std::uint32_t vertex = 0; vertex < numbers.size(); ++vertex) {
        std::uint32_t& number = numbers[vertex];
        if (number == no_vertex)
            continue;
        if (first[number] == no_vertex)
            first[number] = vertex;
        number = first[number];
    }
}

}  // namespace

std::vector<std::uint32_t> welded_vertices(std::span<const ulk3d::vertex_t> vertices,
                                           std::span<const triangle_corners_t> triangles, double tolerance) {
    std::vector<std::uint32_t> standing(vertices.size(), no_vertex);
    if (triangles.empty())
        return standing;
    // Most corners agree to the last bit. What the library leaves of them is looked at more closely.
    const std::span<const std::uint32_t> indices = indices_of(triangles);
    const std::size_t distinct =
        meshopt_generateVertexRemap(standing.data(), indices.data(), indices.size(), vertices.data(),
                                    vertices.size(), sizeof(ulk3d::vertex_t));
    take_first_vertices(standing, distinct);
    join_near_vertices(vertices, tolerance, standing);
    return standing;
}

}  // namespace ulktool
