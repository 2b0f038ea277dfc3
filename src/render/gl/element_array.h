#pragma once

#include <GL/glew.h>

#include <cstdint>
#include <iosfwd>

#include "render/gl/buffer.h"
#include "render/gl/shared_holder.h"
#include "render/gl/vertex_array.h"

namespace ulk3d {

/// Ends a strip in an element array; the primitive restart index of every strip draw. Files and texts write
/// it as -1.
inline constexpr std::uint32_t restart_mark = 0xFFFFFFFF;

/// Array of u32 vertex indices in a GL buffer.
///
/// The host keeps no copy: contents are reached by mapping (render/gl/mapped_span.h). The buffer is made at
/// the first `allocate` and never shrinks until `release`. Copying an element_array_t shares the buffer. All
/// operations but the construction need a current GL context.
class element_array_t {
  public:
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

    /// Makes room for `element_count` indices and keeps the content and the count in use. Without a buffer
    /// only `byte_size()` is set, for the next `allocate`. False when it can not grow; nothing is lost then.
    [[nodiscard]] bool reserve(std::int64_t element_count);

    /// True when the buffer holds more than `element_count` indices. Exact capacity does not fit, unlike in
    /// array_t.
    bool fits(std::int64_t element_count) const;

    /// Maps the whole buffer, `byte_size()` bytes: for reading and writing, or of a const array for reading
    /// only. Prints "element object is not
    /// allocated." or "element pointer is NULL." on the standard error stream and returns null when it can
    /// not. Use the guards of render/gl/mapped_span.h.
    [[nodiscard]] void* map();
    [[nodiscard]] const void* map() const;
    void unmap() const;

    /// Draws the indices in use with the attributes of `vertex_array`. Nothing happens without a buffer.
    void draw(const vertex_array_ref& vertex_array, GLenum mode) const;

    /// Drops the buffer; without one nothing is changed.
    void release();

    /// Indices in use.
    std::int64_t element_count() const { return elements; }
    /// Bytes reserved in the buffer.
    std::int64_t byte_size() const { return buffer_size; }
    /// Bytes of the indices in use that lie in the buffer.
    std::int64_t bytes_in_use() const;
    bool has_buffer() const { return static_cast<bool>(buffer); }
    /// GL name of the buffer, 0 without one.
    GLuint buffer_id() const { return buffer ? buffer->id() : 0; }
    /// Count of the mappings of the buffer for writing so far; a new buffer starts at 0 again. As long as it
    /// and the count in use stay, the indices are the same.
    std::uint64_t writable_mappings() const { return buffer ? buffer->writable_mappings() : 0; }

  private:
    void* map_for(GLbitfield access) const;

    shared_holder<buffer_t> buffer;
    std::int64_t buffer_size = 0;
    std::int64_t elements = 0;
};

/// Writes all indices in use, separated by ", ", the restart mark as "-1", and a newline.
std::ostream& operator<<(std::ostream& stream, const element_array_t& elements);

}  // namespace ulk3d
