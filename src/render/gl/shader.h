#pragma once

#include <GL/glew.h>

#include <string>

namespace ulk3d {

/// Owner of one GL shader. Can be constructed without a context; every operation needs a current one.
class shader_t {
  public:
    shader_t() = default;
    ~shader_t() { release(); }
    shader_t(const shader_t&) = delete;
    shader_t& operator=(const shader_t&) = delete;

    /// Compiles `count` strings of the given lengths in bytes as a shader of `type`. An existing shader is
    /// compiled again and keeps its first type. Afterwards `compile_log()` has GL's info log, even on
    /// success.
    ///
    /// False when GL gives no shader (without a message), or when the source does not compile:
    /// "shader_t::allocate() compile status error." is then printed to the standard error stream. The caller
    /// decides what to do.
    [[nodiscard]] bool allocate(GLenum type, GLsizei count, const GLchar* const* strings,
                                const GLint* lengths);
    /// The same for one source of `length` bytes.
    [[nodiscard]] bool allocate(GLenum type, const GLchar* source, GLint length);
    /// The same for the source in a file, found as by `load_shader_file`; also false, without a message, when
    /// there is none.
    [[nodiscard]] bool allocate_file(GLenum type, const char* name, const char* base_directory);

    /// Deletes the shader; without a current context only forgets its name.
    void release();

    void attach(GLuint program_id) const;
    void detach(GLuint program_id) const;

    /// GL name; 0 without a shader.
    GLuint shader_id() const { return id; }
    const std::string& compile_log() const { return log; }

  private:
    std::string log;
    GLuint id = 0;
};

}  // namespace ulk3d
