#pragma once

#include <cstdint>
#include <string>

#include "model/scene.h"

namespace ulktool {

/// The model at a place in the list of a scene that was loaded from `path`; the first one is at 0. Null,
/// after a line on the standard error stream, where there is none.
[[nodiscard]] ulk3d::model_entry_t* model_or_tell(ulk3d::scene_t& scene, std::uint32_t index,
                                                  const std::string& path);

}  // namespace ulktool
