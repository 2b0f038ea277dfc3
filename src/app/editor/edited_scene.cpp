#include "app/editor/edited_scene.h"

#include <algorithm>
#include <iterator>
#include <memory>

#include "formats/scene_files.h"
#include "operations/cut/mesh_cut.h"
#include "operations/fold/fold_models.h"

namespace ulk3d {

namespace {

/// Adjusts a fold pick after the model at `removed` has been removed.
void follow_removal(fold_pick_t& pick, std::uint64_t removed) {
    if (pick.model == no_index)
        return;
    if (pick.model == removed)
        pick = {};
    else if (pick.model > removed)
        --pick.model;
}

}  // namespace

edited_scene_t::edited_scene_t() : current(model_list.end()) {}

model_entry_t* edited_scene_t::current_model() {
    return current == model_list.end() ? nullptr : current->get();
}

const model_entry_t* edited_scene_t::current_model() const {
    return current == model_list.end() ? nullptr : current->get();
}

void edited_scene_t::select_model(std::uint64_t index) {
    index_of_current = model_list.empty() ? 0 : index;
    const auto places = std::min<std::uint64_t>(index_of_current, model_list.size());
    current = std::next(model_list.begin(), static_cast<std::ptrdiff_t>(places));
}

bool edited_scene_t::save_models_to(const char* path) {
    return save_models(model_list, path);
}

bool edited_scene_t::save_current_to(const char* path) {
    model_entry_t* const entry = current_model();
    return entry != nullptr && save_model(*entry, path);
}

bool edited_scene_t::append(const std::function<bool(scene_t&)>& load) {
    return change_gate.pass([&] {
        scene_t loaded;
        if (!load(loaded))
            return false;
        const std::uint64_t first_new = model_list.size();
        // From here on nothing can fail.
        model_list.splice(model_list.end(), loaded.models);
        if (!loaded.environment.cubetex.empty())
            environment = std::move(loaded.environment);
        // A file may hold an environment alone; the current model then stays.
        if (model_list.size() > first_new)
            select_model(first_new);
        steps.forget();
        return true;
    });
}

bool edited_scene_t::add_model(model_kind_t kind) {
    return change_gate.pass([&] {
        model_list.push_back(std::make_unique<model_entry_t>(kind));
        select_model(model_list.size() - 1);
        return true;
    });
}

void edited_scene_t::delete_current() {
    change_gate.pass([&] {
        if (current == model_list.end())
            return;
        for (fold_pick_t& pick : fold_picks)
            follow_removal(pick, index_of_current);
        steps.forget();
        model_list.erase(current);
        // For an empty list the last index is all ones here, which `select_model` turns into 0.
        select_model(std::min<std::uint64_t>(index_of_current, model_list.size() - 1));
    });
}

void edited_scene_t::polygonize_current() {
    change_gate.pass([&] {
        if (model_entry_t* const entry = current_model()) {
            entry->kind = model_kind_t::polygon;
            entry->polygon.give_back_frame_pass();
        }
    });
}

bool edited_scene_t::fold(float angle) {
    return change_gate.pass([&] {
        const auto axis = fold_positions();
        if (!axis || !fold_models(model_list, axis->first, axis->second, angle))
            return false;
        steps.forget();
        return true;
    });
}

void edited_scene_t::cut_current(const sigc::slot<void, double>& receiver) {
    change_gate.pass([&] {
        const model_entry_t* const cutter = current_model();
        if (cutter == nullptr || cutter->kind != model_kind_t::polygon)
            return;
        progress_signal_t progress;
        progress.connect(receiver);
        // Reports its own failure, which changes no model.
        if (mesh_cut(progress, index_of_current, model_list))
            steps.forget();
    });
}

bool edited_scene_t::dent(const dir3& way) {
    bool dented = false;
    for (const auto& entry : model_list) {
        if (entry->kind != model_kind_t::nurbs)
            continue;
        nurbs_t& nurbs = entry->nurbs;
        const auto lowest = std::ranges::find(nurbs.selection, true);
        if (lowest == nurbs.selection.end() || nurbs.count1 == 0)
            continue;
        const auto point = static_cast<std::uint64_t>(lowest - nurbs.selection.begin());
        nurbs.dent(point % nurbs.count1, point / nurbs.count1, way);
        dented = true;
    }
    return dented;
}

void edited_scene_t::update_models(glpolygon_t& glpolygon) {
    for (const auto& entry : model_list)
        entry->modeling().update(glpolygon);
}

}  // namespace ulk3d
