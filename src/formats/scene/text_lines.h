#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

#include "utils/files/file_descriptor.h"

namespace ulk3d {

/// A key that lines are compared with by the million: its first eight bytes are compared as one number.
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
    /// True when the first eight bytes of a line are those of the key, as far as it reaches.
    constexpr bool fits(head_t line_head) const { return (line_head & mask) == head; }

  private:
    std::string_view whole;
    head_t head = 0;
    head_t mask = 0;
};

/// A line without its line feed; a CR before it belongs to the line. The bytes stand in the reader's window
/// and are valid until its next read. A NUL stands behind the last byte; others may stand inside.
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

    /// Nothing at all, or a lone CR.
    bool is_blank() const { return length == 0 || (length == 1 && *text == '\r'); }
    bool is_comment() const { return *text == '#'; }
};

/// Cuts a text into lines at LF, in one pass and with one window of memory that only a long line makes grow.
///
/// A last line without a line feed is a line like any other. The read behind the last line yields an empty
/// line, and only then `failed` is true.
class text_lines {
  public:
    /// The lines of a text in memory, which is copied.
    explicit text_lines(std::string_view text);

    /// The lines of a file. `is_open` is false when the path can not be opened or is no plain file. A file
    /// that shrinks or breaks while it is read ends there.
    static text_lines open(const char* path);

    bool is_open() const { return opened; }

    text_line_t next();

    /// True after the read that found no further line.
    bool failed() const { return at_end; }

    /// Bytes of the text behind the line that was read last.
    std::uint64_t remaining() const { return limit - cursor + unread; }

  private:
    explicit text_lines(libutils::file_descriptor&& source, std::uint64_t size);
    bool refill();

    libutils::file_descriptor file;
    std::uint64_t unread = 0;        ///< bytes of the file that are not in the window yet
    std::unique_ptr<char[]> window;  ///< `capacity` bytes and one for a terminator
    std::size_t capacity = 0;
    std::size_t cursor = 0;  ///< start of the next line
    std::size_t limit = 0;   ///< end of the bytes in the window
    bool opened = false;
    bool at_end = false;
};

}  // namespace ulk3d
