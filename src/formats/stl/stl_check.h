#pragma once

#include <cstdint>
#include <optional>

namespace ulk3d {

/// What the length of an STL file says about its count of triangles. The reader takes the triangles that are
/// both announced and present, without a word.
struct stl_check_t {
    std::uint64_t file_size = 0;
    std::uint64_t announced = 0;      ///< triangles, by the file's count; 0 for a file that ends before it
    std::uint64_t expected_size = 0;  ///< bytes of a file of that many triangles
    /// The file begins with "solid" and its length does not fit its count, as a text file's hardly ever does.
    bool is_text = false;

    bool fits() const { return file_size == expected_size; }
};

/// Looks at a file without loading anything. Nothing for one that can not be read, and for an empty one.
/// Makes no GL calls.
[[nodiscard]] std::optional<stl_check_t> check_stl(const char* path);

}  // namespace ulk3d
