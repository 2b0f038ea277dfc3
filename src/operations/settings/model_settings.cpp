#include "operations/settings/model_settings.h"

#include "model/try_allocate.h"

namespace ulk3d {

namespace {

void take_names(modeling_t& model, texture_t& texture, const model_names_t& names) {
    model.name = names.name;
    texture.texture = names.texture;
    texture.bumpmap = names.bumpmap;
    texture.specular = names.specular;
}

void allocate_tables(nurbs_t& nurbs, const nurbs_settings_t& settings) {
    // Without memory the model has no tables; nothing else has to be done about it.
    static_cast<void>(try_allocate(
        [&] { return nurbs.allocate(settings.count1, settings.order1, settings.count2, settings.order2); }));
}

/// A model without arrays gets new ones; any other keeps its contents.
bool size_arrays(polygon_t& polygon, const polygon_settings_t& settings, bool is_empty) {
    return try_allocate([&] {
        return is_empty ? polygon.allocate(settings.vertex_count, settings.element_count)
                        : polygon.extend(settings.vertex_count, settings.element_count);
    });
}

}  // namespace

model_names_t names_of(const modeling_t& model, const texture_t& texture) {
    return {model.name, texture.texture, texture.bumpmap, texture.specular};
}

polygon_settings_t polygon_settings(const model_entry_t& entry) {
    return {names_of(entry.polygon, entry.texture), static_cast<std::uint32_t>(entry.polygon.vertex_count()),
            static_cast<std::uint32_t>(entry.polygon.element_count())};
}

void set_polygon_settings(model_entry_t& entry, const polygon_settings_t& settings) {
    polygon_t& polygon = entry.polygon;
    const bool is_empty = polygon.vertex_count() == 0 || polygon.element_count() == 0;
    if (!is_empty && settings == polygon_settings(entry))
        return;
    take_names(polygon, entry.texture, settings.names);
    const bool has_arrays = size_arrays(polygon, settings, is_empty);
    entry.texture.open(polygon.name.c_str());
    if (has_arrays)
        polygon.afterload(polygon.name.c_str());
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

void set_nurbs_settings(model_entry_t& entry, const nurbs_settings_t& settings, glpolygon_t& glpolygon) {
    if (settings == nurbs_settings(entry))
        return;
    nurbs_t& nurbs = entry.nurbs;
    take_names(nurbs, entry.texture, settings.names);
    nurbs.resolution1 = settings.resolution1;
    nurbs.resolution2 = settings.resolution2;
    // Each step reports its own failure, and the rest follows: tables that do not fit are empty, and a mesh
    // that can not be made keeps its old shape under the new names.
    allocate_tables(nurbs, settings);
    const std::string name = nurbs.name;
    nurbs.afterload(name.c_str());
    entry.polygon.name = name;
    static_cast<void>(nurbs.rebuild({.sizes = true}, glpolygon));
    // Opening stops at the first map that can not be loaded and skips it the next time: three attempts, the
    // last one by the update, reach all three maps.
    entry.texture.open(name.c_str());
    nurbs.update(glpolygon);
}

environment_settings_t environment_settings(const environment_t& environment) {
    return {environment.cubetex, environment.reflectalpha, environment.refractalpha,
            environment.refractfactor};
}

void set_environment_settings(environment_t& environment, const environment_settings_t& settings,
                              const char* base_file) {
    environment.cubetex = settings.cubetex;
    environment.reflectalpha = settings.reflectalpha;
    environment.refractalpha = settings.refractalpha;
    environment.refractfactor = settings.refractfactor;
    // Reports its own failure; the numbers are set all the same.
    static_cast<void>(environment.initex(base_file));
}

}  // namespace ulk3d
