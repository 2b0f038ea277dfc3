#pragma once

#include <concepts>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace ulktool {

/// Writes a JSON text (RFC 8259), with a line for each value and two blanks for each level. Every value
/// within an object is written behind its `key`. Numbers are the same in every locale; those that are not
/// finite are null. Bytes of a text that are no UTF-8, as file names may have them, are written as lone
/// surrogates from \udc80 to \udcff, as Python's "surrogateescape" takes them back.
class json_writer_t {
  public:
    /// `output` is not owned and must outlive this.
    explicit json_writer_t(std::ostream& output) : out(output) {}

    void begin_object() { begin('{'); }
    void end_object() { end('}'); }
    void begin_array() { begin('['); }
    void end_array() { end(']'); }

    void key(std::string_view name);
    void value(std::string_view text);
    void value(const char* text) { value(std::string_view(text)); }
    void value(bool truth) { write(truth ? "true" : "false"); }
    void value(float number);
    void value(std::integral auto number) { write(std::to_string(number)); }

    /// A key and its value.
    void member(std::string_view name, const auto& content) {
        key(name);
        value(content);
    }

  private:
    void begin(char bracket);
    void end(char bracket);
    void write(std::string_view text);
    /// Goes to the place of the next value.
    void begin_value();
    void break_line();

    std::ostream& out;
    std::size_t level = 0;
    bool is_first = true;
    bool is_behind_key = false;
};

}  // namespace ulktool
