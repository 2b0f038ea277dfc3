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

enum class model_kind_t : std::uint32_t { polygon = 0, nurbs = 1 };

/// One model of the scene, of either kind. Models are identified by their place in the scene's list.
///
/// What both kinds have is kept here and in `texture`, so that it stays when a NURBS model becomes the
/// polygon model that it is drawn as: only `kind` changes then.
struct model_entry_t {
    explicit model_entry_t(model_kind_t model_kind) : kind(model_kind), nurbs(&texture, &polygon) {}
    model_entry_t(const model_entry_t&) = delete;
    model_entry_t& operator=(const model_entry_t&) = delete;

    /// Makes a new entry equal to `other`, with buffers of its own and an empty history. False, after a line
    /// on the standard error stream, when GL has no memory.
    [[nodiscard]] bool copy(const model_entry_t& other);
    /// Exchanges the contents of both but for their histories. Never fails.
    void swap(model_entry_t& other) noexcept;

    /// The model that `kind` selects.
    modeling_t& modeling();
    const modeling_t& modeling() const;

    model_kind_t kind;
    texture_t texture;
    polygon_t polygon;  ///< the mesh; for a NURBS model the tessellated surface
    nurbs_t nurbs;      ///< writes into `texture` and `polygon`; empty in a polygon model
    edit_history_t history;
};

using model_list_t = std::list<std::unique_ptr<model_entry_t>>;

/// What a load fills.
struct scene_t {
    environment_t environment;
    model_list_t models;
};

}  // namespace ulk3d
