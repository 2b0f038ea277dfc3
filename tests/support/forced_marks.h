#pragma once

#include <string>
#include <vector>

#include "support/captured_stream.h"

namespace ulk_test {

/// While it lives, every glGetError of this program reports GL_INVALID_ENUM, so that every grCheckError of
/// the code between prints its line: a test sees which error labels there are, and in which order.
class forced_marks {
  public:
    forced_marks();
    ~forced_marks();
    forced_marks(const forced_marks&) = delete;
    forced_marks& operator=(const forced_marks&) = delete;

    /// The error labels so far that begin with `prefix`.
    std::vector<std::string> beginning_with(const std::string& prefix) const;

  private:
    captured_stream errors;
};

}  // namespace ulk_test
