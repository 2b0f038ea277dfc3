#include "operations/cut/window_splitter.h"

#include <algorithm>
#include <array>
#include <map>
#include <numeric>
#include <utility>

#include "operations/strips/strip_surgery.h"

namespace ulk3d {
namespace {

constexpr std::uint32_t none = 0xFFFFFFFF;

}  // namespace

window_splitter_t::window_splitter_t(strip_mesh_t& mesh, const unit_space_t& unit_space)
    : victim(mesh), space(unit_space), local(mesh.vertices.size(), none) {}

void window_splitter_t::take(const split_window_t& window) {
    work.elements.clear();
    run_before = window.run_before;
    for (const std::uint32_t index : window.elements)
        work.elements.push_back(index == restart_mark ? restart_mark : local_number(index));
}

/// The number that a vertex has in the window; it gets one when it has none.
std::uint32_t window_splitter_t::local_number(std::uint32_t index) {
    if (local[index] == none) {
        local[index] = static_cast<std::uint32_t>(numbers.size());
        numbers.push_back(index);
        work.vertices.push_back(victim.vertices[index]);
        work.frames.push_back(victim.frames[index]);
        unit_positions.push_back(space.to_unit(victim.vertices[index].position));
    }
    return local[index];
}

void window_splitter_t::give_back(split_window_t& window) {
    window.elements.clear();
    for (const std::uint32_t index : work.elements)
        window.elements.push_back(index == restart_mark ? restart_mark : numbers[index]);
    for (const std::uint32_t index : numbers)
        if (index < local.size())
            local[index] = none;
    work.vertices.clear();
    work.frames.clear();
    unit_positions.clear();
    numbers.clear();
}

bool window_splitter_t::split_for(placed_cutter_t& cutter) {
    bool changed = false;
    std::uint32_t run_count = run_before;
    for (std::uint32_t i = 0; i < work.elements.size(); ++i) {
        run_count = work.elements[i] < work.vertices.size() ? run_count + 1 : 0;
        // What closes at the first two positions began before the window.
        if (run_count >= 3 && i >= 2)
            changed = split_triangle(i, run_count, cutter) || changed;
    }
    return changed;
}

/// Splits the triangle that closes at i, if necessary, and moves i to the last position that is passed.
bool window_splitter_t::split_triangle(std::uint32_t& i, std::uint32_t& run_count, placed_cutter_t& cutter) {
    const bool flipped = run_count % 2 == 0;
    const std::array<std::uint32_t, 3> places{flipped ? i - 1 : i - 2, flipped ? i - 2 : i - 1, i};
    if (!has_corners(work.elements, work.vertices.size(), places[0], places[1]))
        return false;
    std::array<std::uint32_t, 3> vertices{};
    corners_t corners;
    for (std::size_t n = 0; n < 3; ++n) {
        vertices[n] = work.elements[places[n]];
        corners[n] = unit_positions[vertices[n]];
    }
    const pair_cut_t cut = cut_pair(cutter.triangle, corners, cutter.j, i);
    if (cut.new_vertices == 0)
        return false;

    const std::uint32_t next = (cut.first + 1) % 3;
    const std::uint32_t last = (cut.first + 2) % 3;
    auto number = static_cast<std::int32_t>(run_count) - 3;
    if (cut.new_vertices == 1) {
        i += add_vertex0(work, number, run_count, places[cut.first], places[next], places[last], cut.t1);
        place_new_vertex(cutter.j, vertices[cut.first], vertices[next], cut.p1);
    } else {
        i += add_vertex(work, number, run_count, places[cut.first], places[next], places[last], cut.t1,
                        cut.t2);
        place_new_vertex(cutter.j, vertices[cut.first], vertices[next], cut.p1);
        place_new_vertex(cutter.j, vertices[last], vertices[cut.first], cut.p2);
    }
    return true;
}

void window_splitter_t::place_new_vertex(std::uint64_t j, std::uint32_t a, std::uint32_t b,
                                         const pos3& unit_position) {
    vertex_t& vertex = work.vertices[numbers.size()];
    vertex.position = space.from_unit(unit_position);
    made.push_back({j, numbers[a], numbers[b], vertex, work.frames[numbers.size()]});
    numbers.push_back(static_cast<std::uint32_t>(victim.vertices.size() + made.size() - 1));
    unit_positions.push_back(unit_position);
}

std::vector<std::uint32_t> window_splitter_t::finish() {
    std::vector<std::uint32_t> order(made.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, {}, [this](std::uint32_t n) { return made[n].j; });

    const auto old_count = static_cast<std::uint32_t>(victim.vertices.size());
    victim.vertices.reserve(old_count + made.size());
    victim.frames.reserve(old_count + made.size());
    std::vector<std::uint32_t> final_numbers(made.size());
    // The ends of an edge have their final numbers already: they were made for an earlier triangle.
    const auto final_number = [&](std::uint32_t n) {
        return n < old_count ? n : final_numbers[n - old_count];
    };
    std::map<std::array<std::uint64_t, 3>, std::uint32_t> crossings;
    for (const std::uint32_t n : order) {
        const auto [low, high] = std::minmax({final_number(made[n].a), final_number(made[n].b)});
        const auto next = static_cast<std::uint32_t>(victim.vertices.size());
        const auto [place, is_new] = crossings.try_emplace({made[n].j, low, high}, next);
        final_numbers[n] = place->second;
        if (is_new) {
            victim.vertices.push_back(made[n].vertex);
            victim.frames.push_back(made[n].frame);
        }
    }
    return final_numbers;
}

}  // namespace ulk3d
