#include "tool/tidy/simplify.h"

#include <meshoptimizer.h>

#include <algorithm>
#include <limits>

#include "model/math/vectors.h"

namespace ulktool {

namespace {

/// One pass of the library, from which it may go further in another one.
std::vector<triangle_corners_t> simplified(const triangle_mesh_t& mesh,
                                           std::span<const triangle_corners_t> triangles, std::size_t most) {
    constexpr float any_error = std::numeric_limits<float>::max();
    const std::span<const std::uint32_t> indices = indices_of(triangles);
    std::vector<triangle_corners_t> left(triangles.size());
    const std::size_t count = meshopt_simplify(left.front().data(), indices.data(), indices.size(),
                                               &mesh.vertices.front().position.x, mesh.vertices.size(),
                                               sizeof(ulk3d::vertex_t), 3 * most, any_error, 0, nullptr);
    left.resize(count / 3);
    // At a seam it may bring two vertices of a triangle to the same place.
    std::erase_if(left,
                  [&mesh](const triangle_corners_t& corners) { return is_empty(corners, mesh.vertices); });
    return left;
}

}  // namespace

void simplify(triangle_mesh_t& mesh, std::size_t most_triangles) {
    if (mesh.triangles.size() <= most_triangles)
        return;
    const auto is_finite = [&mesh](const triangle_corners_t& corners) {
        return std::ranges::all_of(corners, [&mesh](std::uint32_t vertex) {
            return ulk3d::is_finite(mesh.vertices[vertex].position);
        });
    };
    const auto odd = std::partition(mesh.triangles.begin(), mesh.triangles.end(), is_finite);
    const std::vector<triangle_corners_t> kept(odd, mesh.triangles.end());
    const std::size_t most = most_triangles - std::min(most_triangles, kept.size());

    std::vector<triangle_corners_t> triangles = std::move(mesh.triangles);
    triangles.resize(triangles.size() - kept.size());
    while (triangles.size() > most) {
        sort_triangles(triangles);
        // A goal that is too low for this surface may leave nothing of it.
        std::vector<triangle_corners_t> fewer;
        for (std::size_t goal = most; fewer.empty() && goal < triangles.size(); goal = 2 * goal + 1)
            fewer = simplified(mesh, triangles, goal);
        if (fewer.empty() || fewer.size() == triangles.size())
            break;
        triangles = std::move(fewer);
    }
    triangles.insert(triangles.end(), kept.begin(), kept.end());
    mesh.triangles = std::move(triangles);
    drop_unused_vertices(mesh);
}

}  // namespace ulktool
