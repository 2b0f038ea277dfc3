#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tool/command_line/command.h"

namespace ulktool {

/// Wrong usage. The text names the wrong word.
struct usage_error_t : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// An option as it was given.
struct given_option_t {
    std::string_view name;  ///< that of a row of the command's table
    std::string value;      ///< empty when there is none
};

/// What the words after a command's name say.
class command_line_t {
  public:
    /// Reads the words. Behind "--" all words are files, and a lone "-" is one everywhere. Throws
    /// usage_error_t for an option that the command does not have, for one without its value or with a value
    /// that it does not take, and for too few or too many files; not when `wants_help` or `wants_version`.
    command_line_t(const command_t& command, std::span<const std::string> words);

    bool wants_help() const { return help; }        ///< "--help" or "-h" is among the words
    bool wants_version() const { return version; }  ///< "--version" is

    const std::vector<std::string>& files() const { return named_files; }

    /// The options in the order in which they were given.
    const std::vector<given_option_t>& options() const { return given; }
    bool has(std::string_view option) const { return find(option) != nullptr; }
    /// The value that was given last; null when the option was not given.
    const std::string* find(std::string_view option) const;
    /// The value of an option that the command needs.
    const std::string& operator[](std::string_view option) const { return *find(option); }

  private:
    void read(std::span<const std::string> words);
    /// Reads the option at the front of the words; returns how many words it is.
    std::size_t read_option(std::span<const std::string> words);
    void check() const;
    void check_files() const;

    const command_t& read_for;
    std::vector<given_option_t> given;
    std::vector<std::string> named_files;
    bool help = false;
    bool version = false;
};

}  // namespace ulktool
