#include <algorithm>
#include <utility>

#include "model/math/vectors.h"
#include "operations/cut/box_tree.h"
#include "operations/cut/mesh_cut.h"
#include "operations/cut/near_triangles.h"
#include "operations/cut/window_splitter.h"

namespace ulk3d {
namespace {

/// Tells of each triangle of the cutter once, in order, as the work goes on.
class split_progress_t {
  public:
    split_progress_t(const strip_mesh_t& mesh, const progress_signal_t& signal)
        : cutter(mesh), progress(signal), step(0.5 / static_cast<double>(mesh.elements.size())) {}

    /// Tells of those that close before an element position.
    void advance_to(std::size_t position) {
        for (; at < position; ++at) {
            run_count = cutter.elements[at] < cutter.vertices.size() ? run_count + 1 : 0;
            if (run_count >= 3)
                progress.emit(step * static_cast<double>(at));
        }
    }

    void advance_by_share(std::size_t done, std::size_t all) {
        advance_to(cutter.elements.size() * done / all);
    }

  private:
    const strip_mesh_t& cutter;
    const progress_signal_t& progress;
    double step;
    std::size_t at = 0;
    std::uint32_t run_count = 0;
};

/// Splits the triangles of a victim. The result is that of a walk over all of its triangles for each triangle
/// of the cutter. As a split changes nothing but the neighbourhood of its triangle in the strip, each group
/// of triangles that the cutter may touch is taken out of the strip, goes through all of its triangles of the
/// cutter, and is put back in the end.
class splitter_t {
  public:
    splitter_t(strip_mesh_t& victim_mesh, const strip_mesh_t& cutter_mesh, const unit_space_t& unit_space)
        : victim(victim_mesh), cutter(cutter_mesh), space(unit_space) {}

    /// Returns whether anything was split.
    bool split(const box3& victim_box, const box3& cutter_box, split_progress_t& progress);

  private:
    using pair_t = box_tree_t::pair_t;  ///< places in near_victims and cutters

    void find_pairs(const box3& victim_box, const box3& cutter_box);
    std::vector<box3> boxes_of(const std::vector<near_triangle_t>& triangles, const strip_mesh_t& mesh) const;
    void make_cutters(const std::vector<near_triangle_t>& near_cutters);
    split_window_t window_at(std::size_t& pair) const;
    void put_back(const std::vector<split_window_t>& windows);

