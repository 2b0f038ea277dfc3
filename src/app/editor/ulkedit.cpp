#include "app/editor/ulkedit.h"

#include <iostream>
#include <utility>

#include "app/editor/program_path.h"
#include "formats/scene_files.h"
#include "gltextures/gr_check_error.h"
#include "model/polygon/unset_frames.h"
#include "model/try_allocate.h"
#include "model/whole_change.h"

namespace ulk3d {

using libgr::grCheckError;

ulkedit_t::ulkedit_t(const char* argv0) : program_dir(program_directory(argv0)) {}

bool ulkedit_t::fold() {
    return try_command("ulkedit_t::fold()", [this] { return edited.fold(fold_angle); });
}

void ulkedit_t::cut_current(const sigc::slot<void, double>& receiver) {
    try_command("ulkedit_t::cut_current()", [&] { edited.cut_current(receiver); });
}

bool ulkedit_t::file_open(const char* name, std::ostream& errors) {
    const auto load = [&](scene_t& loaded) {
        grCheckError("ulkedit_t::file_open(0)");
        if (load_scene(loaded, name, seen.glpolygon, errors))
            return true;
        std::cerr << name << ": file open error." << std::endl;
        return false;
    };
    const bool opened = try_command(name, [&] { return edited.append(load); });
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

namespace {

bool has_unset_frames(const polygon_t& polygon) {
    return std::ranges::find(polygon.unset_frames, true) != polygon.unset_frames.end();
}

/// Has `apply` change the shape of a mesh, and makes anew the frames that nobody has given it: whoever writes
/// a mesh as text need not work out its normals. False, with nothing changed, when one of both fails.
template <class Apply>
bool change_shape(model_entry_t& entry, Apply&& apply) {
    if (!has_unset_frames(entry.polygon))
        return apply(entry.polygon);
    whole_change_t whole;
    model_entry_t* const changed = whole.copy_of(entry);
    if (changed == nullptr || !apply(changed->polygon) || !make_unset_frames(changed->polygon))
        return false;
    whole.commit();
    return true;
}

enum class net_change_t { none, made, failed };

/// Has `apply(entry, nurbs)` change a copy of the net of an entry, and puts it in place when that was made.
/// False, with nothing changed, when it failed; null has no net to change.
template <class Apply>
bool change_net(model_entry_t* entry, Apply&& apply) {
    if (entry == nullptr)
        return true;
    whole_change_t whole;
    model_entry_t* const changed = whole.copy_of(*entry);
    if (changed == nullptr)
        return false;
    const net_change_t change = apply(*entry, changed->nurbs);
    if (change == net_change_t::made)
        whole.commit();
    return change != net_change_t::failed;
}

/// Has `apply` change the frames of a mesh. Those that differ then are given.
template <class Apply>
bool change_frames(polygon_t& polygon, Apply&& apply) {
    if (!has_unset_frames(polygon))
        return apply(polygon);
    const auto read = [&polygon] {
        const array_span<const frame_t> frames(polygon.normals);
        return std::vector(frames.begin(), frames.end());
    };
    const std::vector<frame_t> before = read();
    if (!apply(polygon))
        return false;
    const std::vector<frame_t> after = read();
    for (std::size_t i = 0; i < std::min({before.size(), after.size(), polygon.unset_frames.size()}); ++i)
        if (after[i] != before[i])
            polygon.unset_frames[i] = false;
    return true;
}

}  // namespace

template <class Change>
void ulkedit_t::change(const char* command, Change&& apply) {
    edited.gate().pass([&] {
        if (!try_command(command, std::forward<Change>(apply)))
            std::cerr << command << ": nothing has changed." << std::endl;
    });
}

void ulkedit_t::set_polygon(const polygon_settings_t& settings) {
    change("ulkedit_t::set_polygon()", [&] {
        model_entry_t* const entry = current_of_kind(model_kind_t::polygon);
        return entry == nullptr || set_polygon_settings(*entry, settings);
    });
}

void ulkedit_t::set_nurbs(const nurbs_settings_t& settings) {
    change("ulkedit_t::set_nurbs()", [&] {
        model_entry_t* const entry = current_of_kind(model_kind_t::nurbs);
        return entry == nullptr || set_nurbs_settings(*entry, settings, seen.glpolygon);
    });
}

void ulkedit_t::set_environment(const environment_settings_t& settings) {
    change("ulkedit_t::set_environment()", [&] {
        // The map is looked for where a scene file would name it: beside the file of the current model.
        const model_entry_t* const entry = current_model();
        const std::string base = entry == nullptr ? std::string() : entry->modeling().name;
        set_environment_settings(edited.environment, settings, base.empty() ? nullptr : base.c_str());
        return true;
    });
}

net_table_t ulkedit_t::net_table(attribute_t attribute) const {
    const model_entry_t* const entry = current_of_kind(model_kind_t::nurbs);
    return entry == nullptr ? net_table_t() : read_net(entry->nurbs, attribute);
}

void ulkedit_t::set_net_table(attribute_t attribute, std::span<const number_row_t> points) {
    change("ulkedit_t::set_net_table()", [&] {
        return change_net(current_of_kind(model_kind_t::nurbs), [&](model_entry_t& entry, nurbs_t& nurbs) {
            table_change_t written = write_rows(nurbs, attribute, form_of(attribute), points);
            if (!written)
                return written.failed ? net_change_t::failed : net_change_t::none;
            if (written.has_values() && !nurbs.bring_up_to_date(seen.glpolygon))
                return net_change_t::failed;
            edited.steps.push(entry, std::move(written.edit));
            return net_change_t::made;
        });
    });
}

option_table_t ulkedit_t::option_table(std::uint32_t index) const {
    const model_entry_t* const entry = current_of_kind(model_kind_t::nurbs);
    return entry == nullptr ? option_table_t() : read_option(entry->nurbs, index);
}

void ulkedit_t::set_option_table(std::uint32_t index, const matrix_t<float>& values) {
    change("ulkedit_t::set_option_table()", [&] {
        return change_net(current_of_kind(model_kind_t::nurbs), [&](model_entry_t&, nurbs_t& nurbs) {
            if (!write_option(nurbs, index, values))
                return net_change_t::none;
            return nurbs.bring_up_to_date(seen.glpolygon) ? net_change_t::made : net_change_t::failed;
        });
    });
}

std::string ulkedit_t::vertex_text(attribute_t attribute) const {
    const model_entry_t* const entry = current_of_kind(model_kind_t::polygon);
    const attribute_place_t place = place_of(attribute);
    return entry == nullptr ? std::string() : member_text(*entry->polygon.array(place.array), place.member);
}

void ulkedit_t::set_vertex_text(attribute_t attribute, std::string text) {
    change("ulkedit_t::set_vertex_text()", [&] {
        model_entry_t* const entry = current_of_kind(model_kind_t::polygon);
        const attribute_place_t place = place_of(attribute);
        const auto store = [&](polygon_t& polygon) {
            return store_member_text(*polygon.array(place.array), place.member, std::move(text));
        };
        if (entry == nullptr)
            return true;
        if (place.array != place_of(attribute_t::position).array)
            return change_frames(entry->polygon, store);
        return attribute == attribute_t::position ? change_shape(*entry, store) : store(entry->polygon);
    });
}

std::string ulkedit_t::element_text() const {
    const model_entry_t* const entry = current_of_kind(model_kind_t::polygon);
    return entry == nullptr ? std::string() : index_text(entry->polygon.elements);
}

void ulkedit_t::set_element_text(std::string text) {
    change("ulkedit_t::set_element_text()", [&] {
        model_entry_t* const entry = current_of_kind(model_kind_t::polygon);
        return entry == nullptr || change_shape(*entry, [&](polygon_t& polygon) {
                   return store_index_text(polygon.elements, std::move(text));
               });
    });
}

void ulkedit_t::note_edit(edit_t edit) {
    if (model_entry_t* const entry = current_model())
        edited.steps.push(*entry, std::move(edit));
}

}  // namespace ulk3d
