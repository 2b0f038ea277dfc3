#pragma once

#include <GL/glew.h>

namespace ulk_test {

/// During its lifetime the mapping of a GL buffer that is numbered `failing`, counted from 1, fails; the
/// others do not. A context must be current.
class failing_mapping {
  public:
    explicit failing_mapping(int failing) : original(__glewMapBufferRange), calls_left(failing) {
        active = this;
        __glewMapBufferRange = fail_or_map;
    }
    ~failing_mapping() {
        __glewMapBufferRange = original;
        active = nullptr;
    }
    failing_mapping(const failing_mapping&) = delete;
    failing_mapping& operator=(const failing_mapping&) = delete;

    /// Whether the failing mapping was asked for.
    bool has_failed() const { return calls_left <= 0; }

  private:
    static void* GLAPIENTRY fail_or_map(GLenum target, GLintptr offset, GLsizeiptr length,
                                        GLbitfield access) {
        return --active->calls_left == 0 ? nullptr : active->original(target, offset, length, access);
    }

    static inline failing_mapping* active = nullptr;
    PFNGLMAPBUFFERRANGEPROC original;
    int calls_left;
};

}  // namespace ulk_test
