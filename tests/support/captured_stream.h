#pragma once

#include <iosfwd>
#include <sstream>
#include <string>

namespace ulk_test {

/// Captures what is written to a stream (such as std::cerr) during its lifetime; the stream gets its own
/// buffer back afterwards.
class captured_stream {
  public:
    explicit captured_stream(std::ostream& stream);
    ~captured_stream();
    captured_stream(const captured_stream&) = delete;
    captured_stream& operator=(const captured_stream&) = delete;

    /// What has been written so far.
    std::string text() const { return taken.str(); }

  private:
    std::ostream& stream;
    std::ostringstream taken;
    std::streambuf* original;
};

}  // namespace ulk_test
