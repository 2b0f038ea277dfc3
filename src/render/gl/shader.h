#pragma once

#include <GL/glew.h>

#include <string>

namespace ulk3d {

/// Owner of one GL shader. Built without a context; every operation needs a current one.
class shader_t {
  public:
    shader_t() = default;
    ~shader_t() { release(); }
    shader_t(const shader_t&) = delete;
    shader_t& operator=(const shader_t&) = delete;

    /// Compiles `count` strings of the given lengths as a shader of `type`; a shader that exists is compiled
    /// anew and keeps its first type. `compile_log()` holds GL's info log after, also on success.
    ///
    /// False when GL gives no shader, or, with "shader_t::allocate() compile status error." on the standard
    /// error stream, when it does not compile. What to do then is the caller's decision.
    [[nodiscard]] bool allocate(GLenum type, GLsizei count, const GLchar* const* strings,
                                const GLint* lengths);
    /// The same for one source of `length` bytes.
    [[nodiscard]] bool allocate(GLenum type, const GLchar* source, GLint length);
    /// The same for the source in a file, found as `load_shader_file` does; false when there is none.
    [[nodiscard]] bool allocate_file(GLenum type, const char* name, const char* base_directory);

    /// Deletes the shader. Without a current context the name is only forgotten.
    void release();

    void attach(GLuint program_id) const;
    void detach(GLuint program_id) const;

    /// GL name, 0 when there is none.
    GLuint shader_id() const { return id; }
    const std::string& compile_log() const { return log; }

  private:
    std::string log;
    GLuint id = 0;
};

}  // namespace ulk3d
