#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "app/editor/camera.h"
#include "app/editor/view_cursor.h"
#include "app/editor/view_layout.h"
#include "model/scene.h"
#include "operations/gestures/operation.h"
#include "render/models/glnurbs.h"
#include "render/models/glpolygon.h"
#include "render/overlays/drawline.h"
#include "render/overlays/grid.h"

namespace ulk3d {

class edited_scene_t;

/// How the scene is seen: the four views with their cameras, what is switched on in them, the GL programs,
/// drawing a frame, and what lies under the mouse.
///
/// Construction touches no GL. Every other operation needs a current GL context, the same one each time.
class scene_view_t {
  public:
    scene_view_t() = default;
    scene_view_t(const scene_view_t&) = delete;
    scene_view_t& operator=(const scene_view_t&) = delete;

    /// Sets the GL state and makes the programs, whose sources may be replaced by files in `base_directory`
    /// (which ends with a separator; empty for none). Where GL 3.3 is missing, or a program does not compile
    /// or link, the process ends.
    void init(const char* base_directory, const model_list_t& models);

    /// Sets the size of the view area in device pixels.
    void reshape(int width, int height);

    /// Sets how many device pixels make a pixel of points, lines and pick rectangles: the scale factor of the
    /// screen. One without this call.
    void set_pixel_scale(int device_pixels);

    /// Draws a frame into the bound framebuffer; `cursor` is where the crosshair is.
    void draw(const edited_scene_t& scene, const view_cursor_t& cursor);

    /// Fits the models into all four views.
    void fit(const model_list_t& models);

    // The cameras.

    /// Moves the three orthographic views so that what is at `from` moves to `to`, as seen in the view of
    /// `from`.
    void pan(const view_cursor_t& from, const view_cursor_t& to);
    /// Scales the three orthographic views up by `factor`.
    void zoom(float factor);
    /// The model-to-view matrix and the projection of the view that a cursor is in.
    const matrix_pair_t& view_of(const view_cursor_t& at) const;
    const matrix_pair_t& projection_of(const view_cursor_t& at) const;

    // What lies under the mouse.

    /// Emits `receiver` for each point in the rectangle of `width` by `height` pixels (set_pixel_scale)
    /// around a cursor, at any depth. The points of a model are emitted again for every model after it.
    /// Returns whether there was a point.
    bool pick_points(const model_list_t& models, const view_cursor_t& at, float width, float height,
                     const hit_signal_t& receiver);
    /// Gives back the memory that picks of points have taken on GL: 40 bytes for each point. The next one
    /// takes it anew, which adds more than half of its time to a pick on a large model.
    static void give_back_picks(const model_list_t& models);
    /// Emits `receiver` for the nearest polygon of each polygon model in such a rectangle, the nearest one
    /// first. Returns whether there was one; the orthographic views have none.
    bool pick_polygons(const model_list_t& models, const view_cursor_t& at, float width, float height,
                       const hit_signal_t& receiver) const;
    /// The nearest point of a surface in the pixel of a cursor; z is its depth. Zero when there is none.
    pos3 pick_surface(const model_list_t& models, const view_cursor_t& at) const;
    /// The movement in model space from one place of a view to another; `depth` is the depth of both in the
    /// perspective view.
    dir3 way_between(const view_cursor_t& from, const view_cursor_t& to, float depth) const;

    void set_grid(bool on);

    camera_t cameras;
    view_layout_t areas;
    glpolygon_t glpolygon;          ///< a model's `update` runs its frame pass with it
    bool control_points_on = true;  ///< points in the perspective view, and the fold line
    bool crosshair_on = false;      ///< bands across the perspective view at the cursor; no command sets it
    bool opaque = true;             ///< whether a frame ends with alpha 1, or where nothing is drawn with 0
    double grid_step = 0.0;         ///< step to which `way_between` rounds both places; 0 for no rounding

  private:
    void draw_grids();
    void draw_surface(const environment_t& environment, model_entry_t& entry);
    void draw_points(model_entry_t& entry);
    void draw_fold_line(const pos3& from, const pos3& to);
    void draw_crosshair(const view_cursor_t& cursor);
    void draw_loaded_lines();
    void update_ortho_views();

    drawline_t line_overlay;
    glnurbs_t glnurbs;
    pos3 LightPosition;
    float Shininess = 10.0F;
    mtx3w Globalview = mtx_identity;
    float pixel_scale = 1.0F;
    bool gl_is_loaded = false;
    bool grid_on = true;
    grid_t axis_grids;
};

}  // namespace ulk3d
