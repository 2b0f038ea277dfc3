#pragma once

#include <GL/glew.h>

#include <cstddef>
#include <string>

namespace ulk3d {

/// The info log of a shader or a program, fetched with the pair of GL functions for that kind of object.
inline std::string fetch_info_log(GLuint id, PFNGLGETSHADERIVPROC get_integer,
                                  PFNGLGETSHADERINFOLOGPROC get_log) {
    GLint length = 0;
    get_integer(id, GL_INFO_LOG_LENGTH, &length);
    if (length <= 0)
        return {};
    // GL includes the terminating zero in the length of the log, but not in the count of characters written.
    std::string log(static_cast<std::size_t>(length), '\0');
    GLsizei written = 0;
    get_log(id, length, &written, log.data());
    log.resize(static_cast<std::size_t>(written));
    return log;
}

}  // namespace ulk3d
