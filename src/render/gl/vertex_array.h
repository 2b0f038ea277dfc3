#pragma once

#include <GL/glew.h>

#include <cstdint>

#include "render/gl/buffer.h"
#include "render/gl/element.h"
#include "render/gl/shared_holder.h"

namespace ulk3d {

/// Owner of one GL vertex array name: which buffers feed which attribute locations.
///
/// Built without a context; the name comes into being at the first `allocate`. Every operation leaves no
/// vertex array bound.
class vertex_array_t {
  public:
    vertex_array_t() = default;
    ~vertex_array_t() { release(); }
    vertex_array_t(const vertex_array_t&) = delete;
    vertex_array_t& operator=(const vertex_array_t&) = delete;

    /// Makes a name when there is none.
    void allocate();
    /// Deletes the name. Without a current context the name is only forgotten.
    void release();

    /// The GL name, `gl_no_object` before `allocate`.
    GLuint id() const { return allocated ? name : gl_no_object; }

    void bind() const;
    void unbind() const;

    /// Feeds the attributes of `list` from the buffer `buffer_id`, interleaved, `stride` words apart, to the
    /// locations `first_location` and up. Two arrays can feed one vertex array: the second one starts where
    /// the first has ended, or below that to replace attributes. Does nothing when `buffer_id` is 0.
    void bind_attributes(const element_list_t& list, GLuint stride, GLuint buffer_id,
                         GLuint first_location) const;

    /// Draws the vertices 0 to `count` - 1.
    void draw(GLenum mode, std::int64_t count) const;

  private:
    GLuint name = 0;
    bool allocated = false;
};

/// How models hold a vertex array.
using vertex_array_ref = shared_holder<vertex_array_t>;

/// The operations of the same names on a holder that may be null; they then do nothing.
void bind_attributes(const vertex_array_ref& holder, const element_list_t& list, GLuint stride,
                     GLuint buffer_id, GLuint first_location);
void draw(const vertex_array_ref& holder, GLenum mode, std::int64_t count);

/// A count as GL's draw calls take it: at most 2147483647.
GLsizei to_draw_count(std::int64_t count);

}  // namespace ulk3d
