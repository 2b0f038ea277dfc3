#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/editor/edited_scene.h"

namespace ulk_test {

/// A part of a model or scene with a name, as the bits of its values: a NaN is the same as itself.
struct state_part_t {
    std::string name;
    std::vector<std::uint64_t> bits;
    bool operator==(const state_part_t&) const = default;
};

/// Everything of a scene that a user sees or saves, out of all buffers, to be compared bit for bit. What
/// edits leave undefined, and the steps of undo, are no part of it. A GL context must be current.
using scene_state_t = std::vector<state_part_t>;

scene_state_t state_of(const ulk3d::edited_scene_t& scene);

/// The same without the names of models, which saving changes.
scene_state_t unnamed_state_of(const ulk3d::edited_scene_t& scene);

/// Names the first part that is not the same, with its first differing value; empty when all are the same.
std::string first_difference(const scene_state_t& before, const scene_state_t& after);

/// The words of an array in use; none without a buffer.
std::vector<std::uint32_t> words_of(const ulk3d::array_t& array);
std::vector<std::uint32_t> words_of(const ulk3d::element_array_t& array);

}  // namespace ulk_test
