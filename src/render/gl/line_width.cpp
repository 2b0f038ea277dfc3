#include "render/gl/line_width.h"

#include <GL/glew.h>

#include <algorithm>
#include <array>

namespace ulk3d {

namespace {

/// A context without deprecated functions reports an error for every width above 1, whatever its range.
float widest_line() {
    GLint flags = 0;
    glGetIntegerv(GL_CONTEXT_FLAGS, &flags);
    if ((flags & GL_CONTEXT_FLAG_FORWARD_COMPATIBLE_BIT) != 0)
        return 1;
    std::array<GLfloat, 2> range{1, 1};
    glGetFloatv(GL_ALIASED_LINE_WIDTH_RANGE, range.data());
    return std::max(range[1], 1.0F);
}

}  // namespace

void set_line_width(float pixels) {
    glLineWidth(pixels > 1 ? std::min(pixels, widest_line()) : pixels);
}

}  // namespace ulk3d
