#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <utility>

#include "fuzz/parts/session.h"

// Selections, moves and dialogs of a session.
namespace ulk_test {

using namespace ulk3d;

namespace {

constexpr std::uint64_t most_points = 120;  // keeps steps cheap

std::uint32_t count_of(const modeling_t& model) {
    return static_cast<std::uint32_t>(model.selection.size());
}

}  // namespace

float session_bytes_t::number() {
    static constexpr float infinity = std::numeric_limits<float>::infinity();
    static constexpr float odd[] = {infinity, -infinity, std::numeric_limits<float>::quiet_NaN(),
                                    1e38F,    -1e38F,    1e-40F,
                                    -0.0F,    1e5F,      1.0F / 3};
    constexpr std::uint8_t first_odd = 240, steps = 16;
    const std::uint8_t byte = letter();
    if (byte >= first_odd)
        return odd[byte % std::size(odd)];
    return static_cast<float>(static_cast<std::uint8_t>(byte - std::uint8_t{'0'}) % steps) / 4 - 1;
}

// Selections.

std::string session_t::select_point(session_bytes_t& bytes) {
    const std::uint64_t model = some_model(bytes);
    const model_entry_t* const entry = entry_at(model);
    const std::uint32_t count = entry == nullptr ? 0 : count_of(entry->modeling());
    const std::uint32_t point = bytes.below(count + 1);
    const bool was_selected = point < count && entry->modeling().selection[point];
    if (editor.scene().select_vertex(model, point) != (point < count && !was_selected))
        return "Selecting a point does not say whether that has changed it.";
    return {};
}

std::string session_t::unselect_point(session_bytes_t& bytes) {
    const std::uint64_t model = some_model(bytes);
    const model_entry_t* const entry = entry_at(model);
    const std::uint32_t count = entry == nullptr ? 0 : count_of(entry->modeling());
    const std::uint32_t point = bytes.below(count + 1);
    const bool was_selected = point < count && entry->modeling().selection[point];
    if (editor.scene().unselect_vertex(model, point) != was_selected)
        return "Unselecting a point does not say whether that has changed it.";
    return {};
}

std::string session_t::select_polygon(session_bytes_t& bytes) {
    const std::uint64_t model = some_model(bytes);
    editor.scene().select_polygon(model, bytes.below(32));
    return {};
}

std::string session_t::unselect_polygon(session_bytes_t& bytes) {
    const std::uint64_t model = some_model(bytes);
    editor.scene().unselect_polygon(model, bytes.below(32));
    return {};
}

std::string session_t::clear_selections(session_bytes_t&) {
    editor.scene().clear_selection();
    editor.scene().clear_polygons();
    return {};
}

// Moves.

std::string session_t::drag(session_bytes_t& bytes) {
    edit_steps_t& steps = editor.scene().steps;
    steps.begin();
    const float x = bytes.number(), y = bytes.number(), z = bytes.number();
    steps.move({x / 2, y / 2, z / 2});
    steps.move({x, y, z});
    steps.commit();
    update();
    return {};
}

std::string session_t::wheel(session_bytes_t& bytes) {
    editor.scene().steps.wheel(static_cast<int>(bytes.below(3)) - 1);
    update();
    return {};
}

std::string session_t::dent(session_bytes_t& bytes) {
    const float x = bytes.number(), y = bytes.number(), z = bytes.number();
    editor.scene().dent({x, y, z});
    update();
    return {};
}

std::string session_t::gesture(session_bytes_t& bytes) {
    static constexpr std::uint32_t modifiers[] = {modifier_none, modifier_shift, modifier_ctrl, modifier_alt};
    editor.set_mode(static_cast<operation_mode_t>(bytes.below(4)));
    const std::uint32_t modifier = modifiers[bytes.below(4)], button = bytes.below(3);
    const auto pixel = [&] { return static_cast<int>(bytes.below(16) * 4); };
    const int from_x = pixel(), from_y = pixel(), to_x = pixel(), to_y = pixel();
    editor.press_modifier(modifier, modifier);
    editor.mouse_button(button, false, from_x, from_y);
    editor.mouse_motion((from_x + to_x) / 2, (from_y + to_y) / 2);
    editor.mouse_motion(to_x, to_y);
    editor.mouse_button(button, true, to_x, to_y);
    editor.release_key(modifier);
    return {};
}

std::string session_t::draw(session_bytes_t&) {
    if (std::exchange(has_drawn, true))
        return {};
    const scene_state_t before = state_of(editor.scene());
    editor.display();
    return unchanged_since(before, "Drawing has changed the scene: ");
}

// Dialogs.

std::string session_t::set_mesh(session_bytes_t& bytes) {
    const std::uint32_t more_vertices = bytes.below(9), more_elements = bytes.below(9);
    model_entry_t* const entry = current(model_kind_t::polygon);
    if (entry == nullptr)
        return {};
    static constexpr std::uint32_t fewer = 4;
    const auto changed = [](std::uint32_t count, std::uint32_t more) {
        return static_cast<std::uint32_t>(
            std::min<std::uint64_t>(std::max(count + more, fewer) - fewer, most_points));
    };
    polygon_settings_t settings = polygon_settings(*entry);
    settings.vertex_count = changed(settings.vertex_count, more_vertices);
    settings.element_count = changed(settings.element_count, more_elements);
    if (settings == polygon_settings(*entry))
        return {};
    editor.set_polygon(settings);
    if (settings.element_count >= least_numbered)
        restripped.erase(entry);
    if (polygon_settings(*entry) != settings)
        return "A mesh does not have the counts that it was given.";
    return {};
}

nurbs_settings_t session_t::net_settings(session_bytes_t& bytes) {
    constexpr std::uint32_t limit = 5;
    nurbs_settings_t settings;
    for (std::uint32_t* const number : {&settings.count1, &settings.count2, &settings.order1,
                                        &settings.order2, &settings.resolution1, &settings.resolution2})
        *number = bytes.below(limit);
    return settings;
}

std::string session_t::set_net(session_bytes_t& bytes) {
    nurbs_settings_t settings = net_settings(bytes);
    const model_entry_t* const entry = current(model_kind_t::nurbs);
    if (entry == nullptr)
        return {};
    settings.names = nurbs_settings(*entry).names;
    editor.set_nurbs(settings);
    if (nurbs_settings(*entry) != settings)
        return "A net does not have the sizes that it was given.";
    return {};
}

std::string session_t::set_net_row(session_bytes_t& bytes) {
    const attribute_t attribute = bytes.below(2) == 0 ? attribute_t::position : attribute_t::color;
    net_table_t table = editor.net_table(attribute);
    if (table.points.empty())
        return {};
    number_row_t& row = table.points[bytes.below(static_cast<std::uint32_t>(table.points.size()))];
    row.selected = bytes.below(2) != 0;
    for (std::size_t n = 0; n < 3; ++n)
        // A cell of colours holds whole numbers up to 255, one of positions any number.
        row.numbers[n] =
            attribute == attribute_t::color ? bytes.below(256) : static_cast<double>(bytes.number());
    editor.set_net_table(attribute, table.points);
    return {};
}

std::string session_t::set_option(session_bytes_t& bytes) {
    const std::uint32_t index = bytes.below(3);
    option_table_t table = editor.option_table(index);
    if (table.values.data.empty())
        return {};
    const std::uint32_t place = bytes.below(static_cast<std::uint32_t>(table.values.data.size()));
    table.values.data[place] = bytes.number();
    editor.set_option_table(index, table.values);
    return {};
}

std::string session_t::set_vertex_text(session_bytes_t& bytes) {
    const auto attribute = static_cast<attribute_t>(bytes.below(6));
    std::string text;
    for (std::uint32_t line = bytes.below(5); line > 0; --line) {
        for (int n = 0; n < 3; ++n)
            text += std::to_string(bytes.number()) + ',';
        text += "1\n";
    }
    editor.set_vertex_text(attribute, std::move(text));
    return {};
}

std::string session_t::set_element_text(session_bytes_t& bytes) {
    std::string text;
    for (std::uint32_t line = bytes.below(12); line > 0; --line)
        text += std::to_string(static_cast<int>(bytes.below(10)) - 1) + '\n';
    if (const model_entry_t* const entry = current(model_kind_t::polygon))
        restripped.insert(entry);
    editor.set_element_text(std::move(text));
    return {};
}

std::string session_t::set_map(session_bytes_t& bytes) {
    static constexpr std::string model_names_t::*maps[] = {&model_names_t::texture, &model_names_t::bumpmap,
                                                           &model_names_t::specular};
    const auto map = maps[bytes.below(3)];
    const std::string name = bytes.below(2) == 0 ? "" : "missing.png";
    if (const model_entry_t* const mesh = current(model_kind_t::polygon)) {
        polygon_settings_t settings = polygon_settings(*mesh);
        settings.names.*map = name;
        editor.set_polygon(settings);
    } else if (const model_entry_t* const net = current(model_kind_t::nurbs)) {
        nurbs_settings_t settings = nurbs_settings(*net);
        settings.names.*map = name;
        editor.set_nurbs(settings);
    }
    return {};
}

std::string session_t::set_environment(session_bytes_t& bytes) {
    const float reflect = bytes.number(), refract = bytes.number(), factor = bytes.number();
    editor.set_environment({"", reflect, refract, factor});
    return {};
}

/// As a dialog of one point: writes the value, and makes a step of it.
std::string session_t::edit_vertex(session_bytes_t& bytes) {
    const attribute_t attribute = bytes.below(2) == 0 ? attribute_t::position : attribute_t::color;
    model_entry_t* const entry = editor.current_model();
    if (entry == nullptr || entry->modeling().selection.empty())
        return {};
    number_row_t row;
    row.point = bytes.below(count_of(entry->modeling()));
    for (std::size_t n = 0; n < 3; ++n)
        row.numbers[n] = bytes.below(200);
    table_change_t change = write_rows(entry->modeling(), attribute, form_of(attribute), {&row, 1});
    if (change.has_values())
        editor.note_edit(std::move(change.edit));
    update();
    return {};
}

}  // namespace ulk_test
