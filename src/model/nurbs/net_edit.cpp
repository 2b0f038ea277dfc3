#include "model/nurbs/net_edit.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <string>

#include "model/math/colours.h"
#include "model/math/tolerance.h"
#include "model/modeling.h"
#include "model/nurbs/nurbs.h"

namespace ulk3d {

const number_form_t position_form{
    3,
    [](float value) { return static_cast<double>(value); },
    [](double number) { return static_cast<float>(number); },
    [](float a, float b) { return f_eq(a, b); },
};

const number_form_t colour_form{
    4,
    [](float value) { return static_cast<double>(channel_to_byte(value)); },
    [](double number) { return byte_to_channel(static_cast<std::uint8_t>(static_cast<int>(number) & 255)); },
    [](float a, float b) { return a == b; },
};

std::optional<e_type_t> tabulated_kind(const modeling_t& model, attribute_t attribute) {
    const attribute_place_t place = place_of(attribute);
    const array_t* const records = model.array(place.array);
    if (records == nullptr)
        return std::nullopt;
    const element_list_t& list =
        records->element_list().size() == 0 ? control_point_elements() : records->element_list();
    const auto members = elements_of(list);
    if (place.member >= members.size())
        return std::nullopt;
    const e_type_t kind = members[place.member].type;
    if (kind == e_type_t::Position || kind == e_type_t::RGBA)
        return kind;
    std::cerr << "elements.type (" << std::to_string(static_cast<std::uint32_t>(kind)) << ") not handled."
              << std::endl;
    return std::nullopt;
}

namespace {

/// The array if it can be mapped, else null.
template <class Array>
Array* with_buffer(Array* array) {
    return array != nullptr && array->has_buffer() ? array : nullptr;
}

/// Selects or unselects a point as its row says; true when that has changed it.
bool select(modeling_t& model, const number_row_t& row) {
    return row.selected ? model.select(row.point) : model.unselect(row.point);
}

/// False for a point that could not be marked for lack of memory.
bool is_selected_as_told(const modeling_t& model, const number_row_t& row) {
    return row.point >= model.selection.size() || model.selection[row.point] == row.selected;
}

/// Stores the numbers of a row in a value of the model if they differ; if so, returns true and sets `old` to
/// the old values.
bool store(const number_form_t& form, const number_row_t& row, float* attribute, vec3w& old) {
    std::array<float, 4> values{};
    bool is_same = true;
    for (std::uint32_t i = 0; i < form.components; ++i) {
        values[i] = form.stored(row.numbers[i]);
        is_same = is_same && form.is_same(values[i], attribute[i]);
    }
    if (is_same)
        return false;
    old = {attribute[0], attribute[1], attribute[2], form.components == 4 ? attribute[3] : 0};
    std::copy_n(values.begin(), form.components, attribute);
    return true;
}

}  // namespace

void read_rows(const modeling_t& model, attribute_t attribute, const number_form_t& form,
               std::span<number_row_t> rows) {
    const attribute_place_t place = place_of(attribute);
    const mapped_member_t<const float> values(with_buffer(model.array(place.array)), place.member);
    for (number_row_t& row : rows) {
        row.selected = row.point < model.selection.size() && model.selection[row.point];
        const float* const value = values->at(row.point, form.components);
        for (std::uint32_t i = 0; value != nullptr && i < form.components; ++i)
            row.numbers[i] = form.shown(value[i]);
    }
}

table_change_t write_rows(modeling_t& model, attribute_t attribute, const number_form_t& form,
                          std::span<const number_row_t> rows) {
    const attribute_place_t place = place_of(attribute);
    table_change_t change{.edit = {{}, place.array, place.member}};
    {
        array_t* const array = with_buffer(model.array(place.array));
        const mapped_member_t<float> values(array, place.member);
        change.failed = array != nullptr && array->bytes_in_use() > 0 && !values.is_mapped();
        if (change.failed)
            return change;
        for (const number_row_t& row : rows) {
            change.selection |= select(model, row);
            if (!is_selected_as_told(model, row))
                return {.edit = {{}, place.array, place.member}, .failed = true};
            vec3w old;
            float* const value = values->at(row.point, form.components);
            if (value != nullptr && store(form, row, value, old))
                change.edit.points.push_back({old, row.point});
        }
    }
    for (const edit_point_t& point : change.edit.points)
        model.elementchanged(place.array, point.index);
    return change;
}

const number_form_t& form_of(attribute_t attribute) {
    return attribute == attribute_t::color ? colour_form : position_form;
}

net_table_t read_net(const nurbs_t& nurbs, attribute_t attribute) {
    net_table_t table{nurbs.count1, nurbs.count2, {}};
    table.points.resize(nurbs.points.data.size());
    for (std::size_t i = 0; i < table.points.size(); ++i)
        table.points[i].point = i;
    read_rows(nurbs, attribute, form_of(attribute), table.points);
    return table;
}

option_table_t read_option(const nurbs_t& nurbs, std::uint32_t index) {
    switch (index) {
        case 0:
            return {nurbs.knot1, nurbs.order1, nurbs.count1};
        case 1:
            return {nurbs.knot2, nurbs.order2, nurbs.count2};
        case 2:
            return {nurbs.weight, nurbs.order1, nurbs.count1};
        default:
            return {};
    }
}

bool write_option(nurbs_t& nurbs, std::uint32_t index, const matrix_t<float>& values) {
    const option_view_t table = nurbs.option(index);
    bool changed = false;
    for (std::size_t i = 0; i < std::min<std::size_t>(values.data.size(), table.count); ++i) {
        float& value = table.data[i * table.stride];
        if (value == values.data[i])
            continue;
        value = values.data[i];
        changed = true;
    }
    return changed;
}

}  // namespace ulk3d
