#pragma once

#include <GL/glew.h>

namespace ulk_test {

/// A single integer of GL's state, a binding for example.
inline GLint gl_integer(GLenum name) {
    GLint value = -1;
    glGetIntegerv(name, &value);
    return value;
}

/// Bytes of the store of buffer `id`, 0 for a buffer without one.
inline GLint64 gl_store_size(GLuint id) {
    GLint64 size = -1;
    glBindBuffer(GL_COPY_WRITE_BUFFER, id);
    glGetBufferParameteri64v(GL_COPY_WRITE_BUFFER, GL_BUFFER_SIZE, &size);
    glBindBuffer(GL_COPY_WRITE_BUFFER, 0);
    return size;
}

/// Leaves a GL_INVALID_ENUM pending, for the next grCheckError to print.
inline void make_gl_error() {
    glEnable(0xFFFF);
}

}  // namespace ulk_test
