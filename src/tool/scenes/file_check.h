#pragma once

#include <iosfwd>
#include <string>

#include "tool/scenes/scene_session.h"

namespace ulktool {

/// What a check of a file comes to.
struct verdict_t {
    bool loads = false;
    bool shows_all_pictures = false;

    bool is_well() const { return loads && shows_all_pictures; }
};

/// Loads a file and looks for what is wrong with it, each a line of `log`: the messages of the reader, signs
/// that the file was cut off, values that are read as others than their writer will have meant, STL files
/// without triangles, and pictures that are not shown or look wrong.
verdict_t check_file(scene_session_t& session, const std::string& path, std::ostream& log);

}  // namespace ulktool
