#include "render/gl/feedback_buffer.h"

#include <utility>

#include "gltextures/gr_context.h"
#include "render/gl/buffer_store.h"

namespace ulk3d {

bool feedback_buffer_t::allocate(std::int64_t word_count) {
    const auto needed = checked_byte_size(word_count, 4);
    if (!needed)
        return false;
    elements = word_count;
    buffer_size = *needed;
    if (id == 0)
        glGenBuffers(1, &id);
    if (id == 0)
        return false;
    bind();
    const bool stored = specify_store(GL_TRANSFORM_FEEDBACK_BUFFER, buffer_size, GL_DYNAMIC_DRAW);
    unbind();
    if (!stored) {
        elements = 0;
        buffer_size = 0;
    }
    return stored;
}

void feedback_buffer_t::swap(feedback_buffer_t& other) noexcept {
    std::swap(id, other.id);
    std::swap(buffer_size, other.buffer_size);
    std::swap(elements, other.elements);
}

void feedback_buffer_t::release() {
    if (id != 0 && libgr::grContextIsCurrent())
        glDeleteBuffers(1, &id);
    id = 0;
    buffer_size = 0;
    elements = 0;
}

void* feedback_buffer_t::map() {
    return map_for(GL_MAP_READ_BIT | GL_MAP_WRITE_BIT);
}

const void* feedback_buffer_t::map() const {
    return map_for(GL_MAP_READ_BIT);
}

void* feedback_buffer_t::map_for(GLbitfield access) const {
    if (id == 0)
        return nullptr;
    bind();
    void* const pointer = glMapBufferRange(GL_TRANSFORM_FEEDBACK_BUFFER, 0, buffer_size, access);
    unbind();
    return pointer;
}

void feedback_buffer_t::unmap() const {
    if (id == 0)
        return;
    bind();
    glUnmapBuffer(GL_TRANSFORM_FEEDBACK_BUFFER);
    unbind();
}

void feedback_buffer_t::bind() const {
    glBindBuffer(GL_TRANSFORM_FEEDBACK_BUFFER, id);
}

void feedback_buffer_t::unbind() const {
    glBindBuffer(GL_TRANSFORM_FEEDBACK_BUFFER, 0);
}

void feedback_buffer_t::bind_base(GLuint index) const {
    glBindBufferBase(GL_SHADER_STORAGE_BUFFER, index, id);
}

void feedback_buffer_t::unbind_base(GLuint index) const {
    glBindBufferBase(GL_SHADER_STORAGE_BUFFER, index, 0);
}

}  // namespace ulk3d
