#pragma once

#include <GL/glew.h>

namespace ulk3d {

class program_t;

/// Captures the outputs of a vertex stage into a feedback_buffer_t.
///
/// An object of GL 4.0 is used only when the GL 4.0 flag is set at construction, that is, when the entry
/// points are loaded by then. Members of objects that live before the first context use the context's own
/// default object instead: it does the same on every version.
class transform_feedback_t {
  public:
    transform_feedback_t();
    ~transform_feedback_t();
    transform_feedback_t(const transform_feedback_t&) = delete;
    transform_feedback_t& operator=(const transform_feedback_t&) = delete;

    /// Makes the object where one is used; false when GL gives none.
    [[nodiscard]] bool allocate();

    /// Names the outputs of `program` to capture, interleaved; must come before the program is linked.
    void varyings(const program_t& program, GLsizei count, const GLchar* const* names) const;

    /// Starts the capture into the buffer `buffer_id`; does nothing but its first mark when that is 0.
    void begin(GLenum primitive_mode, GLuint buffer_id) const;
    void end() const;

    /// Gives the buffer `buffer_id` to, or takes it from, the object's binding point `index`. Only GL 4.5
    /// can; nothing happens on lower versions.
    void buffer_base(GLuint index, GLuint buffer_id) const;
    void buffer_base_clear(GLuint index) const;

    /// True when an object of its own is used.
    bool is_native() const { return native; }
    /// GL name; 1 when allocated without an object of its own; 0 before `allocate`.
    GLuint feedback_id() const { return id; }

  private:
    bool native;
    GLuint id = 0;
};

}  // namespace ulk3d
