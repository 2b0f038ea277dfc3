#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Path helpers. `/` and `\` both separate directories.
///
/// Paths are bytes in the multibyte encoding of the running locale: a trail byte of a longer character is
/// never taken for a separator, a dot or a colon. A path that is not valid in that encoding is searched byte
/// by byte instead, so that no name is refused or loses a byte.
namespace libutils {

/// Bytes of one part of a split path, the terminating NUL included.
inline constexpr std::size_t path_part_size = 260;

/// A path in four parts, each NUL-terminated. A part that is not there is empty.
struct path_parts_t {
    char drive[path_part_size];
    char directory[path_part_size];
    char name[path_part_size];
    char extension[path_part_size];
};

/// The place in `path` behind its last separator; `path` itself when there is none or when the only one is
/// its first character ("/name" stays whole). No command reaches this.
const char* basename(const char* path);

/// The directory of `path`, up to and including its last separator; empty when there is none.
std::string dirname(const char* path);
/// As above, into a buffer of `size` bytes: cut to fit and NUL-terminated.
void dirname(const char* path, char* buffer, std::size_t size);

/// What lies between the last separator and the last dot behind it; without such a dot, all behind the
/// separator.
std::string filename_without_extension(const char* path);
/// As above, into a buffer of `size` bytes: cut to fit and NUL-terminated.
void filename_without_extension(const char* path, char* buffer, std::size_t size);

/// The four parts of a path, of any length: views into it.
struct path_views_t {
    std::string_view drive;
    std::string_view directory;
    std::string_view name;
    std::string_view extension;

    /// What goes before a name that is relative to the path's folder.
    std::string folder() const { return std::string(drive) + std::string(directory); }
};

/// As splitpath below, with nothing cut off: the folder of a file may be longer than a field.
path_views_t view_path(std::string_view path);

/// Splits `path` into the drive (up to and including the first colon), the directory (up to and including the
/// last separator), the name, and the extension (from the last dot of the name on). Each part is cut to 259
/// bytes.
void splitpath(const char* path, path_parts_t& parts);
/// As above, into four buffers of 260 bytes each; a null pointer leaves its part out.
void splitpath(const char* path, char* drive, char* directory, char* name, char* extension);

/// Joins the four parts as they are; a null pointer counts as an empty part.
void makepath(std::string& target, const char* drive, const char* directory, const char* name,
              const char* extension);
void makepath(std::string& target, const path_parts_t& parts);

/// A copy of `path` with every `/` replaced by `\`. No command reaches this.
std::string tobackslash(const char* path);

}  // namespace libutils
