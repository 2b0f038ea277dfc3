#include "tool/tidy/triangle_shapes.h"

#include <algorithm>
#include <tuple>

namespace ulktool {

namespace {

/// Which way the texture coordinate s grows; zero where the texture coordinates span no area.
dir3d direction_of_s(const dir3d& to_second, const dir3d& to_third, double s2, double t2, double s3,
                     double t3) {
    const double area = s2 * t3 - s3 * t2;
    if (!(area != 0))
        return {};
    return unit((to_second * t3 - to_third * t2) * (area < 0 ? -1 : 1));
}

}  // namespace

dir3d unit_normal(const triangle_mesh_t& mesh, const triangle_corners_t& corners) {
    const auto place_of = [&mesh](std::uint32_t vertex) {
        const ulk3d::pos3& p = mesh.vertices[vertex].position;
        return std::tuple(p.x, p.y, p.z);
    };
    triangle_corners_t turned = corners;
    std::rotate(turned.begin(), std::ranges::min_element(turned, {}, place_of), turned.end());
    const ulk3d::pos3& first = mesh.vertices[turned[0]].position;
    return unit(cross(between(first, mesh.vertices[turned[1]].position),
                      between(first, mesh.vertices[turned[2]].position)));
}

corner_shape_t corner_shape(const ulk3d::vertex_t& first, const ulk3d::vertex_t& second,
                            const ulk3d::vertex_t& third) {
    const dir3d to_second = between(first.position, second.position);
    const dir3d to_third = between(first.position, third.position);
    const double s2 = double{second.texcoord.s} - first.texcoord.s;
    const double t2 = double{second.texcoord.t} - first.texcoord.t;
    const double s3 = double{third.texcoord.s} - first.texcoord.s;
    const double t3 = double{third.texcoord.t} - first.texcoord.t;
    const dir3d across = cross(to_second, to_third);
    return {.angle = std::atan2(std::sqrt(dot(across, across)), dot(to_second, to_third)),
            .along_s = direction_of_s(to_second, to_third, s2, t2, s3, t3),
            .is_mirrored = s2 * t3 - s3 * t2 < 0};
}

}  // namespace ulktool
