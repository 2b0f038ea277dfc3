#pragma once

#include <cstdint>
#include <iosfwd>
#include <list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/editor/camera.h"
#include "app/editor/view_cursor.h"
#include "app/editor/view_layout.h"
#include "model/scene.h"
#include "operations/gestures/clipping_operation.h"
#include "operations/gestures/folding_operation.h"
#include "operations/gestures/input_state.h"
#include "operations/gestures/punish_operation.h"
#include "operations/gestures/selection_operation.h"
#include "render/models/glnurbs.h"
#include "render/models/glpolygon.h"
#include "render/overlays/drawline.h"
#include "render/overlays/grid.h"

namespace ulk3d {

/// The index of a model or vertex that does not exist.
inline constexpr std::uint64_t no_index = ~std::uint64_t{0};

/// A vertex of the fold axis: a model by its place in the scene, and a vertex of it.
struct fold_pick_t {
    std::uint64_t model = no_index;
    std::uint64_t vertex = no_index;
};

/// What the left button does in the view.
enum class operation_mode_t : std::uint32_t { selection = 0, punish = 1, clipping = 2, folding = 3 };

/// The scene and everything that shows and edits it, without a toolkit: the models and which of them is
/// current, the cameras, the operation objects that give the mouse its meaning, the GL programs, and the
/// frame of four views.
///
/// Construction touches no GL. Every other operation needs a current GL context, the same one each time. Its
/// parts lie in several files: ulkedit.cpp has the life of the scene, ulkedit_display.cpp the frame,
/// ulkedit_input.cpp the mouse and the keys, ulkedit_picks.cpp what operation objects mark, ulkedit_edits.cpp
/// what they change.
class ulkedit_t {
  public:
    /// `argv0` tells the program's directory, in which shader files are looked for.
    explicit ulkedit_t(const char* argv0);
    ulkedit_t(const ulkedit_t&) = delete;
    ulkedit_t& operator=(const ulkedit_t&) = delete;

    /// Sets the GL state and compiles the programs; GL entry points are loaded. Where GL 3.3 is missing it
    /// prints "OpenGL 3.3 or later required." on the standard output stream and ends the process with
    /// status 1.
    void init();

    /// Takes the size of the view area in device pixels.
    void reshape(int width, int height);

    /// Draws a frame into the bound framebuffer.
    void display();

    // The scene. What changes its list of models or their kinds does nothing while a cut is running;
    // file_open then fails.

    /// Adds a file's models, and its environment when it has one, to the scene, makes the first new model
    /// current, fits the view and clears the edit history. On failure the scene stays as it was; messages are
    /// lines of `errors`, and one line goes to the standard error stream.
    bool file_open(const char* name, std::ostream& errors);

    /// Saving by path; false when not all bytes reached the file, or when there is no current model to save.
    bool save_models_to(const char* path);
    bool save_current_to(const char* path);

    /// Appends an empty model of a kind and makes it current.
    void add_model(std::uint32_t kind);
    /// Makes the model at `index` current; none when the scene has no such model.
    void select_model(std::uint64_t index);
    /// Takes the current model out of the scene and clears the edit history; the model behind it becomes
    /// current, or else the new last one.
    void delete_current();
    /// Turns a NURBS model into the polygon model that it is drawn as.
    void polygonize_current();

    /// The model that commands work on, null when there is none.
    model_entry_t* current_model();
    const model_entry_t* current_model() const;
    /// Its place in the scene; 0 when there is none.
    std::uint64_t current_index() const { return index_of_current; }

    const model_list_t& models() const { return scene_models; }
    environment_t& environment() { return scene_environment; }
    /// What a model's `update` runs its frame pass with.
    glpolygon_t& polygon_programs() { return glpolygon; }
    /// The folder in which shader files are looked for, with its trailing separator; empty for none.
    const std::string& shader_folder() const { return program_dir; }
    const camera_t& camera() const { return cameras; }
    const view_layout_t& layout() const { return areas; }

    // The display switches and settings of the toolbar.

    void set_control_points(bool on) { control_points_on = on; }
    void set_grid(bool on);
    void set_grid_step(double step) { grid_step = step; }
    void set_fold_angle(double degrees) { fold_angle = static_cast<float>(degrees); }
    void set_mode(operation_mode_t mode);

    // Mouse and keys. Positions are device pixels of the view area, y counted down; buttons as in
    // input_state.h. Each returns whether the view is to be painted again.

    bool mouse_button(std::uint32_t button, bool release, int x, int y);
    bool double_click(std::uint32_t button, int x, int y);
    bool mouse_motion(int x, int y);
    /// `delta` is 1 for a notch up, -1 for a notch down, 0 for wheels of other directions.
    bool mouse_wheel(int delta, int x, int y);

