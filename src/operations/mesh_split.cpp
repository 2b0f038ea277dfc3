#include "model/strip_walk.h"
#include "operations/cut_pair.h"
#include "operations/mesh_cut.h"
#include "operations/strip_surgery.h"

namespace ulk3d {
namespace {

/// The place in the strips of a walk that splits triangles as it goes.
struct walk_t {
    std::uint32_t i = 0;
    std::uint32_t run_count = 0;  ///< accepted indices of the strip so far, the one at i included
};

/// Splits the triangle that closes at the walk's place, if it has to be, and takes the walk behind it.
bool split_triangle(strip_mesh_t& victim, walk_t& walk, cutter_triangle_t& cutter, std::uint64_t j) {
    const std::uint32_t i = walk.i;
    const bool flipped = walk.run_count % 2 == 0;
    const std::uint32_t mi2 = flipped ? i - 1 : i - 2;
    const std::uint32_t mi1 = flipped ? i - 2 : i - 1;
    if (!has_corners(victim.elements, victim.vertices.size(), mi2, mi1))
        return false;
    const auto position = [&](std::uint32_t place) {
        return victim.vertices[victim.elements[place]].position;
    };
    const pair_cut_t cut = cut_pair(cutter, {position(mi2), position(mi1), position(i)}, j, i);
    if (cut.new_vertices == 0)
        return false;

    const std::array<std::uint32_t, 3> places{mi2, mi1, i};
    const std::uint32_t i0 = places[cut.first], i1 = places[(cut.first + 1) % 3],
                        i2 = places[(cut.first + 2) % 3];
    auto number = static_cast<std::int32_t>(walk.run_count) - 3;
    const std::uint32_t advance =
        cut.new_vertices == 1 ? add_vertex0(victim, number, walk.run_count, i0, i1, i2, cut.t1)
                              : add_vertex(victim, number, walk.run_count, i0, i1, i2, cut.t1, cut.t2);
    walk.i += advance;
    return advance != 0;
}

bool split_for(strip_mesh_t& victim, cutter_triangle_t& cutter, std::uint64_t j) {
    bool changed = false;
    for (walk_t walk; walk.i < victim.elements.size(); ++walk.i) {
        if (victim.elements[walk.i] >= victim.vertices.size())
            walk.run_count = 0;
        else if (++walk.run_count >= 3)
            changed = split_triangle(victim, walk, cutter, j) || changed;
    }
    return changed;
}

}  // namespace

bool split_by(strip_mesh_t& victim, const strip_mesh_t& cutter, const progress_signal_t& progress) {
    const double step = 0.5 / static_cast<double>(cutter.elements.size());
    const auto position = [&](std::uint32_t index) { return cutter.vertices[index].position; };
    bool changed = false;
    walk_strips(cutter.elements, cutter.vertices.size(), [&](const strip_triangle_t& t) {
        const std::uint64_t j = std::uint64_t{t.position} + 2;
        progress.emit(step * static_cast<double>(j));
        cutter_triangle_t triangle({position(t.a), position(t.b), position(t.c)});
        if (triangle.has_area())
            changed = split_for(victim, triangle, j) || changed;
    });
    return changed;
}

}  // namespace ulk3d
