#pragma once

#include <string>
#include <string_view>

namespace ulktool {

/// What a file is taken for, by its name alone. Endings count in upper and lower case.
enum class scene_format_t {
    scene_text,  ///< ".ulk", ".ulk~" (a former file put aside), names without an ending, and "-"
    stl,         ///< ".stl"
    foreign,     ///< that of another program (tool/foreign/foreign_scenes.h)
    unknown
};
scene_format_t format_of(std::string_view path);

/// The ending of a path with its dot; empty when the name has none, as that of ".profile".
std::string_view ending_of(std::string_view path);

/// "no format has the ending .xyz; known are …" with what is read.
std::string unknown_ending_message(std::string_view path);

/// Throws usage_error_t when scenes are not written with the ending of an output's path.
void require_known_ending(const std::string& path);

}  // namespace ulktool
