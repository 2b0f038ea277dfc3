#include "tool/tidy/corner_frames.h"

#include <meshoptimizer.h>

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

#include "tool/tidy/triangle_shapes.h"

namespace ulktool {

namespace {

using ulk3d::dir3;
using ulk3d::frame_t;
using ulk3d::pos3;

/// The most triangles at an edge over which their normals are compared, each with each.
constexpr std::size_t most_at_edge = 64;

/// For each vertex the number of its place: vertices at the same position have the same.
std::vector<std::uint32_t> number_places(const triangle_mesh_t& mesh) {
    std::vector<pos3> positions;
    positions.reserve(mesh.vertices.size());
    for (const ulk3d::vertex_t& vertex : mesh.vertices) {
        const pos3& p = vertex.position;
        positions.push_back({p.x + 0.0F, p.y + 0.0F, p.z + 0.0F});  // zeros of either sign are the same place
    }
    std::vector<std::uint32_t> places(positions.size());
    meshopt_generateVertexRemap(places.data(), nullptr, positions.size(), positions.data(), positions.size(),
                                sizeof(pos3));
    return places;
}

/// The frame with this normal, and a tangent near this one, on the given side.
frame_t make_frame(const dir3d& normal, const dir3d& along_s, bool is_mirrored) {
    dir3d tangent = unit(along_s - normal * dot(along_s, normal));
    if (tangent == dir3d{}) {
        const dir3d axis = std::fabs(normal.x) > 0.9 ? dir3d{0, 0, -1} : dir3d{1, 0, 0};
        tangent = unit(axis - normal * dot(axis, normal));
    }
    const dir3d binormal = cross(normal, tangent) * (is_mirrored ? -1 : 1);
    return {rounded(tangent), rounded(binormal), rounded(normal)};
}

/// A corner among those of one place.
struct fan_corner_t {
    std::uint32_t corner;  ///< 3 times its triangle, plus its place in it
    std::uint32_t vertex;
    std::uint32_t group;  ///< the index of another corner of its group, or its own
    bool is_mirrored;
    dir3d normal;   ///< its triangle's, times the angle
    dir3d along_s;  ///< the direction of s, times the angle
    dir3 mean;      ///< the normal of its group
};

/// The other end of an edge at the place, and the corner whose triangle has this edge.
using spoke_t = std::pair<std::uint32_t, std::uint32_t>;

/// Makes the frames of the corners of one place after the other.
class frame_maker_t {
  public:
    frame_maker_t(const triangle_mesh_t& the_mesh, double cosine)
        : mesh(the_mesh), least_cosine(cosine), places(number_places(the_mesh)) {
        normals.reserve(mesh.triangles.size());
        for (const triangle_corners_t& corners : mesh.triangles)
            normals.push_back(unit_normal(mesh, corners));
        made.of_corner.resize(3 * mesh.triangles.size());
    }

    corner_frames_t make() {
        // The corners of a place lie one after the other, from the place's entry in `ends` up to the next.
        std::vector<std::uint32_t> ends(places.size() + 1), corners(made.of_corner.size());
        for (std::uint32_t corner = 0; corner < corners.size(); ++corner)
            ++ends[place_of(corner)];
        std::partial_sum(ends.begin(), ends.end(), ends.begin());
        for (auto corner = static_cast<std::uint32_t>(corners.size()); corner-- > 0;)
            corners[--ends[place_of(corner)]] = corner;
        for (std::size_t place = 0; place + 1 < ends.size(); ++place)
            make_frames_at(std::span(corners).subspan(ends[place], ends[place + 1] - ends[place]));
        return std::move(made);
    }

  private:
    /// The vertex that is `step` corners further in the triangle.
    std::uint32_t vertex_at(std::uint32_t corner, std::uint32_t step = 0) const {
        return mesh.triangles[corner / 3][(corner % 3 + step) % 3];
    }
    std::uint32_t place_of(std::uint32_t corner) const { return places[vertex_at(corner)]; }
    const dir3d& normal_of(std::uint32_t corner) const { return normals[corner / 3]; }

    void make_frames_at(std::span<const std::uint32_t> corners) {
        fan.clear();
        for (const std::uint32_t corner : corners)
            if (normal_of(corner) != dir3d{})
                fan.push_back(fan_corner(corner));
        join_groups();
        give_mean_normals();
        give_frames();
        for (const std::uint32_t corner : corners)
            if (normal_of(corner) == dir3d{})
                take_first_frame(corner);
    }

    fan_corner_t fan_corner(std::uint32_t corner) const {
        const auto vertex = [&](std::uint32_t step) { return mesh.vertices[vertex_at(corner, step)]; };
        const corner_shape_t shape = corner_shape(vertex(0), vertex(1), vertex(2));
        return {.corner = corner,
                .vertex = vertex_at(corner),
                .group = static_cast<std::uint32_t>(fan.size()),
                .is_mirrored = shape.is_mirrored,
                .normal = normal_of(corner) * shape.angle,
                .along_s = shape.along_s * shape.angle,
                .mean = {}};
    }