    /// A modifier key. A press counts only while none is held, a release only of the one that counts.
    bool press_modifier(std::uint32_t modifier);
    bool release_modifier(std::uint32_t modifier);
    /// Any other key, as an X key symbol: Return fits the scene into the views, z and y undo and redo with
    /// Ctrl, i prints the models' vertices on the standard output stream.
    bool key_command(std::uint32_t keyval);
    /// The release of any other key.
    void key_released(std::uint32_t keyval);

    /// Folds the marked polygons of all polygon models by the fold angle about the line from the first to the
    /// second vertex of the fold axis, and clears the edit history. False, with nothing changed, when one of
    /// them does not exist, when they are at one place, or when no polygon is marked.
    bool fold();
    /// Subtracts the current polygon model from all others and clears the edit history; does nothing when a
    /// NURBS model or none is current. `receiver` hears how much is done, from 0 to 1, and may run the event
    /// loop in it: the camera then works, while edits and all that changes the list of models do nothing.
    void cut_current(const sigc::slot<void, double>& receiver);
    bool cut_is_running() const { return cutting; }

    /// Makes an edit that was pushed on the current model's history a step of undo.
    void note_edit();

    fold_pick_t fold_picks[2];  ///< the two ends of the fold axis
    bool crosshair_on = false;  ///< bands across the perspective view at the cursor; no command sets it

  private:
    using edited_models_t = std::list<model_entry_t*>;

    void connect_operations();

    // The frame (ulkedit_display.cpp).
    void draw_grids();
    void draw_surface(model_entry_t& entry);
    void draw_points(model_entry_t& entry);
    void draw_fold_line();
    void draw_crosshair();
    void draw_loaded_lines();
    void update_ortho_views();

    // The camera (ulkedit_input.cpp).
    void press_camera(std::uint32_t button, bool release, int x, int y);
    bool move_camera(int x, int y);
    bool wheel_camera(int delta, int x, int y);
    void pan_views(const view_cursor_t& to);
    void zoom_views(float factor);
    const matrix_pair_t& view_of(const view_cursor_t& at) const;
    const matrix_pair_t& projection_of(const view_cursor_t& at) const;
    pos3 pick_surface() const;
    void fit_scene();
    void print_models() const;

    // What the operation objects mark (ulkedit_picks.cpp).
    model_entry_t* model_at(std::uint64_t index);
    modeling_t* modeling_at(std::uint64_t index);
    void clear_selection();
    bool select_vertex(std::uint64_t model, std::uint64_t vertex);
    bool unselect_vertex(std::uint64_t model, std::uint64_t vertex);
    bool pick_points(int x, int y, float width, float height, const hit_signal_t& receiver);
    bool polyselection(int x, int y, float width, float height, const hit_signal_t& receiver);
    bool select_polygon(std::uint64_t model, std::uint64_t polygon);
    bool unselect_polygon(std::uint64_t model, std::uint64_t polygon);
    void clear_polygons();
    void ApplySelPolygon();
    bool set_fold_vertex(std::size_t end, std::uint64_t model, std::uint64_t vertex);
    void clear_fold_vertices();
    std::optional<std::pair<pos3, pos3>> fold_positions();

    // What they change (ulkedit_edits.cpp).
    bool begin_move(int x, int y);
    bool move_selected(int x, int y);
    bool end_move();
    bool wheel_selected(int delta);
    bool punish_move(int x, int y);
    void update_models();
    dir3 drag_vector(int x, int y);
    bool undo();
    bool redo();
    void clear_undo();

    std::string program_dir;  ///< with its trailing separator, empty for none
    environment_t scene_environment;
    model_list_t scene_models;
    model_list_t::iterator current;
    std::uint64_t index_of_current = 0;
    std::list<edited_models_t> undo_list;  ///< per step, the models that it edited; not owned
    std::list<edited_models_t> redo_list;
    drawline_t line_overlay;
    glpolygon_t glpolygon;
    glnurbs_t glnurbs;
    view_layout_t areas;
    pos3 LightPosition;
    float Shininess = 10.0F;
    mtx3w Globalview = mtx_identity;
    camera_t cameras;
    input_state_t input;
    bool gl_is_loaded = false;
    bool control_points_on = true;
    bool grid_on = true;
    double grid_step = 0.0;
    float fold_angle = 0.0F;
    bool cutting = false;
    selection_t selection{&input};
    punish_t punish{&input};
    clipping_t clipping{&input};
    folding_t folding{&input};
    operation_t* operation = &selection;
    view_cursor_t cursor;  ///< where the gesture under way began, or went on from
    pos3 pick_point;       ///< what the left camera drag took hold of; z is its depth, 0 for nothing
    grid_t axis_grids;
};

}  // namespace ulk3d
