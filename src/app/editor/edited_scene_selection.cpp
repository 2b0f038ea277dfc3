// The selection of an edited_scene_t: points, polygons and the ends of the fold axis.

#include <iostream>
#include <iterator>

#include "app/editor/edited_scene.h"
#include "app/editor/polygon_report.h"
#include "model/attributes.h"

namespace ulk3d {

const model_entry_t* edited_scene_t::model_at(std::uint64_t index) const {
    if (index >= model_list.size())
        return nullptr;
    return std::next(model_list.begin(), static_cast<std::ptrdiff_t>(index))->get();
}

model_entry_t* edited_scene_t::model_at(std::uint64_t index) {
    return const_cast<model_entry_t*>(std::as_const(*this).model_at(index));
}

polygon_t* edited_scene_t::polygon_at(std::uint64_t index) {
    model_entry_t* const entry = model_at(index);
    return entry != nullptr && entry->kind == model_kind_t::polygon ? &entry->polygon : nullptr;
}

bool edited_scene_t::select_vertex(std::uint64_t model, std::uint64_t vertex) {
    model_entry_t* const entry = model_at(model);
    return entry != nullptr && entry->modeling().select(vertex);
}

bool edited_scene_t::unselect_vertex(std::uint64_t model, std::uint64_t vertex) {
    model_entry_t* const entry = model_at(model);
    return entry != nullptr && entry->modeling().unselect(vertex);
}

void edited_scene_t::clear_selection() {
    for (const auto& entry : model_list)
        entry->modeling().clearselection();
}

bool edited_scene_t::select_polygon(std::uint64_t model, std::uint64_t polygon_id) {
    polygon_t* const polygon = polygon_at(model);
    if (polygon == nullptr || polygon->selectpolygons().contains(static_cast<std::uint32_t>(polygon_id)))
        return false;
    report_polygon(std::cout, model, polygon_id, *polygon);
    polygon->selectpolygon(polygon_id);
    return polygon->selectpolygons().contains(static_cast<std::uint32_t>(polygon_id));
}

bool edited_scene_t::unselect_polygon(std::uint64_t model, std::uint64_t polygon_id) {
    polygon_t* const polygon = polygon_at(model);
    if (polygon == nullptr || !polygon->selectpolygons().contains(static_cast<std::uint32_t>(polygon_id)))
        return false;
    polygon->unselectpolygon(polygon_id);
    return true;
}

void edited_scene_t::clear_polygons() {
    for (const auto& entry : model_list)
        entry->polygon.clearpolygons();
}

bool edited_scene_t::set_fold_vertex(std::size_t end, std::uint64_t model, std::uint64_t vertex) {
    fold_picks[end] = {model, vertex};
    return true;
}

void edited_scene_t::clear_fold_vertices() {
    for (fold_pick_t& pick : fold_picks)
        pick = {};
}

namespace {

/// The position of a point of a model; empty when it has no such point.
std::optional<pos3> position_of(const model_entry_t* entry, std::uint64_t point) {
    constexpr attribute_place_t place = place_of(attribute_t::position);
    const array_t* const points = entry == nullptr ? nullptr : entry->modeling().array(place.array);
    if (points == nullptr || point >= static_cast<std::uint64_t>(points->element_count()))
        return std::nullopt;
    const mapped_member_t<const float> positions(points, place.member);
    const float* const position = positions->at(point, 3);
    if (position == nullptr)
        return std::nullopt;
    return pos3{position[0], position[1], position[2]};
}

}  // namespace

std::optional<std::pair<pos3, pos3>> edited_scene_t::fold_positions() const {
    const std::optional<pos3> first = position_of(model_at(fold_picks[0].model), fold_picks[0].vertex);
    const std::optional<pos3> second = position_of(model_at(fold_picks[1].model), fold_picks[1].vertex);
    if (!first || !second)
        return std::nullopt;
    return std::pair{*first, *second};
}

}  // namespace ulk3d
