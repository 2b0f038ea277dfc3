#pragma once

#include <GL/glew.h>

namespace ulk_test {

/// One integer of GL's state, such as a binding.
inline GLint gl_integer(GLenum name) {
    GLint value = -1;
    glGetIntegerv(name, &value);
    return value;
}

/// Size in bytes of the store of buffer `id`; 0 when it has none.
inline GLint64 gl_store_size(GLuint id) {
    GLint64 size = -1;
    glBindBuffer(GL_COPY_WRITE_BUFFER, id);
    glGetBufferParameteri64v(GL_COPY_WRITE_BUFFER, GL_BUFFER_SIZE, &size);
    glBindBuffer(GL_COPY_WRITE_BUFFER, 0);
    return size;
}

/// True while buffer `id` is mapped.
inline bool gl_is_mapped(GLuint id) {
    GLint mapped = -1;
    glBindBuffer(GL_COPY_WRITE_BUFFER, id);
    glGetBufferParameteriv(GL_COPY_WRITE_BUFFER, GL_BUFFER_MAPPED, &mapped);
    glBindBuffer(GL_COPY_WRITE_BUFFER, 0);
    return mapped == GL_TRUE;
}

/// Leaves a GL_INVALID_ENUM pending for the next grCheckError to print.
inline void make_gl_error() {
    glEnable(0xFFFF);
}

}  // namespace ulk_test
