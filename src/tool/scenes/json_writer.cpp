#include "tool/scenes/json_writer.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace ulktool {

namespace {

/// The length of the UTF-8 character at the beginning of a text, 0 when there is none (RFC 3629).
std::size_t character_length(std::string_view text) {
    const auto byte = [text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    const auto is_trail = [&byte](std::size_t i) { return (byte(i) & 0xC0U) == 0x80U; };
    const unsigned int first = byte(0), second = byte(1);
    if (first < 0x80)
        return 1;
    if (first < 0xC2 || first > 0xF4 || !is_trail(1))
        return 0;
    if (first < 0xE0)
        return 2;
    if (first < 0xF0) {
        const bool is_well =
            is_trail(2) && !(first == 0xE0 && second < 0xA0) && !(first == 0xED && second > 0x9F);
        return is_well ? 3 : 0;
    }
    const bool is_well =
        is_trail(2) && is_trail(3) && !(first == 0xF0 && second < 0x90) && !(first == 0xF4 && second > 0x8F);
    return is_well ? 4 : 0;
}

void append_escape(std::string& quoted, unsigned int code) {
    constexpr std::string_view digits = "0123456789abcdef";
    quoted += "\\u";
    for (const unsigned int shift : {12U, 8U, 4U, 0U})
        quoted += digits[code >> shift & 0xFU];
}

std::string quoted(std::string_view text) {
    std::string result = "\"";
    while (!text.empty()) {
        const std::size_t length = character_length(text);
        const auto first = static_cast<unsigned char>(text.front());
        if (length == 0)
            append_escape(result, 0xDC00U + first);
        else if (first < 0x20)
            append_escape(result, first);
        else if (first == '"' || first == '\\')
            result += {'\\', text.front()};
        else
            result += text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return result + '"';
}

}  // namespace

void json_writer_t::key(std::string_view name) {
    begin_value();
    out << quoted(name) << ": ";
    is_behind_key = true;
}

void json_writer_t::value(std::string_view text) {
    write(quoted(text));
}

void json_writer_t::value(float number) {
    std::array<char, 32> digits{};
    const char* const stop = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    write(std::isfinite(number) ? std::string_view(digits.data(), stop) : "null");
}

void json_writer_t::begin(char bracket) {
    begin_value();
    out << bracket;
    ++level;
    is_first = true;
}

void json_writer_t::end(char bracket) {
    --level;
    if (!is_first)
        break_line();
    out << bracket;
    is_first = false;
    if (level == 0)
        out << '\n';
}

void json_writer_t::write(std::string_view text) {
    begin_value();
    out << text;
}

void json_writer_t::begin_value() {
    if (is_behind_key) {
        is_behind_key = false;
        return;
    }
    if (!is_first)
        out << ',';
    is_first = false;
    if (level > 0)
        break_line();
}

void json_writer_t::break_line() {
    out << '\n' << std::string(2 * level, ' ');
}

}  // namespace ulktool
