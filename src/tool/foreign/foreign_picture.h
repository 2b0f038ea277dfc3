#pragma once

#include <string>

namespace ulktool {

/// The name by which a scene file in `folder` has a picture that a file of another program there calls
/// `name`: with slashes between folders, relative also when `name` begins at the root, and with blanks where
/// a URI has "%20" when only that is there. Empty for a name that no line of a scene file can hold.
std::string name_of_foreign_picture(const std::string& name, const std::string& folder);

}  // namespace ulktool
