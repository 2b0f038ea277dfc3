#pragma once

#include <GL/glew.h>

#include <cstdint>

#include "gltextures/gl_no_object.h"

namespace ulk3d {

using libgr::gl_no_object;

/// Owner of one GL buffer name.
///
/// Built without a context; the name comes into being at the first `allocate` and is deleted by `release` or
/// the destructor. Every other operation needs a current context. The size of the store is kept by the user
/// of the buffer.
class buffer_t {
  public:
    buffer_t() = default;
    ~buffer_t() { release(); }
    buffer_t(const buffer_t&) = delete;
    buffer_t& operator=(const buffer_t&) = delete;

    /// Makes a name when there is none, and takes `target` for the binds that follow.
    void allocate(GLenum target);
    /// Deletes the name. Without a current context the name is only forgotten.
    void release();

    /// The GL name, `gl_no_object` before `allocate`.
    GLuint id() const { return allocated ? name : gl_no_object; }

    void bind() const;
    void unbind() const;

    /// Maps `length` bytes from `offset`; the binding is dropped at once, the mapping stays. On failure
    /// prints "buffer_t::MapBufferRange(): ptr is NULL." on the standard error stream and returns null.
    [[nodiscard]] void* MapBufferRange(GLintptr offset, GLsizeiptr length, GLbitfield access);
    void UnmapBuffer();

    /// Count of the mappings for writing so far: as long as it stays, no host code has changed the content.
    std::uint64_t writable_mappings() const { return written_mappings; }

  private:
    GLuint name = 0;
    GLenum target = 0;
    bool allocated = false;
    std::uint64_t written_mappings = 0;
};

}  // namespace ulk3d
