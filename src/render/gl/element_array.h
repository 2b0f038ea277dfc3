#pragma once

#include <GL/glew.h>

#include <cstdint>
#include <iosfwd>

#include "render/gl/record_store.h"
#include "render/gl/vertex_array.h"

namespace ulk3d {

/// Ends a strip in an element array; every draw of strips uses it as the primitive restart index. In files
/// and texts it is written as -1.
inline constexpr std::uint32_t restart_mark = 0xFFFFFFFF;

/// Array of u32 vertex indices in a GL buffer.
///
/// A mapping that fails prints "element object is not allocated." or "element pointer is NULL.".
class element_array_t : public record_store_t {
  public:
    element_array_t();

    /// Asks for a store for `element_count` indices; the old content is lost, except when that many are
    /// already in use: then nothing changes. A store that is larger already keeps its size.
    ///
    /// False for a count that is negative or too large for a 64-bit size (nothing is changed), or when memory
    /// runs out: two lines with the sizes then follow GL's error on the standard error stream, and the array
    /// is empty.
    [[nodiscard]] bool allocate(std::int64_t element_count);

    /// Changes the count of indices in use and keeps the content. A buffer that is too small grows to four
    /// times the demand. Before `allocate` only the sizes are set, for its use. False when the buffer could
    /// not grow; the count then exceeds it. False too, with nothing changed, for a count that is negative or
    /// too large for a 64-bit size.
    [[nodiscard]] bool extend(std::int64_t element_count);

    /// True when `byte_size()` is more than `element_count` indices take. Unlike in array_t and in `holds`,
    /// an exact fit does not count.
    bool fits(std::int64_t element_count) const;

    /// Draws the indices in use with the attributes of `vertex_array`. Does nothing without a buffer or with
    /// a null holder, or, after the lines of a mapping that fails, when there is no memory for a store. An
    /// array of which only restart marks were asked for so far draws nothing, and stays without a store.
    void draw(const vertex_array_ref& vertex_array, GLenum mode) const;

    /// Drops the buffer, and the sizes with it; does nothing without one.
    void release();

  private:
    static const kind_t element_kind;
};

/// Writes all indices in use, separated by ", ", with the restart mark as "-1", and a newline.
std::ostream& operator<<(std::ostream& stream, const element_array_t& elements);

}  // namespace ulk3d
