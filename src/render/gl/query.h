#pragma once

#include <GL/glew.h>

#include <cstdint>

namespace ulk3d {

/// Owner of one GL query. Can be constructed without a context; every operation needs a current one.
class query_t {
  public:
    query_t() = default;
    ~query_t() { release(); }
    query_t(const query_t&) = delete;
    query_t& operator=(const query_t&) = delete;

    /// Creates a name if there is none.
    void allocate();
    /// Deletes the name; without a current context only forgets it.
    void release();

    /// Starts to count what `target` names, on the vertex stream `index`; allocates if necessary.
    void begin(GLenum target, GLuint index);
    void end();

    /// The count between the last `begin` and `end`; waits until the GPU has it.
    std::uint64_t GetQuery() const;

    bool is_allocated() const { return allocated; }
    /// The target being counted; 0 outside of `begin` and `end`.
    GLenum current_target() const { return target; }
    GLuint current_index() const { return index; }

  private:
    bool allocated = false;
    GLuint id = 0;
    GLenum target = 0;
    GLuint index = 0;
};

}  // namespace ulk3d
