#include "model/edit_history.h"

#include <algorithm>
#include <iostream>
#include <limits>
#include <string>
#include <utility>

#include "model/attributes.h"
#include "model/math/matrices.h"
#include "model/math/vectors.h"
#include "model/modeling.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {
namespace {

/// A model's array; null when it has none at that index.
template <class Model>
auto array_of(Model& model, std::uint64_t array) {
    return array <= std::numeric_limits<std::uint32_t>::max() ? model.array(static_cast<std::uint32_t>(array))
                                                              : nullptr;
}

/// How many floats of a member an edit keeps: 3 or 4; 0 for a kind that is not handled.
std::uint32_t handled_components(const record_member_t& member) {
    if (member.kind == e_type_t::Position || member.kind == e_type_t::Normal)
        return 3;
    return member.kind == e_type_t::RGBA ? 4 : 0;
}

/// True when the member is of a kind that is not handled, after printing a line that begins with `what`;
/// without a line for a member that does not exist.
bool is_reported_unhandled(const record_member_t& member, const char* what) {
    if (handled_components(member) != 0)
        return false;
    if (member.kind)
        std::cerr << what << " (" << std::to_string(static_cast<std::uint32_t>(*member.kind))
                  << ") not handled.\n";
    return true;
}

/// Notifies the model of each changed point that it has.
void tell_changed(modeling_t& model, const edit_t& edit) {
    const array_t* const array = array_of(model, edit.array);
    if (array == nullptr)
        return;
    const auto count = static_cast<std::uint64_t>(array->element_count());
    for (const edit_point_t& point : edit.points)
        if (point.index < count)
            model.elementchanged(static_cast<std::uint32_t>(edit.array), point.index);
}

/// Exchanges the recorded values with those in the array. Returns whether there are any.
bool exchange(edit_t& edit, modeling_t& model) {
    if (edit.points.empty())
        return false;
    {
        const mapped_member_t<float> member(array_of(model, edit.array), edit.member);
        const std::uint32_t count = handled_components(member->place());
        for (edit_point_t& point : edit.points) {
            if (is_reported_unhandled(member->place(), "element_t::e_type_t"))
                continue;
            float* const present = member->at(point.index, count);
            if (present == nullptr)
                continue;
            std::swap(point.value.x, present[0]);
            std::swap(point.value.y, present[1]);
            std::swap(point.value.z, present[2]);
            if (count == 4)
                std::swap(point.value.w, present[3]);
        }
    }
    tell_changed(model, edit);
    return true;
}

/// True when x, y or z of a recorded value is no longer equal to that in the array.
bool differs(const edit_t& edit, const modeling_t& model) {
    if (edit.points.empty())
        return false;
    const mapped_member_t<const float> member(array_of(model, edit.array), edit.member);
    return std::ranges::any_of(edit.points, [&member](const edit_point_t& point) {
        const float* const present = member->at(point.index, 3);
        return present != nullptr && !f_eq(pos3{point.value.x, point.value.y, point.value.z},
                                           pos3{present[0], present[1], present[2]});
    });
}

}  // namespace

void edit_history_t::open(std::uint64_t array, std::uint64_t member, const modeling_t& model) {
    edit_t& edit = undos.emplace_back();
    edit.array = array;
    edit.member = member;

    const std::vector<bool>& selection = model.selection;
    edit.points.reserve(static_cast<std::size_t>(std::ranges::count(selection, true)));
    const mapped_member_t<const float> values(array_of(model, array), member);
    const std::uint32_t count = handled_components(values->place());
    for (std::size_t i = 0; i < selection.size(); ++i) {
        if (!selection[i] || i >= values->size())
            continue;
        edit_point_t& point = edit.points.emplace_back();
        point.index = i;
        if (is_reported_unhandled(values->place(), "element.type"))
            continue;
        if (const float* const present = values->at(i, count))
            point.value = {present[0], present[1], present[2], count == 4 ? present[3] : 0};
    }
}

void edit_history_t::push(edit_t edit) {
    undos.push_back(std::move(edit));
}

float edit_history_t::depth(const mtx3w& modelview, const mtx3w& projection) const {
    if (undos.empty() || undos.back().points.empty())
        return 0;
    const vec3w& value = undos.back().points.front().value;
    const pos3 seen = transform_point({value.x, value.y, value.z}, modelview);
    return dehomogenize(vec_times_mtx(homogenize(seen), projection)).z;
}

bool edit_history_t::move(modeling_t& model, const pos3& delta) {
    if (undos.empty() || undos.back().points.empty())
        return false;
    const edit_t& edit = undos.back();
    {
        const mapped_member_t<float> member(array_of(model, edit.array), edit.member);
        for (const auto& [value, index] : edit.points) {
            float* const present = member->at(index, 3);
            if (present == nullptr)
                continue;
            present[0] = value.x + delta.x;
            present[1] = value.y + delta.y;
            present[2] = value.z + delta.z;
        }
    }
    tell_changed(model, edit);
    return true;
}

bool edit_history_t::wheel(modeling_t& model, std::int32_t delta) {
    return move(model, {0, 0, static_cast<float>(-std::int64_t{delta}) * 0.5F});
}

bool edit_history_t::close(const modeling_t& model) {
    if (undos.empty())
        return false;
    if (differs(undos.back(), model))
        return true;
    undos.pop_back();
    return false;
}

bool edit_history_t::undo(modeling_t& model) {
    return exchange_last(undos, redos, model);
}

bool edit_history_t::redo(modeling_t& model) {
    return exchange_last(redos, undos, model);
}

bool edit_history_t::exchange_last(std::list<edit_t>& from, std::list<edit_t>& to, modeling_t& model) {
    if (from.empty())
        return false;
    const bool has_points = exchange(from.back(), model);
    to.splice(to.end(), from, std::prev(from.end()));
    return has_points;
}

void edit_history_t::clear() {
    undos.clear();
    redos.clear();
}

}  // namespace ulk3d
