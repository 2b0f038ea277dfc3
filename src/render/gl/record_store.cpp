#include "render/gl/record_store.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "render/gl/buffer_store.h"

namespace ulk3d {

bool record_store_t::reserve(std::int64_t count) {
    const auto new_size = bytes_of(count);
    if (!new_size)
        return false;
    if (!buffer) {
        buffer_size = *new_size;
        return true;
    }
    if (buffer_size >= *new_size)
        return true;
    if (!buffer->grow(buffer_size, *new_size))
        return false;
    buffer_size = *new_size;
    return true;
}

bool record_store_t::holds(std::int64_t count) const {
    const auto needed = bytes_of(count);
    return buffer && needed && buffer_size >= *needed;
}

bool record_store_t::unshare() {
    if (!buffer)
        return true;
    const shared_holder<buffer_t> shared = std::exchange(buffer, {});
    make_buffer();
    const bool is_copied = buffer->copy(*shared, buffer_size);
    if (!is_copied)
        drop_buffer();
    return is_copied;
}

bool record_store_t::fill(std::int64_t first, std::uint32_t word) {
    const std::int64_t first_byte = first * record_bytes;
    if (buffer && (first_byte >= bytes_in_use() || buffer->ask_for_words(first_byte, word)))
        return true;
    auto* const words = static_cast<std::uint32_t*>(map());
    if (words == nullptr)
        return false;
    constexpr std::int64_t word_bytes = sizeof word;
    std::fill(words + first_byte / word_bytes, words + bytes_in_use() / word_bytes, word);
    unmap();
    return true;
}

void record_store_t::give_back() {
    if (buffer)
        buffer->give_back();
}

bool record_store_t::provide() const {
    if (!buffer || buffer->provide())
        return true;
    std::cerr << kind->no_pointer << std::endl;
    return false;
}

void* record_store_t::map(first_words_t words) {
    return map_for(GL_MAP_READ_BIT | GL_MAP_WRITE_BIT, words);
}

const void* record_store_t::map() const {
    return map_for(GL_MAP_READ_BIT, first_words_t::kept);
}

void* record_store_t::map_for(GLbitfield access, first_words_t words) const {
    if (!buffer) {
        std::cerr << kind->no_buffer << std::endl;
        return nullptr;
    }
    void* const pointer = buffer->provide(words) ? buffer->MapBufferRange(0, buffer_size, access) : nullptr;
    if (pointer == nullptr)
        std::cerr << kind->no_pointer << std::endl;
    return pointer;
}

void record_store_t::unmap() const {
    if (buffer)
        buffer->UnmapBuffer();
}

std::int64_t record_store_t::bytes_in_use() const {
    return std::min(elements * record_bytes, buffer_size);
}

std::optional<std::int64_t> record_store_t::bytes_of(std::int64_t count) const {
    return checked_byte_size(count, record_bytes);
}

bool record_store_t::take_count(std::int64_t count) {
    const auto needed = bytes_of(count);
    if (!needed)
        return false;
    elements = count;
    std::int64_t demand = 0;
    return buffer_size >= *needed || (!__builtin_mul_overflow(count, 4, &demand) && reserve(demand));
}

void record_store_t::make_buffer() {
    if (!buffer)
        buffer = shared_holder<buffer_t>::make();
    buffer->allocate(kind->target);
}

bool record_store_t::take_sizes(std::int64_t count, std::int64_t needed) {
    elements = count;
    buffer_size = std::max(needed, buffer_size);
    const bool is_granted = buffer->ask_for(buffer_size);
    if (!is_granted)
        clear_sizes();
    return is_granted;
}

void record_store_t::clear_sizes() {
    elements = 0;
    buffer_size = 0;
}

void record_store_t::drop_buffer() {
    buffer.reset();
    clear_sizes();
}

}  // namespace ulk3d
