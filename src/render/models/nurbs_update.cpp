#include "model/nurbs/nurbs.h"
#include "model/polygon/polygon.h"
#include "render/models/glpolygon.h"

/// The one operation of a NURBS model that needs a GL program: the frames of its mesh are made on the GPU.
namespace ulk3d {

void nurbs_t::update(glpolygon_t& glpolygon) {
    if (!makeVertices())
        return;
    polygon->afterload(nullptr);
    updateVertices();
    glpolygon.update_frames(*polygon);
}

}  // namespace ulk3d
