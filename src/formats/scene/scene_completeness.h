#pragma once

#include <cstdint>
#include <optional>

namespace ulk3d {

/// Whether a scene file ends where a scene ends, or may have been cut off. The reader takes such files
/// without a word as far as it can.
struct scene_completeness_t {
    /// The line, counted from 1, that opens a block which has no "end".
    std::optional<std::uint64_t> open_block;
    /// The last line has no line feed, as every line of a file that was written here has. An empty file has
    /// no line.
    bool lacks_last_feed = false;
};

/// Looks at the lines of a file without loading anything; lines of any length take the same small memory. A
/// file that can not be read counts as complete. Makes no GL calls.
[[nodiscard]] scene_completeness_t scene_completeness(const char* path);

}  // namespace ulk3d
