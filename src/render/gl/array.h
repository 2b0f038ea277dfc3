#pragma once

#include <GL/glew.h>

#include <cstdint>

#include "render/gl/element.h"
#include "render/gl/record_store.h"
#include "render/gl/vertex_array.h"

namespace ulk3d {

/// Array of vertices in a GL buffer: 32-bit words, tightly packed, interleaved in the order of an element
/// list. A vertex is `vertex_stride()` words of 4 bytes.
///
/// Mapping prints "array buffer is not allocated." or "array pointer is NULL." when it can not.
class array_t : public record_store_t {
  public:
    array_t();

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
    /// grow: the count then is ahead of the buffer, which `holds` tells, and a mapping shows what is there.
    [[nodiscard]] bool extend(std::int64_t element_count);

    /// True when `byte_size()` is enough for `element_count` vertices, be there a buffer or not.
    bool fits(std::int64_t element_count) const;

    /// Writes `byte_size()` bytes from `data`.
    void write_all(const void* data);
    /// Writes or reads the vertex at `index`, `vertex_stride()` words. An index outside the store leaves a GL
    /// error and does nothing.
    void write_one(std::int64_t index, const void* data);
    void read_one(std::int64_t index, void* data) const;

    /// Feeds the attribute locations `first_location` and up of a vertex array from this array. Nothing
    /// happens without a buffer or with a null holder.
    void bind_to(const vertex_array_ref& vertex_array, GLuint first_location) const;

    void bind() const;
    void unbind() const;

    /// Drops the buffer. The element list stays.
    void release();

    /// 32-bit words of one vertex, as of the last `allocate`.
    std::uint32_t vertex_stride() const { return static_cast<std::uint32_t>(record_bytes / 4); }
    /// The sum of the components of the element list, computed anew.
    std::uint32_t vertex_words() const { return words_of(attributes); }
    /// The attributes of a vertex.
    const element_list_t& element_list() const { return attributes; }

  private:
    static const kind_t array_kind;

    element_list_t attributes;
};

}  // namespace ulk3d
