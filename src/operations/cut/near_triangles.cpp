#include "operations/cut/near_triangles.h"

#include "model/polygon/strip_walk.h"
#include "operations/cut/reach_codes.h"

namespace ulk3d {

std::vector<near_triangle_t> triangles_near(const strip_mesh_t& mesh, const box3& reach) {
    const reach_codes_t codes(mesh.vertices, reach);
    std::vector<near_triangle_t> triangles;
    walk_strips(mesh.elements, mesh.vertices.size(), [&](const strip_triangle_t& t) {
        const auto position = [&](std::uint32_t index) { return mesh.vertices[index].position; };
        if (codes.may_meet(t.a, t.b, t.c) && are_finite({position(t.a), position(t.b), position(t.c)}))
            triangles.push_back({{t.a, t.b, t.c}, t.position + 2, t.number + 3});
    });
    return triangles;
}

corners_t unit_corners(const near_triangle_t& triangle, const strip_mesh_t& mesh, const unit_space_t& space) {
    corners_t corners;
    for (std::size_t n = 0; n < 3; ++n)
        corners[n] = space.to_unit(mesh.vertices[triangle.vertices[n]].position);
    return corners;
}

}  // namespace ulk3d
