#include <algorithm>

#include "fuzz/parts/session.h"

// The edits of triangles in a session.
namespace ulk_test {

using namespace ulk3d;

namespace {

/// The work of a cut grows with the product of both meshes, and cuts of cuts grow.
constexpr std::size_t most_elements = 160;

/// The parts of one model.
scene_state_t model_state(const edited_scene_t& scene, std::uint64_t index) {
    scene_state_t state = state_of(scene);
    std::erase_if(state, [prefix = "model " + std::to_string(index) + ": "](const state_part_t& part) {
        return !part.name.starts_with(prefix);
    });
    return state;
}

}  // namespace

session_t::all_strips_t session_t::strips_of(const model_list_t& models) {
    all_strips_t strips;
    for (const auto& entry : models)
        strips.push_back(words_of(entry->polygon.elements));
    return strips;
}

bool session_t::are_small(const all_strips_t& strips) {
    std::size_t elements = 0;
    for (const auto& each : strips)
        elements += each.size();
    return elements <= most_elements;
}

/// Strips that an edit has written name vertices, or are restart marks.
std::string session_t::broken_strips(const model_list_t& models, const all_strips_t& before) {
    const all_strips_t after = strips_of(models);
    std::size_t index = 0;
    for (const auto& entry : models) {
        const std::uint64_t count = entry->polygon.vertex_count();
        const bool is_sound = std::ranges::all_of(after[index], [count](std::uint32_t element) {
            return element < count || element == restart_mark;
        });
        if (after[index] != before[index] && !is_sound)
            return "Strips that were edited name a vertex that model " + std::to_string(index) +
                   " does not have.";
        ++index;
    }
    return {};
}

void session_t::note_numbered(const all_strips_t& before) {
    const all_strips_t after = strips_of(editor.models());
    std::size_t index = 0;
    for (const auto& entry : editor.models()) {
        if (after[index] != before[index] && after[index].size() >= least_numbered)
            restripped.erase(entry.get());
        ++index;
    }
}

std::string session_t::fold(session_bytes_t& bytes) {
    for (std::size_t end = 0; end < 2; ++end) {
        const std::uint64_t model = some_model(bytes);
        editor.scene().set_fold_vertex(end, model, bytes.below(8));
    }
    editor.set_fold_angle(30.0 * (static_cast<int>(bytes.below(9)) - 4));
    const all_strips_t strips = strips_of(editor.models());
    if (!are_small(strips))
        return {};
    const scene_state_t before = state_of(editor.scene());
    if (!editor.fold())
        return unchanged_since(before, "A fold that failed has changed the scene: ");
    if (editor.scene().steps.undo())
        return "A fold has left a step of undo.";
    note_numbered(strips);
    return broken_strips(editor.models(), strips);
}

std::string session_t::cut(session_bytes_t&) {
    const all_strips_t strips = strips_of(editor.models());
    if (!are_small(strips))
        return {};
    const bool has_cutter = current(model_kind_t::polygon) != nullptr;
    const scene_state_t before = state_of(editor.scene());
    const scene_state_t cutter = model_state(editor.scene(), editor.current_index());
    bool is_sound = true;
    // It starts over for each model, and may end slightly above 1.
    editor.cut_current([&is_sound](double done) { is_sound = is_sound && done >= 0 && done < 2; });
    if (!is_sound)
        return "The progress of a cut is negative, far above 1 or no number.";
    if (!has_cutter)
        return unchanged_since(before, "A cut without a cutter has changed the scene: ");
    const std::string changed = first_difference(cutter, model_state(editor.scene(), editor.current_index()));
    if (!changed.empty())
        return "A cut has changed its cutter: " + changed + '.';
    if (editor.scene().steps.undo())
        return "A cut has left a step of undo.";
    note_numbered(strips);
    return broken_strips(editor.models(), strips);
}

}  // namespace ulk_test
