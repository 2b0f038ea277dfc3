#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "app/editor/ulkedit.h"
#include "fuzz/parts/scene_invariants.h"
#include "fuzz/parts/session_bytes.h"
#include "support/memory_file.h"

namespace ulk_test {

/// An editing session out of any bytes: files are opened, points and polygons selected, dragged, dented and
/// edited in dialogs, meshes folded and cut, steps undone, models saved, in any order. After each step the
/// scene's invariants are checked (fuzz/parts/scene_invariants.h).
///
/// Each step is a letter, which session.cpp lists with its arguments, and a byte for each argument
/// (fuzz/parts/session_bytes.h). Blanks and line feeds between steps are skipped, and any other byte stands
/// for one of the letters. Scenes stay small: what would make them large does nothing.
class session_t {
  public:
    /// Clears the editor, so that the session does not depend on what was done with it before. A new editor
    /// for each session would have its programs compiled again. A GL context must be current from here on.
    explicit session_t(ulk3d::ulkedit_t& cleared_editor);

    /// Runs the steps up to the first broken invariant: a sentence that tells the number of the step, its
    /// letter and what is broken. Empty when all holds.
    std::string run(std::span<const std::uint8_t> bytes);

    struct step_t {
        char letter;
        std::string (session_t::*run)(session_bytes_t& bytes);
    };

  private:
    /// The elements of all models.
    using all_strips_t = std::vector<std::vector<std::uint32_t>>;
    /// Strips of fewer elements than this have no triangle, and what numbers polygons skips them.
    static constexpr std::size_t least_numbered = 3;

    static std::span<const step_t> steps();
    static const step_t& step_of(std::uint8_t letter);

    // Files.
    std::string open(session_bytes_t& bytes);
    std::string save(session_bytes_t& bytes);
    std::string save_triangles(session_bytes_t& bytes);
    std::string open_saved(session_bytes_t& bytes);

    // The list of models.
    std::string add_mesh(session_bytes_t& bytes);
    std::string add_net(session_bytes_t& bytes);
    std::string delete_model(session_bytes_t& bytes);
    std::string select_model(session_bytes_t& bytes);
    std::string polygonize(session_bytes_t& bytes);

    // Selections and moves.
    std::string select_point(session_bytes_t& bytes);
    std::string unselect_point(session_bytes_t& bytes);
    std::string select_polygon(session_bytes_t& bytes);
    std::string unselect_polygon(session_bytes_t& bytes);
    std::string clear_selections(session_bytes_t& bytes);
    std::string drag(session_bytes_t& bytes);
    std::string wheel(session_bytes_t& bytes);
    std::string dent(session_bytes_t& bytes);
    std::string gesture(session_bytes_t& bytes);
    std::string draw(session_bytes_t& bytes);

    // Dialogs.
    std::string set_mesh(session_bytes_t& bytes);
    std::string set_net(session_bytes_t& bytes);
    std::string set_net_row(session_bytes_t& bytes);
    std::string set_option(session_bytes_t& bytes);
    std::string set_vertex_text(session_bytes_t& bytes);
    std::string set_element_text(session_bytes_t& bytes);
    std::string set_map(session_bytes_t& bytes);
    std::string set_environment(session_bytes_t& bytes);
    std::string edit_vertex(session_bytes_t& bytes);

    // Triangles.
    std::string fold(session_bytes_t& bytes);
    std::string cut(session_bytes_t& bytes);

    static all_strips_t strips_of(const ulk3d::model_list_t& models);
    static bool are_small(const all_strips_t& strips);
    static std::string broken_strips(const ulk3d::model_list_t& models, const all_strips_t& before);
    /// Edits of triangles number the polygons of what they write.
    void note_numbered(const all_strips_t& before);

    // Steps of undo.
    std::string undo(session_bytes_t& bytes);
    std::string redo(session_bytes_t& bytes);

    std::uint64_t some_model(session_bytes_t& bytes);
    ulk3d::model_entry_t* entry_at(std::uint64_t index);
    ulk3d::model_entry_t* current(ulk3d::model_kind_t kind);
    bool has_room() const;
    ulk3d::nurbs_settings_t net_settings(session_bytes_t& bytes);
    std::string open_text(std::string_view text);
    void update() { editor.scene().update_models(editor.view().glpolygon); }
    std::string unchanged_since(const scene_state_t& before, const char* what);
    std::string run_exchange(bool is_undo);
    taking_back_t key(const char* name, char letter);

    ulk3d::ulkedit_t& editor;
    restripped_models_t restripped;
    bool has_drawn = false;  ///< only the first frame of a session is drawn
    memory_file_t file{"session"};
};

}  // namespace ulk_test
