#include "tool/command_line/help.h"

#include <ostream>
#include <string>
#include <string_view>

namespace ulktool {

namespace {

/// Prints each line of a text behind blanks.
void print_indented(std::ostream& out, std::string_view text, std::size_t blanks) {
    while (!text.empty()) {
        const std::size_t feed = std::min(text.find('\n'), text.size());
        out << std::string(blanks, ' ') << text.substr(0, feed) << '\n';
        text.remove_prefix(std::min(feed + 1, text.size()));
    }
}

std::string with_value(const option_t& option) {
    const std::string name = option.name, value = option.value_name;
    switch (option.value) {
        case value_t::none:
            return name;
        case value_t::needed:
            return name + " " + value;
        case value_t::number_if_any:
            return name + " [" + value + "]";
    }
    return name;
}

/// Appends words to a line, and goes on in the next line where they would pass the margin.
void append_words(std::string& text, std::size_t& column, const std::string& words) {
    constexpr std::size_t margin = 80, indent = 8;
    if (column + 1 + words.size() > margin) {
        text += "\n" + std::string(indent, ' ') + words;
        column = indent + words.size();
    } else {
        text += " " + words;
        column += 1 + words.size();
    }
}

}  // namespace

void print_summary(std::ostream& out, const command_t& command) {
    std::string text = std::string("ulktool ") + command.name;
    std::size_t column = text.size();
    append_words(text, column, command.files);
    for (const option_t& option : command.options)
        append_words(text, column, option.is_needed ? with_value(option) : "[" + with_value(option) + "]");
    out << text << '\n';
    print_indented(out, command.help, 4);
}

void print_help(std::ostream& out, const command_t& command) {
    print_summary(out, command);
    for (const option_t& option : command.options) {
        out << "\n    " << with_value(option) << '\n';
        print_indented(out, option.help, 8);
    }
    out << "\n    Example:\n";
    print_indented(out, command.example, 8);
}

}  // namespace ulktool
