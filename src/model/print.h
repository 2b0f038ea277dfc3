#pragma once

#include <iosfwd>

#include "model/vertex.h"

namespace ulk3d {

/// Prints position, colour and texture coordinate, separated by ", ".
std::ostream& operator<<(std::ostream& out, const vertex_t& vertex);

}  // namespace ulk3d
