#pragma once

#include <concepts>
#include <string>
#include <string_view>

#include "utils/files/output_file.h"
#include "utils/text/numbers.h"

namespace ulk3d {

/// Writes the lines of a text file through one buffer; a line ends in CR LF, numbers have the default form of
/// a stream ("%g") in every locale.
///
/// After a failure nothing more is written and `failed` stays true.
class text_output {
  public:
    /// Opens as output_file does; a FIFO needs a reader.
    explicit text_output(const char* path) : file(path, libutils::fifo_t::needs_reader) {}

    /// Writes one line made of texts, characters and numbers.
    template <typename... Pieces>
    void line(const Pieces&... pieces) {
        (append(pieces), ...);
        buffer.append("\r\n");
        if (buffer.size() >= full)
            flush();
    }

    /// Hands the buffered bytes to the system. False after this or an earlier failure, which `complete` tells
    /// of as well.
    bool flush();

    /// Flushes and closes. True when all bytes have reached the file.
    [[nodiscard]] bool complete();

    /// Marks the output as failed: what was to be written is not at hand.
    void fail() { file.fail(); }
    bool failed() const { return file.failed(); }

  private:
    static constexpr std::size_t full = std::size_t{64} * 1024;

    void append(std::string_view text) { buffer.append(text); }
    void append(char character) { buffer += character; }
    template <typename Number>
    requires(std::integral<Number> || std::floating_point<Number>) void append(Number number) {
        static_assert(!std::same_as<Number, bool>, "the format has its own words for true and false");
        libutils::append_number(buffer, number);
    }

    libutils::output_file file;
    std::string buffer;
};

}  // namespace ulk3d
