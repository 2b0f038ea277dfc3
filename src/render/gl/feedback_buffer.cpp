#include "render/gl/feedback_buffer.h"

#include <utility>

#include "render/gl/buffer_store.h"

namespace ulk3d {

bool feedback_buffer_t::allocate(std::int64_t word_count) {
    const auto needed = checked_byte_size(word_count, 4);
    if (!needed)
        return false;
    elements = word_count;
    buffer_size = *needed;
    if (!has_buffer())
        store.release();
    store.allocate(GL_TRANSFORM_FEEDBACK_BUFFER);
    if (!has_buffer())
        return false;
    const bool is_granted = store.ask_for(buffer_size);
    if (!is_granted)
        elements = buffer_size = 0;
    return is_granted;
}

void feedback_buffer_t::swap(feedback_buffer_t& other) noexcept {
    store.swap(other.store);
    std::swap(buffer_size, other.buffer_size);
    std::swap(elements, other.elements);
}

void feedback_buffer_t::release() {
    store.release();
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
    if (!has_buffer() || !provide())
        return nullptr;
    bind();
    void* const pointer = glMapBufferRange(GL_TRANSFORM_FEEDBACK_BUFFER, 0, buffer_size, access);
    unbind();
    return pointer;
}

void feedback_buffer_t::unmap() const {
    if (!has_buffer())
        return;
    bind();
    glUnmapBuffer(GL_TRANSFORM_FEEDBACK_BUFFER);
    unbind();
}

void feedback_buffer_t::bind() const {
    static_cast<void>(provide());  // has printed its line; GL refuses what is then done without a store
    glBindBuffer(GL_TRANSFORM_FEEDBACK_BUFFER, buffer_id());
}

void feedback_buffer_t::unbind() const {
    glBindBuffer(GL_TRANSFORM_FEEDBACK_BUFFER, 0);
}

void feedback_buffer_t::bind_base(GLuint index) const {
    static_cast<void>(provide());
    glBindBufferBase(GL_SHADER_STORAGE_BUFFER, index, buffer_id());
}

void feedback_buffer_t::unbind_base(GLuint index) const {
    glBindBufferBase(GL_SHADER_STORAGE_BUFFER, index, 0);
}

}  // namespace ulk3d
