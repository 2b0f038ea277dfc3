#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include "utils/files/file_descriptor.h"

namespace ulk3d {

/// A key, prepared for comparison with millions of lines: its first eight bytes are compared as one number.
class line_key {
  public:
    using head_t = std::uint64_t;
    static constexpr std::size_t head_size = sizeof(head_t);

    constexpr line_key(const char* key) : whole(key) {
        std::array<char, head_size> bytes{}, ones{};
        for (std::size_t i = 0; i < head_size && i < whole.size(); ++i) {
            bytes[i] = whole[i];
            ones[i] = '\xff';
        }
        head = std::bit_cast<head_t>(bytes);
        mask = std::bit_cast<head_t>(ones);
    }

    constexpr std::string_view name() const { return whole; }
    /// True when the first eight bytes of a line match the key, as far as the key reaches.
    constexpr bool fits(head_t line_head) const { return (line_head & mask) == head; }

  private:
    std::string_view whole;
    head_t head = 0;
    head_t mask = 0;
};

/// A line without its line feed; a CR before that is part of the line. The bytes lie in the reader's window
/// and are valid until its next read. They are NUL-terminated, and may contain further NULs.
struct text_line_t {
    const char* text = "";
    std::size_t length = 0;

    std::string_view view() const { return {text, length}; }

    bool starts_with(std::string_view key) const {
        return length >= key.size() && std::memcmp(text, key.data(), key.size()) == 0;
    }

    bool starts_with_key(const line_key& key) const {
        if (length < line_key::head_size)
            return starts_with(key.name());
        line_key::head_t head;
        std::memcpy(&head, text, sizeof head);
        return key.fits(head) && (key.name().size() <= line_key::head_size || starts_with(key.name()));
    }

    /// Empty, or a lone CR.
    bool is_blank() const { return length == 0 || (length == 1 && *text == '\r'); }
    bool is_comment() const { return *text == '#'; }
};

/// Splits a text into lines at LF, in one pass, through one window of memory that grows only for a long line.
/// What a window grows by is claimed (utils/memory/memory_budget.h). A comment never makes it grow: of one
/// that is longer than the window only the first byte and some of the last are in its line.
///
/// A last line without a line feed counts like any other. Reading on after the last line yields an empty
/// line, and only then does `failed` become true.
class text_lines {
  public:
    /// The lines of a text in memory, which is copied.
    explicit text_lines(std::string_view text);

    /// The lines of a file. `is_open` is false, without a message, when the path can not be opened or is not
    /// a plain file. A file that shrinks or fails while it is read ends there.
    [[nodiscard]] static text_lines open(const char* path);

    /// The lines of a plain file of `size` bytes that is open already, from where it stands.
    [[nodiscard]] static text_lines of(libutils::file_descriptor&& file, std::uint64_t size) {
        return text_lines(std::move(file), size);
    }

    bool is_open() const { return opened; }

    text_line_t next();

    /// True after the read that found no further line.
    bool failed() const { return at_end; }

    /// True when the lines end because the file could not be read on.
    bool has_read_error() const { return file.has_read_error(); }
    /// True after a line that the window could not grow for: there memory did not suffice for it, and the
    /// lines end before it.
    bool met_overlong_line() const { return overlong; }

    /// Bytes of the text after the line that was read last.
    std::uint64_t remaining() const { return limit - cursor + unread; }

  private:
    explicit text_lines(libutils::file_descriptor&& source, std::uint64_t size);
    /// A block that can be resized without a second copy of it.
    struct free_block_t {
        void operator()(char* block) const { std::free(block); }
    };

    [[nodiscard]] bool resize_window(std::size_t new_capacity);
    [[nodiscard]] bool make_room();
    [[nodiscard]] bool refill();
    void end_here();

    libutils::file_descriptor file;
    std::uint64_t unread = 0;                      ///< bytes of the file that are not in the window yet
    std::unique_ptr<char[], free_block_t> window;  ///< `capacity` bytes and one more for a terminator
    std::size_t capacity = 0;
    std::size_t cursor = 0;     ///< start of the next line
    std::size_t limit = 0;      ///< end of the bytes in the window
    std::size_t last_read = 0;  ///< bytes that the last read has put before that end
    bool opened = false;
    bool at_end = false;
    bool overlong = false;
};

}  // namespace ulk3d