    std::uint32_t group_of(std::uint32_t index) {
        while (fan[index].group != index)
            index = fan[index].group = fan[fan[index].group].group;
        return index;
    }

    /// Joins the corners whose triangles share a flat edge at the place.
    void join_groups() {
        spokes.clear();
        for (std::uint32_t i = 0; i < fan.size(); ++i)
            for (const std::uint32_t step : {1U, 2U})
                spokes.emplace_back(places[vertex_at(fan[i].corner, step)], i);
        std::ranges::sort(spokes);
        for (auto first = spokes.begin(); first != spokes.end();) {
            const auto last = std::find_if(
                first, spokes.end(), [first](const spoke_t& spoke) { return spoke.first != first->first; });
            if (static_cast<std::size_t>(last - first) <= most_at_edge)
                join_over_edge({first, last});
            first = last;
        }
        for (std::uint32_t i = 0; i < fan.size(); ++i)
            fan[i].group = group_of(i);
    }

    void join_over_edge(std::span<const spoke_t> edge) {
        for (std::size_t i = 0; i < edge.size(); ++i)
            for (std::size_t k = i + 1; k < edge.size(); ++k) {
                const std::uint32_t a = edge[i].second, b = edge[k].second;
                if (dot(normal_of(fan[a].corner), normal_of(fan[b].corner)) > least_cosine)
                    fan[group_of(a)].group = group_of(b);
            }
    }

    /// Sums are taken in an order of the values, so that they do not depend on that of the triangles.
    void give_mean_normals() {
        std::ranges::sort(fan, [](const fan_corner_t& a, const fan_corner_t& b) {
            return std::tie(a.group, a.normal) < std::tie(b.group, b.normal);
        });
        for (auto first = fan.begin(); first != fan.end();) {
            dir3d sum;
            auto last = first;
            for (; last != fan.end() && last->group == first->group; ++last)
                sum = sum + last->normal;
            // Normals that cancel each other have no mean.
            const dir3d mean = unit(sum);
            const dir3 rounded_mean = rounded(mean == dir3d{} ? unit(first->normal) : mean);
            std::for_each(first, last, [&](fan_corner_t& corner) { corner.mean = rounded_mean; });
            first = last;
        }
    }

    void give_frames() {
        const auto key = [](const fan_corner_t& corner) {
            return std::tuple(corner.vertex, corner.mean.x, corner.mean.y, corner.mean.z, corner.is_mirrored);
        };
        std::ranges::sort(fan, [&](const fan_corner_t& a, const fan_corner_t& b) {
            return std::tuple(key(a), a.along_s) < std::tuple(key(b), b.along_s);
        });
        first_made = made.frames.size();
        for (auto first = fan.begin(); first != fan.end();) {
            dir3d along_s;
            auto last = first;
            for (; last != fan.end() && key(*last) == key(*first); ++last) {
                along_s = along_s + last->along_s;
                made.of_corner[last->corner] = static_cast<std::uint32_t>(made.frames.size());
            }
            const dir3d normal{first->mean.x, first->mean.y, first->mean.z};
            add_frame(first->vertex, make_frame(normal, along_s, first->is_mirrored));
            first = last;
        }
    }

    void add_frame(std::uint32_t vertex, const frame_t& frame) {
        const bool is_next = made.frames.size() > first_made && made.frames.back().vertex == vertex;
        made.frames.push_back({vertex, is_next ? made.frames.back().rank + 1 : 0, frame});
    }

    /// For the corner of a triangle without area.
    void take_first_frame(std::uint32_t corner) {
        const std::uint32_t vertex = vertex_at(corner);
        const auto here = std::span(made.frames).subspan(first_made);
        const auto found = std::ranges::find(here, vertex, &corner_frame_t::vertex);
        made.of_corner[corner] =
            static_cast<std::uint32_t>(first_made + static_cast<std::size_t>(found - here.begin()));
        if (found == here.end())
            made.frames.push_back({vertex, 0, mesh.frames[vertex]});
    }

    const triangle_mesh_t& mesh;
    double least_cosine;
    std::vector<std::uint32_t> places;  ///< by vertex
    std::vector<dir3d> normals;         ///< by triangle
    corner_frames_t made;
    std::size_t first_made = 0;  ///< the first frame of the present place
    std::vector<fan_corner_t> fan;
    std::vector<spoke_t> spokes;
};

}  // namespace

corner_frames_t smooth_corner_frames(const triangle_mesh_t& mesh, double least_cosine) {
    return frame_maker_t(mesh, least_cosine).make();
}

}  // namespace ulktool
