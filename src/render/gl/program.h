#pragma once

#include <GL/glew.h>

#include <string>

namespace ulk3d {

class shader_t;

/// Owner of one GL program. Can be constructed without a context; every operation needs a current one.
class program_t {
  public:
    program_t() = default;
    ~program_t();
    program_t(const program_t&) = delete;
    program_t& operator=(const program_t&) = delete;

    /// Creates the program. False when there is one already or GL gives none.
    [[nodiscard]] bool create();

    /// Do nothing before `create`.
    void attach(const shader_t& shader) const;
    void detach(const shader_t& shader) const;

    /// Links. False, without a message, before `create` or when the program does not link. Afterwards
    /// `link_log()` has GL's info log, even on success.
    [[nodiscard]] bool link();

    /// Makes this program the one in use; does nothing before `create`.
    void use() const;
    /// Leaves no program in use.
    static void unuse();

    /// Location of a uniform. For one that the linked program does not have, prints "<name>: can't determine
    /// the location." to the standard error stream and returns -1, which GL's uniform calls ignore.
    GLint uniform(const char* name) const;

    /// GL name; 0 before `create`.
    GLuint program_id() const { return id; }
    const std::string& link_log() const { return log; }

  private:
    std::string log;
    GLuint id = 0;
};

}  // namespace ulk3d
