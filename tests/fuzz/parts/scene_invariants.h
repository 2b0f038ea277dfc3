#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>

#include "fuzz/parts/scene_state.h"

/// What holds of a scene after every command. Each check gives a sentence about the first thing that is
/// broken, and nothing when all holds. A GL context must be current.
namespace ulk_test {

/// Models whose strips were written over as text: their polygon ids are those of the strips before, until
/// something numbers them again.
using restripped_models_t = std::set<const ulk3d::model_entry_t*>;

/// The current model is the one at the current index. Each model has as many point sizes and selection bits
/// as points, and they agree; as many normals as vertices; the polygon ids and the selected triangles of its
/// strips. A net has tables of the sizes that its counts and orders say, and a buffer with the same points.
/// No error of GL is pending.
std::string broken_invariant(const ulk3d::edited_scene_t& scene, const restripped_models_t& restripped);

/// Undo or redo: its name, and what returns whether it has done anything.
struct taking_back_t {
    std::string name;
    std::function<bool()> run;
};

/// Each of undo and redo reverses the other, bit for bit, and does nothing without a step. Runs `there`,
/// `back` and `there` again, so that what the first has done is left.
std::string broken_exchange(const std::function<scene_state_t()>& state, const taking_back_t& there,
                            const taking_back_t& back);

/// Loads a saved file and saves it again; empty when it can not be loaded.
using reload_t = std::function<std::optional<std::string>(const std::string& file)>;

/// What was saved loads, and from then on the file no longer changes. The first file still holds numbers that
/// were never rounded to six digits or, as colours are, to whole bytes: it may differ from the second. The
/// directions of vertices may take a few files more: a triangle without an area supplies normals of zero,
/// which the next load takes for missing ones.
std::string broken_saving(const std::string& first, const reload_t& reload);

}  // namespace ulk_test
