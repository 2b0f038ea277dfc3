#include "operations/cut/near_triangles.h"

#include "operations/cut/reach_codes.h"

namespace ulk3d {

std::vector<near_triangle_t> triangles_near(const strip_mesh_t& mesh, const box3& reach) {
    const reach_codes_t codes(mesh.vertices, reach);
    std::vector<near_triangle_t> triangles;
    std::uint32_t run_count = 0;
    for (std::uint32_t i = 0; i < mesh.elements.size(); ++i) {
        if (mesh.elements[i] >= mesh.vertices.size()) {
            run_count = 0;
            continue;
        }
        if (++run_count < 3)
            continue;
        const bool flipped = run_count % 2 == 0;
        const near_triangle_t triangle{{mesh.elements[flipped ? i - 1 : i - 2],
                                        mesh.elements[flipped ? i - 2 : i - 1], mesh.elements[i]},
                                       i,
                                       run_count};
        const auto& [a, b, c] = triangle.vertices;
        if (!codes.may_meet(a, b, c))
            continue;
        if (are_finite({mesh.vertices[a].position, mesh.vertices[b].position, mesh.vertices[c].position}))
            triangles.push_back(triangle);
    }
    return triangles;
}

corners_t unit_corners(const near_triangle_t& triangle, const strip_mesh_t& mesh, const unit_space_t& space) {
    corners_t corners;
    for (std::size_t n = 0; n < 3; ++n)
        corners[n] = space.to_unit(mesh.vertices[triangle.vertices[n]].position);
    return corners;
}

}  // namespace ulk3d