    strip_mesh_t& victim;
    const strip_mesh_t& cutter;
    const unit_space_t& space;
    std::vector<near_triangle_t> near_victims;
    std::vector<placed_cutter_t> cutters;  ///< those that may touch the victim, in the order of the strips
    std::vector<pair_t> pairs;             ///< by victim, and by cutter for each
};

bool splitter_t::split(const box3& victim_box, const box3& cutter_box, split_progress_t& progress) {
    find_pairs(victim_box, cutter_box);
    window_splitter_t splitter(victim, space);
    const std::size_t old_count = victim.vertices.size();
    std::vector<split_window_t> windows;
    for (std::size_t pair = 0; pair < pairs.size();) {
        const std::size_t first = pair;
        split_window_t window = window_at(pair);
        splitter.take(window);
        bool changed = false;
        for (std::size_t n = 0; n < window.cutters.size(); ++n) {
            progress.advance_by_share(first + (pair - first) * n / window.cutters.size(), pairs.size());
            changed = splitter.split_for(cutters[window.cutters[n]]) || changed;
        }
        splitter.give_back(window);
        if (changed)
            windows.push_back(std::move(window));
    }
    const std::vector<std::uint32_t> numbers = splitter.finish();
    for (split_window_t& window : windows)
        for (std::uint32_t& index : window.elements)
            if (index != restart_mark && index >= old_count)
                index = numbers[index - old_count];
    put_back(windows);
    return !windows.empty();
}

/// The gap up to which a triangle's parts can be cut although the triangle itself is apart: that of
/// `cut_pair` and as much again for the rounding of new vertices, which is some hundred times less for each
/// split.
constexpr float room = 2 * eps;

void splitter_t::find_pairs(const box3& victim_box, const box3& cutter_box) {
    near_victims = triangles_near(victim, space.widened(cutter_box, 2 * room));
    const std::vector<near_triangle_t> near_cutters =
        triangles_near(cutter, space.widened(victim_box, 2 * room));
    pairs = box_tree_t::meeting(box_tree_t(boxes_of(near_victims, victim)),
                                box_tree_t(boxes_of(near_cutters, cutter)), room);
    std::ranges::sort(pairs, {}, [](const pair_t& p) { return std::uint64_t{p.in_a} << 32 | p.in_b; });
    make_cutters(near_cutters);
}

std::vector<box3> splitter_t::boxes_of(const std::vector<near_triangle_t>& triangles,
                                       const strip_mesh_t& mesh) const {
    std::vector<box3> boxes;
    boxes.reserve(triangles.size());
    for (const near_triangle_t& triangle : triangles)
        boxes.push_back(box_of(unit_corners(triangle, mesh, space)));
    return boxes;
}

/// Makes those that a pair names, and lets the pairs name them by their place among these.
void splitter_t::make_cutters(const std::vector<near_triangle_t>& near_cutters) {
    std::vector<std::uint32_t> places(near_cutters.size(), 0);
    for (const pair_t& pair : pairs)
        places[pair.in_b] = 1;
    for (std::size_t n = 0; n < near_cutters.size(); ++n) {
        if (places[n] == 0)
            continue;
        places[n] = static_cast<std::uint32_t>(cutters.size());
        cutters.push_back(
            {cutter_triangle_t(unit_corners(near_cutters[n], cutter, space)), near_cutters[n].position});
    }
    for (pair_t& pair : pairs)
        pair.in_b = places[pair.in_b];
}

/// The window of a pair and of all that follow while their triangles are near in the same strip. Moves on
/// behind them.
split_window_t splitter_t::window_at(std::size_t& pair) const {
    // Closer together, the surgery at one would look at indices of the other.
    constexpr std::uint32_t least_distance = 7;
    const auto strip_of = [](const near_triangle_t& triangle) {
        return triangle.position - triangle.run_count;
    };
    const near_triangle_t& first = near_victims[pairs[pair].in_a];
    std::uint32_t last = first.position;
    split_window_t window{first.position - 2, 0, first.run_count - 3, {}, {}};
    for (; pair < pairs.size(); ++pair) {
        const near_triangle_t& triangle = near_victims[pairs[pair].in_a];
        if (triangle.position >= last + least_distance || strip_of(triangle) != strip_of(first))
            break;
        last = triangle.position;
        if (cutters[pairs[pair].in_b].triangle.has_area())
            window.cutters.push_back(pairs[pair].in_b);
    }
    std::ranges::sort(window.cutters);
    window.cutters.erase(std::unique(window.cutters.begin(), window.cutters.end()), window.cutters.end());
    window.end = last + 1;
    while (window.end < last + 3 && window.end < victim.elements.size() &&
           victim.elements[window.end] < victim.vertices.size())
        ++window.end;
    window.elements.assign(victim.elements.begin() + window.begin, victim.elements.begin() + window.end);
    return window;
}

void splitter_t::put_back(const std::vector<split_window_t>& windows) {
    if (windows.empty())
        return;
    std::size_t growth = 0;
    for (const split_window_t& window : windows)
        growth += window.elements.size();
    std::vector<std::uint32_t> elements;
    elements.reserve(victim.elements.size() + growth);
    std::uint32_t position = 0;
    const auto copy_to = [&](std::uint32_t end) {
        elements.insert(elements.end(), victim.elements.begin() + position, victim.elements.begin() + end);
    };
    for (const split_window_t& window : windows) {
        copy_to(window.begin);
        elements.insert(elements.end(), window.elements.begin(), window.elements.end());
        position = window.end;
    }
    copy_to(static_cast<std::uint32_t>(victim.elements.size()));
    victim.elements = std::move(elements);
}

}  // namespace

bool split_by(strip_mesh_t& victim, const strip_mesh_t& cutter, const progress_signal_t& progress) {
    split_progress_t told(cutter, progress);
    const auto victim_box = box_of(victim);
    const auto cutter_box = box_of(cutter);
    bool changed = false;
    if (victim_box && cutter_box) {
        const unit_space_t space(box_around(*victim_box, *cutter_box));
        changed = splitter_t(victim, cutter, space).split(*victim_box, *cutter_box, told);
    }
    told.advance_to(cutter.elements.size());
    return changed;
}

}  // namespace ulk3d
