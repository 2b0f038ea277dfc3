#pragma once

#include <cstdint>
#include <list>
#include <memory>

#include "model/edit_history.h"
#include "model/environment.h"
#include "model/nurbs/nurbs.h"
#include "model/polygon/polygon.h"
#include "model/texture.h"

namespace ulk3d {

enum : std::uint32_t {
    kind_polygon = 0,
    kind_nurbs = 1,
};

/// One model of the scene, of either kind. Models are told apart by their place in the scene's list.
struct model_entry_t {
    explicit model_entry_t(std::uint32_t model_kind) : kind(model_kind), nurbs(&texture, &polygon) {}
    model_entry_t(const model_entry_t&) = delete;
    model_entry_t& operator=(const model_entry_t&) = delete;

    std::uint32_t kind;  ///< kind_polygon or kind_nurbs
    texture_t texture;
    polygon_t polygon;  ///< the mesh; for a NURBS model the tessellated surface
    nurbs_t nurbs;      ///< writes into `texture` and `polygon`; empty in a polygon model
    edit_history_t history;
};

/// The model of an entry, by its kind; null for a kind that does not exist.
modeling_t* modeling_of(model_entry_t& entry);
const modeling_t* modeling_of(const model_entry_t& entry);

using model_list_t = std::list<std::unique_ptr<model_entry_t>>;

/// What a load fills.
struct scene_t {
    environment_t environment;
    model_list_t models;
};

}  // namespace ulk3d
