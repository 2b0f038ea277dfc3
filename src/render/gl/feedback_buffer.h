#pragma once

#include <GL/glew.h>

#include <cstdint>

#include "render/gl/buffer.h"

namespace ulk3d {

/// Owner of a buffer of 32-bit words that transform feedback writes to. Models hold it by value.
///
/// Can be constructed without a context; every operation needs a current one.
class feedback_buffer_t {
  public:
    /// Asks for a store of exactly `word_count` 32-bit words, which is made at its first use
    /// (render/gl/buffer.h); the old content is lost. False, without a message, when GL gives no name, for a
    /// count that is negative or too large for a 64-bit size, or when memory runs out (the sizes are then 0).
    [[nodiscard]] bool allocate(std::int64_t word_count);
    /// Exchanges the buffers of both. Never fails.
    void swap(feedback_buffer_t& other) noexcept;
    /// Deletes the buffer; without a current context only forgets its name.
    void release();

    /// Gives the store back until its next use, which finds undefined content; does nothing without one.
    void give_back() { store.give_back(); }
    /// Makes the store if it is not there yet: call it before a capture. False, after the line of `buffer_t`,
    /// when there is no memory for it; without a buffer there is nothing to make.
    [[nodiscard]] bool provide() const { return store.provide(); }

    /// Maps the whole buffer: for reading and writing, or for reading only when it is const. Null, without a
    /// message, when there is no buffer or GL can not map it, and after the line of `provide` when there is
    /// no memory for it. Use the guards of render/gl/mapped_span.h.
    [[nodiscard]] void* map();
    [[nodiscard]] const void* map() const;
    void unmap() const;

    /// Bind the buffer, with its store if that can be made, or unbind it.
    void bind() const;
    void unbind() const;

    /// The same on a binding point of shader storage.
    void bind_base(GLuint index) const;
    void unbind_base(GLuint index) const;

    bool has_buffer() const { return buffer_id() != 0; }
    /// GL name; 0 without a buffer.
    GLuint buffer_id() const { return store.has_name() ? store.id() : 0; }
    /// Size of the store in 32-bit words.
    std::int64_t element_count() const { return elements; }
    std::int64_t byte_size() const { return buffer_size; }
    std::int64_t bytes_in_use() const { return buffer_size; }

  private:
    void* map_for(GLbitfield access) const;

    buffer_t store;
    std::int64_t buffer_size = 0;
    std::int64_t elements = 0;
};

}  // namespace ulk3d
