#include "fuzz/parts/session.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <sstream>

#include "formats/scene_files.h"
#include "formats/stl/stl_reader.h"
#include "formats/stl/stl_writer.h"
#include "fuzz/parts/session_scenes.h"
#include "gltextures/textures/texture_stores.h"

// The files, the list of models, undo and redo of a session; session_edits.cpp and session_triangles.cpp have
// the rest.
namespace ulk_test {

using namespace ulk3d;

namespace {

constexpr std::size_t most_steps = 60;
constexpr std::size_t most_models = 4;
constexpr std::uint32_t key_return = 0xff0d;  // resets the cameras
constexpr int view_size = 64;  // pixels: small, so that gestures at any place often hit something

}  // namespace

// The letters with their arguments: "model" and "point" are numbers modulo what there is, "number" a
// coordinate.
std::span<const session_t::step_t> session_t::steps() {
    static constexpr std::array table{
        step_t{'o', &session_t::open},              // scene: session_scenes.h has them
        step_t{'w', &session_t::save},              // saves as text, loads and saves again
        step_t{'t', &session_t::save_triangles},    // the same as STL
        step_t{'l', &session_t::open_saved},        // opens what was saved last
        step_t{'m', &session_t::add_mesh},          //
        step_t{'n', &session_t::add_net},           // counts, orders, resolutions: 6 digits
        step_t{'x', &session_t::delete_model},      //
        step_t{'c', &session_t::select_model},      // model
        step_t{'g', &session_t::polygonize},        //
        step_t{'s', &session_t::select_point},      // model, point
        step_t{'S', &session_t::unselect_point},    // model, point
        step_t{'p', &session_t::select_polygon},    // model, polygon
        step_t{'P', &session_t::unselect_polygon},  // model, polygon
        step_t{'a', &session_t::clear_selections},  //
        step_t{'d', &session_t::drag},              // three numbers
        step_t{'h', &session_t::wheel},             // 0 down, 1 nothing, 2 up
        step_t{'b', &session_t::dent},              // three numbers
        step_t{'j', &session_t::gesture},           // mode, modifier, button, x and y of both ends in 16ths
        step_t{'M', &session_t::set_mesh},          // vertices and elements to add, less 4 each
        step_t{'N', &session_t::set_net},           // as n
        step_t{'r', &session_t::set_net_row},       // 0 position or 1 colour, point, selected, three numbers
        step_t{'k', &session_t::set_option},        // table, place, number
        step_t{'V', &session_t::set_vertex_text},   // attribute, lines, three numbers a line
        step_t{'E', &session_t::set_element_text},  // lines, an index a line
        step_t{'T', &session_t::set_map},  // 0 colour, 1 bump, 2 specular map; 0 none, 1 a missing file
        step_t{'e', &session_t::set_environment},  // three numbers
        step_t{'i', &session_t::edit_vertex},      // attribute, point, three numbers
        step_t{'f', &session_t::fold},             // two models and points, angle in 30 degrees less 4
        step_t{'q', &session_t::cut},              //
        step_t{'z', &session_t::undo},             //
        step_t{'y', &session_t::redo},             //
        step_t{'v', &session_t::draw},             // the last: see step_of
    };
    return table;
}

const session_t::step_t& session_t::step_of(std::uint8_t letter) {
    const auto table = steps();
    const auto found = std::ranges::find(table, static_cast<char>(letter), &step_t::letter);
    if (found != table.end())
        return *found;
    // A frame takes longer than all other steps of most sessions together: only its letter draws one.
    return table[letter % (table.size() - 1)];
}

session_t::session_t(ulkedit_t& cleared_editor) : editor(cleared_editor) {
    while (!editor.models().empty()) {
        editor.select_model(0);
        editor.delete_current();
    }
    editor.scene().environment = {};
    editor.scene().clear_fold_vertices();
    editor.set_fold_angle(0);
    editor.set_mode(operation_mode_t::selection);
    libgr::clear_texture_stores();
    editor.reshape(view_size, view_size);
    editor.key_command(key_return);
}

std::string session_t::run(std::span<const std::uint8_t> data) {
    session_bytes_t bytes(data);
    for (std::size_t number = 1; number <= most_steps && !bytes.at_end();) {
        const std::uint8_t letter = bytes.letter();
        if (std::isspace(letter) != 0)
            continue;
        const step_t& step = step_of(letter);
        std::string broken = (this->*step.run)(bytes);
        if (broken.empty())
            broken = broken_invariant(editor.scene(), restripped);
        if (!broken.empty())
            return "Step " + std::to_string(number) + " (" + step.letter + "): " + broken;
        ++number;
    }
    return {};
}

// What the steps share.

std::uint64_t session_t::some_model(session_bytes_t& bytes) {
    // One beyond the last, too: there is no such model.
    return bytes.below(static_cast<std::uint32_t>(editor.models().size()) + 1);
}

model_entry_t* session_t::entry_at(std::uint64_t index) {
    return index < editor.models().size()
               ? std::next(editor.models().begin(), static_cast<std::ptrdiff_t>(index))->get()
               : nullptr;
}

model_entry_t* session_t::current(model_kind_t kind) {
    model_entry_t* const entry = editor.current_model();
    return entry != nullptr && entry->kind == kind ? entry : nullptr;
}

bool session_t::has_room() const {
    return editor.models().size() < most_models;
}

std::string session_t::unchanged_since(const scene_state_t& before, const char* what) {
    const std::string difference = first_difference(before, state_of(editor.scene()));
    return difference.empty() ? difference : what + difference + '.';
}

// Files.

namespace {

/// A mesh without vertices, and a net without points or orders, is left out of a file.
bool is_written(const model_entry_t& entry) {
    const nurbs_t& nurbs = entry.nurbs;
    return entry.kind == model_kind_t::polygon
               ? entry.polygon.vertex_count() != 0
               : nurbs.count1 != 0 && nurbs.order1 != 0 && nurbs.count2 != 0 && nurbs.order2 != 0;
}

/// A net without rows of samples has no surface, which its reader takes for a failure.
bool is_readable(const model_entry_t& entry) {
    return entry.kind == model_kind_t::polygon || entry.nurbs.resolution2 != 0;
}

/// Whether models make a file that loads; one without any model is no scene.
bool gives_a_scene(const model_list_t& models) {
    const auto written = [](const auto& entry) { return is_written(*entry); };
    return std::ranges::any_of(models, written) && std::ranges::all_of(models, [](const auto& entry) {
               return !is_written(*entry) || is_readable(*entry);
           });
}

}  // namespace

std::string session_t::open_text(std::string_view text) {
    file.write(text);
    const std::size_t count = editor.models().size();
    std::ostringstream messages;
    if (!editor.file_open(file.path(), messages))
        return "A scene does not open: " + messages.str();
    if (editor.models().size() > count && editor.current_index() != count)
        return "The first model of an opened scene is not current.";
    return {};
}

std::string session_t::open(session_bytes_t& bytes) {
    const std::string& text = session_scene(bytes.below(session_scene_count));
    return has_room() ? open_text(text) : std::string();
}

std::string session_t::open_saved(session_bytes_t&) {
    if (!has_room() || file.read().empty())
        return {};
    return open_text(file.read());
}

std::string session_t::save(session_bytes_t&) {
    const bool loads = gives_a_scene(editor.models());
    const scene_state_t before = unnamed_state_of(editor.scene());
    if (!editor.save_models_to(file.path()))
        return "The scene can not be saved.";
    const std::string difference = first_difference(before, unnamed_state_of(editor.scene()));
    if (!difference.empty())
        return "Saving has changed the scene: " + difference + '.';
    if (!loads) {
        file.write({});
        return {};
    }
    const memory_file_t again("again");
    std::ostringstream messages;
    std::string broken =
        broken_saving(file.read(), [&](const std::string& saved) -> std::optional<std::string> {
            again.write(saved);
            scene_t scene;
            if (!load_scene(scene, again.path(), editor.view().glpolygon, messages) ||
                !save_models(scene.models, again.path()))
                return std::nullopt;
            return again.read();
        });
    return broken.empty() ? broken : broken + ' ' + std::move(messages).str();
}

std::string session_t::save_triangles(session_bytes_t&) {
    constexpr std::size_t header = 80;  // holds the path
    const memory_file_t first("first"), second("second");
    if (!save_stl_models(first.path(), editor.models()))
        return "The triangles can not be saved.";
    scene_t loaded;
    if (!load_stl(first.path(), loaded) || !save_stl_models(second.path(), loaded.models))
        return "The triangles that were saved can not be loaded and saved again.";
    if (first.read().compare(header, std::string::npos, second.read(), header) != 0)
        return "Saving changes triangles that were loaded.";
    return {};
}

// The list of models.

std::string session_t::add_mesh(session_bytes_t&) {
    if (has_room())
        editor.add_model(model_kind_t::polygon);
    return {};
}

std::string session_t::add_net(session_bytes_t& bytes) {
    if (!has_room())
        return {};
    editor.add_model(model_kind_t::nurbs);
    return set_net(bytes);
}

std::string session_t::delete_model(session_bytes_t&) {
    restripped.erase(editor.current_model());
    editor.delete_current();
    return {};
}

std::string session_t::select_model(session_bytes_t& bytes) {
    editor.select_model(some_model(bytes));
    return {};
}

std::string session_t::polygonize(session_bytes_t&) {
    editor.polygonize_current();
    return {};
}

// Undo and redo.

taking_back_t session_t::key(const char* name, char letter) {
    return {name, [this, letter] {
                editor.press_modifier(modifier_ctrl, modifier_ctrl);
                const bool done = editor.key_command(static_cast<std::uint32_t>(letter));
                editor.release_key(modifier_ctrl);
                return done;
            }};
}

std::string session_t::run_exchange(bool is_undo) {
    const taking_back_t undo = key("undo", 'z'), redo = key("redo", 'y');
    // What is drawn may be behind: a dent moves points, and the release of the button brings it up to date.
    update();
    return broken_exchange([this] { return state_of(editor.scene()); }, is_undo ? undo : redo,
                           is_undo ? redo : undo);
}

std::string session_t::undo(session_bytes_t&) {
    return run_exchange(true);
}

std::string session_t::redo(session_bytes_t&) {
    return run_exchange(false);
}

}  // namespace ulk_test
