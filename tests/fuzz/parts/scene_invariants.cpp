#include "fuzz/parts/scene_invariants.h"

#include <GL/glew.h>

#include <algorithm>
#include <array>
#include <bit>
#include <iterator>
#include <utility>

#include "fuzz/parts/scene_lines.h"
#include "model/polygon/strip_walk.h"

namespace ulk_test {

using namespace ulk3d;

namespace {

std::string numbers(std::uint64_t first, std::uint64_t second) {
    return " (" + std::to_string(first) + " and " + std::to_string(second) + ").";
}

std::string broken_points(const modeling_t& model) {
    const array_t& points = *model.array(0);
    const auto count = static_cast<std::uint64_t>(points.element_count());
    if (model.selection.size() != count)
        return "There are not as many selection bits as points" + numbers(model.selection.size(), count);
    const std::vector<std::uint32_t> sizes = words_of(model.pointsizes);
    if (sizes.size() != count)
        return "There are not as many point sizes as points" + numbers(sizes.size(), count);
    for (std::size_t n = 0; n < sizes.size(); ++n) {
        const float size = model.selection[n] ? selected_point_size : unselected_point_size;
        if (sizes[n] != std::bit_cast<std::uint32_t>(size))
            return "The size of point " + std::to_string(n) + " does not show whether it is selected.";
    }
    return {};
}

/// The ids and the selected triangles against those of the strips.
std::string broken_ids(const polygon_t& polygon) {
    const std::vector<std::uint32_t> strips = words_of(polygon.elements);
    if (strips.size() < 3)
        return {};
    const auto& table = polygon.polyidvector;
    const std::vector<std::uint32_t> shown = words_of(polygon.selectelems);
    if (table.size() != strips.size() - 2)
        return "The table of polygon ids does not fit the elements" + numbers(table.size(), strips.size());
    if (shown.size() != 3 * table.size())
        return "There are not three selected elements for each id" + numbers(shown.size(), table.size());

    std::vector<polygon_place_t> places(table.size());
    std::vector<std::uint32_t> selected(shown.size(), restart_mark);
    walk_strips(strips, polygon.vertex_count(), [&](const strip_triangle_t& triangle) {
        places[triangle.id] = {triangle.position, triangle.flipped};
        if (polygon.selectpolygons().contains(static_cast<std::uint32_t>(triangle.id)))
            std::ranges::copy(std::array{triangle.a, triangle.b, triangle.c},
                              selected.begin() + static_cast<std::ptrdiff_t>(3 * triangle.id));
    });
    for (std::size_t id = 0; id < table.size(); ++id)
        if (table[id] != places[id])
            return "The table of polygon ids has another place than the strips for id " + std::to_string(id) +
                   '.';
    if (shown != selected)
        return "The triangles that are shown as selected are not those of the selected ids.";
    return {};
}

std::string broken_mesh(const polygon_t& polygon, bool has_old_ids) {
    const std::uint64_t count = polygon.vertex_count();
    if (static_cast<std::uint64_t>(polygon.normals.element_count()) != count)
        return "There are not as many normals as vertices" +
               numbers(static_cast<std::uint64_t>(polygon.normals.element_count()), count);
    if (words_of(polygon.vertices).size() * sizeof(std::uint32_t) != count * sizeof(vertex_t))
        return "The buffer of the vertices does not hold them all.";
    if (words_of(polygon.normals).size() * sizeof(std::uint32_t) != count * sizeof(frame_t))
        return "The buffer of the normals does not hold them all.";
    if (words_of(polygon.elements).size() != polygon.element_count())
        return "The buffer of the elements does not hold them all.";
    return has_old_ids ? std::string() : broken_ids(polygon);
}

template <class T>
std::string broken_table(const char* name, const matrix_t<T>& table, std::uint64_t rows,
                         std::uint64_t columns) {
    if (table.rows != rows || table.columns != columns)
        return std::string("The table of ") + name + " does not have the rows and columns of the net" +
               numbers(table.rows, table.columns);
    if (table.data.size() != rows * columns)
        return std::string("The table of ") + name + " does not hold its rows" +
               numbers(table.data.size(), rows * columns);
    return {};
}

std::string first_of(std::initializer_list<std::string> sentences) {
    const auto found = std::ranges::find_if(sentences, [](const std::string& each) { return !each.empty(); });
    return found == sentences.end() ? std::string() : *found;
}

std::string broken_net(const nurbs_t& nurbs) {
    const std::string table =
        first_of({broken_table("row knots", nurbs.knot1, nurbs.count2, nurbs.count1 + nurbs.order1),
                  broken_table("column knots", nurbs.knot2, nurbs.count1, nurbs.count2 + nurbs.order2),
                  broken_table("weights", nurbs.weight, nurbs.count2, nurbs.count1),
                  broken_table("points", nurbs.points, nurbs.count2, nurbs.count1)});
    if (!table.empty())
        return table;
    std::vector<std::uint32_t> words;
    for (const control_point_t& point : nurbs.points.data)
        std::ranges::copy(std::bit_cast<std::array<std::uint32_t, 7>>(point), std::back_inserter(words));
    if (words_of(nurbs.ctlpts) != words)
        return "The net's buffer does not hold the points of its table.";
    return {};
}

/// The mesh of a net that was built has its samples, and strips of nothing else.
std::string broken_surface(const nurbs_t& nurbs, const polygon_t& polygon) {
    for (const std::uint32_t element : words_of(polygon.elements))
        if (element >= polygon.vertex_count() && element != restart_mark)
            return "A strip of the surface names vertex " + std::to_string(element) +
                   ", which it does not have.";
    const std::uint64_t samples = std::uint64_t{nurbs.resolution1} * nurbs.resolution2;
    // Without rows of samples there can be no mesh, and the old one stays.
    if (nurbs.resolution2 != 0 && polygon.vertices.has_buffer() && polygon.vertex_count() != samples)
        return "The surface does not have as many vertices as samples" +
               numbers(polygon.vertex_count(), samples);
    return {};
}

std::string broken_model(const model_entry_t& entry, bool has_old_ids) {
    const std::string mesh = broken_mesh(entry.polygon, has_old_ids);
    if (entry.kind == model_kind_t::polygon)
        return first_of({broken_points(entry.polygon), mesh});
    return first_of({broken_points(entry.nurbs), broken_points(entry.polygon), mesh, broken_net(entry.nurbs),
                     broken_surface(entry.nurbs, entry.polygon)});
}

std::string broken_current(const edited_scene_t& scene) {
    const std::uint64_t index = scene.current_index(), count = scene.models().size();
    if (count == 0 && index != 0)
        return "The current index of an empty scene is not 0.";
    const model_entry_t* const expected =
        index < count ? std::next(scene.models().begin(), static_cast<std::ptrdiff_t>(index))->get()
                      : nullptr;
    if (scene.current_model() != expected)
        return "The current model is not the one at the current index" + numbers(index, count);
    return {};
}

std::string prefixed(const std::string& beginning, const std::string& rest) {
    return rest.empty() ? rest : beginning + rest + '.';
}

}  // namespace

std::string broken_invariant(const edited_scene_t& scene, const restripped_models_t& restripped) {
    if (std::string broken = broken_current(scene); !broken.empty())
        return broken;
    std::size_t index = 0;
    for (const auto& entry : scene.models()) {
        const std::string broken = broken_model(*entry, restripped.contains(entry.get()));
        if (!broken.empty())
            return "Model " + std::to_string(index) + ": " + broken;
        ++index;
    }
    if (const GLenum error = glGetError(); error != GL_NO_ERROR)
        return "The error " + std::to_string(error) + " of GL is pending.";
    return {};
}

std::string broken_exchange(const std::function<scene_state_t()>& state, const taking_back_t& there,
                            const taking_back_t& back) {
    const scene_state_t before = state();
    if (!there.run())
        return prefixed(there.name + " without a step has changed something: ",
                        first_difference(before, state()));
    const scene_state_t behind = state();
    if (!back.run())
        return "After " + there.name + " there is no step of " + back.name + '.';
    std::string broken =
        prefixed(back.name + " does not reverse " + there.name + ": ", first_difference(before, state()));
    if (!broken.empty())
        return broken;
    if (!there.run())
        return "After " + back.name + " there is no step of " + there.name + '.';
    return prefixed("The second " + there.name + " differs from the first: ",
                    first_difference(behind, state()));
}

namespace {

/// The first line that differs, in both texts; empty when they are the same.
using changed_line_t = std::optional<std::pair<std::string, std::string>>;

changed_line_t first_changed_line(const scene_lines_t& before, const scene_lines_t& after,
                                  bool with_directions) {
    const auto is_direction = [](const std::string& line) {
        return line.starts_with("tangent") || line.starts_with("binormal") || line.starts_with("normal");
    };
    for (std::size_t n = 0; n < std::max(before.size(), after.size()); ++n) {
        const std::string old_line = n < before.size() ? before[n] : "nothing";
        const std::string new_line = n < after.size() ? after[n] : "nothing";
        const bool is_left_out = !with_directions && is_direction(old_line) && is_direction(new_line);
        if (old_line != new_line && !is_left_out)
            return std::pair(old_line, new_line);
    }
    return std::nullopt;
}

}  // namespace

std::string broken_saving(const std::string& first, const reload_t& reload) {
    constexpr int most_saves = 10;
    std::optional<std::string> file = reload(first);
    if (!file)
        return "What was saved does not load.";
    for (int saves = 3; saves <= most_saves; ++saves) {
        const std::optional<std::string> next = reload(*file);
        if (!next)
            return "What was loaded and saved does not load again.";
        if (*next == *file)
            return {};
        const changed_line_t changed =
            first_changed_line(lines_of(*file), lines_of(*next), saves == most_saves);
        if (changed)
            return "Saving changes a file that was loaded: " + changed->first + " becomes " +
                   changed->second + '.';
        file = next;
    }
    return {};
}

}  // namespace ulk_test
