#pragma once

#include <iosfwd>
#include <string>

#include "model/scene.h"

namespace ulktool {

/// Scene files name their pictures relative to their own folder. "-" lies in the working folder.

/// Prints a line for each picture of a scene that a scene file at `path` will not find.
void report_lost_pictures(const ulk3d::scene_t& scene, const std::string& path, std::ostream& log);

/// Changes the names of a scene's pictures, which a scene file at `from` has, so that one at `to` finds them.
void rebase_pictures(ulk3d::scene_t& scene, const std::string& from, const std::string& to);

/// The name by which a scene file at `to` finds what one at `from` calls `name`.
std::string rebased_name(const std::string& name, const std::string& from, const std::string& to);

}  // namespace ulktool
