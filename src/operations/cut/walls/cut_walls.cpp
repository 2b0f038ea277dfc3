#include "operations/cut/walls/cut_walls.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "model/math/vectors.h"
#include "model/polygon/strip_walk.h"
#include "operations/cut/inside_test.h"
#include "operations/cut/reach_codes.h"
#include "operations/cut/unit_space.h"
#include "operations/cut/walls/open_edges.h"
#include "operations/cut/walls/seam.h"
#include "operations/strips/separate_strips.h"

namespace ulk3d {
namespace {

/// The ids of the triangles that are inside of a victim.
std::set<std::uint32_t> triangles_inside(const strip_mesh_t& victim, const strip_mesh_t& mesh,
                                         const unit_space_t& space, const progress_signal_t& progress) {
    std::set<std::uint32_t> ids;
    const auto mesh_box = box_of(mesh), victim_box = box_of(victim);
    if (!mesh_box || !victim_box)
        return ids;
    inside_test_t inside(victim, space, *mesh_box);
    const reach_codes_t codes(mesh.vertices, *victim_box);
    const auto position = [&](std::uint32_t index) { return mesh.vertices[index].position; };
    const double step = 0.5 / static_cast<double>(mesh.elements.size());
    walk_strips(mesh.elements, mesh.vertices.size(), [&](const strip_triangle_t& t) {
        progress.emit(0.5 + step * t.position);
        const corners_t corners{position(t.a), position(t.b), position(t.c)};
        if (!codes.may_meet(t.a, t.b, t.c) || !are_finite(corners))
            return;
        if (inside.is_inside_and_not_on_it(
                {space.to_unit(corners[0]), space.to_unit(corners[1]), space.to_unit(corners[2])}))
            ids.insert(ids.end(), static_cast<std::uint32_t>(t.id));
    });
    return ids;
}

/// Appends a strip with the winding turned round. Read backwards, a strip of an odd number of triangles winds
/// the other way; of an even number the last one is set apart.
void append_turned(std::vector<std::uint32_t>& elements, std::vector<std::uint32_t> strip) {
    if (strip.size() % 2 == 0) {
        elements.insert(elements.end(),
                        {strip[strip.size() - 3], strip[strip.size() - 2], strip.back(), restart_mark});
        strip.pop_back();
    }
    elements.insert(elements.end(), strip.rbegin(), strip.rend());
    elements.push_back(restart_mark);
}

/// The strips of these triangles alone, turned round.
std::vector<std::uint32_t> turned_strips(const strip_mesh_t& mesh, const std::set<std::uint32_t>& ids) {
    const separated_strips_t strips = separate_strips(mesh.elements, mesh.vertices.size(), ids);
    std::vector<std::uint32_t> elements, strip;
    for (std::size_t n = 0; n < strips.touched.size(); ++n) {
        const std::size_t place = strips.touched[n];
        strip.push_back(strips.elements[place]);
        if (n + 1 == strips.touched.size() || strips.touched[n + 1] != place + 1)
            append_turned(elements, std::exchange(strip, {}));
    }
    return elements;
}

frame_t turned(const frame_t& frame) {
    return {frame.tangent, -frame.binormal, -frame.normal};
}

/// Keeps the vertices that the strips refer to.
void drop_unused_vertices(strip_mesh_t& mesh) {
    std::vector<std::uint32_t> numbers(mesh.vertices.size(), restart_mark);
    strip_mesh_t kept;
    for (const std::uint32_t element : mesh.elements) {
        if (element == restart_mark || numbers[element] != restart_mark)
            continue;
        numbers[element] = static_cast<std::uint32_t>(kept.vertices.size());
        kept.vertices.push_back(mesh.vertices[element]);
        kept.frames.push_back(mesh.frames[element]);
    }
    for (const std::uint32_t element : mesh.elements)
        kept.elements.push_back(element == restart_mark ? restart_mark : numbers[element]);
    mesh = std::move(kept);
}

/// Returns the number of the first vertex of `b`.
std::uint32_t append(strip_mesh_t& a, const strip_mesh_t& b) {
    const auto first = static_cast<std::uint32_t>(a.vertices.size());
    a.vertices.insert(a.vertices.end(), b.vertices.begin(), b.vertices.end());
    a.frames.insert(a.frames.end(), b.frames.begin(), b.frames.end());
    if (!a.elements.empty() && !b.elements.empty())
        a.elements.push_back(restart_mark);
    for (const std::uint32_t element : b.elements)
        a.elements.push_back(element == restart_mark ? restart_mark : element + first);
    return first;
}

}  // namespace

strip_mesh_t wall_inside(const strip_mesh_t& victim, const strip_mesh_t& cutter,
                         const progress_signal_t& progress) {
    const auto victim_box = box_of(victim), cutter_box = box_of(cutter);
    if (!victim_box || !cutter_box)
        return {};
    const unit_space_t space(box_around(*victim_box, *cutter_box));
    if (are_apart(*victim_box, space.widened(*cutter_box, 2 * eps), 0))
        return {};
    strip_mesh_t wall = cutter;
    split_by(wall, victim, progress);
    wall.elements = turned_strips(wall, triangles_inside(victim, wall, space, progress));
    drop_unused_vertices(wall);
    for (frame_t& frame : wall.frames)
        frame = turned(frame);
    return wall;
}

bool add_walls(strip_mesh_t& cut_victim, const strip_mesh_t& victim, const strip_mesh_t& cutter,
               const progress_signal_t& progress) {
    const strip_mesh_t wall = wall_inside(victim, cutter, progress);
    if (wall.elements.empty() && cut_victim == victim)
        return false;
    const unit_space_t space(box_around(*box_of(victim), *box_of(cutter)));
    const bool are_solids = is_closed(victim) && is_closed(cutter);
    const std::uint32_t first_of_wall = append(cut_victim, wall);
    close_seam(cut_victim, first_of_wall, space, are_solids);
    return true;
}

}  // namespace ulk3d
