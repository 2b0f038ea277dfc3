#pragma once

#include <streambuf>
#include <string>

namespace ulktool {

/// Hands on what is written to it at once, with a text before each line. A log that is written through it
/// takes no memory, however long its lines are.
class prefixed_lines_t : public std::streambuf {
  public:
    /// `output` is not owned and must outlive this.
    prefixed_lines_t(std::streambuf& output, std::string prefix);

  protected:
    int_type overflow(int_type byte) override;
    std::streamsize xsputn(const char* bytes, std::streamsize count) override;

  private:
    [[nodiscard]] bool put(const char* bytes, std::streamsize count);

    std::streambuf& target;
    std::string text_before;
    bool is_at_start = true;
};

}  // namespace ulktool
