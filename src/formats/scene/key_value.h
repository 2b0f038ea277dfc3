#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "formats/scene/text_lines.h"

namespace ulk3d {

/// The value of a key: everything after the first space of its line, or nothing when the line has no space.
/// The value is NUL-terminated like the line, and valid as long as it.
[[nodiscard]] inline std::optional<std::string_view> value_of(const text_line_t& line, std::string_view key) {
    // Keys contain no space, so the first one can not come before the end of the key.
    if (line.length > key.size() && line.text[key.size()] == ' ')
        return line.view().substr(key.size() + 1);
    const std::size_t space = line.view().find(' ', key.size());
    if (space == std::string_view::npos)
        return std::nullopt;
    return line.view().substr(space + 1);
}

/// A path value: the bytes up to the first NUL, without one trailing CR.
inline std::string path_value(std::string_view value) {
    value = value.substr(0, value.find('\0'));
    if (value.ends_with('\r'))
        value.remove_suffix(1);
    return std::string(value);
}

}  // namespace ulk3d
