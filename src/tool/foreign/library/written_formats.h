#pragma once

#include <string_view>

namespace ulktool {

/// A format that scenes are written in, and what it carries as the library writes it.
struct written_format_t {
    const char* ending;
    const char* library_name;  ///< by which the library calls it
    const char* name;          ///< by which people call it
    bool has_materials;        ///< a colour and a map for each model; else for the points, and one for all
    bool points_have_opacity;
};

/// By the ending of a path; null when there is none.
const written_format_t* written_format_of(std::string_view path);

/// The endings, in the order of the alphabet and divided by blanks.
std::string_view written_endings();

}  // namespace ulktool
