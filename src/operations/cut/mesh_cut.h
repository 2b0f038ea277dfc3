#pragma once

#include <sigc++/signal.h>

#include <cstdint>

#include "model/scene.h"
#include "operations/strips/strip_mesh.h"

namespace ulk3d {

/// Receives how far the cut has come. A handler may run other events: no buffer is mapped meanwhile.
using progress_signal_t = sigc::signal<void, double>;

/// What becomes of the openings that a cut makes: they stay, or get the walls of walls/cut_walls.h.
enum class openings_t { stay, get_walls };

/// Subtracts the polygon model at place `current` of the list, the cutter, from all other polygon models in
/// the list: their triangles are split along the lines where they meet the cutter's, and then each triangle
/// whose centroid is inside the cutter is removed. The cutter and models of other kinds stay as they are, and
/// so does a model in which nothing is split or removed. Does nothing when there is no polygon model with
/// vertices and elements at `current`.
///
/// Progress runs from 0 to 0.5 while a model is split, starting over for each model, and then from 0.5 to 1,
/// or slightly more, while triangles are removed from it. For its walls it runs from 0 to 1 once more.
///
/// A model that a handler of the progress removes from the list is left alone from then on. False, after a
/// line on the standard error stream, when GL has no memory for a changed model or can not map one: all
/// models then stay as they were. Requires a current GL context. Edit histories of changed models are no
/// longer valid; the caller has to clear them.
[[nodiscard]] bool mesh_cut(const progress_signal_t& progress, std::uint64_t current, model_list_t& models,
                            openings_t openings = openings_t::stay);

/// The two phases of the cut, on the host. Both return whether the victim has changed. A victim whose box is
/// apart from the cutter's is left alone.
bool split_by(strip_mesh_t& victim, const strip_mesh_t& cutter, const progress_signal_t& progress);
bool remove_inside(strip_mesh_t& victim, const strip_mesh_t& cutter, const progress_signal_t& progress);

}  // namespace ulk3d
