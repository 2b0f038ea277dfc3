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
    if (!grow_store(*buffer, kind->target, buffer_size, *new_size))
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
    buffer->bind();
    const bool stored = specify();
    if (stored) {
        glBindBuffer(GL_COPY_READ_BUFFER, shared->id());
        glCopyBufferSubData(GL_COPY_READ_BUFFER, kind->target, 0, 0, buffer_size);
        glBindBuffer(GL_COPY_READ_BUFFER, 0);
    }
    buffer->unbind();
    if (!stored)
        drop_buffer();
    return stored;
}

void* record_store_t::map() {
    return map_for(GL_MAP_READ_BIT | GL_MAP_WRITE_BIT);
}

const void* record_store_t::map() const {
    return map_for(GL_MAP_READ_BIT);
}

void* record_store_t::map_for(GLbitfield access) const {
    if (!buffer) {
        std::cerr << kind->no_buffer << std::endl;
        return nullptr;
    }
    void* const pointer = buffer->MapBufferRange(0, buffer_size, access);
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

void record_store_t::take_sizes(std::int64_t count, std::int64_t needed) {
    elements = count;
    buffer_size = std::max(needed, buffer_size);
}

bool record_store_t::specify() const {
    return specify_store(kind->target, buffer_size, GL_DYNAMIC_DRAW);
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
