#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <tuple>

#include "model/polygon/strip_walk.h"
#include "operations/strips/strip_surgery.h"
#include "support/plain_cut_pair.h"

/// The mesh cut without shortcuts: every triangle of the cutter against every triangle of the victim, and the
/// inside test over all triangles of the cutter with its hits in a multiset. The reference for the results
/// and the speed of the program's own.
namespace ulk_test {

using ulk3d::strip_mesh_t;
using progress_t = std::function<void(double)>;

/// Moves the common box of two meshes into the unit cube.
class plain_space_t {
  public:
    plain_space_t(const strip_mesh_t& a, const strip_mesh_t& b) {
        for (const strip_mesh_t* mesh : {&a, &b}) {
            ranges_t& own = mesh == &a ? of_a : of_b;
            for (const std::uint32_t index : mesh->elements) {
                if (index >= mesh->vertices.size())
                    continue;
                const pos3& p = mesh->vertices[index].position;
                if (plain_finite({p, p, p}))
                    own.add(p);
            }
        }
        if (!has_both())
            return;
        double side = 0;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double low = std::min(of_a.low[axis], of_b.low[axis]);
            const double high = std::max(of_a.high[axis], of_b.high[axis]);
            middle[axis] = (low + high) / 2;
            side = std::max(side, high - low);
        }
        for (; side >= 1; side /= 2)
            factor /= 2;
        for (; side > 0 && side < 0.5; side *= 2)
            factor *= 2;
    }

    bool has_both() const { return of_a.is_filled && of_b.is_filled; }

    pos3 in(const pos3& p) const { return {in(p.x, 0), in(p.y, 1), in(p.z, 2)}; }
    pos3 out(const pos3& p) const { return {out(p.x, 0), out(p.y, 1), out(p.z, 2)}; }

    /// Whether the two boxes have a gap of more than twice the tolerance.
    bool are_apart() const {
        for (std::size_t axis = 0; axis < 3; ++axis)
            if (std::max(of_a.low[axis] - of_b.high[axis], of_b.low[axis] - of_a.high[axis]) * factor >
                2 * double{ulk3d::eps})
                return true;
        return false;
    }

  private:
    struct ranges_t {
        bool is_filled = false;
        std::array<double, 3> low{}, high{};

        void add(const pos3& p) {
            const std::array<double, 3> at{p.x, p.y, p.z};
            for (std::size_t axis = 0; axis < 3; ++axis) {
                low[axis] = is_filled ? std::min(low[axis], at[axis]) : at[axis];
                high[axis] = is_filled ? std::max(high[axis], at[axis]) : at[axis];
            }
            is_filled = true;
        }
    };

    float in(float v, std::size_t axis) const {
        return static_cast<float>((double{v} - middle[axis]) * factor);
    }
    float out(float v, std::size_t axis) const {
        return static_cast<float>(double{v} / factor + middle[axis]);
    }

    ranges_t of_a, of_b;
    std::array<double, 3> middle{};
    double factor = 1;
};

inline std::vector<plain_corners_t> plain_triangles(const strip_mesh_t& mesh, const plain_space_t& space,
                                                    std::vector<std::uint64_t>* closing = nullptr) {
    std::vector<plain_corners_t> triangles;
    ulk3d::walk_strips(mesh.elements, mesh.vertices.size(), [&](const ulk3d::strip_triangle_t& t) {
        triangles.push_back({space.in(mesh.vertices[t.a].position), space.in(mesh.vertices[t.b].position),
                             space.in(mesh.vertices[t.c].position)});
        if (closing != nullptr)
            closing->push_back(t.position + std::uint64_t{2});
    });
    return triangles;
}

inline bool plain_has_area(const plain_corners_t& c) {
    return ulk3d::unit_face_normal(c[0], c[1], c[2]) != ulk3d::dir3{};
}

/// The first phase. New vertices of the same edge and the same triangle of the cutter become one.
class plain_splitter_t {
  public:
    plain_splitter_t(strip_mesh_t& mesh, const plain_space_t& unit_space) : victim(mesh), space(unit_space) {
        for (const ulk3d::vertex_t& vertex : victim.vertices)
            unit.push_back(space.in(vertex.position));
    }

    void split_for(const plain_corners_t& cutter, std::uint64_t j) {
        std::uint32_t run_count = 0;
        for (std::uint32_t i = 0; i < victim.elements.size(); ++i) {
            if (victim.elements[i] >= victim.vertices.size()) {
                run_count = 0;
                continue;
            }
            if (++run_count >= 3)
                i += split_at(i, run_count, cutter, j);
        }
    }

