#pragma once

#include <GL/glew.h>

namespace ulk3d {

class program_t;

/// Captures the outputs of a vertex stage in a feedback_buffer_t.
///
/// Uses a transform feedback object of GL 4.0 if the loader's GL 4.0 flag is set at construction, which
/// requires that the entry points have been loaded. An instance constructed before the first context uses the
/// context's default object instead, which does the same in every version.
class transform_feedback_t {
  public:
    transform_feedback_t();
    ~transform_feedback_t();
    transform_feedback_t(const transform_feedback_t&) = delete;
    transform_feedback_t& operator=(const transform_feedback_t&) = delete;

    /// Creates the object if one is used. False, without a message, when GL gives none.
    [[nodiscard]] bool allocate();

    /// Sets the outputs of `program` to capture, interleaved. Must be called before the program is linked.
    void varyings(const program_t& program, GLsizei count, const GLchar* const* names) const;

    /// Starts the capture into the buffer `buffer_id`. When that is 0, only checks for a pending GL error.
    void begin(GLenum primitive_mode, GLuint buffer_id) const;
    void end() const;

    /// Bind the buffer `buffer_id` to the object's binding point `index`, or unbind it. This needs GL 4.5; on
    /// lower versions nothing happens.
    void buffer_base(GLuint index, GLuint buffer_id) const;
    void buffer_base_clear(GLuint index) const;

    /// True when a GL object of its own is used.
    bool is_native() const { return native; }
    /// GL name; 0 before `allocate`, 1 when allocated without a GL object of its own.
    GLuint feedback_id() const { return id; }

  private:
    bool native;
    GLuint id = 0;
};

}  // namespace ulk3d
