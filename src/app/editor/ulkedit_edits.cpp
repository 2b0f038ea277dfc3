// What ulkedit_t changes in its models: points dragged, wheeled and dented, and the steps taken back;
// polygons folded, and models cut out of others.

#include <algorithm>

#include "app/editor/ulkedit.h"
#include "model/math/vectors.h"
#include "operations/cut/mesh_cut.h"
#include "operations/fold/fold_polygons.h"

namespace ulk3d {

bool ulkedit_t::begin_move(int x, int y) {
    cursor = cursor_at(areas, x, y);
    for (const auto& entry : scene_models)
        if (const modeling_t* model = modeling_of(*entry))
            entry->history.open(0, 0, *model);
    return false;
}

bool ulkedit_t::move_selected(int x, int y) {
    const dir3 way = drag_vector(x, y);
    bool moved = false;
    for (const auto& entry : scene_models)
        if (modeling_t* model = modeling_of(*entry))
            moved |= entry->history.move(*model, as_pos(way));
    return moved;
}

bool ulkedit_t::end_move() {
    edited_models_t edited;
    for (const auto& entry : scene_models)
        if (const modeling_t* model = modeling_of(*entry); model != nullptr && entry->history.close(*model))
            edited.push_back(entry.get());
    if (edited.empty())
        return false;
    undo_list.push_back(std::move(edited));
    update_models();
    return true;
}

bool ulkedit_t::wheel_selected(int delta) {
    bool moved = false;
    for (const auto& entry : scene_models) {
        if (modeling_t* model = modeling_of(*entry)) {
            entry->history.open(0, 0, *model);
            moved |= entry->history.wheel(*model, delta);
        }
    }
    // A step of the wheel is no step of its own in undo_list: the next undo that names the model takes it
    // back.
    if (moved)
        update_models();
    return moved;
}

dir3 ulkedit_t::drag_vector(int x, int y) {
    const bool in_perspective = cursor.in_perspective();
    const model_entry_t* const entry = current_model();
    const float depth = in_perspective && entry != nullptr
                            ? entry->history.depth(cameras.view.matrix, cameras.perspective.matrix)
                            : 0.0F;
    const auto in_model = [&](const view_cursor_t& at) {
        const pos2 p = normalised(at, areas);
        const pos3 in_view =
            in_perspective ? dehomogenize(vec_times_mtx({p.x, p.y, depth, 1}, cameras.perspective.inverse))
                           : transform_point({p.x, p.y, 0}, cameras.ortho.inverse);
        const pos3 point = transform_point(in_view, view_of(cursor).inverse);
        return grid_step == 0.0 ? point : grid_snap(point, static_cast<float>(grid_step));
    };
    return in_model(moved_cursor(cursor, areas, x, y)) - in_model(cursor);
}

bool ulkedit_t::punish_move(int x, int y) {
    const dir3 way = drag_vector(x, y);
    bool dented = false;
    for (const auto& entry : scene_models) {
        if (entry->kind != kind_nurbs)
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

void ulkedit_t::update_models() {
    for (const auto& entry : scene_models)
        if (modeling_t* model = modeling_of(*entry))
            model->update(glpolygon);
}

bool ulkedit_t::undo() {
    if (undo_list.empty())
        return false;
    for (model_entry_t* entry : undo_list.back())
        if (modeling_t* model = modeling_of(*entry))
            entry->history.undo(*model);
    redo_list.splice(redo_list.end(), undo_list, std::prev(undo_list.end()));
    update_models();
    return true;
}

bool ulkedit_t::redo() {
    if (redo_list.empty())
        return false;
    for (model_entry_t* entry : redo_list.back())
        if (modeling_t* model = modeling_of(*entry))
            entry->history.redo(*model);
    undo_list.splice(undo_list.end(), redo_list, std::prev(redo_list.end()));
    update_models();
    return true;
}

void ulkedit_t::note_edit() {
    if (model_entry_t* const entry = current_model())
        undo_list.push_back({entry});
}

bool ulkedit_t::fold() {
    const auto axis = fold_positions();
    if (cutting || !axis || f_eq(axis->first, axis->second))
        return false;
    bool folded = false;
    for (const auto& entry : scene_models) {
        polygon_t& polygon = entry->polygon;
        // A model without marks would stay as it is: that counts as no fold, so that the user is told.
        if (entry->kind != kind_polygon || polygon.selectpolygons.empty())
            continue;
        if (!fold_polygons(polygon.selectpolygons, axis->first, axis->second, fold_angle, polygon.vertices,
                           polygon.normals, polygon.elements))
            continue;
        folded = true;
        // Tells itself when it fails; the mesh has changed all the same.
        static_cast<void>(polygon.extend(polygon.vertices.element_count(), polygon.elements.element_count()));
    }
    if (folded)
        clear_undo();
    return folded;
}

void ulkedit_t::cut_current(const sigc::slot<void, double>& receiver) {
    const model_entry_t* const cutter = current_model();
    if (cutting || cutter == nullptr || cutter->kind != kind_polygon)
        return;
    progress_signal_t progress;
    progress.connect(receiver);
    cutting = true;
    mesh_cut(progress, index_of_current, scene_models);
    cutting = false;
    clear_undo();
}

void ulkedit_t::clear_undo() {
    for (const auto& entry : scene_models)
        entry->history.clear();
    undo_list.clear();
    redo_list.clear();
}

}  // namespace ulk3d
