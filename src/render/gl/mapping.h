#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include "render/gl/array.h"
#include "render/gl/element_array.h"
#include "render/gl/feedback_buffer.h"

namespace ulk3d {

/// Scope guard of a buffer's mapping, seen as records of type T.
///
/// Maps the whole buffer for reading and writing when it is built and unmaps at the end of its scope, only
/// when the mapping was made. The span covers the records in use whose bytes lie in the buffer, whole records
/// only; it is empty when the mapping failed (the buffer's `map` has then told so on the standard error
/// stream). The buffer must outlive the guard, and must not be allocated or grown while it is mapped: a
/// second mapping of the same buffer fails.
///
///     const auto vertices = map_records<vertex_t>(polygon.vertices);
///     if (!vertices)
///         return false;
///     for (vertex_t& vertex : vertices.span())
///         vertex.position.z = 0;
template <class T, class Buffer>
class mapping_t {
    static_assert(std::is_trivially_copyable_v<T> && sizeof(T) % 4 == 0, "buffers hold plain 32-bit words");

  public:
    explicit mapping_t(const Buffer& mapped_buffer) : buffer(mapped_buffer), pointer(mapped_buffer.map()) {
        if (pointer != nullptr)
            records = {static_cast<T*>(pointer), static_cast<std::size_t>(buffer.bytes_in_use()) / sizeof(T)};
    }
    ~mapping_t() { unmap(); }
    mapping_t(const mapping_t&) = delete;
    mapping_t& operator=(const mapping_t&) = delete;

    /// True when the buffer is mapped.
    explicit operator bool() const { return pointer != nullptr; }

    std::span<T> span() const { return records; }
    T* data() const { return records.data(); }
    std::size_t size() const { return records.size(); }
    auto begin() const { return records.begin(); }
    auto end() const { return records.end(); }
    /// The record at `index`, which must be below `size()`.
    T& operator[](std::size_t index) const { return records[index]; }

    /// Ends the mapping before the scope does; the span is empty after.
    void unmap() {
        if (pointer != nullptr)
            buffer.unmap();
        pointer = nullptr;
        records = {};
    }

  private:
    const Buffer& buffer;
    void* pointer;
    std::span<T> records;
};

template <class T>
using array_mapping = mapping_t<T, array_t>;

/// Maps the vertices in use as records of type T: one for each vertex when T has the array's stride, the
/// single words for float or std::uint32_t.
template <class T>
[[nodiscard]] array_mapping<T> map_records(array_t& array) {
    return array_mapping<T>(array);
}

/// The same for reading only: `map_records<const vertex_t>(array)`.
template <class T>
requires std::is_const_v<T>
[[nodiscard]] array_mapping<T> map_records(const array_t& array) {
    return array_mapping<T>(array);
}

/// Maps the indices in use.
[[nodiscard]] inline mapping_t<std::uint32_t, element_array_t> map_indices(element_array_t& elements) {
    return mapping_t<std::uint32_t, element_array_t>(elements);
}

[[nodiscard]] inline mapping_t<const std::uint32_t, element_array_t> map_indices(
    const element_array_t& elements) {
    return mapping_t<const std::uint32_t, element_array_t>(elements);
}

/// Maps what a transform feedback pass has written, as records of type T.
template <class T>
[[nodiscard]] mapping_t<T, feedback_buffer_t> map_feedback(feedback_buffer_t& feedback) {
    return mapping_t<T, feedback_buffer_t>(feedback);
}

}  // namespace ulk3d
