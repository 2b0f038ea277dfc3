#include "app/editor/ulkedit.h"

#include <iostream>
#include <utility>

#include "app/editor/program_path.h"
#include "formats/scene_files.h"
#include "gltextures/gr_check_error.h"

namespace ulk3d {

using libgr::grCheckError;

ulkedit_t::ulkedit_t(const char* argv0) : program_dir(program_directory(argv0)) {}

bool ulkedit_t::file_open(const char* name, std::ostream& errors) {
    const bool opened = edited.append([&](scene_t& loaded) {
        grCheckError("ulkedit_t::file_open(0)");
        if (load_scene(loaded, name, seen.glpolygon, errors))
            return true;
        std::cerr << name << ": file open error." << std::endl;
        return false;
    });
    if (!opened)
        return false;
    grCheckError("ulkedit_t::file_open(1)");
    seen.fit(edited.models());
    grCheckError("ulkedit_t::file_open(3)");
    return true;
}

const model_entry_t* ulkedit_t::current_of_kind(model_kind_t kind) const {
    const model_entry_t* const entry = current_model();
    return entry != nullptr && entry->kind == kind ? entry : nullptr;
}

model_entry_t* ulkedit_t::current_of_kind(model_kind_t kind) {
    return const_cast<model_entry_t*>(std::as_const(*this).current_of_kind(kind));
}

void ulkedit_t::set_polygon(const polygon_settings_t& settings) {
    edited.gate().pass([&] {
        if (model_entry_t* const entry = current_of_kind(model_kind_t::polygon))
            set_polygon_settings(*entry, settings);
    });
}

void ulkedit_t::set_nurbs(const nurbs_settings_t& settings) {
    edited.gate().pass([&] {
        if (model_entry_t* const entry = current_of_kind(model_kind_t::nurbs))
            set_nurbs_settings(*entry, settings, seen.glpolygon);
    });
}

void ulkedit_t::set_environment(const environment_settings_t& settings) {
    edited.gate().pass([&] {
        // The map is looked for where a scene file would name it: beside the file of the current model.
        const model_entry_t* const entry = current_model();
        const std::string base = entry == nullptr ? std::string() : entry->modeling().name;
        set_environment_settings(edited.environment, settings, base.empty() ? nullptr : base.c_str());
    });
}

net_table_t ulkedit_t::net_table(attribute_t attribute) const {
    const model_entry_t* const entry = current_of_kind(model_kind_t::nurbs);
    return entry == nullptr ? net_table_t() : read_net(entry->nurbs, attribute);
}

void ulkedit_t::set_net_table(attribute_t attribute, std::span<const number_row_t> points) {
    edited.gate().pass([&] {
        model_entry_t* const entry = current_of_kind(model_kind_t::nurbs);
        if (entry == nullptr)
            return;
        table_change_t change = write_rows(entry->nurbs, attribute, form_of(attribute), points);
        if (!change)
            return;
        const bool has_values = change.has_values();
        note_edit(std::move(change.edit));
        if (has_values)
            entry->nurbs.update(seen.glpolygon);
    });
}

option_table_t ulkedit_t::option_table(std::uint32_t index) const {
    const model_entry_t* const entry = current_of_kind(model_kind_t::nurbs);
    return entry == nullptr ? option_table_t() : read_option(entry->nurbs, index);
}

void ulkedit_t::set_option_table(std::uint32_t index, const matrix_t<float>& values) {
    edited.gate().pass([&] {
        model_entry_t* const entry = current_of_kind(model_kind_t::nurbs);
        if (entry != nullptr && write_option(entry->nurbs, index, values))
            entry->nurbs.update(seen.glpolygon);
    });
}

std::string ulkedit_t::vertex_text(attribute_t attribute) const {
    const model_entry_t* const entry = current_of_kind(model_kind_t::polygon);
    const attribute_place_t place = place_of(attribute);
    return entry == nullptr ? std::string() : member_text(*entry->polygon.array(place.array), place.member);
}

void ulkedit_t::set_vertex_text(attribute_t attribute, std::string text) {
    edited.gate().pass([&] {
        const attribute_place_t place = place_of(attribute);
        if (model_entry_t* const entry = current_of_kind(model_kind_t::polygon))
            store_member_text(*entry->polygon.array(place.array), place.member, std::move(text));
    });
}

std::string ulkedit_t::element_text() const {
    const model_entry_t* const entry = current_of_kind(model_kind_t::polygon);
    return entry == nullptr ? std::string() : index_text(entry->polygon.elements);
}

void ulkedit_t::set_element_text(std::string text) {
    edited.gate().pass([&] {
        if (model_entry_t* const entry = current_of_kind(model_kind_t::polygon))
            store_index_text(entry->polygon.elements, std::move(text));
    });
}

void ulkedit_t::note_edit(edit_t edit) {
    if (model_entry_t* const entry = current_model())
        edited.steps.push(*entry, std::move(edit));
}

}  // namespace ulk3d
