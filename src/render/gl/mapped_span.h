#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include "render/gl/array.h"
#include "render/gl/element_array.h"
#include "render/gl/feedback_buffer.h"

namespace ulk3d {

/// Scope guard that maps a buffer and gives access to it as a span of records of type T.
///
/// A guard over const records takes a const buffer and maps it for reading only; one over mutable records
/// needs a mutable buffer and maps it for reading and writing. The constructor maps the whole buffer; the
/// destructor unmaps it if that succeeded. The span covers the records in use that lie entirely within the
/// buffer. It is empty when the mapping failed; the arrays' `map` has then printed a line to the standard
/// error stream.
///
/// GL refuses to map an empty range, so a buffer without records in use is not mapped: its span is empty, and
/// nothing is printed. An array without a buffer, however, prints its own message.
///
/// With `first_words_t::overwritten` the caller promises to write all records before anyone reads them: a
/// store that this mapping makes is then not filled with what `allocate` or `fill` has asked for.
///
/// The buffer must outlive the guard, and must not be allocated or grown while it is mapped. A second mapping
/// of the same buffer fails.
///
///     const array_span<vertex_t> vertices(polygon.vertices);
///     for (vertex_t& vertex : vertices)
///         vertex.position.z = 0;
template <class T, class Buffer>
class mapped_span {
    static_assert(std::is_trivially_copyable_v<T> && sizeof(T) % 4 == 0, "buffers hold plain 32-bit words");

  public:
    using buffer_type = std::conditional_t<std::is_const_v<T>, const Buffer, Buffer>;

    explicit mapped_span(buffer_type& mapped_buffer) : buffer(mapped_buffer) {
        if (!is_empty())
            take(buffer.map());
    }
    mapped_span(buffer_type& mapped_buffer, first_words_t words) : buffer(mapped_buffer) {
        if (!is_empty())
            take(buffer.map(words));
    }
    ~mapped_span() { unmap(); }
    mapped_span(const mapped_span&) = delete;
    mapped_span& operator=(const mapped_span&) = delete;

    /// True when the buffer is mapped.
    explicit operator bool() const { return mapped; }

    std::span<T> span() const { return records; }
    std::size_t size() const { return records.size(); }
    auto begin() const { return records.begin(); }
    auto end() const { return records.end(); }
    /// The record at `index`, which must be below `size()`.
    T& operator[](std::size_t index) const { return records[index]; }

    /// Ends the mapping before the end of the scope; the span is empty afterwards.
    void unmap() {
        if (mapped)
            buffer.unmap();
        mapped = false;
        records = {};
    }

  private:
    bool is_empty() const { return buffer.has_buffer() && buffer.bytes_in_use() == 0; }

    template <class Pointer>
    void take(Pointer* pointer) {
        mapped = pointer != nullptr;
        if (mapped)
            records = {static_cast<T*>(pointer), static_cast<std::size_t>(buffer.bytes_in_use()) / sizeof(T)};
    }

    buffer_type& buffer;
    bool mapped = false;
    std::span<T> records;
};

/// The vertices in use: one record per vertex when T has the size of a vertex, or single words for float and
/// std::uint32_t.
template <class T>
using array_span = mapped_span<T, array_t>;

/// The indices in use.
using index_span = mapped_span<std::uint32_t, element_array_t>;
using const_index_span = mapped_span<const std::uint32_t, element_array_t>;

/// The records that a transform feedback pass has written.
template <class T>
using feedback_span = mapped_span<T, feedback_buffer_t>;

}  // namespace ulk3d
