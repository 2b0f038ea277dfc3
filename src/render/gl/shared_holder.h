#pragma once

#include "utils/memory/shared_holder.h"

namespace ulk3d {

using libutils::shared_holder;

}  // namespace ulk3d
