// The frame of scene_view_t: grids, surfaces, points and the fold line, each in its views.

#include <GL/glew.h>

#include <array>

#include "app/editor/edited_scene.h"
#include "app/editor/scene_view.h"
#include "gltextures/gr_check_error.h"
#include "render/gl/line_width.h"

namespace ulk3d {

using libgr::grCheckError;

namespace {

void set_viewport(const viewport_t& area) {
    glViewport(area.x, area.y, area.width, area.height);
}

/// Gives all pixels an alpha, and leaves their colours.
void fill_alpha(float alpha) {
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_TRUE);
    glClearBufferfv(GL_COLOR, 0, std::array{0.0F, 0.0F, 0.0F, alpha}.data());
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
}

}  // namespace

void scene_view_t::draw(const edited_scene_t& scene, const view_cursor_t& cursor) {
    grCheckError("ulkedit_t::display(0)");
    // The unit of the colour maps is empty for surfaces whose picture is not shown. An upload leaves its
    // texture bound there, and the toolkit the one that it draws the view area into.
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, 0);
    glViewport(0, 0, areas.width, areas.height);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (!opaque)
        fill_alpha(0.0F);

    set_line_width(pixel_scale);
    if (grid_on)
        draw_grids();
    for (const auto& entry : scene.models()) {
        draw_surface(scene.environment, *entry);
        draw_points(*entry);
    }

    grCheckError("ulkedit_t::display(11)");
    set_viewport(areas.perspective());
    grCheckError("ulkedit_t::display(12)");
    if (control_points_on)
        if (const auto ends = scene.fold_positions())
            draw_fold_line(ends->first, ends->second);
    if (crosshair_on)
        draw_crosshair(cursor);
    // The toolkit would blend the theme of the desktop through whatever is transparent.
    if (opaque)
        fill_alpha(1.0F);
    grCheckError("ulkedit_t::display(end)");
}

void scene_view_t::draw_grids() {
    const mtx3w& projection_matrix = cameras.ortho.matrix;
    set_viewport(areas.front());
    axis_grids.draw_xy(projection_matrix, cameras.front.matrix);
    set_viewport(areas.side());
    axis_grids.draw_zy(projection_matrix, cameras.side.matrix);
    set_viewport(areas.top());
    axis_grids.draw_xz(projection_matrix, cameras.top.matrix);
}

void scene_view_t::draw_surface(const environment_t& environment, model_entry_t& entry) {
    set_viewport(areas.perspective());
    grCheckError("ulkedit_t::display(1)");
    // Only surfaces are tested for depth, so that points, grids and lines are drawn over everything.
    glEnable(GL_DEPTH_TEST);
    const surface_view_t surface_view{.Globalview = Globalview,
                                      .Modelview = cameras.view.matrix,
                                      .invModelview = cameras.view.inverse,
                                      .Projection = cameras.perspective.matrix,
                                      .LightPosition = LightPosition,
                                      .Shininess = Shininess};
    constexpr bool skybox = false;
    if (entry.kind == model_kind_t::polygon)
        glpolygon.drawselect(environment, skybox, entry.texture, entry.polygon, surface_view);
    glpolygon.drawsolid(environment, skybox, entry.texture, entry.polygon, surface_view);
    grCheckError("ulkedit_t::display(7)");
    glDisable(GL_DEPTH_TEST);
}

void scene_view_t::draw_points(model_entry_t& entry) {
    modeling_t& model = entry.modeling();
    if (control_points_on)
        glnurbs.draw_points(model, cameras.perspective.matrix, cameras.view.matrix);

    struct point_view_t {
        const char* label;
        viewport_t area;
        const mtx3w& view;
    };
    const point_view_t point_views[] = {{"ulkedit_t::display(8)", areas.front(), cameras.front.matrix},
                                        {"ulkedit_t::display(9)", areas.side(), cameras.side.matrix},
                                        {"ulkedit_t::display(10)", areas.top(), cameras.top.matrix}};
    for (const point_view_t& point_view : point_views) {
        grCheckError(point_view.label);
        set_viewport(point_view.area);
        glnurbs.draw_points(model, cameras.ortho.matrix, point_view.view);
    }
}

void scene_view_t::draw_fold_line(const pos3& from, const pos3& to) {
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_LINE_SMOOTH);
    grCheckError("ulkedit_t::display(13)");
    line_overlay.line(from, to, cameras.perspective.matrix, cameras.view.matrix);
    draw_loaded_lines();
    glDisable(GL_LINE_SMOOTH);
    glDisable(GL_BLEND);
}

void scene_view_t::draw_crosshair(const view_cursor_t& cursor) {
    const float half_band = 2.5F * pixel_scale;
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

void scene_view_t::draw_loaded_lines() {
    grCheckError("ulkedit_t::display(14)");
    line_overlay.draw();
    grCheckError("ulkedit_t::display(15)");
}

}  // namespace ulk3d
