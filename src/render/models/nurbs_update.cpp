#include <optional>
#include <utility>

#include "model/nurbs/nurbs.h"
#include "model/polygon/polygon.h"
#include "model/texture.h"
#include "render/models/glpolygon.h"

/// How a NURBS model keeps its mesh in step with its tables. This is here, in a layer above the model,
/// because a GL program computes the frames of the mesh.
namespace ulk3d {

nurbs_t::change_t nurbs_t::changes() const {
    const bool is_built =
        built_resolution && built_resolution->columns == resolution1 && built_resolution->rows == resolution2;
    const bool is_evaluated =
        built_source && has_other_points_only(*built_source) && is_same(built_source->points, points);
    return {.sizes = !is_built, .points = !is_evaluated};
}

bool nurbs_t::rebuild(const change_t& change, glpolygon_t& glpolygon) {
    if (change.sizes) {
        built_resolution.reset();
        built_source.reset();
        if (!makeVertices() || !polygon->afterload(nullptr))
            return false;
        built_resolution = {resolution2, resolution1};
    }
    if (change.points) {
        // Until all has worked there is no source that the mesh stands for.
        std::optional<source_t> former;
        former.swap(built_source);
        source_t source{order1, order2, knot1, knot2, weight, points, false};
        const std::optional<bool> is_local = evaluate(former ? &*former : nullptr);
        if (!is_local)
            return false;
        source.is_local = *is_local;
        if (!glpolygon.update_frames(*polygon))
            return false;
        built_source = std::move(source);
    }
    return true;
}

void nurbs_t::update(glpolygon_t& glpolygon) {
    // Reports its own failure; the mesh then keeps its old shape.
    static_cast<void>(bring_up_to_date(glpolygon));
}

bool nurbs_t::bring_up_to_date(glpolygon_t& glpolygon) {
    const change_t change = changes();
    if (!change.sizes)
        texture->open(name.c_str());
    return rebuild(change, glpolygon);
}

}  // namespace ulk3d
