// What the operation objects of ulkedit_t mark: points, polygons and the ends of the fold axis.

#include <sigc++/adaptors/bind.h>
#include <sigc++/functors/mem_fun.h>

#include <algorithm>
#include <iostream>
#include <iterator>
#include <map>

#include "app/editor/pick_window.h"
#include "app/editor/polygon_report.h"
#include "app/editor/ulkedit.h"
#include "gltextures/gr_check_error.h"
#include "operations/hit/polygon_hit.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {

using libgr::grCheckError;

void ulkedit_t::connect_operations() {
    const auto marks_points = [this](auto& object) {
        object.clear.connect(sigc::mem_fun(*this, &ulkedit_t::clear_selection));
        object.select.connect(sigc::mem_fun(*this, &ulkedit_t::select_vertex));
        object.unselect.connect(sigc::mem_fun(*this, &ulkedit_t::unselect_vertex));
        object.pick.connect(sigc::mem_fun(*this, &ulkedit_t::pick_points));
    };
    marks_points(selection);
    selection.move_begin.connect(sigc::mem_fun(*this, &ulkedit_t::begin_move));
    selection.move.connect(sigc::mem_fun(*this, &ulkedit_t::move_selected));
    selection.move_end.connect(sigc::mem_fun(*this, &ulkedit_t::end_move));
    selection.wheel.connect(sigc::mem_fun(*this, &ulkedit_t::wheel_selected));

    marks_points(punish);
    punish.apply.connect(sigc::mem_fun(*this, &ulkedit_t::punish_move));
    punish.refresh.connect(sigc::mem_fun(*this, &ulkedit_t::update_models));

    clipping.clear.connect(sigc::mem_fun(*this, &ulkedit_t::clear_polygons));
    clipping.pick.connect(sigc::mem_fun(*this, &ulkedit_t::polyselection));
    clipping.select.connect(sigc::mem_fun(*this, &ulkedit_t::select_polygon));
    clipping.unselect.connect(sigc::mem_fun(*this, &ulkedit_t::unselect_polygon));
    clipping.apply.connect(sigc::mem_fun(*this, &ulkedit_t::ApplySelPolygon));

    folding.clear.connect(sigc::mem_fun(*this, &ulkedit_t::clear_fold_vertices));
    folding.set_first.connect(sigc::bind<0>(sigc::mem_fun(*this, &ulkedit_t::set_fold_vertex), 0));
    folding.set_second.connect(sigc::bind<0>(sigc::mem_fun(*this, &ulkedit_t::set_fold_vertex), 1));
    folding.pick.connect(sigc::mem_fun(*this, &ulkedit_t::pick_points));
}

void ulkedit_t::set_mode(operation_mode_t mode) {
    operation_t* const objects[] = {&selection, &punish, &clipping, &folding};
    operation = objects[static_cast<std::size_t>(mode)];
}

model_entry_t* ulkedit_t::model_at(std::uint64_t index) {
    if (index >= scene_models.size())
        return nullptr;
    return std::next(scene_models.begin(), static_cast<std::ptrdiff_t>(index))->get();
}

modeling_t* ulkedit_t::modeling_at(std::uint64_t index) {
    model_entry_t* const entry = model_at(index);
    return entry == nullptr ? nullptr : modeling_of(*entry);
}

void ulkedit_t::clear_selection() {
    for (const auto& entry : scene_models)
        if (modeling_t* model = modeling_of(*entry))
            model->clearselection();
}

bool ulkedit_t::select_vertex(std::uint64_t index, std::uint64_t vertex) {
    modeling_t* const model = modeling_at(index);
    return model != nullptr && model->select(vertex);
}

bool ulkedit_t::unselect_vertex(std::uint64_t index, std::uint64_t vertex) {
    modeling_t* const model = modeling_at(index);
    return model != nullptr && model->unselect(vertex);
}

bool ulkedit_t::pick_points(int x, int y, float width, float height, const hit_signal_t& receiver) {
    cursor = cursor_at(areas, x, y);
    const mtx3w planes = pick_planes(pick_rectangle_at(cursor, areas, width, height));
    grCheckError("ulkedit_t::selection(1)");
    // Points that are not shown can not be picked; the other views always show them.
    if (cursor.in_perspective() && !control_points_on)
        return false;

    bool hit = false;
    std::uint64_t index = 0;
    {
        // One list for all models: the points of each model are reported again under every model behind it.
        pick_hits_t hits;
        for (const auto& entry : scene_models) {
            if (modeling_t* model = modeling_of(*entry))
                hit |= glnurbs.selection(hits, *model, planes, projection_of(cursor).matrix,
                                         view_of(cursor).matrix);
            for (const auto& [key, point] : hits)
                receiver.emit(index, point);
            ++index;
        }
    }
    grCheckError("ulkedit_t::selection(3)");
    return hit;
}

