#include "model/math/vectors.h"
#include "operations/cut_triangle.h"
#include "operations/inside_test.h"
#include "operations/mesh_cut.h"
#include "operations/strip_surgery.h"

namespace ulk3d {
namespace {

bool index_follows(const strip_mesh_t& mesh, std::uint32_t i) {
    return i + 1 < mesh.elements.size() && mesh.elements[i + 1] < mesh.vertices.size();
}

/// Removes the triangle that closes at position i, and returns the position at which the walk goes on, with a
/// run count of 0.
std::uint32_t remove_triangle(strip_mesh_t& mesh, std::uint32_t i, std::uint32_t triangle_number) {
    if (triangle_number > 0) {
        if (!index_follows(mesh, i))
            del_elements(mesh, i, i, strip_place_t::at_end);
        else
            del_elements(mesh, i, i,
                         triangle_number % 2 == 0 ? strip_place_t::even_ahead : strip_place_t::odd_ahead);
        return i;
    }
    const std::uint32_t first = i - 2;
    if (index_follows(mesh, i)) {
        del_elements(mesh, first, first, strip_place_t::at_start);
    } else {
        const bool has_mark = i + 1 < mesh.elements.size();
        del_elements(mesh, first, has_mark ? i + 1 : i, strip_place_t::at_end);
    }
    return first;
}

pos3 centroid_of(const strip_mesh_t& mesh, std::uint32_t i, bool flipped) {
    const auto position = [&](std::uint32_t place) { return mesh.vertices[mesh.elements[place]].position; };
    return cut_triangle_t(position(flipped ? i - 1 : i - 2), position(flipped ? i - 2 : i - 1), position(i))
        .centroid;
}

}  // namespace

bool remove_inside(strip_mesh_t& victim, const strip_mesh_t& cutter, const progress_signal_t& progress) {
    const double step = 0.5 / static_cast<double>(victim.elements.size());
    inside_test_t inside(cutter);
    bool changed = false;
    std::uint32_t run_count = 0;
    for (std::uint32_t i = 0; i < victim.elements.size();) {
        if (victim.elements[i] >= victim.vertices.size()) {
            run_count = 0;
            ++i;
            continue;
        }
        if (++run_count < 3) {
            ++i;
            continue;
        }
        progress.emit(step * i + 0.5);
        if (inside.is_inside(centroid_of(victim, i, run_count % 2 == 0))) {
            i = remove_triangle(victim, i, run_count - 3);
            run_count = 0;
            changed = true;
        } else {
            ++i;
        }
    }
    return changed;
}

}  // namespace ulk3d
