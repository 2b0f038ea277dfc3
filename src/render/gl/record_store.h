#pragma once

#include <GL/glew.h>

#include <cstdint>
#include <optional>

#include "render/gl/buffer.h"
#include "render/gl/shared_holder.h"

namespace ulk3d {

/// What the vertex and the index arrays have in common: records of one size in a GL buffer, and a count of
/// those in use.
///
/// The host keeps no copy: contents are reached by mapping (render/gl/mapped_span.h). The buffer is made at
/// the first `allocate` of the array and never shrinks until its `release`. Copies share the buffer. All
/// operations but the construction need a current GL context.
class record_store_t {
  public:
    /// Makes room for `count` records and keeps the content and the count in use. Without a buffer only
    /// `byte_size()` is set, for the next `allocate`. False when it can not grow; nothing is lost then.
    [[nodiscard]] bool reserve(std::int64_t count);

    /// True when there is a buffer and `count` records lie in it, for arrays of either kind.
    bool holds(std::int64_t count) const;

    /// Maps the whole buffer, `byte_size()` bytes: for reading and writing, or of a const array for reading
    /// only. Null, after a line on the standard error stream, when there is no buffer or GL can not. Use the
    /// guards of render/gl/mapped_span.h.
    [[nodiscard]] void* map();
    [[nodiscard]] const void* map() const;
    void unmap() const;

    /// Records in use.
    std::int64_t element_count() const { return elements; }
    /// Bytes reserved in the buffer.
    std::int64_t byte_size() const { return buffer_size; }
    /// Bytes of the records in use that lie in the buffer.
    std::int64_t bytes_in_use() const;
    bool has_buffer() const { return static_cast<bool>(buffer); }
    /// GL name of the buffer, 0 without one.
    GLuint buffer_id() const { return buffer ? buffer->id() : 0; }

  protected:
    struct kind_t {
        GLenum target;
        const char* no_buffer;   ///< the line for mapping without a buffer
        const char* no_pointer;  ///< the line for mapping that fails
    };
    /// `store_kind` outlives all stores.
    record_store_t(const kind_t& store_kind, std::int64_t bytes_per_record)
        : kind(&store_kind), record_bytes(bytes_per_record) {}

    /// Bytes of `count` records, none for a count that can not be.
    std::optional<std::int64_t> bytes_of(std::int64_t count) const;

    /// Takes a new count in use and keeps the content; a store that does not hold so many grows to four times
    /// the demand, so that edits which add records seldom copy. Returns whether they lie in the store; the
    /// count is then ahead of it, unless it is one that can not be: that changes nothing.
    bool take_count(std::int64_t count);

    void make_buffer();
    /// Takes the count in use, and makes the size `needed` bytes unless it is larger. The store follows by
    /// `specify`, with the buffer bound: new, of undefined content; false when there is no memory for it.
    void take_sizes(std::int64_t count, std::int64_t needed);
    [[nodiscard]] bool specify() const;
    /// Sets the sizes to nothing.
    void clear_sizes();
    /// Drops the buffer, and the sizes with it.
    void drop_buffer();

    const kind_t* kind;
    std::int64_t record_bytes;
    shared_holder<buffer_t> buffer;
    std::int64_t buffer_size = 0;
    std::int64_t elements = 0;

  private:
    void* map_for(GLbitfield access) const;
};

}  // namespace ulk3d
