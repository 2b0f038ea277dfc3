#pragma once

#include <GL/glew.h>

#include <string>

namespace ulk3d {

class shader_t;

/// Owner of one GL program. Built without a context; every operation needs a current one.
class program_t {
  public:
    program_t() = default;
    ~program_t();
    program_t(const program_t&) = delete;
    program_t& operator=(const program_t&) = delete;

    /// Makes the program; false when there is one already or GL gives none.
    [[nodiscard]] bool create();

    /// Do nothing before `create`.
    void attach(const shader_t& shader) const;
    void detach(const shader_t& shader) const;

    /// Links; false before `create` or when the program does not link. `link_log()` holds GL's info log
    /// after, also on success.
    [[nodiscard]] bool link();

    /// Makes the program current; does nothing before `create`.
    void use() const;
    /// Makes no program current.
    static void unuse();

    /// Location of a uniform. One that the linked program does not use gives -1, which GL's uniform calls
    /// ignore, and prints "<name>: can't determine the location." on the standard error stream.
    GLint uniform(const char* name) const;

    /// GL name, 0 when there is none.
    GLuint program_id() const { return id; }
    const std::string& link_log() const { return log; }

  private:
    std::string log;
    GLuint id = 0;
};

}  // namespace ulk3d
