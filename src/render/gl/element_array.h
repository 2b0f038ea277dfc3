#pragma once

#include <GL/glew.h>

#include <cstdint>
#include <iosfwd>

#include "render/gl/record_store.h"
#include "render/gl/vertex_array.h"

namespace ulk3d {

/// Ends a strip in an element array; the primitive restart index of every strip draw. Files and texts write
/// it as -1.
inline constexpr std::uint32_t restart_mark = 0xFFFFFFFF;

/// Array of u32 vertex indices in a GL buffer.
///
/// Mapping prints "element object is not allocated." or "element pointer is NULL." when it can not.
class element_array_t : public record_store_t {
  public:
    element_array_t();

    /// Makes a store for `element_count` indices; former content is lost. With the count that is already
    /// stored the buffer stays as it is, content included. The store keeps its former size when larger.
    ///
    /// False for a count that can not be (nothing is changed then), or when there is no memory: two lines
    /// with the counts follow GL's error on the standard error stream, and the array is then empty.
    [[nodiscard]] bool allocate(std::int64_t element_count);

    /// Changes the count of indices in use and keeps the content. When the buffer does not hold that many it
    /// grows to four times the demand; the result tells whether it holds them. Works before `allocate` too:
    /// the sizes are noted for it. False, with nothing changed, for a count that can not be.
    [[nodiscard]] bool extend(std::int64_t element_count);

    /// True when `byte_size()` is more than `element_count` indices take. Exact capacity does not fit, unlike
    /// in array_t; `holds` takes it.
    bool fits(std::int64_t element_count) const;

    /// Draws the indices in use with the attributes of `vertex_array`. Nothing happens without a buffer.
    void draw(const vertex_array_ref& vertex_array, GLenum mode) const;

    /// Drops the buffer; without one nothing is changed.
    void release();

    /// Count of the mappings of the buffer for writing so far; a new buffer starts at 0 again. As long as it
    /// and the count in use stay, the indices are the same.
    std::uint64_t writable_mappings() const { return buffer ? buffer->writable_mappings() : 0; }

  private:
    static const kind_t element_kind;
};

/// Writes all indices in use, separated by ", ", the restart mark as "-1", and a newline.
std::ostream& operator<<(std::ostream& stream, const element_array_t& elements);

}  // namespace ulk3d
