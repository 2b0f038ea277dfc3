#pragma once

#include <string>

/// Absolute paths of files and programs that tests use, set by the build.
std::string samples_folder();
std::string test_data_folder();
/// Where pictures that differ are left, along with the difference.
std::string golden_failures_folder();
/// An independent program that reads and writes STL files.
std::string admesh_program();
