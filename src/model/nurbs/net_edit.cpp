#include "model/nurbs/net_edit.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <string>

#include "model/edit_history.h"
#include "model/math/colours.h"
#include "model/math/tolerance.h"
#include "model/modeling.h"
#include "render/gl/mapped_span.h"

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

std::optional<e_type_t> tabulated_kind(const modeling_t& model, std::uint32_t array, std::uint32_t member) {
    const array_t* const records = model.array(array);
    if (records == nullptr)
        return std::nullopt;
    const element_list_t& list =
        records->element_list().size() == 0 ? control_point_elements() : records->element_list();
    const auto members = elements_of(list);
    if (member >= members.size())
        return std::nullopt;
    const e_type_t kind = members[member].type;
    if (kind == e_type_t::Position || kind == e_type_t::RGBA)
        return kind;
    std::cerr << "elements.type (" << std::to_string(static_cast<std::uint32_t>(kind)) << ") not handled."
              << std::endl;
    return std::nullopt;
}

namespace {

/// The attribute of every record of an array, mapped while this lives. Empty for an array that has no such
/// attribute.
template <class Float, class Array>
class mapped_attribute_t {
  public:
    mapped_attribute_t(Array* array, std::uint32_t member, std::uint32_t components) {
        if (array == nullptr || !array->has_buffer())
            return;
        stride = array->vertex_stride();
        offset = word_offset_of(array->element_list(), member);
        if (offset + components <= stride)
            words.emplace(*array);
    }

    /// Count of the records.
    std::size_t size() const { return words ? words->size() / stride : 0; }
    Float* operator[](std::size_t record) const { return &(*words)[record * stride + offset]; }

  private:
    std::size_t stride = 1;
    std::size_t offset = 0;
    std::optional<mapped_span<Float, array_t>> words;
};

/// Marks or unmarks a point as its row says; true when that changed it.
bool mark(modeling_t& model, const number_row_t& row) {
    return row.selected ? model.select(row.point) : model.unselect(row.point);
}

/// Stores the numbers of a row in an attribute; true, with the old values in `old`, when they differ.
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

void read_rows(const modeling_t& model, std::uint32_t array, std::uint32_t member, const number_form_t& form,
               std::span<number_row_t> rows) {
    const mapped_attribute_t<const float, const array_t> attributes(model.array(array), member,
                                                                    form.components);
    for (number_row_t& row : rows) {
        row.selected = row.point < model.selection.size() && model.selection[row.point];
        if (row.point >= attributes.size())
            continue;
        for (std::uint32_t i = 0; i < form.components; ++i)
            row.numbers[i] = form.shown(attributes[row.point][i]);
    }
}

table_change_t write_rows(modeling_t& model, edit_history_t& history, std::uint32_t array,
                          std::uint32_t member, const number_form_t& form,
                          std::span<const number_row_t> rows) {
    edit_t edit{{}, array, member};
    bool marks_changed = false;
    {
        const mapped_attribute_t<float, array_t> attributes(model.array(array), member, form.components);
        for (const number_row_t& row : rows) {
            marks_changed |= mark(model, row);
            vec3w old;
            if (row.point < attributes.size() && store(form, row, attributes[row.point], old))
                edit.points.push_back({old, row.point});
        }
    }
    const bool values_changed = !edit.points.empty();
    if (!marks_changed && !values_changed)
        return table_change_t::none;
    for (const edit_point_t& point : edit.points)
        model.elementchanged(array, point.index);
    history.push(std::move(edit));
    return values_changed ? table_change_t::values : table_change_t::selection;
}

}  // namespace ulk3d
