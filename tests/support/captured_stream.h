#pragma once

#include <iosfwd>
#include <sstream>
#include <string>

namespace ulk_test {

/// Takes what is written to a stream (std::cerr, say) while it lives; the stream gets its buffer back
/// afterwards.
class captured_stream {
  public:
    explicit captured_stream(std::ostream& stream);
    ~captured_stream();
    captured_stream(const captured_stream&) = delete;
    captured_stream& operator=(const captured_stream&) = delete;

    /// What was written so far.
    std::string text() const { return taken.str(); }

  private:
    std::ostream& stream;
    std::ostringstream taken;
    std::streambuf* original;
};

}  // namespace ulk_test
