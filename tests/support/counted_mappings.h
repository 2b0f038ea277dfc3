#pragma once

#include <GL/glew.h>

namespace ulk_test {

/// Counts the mappings of GL buffers that are made during its lifetime. A GL context must be current.
class counted_mappings {
  public:
    counted_mappings() : original(__glewMapBufferRange) {
        active = this;
        __glewMapBufferRange = count_and_map;
    }
    ~counted_mappings() {
        __glewMapBufferRange = original;
        active = nullptr;
    }
    counted_mappings(const counted_mappings&) = delete;
    counted_mappings& operator=(const counted_mappings&) = delete;

    int count() const { return mappings; }

  private:
    static void* GLAPIENTRY count_and_map(GLenum target, GLintptr offset, GLsizeiptr length,
                                          GLbitfield access) {
        ++active->mappings;
        return active->original(target, offset, length, access);
    }

    static inline counted_mappings* active = nullptr;
    PFNGLMAPBUFFERRANGEPROC original;
    int mappings = 0;
};

}  // namespace ulk_test
