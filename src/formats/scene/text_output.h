#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <utility>

#include "utils/files/output_file.h"
#include "utils/text/numbers.h"

namespace ulk3d {

/// Writes the lines of a text file through one buffer. A line ends in CR LF; numbers have a stream's default
/// form ("%g") in every locale.
///
/// After a failure nothing more is written and `failed` stays true.
class text_output {
  public:
    /// Opens the path as output_file does; a FIFO needs a reader. `failed` reports a failure to open.
    explicit text_output(const char* path) : file(path, libutils::fifo_t::needs_reader) {}

    /// Writes into what is open already.
    explicit text_output(libutils::file_descriptor&& open_file) : file(std::move(open_file)) {}

    /// Writes one line made of texts, characters and numbers.
    template <typename... Pieces>
    void line(const Pieces&... pieces) {
        (append(pieces), ...);
        buffer.append("\r\n");
        if (buffer.size() >= full)
            flush();
    }

    /// Passes the buffered bytes to the system. False after this or an earlier failure; `complete` reports it
    /// too, so the result may be ignored.
    bool flush();

    /// Flushes and closes. True when all bytes have reached the file; false also after any earlier failure.
    [[nodiscard]] bool complete();

    /// Marks the output as failed because its content is not available.
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
