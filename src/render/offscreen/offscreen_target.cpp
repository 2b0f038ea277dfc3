#include "render/offscreen/offscreen_target.h"

#include "gltextures/gr_context.h"

namespace ulk3d {

namespace {

GLuint binding(GLenum name) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    return static_cast<GLuint>(value);
}

void attach_storage(GLuint renderbuffer, GLenum format, int width, int height, GLenum attachment) {
    glBindRenderbuffer(GL_RENDERBUFFER, renderbuffer);
    glRenderbufferStorage(GL_RENDERBUFFER, format, width, height);
    glFramebufferRenderbuffer(GL_DRAW_FRAMEBUFFER, attachment, GL_RENDERBUFFER, renderbuffer);
}

}  // namespace

offscreen_target_t::offscreen_target_t(int target_width, int target_height)
    : width(target_width), height(target_height) {
    GLint largest = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &largest);
    if (width <= 0 || height <= 0 || width > largest || height > largest)
        return;
    const GLuint former = binding(GL_DRAW_FRAMEBUFFER_BINDING);
    glGenFramebuffers(1, &framebuffer);
    glGenRenderbuffers(static_cast<GLsizei>(renderbuffers.size()), renderbuffers.data());
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, framebuffer);
    attach_storage(renderbuffers[0], GL_RGBA8, width, height, GL_COLOR_ATTACHMENT0);
    attach_storage(renderbuffers[1], GL_DEPTH_COMPONENT24, width, height, GL_DEPTH_ATTACHMENT);
    glBindRenderbuffer(GL_RENDERBUFFER, 0);
    complete = glCheckFramebufferStatus(GL_DRAW_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, former);
}

offscreen_target_t::~offscreen_target_t() {
    if (!libgr::grContextIsCurrent())
        return;
    glDeleteFramebuffers(1, &framebuffer);
    glDeleteRenderbuffers(static_cast<GLsizei>(renderbuffers.size()), renderbuffers.data());
}

void offscreen_target_t::bind() const {
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glViewport(0, 0, width, height);
}

rgba_picture_t offscreen_target_t::read_pixels() const {
    rgba_picture_t picture;
    if (!complete)
        return picture;
    picture.width = width;
    picture.height = height;
    picture.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));

    const GLuint former_framebuffer = binding(GL_READ_FRAMEBUFFER_BINDING);
    const GLuint former_pack_buffer = binding(GL_PIXEL_PACK_BUFFER_BINDING);
    GLint former_row_length = 0;
    glGetIntegerv(GL_PACK_ROW_LENGTH, &former_row_length);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, framebuffer);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    // Rows of four-byte pixels satisfy every pack alignment but 8; rows read singly need none.
    const std::size_t row = static_cast<std::size_t>(width);
    for (int y = 0; y < height; ++y)
        glReadPixels(0, height - 1 - y, width, 1, GL_RGBA, GL_UNSIGNED_BYTE,
                     picture.pixels.data() + static_cast<std::size_t>(y) * row);
    glPixelStorei(GL_PACK_ROW_LENGTH, former_row_length);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, former_pack_buffer);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, former_framebuffer);
    return picture;
}

}  // namespace ulk3d
