#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/parts/fuzz_random.h"

namespace ulk_test {

/// A scene's text with a few changes of its lines: taken away, doubled, exchanged or made anew, alone, in
/// runs or as whole blocks; numbers, and the counts of opening lines, replaced by others. Most blocks are
/// then made to hold what they announce, as readers refuse those that do not. Now and then `mutate_bytes`
/// changes the bytes of a line.
///
/// The result depends on the arguments alone. It has at most `most_bytes`, and ends with a whole line.
std::string mutated_scene(std::string_view text, std::size_t most_bytes, std::uint64_t seed,
                          byte_mutator_t mutate_bytes);

/// The first text with blocks or lines of the second one, under the same rules.
std::string crossed_scenes(std::string_view text, std::string_view other, std::size_t most_bytes,
                           std::uint64_t seed);

}  // namespace ulk_test
