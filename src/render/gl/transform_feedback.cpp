#include "render/gl/transform_feedback.h"

#include "gltextures/gr_check_error.h"
#include "gltextures/gr_context.h"
#include "render/gl/program.h"

namespace ulk3d {

using libgr::grCheckError;

transform_feedback_t::transform_feedback_t() : native(GLEW_VERSION_4_0 != 0) {}

transform_feedback_t::~transform_feedback_t() {
    if (native && id != 0 && libgr::grContextIsCurrent())
        glDeleteTransformFeedbacks(1, &id);
    id = 0;
}

bool transform_feedback_t::allocate() {
    if (!native) {
        id = 1;
        return true;
    }
    if (id == 0)
        glGenTransformFeedbacks(1, &id);
    if (id == 0)
        return false;
    // The first bind creates the object behind the name.
    glBindTransformFeedback(GL_TRANSFORM_FEEDBACK, id);
    glBindTransformFeedback(GL_TRANSFORM_FEEDBACK, 0);
    return true;
}

void transform_feedback_t::varyings(const program_t& program, GLsizei count,
                                    const GLchar* const* names) const {
    if (native)
        glBindTransformFeedback(GL_TRANSFORM_FEEDBACK, id);
    glTransformFeedbackVaryings(program.program_id(), count, names, GL_INTERLEAVED_ATTRIBS);
    if (native)
        glBindTransformFeedback(GL_TRANSFORM_FEEDBACK, 0);
}

void transform_feedback_t::begin(GLenum primitive_mode, GLuint buffer_id) const {
    grCheckError("transform_feedback_t::begin(0)");
    if (buffer_id == 0)
        return;
    if (native)
        glBindTransformFeedback(GL_TRANSFORM_FEEDBACK, id);
    grCheckError("transform_feedback_t::begin(1)");
    glBindBufferBase(GL_TRANSFORM_FEEDBACK_BUFFER, 0, buffer_id);
    grCheckError("transform_feedback_t::begin(2)");
    glBeginTransformFeedback(primitive_mode);
    grCheckError("transform_feedback_t::begin(3)");
}

void transform_feedback_t::end() const {
    grCheckError("transform_feedback_t::end(0)");
    glEndTransformFeedback();
    grCheckError("transform_feedback_t::end(1)");
    glBindBufferBase(GL_TRANSFORM_FEEDBACK_BUFFER, 0, 0);
    grCheckError("transform_feedback_t::end(4)");
    // Tests the flag as it is now, not `native`: in a 4.0 context the default object is always bound
    // afterwards.
    if (GLEW_VERSION_4_0)
        glBindTransformFeedback(GL_TRANSFORM_FEEDBACK, 0);
}

void transform_feedback_t::buffer_base(GLuint index, GLuint buffer_id) const {
    if (glTransformFeedbackBufferBase != nullptr)
        glTransformFeedbackBufferBase(id, index, buffer_id);
}

void transform_feedback_t::buffer_base_clear(GLuint index) const {
    if (glTransformFeedbackBufferBase != nullptr)
        glTransformFeedbackBufferBase(id, index, 0);
}

}  // namespace ulk3d
