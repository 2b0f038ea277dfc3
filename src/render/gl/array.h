#pragma once

#include <GL/glew.h>

#include <cstdint>

#include "render/gl/buffer.h"
#include "render/gl/element.h"
#include "render/gl/shared_holder.h"
#include "render/gl/vertex_array.h"

namespace ulk3d {

/// Array of vertices in a GL buffer: 32-bit words, tightly packed, interleaved in the order of an element
/// list.
///
/// A vertex is `vertex_stride()` words of 4 bytes. The host keeps no copy: contents are reached by mapping
/// (render/gl/mapped_span.h). The buffer is made at the first `allocate` and never shrinks until `release`.
/// Copying an array_t shares the buffer. All operations but the construction need a current GL context.
class array_t {
  public:
    /// Makes a store for `element_count` vertices of the attributes in `list`; former content is lost.
    ///
    /// Takes `data_size` bytes (0: the whole `byte_size()`, at most that) from `data` when it is not null.
    /// The store keeps its former size when that is larger. False, without a message: when the list has more
    /// attributes than a vertex array can take, when a size is negative or beyond 64 bits (nothing is changed
    /// then), or when there is no memory (the array is then empty).
    [[nodiscard]] bool allocate(std::int64_t element_count, const element_list_t& list,
                                const void* data = nullptr, std::int64_t data_size = 0);

    /// Changes the count of vertices in use and keeps the content. When the buffer does not hold that many it
    /// grows to four times the demand, so that edits which add vertices seldom copy.
    ///
    /// False without a buffer or for a count that can not be; true else, also when there is no memory to
    /// grow: the count then is ahead of the buffer, and a mapping shows what is there.
    [[nodiscard]] bool extend(std::int64_t element_count);

    /// Makes room for `element_count` vertices and keeps the content and the count in use. Without a buffer
    /// only `byte_size()` is set, for the next `allocate`. False when it can not grow; nothing is lost then.
    [[nodiscard]] bool reserve(std::int64_t element_count);

    /// True when the buffer holds `element_count` vertices.
    bool fits(std::int64_t element_count) const;

    /// Writes `byte_size()` bytes from `data`.
    void write_all(const void* data);
    /// Writes or reads the vertex at `index`, `vertex_stride()` words. An index outside the store leaves a GL
    /// error and does nothing.
    void write_one(std::int64_t index, const void* data);
    void read_one(std::int64_t index, void* data) const;

    /// Maps the whole buffer, `byte_size()` bytes: for reading and writing, or of a const array for reading
    /// only. Prints "array buffer is not
    /// allocated." or "array pointer is NULL." on the standard error stream and returns null when it can not.
    /// Use the guards of render/gl/mapped_span.h.
    [[nodiscard]] void* map();
    [[nodiscard]] const void* map() const;
    void unmap() const;

    /// Feeds the attribute locations `first_location` and up of a vertex array from this array. Nothing
    /// happens without a buffer or with a null holder.
    void bind_to(const vertex_array_ref& vertex_array, GLuint first_location) const;

    void bind() const;
    void unbind() const;

    /// Drops the buffer. The element list stays.
    void release();

    /// Vertices in use.
    std::int64_t element_count() const { return elements; }
    /// Bytes reserved in the buffer.
    std::int64_t byte_size() const { return buffer_size; }
    /// Bytes of the vertices in use that lie in the buffer.
    std::int64_t bytes_in_use() const;
    /// 32-bit words of one vertex, as of the last `allocate`.
    std::uint32_t vertex_stride() const { return stride; }
    /// The sum of the components of the element list, computed anew.
    std::uint32_t vertex_words() const { return words_of(attributes); }
    /// The attributes of a vertex.
    const element_list_t& element_list() const { return attributes; }
    bool has_buffer() const { return static_cast<bool>(buffer); }
    /// GL name of the buffer, 0 without one.
    GLuint buffer_id() const { return buffer ? buffer->id() : 0; }

  private:
    void* map_for(GLbitfield access) const;
    std::int64_t stride_bytes() const { return static_cast<std::int64_t>(stride) * 4; }

    shared_holder<buffer_t> buffer;
    std::int64_t buffer_size = 0;
    std::int64_t elements = 0;
    std::uint32_t stride = 0;
    element_list_t attributes;
};

}  // namespace ulk3d
