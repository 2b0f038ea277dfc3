#pragma once

#include <cstdint>
#include <string>

#include "model/scene.h"

namespace ulk3d {

class glpolygon_t;

/// The file names of a model: its own and those of its maps.
struct model_names_t {
    std::string name, texture, bumpmap, specular;
    bool operator==(const model_names_t&) const = default;
};

model_names_t names_of(const modeling_t& model, const texture_t& texture);

/// What a user can set for a polygon model.
struct polygon_settings_t {
    model_names_t names;
    std::uint32_t vertex_count = 0;
    std::uint32_t element_count = 0;
    bool operator==(const polygon_settings_t&) const = default;
};

polygon_settings_t polygon_settings(const model_entry_t& entry);

/// Applies new settings to a polygon model. A mesh without vertices or without elements is made again,
/// even when nothing differs; any other grows or shrinks when something differs. New vertices are grey and
/// lie at the origin with `new_vertex_frame`; new elements are restart marks. Then its maps are opened by
/// their names in the directory of the model's own name, loading those that are not loaded yet; a map that
/// can not be loaded is reported and left out.
///
/// False, after a line on the standard error stream, when there is no memory: the model then stays as it was.
/// No caller needs to look at that.
bool set_polygon_settings(model_entry_t& entry, const polygon_settings_t& settings);

/// What a user can set for a NURBS model.
struct nurbs_settings_t {
    model_names_t names;
    std::uint32_t count1 = 0, count2 = 0;
    std::uint32_t order1 = 0, order2 = 0;
    std::uint32_t resolution1 = 0, resolution2 = 0;
    bool operator==(const nurbs_settings_t&) const = default;
};

nurbs_settings_t nurbs_settings(const model_entry_t& entry);

/// Applies new settings to a NURBS model. When anything differs, even a name, all tables are made again, as
/// those of a flat sheet (model/nurbs/flat_sheet.h). For a resolution that no mesh can have the mesh keeps
/// its old shape, after a line on the standard error stream; a map that can not be loaded is reported and
/// left out.
///
/// False, after such a line, when there is no memory: the model then stays as it was. No caller needs to look
/// at that.
bool set_nurbs_settings(model_entry_t& entry, const nurbs_settings_t& settings, glpolygon_t& glpolygon);

/// What a user can set for the environment.
struct environment_settings_t {
    std::string cubetex;
    float reflectalpha = 0, refractalpha = 0, refractfactor = 0;
};

environment_settings_t environment_settings(const environment_t& environment);

/// Applies new settings to the environment and loads its map, whether or not anything differs; a failure is
/// reported by `environment_t::initex`. `base_file` is the path beside which the map lies, or null.
void set_environment_settings(environment_t& environment, const environment_settings_t& settings,
                              const char* base_file);

}  // namespace ulk3d
