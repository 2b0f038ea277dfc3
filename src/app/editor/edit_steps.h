#pragma once

#include <cstdint>
#include <list>

#include "model/math/records.h"
#include "model/scene.h"

namespace ulk3d {

/// The steps of undo and redo of a scene, on both levels: what each model's history keeps of its own edits,
/// and which models a step of the user has edited. Nothing else works on either.
///
/// A step names models, and stands for the latest edit of each, whichever that is. A new edit leaves the
/// steps of redo alone. Of an edit that is open, begun and not yet committed, each model has its own part. A
/// GL context must be current.
class edit_steps_t {
  public:
    /// The models are not owned; a model that leaves the list must be forgotten first.
    explicit edit_steps_t(model_list_t& edited_models) : models(edited_models) {}

    /// Opens an edit of the positions of the selected points of every model.
    void begin();
    /// Moves the points of the open edit to `way` from where they began. Whether there is any.
    bool move(const dir3& way);
    /// Closes the edit. The models in which anything has moved make a step; whether there is one.
    bool commit();

    /// Moves the selected points by notches of the wheel, as an edit of each model that is no step: it is
    /// taken back by the next undo that names the model. Whether there is any point.
    bool wheel(int delta);

    /// Makes an edit of a model that was made elsewhere a step of its own.
    void push(model_entry_t& entry, edit_t edit);

    /// Takes the last step back, or does it again. False when there is none.
    bool undo();
    bool redo();

    /// Forgets all steps and edits: what they name points by is no longer so.
    void forget();

  private:
    using step_t = std::list<model_entry_t*>;

    model_list_t& models;
    std::list<step_t> undo_list;
    std::list<step_t> redo_list;
};

}  // namespace ulk3d
