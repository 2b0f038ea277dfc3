#include "render/gl/shader.h"

#include <iostream>
#include <limits>
#include <utility>

#include "gltextures/gr_context.h"
#include "render/gl/info_log.h"
#include "render/gl/shader_file.h"

namespace ulk3d {

bool shader_t::allocate(GLenum type, GLsizei count, const GLchar* const* strings, const GLint* lengths) {
    if (id == 0)
        id = glCreateShader(type);
    if (id == 0)
        return false;
    glShaderSource(id, count, strings, lengths);
    glCompileShader(id);
    log = fetch_info_log(id, glGetShaderiv, glGetShaderInfoLog);
    GLint compiled = GL_FALSE;
    glGetShaderiv(id, GL_COMPILE_STATUS, &compiled);
    if (compiled == GL_FALSE) {
        std::cerr << "shader_t::allocate() compile status error." << std::endl;
        return false;
    }
    return true;
}

bool shader_t::allocate(GLenum type, const GLchar* source, GLint length) {
    return allocate(type, 1, &source, &length);
}

bool shader_t::allocate_file(GLenum type, const char* name, const char* base_directory) {
    shader_text_t text;
    if (!load_shader_file(text, name, base_directory) ||
        std::cmp_greater(text.size(), std::numeric_limits<GLint>::max()))
        return false;
    // An empty text has no first byte to point to.
    return allocate(type, text.empty() ? "" : text.begin(), static_cast<GLint>(text.size()));
}

void shader_t::release() {
    if (id != 0 && libgr::grContextIsCurrent())
        glDeleteShader(id);
    id = 0;
}

void shader_t::attach(GLuint program_id) const {
    glAttachShader(program_id, id);
}

void shader_t::detach(GLuint program_id) const {
    glDetachShader(program_id, id);
}

}  // namespace ulk3d
