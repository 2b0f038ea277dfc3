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

/// A vertex of the fold axis: a model by its place in the scene, and a vertex of it.
struct fold_pick_t {
    std::uint64_t model = no_index;
    std::uint64_t vertex = no_index;
};

/// What is edited: the models in their order and which of them is current, the environment, what is selected,
/// the two ends of the fold axis, and the steps of undo.
///
/// It knows nothing of views or of the mouse. What changes models goes through the gate, so that nothing gets
/// into a running change. A GL context must be current for everything but construction.
class edited_scene_t {
  public:
    edited_scene_t();
    edited_scene_t(const edited_scene_t&) = delete;
    edited_scene_t& operator=(const edited_scene_t&) = delete;

    const model_list_t& models() const { return model_list; }

    /// The model that commands work on, null when there is none.
    model_entry_t* current_model();
    const model_entry_t* current_model() const;
    /// Its place in the scene; 0 when there is none.
    std::uint64_t current_index() const { return index_of_current; }
    /// Makes the model at `index` current; none when the scene has no such model.
    void select_model(std::uint64_t index);

    /// Saving by path; false when not all bytes reached the file, or when there is no current model to save.
    bool save_models_to(const char* path);
    bool save_current_to(const char* path);

    scene_gate_t& gate() { return change_gate; }
    const scene_gate_t& gate() const { return change_gate; }

    // Changes of the list of models and of their kinds. They go through the gate.

    /// Adds what `load` puts into an empty scene: models, of which the first becomes current, and an
    /// environment that names a map. Forgets the steps of undo. False, with nothing changed, when `load`
    /// gives false.
    bool append(const std::function<bool(scene_t&)>& load);
    /// Appends an empty model of a kind and makes it current.
    void add_model(model_kind_t kind);
    /// Takes the current model out of the scene and forgets the steps of undo; the model behind it becomes
    /// current, or else the new last one.
    void delete_current();
    /// Turns a NURBS model into the polygon model that it is drawn as.
    void polygonize_current();

    // Changes of triangles. They go through the gate and forget the steps of undo.

    /// Folds the selected polygons of all polygon models by `angle` degrees about the fold axis. False, with
    /// nothing changed, when the axis has not two ends at two places, or when no polygon is selected.
    bool fold(float angle);
    /// Subtracts the current polygon model from all others; does nothing when a NURBS model or none is
    /// current. `receiver` hears how much is done, from 0 to 1, and may run the event loop in it.
    void cut_current(const sigc::slot<void, double>& receiver);

    // Changes of points.

    /// Dents each NURBS model that has a selected point around the lowest one by `way`. Whether there is any.
    bool dent(const dir3& way);
    /// Brings what is drawn up to date with the points.
    void update_models(glpolygon_t& glpolygon);

    // What is selected. Models that do not exist and points or polygons that they do not have are passed
    // over; polygons are those of polygon models.

    bool select_vertex(std::uint64_t model, std::uint64_t vertex);
    bool unselect_vertex(std::uint64_t model, std::uint64_t vertex);
    void clear_selection();
    /// Reports a newly selected polygon on the standard output stream.
    bool select_polygon(std::uint64_t model, std::uint64_t polygon);
    bool unselect_polygon(std::uint64_t model, std::uint64_t polygon);
    void clear_polygons();

    // The fold axis, from end 0 to end 1.

    bool set_fold_vertex(std::size_t end, std::uint64_t model, std::uint64_t vertex);
    void clear_fold_vertices();
    /// The places of both ends; none when one of them does not exist.
    std::optional<std::pair<pos3, pos3>> fold_positions() const;

    environment_t environment;
    fold_pick_t fold_picks[2];

  private:
    const model_entry_t* model_at(std::uint64_t index) const;
    model_entry_t* model_at(std::uint64_t index);
    /// The mesh of a polygon model, null for one that is none.
    polygon_t* polygon_at(std::uint64_t index);

    model_list_t model_list;
    model_list_t::iterator current;
    std::uint64_t index_of_current = 0;
    scene_gate_t change_gate;

  public:
    edit_steps_t steps{model_list};
};

}  // namespace ulk3d
