#include "app/editor/edit_steps.h"

#include <iterator>
#include <utility>

#include "model/attributes.h"
#include "model/math/vectors.h"

namespace ulk3d {

namespace {

constexpr attribute_place_t positions = place_of(attribute_t::position);

}  // namespace

void edit_steps_t::begin() {
    for (const auto& entry : models)
        entry->history.open(positions.array, positions.member, entry->modeling());
}

bool edit_steps_t::move(const dir3& way) {
    bool moved = false;
    for (const auto& entry : models)
        moved |= entry->history.move(entry->modeling(), as_pos(way));
    return moved;
}

bool edit_steps_t::commit() {
    step_t edited;
    for (const auto& entry : models)
        if (entry->history.close(entry->modeling()))
            edited.push_back(entry.get());
    if (edited.empty())
        return false;
    undo_list.push_back(std::move(edited));
    return true;
}

bool edit_steps_t::wheel(int delta) {
    begin();
    bool moved = false;
    for (const auto& entry : models)
        moved |= entry->history.wheel(entry->modeling(), delta);
    return moved;
}

void edit_steps_t::push(model_entry_t& entry, edit_t edit) {
    std::list<step_t> step;
    step.push_back({&entry});
    entry.history.push(std::move(edit));
    undo_list.splice(undo_list.end(), step);
}

bool edit_steps_t::undo() {
    if (undo_list.empty())
        return false;
    for (model_entry_t* const entry : undo_list.back())
        entry->history.undo(entry->modeling());
    redo_list.splice(redo_list.end(), undo_list, std::prev(undo_list.end()));
    return true;
}

bool edit_steps_t::redo() {
    if (redo_list.empty())
        return false;
    for (model_entry_t* const entry : redo_list.back())
        entry->history.redo(entry->modeling());
    undo_list.splice(undo_list.end(), redo_list, std::prev(redo_list.end()));
    return true;
}

void edit_steps_t::forget() {
    for (const auto& entry : models)
        entry->history.clear();
    undo_list.clear();
    redo_list.clear();
}

}  // namespace ulk3d
