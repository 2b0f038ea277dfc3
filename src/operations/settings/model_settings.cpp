#include "operations/settings/model_settings.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "model/nurbs/flat_sheet.h"
#include "model/whole_change.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {

namespace {

void take_names(modeling_t& model, texture_t& texture, const model_names_t& names) {
    model.name = names.name;
    texture.texture = names.texture;
    texture.bumpmap = names.bumpmap;
    texture.specular = names.specular;
}

bool make_tables(nurbs_t& nurbs, const nurbs_settings_t& settings) {
    if (nurbs.allocate(settings.count1, settings.order1, settings.count2, settings.order2)) {
        make_flat_sheet(nurbs);
        return true;
    }
    std::cerr << "nurbs.allocate() failed." << std::endl;
    return false;
}

/// A model without arrays gets new ones; any other keeps its contents.
bool size_arrays(polygon_t& polygon, const polygon_settings_t& settings, bool is_empty) {
    return is_empty ? polygon.allocate(settings.vertex_count, settings.element_count)
                    : polygon.extend(settings.vertex_count, settings.element_count);
}

/// New vertices are grey, so that they can be seen on the dark ground, and look to the front. False when they
/// can not be mapped.
bool show_new_vertices(polygon_t& polygon, std::size_t first) {
    if (first >= polygon.vertex_count())
        return true;
    const array_span<vertex_t> vertices(polygon.vertices);
    const array_span<frame_t> frames(polygon.normals);
    if (!vertices || !frames)
        return false;
    std::ranges::fill(vertices.span().subspan(first), vertex_t{{}, default_color, {}});
    std::ranges::fill(frames.span().subspan(first), new_vertex_frame);
    return true;
}

/// Builds the mesh of new tables. False when it can not be made.
bool build_mesh(model_entry_t& model, glpolygon_t& glpolygon) {
    nurbs_t& nurbs = model.nurbs;
    const bool fits = nurbs.mesh_fits();
    const bool is_built = nurbs.rebuild({.sizes = true}, glpolygon);
    // Opening stops at the first map that can not be loaded and skips it the next time: three attempts, the
    // last one by the update, reach all three maps.
    model.texture.open(nurbs.name.c_str());
    const bool is_evaluated = nurbs.bring_up_to_date(glpolygon);
    // For sizes that no mesh has, such as a resolution of 0, it keeps its old shape.
    return (is_built && is_evaluated) || !fits;
}

}  // namespace

model_names_t names_of(const modeling_t& model, const texture_t& texture) {
    return {model.name, texture.texture, texture.bumpmap, texture.specular};
}

polygon_settings_t polygon_settings(const model_entry_t& entry) {
    return {names_of(entry.polygon, entry.texture), static_cast<std::uint32_t>(entry.polygon.vertex_count()),
            static_cast<std::uint32_t>(entry.polygon.element_count())};
}

bool set_polygon_settings(model_entry_t& entry, const polygon_settings_t& settings) {
    const bool is_empty = entry.polygon.vertex_count() == 0 || entry.polygon.element_count() == 0;
    if (!is_empty && settings == polygon_settings(entry))
        return true;
    whole_change_t change;
    model_entry_t* const changed = change.copy_of(entry);
    if (changed == nullptr)
        return false;
    polygon_t& polygon = changed->polygon;
    take_names(polygon, changed->texture, settings.names);
    const std::size_t first_new = is_empty ? 0 : polygon.vertex_count();
    std::vector<bool> unset_frames = polygon.unset_frames;
    if (!size_arrays(polygon, settings, is_empty) || !show_new_vertices(polygon, first_new))
        return false;
    unset_frames.resize(std::min<std::size_t>(first_new, polygon.vertex_count()), false);
    unset_frames.resize(polygon.vertex_count(), true);
    polygon.unset_frames = std::move(unset_frames);
    changed->texture.open(polygon.name.c_str());
    if (!polygon.afterload(nullptr))
        return false;
    change.commit();
    return true;
}

nurbs_settings_t nurbs_settings(const model_entry_t& entry) {
    const nurbs_t& nurbs = entry.nurbs;
    return {names_of(nurbs, entry.texture),
            static_cast<std::uint32_t>(nurbs.count1),
            static_cast<std::uint32_t>(nurbs.count2),
            static_cast<std::uint32_t>(nurbs.order1),
            static_cast<std::uint32_t>(nurbs.order2),
            nurbs.resolution1,
            nurbs.resolution2};
}

bool set_nurbs_settings(model_entry_t& entry, const nurbs_settings_t& settings, glpolygon_t& glpolygon) {
    if (settings == nurbs_settings(entry))
        return true;
    whole_change_t change;
    model_entry_t* const changed = change.copy_of(entry);
    if (changed == nullptr)
        return false;
    nurbs_t& nurbs = changed->nurbs;
    take_names(nurbs, changed->texture, settings.names);
    nurbs.resolution1 = settings.resolution1;
    nurbs.resolution2 = settings.resolution2;
    changed->polygon.name = nurbs.name;
    if (!make_tables(nurbs, settings) || !nurbs.afterload(nullptr) || !build_mesh(*changed, glpolygon))
        return false;
    change.commit();
    return true;
}

environment_settings_t environment_settings(const environment_t& environment) {
    return {environment.cubetex, environment.reflectalpha, environment.refractalpha,
            environment.refractfactor};
}

void set_environment_settings(environment_t& environment, const environment_settings_t& settings,
                              const char* base_file) {
    environment_t changed = environment;
    changed.cubetex = settings.cubetex;
    changed.reflectalpha = settings.reflectalpha;
    changed.refractalpha = settings.refractalpha;
    changed.refractfactor = settings.refractfactor;
    // Reports its own failure; the numbers are set all the same.
    static_cast<void>(changed.initex(base_file));
    environment = std::move(changed);
}

}  // namespace ulk3d
