#include "model/scene.h"

namespace ulk3d {

modeling_t& model_entry_t::modeling() {
    if (kind == model_kind_t::nurbs)
        return nurbs;
    return polygon;
}

const modeling_t& model_entry_t::modeling() const {
    return const_cast<model_entry_t&>(*this).modeling();
}

}  // namespace ulk3d
