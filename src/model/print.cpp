#include "model/print.h"

#include <ostream>

#include "model/math/print.h"

namespace ulk3d {

std::ostream& operator<<(std::ostream& out, const vertex_t& vertex) {
    return out << vertex.position << ", " << vertex.color << ", " << vertex.texcoord;
}

}  // namespace ulk3d
