#include "model/environment.h"

namespace ulk3d {

bool environment_t::initex(const char* /*base_file*/) {
    return true;
}

}  // namespace ulk3d
