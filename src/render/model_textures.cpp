#include "model/texture.h"

namespace ulk3d {

bool texture_t::open(const char* /*base_file*/) {
    return true;
}

}  // namespace ulk3d
