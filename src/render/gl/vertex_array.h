#pragma once

#include <GL/glew.h>

#include <cstdint>
#include <vector>

#include "render/gl/buffer.h"
#include "render/gl/element.h"
#include "render/gl/shared_holder.h"

namespace ulk3d {

/// Owner of one GL vertex array, which records which buffers feed which attribute locations.
///
/// Can be constructed without a context; the first `allocate` creates the name. Every operation but `bind`
/// leaves no vertex array bound.
class vertex_array_t {
  public:
    vertex_array_t() = default;
    ~vertex_array_t() { release(); }
    vertex_array_t(const vertex_array_t&) = delete;
    vertex_array_t& operator=(const vertex_array_t&) = delete;

    /// Creates a name if there is none.
    void allocate();
    /// Deletes the name; without a current context only forgets it.
    void release();

    /// The GL name, `gl_no_object` before `allocate`.
    GLuint id() const { return allocated ? name : gl_no_object; }

    void bind() const;
    void unbind() const;

    /// Feeds the attributes of `list`, interleaved in the buffer `buffer_id` with a stride of `stride` words,
    /// to the locations from `first_location` on. Two arrays can feed one vertex array: the second one starts
    /// at the location after the first one's, or lower to replace attributes. Does nothing when `buffer_id`
    /// is 0.
    void bind_attributes(const element_list_t& list, GLuint stride, GLuint buffer_id,
                         GLuint first_location) const;

    /// An array that feeds `count` locations from `first_location` on.
    struct feed_t {
        shared_holder<buffer_t> buffer;
        const char* no_store;  ///< the line for a store that can not be made, after the buffer's own
        GLuint first_location;
        GLuint count;
    };
    /// Remembers which store a draw needs at these locations, in place of those before. It lives as long as
    /// it is remembered.
    void fed_by(const feed_t& feed);
    /// Makes the stores of all arrays that feed this, where they are not there yet. False, after the lines of
    /// a mapping that fails, when there is no memory for one.
    [[nodiscard]] bool provide() const;

    /// Draws the vertices 0 to `count` - 1. False when there is no memory for what they are drawn from.
    bool draw(GLenum mode, std::int64_t count) const;

  private:
    std::vector<feed_t> feeds;
    GLuint name = 0;
    bool allocated = false;
};

/// How models hold a vertex array; copies share it.
using vertex_array_ref = shared_holder<vertex_array_t>;

/// The operations of the same names on a holder; they do nothing, with success, when it is null.
void bind_attributes(const vertex_array_ref& holder, const element_list_t& list, GLuint stride,
                     GLuint buffer_id, GLuint first_location);
bool draw(const vertex_array_ref& holder, GLenum mode, std::int64_t count);

/// A count as GL's draw calls take it: limited to 2147483647.
GLsizei to_draw_count(std::int64_t count);

}  // namespace ulk3d
