#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include "render/gl/array.h"
#include "render/gl/element_array.h"
#include "render/gl/feedback_buffer.h"

namespace ulk3d {

/// Scope guard of a buffer's mapping, seen as a span of records of type T.
///
/// A guard over const records takes a const buffer and maps it for reading only; one over mutable records
/// needs a buffer that may be changed, and maps it for reading and writing. The whole buffer is mapped when
/// the guard is built, and unmapped at the end of its scope if the mapping was made. The span covers the
/// records in use whose bytes lie in the buffer, whole records only; it is empty when the mapping failed (the
/// buffer's `map` has then said so on the standard error stream).
///
/// GL refuses to map a range of no bytes, so a buffer with nothing in use is not mapped: its span is empty,
/// and nothing is printed. A buffer that does not exist is told of by its own messages.
///
/// The buffer must outlive the guard, and must not be allocated or grown while it is mapped: a second mapping
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
        if (buffer.has_buffer() && buffer.bytes_in_use() == 0)
            return;
        auto* const pointer = static_cast<T*>(buffer.map());
        mapped = pointer != nullptr;
        if (mapped)
            records = {pointer, static_cast<std::size_t>(buffer.bytes_in_use()) / sizeof(T)};
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

    /// Ends the mapping before the scope does; the span is empty after.
    void unmap() {
        if (mapped)
            buffer.unmap();
        mapped = false;
        records = {};
    }

  private:
    buffer_type& buffer;
    bool mapped = false;
    std::span<T> records;
};

/// The vertices in use: one record for each when T has the array's stride, the single words for float or
/// std::uint32_t.
template <class T>
using array_span = mapped_span<T, array_t>;

/// The indices in use.
using index_span = mapped_span<std::uint32_t, element_array_t>;
using const_index_span = mapped_span<const std::uint32_t, element_array_t>;

/// What a transform feedback pass has written.
template <class T>
using feedback_span = mapped_span<T, feedback_buffer_t>;

}  // namespace ulk3d
