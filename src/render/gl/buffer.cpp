#include "render/gl/buffer.h"

#include <iostream>

#include "gltextures/gr_context.h"

namespace ulk3d {

void buffer_t::allocate(GLenum binding_target) {
    if (!allocated) {
        glGenBuffers(1, &name);
        allocated = true;
    }
    target = binding_target;
}

void buffer_t::release() {
    if (!allocated)
        return;
    if (libgr::grContextIsCurrent())
        glDeleteBuffers(1, &name);
    allocated = false;
}

void buffer_t::bind() const {
    glBindBuffer(target, id());
}

void buffer_t::unbind() const {
    glBindBuffer(target, 0);
}

void* buffer_t::MapBufferRange(GLintptr offset, GLsizeiptr length, GLbitfield access) {
    bind();
    void* const pointer = glMapBufferRange(target, offset, length, access);
    unbind();
    if ((access & GL_MAP_WRITE_BIT) != 0)
        ++written_mappings;
    if (pointer == nullptr)
        std::cerr << "buffer_t::MapBufferRange(): ptr is NULL." << std::endl;
    return pointer;
}

void buffer_t::UnmapBuffer() {
    bind();
    glUnmapBuffer(target);
    unbind();
}

}  // namespace ulk3d
