// What scene_input_t does on the signals of its operation objects: selections, moves and dents.

#include <sigc++/adaptors/bind.h>
#include <sigc++/functors/mem_fun.h>

#include <cmath>

#include "app/editor/scene_input.h"
#include "gltextures/gr_check_error.h"

namespace ulk3d {

using libgr::grCheckError;

void scene_input_t::connect_operations() {
    const auto selects_points = [this](auto& object) {
        object.clear.connect(sigc::mem_fun(scene, &edited_scene_t::clear_selection));
        object.select.connect(sigc::mem_fun(scene, &edited_scene_t::select_vertex));
        object.unselect.connect(sigc::mem_fun(scene, &edited_scene_t::unselect_vertex));
        object.pick.connect(sigc::mem_fun(*this, &scene_input_t::pick_points));
    };
    selects_points(selection);
    selection.move_begin.connect(sigc::mem_fun(*this, &scene_input_t::begin_move));
    selection.move.connect(sigc::mem_fun(*this, &scene_input_t::move_selected));
    selection.move_end.connect(sigc::mem_fun(*this, &scene_input_t::end_move));
    selection.wheel.connect(sigc::mem_fun(*this, &scene_input_t::wheel_selected));

    selects_points(punish);
    punish.apply.connect(sigc::mem_fun(*this, &scene_input_t::punish_move));
    punish.refresh.connect(sigc::mem_fun(*this, &scene_input_t::update_models));

    clipping.clear.connect(sigc::mem_fun(scene, &edited_scene_t::clear_polygons));
    clipping.pick.connect(sigc::mem_fun(*this, &scene_input_t::polyselection));
    clipping.select.connect(sigc::mem_fun(scene, &edited_scene_t::select_polygon));
    clipping.unselect.connect(sigc::mem_fun(scene, &edited_scene_t::unselect_polygon));
    clipping.apply.connect(sigc::mem_fun(*this, &scene_input_t::ApplySelPolygon));

    folding.clear.connect(sigc::mem_fun(scene, &edited_scene_t::clear_fold_vertices));
    folding.set_first.connect(sigc::bind<0>(sigc::mem_fun(scene, &edited_scene_t::set_fold_vertex), 0));
    folding.set_second.connect(sigc::bind<0>(sigc::mem_fun(scene, &edited_scene_t::set_fold_vertex), 1));
    folding.pick.connect(sigc::mem_fun(*this, &scene_input_t::pick_points));
}

bool scene_input_t::pick_points(int x, int y, float width, float height, const hit_signal_t& receiver) {
    begin_gesture(x, y);
    return view.pick_points(scene.models(), place, width, height, receiver);
}

bool scene_input_t::polyselection(int x, int y, float width, float height, const hit_signal_t& receiver) {
    begin_gesture(x, y);
    return view.pick_polygons(scene.models(), place, width, height, receiver);
}

// Here the result of a polygon pick could be used; fold and cut read the selection themselves.
void scene_input_t::ApplySelPolygon() {
    grCheckError("ulkedit_t::ApplySelPolygon(start)");
    grCheckError("ulkedit_t::ApplySelPolygon(end)");
}

bool scene_input_t::begin_move(int x, int y) {
    begin_gesture(x, y);
    scene.steps.begin();
    return false;
}

bool scene_input_t::move_selected(int x, int y) {
    return scene.steps.move(drag_vector(x, y));
}

bool scene_input_t::end_move() {
    const bool moved = scene.steps.commit();
    if (moved)
        update_models();
    return moved;
}

bool scene_input_t::wheel_selected(int delta) {
    const bool moved = scene.steps.wheel(delta);
    if (moved)
        update_models();
    return moved;
}

bool scene_input_t::punish_move(int x, int y) {
    return scene.dent(drag_vector(x, y));
}

void scene_input_t::update_models() {
    scene.update_models(view.glpolygon);
}

dir3 scene_input_t::drag_vector(int x, int y) const {
    const model_entry_t* const entry = scene.current_model();
    const float depth = place.in_perspective() && entry != nullptr
                            ? entry->history.depth(view.cameras.view.matrix, view.cameras.perspective.matrix)
                            : 0.0F;
    // A point that is no number, or in the plane of the eye, has no depth.
    return view.way_between(place, moved_cursor(place, view.areas, x, y),
                            std::isfinite(depth) ? depth : 0.0F);
}

}  // namespace ulk3d
