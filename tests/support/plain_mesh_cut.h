#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <set>

#include "model/math/vectors.h"
#include "model/polygon/strip_walk.h"
#include "operations/cut/cut_pair.h"
#include "operations/cut/inside_test.h"
#include "operations/cut/mesh_cut.h"
#include "operations/strips/strip_surgery.h"

/// The mesh cut without shortcuts: every triangle of the cutter against every triangle of the victim, and the
/// inside test over all triangles of the cutter with its hits in a multiset. The reference for the results
/// and the speed of the program's own.
namespace ulk_test {

using progress_t = std::function<void(double)>;

inline void plain_split_for(ulk3d::strip_mesh_t& victim, ulk3d::cutter_triangle_t& cutter, std::uint64_t j) {
    std::uint32_t run_count = 0;
    for (std::uint32_t i = 0; i < victim.elements.size(); ++i) {
        if (victim.elements[i] >= victim.vertices.size()) {
            run_count = 0;
            continue;
        }
        if (++run_count < 3)
            continue;
        const bool flipped = run_count % 2 == 0;
        const std::array<std::uint32_t, 3> places{flipped ? i - 1 : i - 2, flipped ? i - 2 : i - 1, i};
        ulk3d::corners_t corners;
        for (std::size_t n = 0; n < 3; ++n)
            corners[n] = victim.vertices[victim.elements[places[n]]].position;
        const ulk3d::pair_cut_t cut = cut_pair(cutter, corners, j, i);
        const std::uint32_t i0 = places[cut.first];
        const std::uint32_t i1 = places[(cut.first + 1) % 3];
        const std::uint32_t i2 = places[(cut.first + 2) % 3];
        auto number = static_cast<std::int32_t>(run_count) - 3;
        if (cut.new_vertices == 1)
            i += add_vertex0(victim, number, run_count, i0, i1, i2, cut.t1);
        else if (cut.new_vertices == 2)
            i += add_vertex(victim, number, run_count, i0, i1, i2, cut.t1, cut.t2);
    }
}

inline void plain_split(ulk3d::strip_mesh_t& victim, const ulk3d::strip_mesh_t& cutter,
                        const progress_t& progress) {
    const double k = 0.5 / static_cast<double>(cutter.elements.size());
    const bool splits = may_touch(victim, cutter);
    ulk3d::walk_strips(cutter.elements, cutter.vertices.size(), [&](const ulk3d::strip_triangle_t& t) {
        const std::uint64_t j = t.position + 2U;
        progress(k * static_cast<double>(j));
        ulk3d::cutter_triangle_t triangle(
            {cutter.vertices[t.a].position, cutter.vertices[t.b].position, cutter.vertices[t.c].position});
        if (splits && triangle.has_area())
            plain_split_for(victim, triangle, j);
    });
}

struct plain_hit_t {
    float t;
    int kind;
    bool goes_out;
    float slope;
    bool operator<(const plain_hit_t& other) const { return t < other.t; }
};

inline int plain_sum(const std::multiset<plain_hit_t>& hits) {
    int sum = 0;
    const plain_hit_t* corner = nullptr;
    for (const plain_hit_t& hit : hits)
        if (corner == nullptr && hit.kind == 1)
            corner = &hit;
    for (const plain_hit_t& hit : hits) {
        if (hit.kind == 2 || hit.kind == 3) {
            sum += (hit.goes_out ? -1 : 1) * (hit.kind - 1);
        } else if (hit.t < corner->t) {
            sum += corner->goes_out ? -2 : 2;
            corner = &hit;
        } else if (hit.t == corner->t && hit.slope < corner->slope) {
            corner = &hit;
        }
    }
    if (corner != nullptr)
        sum += corner->goes_out ? -2 : 2;
    return sum;
}

inline bool plain_is_inside(const ulk3d::strip_mesh_t& cutter, const ulk3d::pos3& centroid) {
    const auto position = [&](std::uint32_t index) { return cutter.vertices[index].position; };
    bool has_high = false;
    float high = 0;
    for (const std::uint32_t index : cutter.elements) {
        if (index >= cutter.vertices.size())
            continue;
        high = has_high ? std::max(high, position(index).z) : position(index).z;
        has_high = true;
    }
    if (centroid.z > high)
        return false;
    const ulk3d::pos3 end{centroid.x, centroid.y, high + std::fabs(high) + 1};
    std::multiset<plain_hit_t> hits;
    ulk3d::walk_strips(cutter.elements, cutter.vertices.size(), [&](const ulk3d::strip_triangle_t& t) {
        ulk3d::cut_triangle_t triangle(position(t.a), position(t.b), position(t.c));
        if (!triangle.has_area())
            return;
        ulk3d::crossing_t crossing;
        const int code = classify_edge(crossing, 6, centroid, end, triangle);
        if (code == 1)
            hits.insert({crossing.t, 1, crossing.side == 1,
                         dot(triangle.normal, normalize(centroid - crossing.point))});
        else if (code == 2 || code == 3)
            hits.insert({crossing.t, code, crossing.side == 1, 0});
    });
    return plain_sum(hits) < 0;
}

/// Removes the triangle whose last element is at `i`. Returns where the walk continues, with a run count of
/// 0.
inline std::uint32_t plain_remove(ulk3d::strip_mesh_t& mesh, std::uint32_t i, std::uint32_t number) {
    using ulk3d::strip_place_t;
    const bool has_next = i + 1 < mesh.elements.size();
    const bool follows = has_next && mesh.elements[i + 1] < mesh.vertices.size();
    if (number != 0) {
        del_elements(mesh, i, i, follows ? static_cast<strip_place_t>(2 + (number & 1)) : strip_place_t(0));
        return i;
    }
    if (follows)
        del_elements(mesh, i - 2, i - 2, strip_place_t(1));
    else
        del_elements(mesh, i - 2, has_next ? i + 1 : i, strip_place_t(0));
    return i - 2;
}

inline void plain_remove_inside(ulk3d::strip_mesh_t& victim, const ulk3d::strip_mesh_t& cutter,
                                const progress_t& progress) {
    const double k = 0.5 / static_cast<double>(victim.elements.size());
    std::uint32_t run_count = 0;
    for (std::uint32_t i = 0; i < victim.elements.size(); ++i) {
        if (victim.elements[i] >= victim.vertices.size()) {
            run_count = 0;
            continue;
        }
        if (++run_count < 3)
            continue;
        progress(k * i + 0.5);
        const auto position = [&](std::uint32_t back) {
            return victim.vertices[victim.elements[i - back]].position;
        };
        const bool flipped = run_count % 2 == 0;
        const ulk3d::cut_triangle_t triangle(position(flipped ? 1 : 2), position(flipped ? 2 : 1),
                                             position(0));
        if (plain_is_inside(cutter, triangle.centroid)) {
            i = plain_remove(victim, i, run_count - 3) - 1;
            run_count = 0;
        }
    }
}

inline void plain_mesh_cut(
    ulk3d::strip_mesh_t& victim, const ulk3d::strip_mesh_t& cutter,
    const progress_t& progress = [](double) {}) {
    plain_split(victim, cutter, progress);
    plain_remove_inside(victim, cutter, progress);
}

}  // namespace ulk_test
