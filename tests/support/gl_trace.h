#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "support/forced_marks.h"

namespace ulk_test {

/// During its lifetime every error label is printed, as with forced_marks, and GL calls are noted: a test
/// sees which of them a label stands between. Noted are the calls that stand beside labels, which the .cpp
/// lists. It fails the test when an error was fetched without a label, as the next label would then not
/// report it. A GL context must be current.
class gl_trace {
  public:
    gl_trace();
    ~gl_trace();
    gl_trace(const gl_trace&) = delete;
    gl_trace& operator=(const gl_trace&) = delete;

    /// The error labels and the names of the GL calls so far, in their order.
    std::vector<std::string> events() const;

  private:
    forced_marks marks;
};

/// An error label and what stands directly before and after it in a trace: a GL call, another label, or
/// nothing.
struct label_place_t {
    std::string before, label, after;
    bool operator==(const label_place_t&) const = default;
};

void PrintTo(const label_place_t& place, std::ostream* out);

/// The places of all labels in `events` that begin with `prefix`, in their order.
std::vector<label_place_t> places_of_labels(const std::vector<std::string>& events,
                                            const std::string& prefix);

}  // namespace ulk_test
