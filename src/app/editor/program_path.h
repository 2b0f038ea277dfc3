#pragma once

#include <string>

namespace ulk3d {

/// What a program's path (its argv[0]) tells. Both "/" and "\" separate directories; results are cut to 259
/// bytes.

/// The directory with its trailing separator; empty when there is none.
std::string program_directory(const char* argv0);

/// The name that stands in window titles: the file name without its last extension, and without a ".exe" that
/// still ends it then.
std::string program_title(const char* argv0);

}  // namespace ulk3d
