#include <algorithm>
#include <span>
#include <utility>

#include "operations/cut/cut_triangle.h"
#include "operations/cut/inside_test.h"
#include "operations/cut/mesh_cut.h"
#include "operations/strips/strip_surgery.h"

namespace ulk3d {
namespace {

/// Walks the strips of a victim and removes triangles. Works on one strip after the other, so that only the
/// rest of a strip moves up behind a removed triangle, and not the rest of the mesh.
class remover_t {
  public:
    remover_t(inside_test_t& test, const progress_signal_t& signal) : inside(test), progress(signal) {}

    /// Returns whether anything was removed.
    bool remove_from(strip_mesh_t& victim);

  private:
    void walk_strip(std::size_t position_ahead);
    std::uint32_t remove_triangle(std::uint32_t i, std::uint32_t triangle_number);
    bool index_at(std::size_t i) const;
    pos3 centroid(std::uint32_t i, bool flipped) const;

    inside_test_t& inside;
    const progress_signal_t& progress;
    double step = 0;
    strip_mesh_t strip;  ///< all vertices, and the elements of one strip with the restart mark that ends it
    bool changed = false;
};

bool remover_t::remove_from(strip_mesh_t& victim) {
    step = 0.5 / static_cast<double>(victim.elements.size());
    strip.vertices = std::move(victim.vertices);
    std::vector<std::uint32_t> remaining;
    const std::span<const std::uint32_t> elements = victim.elements;
    for (auto first = elements.begin(); first != elements.end();) {
        const auto mark = std::find_if(
            first, elements.end(), [this](std::uint32_t index) { return index >= strip.vertices.size(); });
        const auto end = mark == elements.end() ? mark : mark + 1;
        strip.elements.assign(first, end);
        walk_strip(remaining.size());
        remaining.insert(remaining.end(), strip.elements.begin(), strip.elements.end());
        first = end;
    }
    victim.vertices = std::move(strip.vertices);
    victim.elements = std::move(remaining);
    return changed;
}

void remover_t::walk_strip(std::size_t position_ahead) {
    std::uint32_t run_count = 0;
    for (std::uint32_t i = 0; i < strip.elements.size(); ++i) {
        run_count = index_at(i) ? run_count + 1 : 0;
        if (run_count < 3)
            continue;
        progress.emit(step * static_cast<double>(position_ahead + i) + 0.5);
        if (inside.is_inside(centroid(i, run_count % 2 == 0))) {
            i = remove_triangle(i, run_count - 3) - 1;
            run_count = 0;
            changed = true;
        }
    }
}

/// Removes the triangle that closes at position i. Returns the position at which the walk continues, with a
/// run count of 0.
std::uint32_t remover_t::remove_triangle(std::uint32_t i, std::uint32_t triangle_number) {
    const bool index_follows = index_at(std::size_t{i} + 1);
    if (triangle_number > 0) {
        const strip_place_t place = !index_follows             ? strip_place_t::at_end
                                    : triangle_number % 2 == 0 ? strip_place_t::even_ahead
                                                               : strip_place_t::odd_ahead;
        del_elements(strip, i, i, place);
        return i;
    }
    const std::uint32_t first = i - 2;
    if (index_follows) {
        del_elements(strip, first, first, strip_place_t::at_start);
    } else {
        const bool has_mark = i + 1 < strip.elements.size();
        del_elements(strip, first, has_mark ? i + 1 : i, strip_place_t::at_end);
    }
    return first;
}

bool remover_t::index_at(std::size_t i) const {
    return i < strip.elements.size() && strip.elements[i] < strip.vertices.size();
}

pos3 remover_t::centroid(std::uint32_t i, bool flipped) const {
    const auto position = [&](std::uint32_t place) { return strip.vertices[strip.elements[place]].position; };
    const cut_triangle_t triangle(position(flipped ? i - 1 : i - 2), position(flipped ? i - 2 : i - 1),
                                  position(i));
    return triangle.centroid;
}

}  // namespace

bool remove_inside(strip_mesh_t& victim, const strip_mesh_t& cutter, const progress_signal_t& progress) {
    inside_test_t inside(cutter);
    return remove_inside(victim, inside, progress);
}

bool remove_inside(strip_mesh_t& victim, inside_test_t& cutter, const progress_signal_t& progress) {
    return remover_t(cutter, progress).remove_from(victim);
}

}  // namespace ulk3d
