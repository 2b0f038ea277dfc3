#pragma once

#include "model/math/records.h"
#include "model/scene.h"

namespace ulk3d {

/// Folds the selected polygons of all polygon models in the list by `angle` degrees about the line from `a`
/// to `b`, as `fold_polygons` does.
///
/// False, with nothing changed, when both points are at the same place, when no polygon is selected, or when
/// memory does not suffice. Requires a current GL context. Edit histories of changed models are no longer
/// valid; the caller has to clear them.
[[nodiscard]] bool fold_models(model_list_t& models, const pos3& a, const pos3& b, float angle);

}  // namespace ulk3d
