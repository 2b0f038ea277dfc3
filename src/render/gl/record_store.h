#pragma once

#include <GL/glew.h>

#include <cstdint>
#include <optional>

#include "render/gl/buffer.h"
#include "render/gl/shared_holder.h"

namespace ulk3d {

/// The common part of vertex and index arrays: records of one size in a GL buffer, and the count of those in
/// use.
///
/// The host keeps no copy; the content is accessed by mapping the buffer (render/gl/mapped_span.h). The first
/// `allocate` of the array creates the buffer, which never shrinks before its `release`; the store behind it
/// is made at its first use (render/gl/buffer.h). Copies of an array share the buffer. Everything but
/// construction needs a current GL context.
class record_store_t {
  public:
    /// Makes room for `count` records and keeps the content and the count in use. Without a buffer only
    /// `byte_size()` is set, for the next `allocate`. False, with nothing changed, when the store can not
    /// grow or the count is negative or too large for a 64-bit size.
    [[nodiscard]] bool reserve(std::int64_t count);

    /// True when there is a buffer with room for `count` records.
    bool holds(std::int64_t count) const;

    /// Gives the array a buffer of its own with the same content, so that it shares none with the array that
    /// it is a copy of. False when there is no memory: the array is then empty, and the other one keeps the
    /// buffer.
    [[nodiscard]] bool unshare();

    /// Sets all words of the records in use from `first` on, like a mapping that writes them; a store that
    /// has not been made stays unmade where that is possible. False when the buffer can not be mapped.
    [[nodiscard]] bool fill(std::int64_t first, std::uint32_t word);

    /// Makes the store if it is not there yet, for a draw or a copy. False, after the lines of a mapping that
    /// fails, when there is no memory for it; without a buffer there is nothing to make.
    [[nodiscard]] bool provide() const;

    /// Gives the store back until its next use, which finds undefined content; does nothing without one.
    void give_back();

    /// Maps the whole buffer, `byte_size()` bytes: for reading and writing, or for reading only when the
    /// array is const. Null, after a line on the standard error stream, when there is no buffer or GL can not
    /// map it. Use the guards of render/gl/mapped_span.h.
    [[nodiscard]] void* map(first_words_t words = first_words_t::kept);
    [[nodiscard]] const void* map() const;
    void unmap() const;

    /// Records in use.
    std::int64_t element_count() const { return elements; }
    /// Bytes reserved in the buffer.
    std::int64_t byte_size() const { return buffer_size; }
    /// Bytes that the records in use take, but at most `byte_size()`.
    std::int64_t bytes_in_use() const;
    /// How many times the content may have changed so far (buffer_t::writes); a new buffer starts at 0 again.
    /// As long as it and the count in use are unchanged, so are the records, but for those that the frame
    /// pass writes.
    std::uint64_t writes() const { return buffer ? buffer->writes() : 0; }
    bool has_buffer() const { return static_cast<bool>(buffer); }
    /// GL name of the buffer; 0 without one.
    GLuint buffer_id() const { return buffer ? buffer->id() : 0; }

  protected:
    struct kind_t {
        GLenum target;
        const char* no_buffer;   ///< the message for mapping without a buffer
        const char* no_pointer;  ///< the message for a mapping that fails
    };
    /// `store_kind` must outlive all stores.
    record_store_t(const kind_t& store_kind, std::int64_t bytes_per_record)
        : kind(&store_kind), record_bytes(bytes_per_record) {}

    /// Bytes of `count` records; nothing when the count is negative or the bytes do not fit into 64 bits.
    [[nodiscard]] std::optional<std::int64_t> bytes_of(std::int64_t count) const;

    /// Sets the count in use and keeps the content. A store that is too small grows to four times the demand,
    /// so that edits which add records rarely copy. False when the store could not grow; the count then
    /// exceeds it. False too, with nothing changed, for a count without a valid size (`bytes_of`).
    [[nodiscard]] bool take_count(std::int64_t count);

    void make_buffer();
    /// Sets the count in use, raises the size to `needed` bytes unless it is larger already, and asks for a
    /// store of that size with undefined content. False, with both at 0, when memory runs out.
    [[nodiscard]] bool take_sizes(std::int64_t count, std::int64_t needed);
    /// Sets the size and the count in use to 0.
    void clear_sizes();
    /// Drops the buffer and clears the sizes.
    void drop_buffer();

    const kind_t* kind;
    std::int64_t record_bytes;
    shared_holder<buffer_t> buffer;
    std::int64_t buffer_size = 0;
    std::int64_t elements = 0;

  private:
    void* map_for(GLbitfield access, first_words_t words) const;
};

}  // namespace ulk3d
