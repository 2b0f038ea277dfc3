#pragma once

#include <GL/glew.h>

#include <cstdint>

namespace ulk3d {

/// Owner of a buffer that transform feedback writes into, a run of 32-bit words. Models embed it by value.
///
/// Built without a context; every operation needs a current one.
class feedback_buffer_t {
  public:
    feedback_buffer_t() = default;
    ~feedback_buffer_t() { release(); }
    feedback_buffer_t(const feedback_buffer_t&) = delete;
    feedback_buffer_t& operator=(const feedback_buffer_t&) = delete;

    /// Makes a store of exactly `word_count` 32-bit words; former content is lost. False when no name could
    /// be made, the count can not be, or there is no memory (the sizes are then 0).
    [[nodiscard]] bool allocate(std::int64_t word_count);
    /// Deletes the buffer. Without a current context the name is only forgotten.
    void release();

    /// Maps the whole buffer: for reading and writing, or when it is const for reading only. Null without a
    /// buffer or when GL can not. Use the guards of render/gl/mapped_span.h.
    [[nodiscard]] void* map();
    [[nodiscard]] const void* map() const;
    void unmap() const;

    void bind() const;
    void unbind() const;

    /// Gives the buffer to, or takes it from, a binding point of shader storage.
    void bind_base(GLuint index) const;
    void unbind_base(GLuint index) const;

    bool has_buffer() const { return id != 0; }
    /// GL name, 0 when there is none.
    GLuint buffer_id() const { return id; }
    /// 32-bit words.
    std::int64_t element_count() const { return elements; }
    std::int64_t byte_size() const { return buffer_size; }
    std::int64_t bytes_in_use() const { return buffer_size; }

  private:
    void* map_for(GLbitfield access) const;

    GLuint id = 0;
    std::int64_t buffer_size = 0;
    std::int64_t elements = 0;
};

}  // namespace ulk3d
