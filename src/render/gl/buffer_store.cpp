#include "render/gl/buffer_store.h"

namespace ulk3d {

std::optional<std::int64_t> checked_byte_size(std::int64_t count, std::int64_t unit) {
    std::int64_t bytes = 0;
    if (count < 0 || unit < 0 || __builtin_mul_overflow(count, unit, &bytes))
        return std::nullopt;
    return bytes;
}

bool specify_store(GLenum target, std::int64_t byte_size, GLenum usage) {
    glBufferData(target, byte_size, nullptr, usage);
    GLint64 stored = -1;
    glGetBufferParameteri64v(target, GL_BUFFER_SIZE, &stored);
    return stored == byte_size;
}

bool grow_store(buffer_t& buffer, GLenum target, std::int64_t old_size, std::int64_t new_size) {
    buffer_t copy;
    copy.allocate(GL_COPY_READ_BUFFER);
    if (copy.id() == 0)
        return false;
    copy.bind();
    if (!specify_store(GL_COPY_READ_BUFFER, old_size, GL_STATIC_COPY)) {
        copy.unbind();
        return false;
    }
    buffer.bind();
    glCopyBufferSubData(target, GL_COPY_READ_BUFFER, 0, 0, old_size);
    const bool grown = specify_store(target, new_size, GL_DYNAMIC_DRAW);
    const bool writable = grown || specify_store(target, old_size, GL_DYNAMIC_DRAW);
    if (writable)
        glCopyBufferSubData(GL_COPY_READ_BUFFER, target, 0, 0, old_size);
    copy.unbind();
    copy.release();
    buffer.unbind();
    return grown;
}

}  // namespace ulk3d
