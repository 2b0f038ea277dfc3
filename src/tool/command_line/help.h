#pragma once

#include <iosfwd>

#include "tool/command_line/command.h"

namespace ulktool {

/// Prints a command with its files and options, broken into lines of up to 80 characters, and what it does.
void print_summary(std::ostream& out, const command_t& command);
/// Prints the summary, a paragraph for each option, and the example.
void print_help(std::ostream& out, const command_t& command);

}  // namespace ulktool
