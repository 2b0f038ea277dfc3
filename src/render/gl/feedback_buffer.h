#pragma once

#include <GL/glew.h>

#include <cstdint>

namespace ulk3d {

/// Owner of a buffer of 32-bit words that transform feedback writes to. Models hold it by value.
///
/// Can be constructed without a context; every operation needs a current one.
class feedback_buffer_t {
  public:
    feedback_buffer_t() = default;
    ~feedback_buffer_t() { release(); }
    feedback_buffer_t(const feedback_buffer_t&) = delete;
    feedback_buffer_t& operator=(const feedback_buffer_t&) = delete;

    /// Makes a store of exactly `word_count` 32-bit words; the old content is lost. False, without a message,
    /// when GL gives no name, for a count that is negative or too large for a 64-bit size, or when memory
    /// runs out (the sizes are then 0).
    [[nodiscard]] bool allocate(std::int64_t word_count);
    /// Exchanges the buffers of both. Never fails.
    void swap(feedback_buffer_t& other) noexcept;
    /// Deletes the buffer; without a current context only forgets its name.
    void release();

    /// Maps the whole buffer: for reading and writing, or for reading only when it is const. Null, without a
    /// message, when there is no buffer or GL can not map it. Use the guards of render/gl/mapped_span.h.
    [[nodiscard]] void* map();
    [[nodiscard]] const void* map() const;
    void unmap() const;

    void bind() const;
    void unbind() const;

    /// Bind the buffer to a binding point of shader storage, or unbind it.
    void bind_base(GLuint index) const;
    void unbind_base(GLuint index) const;

    bool has_buffer() const { return id != 0; }
    /// GL name; 0 without a buffer.
    GLuint buffer_id() const { return id; }
    /// Size of the store in 32-bit words.
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
