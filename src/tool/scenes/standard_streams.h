#pragma once

#include <string>

#include "utils/files/file_descriptor.h"

namespace ulktool {

/// What stands for a standard stream where a file is named.
inline constexpr const char* standard_stream_name = "-";

/// A path at which all that the standard input stream had can be read, as often as needed, until the program
/// ends. Empty when that could not be read or kept.
[[nodiscard]] std::string standard_input_path();

/// The standard output stream, to be written to its end and closed.
[[nodiscard]] libutils::file_descriptor standard_output();

/// A reader that goes away ends the process with status 1 and without a word; standard streams that are
/// closed are opened as such that nothing can be read from or written to, so that no file takes their place.
void prepare_standard_streams();

/// Writes what is left for the standard output stream. False, after a line on the standard error stream, when
/// something that was printed since the start could not be written.
[[nodiscard]] bool finish_standard_output();

}  // namespace ulktool
