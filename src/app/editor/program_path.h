#pragma once

#include <string>

namespace ulk3d {

/// What can be learnt from a program's path (its argv[0]). Both "/" and "\" separate directories; results are
/// cut off at 259 bytes.

/// The directory with its trailing separator; empty when there is none.
std::string program_directory(const char* argv0);

/// The program's name as shown in window titles: the file name without its last extension, and without a
/// ".exe" if it still ends in one.
std::string program_title(const char* argv0);

}  // namespace ulk3d