    void merge() {
        const std::size_t old = victim.vertices.size() - edges.size();
        std::vector<std::uint32_t> number(victim.vertices.size());
        std::map<std::tuple<std::uint64_t, std::uint32_t, std::uint32_t>, std::uint32_t> seen;
        std::size_t kept = old;
        for (std::size_t v = 0; v < number.size(); ++v) {
            number[v] = static_cast<std::uint32_t>(v);
            if (v < old)
                continue;
            const auto& [j, a, b] = edges[v - old];
            const auto key = std::tuple(j, std::min(number[a], number[b]), std::max(number[a], number[b]));
            if (const auto same = seen.find(key); same != seen.end()) {
                number[v] = same->second;
                continue;
            }
            number[v] = seen[key] = static_cast<std::uint32_t>(kept);
            victim.vertices[kept] = victim.vertices[v];
            victim.frames[kept] = victim.frames[v];
            ++kept;
        }
        for (std::uint32_t& index : victim.elements)
            if (index < number.size())
                index = number[index];
        victim.vertices.resize(kept);
        victim.frames.resize(kept);
    }

  private:
    struct edge_t {
        std::uint64_t j;
        std::uint32_t a, b;
    };

    std::uint32_t split_at(std::uint32_t i, std::uint32_t& run_count, const plain_corners_t& cutter,
                           std::uint64_t j) {
        const bool flipped = run_count % 2 == 0;
        const std::array<std::uint32_t, 3> places{flipped ? i - 1 : i - 2, flipped ? i - 2 : i - 1, i};
        const std::array<std::uint32_t, 3> ids{victim.elements[places[0]], victim.elements[places[1]],
                                               victim.elements[places[2]]};
        const plain_cut_t cut = plain_cut_pair(cutter, {unit[ids[0]], unit[ids[1]], unit[ids[2]]});
        if (cut.new_vertices == 0)
            return 0;
        const auto k0 = static_cast<std::size_t>(cut.first), k1 = (k0 + 1) % 3, k2 = (k0 + 2) % 3;
        auto number = static_cast<std::int32_t>(run_count) - 3;
        const std::uint32_t advance =
            cut.new_vertices == 1
                ? add_vertex0(victim, number, run_count, places[k0], places[k1], places[k2], cut.t1)
                : add_vertex(victim, number, run_count, places[k0], places[k1], places[k2], cut.t1, cut.t2);
        edges.push_back({j, ids[k0], ids[k1]});
        unit.push_back(cut.p1);
        if (cut.new_vertices == 2) {
            edges.push_back({j, ids[k2], ids[k0]});
            unit.push_back(cut.p2);
        }
        for (std::size_t v = unit.size() - static_cast<std::size_t>(cut.new_vertices); v < unit.size(); ++v)
            victim.vertices[v].position = space.out(unit[v]);
        return advance;
    }

    strip_mesh_t& victim;
    const plain_space_t& space;
    std::vector<pos3> unit;
    std::vector<edge_t> edges;
};

