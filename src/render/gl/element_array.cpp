#include "render/gl/element_array.h"

#include <algorithm>
#include <iostream>
#include <string>

#include "gltextures/gr_check_error.h"
#include "render/gl/buffer_store.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {

using libgr::grCheckError;

namespace {

constexpr std::int64_t index_bytes = sizeof(std::uint32_t);

}  // namespace

bool element_array_t::allocate(std::int64_t element_count) {
    const auto needed = checked_byte_size(element_count, index_bytes);
    if (!needed)
        return false;
    if (!buffer)
        buffer = shared_holder<buffer_t>::make();
    buffer->allocate(GL_ELEMENT_ARRAY_BUFFER);
    if (element_count == elements)
        return true;
    elements = element_count;
    buffer_size = std::max(*needed, buffer_size);

    grCheckError("element_array_t::allocate(1)");
    buffer->bind();
    grCheckError("element_array_t::allocate(2)");
    const bool stored = specify_store(GL_ELEMENT_ARRAY_BUFFER, buffer_size, GL_DYNAMIC_DRAW);
    if (grCheckError("element_array_t::allocate(3)")) {
        std::cerr << "elements: " << std::to_string(elements) << std::endl;
        std::cerr << "buffer_size: " << std::to_string(buffer_size) << std::endl;
    }
    buffer->unbind();
    grCheckError("element_array_t::allocate(end)");
    if (!stored) {
        elements = 0;
        buffer_size = 0;
    }
    return stored;
}

bool element_array_t::extend(std::int64_t element_count) {
    const auto needed = checked_byte_size(element_count, index_bytes);
    std::int64_t demand = 0;
    if (!needed || __builtin_mul_overflow(element_count, 4, &demand))
        return false;
    elements = element_count;
    return buffer_size >= *needed || reserve(demand);
}

bool element_array_t::reserve(std::int64_t element_count) {
    const auto new_size = checked_byte_size(element_count, index_bytes);
    if (!new_size)
        return false;
    if (!buffer) {
        buffer_size = *new_size;
        return true;
    }
    if (buffer_size >= *new_size)
        return true;
    if (!grow_store(*buffer, GL_ELEMENT_ARRAY_BUFFER, buffer_size, *new_size))
        return false;
    buffer_size = *new_size;
    return true;
}

bool element_array_t::fits(std::int64_t element_count) const {
    const auto needed = checked_byte_size(element_count, index_bytes);
    return needed && buffer_size > *needed;
}

void* element_array_t::map() {
    return map_for(GL_MAP_READ_BIT | GL_MAP_WRITE_BIT);
}

const void* element_array_t::map() const {
    return map_for(GL_MAP_READ_BIT);
}

void* element_array_t::map_for(GLbitfield access) const {
    if (!buffer) {
        std::cerr << "element object is not allocated." << std::endl;
        return nullptr;
    }
    void* const pointer = buffer->MapBufferRange(0, buffer_size, access);
    if (pointer == nullptr)
        std::cerr << "element pointer is NULL." << std::endl;
    return pointer;
}

void element_array_t::unmap() const {
    if (buffer)
        buffer->UnmapBuffer();
}

void element_array_t::draw(const vertex_array_ref& vertex_array, GLenum mode) const {
    if (!buffer || !vertex_array)
        return;
    // Never past the store, where GL would read what it likes.
    const GLsizei count = to_draw_count(bytes_in_use() / index_bytes);
    grCheckError("element_array_t::draw(0)");
    vertex_array->bind();
    grCheckError("element_array_t::draw(1)");
    buffer->bind();
    grCheckError("element_array_t::draw(2)");
    glDrawElements(mode, count, GL_UNSIGNED_INT, nullptr);
    grCheckError("element_array_t::draw(3)");
    buffer->unbind();
    grCheckError("element_array_t::draw(4)");
    vertex_array->unbind();
    grCheckError("element_array_t::draw(end)");
}

void element_array_t::release() {
    if (!buffer)
        return;
    buffer.reset();
    elements = 0;
    buffer_size = 0;
}

std::int64_t element_array_t::bytes_in_use() const {
    return std::min(elements * index_bytes, buffer_size);
}

std::ostream& operator<<(std::ostream& stream, const element_array_t& elements) {
    if (elements.element_count() > 0) {
        const const_index_span indices(elements);
        const char* separator = "";
        for (const std::uint32_t index : indices) {
            // Not by the stream's own insertion: that would group digits where the stream's locale says so.
            stream << separator << (index == restart_mark ? "-1" : std::to_string(index));
            separator = ", ";
        }
    }
    return stream << '\n';
}

}  // namespace ulk3d
