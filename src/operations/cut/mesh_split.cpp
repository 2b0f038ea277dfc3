#include <algorithm>
#include <optional>

#include "model/math/vectors.h"
#include "model/polygon/strip_walk.h"
#include "operations/cut/cut_pair.h"
#include "operations/cut/mesh_cut.h"
#include "operations/cut/pair_filter.h"
#include "operations/cut/strip_runs.h"
#include "operations/strips/strip_surgery.h"

namespace ulk3d {
namespace {

using place_t = strip_runs_t::place_t;

/// Splits the triangles of a victim. The result is that of a walk over all of its triangles for each triangle
/// of the cutter; `strip_runs_t` and `pair_filter_t` only skip those that stay whole.
class splitter_t {
  public:
    explicit splitter_t(strip_mesh_t& mesh) : victim(mesh), runs(mesh) {}

    void split_for(cutter_triangle_t& cutter, std::uint64_t j);

    bool has_changed() const { return changed; }

  private:
    void collect(cutter_triangle_t& cutter);
    std::uint32_t walk_on(std::uint32_t run, place_t place, cutter_triangle_t& cutter, std::uint64_t j);
    bool split_triangle(place_t& place, cutter_triangle_t& cutter, std::uint64_t j);

    strip_mesh_t& victim;
    strip_runs_t runs;
    pair_filter_t filter;
    std::vector<strip_runs_t::candidate_t> candidates;
    bool changed = false;
};

void splitter_t::split_for(cutter_triangle_t& cutter, std::uint64_t j) {
    collect(cutter);
    if (candidates.empty())
        return;
    filter.start(cutter);
    for (std::uint32_t n = 0; n < candidates.size(); ++n) {
        const auto& candidate = candidates[n];
        if (candidate.has_lone_corner())
            filter.add(runs.corners(candidate), candidate.lone, n);
        else
            filter.ask(n);
    }
    std::uint32_t walked_to = 0;
    for (const std::uint32_t n : filter.finish()) {
        const auto& candidate = candidates[n];
        const place_t place = runs.place(candidate);
        if (place.position >= walked_to)
            walked_to = walk_on(candidate.run, place, cutter, j);
    }
    runs.tidy();
}

void splitter_t::collect(cutter_triangle_t& cutter) {
    const cut_plane_t plane{cutter.cut.normal, dot(cutter.cut.normal, cutter.cut.centroid)};
    candidates.clear();
    for (const std::uint32_t run : runs.meeting(plane))
        runs.append_candidates(candidates, run, plane);
}

/// Examines the triangle at a place and, if it is split, all triangles behind it in the run, as the
/// candidates there are no longer where they were. Returns the first position that was not examined.
/// Triangles behind the run keep their places relative to its end, or have moved into the run: then no
/// triangle closes at the place.
std::uint32_t splitter_t::walk_on(std::uint32_t run, place_t place, cutter_triangle_t& cutter,
                                  std::uint64_t j) {
    std::uint32_t end = place.position + 1;
    --place.run_count;
    for (; place.position < end; ++place.position) {
        const bool is_vertex = victim.elements[place.position] < victim.vertices.size();
        place.run_count = is_vertex ? place.run_count + 1 : 0;
        if (place.run_count < 3)
            continue;
        const std::size_t size = victim.elements.size();
        if (split_triangle(place, cutter, j)) {
            runs.update(run, static_cast<std::uint32_t>(victim.elements.size() - size));
            end = runs.end_of(run);
            changed = true;
        }
    }
    return end;
}

/// Splits the triangle that closes at a place, if necessary, and moves the place to the position after it.
bool splitter_t::split_triangle(place_t& place, cutter_triangle_t& cutter, std::uint64_t j) {
    const std::uint32_t i = place.position;
    const bool flipped = place.run_count % 2 == 0;
    const std::array<std::uint32_t, 3> corners{flipped ? i - 1 : i - 2, flipped ? i - 2 : i - 1, i};
    if (!has_corners(victim.elements, victim.vertices.size(), corners[0], corners[1]))
        return false;
    const auto position = [&](std::size_t n) {
        return victim.vertices[victim.elements[corners[n]]].position;
    };
    const pair_cut_t cut = cut_pair(cutter, {position(0), position(1), position(2)}, j, i);
    if (cut.new_vertices == 0)
        return false;

    const std::uint32_t i0 = corners[cut.first];
    const std::uint32_t i1 = corners[(cut.first + 1) % 3];
    const std::uint32_t i2 = corners[(cut.first + 2) % 3];
    auto number = static_cast<std::int32_t>(place.run_count) - 3;
    const std::uint32_t advance =
        cut.new_vertices == 1 ? add_vertex0(victim, number, place.run_count, i0, i1, i2, cut.t1)
                              : add_vertex(victim, number, place.run_count, i0, i1, i2, cut.t1, cut.t2);
    place.position += advance;
    return advance != 0;
}

/// The box of the vertices that the strips refer to; empty for a mesh without any.
std::optional<box3> box_of(const strip_mesh_t& mesh) {
    std::optional<box3> box;
    for (const std::uint32_t index : mesh.elements) {
        if (index >= mesh.vertices.size())
            continue;
        const pos3& p = mesh.vertices[index].position;
        box = box ? box3{component_min(box->low, p), component_max(box->high, p)} : box3{p, p};
    }
    return box;
}

}  // namespace

bool may_touch(const strip_mesh_t& victim, const strip_mesh_t& cutter) {
    const auto a = box_of(victim);
    const auto b = box_of(cutter);
    const auto are_apart = [](const pos3& high, const pos3& low) {
        return f_gt(low.x, high.x) || f_gt(low.y, high.y) || f_gt(low.z, high.z);
    };
    return a && b && !are_apart(a->high, b->low) && !are_apart(b->high, a->low);
}

bool split_by(strip_mesh_t& victim, const strip_mesh_t& cutter, const progress_signal_t& progress) {
    const double step = 0.5 / static_cast<double>(cutter.elements.size());
    const auto position = [&](std::uint32_t index) { return cutter.vertices[index].position; };
    const bool splits = may_touch(victim, cutter);
    splitter_t splitter(victim);
    walk_strips(cutter.elements, cutter.vertices.size(), [&](const strip_triangle_t& t) {
        const std::uint64_t j = std::uint64_t{t.position} + 2;
        progress.emit(step * static_cast<double>(j));
        if (!splits)
            return;
        cutter_triangle_t triangle({position(t.a), position(t.b), position(t.c)});
        if (triangle.has_area())
            splitter.split_for(triangle, j);
    });
    return splitter.has_changed();
}

}  // namespace ulk3d
