#include "render/gl/array.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "render/gl/buffer_store.h"

namespace ulk3d {

bool array_t::allocate(std::int64_t element_count, const element_list_t& list, const void* data,
                       std::int64_t data_size) {
    GLint most_attributes = 0;
    glGetIntegerv(GL_MAX_VERTEX_ATTRIBS, &most_attributes);
    if (std::cmp_greater(list.size(), most_attributes))
        return false;
    const std::uint32_t words = words_of(list);
    const auto needed = checked_byte_size(element_count, static_cast<std::int64_t>(words) * 4);
    if (!needed || data_size < 0)
        return false;

    if (!buffer)
        buffer = shared_holder<buffer_t>::make();
    buffer->allocate(GL_ARRAY_BUFFER);
    stride = words;
    if (!is_same_list(attributes, list))
        attributes = list;
    elements = element_count;
    buffer_size = std::max(*needed, buffer_size);

    bind();
    if (!specify_store(GL_ARRAY_BUFFER, buffer_size, GL_DYNAMIC_DRAW)) {
        unbind();
        elements = 0;
        buffer_size = 0;
        return false;
    }
    if (data != nullptr)
        glBufferSubData(GL_ARRAY_BUFFER, 0, data_size == 0 ? buffer_size : std::min(data_size, buffer_size),
                        data);
    unbind();
    return true;
}

bool array_t::extend(std::int64_t element_count) {
    if (!buffer)
        return false;
    if (element_count == elements)
        return true;
    if (!checked_byte_size(element_count, stride_bytes()))
        return false;
    elements = element_count;
    if (!fits(element_count)) {
        std::int64_t demand = 0;
        if (!__builtin_mul_overflow(element_count, 4, &demand))
            (void)reserve(demand);
    }
    return true;
}

bool array_t::reserve(std::int64_t element_count) {
    const auto new_size = checked_byte_size(element_count, stride_bytes());
    if (!new_size)
        return false;
    if (!buffer) {
        buffer_size = *new_size;
        return true;
    }
    if (buffer_size >= *new_size)
        return true;
    if (!grow_store(*buffer, GL_ARRAY_BUFFER, buffer_size, *new_size))
        return false;
    buffer_size = *new_size;
    return true;
}

bool array_t::fits(std::int64_t element_count) const {
    const auto needed = checked_byte_size(element_count, stride_bytes());
    return needed && buffer_size >= *needed;
}

void array_t::write_all(const void* data) {
    bind();
    if (buffer && data != nullptr)
        glBufferSubData(GL_ARRAY_BUFFER, 0, buffer_size, data);
    unbind();
}

void array_t::write_one(std::int64_t index, const void* data) {
    bind();
    const auto offset = checked_byte_size(index, stride_bytes());
    if (buffer && data != nullptr && offset)
        glBufferSubData(GL_ARRAY_BUFFER, *offset, stride_bytes(), data);
    unbind();
}

void array_t::read_one(std::int64_t index, void* data) const {
    bind();
    const auto offset = checked_byte_size(index, stride_bytes());
    if (buffer && data != nullptr && offset)
        glGetBufferSubData(GL_ARRAY_BUFFER, *offset, stride_bytes(), data);
    unbind();
}

void* array_t::map() {
    return map_for(GL_MAP_READ_BIT | GL_MAP_WRITE_BIT);
}

const void* array_t::map() const {
    return map_for(GL_MAP_READ_BIT);
}

void* array_t::map_for(GLbitfield access) const {
    if (!buffer) {
        std::cerr << "array buffer is not allocated." << std::endl;
        return nullptr;
    }
    void* const pointer = buffer->MapBufferRange(0, buffer_size, access);
    if (pointer == nullptr)
        std::cerr << "array pointer is NULL." << std::endl;
    return pointer;
}

void array_t::unmap() const {
    if (buffer)
        buffer->UnmapBuffer();
}

void array_t::bind_to(const vertex_array_ref& vertex_array, GLuint first_location) const {
    bind_attributes(vertex_array, attributes, stride, buffer_id(), first_location);
}

void array_t::bind() const {
    glBindBuffer(GL_ARRAY_BUFFER, buffer ? buffer->id() : gl_no_object);
}

void array_t::unbind() const {
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void array_t::release() {
    buffer.reset();
    buffer_size = 0;
    elements = 0;
}

std::int64_t array_t::bytes_in_use() const {
    return std::min(elements * stride_bytes(), buffer_size);
}

}  // namespace ulk3d
