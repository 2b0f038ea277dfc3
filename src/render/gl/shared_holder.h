#pragma once

#include "utils/shared_holder.h"

namespace ulk3d {

using libutils::shared_holder;

}  // namespace ulk3d
