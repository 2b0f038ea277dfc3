#include "model/scene.h"

#include <utility>

namespace ulk3d {

bool model_entry_t::copy(const model_entry_t& other) {
    kind = other.kind;
    texture = other.texture;
    return polygon.copy(other.polygon) && nurbs.copy(other.nurbs);
}

void model_entry_t::swap(model_entry_t& other) noexcept {
    std::swap(kind, other.kind);
    std::swap(texture, other.texture);
    polygon.swap(other.polygon);
    nurbs.swap(other.nurbs);
}

modeling_t& model_entry_t::modeling() {
    if (kind == model_kind_t::nurbs)
        return nurbs;
    return polygon;
}

const modeling_t& model_entry_t::modeling() const {
    return const_cast<model_entry_t&>(*this).modeling();
}

}  // namespace ulk3d
