#pragma once

#include <cstddef>
#include <iosfwd>
#include <list>
#include <string>
#include <string_view>
#include <vector>

/// Text helpers on bytes: case and white space are those of ASCII, in every locale.
namespace libutils {

/// 0 when `line` starts with `key`, else negative or positive as strncmp over the length of the key.
/// Case-sensitive.
int strstart(const char* line, const char* key);
int strstart(std::string_view line, std::string_view key);

/// 0 when `string` ends in `extension` without regard to the case of ASCII letters, -1 when the extension is
/// longer than the string, else negative or positive by the first difference.
int has_extension(std::string_view string, std::string_view extension);
int has_extension(const char* string, std::size_t length, const char* extension,
                  std::size_t extension_length);

// No command reaches what follows.

/// Removes all trailing CR and LF.
void chomp(std::string& string);

/// Removes trailing white space: the bytes 0, 9, 10, 13 and 32.
void rtrim(std::string& string);

/// Cuts `string` at each character that is in `delimiters` and appends the pieces to `list`: n delimiters
/// make n + 1 pieces, which may be empty.
void split(std::list<std::string>& list, std::string_view string, std::string_view delimiters);

/// Puts the pieces of `list` into `string`, with `separator` between each two: the reverse of split.
void join(std::string& string, const std::list<std::string>& list, std::string_view separator);

/// Writes a string to a stream, character by character: the stream's width and fill do not count.
void put_string(std::ostream& stream, std::string_view string);
/// Writes a character `count` times.
void put_chars(std::ostream& stream, char character, std::size_t count);
/// Writes `count` blanks.
void put_blanks(std::ostream& stream, std::size_t count);

/// Copies a list of strings into a vector, which takes the size of the list.
void copy_list(std::vector<std::string>& vector, const std::list<std::string>& list);

/// Copies a list of pointers into a vector, which takes the size of the list. What they point at is not
/// copied.
template <class T>
void copy_list(std::vector<T*>& vector, const std::list<T*>& list) {
    vector.resize(list.size());
    std::size_t index = 0;
    for (T* pointer : list)
        vector[index++] = pointer;
}

}  // namespace libutils