bool ulkedit_t::polyselection(int x, int y, float width, float height, const hit_signal_t& receiver) {
    cursor = cursor_at(areas, x, y);
    struct found_t {
        std::uint64_t model;
        std::uint32_t polygon;
    };
    std::map<float, found_t, nearer_t> nearest;
    if (cursor.in_perspective()) {
        const edge_lines_t window = edge_lines_of(pick_rectangle_at(cursor, areas, width, height));
        std::uint64_t index = 0;
        for (const auto& entry : scene_models) {
            hit_map_t hits;
            if (entry->kind == kind_polygon &&
                polygon_hit(hits, entry->polygon, window, cameras.perspective.matrix, cameras.view.matrix))
                nearest[hits.begin()->first] = {index, hits.begin()->second.polygon_id};
            ++index;
        }
        for (const auto& [depth, found] : nearest)
            receiver.emit(found.model, found.polygon);
    }
    grCheckError("ulkedit_t::polyselection(end)");
    return !nearest.empty();
}

bool ulkedit_t::select_polygon(std::uint64_t index, std::uint64_t polygon_id) {
    model_entry_t* const entry = model_at(index);
    if (entry == nullptr || entry->kind != kind_polygon)
        return false;
    polygon_t& polygon = entry->polygon;
    const auto id = static_cast<std::uint32_t>(polygon_id);
    if (polygon.selectpolygons.contains(id))
        return false;
    report_polygon(std::cout, index, polygon_id, polygon);
    polygon.selectpolygons.insert(id);
    polygon.selectpolygon(polygon_id);
    return true;
}

bool ulkedit_t::unselect_polygon(std::uint64_t index, std::uint64_t polygon_id) {
    model_entry_t* const entry = model_at(index);
    if (entry == nullptr || entry->kind != kind_polygon)
        return false;
    if (entry->polygon.selectpolygons.erase(static_cast<std::uint32_t>(polygon_id)) == 0)
        return false;
    entry->polygon.unselectpolygon(polygon_id);
    return true;
}

void ulkedit_t::clear_polygons() {
    for (const auto& entry : scene_models) {
        entry->polygon.selectpolygons.clear();
        if (!entry->polygon.selectelems.has_buffer())
            continue;
        const index_span indices(entry->polygon.selectelems);
        std::ranges::fill(indices.span(), restart_mark);
    }
}

// The place where the result of a polygon pick would be put to use; fold and cut read the marks themselves.
void ulkedit_t::ApplySelPolygon() {
    grCheckError("ulkedit_t::ApplySelPolygon(start)");
    grCheckError("ulkedit_t::ApplySelPolygon(end)");
}

bool ulkedit_t::set_fold_vertex(std::size_t end, std::uint64_t model, std::uint64_t vertex) {
    fold_picks[end] = {model, vertex};
    return true;
}

void ulkedit_t::clear_fold_vertices() {
    for (fold_pick_t& pick : fold_picks)
        pick = {};
}

namespace {

/// The position of a point of a model; none when it has no such point.
std::optional<pos3> position_of(const modeling_t* model, std::uint64_t point) {
    const array_t* const points = model == nullptr ? nullptr : model->array(0);
    if (points == nullptr || point >= static_cast<std::uint64_t>(points->element_count()))
        return std::nullopt;
    const array_span<const float> words(*points);
    const std::size_t first = point * points->vertex_stride();
    if (first + 2 >= words.size())
        return std::nullopt;
    return pos3{words[first], words[first + 1], words[first + 2]};
}

}  // namespace

std::optional<std::pair<pos3, pos3>> ulkedit_t::fold_positions() {
    const std::optional<pos3> first = position_of(modeling_at(fold_picks[0].model), fold_picks[0].vertex);
    const std::optional<pos3> second = position_of(modeling_at(fold_picks[1].model), fold_picks[1].vertex);
    if (!first || !second)
        return std::nullopt;
    return std::pair{*first, *second};
}

}  // namespace ulk3d
