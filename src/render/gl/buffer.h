#pragma once

#include <GL/glew.h>

#include <cstdint>

#include "gltextures/gl_no_object.h"

namespace ulk3d {

using libgr::gl_no_object;

/// Owner of one GL buffer name.
///
/// Can be constructed without a context. The name is created by the first `allocate` and deleted by `release`
/// or the destructor. Every other operation needs a current context. The owner of the buffer keeps track of
/// the size of its store.
class buffer_t {
  public:
    buffer_t() = default;
    ~buffer_t() { release(); }
    buffer_t(const buffer_t&) = delete;
    buffer_t& operator=(const buffer_t&) = delete;

    /// Creates a name if there is none, and sets the target for later binds. Makes no store.
    void allocate(GLenum target);
    /// Deletes the name; without a current context only forgets it.
    void release();

    /// The GL name, `gl_no_object` before `allocate`.
    GLuint id() const { return allocated ? name : gl_no_object; }

    void bind() const;
    void unbind() const;

    /// Maps `length` bytes from `offset` on; the mapping lasts until `UnmapBuffer`, the buffer is unbound at
    /// once. On failure prints "buffer_t::MapBufferRange(): ptr is NULL." to the standard error stream and
    /// returns null.
    [[nodiscard]] void* MapBufferRange(GLintptr offset, GLsizeiptr length, GLbitfield access);
    void UnmapBuffer();

    /// The number of mappings for writing so far. As long as it is the same, no mapping has changed the
    /// content.
    std::uint64_t writable_mappings() const { return written_mappings; }

  private:
    GLuint name = 0;
    GLenum target = 0;
    bool allocated = false;
    std::uint64_t written_mappings = 0;
};

}  // namespace ulk3d
