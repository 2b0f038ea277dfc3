// The views of scene_view_t: their initialisation, their cameras, and what lies under the mouse.

#include "app/editor/scene_view.h"

#include <GL/glew.h>

#include <cmath>
#include <map>

#include "app/editor/fit_view.h"
#include "app/editor/pick_window.h"
#include "gltextures/gr_check_error.h"
#include "gltextures/textures/texture_stores.h"
#include "model/math/vectors.h"
#include "model/try_allocate.h"
#include "operations/hit/polygon_hit.h"
#include "render/gl/gl_requirement.h"

namespace ulk3d {

using libgr::grCheckError;

void scene_view_t::init(const char* base_directory, const model_list_t& models) {
    require_gl33();
    gl_is_loaded = true;

    grCheckError("ulkedit_t::init() before GL init.");
    glClearColor(0.18F, 0.18F, 0.18F, 1.0F);
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glDisable(GL_DITHER);
    glClampColor(GL_CLAMP_READ_COLOR, GL_TRUE);
    glEnable(GL_PROGRAM_POINT_SIZE);
    grCheckError("ulkedit_t::init() after GL inited.");
    libgr::clear_texture_stores_at_exit();

    // Failures that return have printed their own line; the program continues without what could not be made.
    static_cast<void>(glpolygon.init(base_directory));
    static_cast<void>(glnurbs.init(base_directory));
    grid_t::init(base_directory);
    static_cast<void>(line_overlay.init(base_directory));

    grCheckError("ulkedit_t::init4");
    reset_view(cameras, models);
    grCheckError("ulkedit_t::init5");
}

void scene_view_t::reshape(int width, int height) {
    areas.resize(width, height);
    cameras.update_ortho(areas);
    axis_grids.set_size(static_cast<float>(areas.half_width), static_cast<float>(areas.half_height));
    cameras.update_perspective(areas);
    if (gl_is_loaded)
        update_ortho_views();
    grCheckError("ulkedit_t::reshape(end)");
}

void scene_view_t::set_pixel_scale(int device_pixels) {
    pixel_scale = static_cast<float>(device_pixels);
    glnurbs.point_scale = pixel_scale;
}

void scene_view_t::fit(const model_list_t& models) {
    cameras.update_perspective(areas);
    reset_view(cameras, models);
    update_ortho_views();
    cameras.update_view();
}

void scene_view_t::set_grid(bool on) {
    grid_on = on;
    update_ortho_views();
}

void scene_view_t::update_ortho_views() {
    cameras.update_ortho_views();
    // A grid that can not be made has printed its own line. The views do without it.
    if (grid_on)
        static_cast<void>(try_command("grid_t::rebuild()", [this] {
            return axis_grids.rebuild(cameras.front.inverse, cameras.side.inverse, cameras.top.inverse);
        }));
}

void scene_view_t::pan(const view_cursor_t& from, const view_cursor_t& to) {
    const auto in_model = [this, &from](const view_cursor_t& at) {
        const pos2 p = normalised(at, areas);
        return transform_point(transform_point({p.x, p.y, 0}, cameras.ortho.inverse), view_of(from).inverse);
    };
    const dir3 moved = in_model(to) - in_model(from);
    cameras.fit = {translation(moved) * cameras.fit.matrix, cameras.fit.inverse * translation(-moved)};
    update_ortho_views();
}

void scene_view_t::zoom(float factor) {
    const float back = 1 / factor;
    cameras.fit = {scale(factor, factor, factor) * cameras.fit.matrix,
                   cameras.fit.inverse * scale(back, back, back)};
    update_ortho_views();
}

const matrix_pair_t& scene_view_t::view_of(const view_cursor_t& at) const {
    if (at.in_perspective())
        return cameras.view;
    if (!at.left)
        return cameras.side;
    return at.bottom ? cameras.front : cameras.top;
}

const matrix_pair_t& scene_view_t::projection_of(const view_cursor_t& at) const {
    return at.in_perspective() ? cameras.perspective : cameras.ortho;
}

bool scene_view_t::pick_points(const model_list_t& models, const view_cursor_t& at, float width, float height,
                               const hit_signal_t& receiver) {
    const mtx3w planes = pick_planes(pick_rectangle_at(at, areas, width * pixel_scale, height * pixel_scale));
    grCheckError("ulkedit_t::selection(1)");
    // Points that are not shown can not be picked; the other views always show them.
    if (at.in_perspective() && !control_points_on)
        return false;

    bool hit = false;
    std::uint64_t index = 0;
    {
        // All models share one list, so that the points of each model are reported again for every model
        // after it.
        pick_hits_t hits;
        for (const auto& entry : models) {
            hit |= glnurbs.selection(hits, entry->modeling(), planes, projection_of(at).matrix,
                                     view_of(at).matrix);
            for (const auto& [key, point] : hits)
                receiver.emit(index, point);
            ++index;
        }
    }
    grCheckError("ulkedit_t::selection(3)");
    return hit;
}

void scene_view_t::give_back_picks(const model_list_t& models) {
    for (const auto& entry : models) {
        entry->polygon.selectionfeedback.give_back();
        entry->nurbs.selectionfeedback.give_back();  // also of a model that has become a polygon model
    }
}

bool scene_view_t::pick_polygons(const model_list_t& models, const view_cursor_t& at, float width,
                                 float height, const hit_signal_t& receiver) const {
    struct found_t {
        std::uint64_t model;
        std::uint32_t polygon;
    };
    std::map<float, found_t, nearer_t> nearest;
    if (at.in_perspective()) {
        const edge_lines_t window =
            edge_lines_of(pick_rectangle_at(at, areas, width * pixel_scale, height * pixel_scale));
        std::uint64_t index = 0;
        for (const auto& entry : models) {
            hit_map_t hits;
            if (entry->kind == model_kind_t::polygon &&
                polygon_hit(hits, entry->polygon, window, cameras.perspective.matrix, cameras.view.matrix))
                nearest[hits.begin()->first] = {index, hits.begin()->second.polygon_id};
            ++index;
        }
        for (const auto& [depth, found] : nearest)
            receiver.emit(found.model, found.polygon);
    }
    grCheckError("ulkedit_t::polyselection(end)");
    return !nearest.empty();
}

pos3 scene_view_t::pick_surface(const model_list_t& models, const view_cursor_t& at) const {
    hit_map_t hits;
    const edge_lines_t window = edge_lines_of(pick_rectangle_at(at, areas, 1, 1));
    for (const auto& entry : models)
        polygon_hit(hits, entry->polygon, window, cameras.perspective.matrix, cameras.view.matrix);
    // The camera can not take hold of a hit without a place: one in the plane of the eye, or on a vertex that
    // is no number.
    for (const auto& [depth, hit] : hits)
        if (std::isfinite(depth) && std::isfinite(hit.point.z))
            return hit.point;
    return {};
}

dir3 scene_view_t::way_between(const view_cursor_t& from, const view_cursor_t& to, float depth) const {
    const auto in_model = [&](const view_cursor_t& at) {
        const pos2 p = normalised(at, areas);
        const pos3 in_view =
            from.in_perspective()
                ? dehomogenize(vec_times_mtx({p.x, p.y, depth, 1}, cameras.perspective.inverse))
                : transform_point({p.x, p.y, 0}, cameras.ortho.inverse);
        const pos3 point = transform_point(in_view, view_of(from).inverse);
        return grid_step == 0.0 ? point : grid_snap(point, static_cast<float>(grid_step));
    };
    return in_model(to) - in_model(from);
}

}  // namespace ulk3d
