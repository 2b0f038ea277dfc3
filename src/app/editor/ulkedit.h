#pragma once

#include <cstdint>
#include <iosfwd>
#include <span>
#include <string>

#include "app/editor/edited_scene.h"
#include "app/editor/scene_input.h"
#include "app/editor/scene_view.h"
#include "formats/record_text.h"
#include "model/nurbs/net_edit.h"
#include "operations/settings/model_settings.h"

namespace ulk3d {

/// The editor without a toolkit: what is edited (edited_scene_t), how it is seen (scene_view_t) and how it is
/// handled (scene_input_t), and the commands that need more than one of them.
///
/// Construction touches no GL. Every other operation needs a current GL context, the same one each time.
class ulkedit_t {
  public:
    /// `argv0` gives the program's directory, in which shader files are looked for.
    explicit ulkedit_t(const char* argv0);
    ulkedit_t(const ulkedit_t&) = delete;
    ulkedit_t& operator=(const ulkedit_t&) = delete;

    /// Sets the GL state and compiles the programs; the GL entry points must have been loaded. Where GL 3.3
    /// is missing it prints "OpenGL 3.3 or later required." on the standard output stream and ends the
    /// process with status 1.
    void init() { seen.init(program_dir.c_str(), edited.models()); }
    /// Sets the size of the view area in device pixels.
    void reshape(int width, int height) { seen.reshape(width, height); }
    /// Draws a frame into the bound framebuffer.
    void display() { seen.draw(edited, handled.gesture_place()); }

    // Commands. While a cut is running, those that change models do nothing; those with a result return
    // false. Each is carried out as a whole or not at all: where memory runs out nothing has changed, and a
    // line on the standard error stream tells so.

    /// Adds a file's models, and its environment if it has one, to the scene, makes the first new model
    /// current, fits the view and clears the edit history. On failure the scene stays as it was; messages are
    /// written as lines to `errors`, and one line, "NAME: file open error.", to the standard error stream.
    [[nodiscard]] bool file_open(const char* name, std::ostream& errors);
    /// Saves to a path, whose ending decides the form (formats/scene_files.h). False when not all bytes have
    /// reached the file, or when there is no current model to save.
    [[nodiscard]] bool save_models_to(const char* path) { return edited.save_models_to(path); }
    [[nodiscard]] bool save_current_to(const char* path) { return edited.save_current_to(path); }

    bool add_model(model_kind_t kind) { return edited.add_model(kind); }
    void select_model(std::uint64_t index) { edited.select_model(index); }
    void delete_current() { edited.delete_current(); }
    void polygonize_current() { edited.polygonize_current(); }
    [[nodiscard]] bool fold();
    void cut_current(const sigc::slot<void, double>& receiver);
    bool cut_is_running() const { return !edited.gate().is_open(); }
    /// How many commands have done nothing so far because a cut was running.
    std::uint64_t refusals() const { return edited.gate().refusals(); }

    // What dialogs show of the current model, and what their OK and Apply do to it. Each applies to a model
    // of one kind; when the current model is not of that kind, the result is empty and nothing changes.

    void set_polygon(const polygon_settings_t& settings);
    void set_nurbs(const nurbs_settings_t& settings);
    void set_environment(const environment_settings_t& settings);
    net_table_t net_table(attribute_t attribute) const;
    void set_net_table(attribute_t attribute, std::span<const number_row_t> points);
    option_table_t option_table(std::uint32_t index) const;
    void set_option_table(std::uint32_t index, const matrix_t<float>& values);
    std::string vertex_text(attribute_t attribute) const;
    void set_vertex_text(attribute_t attribute, std::string text);
    std::string element_text() const;
    void set_element_text(std::string text);

    /// Makes a step of undo of an edit of the current model that was carried out elsewhere.
    void note_edit(edit_t edit);

    // The display switches and settings of the toolbar.

    /// The scale factor of the screen (scene_view_t::set_pixel_scale).
    void set_pixel_scale(int device_pixels) { seen.set_pixel_scale(device_pixels); }
    void set_control_points(bool on) { seen.control_points_on = on; }
    void set_grid(bool on) { seen.set_grid(on); }
    void set_grid_step(double step) { seen.grid_step = step; }
    void set_fold_angle(double degrees) { fold_angle = static_cast<float>(degrees); }
    void set_mode(operation_mode_t mode) { handled.set_mode(mode); }

    // Mouse and keys. Positions are device pixels of the view area, y counted down; buttons as in
    // input_state.h. Those with a result return whether the view has to be redrawn.

    bool mouse_button(std::uint32_t button, bool release, int x, int y) {
        return handled.mouse_button(button, release, x, y);
    }
    bool double_click(std::uint32_t button, int x, int y) { return handled.double_click(button, x, y); }
    bool mouse_motion(int x, int y) { return handled.mouse_motion(x, y); }
    /// `delta` is 1 for a notch up, -1 for a notch down, and 0 for wheels that turn in other directions.
    bool mouse_wheel(int delta, int x, int y) { return handled.mouse_wheel(delta, x, y); }

    /// A modifier key went down; `key` tells the key itself from others that mean the same. It counts only
    /// while no other is held.
    bool press_modifier(std::uint32_t modifier, std::uint32_t key) {
        return handled.press_modifier(modifier, key);
    }
    /// A key went up: the modifier is released by the key that pressed it. What the release is called does
    /// not matter, as other keys that are held change the name.
    bool release_key(std::uint32_t key) { return handled.release_key(key); }
    /// Counts no modifier as held.
    bool forget_modifiers() { return handled.forget_modifiers(); }
    /// Any other key, as an X key symbol: Return fits the scene into the views, z and y undo and redo with
    /// Ctrl, i prints the models' vertices on the standard output stream.
    bool key_command(std::uint32_t keyval) { return handled.key_command(keyval); }
    /// The release of any other key.
    void key_released(std::uint32_t keyval) { handled.key_released(keyval); }

    // Read access.

    edited_scene_t& scene() { return edited; }
    const edited_scene_t& scene() const { return edited; }
    scene_view_t& view() { return seen; }
    const model_list_t& models() const { return edited.models(); }
    model_entry_t* current_model() { return edited.current_model(); }
    const model_entry_t* current_model() const { return edited.current_model(); }
    std::uint64_t current_index() const { return edited.current_index(); }
    const environment_t& environment() const { return edited.environment; }
    /// The folder in which shader files are looked for, with its trailing separator; empty for none.
    const std::string& shader_folder() const { return program_dir; }
    const camera_t& camera() const { return seen.cameras; }
    const view_layout_t& layout() const { return seen.areas; }

  private:
    /// The current model when it is of the given kind, else null.
    model_entry_t* current_of_kind(model_kind_t kind);
    const model_entry_t* current_of_kind(model_kind_t kind) const;

    /// A change of the scene that goes through its gate.
    template <class Change>
    void change(const char* command, Change&& apply);

    std::string program_dir;  ///< with its trailing separator, empty for none
    float fold_angle = 0.0F;
    edited_scene_t edited;
    scene_view_t seen;
    scene_input_t handled{edited, seen};
};

}  // namespace ulk3d
