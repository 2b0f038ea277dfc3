#include "utils/text/paths.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <string_view>

namespace libutils {
namespace {

/// Calls `visit(offset)` for every character of `path` that is a single byte. Returns false at a byte that is
/// not valid in the encoding of the running locale, with the walk unfinished.
template <class Visit>
bool visit_characters(std::string_view path, Visit visit) {
    std::mbstate_t state{};
    for (std::size_t offset = 0; offset < path.size();) {
        wchar_t wide = 0;
        const std::size_t length = std::mbrtowc(&wide, path.data() + offset, path.size() - offset, &state);
        if (length == 0 || length > path.size())
            return false;
        if (length == 1)
            visit(offset);
        offset += length;
    }
    return true;
}

constexpr std::size_t nowhere = std::string_view::npos;

/// Offsets of the bytes that cut a path into parts.
struct marks_t {
    std::size_t first_colon = nowhere;
    std::size_t last_separator = nowhere;
    std::size_t last_dot = nowhere;

    void visit(char c, std::size_t offset) {
        if (c == ':' && first_colon == nowhere)
            first_colon = offset;
        else if (c == '/' || c == '\\')
            last_separator = offset;
        else if (c == '.')
            last_dot = offset;
    }
};

marks_t find_marks(std::string_view path) {
    marks_t marks;
    if (visit_characters(path, [&](std::size_t offset) { marks.visit(path[offset], offset); }))
        return marks;
    marks = {};
    for (std::size_t offset = 0; offset < path.size(); ++offset)
        marks.visit(path[offset], offset);
    return marks;
}

/// The offset behind a mark, 0 without one.
std::size_t behind(std::size_t mark) {
    return mark == nowhere ? 0 : mark + 1;
}

void copy_cut(std::string_view text, char* buffer, std::size_t size) {
    if (buffer == nullptr || size == 0)
        return;
    const std::size_t length = std::min(text.size(), size - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

std::string_view directory_of(std::string_view path) {
    return path.substr(0, behind(find_marks(path).last_separator));
}

std::string_view bare_name_of(std::string_view path) {
    const marks_t marks = find_marks(path);
    const std::size_t start = behind(marks.last_separator);
    const bool has_dot = marks.last_dot != nowhere && marks.last_dot >= start;
    return path.substr(start, has_dot ? marks.last_dot - start : nowhere);
}

}  // namespace

const char* basename(const char* path) {
    const std::size_t separator = find_marks(path).last_separator;
    return separator == nowhere || separator == 0 ? path : path + separator + 1;
}

std::string dirname(const char* path) {
    return std::string(directory_of(path));
}

void dirname(const char* path, char* buffer, std::size_t size) {
    copy_cut(directory_of(path), buffer, size);
}

std::string filename_without_extension(const char* path) {
    return std::string(bare_name_of(path));
}

void filename_without_extension(const char* path, char* buffer, std::size_t size) {
    copy_cut(bare_name_of(path), buffer, size);
}

path_views_t view_path(std::string_view path) {
    const marks_t marks = find_marks(path);
    const std::size_t drive_end = behind(marks.first_colon);
    const std::size_t directory_end = std::max(drive_end, behind(marks.last_separator));
    const bool has_dot = marks.last_dot != nowhere && marks.last_dot >= directory_end;
    const std::size_t name_end = has_dot ? marks.last_dot : path.size();
    return {.drive = path.substr(0, drive_end),
            .directory = path.substr(drive_end, directory_end - drive_end),
            .name = path.substr(directory_end, name_end - directory_end),
            .extension = path.substr(name_end)};
}

void splitpath(const char* path, path_parts_t& parts) {
    splitpath(path, parts.drive, parts.directory, parts.name, parts.extension);
}

void splitpath(const char* path, char* drive, char* directory, char* name, char* extension) {
    const path_views_t parts = view_path(path);
    copy_cut(parts.drive, drive, path_part_size);
    copy_cut(parts.directory, directory, path_part_size);
    copy_cut(parts.name, name, path_part_size);
    copy_cut(parts.extension, extension, path_part_size);
}

void makepath(std::string& target, const char* drive, const char* directory, const char* name,
              const char* extension) {
    target.clear();
    for (const char* part : {drive, directory, name, extension}) {
        if (part != nullptr)
            target += part;
    }
}

void makepath(std::string& target, const path_parts_t& parts) {
    makepath(target, parts.drive, parts.directory, parts.name, parts.extension);
}

std::string tobackslash(const char* path) {
    std::string result = path;
    const bool valid = visit_characters(path, [&](std::size_t offset) {
        if (result[offset] == '/')
            result[offset] = '\\';
    });
    if (!valid)
        std::replace(result.begin(), result.end(), '/', '\\');
    return result;
}

}  // namespace libutils
