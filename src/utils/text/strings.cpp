#include "utils/text/strings.h"

#include <algorithm>
#include <cstring>
#include <ostream>

namespace libutils {
namespace {

int lower(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 'A' && byte <= 'Z' ? byte - 'A' + 'a' : byte;
}

void trim_end(std::string& string, std::string_view trimmed) {
    const std::size_t last = string.find_last_not_of(trimmed);
    string.erase(last == std::string::npos ? 0 : last + 1);
}

}  // namespace

int strstart(const char* line, const char* key) {
    return std::strncmp(line, key, std::strlen(key));
}

int strstart(std::string_view line, std::string_view key) {
    return line.substr(0, key.size()).compare(key);
}

int has_extension(std::string_view string, std::string_view extension) {
    if (extension.size() > string.size())
        return -1;
    const std::string_view tail = string.substr(string.size() - extension.size());
    for (std::size_t i = 0; i < tail.size(); ++i) {
        if (const int difference = lower(tail[i]) - lower(extension[i]); difference != 0)
            return difference;
    }
    return 0;
}

int has_extension(const char* string, std::size_t length, const char* extension,
                  std::size_t extension_length) {
    return has_extension(std::string_view(string, length), std::string_view(extension, extension_length));
}

void chomp(std::string& string) {
    trim_end(string, "\r\n");
}

void rtrim(std::string& string) {
    trim_end(string, std::string_view("\0\t\n\r ", 5));
}

void split(std::list<std::string>& list, std::string_view string, std::string_view delimiters) {
    std::size_t start = 0;
    for (;;) {
        const std::size_t cut = string.find_first_of(delimiters, start);
        list.emplace_back(string.substr(start, cut - start));
        if (cut == std::string_view::npos)
            return;
        start = cut + 1;
    }
}

void join(std::string& string, const std::list<std::string>& list, std::string_view separator) {
    string.clear();
    bool first = true;
    for (const std::string& piece : list) {
        if (!first)
            string += separator;
        string += piece;
        first = false;
    }
}

void put_string(std::ostream& stream, std::string_view string) {
    for (const char c : string)
        stream.put(c);
}

void put_chars(std::ostream& stream, char character, std::size_t count) {
    for (; count > 0; --count)
        stream.put(character);
}

void put_blanks(std::ostream& stream, std::size_t count) {
    put_chars(stream, ' ', count);
}

void copy_list(std::vector<std::string>& vector, const std::list<std::string>& list) {
    vector.resize(list.size());
    std::copy(list.begin(), list.end(), vector.begin());
}

}  // namespace libutils
