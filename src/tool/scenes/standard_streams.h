#pragma once

#include <cstdint>

#include "utils/files/file_descriptor.h"

namespace ulktool {

/// What stands for a standard stream where a file is named.
inline constexpr const char* standard_stream_name = "-";

/// All that the standard input stream has, in a plain file without a name. Not open when that could not be
/// read or kept.
[[nodiscard]] libutils::file_descriptor read_standard_input(std::uint64_t& size);

/// The standard output stream, to be written to its end and closed.
[[nodiscard]] libutils::file_descriptor standard_output();

/// A reader that goes away ends the process with status 1 and without a word; standard streams that are
/// closed are opened as such that nothing can be read from or written to, so that no file takes their place.
void prepare_standard_streams();

/// Writes what is left for the standard output stream. False, after a line on the standard error stream, when
/// something that was printed since the start could not be written.
[[nodiscard]] bool finish_standard_output();

}  // namespace ulktool
