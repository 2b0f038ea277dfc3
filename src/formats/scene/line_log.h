#pragma once

#include <cstdint>
#include <iosfwd>
#include <string_view>

#include "formats/scene/text_lines.h"

namespace ulk3d {

/// Writes the messages of a block's reader. Each is one line that begins with the zero-based number of the
/// line last read. Text is only formatted when there is a message, and numbers look the same in every locale.
class line_log {
  public:
    line_log(std::ostream& messages, std::uint64_t& line_counter) : log(messages), counter(line_counter) {}

    /// Advances the line number by one.
    void step() { ++counter; }

    /// "<line><text>"; `text` begins with its colon.
    void message(std::string_view text);

    /// "<line><text><the whole line>"
    void message(std::string_view text, const text_line_t& line);

    /// "<line>: <what>(<count>) >= <count> over."
    void over_run(std::string_view what, std::uint64_t count);

    /// "<line>: <what>(<read>) < <capacity>: <complaint>"
    void shortage(std::string_view what, std::uint64_t read, std::uint64_t capacity,
                  std::string_view complaint);

  private:
    std::ostream& log;
    std::uint64_t& counter;
};

/// Writes the two texts as one line.
void put_line(std::ostream& log, std::string_view first, std::string_view second = {});

}  // namespace ulk3d
