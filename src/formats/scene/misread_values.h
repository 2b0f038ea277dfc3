#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace ulk3d {

/// A value of a scene file that the reader takes, without failing, for another one than its writer will have
/// meant.
struct misread_value_t {
    std::uint64_t line;   ///< counted from 1
    std::string message;  ///< "position: 2*(3)+4 is read as 14, not as 10"
};

/// Looks at the lines of a scene file without loading anything, and calls `found` in their order for
///  - sums whose value is not that of usual arithmetic, or that have none there ("1+-2", "2*(3)+4", ".5"),
///  - what is read as one number, or as a whole one, and is more than that ("1/2" of a knot),
///  - lists with fewer values than their key takes, whose rest is 0, or with more, which are not read.
/// A message tells of the first such value of its line. A file that can not be read has none. Makes no GL
/// calls and prints nothing.
void find_misread_values(const char* path, const std::function<void(const misread_value_t&)>& found);

}  // namespace ulk3d
