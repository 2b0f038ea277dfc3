#include "app/editor/ulkedit.h"

#include <GL/glew.h>

#include <algorithm>
#include <iostream>
#include <iterator>

#include "app/editor/fit_view.h"
#include "app/editor/program_path.h"
#include "formats/scene_files.h"
#include "gltextures/gr_check_error.h"
#include "gltextures/textures/texture_stores.h"
#include "render/gl/gl_requirement.h"

namespace ulk3d {

using libgr::grCheckError;

namespace {

/// A fold pick after the model at `removed` has gone.
void follow_removal(fold_pick_t& pick, std::uint64_t removed) {
    if (pick.model == no_index)
        return;
    if (pick.model == removed)
        pick = {};
    else if (pick.model > removed)
        --pick.model;
}

}  // namespace

ulkedit_t::ulkedit_t(const char* argv0) : program_dir(program_directory(argv0)), current(scene_models.end()) {
    connect_operations();
}

void ulkedit_t::init() {
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

    // The failures that return print their line themselves; the program goes on without what they make.
    static_cast<void>(glpolygon.init(program_dir.c_str()));
    static_cast<void>(glnurbs.init(program_dir.c_str()));
    grid_t::init(program_dir.c_str());
    static_cast<void>(line_overlay.init(program_dir.c_str()));

    grCheckError("ulkedit_t::init4");
    reset_view(cameras, scene_models);
    grCheckError("ulkedit_t::init5");
}

void ulkedit_t::reshape(int width, int height) {
    areas.resize(width, height);
    cameras.update_ortho(areas);
    axis_grids.set_size(static_cast<float>(areas.half_width), static_cast<float>(areas.half_height));
    cameras.update_perspective(areas);
    if (gl_is_loaded)
        update_ortho_views();
    grCheckError("ulkedit_t::reshape(end)");
}

bool ulkedit_t::file_open(const char* name, std::ostream& errors) {
    if (cutting)
        return false;
    grCheckError("ulkedit_t::file_open(0)");
    scene_t loaded;
    if (!load_scene(loaded, name, glpolygon, errors)) {
        std::cerr << name << ": file open error." << std::endl;
        return false;
    }

    const std::uint64_t first_new = scene_models.size();
    scene_models.splice(scene_models.end(), loaded.models);
    if (!loaded.environment.cubetex.empty())
        scene_environment = loaded.environment;
    select_model(first_new);

    grCheckError("ulkedit_t::file_open(1)");
    fit_scene();
    clear_undo();
    grCheckError("ulkedit_t::file_open(3)");
    return true;
}

bool ulkedit_t::save_models_to(const char* path) {
    return save_models(scene_models, path);
}

bool ulkedit_t::save_current_to(const char* path) {
    model_entry_t* entry = current_model();
    return entry != nullptr && save_model(*entry, path);
}

void ulkedit_t::add_model(std::uint32_t kind) {
    if (cutting)
        return;
    scene_models.push_back(std::make_unique<model_entry_t>(kind));
    select_model(scene_models.size() - 1);
}

void ulkedit_t::select_model(std::uint64_t index) {
    index_of_current = scene_models.empty() ? 0 : index;
    const auto steps = std::min<std::uint64_t>(index_of_current, scene_models.size());
    current = std::next(scene_models.begin(), static_cast<std::ptrdiff_t>(steps));
}

void ulkedit_t::delete_current() {
    if (cutting || current == scene_models.end())
        return;
    for (fold_pick_t& pick : fold_picks)
        follow_removal(pick, index_of_current);
    clear_undo();
    scene_models.erase(current);
    // Of an empty list the last index is all ones here, which the selection turns into 0.
    select_model(std::min<std::uint64_t>(index_of_current, scene_models.size() - 1));
}

void ulkedit_t::polygonize_current() {
    if (model_entry_t* entry = current_model(); entry != nullptr && !cutting)
        entry->kind = kind_polygon;
}

model_entry_t* ulkedit_t::current_model() {
    return current == scene_models.end() ? nullptr : current->get();
}

const model_entry_t* ulkedit_t::current_model() const {
    return current == scene_models.end() ? nullptr : current->get();
}

}  // namespace ulk3d
