#include "operations/fold/fold_models.h"

#include "model/math/vectors.h"
#include "model/whole_change.h"
#include "operations/fold/fold_polygons.h"

namespace ulk3d {

namespace {

/// After a failure the mesh may be half folded.
bool fold_mesh(polygon_t& polygon, const pos3& a, const pos3& b, float angle) {
    return fold_polygons(polygon.selectpolygons(), a, b, angle, polygon.vertices, polygon.normals,
                         polygon.elements) &&
           polygon.extend(polygon.vertices.element_count(), polygon.elements.element_count());
}

}  // namespace

bool fold_models(model_list_t& models, const pos3& a, const pos3& b, float angle) {
    if (f_eq(a, b))
        return false;
    whole_change_t change;
    bool folded = false;
    for (const auto& entry : models) {
        // A model without a selection would stay as it is: that does not count as a fold, so that the user
        // learns that nothing was folded.
        if (entry->kind != model_kind_t::polygon || entry->polygon.selectpolygons().empty())
            continue;
        model_entry_t* const copy = change.copy_of(*entry);
        if (copy == nullptr || !fold_mesh(copy->polygon, a, b, angle))
            return false;
        folded = true;
    }
    change.commit();
    return folded;
}

}  // namespace ulk3d
