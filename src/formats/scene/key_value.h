#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "formats/scene/text_lines.h"

namespace ulk3d {

/// The value of a key: what follows the first space of its line. None when the line holds no space. The bytes
/// end in NUL like those of the line.
inline std::optional<std::string_view> value_of(const text_line_t& line, std::string_view key) {
    // Keys hold no space, so that the first one can not come before the end of the key.
    if (line.length > key.size() && line.text[key.size()] == ' ')
        return line.view().substr(key.size() + 1);
    const std::size_t space = line.view().find(' ', key.size());
    if (space == std::string_view::npos)
        return std::nullopt;
    return line.view().substr(space + 1);
}

/// A path value: the bytes of the value up to a NUL, less one trailing CR.
inline std::string path_value(std::string_view value) {
    value = value.substr(0, value.find('\0'));
    if (value.ends_with('\r'))
        value.remove_suffix(1);
    return std::string(value);
}

}  // namespace ulk3d
