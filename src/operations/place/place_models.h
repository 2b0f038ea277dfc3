#pragma once

#include <span>

#include "model/scene.h"
#include "operations/place/placement.h"

namespace ulk3d {

class glpolygon_t;

enum class place_kind_t {
    move,
    turn,
    scale,
    center,  ///< moves the middle of the box to the origin
    unit,    ///< and then scales the longest side of the box to 1, if it has a length
};

/// One step of placing models.
struct place_step_t {
    place_kind_t kind;
    position_t values{};  ///< distances; degrees; a factor in front
};

/// A model that is being placed, and what has been asked for it so far.
struct placed_model_t {
    model_entry_t* model;  ///< not owned
    placement_t placement;
};

/// Adds steps to models that are placed as one body: their common box decides where its middle is and how
/// long it is. It is that of all control points, and of all vertices that strips refer to, at the places that
/// they have by now; what is not finite does not count. Without any of them nothing is centred or scaled by
/// it. The models themselves stay as they are. False when an array can not be mapped.
[[nodiscard]] bool add_place_steps(std::span<placed_model_t> body, std::span<const place_step_t> steps);

enum class placed_t { done, too_far, no_memory };

/// Gives a model the place that was asked for: its vertices and their frames, or its control points, from
/// which the drawn mesh is made anew. `too_far`, with nothing changed, when a number would be too large for
/// single precision; `no_memory` when a buffer can not be mapped or made.
///
/// Steps of undo know nothing of this. A GL context must be current.
[[nodiscard]] placed_t place_model(const placed_model_t& placed, glpolygon_t& glpolygon);

}  // namespace ulk3d
