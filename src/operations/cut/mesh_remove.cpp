#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "model/math/vectors.h"
#include "operations/cut/inside_test.h"
#include "operations/cut/mesh_cut.h"
#include "operations/cut/reach_codes.h"
#include "operations/strips/strip_surgery.h"

namespace ulk3d {
namespace {

/// Walks the strips of a victim and removes triangles. The walk has only the elements around it in hand: a
/// removal looks at few neighbours, and moving up all the rest for each one would take the square of time.
class remover_t {
  public:
    remover_t(strip_mesh_t& mesh, const progress_signal_t& signal)
        : victim(mesh), progress(signal), step(0.5 / static_cast<double>(mesh.elements.size())) {}

    /// Examines the triangles that meet `reach`. Returns whether anything was removed.
    bool remove(inside_test_t& inside, const unit_space_t& space, const box3& reach);

    /// Only tells of the progress.
    void keep_all();

  private:
    /// Elements behind and ahead of the walk that a removal may look at.
    static constexpr std::uint32_t neighbours = 16;
    static constexpr std::uint32_t portion = 256;

    void move_on();
    bool is_inside(inside_test_t& inside, const unit_space_t& space, const reach_codes_t& codes,
                   bool flipped) const;
    void remove_triangle(std::uint32_t triangle_number);
    bool index_at(std::size_t position) const;

    strip_mesh_t& victim;
    const progress_signal_t& progress;
    double step;
    strip_mesh_t strip;                    ///< all vertices, and the elements in hand
    std::vector<std::uint32_t> remaining;  ///< the elements behind those in hand
    std::size_t taken = 0;                 ///< of the victim's elements
    std::uint32_t i = 0;                   ///< the position of the walk in `strip`
};

bool remover_t::remove(inside_test_t& inside, const unit_space_t& space, const box3& reach) {
    const reach_codes_t codes(victim.vertices, reach);
    strip.vertices = std::move(victim.vertices);
    remaining.reserve(victim.elements.size());
    bool changed = false;
    std::uint32_t run_count = 0;
    for (move_on(); i < strip.elements.size(); ++i, move_on()) {
        run_count = index_at(i) ? run_count + 1 : 0;
        if (run_count < 3)
            continue;
        progress.emit(step * static_cast<double>(remaining.size() + i) + 0.5);
        if (is_inside(inside, space, codes, run_count % 2 == 0)) {
            remove_triangle(run_count - 3);
            run_count = 0;
            changed = true;
        }
    }
    remaining.insert(remaining.end(), strip.elements.begin(), strip.elements.end());
    victim.vertices = std::move(strip.vertices);
    victim.elements = std::move(remaining);
    return changed;
}

void remover_t::keep_all() {
    std::uint32_t run_count = 0;
    for (std::size_t n = 0; n < victim.elements.size(); ++n) {
        run_count = victim.elements[n] < victim.vertices.size() ? run_count + 1 : 0;
        if (run_count >= 3)
            progress.emit(step * static_cast<double>(n) + 0.5);
    }
}

/// Takes the next elements in hand and puts the passed ones away.
void remover_t::move_on() {
    std::vector<std::uint32_t>& e = strip.elements;
    if (i + neighbours < e.size() || taken == victim.elements.size())
        return;
    const std::size_t passed = i > neighbours ? i - neighbours : 0;
    remaining.insert(remaining.end(), e.begin(), e.begin() + static_cast<std::ptrdiff_t>(passed));
    e.erase(e.begin(), e.begin() + static_cast<std::ptrdiff_t>(passed));
    i -= static_cast<std::uint32_t>(passed);
    const std::size_t end = std::min(taken + portion, victim.elements.size());
    e.insert(e.end(), victim.elements.begin() + static_cast<std::ptrdiff_t>(taken),
             victim.elements.begin() + static_cast<std::ptrdiff_t>(end));
    taken = end;
}

bool remover_t::is_inside(inside_test_t& inside, const unit_space_t& space, const reach_codes_t& codes,
                          bool flipped) const {
    const std::uint32_t a = strip.elements[flipped ? i - 1 : i - 2];
    const std::uint32_t b = strip.elements[flipped ? i - 2 : i - 1];
    const std::uint32_t c = strip.elements[i];
    if (!codes.may_meet(a, b, c))
        return false;
    const std::vector<vertex_t>& v = strip.vertices;
    if (!are_finite({v[a].position, v[b].position, v[c].position}))
        return false;
    return inside.is_inside(
        {space.to_unit(v[a].position), space.to_unit(v[b].position), space.to_unit(v[c].position)});
}

/// Removes the triangle that closes at i. The walk continues with a run count of 0 behind the position that
/// it has then.
void remover_t::remove_triangle(std::uint32_t triangle_number) {
    const bool index_follows = index_at(std::size_t{i} + 1);
    if (triangle_number > 0) {
        const strip_place_t place = !index_follows             ? strip_place_t::at_end
                                    : triangle_number % 2 == 0 ? strip_place_t::even_ahead
                                                               : strip_place_t::odd_ahead;
        del_elements(strip, i, i, place);
        --i;
        return;
    }
    const std::uint32_t first = i - 2;
    if (index_follows) {
        del_elements(strip, first, first, strip_place_t::at_start);
    } else {
        const bool has_mark = i + 1 < strip.elements.size();
        del_elements(strip, first, has_mark ? i + 1 : i, strip_place_t::at_end);
    }
    i = first - 1;
}

bool remover_t::index_at(std::size_t position) const {
    return position < strip.elements.size() && strip.elements[position] < strip.vertices.size();
}

}  // namespace

bool remove_inside(strip_mesh_t& victim, const strip_mesh_t& cutter, const progress_signal_t& progress) {
    remover_t remover(victim, progress);
    const auto victim_box = box_of(victim);
    const auto cutter_box = box_of(cutter);
    if (!victim_box || !cutter_box) {
        remover.keep_all();
        return false;
    }
    const unit_space_t space(box_around(*victim_box, *cutter_box));
    box3 reach = space.widened(*cutter_box, 2 * eps);
    if (are_apart(*victim_box, reach, 0)) {
        remover.keep_all();
        return false;
    }
    // Rays go up: what is below may meet the cutter.
    reach.low.z = -std::numeric_limits<float>::infinity();
    inside_test_t inside(cutter, space, *victim_box);
    return remover.remove(inside, space, reach);
}

}  // namespace ulk3d
