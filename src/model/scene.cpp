#include "model/scene.h"

namespace ulk3d {

modeling_t* modeling_of(model_entry_t& entry) {
    switch (entry.kind) {
        case kind_polygon:
            return &entry.polygon;
        case kind_nurbs:
            return &entry.nurbs;
        default:
            return nullptr;
    }
}

const modeling_t* modeling_of(const model_entry_t& entry) {
    return modeling_of(const_cast<model_entry_t&>(entry));
}

}  // namespace ulk3d
