#pragma once

#include <cstdint>
#include <iosfwd>

namespace ulk3d {

class polygon_t;

/// Prints what was selected: the model's index and the polygon's id, then the places of its three elements,
/// their vertex indices, the vertices, and the bits of their positions in hexadecimal. For an id that has no
/// triangle only the first line is printed.
void report_polygon(std::ostream& out, std::uint64_t model_index, std::uint64_t polygon_id,
                    const polygon_t& polygon);

}  // namespace ulk3d
