#pragma once

#include <string>

#include "tool/foreign/library/reader_process.h"

namespace ulktool {

/// Reads a file with the library and sends its meshes, and lines about what is left out (scene_packets.h).
/// For a process of its own.
void read_file(const std::string& path, process_output_t& output);

}  // namespace ulktool
