#pragma once

#include <optional>
#include <span>

#include "render/gl/mapping.h"

namespace ulk3d {

/// Mapping of a buffer that may legally hold nothing.
///
/// GL refuses to map a range of no bytes, so a buffer with nothing in use is not mapped: its span is empty,
/// nothing is printed. A buffer that does not exist is told of by its own messages, as with any mapping.
/// The rules of mapping_t hold.
template <class T, class Buffer>
class mapped_span {
  public:
    explicit mapped_span(const Buffer& buffer) {
        if (!buffer.has_buffer() || buffer.bytes_in_use() > 0)
            records = mapping.emplace(buffer).span();
    }

    std::span<T> span() const { return records; }
    std::size_t size() const { return records.size(); }
    T& operator[](std::size_t index) const { return records[index]; }

  private:
    std::optional<mapping_t<T, Buffer>> mapping;
    std::span<T> records;
};

template <class T>
using array_span = mapped_span<T, array_t>;
using index_span = mapped_span<std::uint32_t, element_array_t>;
using const_index_span = mapped_span<const std::uint32_t, element_array_t>;

}  // namespace ulk3d
