// The frame of ulkedit_t: grids, surfaces, points and the fold line, each in its views.

#include <GL/glew.h>

#include <array>

#include "app/editor/ulkedit.h"
#include "gltextures/gr_check_error.h"

namespace ulk3d {

using libgr::grCheckError;

namespace {

void set_viewport(const viewport_t& area) {
    glViewport(area.x, area.y, area.width, area.height);
}

}  // namespace

void ulkedit_t::display() {
    grCheckError("ulkedit_t::display(0)");
    glViewport(0, 0, areas.width, areas.height);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);

    if (grid_on)
        draw_grids();
    for (const auto& entry : scene_models) {
        draw_surface(*entry);
        draw_points(*entry);
    }

    grCheckError("ulkedit_t::display(11)");
    set_viewport(areas.perspective());
    grCheckError("ulkedit_t::display(12)");
    if (control_points_on)
        draw_fold_line();
    if (crosshair_on)
        draw_crosshair();
    grCheckError("ulkedit_t::display(end)");
}

void ulkedit_t::draw_grids() {
    const mtx3w& projection_matrix = cameras.ortho.matrix;
    set_viewport(areas.front());
    axis_grids.draw_xy(projection_matrix, cameras.front.matrix);
    set_viewport(areas.side());
    axis_grids.draw_zy(projection_matrix, cameras.side.matrix);
    set_viewport(areas.top());
    axis_grids.draw_xz(projection_matrix, cameras.top.matrix);
}

void ulkedit_t::draw_surface(model_entry_t& entry) {
    set_viewport(areas.perspective());
    grCheckError("ulkedit_t::display(1)");
    // Depth counts between surfaces only, so that points, grids and lines lie over everything.
    glEnable(GL_DEPTH_TEST);
    const surface_view_t surface_view{.Globalview = Globalview,
                                      .Modelview = cameras.view.matrix,
                                      .invModelview = cameras.view.inverse,
                                      .Projection = cameras.perspective.matrix,
                                      .LightPosition = LightPosition,
                                      .Shininess = Shininess};
    constexpr bool skybox = false;
    if (entry.kind == kind_polygon)
        glpolygon.drawselect(scene_environment, skybox, entry.texture, entry.polygon, surface_view);
    glpolygon.drawsolid(scene_environment, skybox, entry.texture, entry.polygon, surface_view);
    grCheckError("ulkedit_t::display(7)");
    glDisable(GL_DEPTH_TEST);
}

void ulkedit_t::draw_points(model_entry_t& entry) {
    modeling_t* const model = modeling_of(entry);
    if (model == nullptr)
        return;
    if (control_points_on)
        glnurbs.draw_points(*model, cameras.perspective.matrix, cameras.view.matrix);

    struct point_view_t {
        const char* mark;
        viewport_t area;
        const mtx3w& view;
    };
    const point_view_t point_views[] = {{"ulkedit_t::display(8)", areas.front(), cameras.front.matrix},
                                        {"ulkedit_t::display(9)", areas.side(), cameras.side.matrix},
                                        {"ulkedit_t::display(10)", areas.top(), cameras.top.matrix}};
    for (const point_view_t& point_view : point_views) {
        grCheckError(point_view.mark);
        set_viewport(point_view.area);
        glnurbs.draw_points(*model, cameras.ortho.matrix, point_view.view);
    }
}

void ulkedit_t::draw_fold_line() {
    const auto ends = fold_positions();
    if (!ends)
        return;
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glLineWidth(1.0F);
    glEnable(GL_LINE_SMOOTH);
    grCheckError("ulkedit_t::display(13)");
    line_overlay.line(ends->first, ends->second, cameras.perspective.matrix, cameras.view.matrix);
    draw_loaded_lines();
    glDisable(GL_LINE_SMOOTH);
    glDisable(GL_BLEND);
}

void ulkedit_t::draw_crosshair() {
    constexpr float half_band = 2.5F;
    const half_view_t half = half_view(areas);
    const auto x = static_cast<float>(cursor.x), y = static_cast<float>(cursor.y);
    const float top = (y + half_band - half.height) / half.height;
    const float bottom = (y - half_band - half.height) / half.height;
    const float left = (x - half_band - half.width) / half.width;
    const float right = (x + half_band - half.width) / half.width;
    grCheckError("ulkedit_t::display(13)");
    line_overlay.band(std::array{-1.0F, top, 1.0F, top, 1.0F, bottom, -1.0F, bottom, left, -1.0F, left, 1.0F,
                                 right, 1.0F, right, -1.0F});
    draw_loaded_lines();
}

void ulkedit_t::draw_loaded_lines() {
    grCheckError("ulkedit_t::display(14)");
    line_overlay.draw();
    grCheckError("ulkedit_t::display(15)");
}

void ulkedit_t::set_grid(bool on) {
    grid_on = on;
    update_ortho_views();
}

void ulkedit_t::update_ortho_views() {
    cameras.update_ortho_views();
    // A grid that can not be made has said so, and stays as it was.
    if (grid_on)
        static_cast<void>(
            axis_grids.rebuild(cameras.front.inverse, cameras.side.inverse, cameras.top.inverse));
}

}  // namespace ulk3d
