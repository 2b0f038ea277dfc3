#pragma once

#include <chrono>
#include <string>

namespace ulktool {

/// Shows how far a work has come, in one line of the terminal that the standard error stream is. Does nothing
/// in the first second, nor where that stream is no terminal.
class progress_line_t {
  public:
    explicit progress_line_t(std::string work_name);
    /// Removes the line.
    ~progress_line_t();
    progress_line_t(const progress_line_t&) = delete;
    progress_line_t& operator=(const progress_line_t&) = delete;

    /// `fraction` runs from 0 to 1.
    void show(double fraction);

  private:
    std::string name;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    bool has_terminal;
    int shown_percent = -1;
};

}  // namespace ulktool
