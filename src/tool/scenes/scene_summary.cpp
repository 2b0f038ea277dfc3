#include "tool/scenes/scene_summary.h"

#include "model/polygon/strip_walk.h"
#include "render/gl/mapped_span.h"

namespace ulktool {

namespace {

net_summary_t net_of(const ulk3d::nurbs_t& nurbs) {
    return {.points = {nurbs.count1, nurbs.count2},
            .order = {nurbs.order1, nurbs.order2},
            .resolution = {nurbs.resolution1, nurbs.resolution2}};
}

model_summary_t summary_of(const ulk3d::model_entry_t& entry, const std::string& path) {
    model_summary_t model;
    if (entry.kind == ulk3d::model_kind_t::nurbs)
        model.net = net_of(entry.nurbs);
    model.mesh = {entry.polygon.vertex_count(), entry.polygon.element_count(),
                  count_triangles(entry.polygon)};
    entry.modeling().bounds(model.low, model.high);
    model.pictures = model_pictures(entry.texture, path);
    return model;
}

}  // namespace

mesh_counts_t& mesh_counts_t::operator+=(const mesh_counts_t& other) {
    vertices += other.vertices;
    elements += other.elements;
    triangles += other.triangles;
    return *this;
}

mesh_counts_t scene_summary_t::mesh() const {
    mesh_counts_t total;
    for (const model_summary_t& model : models)
        total += model.mesh;
    return total;
}

scene_summary_t summary_of(const ulk3d::scene_t& scene, const std::string& path) {
    scene_summary_t summary;
    summary.environment = scene.environment.cubetex;
    for (const auto& entry : scene.models)
        summary.models.push_back(summary_of(*entry, path));
    return summary;
}

std::uint64_t count_triangles(const ulk3d::polygon_t& polygon) {
    std::uint64_t count = 0;
    if (polygon.element_count() > 0) {
        const ulk3d::const_index_span elements(polygon.elements);
        ulk3d::walk_strips(elements.span(), polygon.vertex_count(),
                           [&count](const ulk3d::strip_triangle_t&) { ++count; });
    }
    return count;
}

}  // namespace ulktool
