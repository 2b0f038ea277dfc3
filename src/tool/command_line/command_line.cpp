#include "tool/command_line/command_line.h"

#include <algorithm>

#include "tool/command_line/values.h"

namespace ulktool {

namespace {

const option_t* find_option(std::span<const option_t> options, std::string_view name) {
    const auto found =
        std::ranges::find_if(options, [name](const option_t& row) { return name == row.name; });
    return found != options.end() ? &*found : nullptr;
}

/// The names of files in a text of a command.
std::vector<std::string_view> split_names(std::string_view text) {
    std::vector<std::string_view> names;
    while (!text.empty()) {
        const std::size_t blank = std::min(text.find(' '), text.size());
        names.push_back(text.substr(0, blank));
        text.remove_prefix(std::min(blank + 1, text.size()));
    }
    return names;
}

}  // namespace

command_line_t::command_line_t(const command_t& command, std::span<const std::string> words)
    : read_for(command) {
    read(words);
    if (!help && !version)
        check();
}

void command_line_t::read(std::span<const std::string> words) {
    const auto take = [&words](std::size_t count) { words = words.subspan(count); };
    while (!words.empty() && !help && !version) {
        const std::string& word = words.front();
        if (word == "--") {
            named_files.insert(named_files.end(), words.begin() + 1, words.end());
            return;
        }
        help = word == "--help" || word == "-h";
        version = word == "--version";
        if (word == "-" || !word.starts_with('-')) {
            named_files.push_back(word);
            take(1);
        } else {
            take(help || version ? 1 : read_option(words));
        }
    }
}

std::size_t command_line_t::read_option(std::span<const std::string> words) {
    const std::string& word = words.front();
    const std::size_t equals = word.find('=');
    const std::string name = word.substr(0, equals);
    const option_t* const option = find_option(read_for.options, name);
    if (option == nullptr)
        throw usage_error_t(name + ": there is no such option");
    if (equals != std::string::npos) {
        if (option->value == value_t::none)
            throw usage_error_t(word + ": this option takes no value");
        given.push_back({option->name, word.substr(equals + 1)});
        return 1;
    }
    const bool has_next = words.size() > 1;
    if (option->value == value_t::needed && !has_next)
        throw usage_error_t(name + ": " + option->value_name + " is missing behind it");
    const bool takes_next = option->value == value_t::needed ||
                            (option->value == value_t::number_if_any && has_next && is_number(words[1]));
    given.push_back({option->name, takes_next ? words[1] : std::string()});
    return takes_next ? 2 : 1;
}

void command_line_t::check() const {
    check_files();
    for (const option_t& option : read_for.options)
        if (option.is_needed && !has(option.name))
            throw usage_error_t(std::string(option.name) + " " + option.value_name + " is missing");
}

void command_line_t::check_files() const {
    const std::vector<std::string_view> names = split_names(read_for.files);
    if (named_files.size() < names.size())
        throw usage_error_t(std::string(names[named_files.size()]) + " is missing");
    if (named_files.size() > names.size() && !names.back().ends_with("..."))
        throw usage_error_t(named_files[names.size()] + ": too many files");
}

const std::string* command_line_t::find(std::string_view option) const {
    const auto found = std::find_if(given.rbegin(), given.rend(),
                                    [option](const given_option_t& row) { return row.name == option; });
    return found != given.rend() ? &found->value : nullptr;
}

}  // namespace ulktool
