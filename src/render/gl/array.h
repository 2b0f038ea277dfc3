#pragma once

#include <GL/glew.h>

#include <cstdint>

#include "render/gl/element.h"
#include "render/gl/record_store.h"
#include "render/gl/vertex_array.h"

namespace ulk3d {

/// Array of vertices in a GL buffer: 32-bit words, tightly packed, attributes interleaved in the order of an
/// element list. A vertex takes `vertex_stride()` words of 4 bytes.
///
/// A mapping that fails prints "array buffer is not allocated." or "array pointer is NULL.".
class array_t : public record_store_t {
  public:
    array_t();

    /// Asks for a store for `element_count` vertices with the attributes in `list`; the old content is lost.
    ///
    /// When `data` is not null, copies `data_size` bytes from it, but at most `byte_size()`; 0 stands for all
    /// of `byte_size()`. A store that is larger already keeps its size. False, without a message, when the
    /// list has more attributes than a vertex array can take or a size is negative or exceeds 64 bits
    /// (nothing is changed), or when memory runs out, here or for the copy (the array is then empty).
    [[nodiscard]] bool allocate(std::int64_t element_count, const element_list_t& list,
                                const void* data = nullptr, std::int64_t data_size = 0);

    /// Changes the count of vertices in use and keeps the content. A buffer that is too small grows to four
    /// times the demand, so that edits which add vertices rarely copy.
    ///
    /// False, with nothing changed, without a buffer or for a count that is negative or too large for a
    /// 64-bit size. Otherwise true, even when memory runs out: the count then exceeds the buffer, `holds`
    /// returns false for it, and a mapping covers what the buffer has.
    [[nodiscard]] bool extend(std::int64_t element_count);

    /// True when `byte_size()` is enough for `element_count` vertices, whether or not there is a buffer.
    bool fits(std::int64_t element_count) const;

    /// Writes `byte_size()` bytes from `data`. Does nothing without a buffer or when `data` is null.
    void write_all(const void* data);
    /// Write or read the vertex at `index`, `vertex_stride()` words. Do nothing without a buffer, when `data`
    /// is null, or for an index outside the store; the latter leaves a GL error pending unless it is
    /// negative. Both do nothing, and `write_one` returns false, when the store can not be made, after the
    /// lines of a mapping that fails.
    bool write_one(std::int64_t index, const void* data);
    void read_one(std::int64_t index, void* data) const;

    /// Feeds the attribute locations of a vertex array, from `first_location` on, from this array. Does
    /// nothing without a buffer or with a null holder.
    void bind_to(const vertex_array_ref& vertex_array, GLuint first_location) const;

    /// Binds the buffer with its store, which is made if it is not there yet, for a copy. Where it can not be
    /// made, after the lines of a mapping that fails, a buffer without a store is bound.
    void bind() const;
    void unbind() const;

    /// Drops the buffer. The element list stays.
    void release();

    /// 32-bit words of one vertex, as of the last `allocate`.
    std::uint32_t vertex_stride() const { return static_cast<std::uint32_t>(record_bytes / 4); }
    /// The same, computed from the element list at each call.
    std::uint32_t vertex_words() const { return words_of(attributes); }
    /// The attributes of a vertex.
    const element_list_t& element_list() const { return attributes; }

  private:
    static const kind_t array_kind;

    element_list_t attributes;
};

}  // namespace ulk3d
