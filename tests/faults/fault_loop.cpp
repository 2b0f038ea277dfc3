#include "faults/fault_loop.h"

#include <gtest/gtest.h>

#include <cstring>
#include <iostream>
#include <iterator>
#include <sstream>

#include "gltextures/textures/texture_stores.h"
#include "render/gl/mapped_span.h"

namespace ulk_test {

using namespace ulk3d;

namespace {

template <class T>
void add(std::string& state, const T& value) {
    static_assert(std::is_trivially_copyable_v<T>);
    state.append(reinterpret_cast<const char*>(&value), sizeof value);
}

template <class T>
void add_all(std::string& state, const T& values) {
    add(state, std::uint64_t{std::size(values)});
    for (const auto& value : values)
        add(state, value);
}

void add_text(std::string& state, const std::string& text) {
    add_all(state, text);
}

void add_buffer(std::string& state, const array_t& array) {
    if (!array.has_buffer())
        return;
    add_all(state, array_span<const std::uint32_t>(array).span());
}

void add_buffer(std::string& state, const element_array_t& array) {
    if (!array.has_buffer())
        return;
    add_all(state, const_index_span(array).span());
}

void add_points(std::string& state, const modeling_t& model) {
    add_text(state, model.name);
    for (const bool selected : model.selection)
        add(state, selected);
    add_buffer(state, model.pointsizes);
}

void add_polygon(std::string& state, const polygon_t& polygon) {
    add_points(state, polygon);
    add_buffer(state, polygon.vertices);
    add_buffer(state, polygon.normals);
    add_buffer(state, polygon.elements);
    add_buffer(state, polygon.selectelems);
    add_all(state, polygon.selectpolygons());
    for (std::size_t id = 0; id < polygon.polyidvector.size(); ++id) {
        const polygon_place_t place = polygon.polyidvector[id];
        add(state, place.position);
        add(state, place.flipped);
    }
}

void add_nurbs(std::string& state, const nurbs_t& nurbs) {
    add_points(state, nurbs);
    for (const std::uint64_t number : {nurbs.count1, nurbs.order1, nurbs.count2, nurbs.order2,
                                       std::uint64_t{nurbs.resolution1}, std::uint64_t{nurbs.resolution2}})
        add(state, number);
    add_all(state, nurbs.knot1.data);
    add_all(state, nurbs.knot2.data);
    add_all(state, nurbs.weight.data);
    add_all(state, nurbs.points.data);
    add_buffer(state, nurbs.ctlpts);
}

void add_settings(std::string& state, const texture_t& texture) {
    add_text(state, texture.texture);
    add_text(state, texture.bumpmap);
    add_text(state, texture.specular);
    add(state, texture.aniso);
    for (const bool set : {texture.bumpofs, texture.bump2mono, texture.mipmap, texture.nearlinear,
                           texture.maglinear, texture.mercatorsphere})
        add(state, set);
}

void add_history(std::string& state, const edit_history_t& history) {
    for (const auto* edits : {&history.undo_edits(), &history.redo_edits()}) {
        add(state, edits->size());
        for (const edit_t& edit : *edits)
            for (const edit_point_t& point : edit.points) {
                add(state, point.value);
                add(state, point.index);
            }
    }
}

void add_maps(std::string& state, const texture_t& texture) {
    for (const std::uint32_t handle : {texture.color_handle, texture.bump_handle, texture.spec_handle}) {
        const auto* const entry = handle != 0 ? libgr::model_textures.get(handle) : nullptr;
        state += entry != nullptr && entry->object.IsLoaded() ? '1' : '0';
    }
    state += '(' + std::to_string(texture.bump_offset_u) + ')';
}

}  // namespace

kept_words_t::kept_words_t(std::ostream& from) : stream(from), original(from.rdbuf(this)) {
    setp(room.data(), room.data() + room.size());
}

kept_words_t::~kept_words_t() {
    stream.rdbuf(original);
}

void fault_loop::SetUp() {
    gl_test::SetUp();
    target.emplace(96, 72);
    target->bind();
    editor.init();
    editor.reshape(96, 72);
}

void fault_loop::open(const std::string& text) {
    editor.select_model(0);
    while (!editor.models().empty())
        editor.delete_current();
    editor.scene().environment = {};
    libgr::clear_texture_stores();
    const std::string path = folder.write("before.ulk", text);
    ASSERT_TRUE(open_file(path));
}

bool fault_loop::open_file(const std::string& path) {
    std::ostringstream log;
    return editor.file_open(path.c_str(), log);
}

model_entry_t& fault_loop::entry(std::size_t index) {
    return **std::next(editor.models().begin(), static_cast<std::ptrdiff_t>(index));
}

scene_state_t fault_loop::state() {
    scene_state_t state;
    for (const auto& model : editor.models()) {
        add(state.models, model->kind);
        add_settings(state.models, model->texture);
        add_polygon(state.models, model->polygon);
        add_nurbs(state.models, model->nurbs);
        add_history(state.models, model->history);
        add_maps(state.maps, model->texture);
    }
    add(state.models, editor.current_index());
    const environment_t& environment = editor.environment();
    add_text(state.models, environment.cubetex);
    add(state.models, environment.reflectalpha);
    add(state.models, environment.refractalpha);
    add(state.models, environment.refractfactor);
    const auto* const cube =
        environment.cube_handle != 0 ? libgr::cube_textures.get(environment.cube_handle) : nullptr;
    state.maps += cube != nullptr && cube->object.IsLoaded() ? '1' : '0';
    target->bind();
    editor.display();
    state.picture = target->read_pixels();
    return state;
}

std::uint64_t fault_loop::fail_everywhere(const fault_t& fault, const run_t& run) {
    run.prepare();
    const scene_state_t before = state();
    {
        const kept_words_t words(std::cerr);
        EXPECT_TRUE(run.command().value_or(true)) << words.text();
    }
    const scene_state_t after = state();
    EXPECT_FALSE(after == before) << "the command does nothing";
    run.prepare();
    EXPECT_TRUE(state() == before) << "the scene can not be made again";
    // Taking the state was the first use of many buffers, and those of the command are counted.
    run.prepare();
    std::uint64_t count = 0;
    {
        const kept_words_t words(std::cerr);
        const faults_t faults(fault, 0);
        run.command();
        count = faults.count();
    }
    EXPECT_TRUE(state() == after);
    for (const std::uint64_t number : failing_numbers(count)) {
        SCOPED_TRACE("operation " + std::to_string(number) + " of " + std::to_string(count));
        fail_once(fault, number, run, before, after);
        if (HasFailure())
            break;
    }
    return count;
}

namespace {

/// What of two states differs.
std::string difference(const scene_state_t& a, const scene_state_t& b) {
    std::string told = a.models == b.models ? "" : "the models ";
    if (a.maps != b.maps)
        told += "the maps (" + a.maps + ", not " + b.maps + ") ";
    return a.picture == b.picture ? told : told + "the picture";
}

}  // namespace

void fault_loop::fail_once(const fault_t& fault, std::uint64_t number, const run_t& run,
                           const scene_state_t& before, const scene_state_t& after) {
    run.prepare();
    std::optional<bool> result;
    bool has_struck = false;
    std::string told;
    {
        const kept_words_t words(std::cerr);
        {
            const faults_t faults(fault, number);
            result = run.command();
            has_struck = faults.has_struck();
        }
        told = words.text();
    }
    std::cerr.clear();
    while (glGetError() != GL_NO_ERROR) {
    }
    ASSERT_TRUE(has_struck);
    const scene_state_t now = state();
    const bool is_before = now == before;
    const bool lacks_maps = told.find("autoloadformat failed.") != std::string::npos;
    const bool is_after = now.models == after.models && (lacks_maps || now.maps == after.maps) &&
                          (!told.empty() || now.picture == after.picture);
    ASSERT_TRUE(is_before || is_after) << "Not as before: " << difference(now, before)
                                       << "\nNot as after: " << difference(now, after) << "\nTold: " << told;
    EXPECT_EQ(result.value_or(is_after), is_after) << told;
    if (!is_after) {
        EXPECT_TRUE(result.has_value() || !told.empty()) << "no word about the failure";
        const kept_words_t words(std::cerr);
        const std::optional<bool> again = run.command();
        EXPECT_TRUE(again.value_or(true)) << words.text();
        // A picture that could not be read is not tried again as long as the program runs.
        EXPECT_TRUE(lacks_maps || state() == after)
            << "left behind: " << difference(state(), after) << "\nTold: " << told;
    }
}

void fault_loop::run_out_of_memory_everywhere(const run_t& run) {
    EXPECT_GT(fail_everywhere({fallible_t::allocation}, run), 0U);
    for (const fallible_t operation : {fallible_t::buffer_store, fallible_t::buffer_mapping})
        fail_everywhere({operation}, run);
    for (const fallible_t operation :
         {fallible_t::allocation, fallible_t::buffer_store, fallible_t::buffer_mapping})
        fail_everywhere({.operation = operation, .is_lasting = true}, run);
}

}  // namespace ulk_test
