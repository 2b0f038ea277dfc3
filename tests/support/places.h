#pragma once

#include <string>

/// Files and programs that tests use, as the build knows them. Absolute paths.
std::string samples_folder();
std::string test_data_folder();
/// Where pictures that differ are left, with the difference beside them.
std::string golden_failures_folder();
/// A program that reads and writes STL files beside ours.
std::string admesh_program();
