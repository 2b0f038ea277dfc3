#pragma once

#include "tool/command_line/command.h"

/// The commands of ulktool. What each does is in the texts of its own file, which the help prints.
namespace ulktool {

extern const command_t render_command;
extern const command_t check_command;
extern const command_t info_command;
extern const command_t convert_command;
extern const command_t cut_command;
extern const command_t fold_command;
extern const command_t polygonize_command;
extern const command_t tidy_command;
extern const command_t place_command;

}  // namespace ulktool
