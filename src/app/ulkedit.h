#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "app/camera.h"
#include "app/view_layout.h"
#include "model/scene.h"
#include "render/glpolygon.h"

namespace ulk3d {

/// The index of a model or vertex that does not exist.
inline constexpr std::uint64_t no_index = ~std::uint64_t{0};

/// A vertex of the fold axis: a model by its place in the scene, and a vertex of it.
struct fold_pick_t {
    std::uint64_t model = no_index;
    std::uint64_t vertex = no_index;
};

/// The scene and everything that shows it, without a toolkit: the models and which of them is current, the
/// cameras, the GL programs, and the frame of four views.
///
/// Construction touches no GL. Every other operation needs a current GL context, the same one each time.
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

    /// Adds a file's models, and its environment when it has one, to the scene, makes the first new model
    /// current and fits the view. On failure the scene stays as it was; messages are lines of `errors`, and
    /// one line goes to the standard error stream.
    bool file_open(const char* name, std::ostream& errors);

    /// Saving by path; false when not all bytes reached the file, or when there is no current model to save.
    bool save_models_to(const char* path);
    bool save_current_to(const char* path);

    /// Appends an empty model of a kind and makes it current.
    void add_model(std::uint32_t kind);
    /// Makes the model at `index` current; none when the scene has no such model.
    void select_model(std::uint64_t index);
    /// Takes the current model out of the scene; the one behind it becomes current, or else the new last one.
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
    const camera_t& camera() const { return cameras; }
    const view_layout_t& layout() const { return areas; }

    fold_pick_t fold_picks[2];  ///< the two ends of the fold axis

  private:
    void draw_surface(model_entry_t& entry);
    void visit_point_views();

    std::string program_dir;  ///< with its trailing separator, empty for none
    environment_t scene_environment;
    model_list_t scene_models;
    model_list_t::iterator current;
    std::uint64_t index_of_current = 0;
    glpolygon_t glpolygon;
    view_layout_t areas;
    pos3 LightPosition;
    float Shininess = 10.0F;
    mtx3w Globalview = mtx_identity;
    camera_t cameras;
    bool gl_is_loaded = false;
};

}  // namespace ulk3d
