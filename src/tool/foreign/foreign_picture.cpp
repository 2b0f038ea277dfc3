#include "tool/foreign/foreign_picture.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

namespace ulktool {

namespace fs = std::filesystem;

namespace {

/// The path from the root, without links and dots as far as it exists; as it is when the system fails.
fs::path whole_path(const fs::path& path) {
    std::error_code error;
    const fs::path found = fs::weakly_canonical(fs::absolute(path, error), error);
    return error ? path : found;
}

bool is_there(const std::string& path) {
    std::error_code error;
    return fs::exists(path, error);
}

/// A URI's text: each "%" with two hexadecimal digits behind it is the byte that they tell.
std::string decoded(const std::string& uri) {
    std::string text;
    for (std::size_t i = 0; i < uri.size(); ++i) {
        unsigned char byte = 0;
        const char* const digits = uri.data() + i + 1;
        if (uri[i] == '%' && i + 2 < uri.size() &&
            std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            text += static_cast<char>(byte);
            i += 2;
        } else {
            text += uri[i];
        }
    }
    return text;
}

bool has_control_character(const std::string& name) {
    return std::ranges::any_of(name, [](char c) { return static_cast<unsigned char>(c) < ' '; });
}

/// A relative path to a place that is told from the root.
std::string relative_to(const fs::path& place, const std::string& folder) {
    const fs::path relative = whole_path(place).lexically_relative(whole_path(folder.empty() ? "." : folder));
    return relative.empty() ? place.string() : relative.string();
}

}  // namespace

std::string name_of_foreign_picture(const std::string& name, const std::string& folder) {
    std::string picture = name;
    std::ranges::replace(picture, '\\', '/');
    if (!is_there(folder + picture) && is_there(folder + decoded(picture)))
        picture = decoded(picture);
    if (has_control_character(picture))
        return {};
    return picture.starts_with('/') ? relative_to(picture, folder) : picture;
}

}  // namespace ulktool
