#include "render/gl/program.h"

#include <iostream>

#include "gltextures/gr_context.h"
#include "render/gl/info_log.h"
#include "render/gl/shader.h"

namespace ulk3d {

program_t::~program_t() {
    if (id != 0 && libgr::grContextIsCurrent())
        glDeleteProgram(id);
}

bool program_t::create() {
    if (id != 0)
        return false;
    id = glCreateProgram();
    return id != 0;
}

void program_t::attach(const shader_t& shader) const {
    if (id != 0)
        shader.attach(id);
}

void program_t::detach(const shader_t& shader) const {
    if (id != 0)
        shader.detach(id);
}

bool program_t::link() {
    if (id == 0)
        return false;
    glLinkProgram(id);
    log = fetch_info_log(id, glGetProgramiv, glGetProgramInfoLog);
    GLint linked = GL_FALSE;
    glGetProgramiv(id, GL_LINK_STATUS, &linked);
    return linked != GL_FALSE;
}

void program_t::use() const {
    if (id != 0)
        glUseProgram(id);
}

void program_t::unuse() {
    glUseProgram(0);
}

GLint program_t::uniform(const char* name) const {
    const GLint location = glGetUniformLocation(id, name);
    if (location == -1)
        std::cerr << name << ": can't determine the location." << std::endl;
    return location;
}

}  // namespace ulk3d