inline void plain_split(strip_mesh_t& victim, const strip_mesh_t& cutter, const progress_t& progress) {
    const plain_space_t space(victim, cutter);
    const double k = 0.5 / static_cast<double>(cutter.elements.size());
    std::vector<std::uint64_t> closing;
    const std::vector<plain_corners_t> triangles = plain_triangles(cutter, space, &closing);
    plain_splitter_t splitter(victim, space);
    for (std::size_t n = 0; n < triangles.size(); ++n) {
        progress(k * static_cast<double>(closing[n]));
        if (space.has_both() && plain_finite(triangles[n]) && plain_has_area(triangles[n]))
            splitter.split_for(triangles[n], closing[n]);
    }
    splitter.merge();
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

/// The second phase's question, for the triangles of one cutter in unit coordinates.
class plain_inside_t {
  public:
    explicit plain_inside_t(const std::vector<plain_corners_t>& cutter) {
        for (const plain_corners_t& c : cutter)
            if (plain_finite(c) && plain_has_area(c))
                triangles.push_back(c);
    }

    bool is_inside(const plain_corners_t& t) const {
        const pos3 centroid = (t[0] + t[1] + t[2]) * 0.33333334F;
        if (const int common = common_faces(t, centroid); common != 0)
            return common > 0;
        std::vector<pos3> starts{centroid};
        for (const float share : {0.3F, 0.7F})
            for (const pos3& corner : t)
                starts.push_back(centroid + (corner - centroid) * share);
        for (const pos3& start : starts)
            if (const std::optional<int> sum = clear_sum(start))
                return *sum < 0;
        return sum_with_outlines(centroid) < 0;
    }

  private:
    static bool is_over_or_under(const plain_corners_t& c, const pos3& p) {
        const auto reaches = [&](auto axis) {
            return p.*axis >= std::min({c[0].*axis, c[1].*axis, c[2].*axis}) - ulk3d::eps &&
                   p.*axis <= std::max({c[0].*axis, c[1].*axis, c[2].*axis}) + ulk3d::eps;
        };
        return reaches(&pos3::x) && reaches(&pos3::y) &&
               p.z <= std::max({c[0].z, c[1].z, c[2].z}) + ulk3d::eps;
    }

    int common_faces(const plain_corners_t& t, const pos3& centroid) const {
        const double tolerance = ulk3d::eps;
        int sum = 0;
        for (const plain_corners_t& face : triangles) {
            const plain_vec_t n = plain_normal(face);
            bool lies = is_over_or_under(face, centroid);
            for (const pos3& p : {t[0], t[1], t[2], centroid})
                lies = lies && std::fabs(plain_dot(n, {face[0], p})) <= tolerance * n.length();
            for (std::size_t k = 0; k < 3; ++k) {
                const plain_vec_t out = plain_cross({face[k], face[(k + 1) % 3]}, n);
                lies = lies && plain_dot(out, {face[k], centroid}) <= tolerance * out.length();
            }
            const plain_vec_t own = plain_normal(t);
            const double cosine = plain_dot(n, own) / (n.length() * own.length());
            sum += lies && cosine > 0.9 ? 1 : lies && cosine < -0.9 ? -1 : 0;
        }
        return sum;
    }

    std::optional<int> clear_sum(const pos3& start) const {
        int sum = 0;
        for (const plain_corners_t& c : triangles) {
            const std::optional<int> hit = is_over_or_under(c, start) ? clear_hit(c, start) : 0;
            if (!hit)
                return std::nullopt;
            sum += *hit;
        }
        return sum;
    }

    static std::optional<int> clear_hit(const plain_corners_t& c, const pos3& start) {
        const double tolerance = ulk3d::eps;
        const std::array<plain_vec_t, 3> to{plain_vec_t(start, c[0]), plain_vec_t(start, c[1]),
                                            plain_vec_t(start, c[2])};
        std::array<double, 3> areas{};
        for (std::size_t k = 0; k < 3; ++k)
            areas[k] = to[k].x * to[(k + 1) % 3].y - to[k].y * to[(k + 1) % 3].x;
        const double area = areas[0] + areas[1] + areas[2];
        bool inside = area != 0;
        for (std::size_t k = 0; k < 3; ++k) {
            const plain_vec_t &a = to[k], &b = to[(k + 1) % 3];
            const double reach = tolerance * std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y));
            const double inward = area < 0 ? -areas[k] : areas[k];
            if (inward < -reach || (area == 0 && inward > reach))
                return 0;
            inside = inside && inward > reach;
        }
        const double height = areas[1] * to[0].z + areas[2] * to[1].z + areas[0] * to[2].z;
        const double distance = (area < 0 ? -height : height) / plain_normal(c).length();
        if (area != 0 && distance < -tolerance)
            return 0;
        if (!inside || !(distance > tolerance))
            return std::nullopt;
        return area > 0 ? -1 : 1;
    }

    int sum_with_outlines(const pos3& start) const {
        const pos3 end{start.x, start.y, 2};
        std::multiset<plain_hit_t> hits;
        for (const plain_corners_t& c : triangles) {
            if (!is_over_or_under(c, start))
                continue;
            ulk3d::cut_triangle_t triangle(c[0], c[1], c[2]);
            ulk3d::crossing_t crossing;
            const int code = classify_edge(crossing, 6, start, end, triangle);
            if (code == 1)
                hits.insert({crossing.t, 1, crossing.side == 1,
                             dot(triangle.normal, normalize(start - crossing.point))});
            else if (code == 2 || code == 3)
                hits.insert({crossing.t, code, crossing.side == 1, 0});
        }
        return plain_sum(hits);
    }

    std::vector<plain_corners_t> triangles;
};

/// Removes the triangle whose last element is at `i`. Returns where the walk continues, with a run count of
/// 0.
inline std::uint32_t plain_remove(strip_mesh_t& mesh, std::uint32_t i, std::uint32_t number) {
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

inline void plain_remove_inside(strip_mesh_t& victim, const strip_mesh_t& cutter,
                                const progress_t& progress) {
    const plain_space_t space(victim, cutter);
    const plain_inside_t inside(plain_triangles(cutter, space));
    const bool is_alone = !space.has_both() || space.are_apart();
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
            return space.in(victim.vertices[victim.elements[i - back]].position);
        };
        const bool flipped = run_count % 2 == 0;
        const plain_corners_t corners{position(flipped ? 1 : 2), position(flipped ? 2 : 1), position(0)};
        if (!is_alone && plain_finite(corners) && inside.is_inside(corners)) {
            i = plain_remove(victim, i, run_count - 3) - 1;
            run_count = 0;
        }
    }
}

inline void plain_mesh_cut(
    strip_mesh_t& victim, const strip_mesh_t& cutter, const progress_t& progress = [](double) {}) {
    plain_split(victim, cutter, progress);
    plain_remove_inside(victim, cutter, progress);
}

}  // namespace ulk_test
