#pragma once

#include <cstdint>
#include <iosfwd>

namespace ulk3d {

class polygon_t;

/// Prints what was marked: the model's index and the polygon's id, then the places of its three elements,
/// their vertex indices, the vertices, and the bits of their positions in hexadecimal. An id that no triangle
/// has prints the first line alone.
void report_polygon(std::ostream& out, std::uint64_t model_index, std::uint64_t polygon_id,
                    const polygon_t& polygon);

}  // namespace ulk3d
