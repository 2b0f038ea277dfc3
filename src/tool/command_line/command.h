#pragma once

#include <cstddef>
#include <span>

namespace ulktool {

class command_line_t;

enum exit_status_t : int {
    exit_done = 0,
    exit_failed = 1,
    exit_usage = 2,
};

/// Whether a value follows an option.
enum class value_t {
    none,
    needed,         ///< the next word, whatever it is
    number_if_any,  ///< the next word when it is a number
};

/// A word that begins with a dash. Options stand in any order before, between and behind the files; `value`
/// may also follow after "=". A row of a table that reading, checking and describing the line share.
struct option_t {
    const char* name;  ///< with its dashes
    value_t value = value_t::none;
    const char* value_name = "";  ///< as the help calls it, in capitals: "WxH"
    const char* help = "";        ///< whole sentences; lines are broken at "\n"
    bool is_needed = false;       ///< the command does not run without it
};

/// What every command that changes a scene needs.
inline constexpr option_t output_option{.name = "-o",
                                        .value = value_t::needed,
                                        .value_name = "OUT",
                                        .help = "The file that the scene is saved in.",
                                        .is_needed = true};

/// A command of ulktool, as it is read from a command line and described in the help.
struct command_t {
    const char* name;
    /// The names of the files that it takes, divided by blanks: "SCENE PICTURE.png". "FILE..." takes any
    /// number of them from one on.
    const char* files;
    const char* help;  ///< what it does: whole sentences, broken into lines at "\n"
    std::span<const option_t> options;
    const char* example;  ///< a line of a shell
    /// Returns the exit status. Throws usage_error_t for values that do not fit.
    int (*run)(const command_line_t& line);
};

}  // namespace ulktool
