#pragma once

#include <cstdint>
#include <list>

#include "model/math/records.h"
#include "model/scene.h"

namespace ulk3d {

/// The steps of undo and redo of a scene, on both levels: each model's history of its own edits, and which
/// models each step of the user has edited. Nothing else changes either.
///
/// A step names models, and stands for the latest edit of each, whichever that is. A new edit leaves the
/// steps of redo alone. An open edit, begun and not yet committed, has a part in the history of each model. A
/// GL context must be current for every operation except construction.
class edit_steps_t {
  public:
    /// The models are not owned; before a model leaves the list, call `forget`.
    explicit edit_steps_t(model_list_t& edited_models) : models(edited_models) {}

    /// Opens an edit of the positions of the selected points of every model.
    void begin();
    /// Moves the points of the open edit to `way` from where they began. Returns whether there are any.
    bool move(const dir3& way);
    /// Closes the edit. The models in which anything has moved become a step; returns whether there is one.
    bool commit();

    /// Moves the selected points by notches of the wheel, as an edit of each model that is not a step: the
    /// next undo that names the model takes it back. Returns whether there are any points.
    bool wheel(int delta);

    /// Makes a step of an edit of one model that was carried out elsewhere. Nothing changes when memory runs
    /// out.
    void push(model_entry_t& entry, edit_t edit);

    /// Undoes or redoes the last step. False when there is none.
    bool undo();
    bool redo();

    /// Forgets all steps and edits, for when the points that they name are no longer the same.
    void forget();

  private:
    using step_t = std::list<model_entry_t*>;

    model_list_t& models;
    std::list<step_t> undo_list;
    std::list<step_t> redo_list;
};

}  // namespace ulk3d
