#pragma once

#include <string>
#include <vector>

#include "support/captured_stream.h"

namespace ulk_test {

/// During its lifetime every glGetError of this program reports GL_INVALID_ENUM, so every grCheckError prints
/// its line and a test sees all error labels in their order.
class forced_marks {
  public:
    forced_marks();
    ~forced_marks();
    forced_marks(const forced_marks&) = delete;
    forced_marks& operator=(const forced_marks&) = delete;

    /// The error labels printed so far that begin with `prefix`.
    std::vector<std::string> beginning_with(const std::string& prefix) const;
    /// How often glGetError was called.
    int fetched_errors() const;
    /// All that was printed so far.
    std::string text() const { return errors.text(); }

  private:
    captured_stream errors;
};

/// The error label of a line that reports a forced error; empty for any other line.
std::string forced_mark_of(const std::string& line);

}  // namespace ulk_test
