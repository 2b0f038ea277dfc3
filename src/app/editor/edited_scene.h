#pragma once

#include <sigc++/functors/slot.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "app/editor/edit_steps.h"
#include "app/editor/scene_gate.h"
#include "model/scene.h"

namespace ulk3d {

class glpolygon_t;

/// The index of a model or vertex that does not exist.
inline constexpr std::uint64_t no_index = ~std::uint64_t{0};

/// One end of the fold axis: a model, by its place in the scene, and one of its vertices.
struct fold_pick_t {
    std::uint64_t model = no_index;
    std::uint64_t vertex = no_index;
};

/// What is edited: the models in order and which of them is current, the environment, the selection, the two
/// ends of the fold axis, and the steps of undo.
///
/// It knows nothing of views or of the mouse. Changes of models go through the gate, so that nothing
/// interferes with a change that is still running. A GL context must be current for everything except
/// construction.
class edited_scene_t {
  public:
    edited_scene_t();
    edited_scene_t(const edited_scene_t&) = delete;
    edited_scene_t& operator=(const edited_scene_t&) = delete;

    const model_list_t& models() const { return model_list; }

    /// The model that commands work on; null when there is none.
    model_entry_t* current_model();
    const model_entry_t* current_model() const;
    /// The place of the current model in the scene; 0 when there is none.
    std::uint64_t current_index() const { return index_of_current; }
    /// Makes the model at `index` current; no model is current when the scene has none there.
    void select_model(std::uint64_t index);

    /// Saves to a path, whose ending decides the form (formats/scene_files.h). False when not all bytes have
    /// reached the file, or when there is no current model to save.
    [[nodiscard]] bool save_models_to(const char* path);
    [[nodiscard]] bool save_current_to(const char* path);

    scene_gate_t& gate() { return change_gate; }
    const scene_gate_t& gate() const { return change_gate; }

    // Changes to the list of models and to their kinds. They go through the gate.

    /// Adds what `load` puts into an empty scene: models, the first of which becomes current, and an
    /// environment if it names a map. Forgets the steps of undo. False, with nothing changed, when `load`
    /// returns false or the gate is closed.
    [[nodiscard]] bool append(const std::function<bool(scene_t&)>& load);
    /// Appends an empty model of a kind and makes it current. False, with nothing changed, when the gate is
    /// closed.
    bool add_model(model_kind_t kind);
    /// Removes the current model from the scene and forgets the steps of undo; the model after it becomes
    /// current, or the new last one when there is none.
    void delete_current();
    /// Turns the current model, when it is a NURBS model, into the polygon model that it is drawn as.
    void polygonize_current();

    // Changes to triangles. They go through the gate and forget the steps of undo.

    /// Folds the selected polygons of all polygon models by `angle` degrees about the fold axis. False, with
    /// nothing changed, when the axis lacks an end or both ends are at the same place, when no polygon is
    /// selected, when memory does not suffice, or when the gate is closed.
    [[nodiscard]] bool fold(float angle);
    /// Subtracts the current polygon model from all others; does nothing when the current model is a NURBS
    /// model or there is none. `receiver` is called with the fraction done, from 0 to 1, and may run the
    /// event loop.
    void cut_current(const sigc::slot<void, double>& receiver);

    // Changes to points.

    /// Dents each NURBS model that has a selected point, by `way` around the first selected one. Returns
    /// whether there is any such model.
    bool dent(const dir3& way);
    /// Brings what is drawn up to date with the points.
    void update_models(glpolygon_t& glpolygon);

    // The selection. Models that do not exist, and points or polygons that they do not have, are ignored;
    // polygons are those of polygon models. The results are true when the selection has changed.

    bool select_vertex(std::uint64_t model, std::uint64_t vertex);
    bool unselect_vertex(std::uint64_t model, std::uint64_t vertex);
    void clear_selection();
    /// Also reports a newly selected polygon on the standard output stream.
    bool select_polygon(std::uint64_t model, std::uint64_t polygon);
    bool unselect_polygon(std::uint64_t model, std::uint64_t polygon);
    void clear_polygons();

    // The fold axis, from end 0 to end 1.

    /// Sets end 0 or 1 to a vertex, which is not checked. Always true, as the slots of hits have a result.
    bool set_fold_vertex(std::size_t end, std::uint64_t model, std::uint64_t vertex);
    void clear_fold_vertices();
    /// The positions of both ends; empty when one of them does not exist.
    std::optional<std::pair<pos3, pos3>> fold_positions() const;

    environment_t environment;
    fold_pick_t fold_picks[2];
    edit_steps_t steps{model_list};

  private:
    const model_entry_t* model_at(std::uint64_t index) const;
    model_entry_t* model_at(std::uint64_t index);
    /// The mesh of the polygon model at `index`; null when there is no polygon model.
    polygon_t* polygon_at(std::uint64_t index);

    model_list_t model_list;
    model_list_t::iterator current;
    std::uint64_t index_of_current = 0;
    scene_gate_t change_gate;
};

}  // namespace ulk3d
