#pragma once

#include <GL/glew.h>

#include <functional>

namespace ulk_test {

/// During its lifetime `watch` is asked, with the size in bytes, before GL makes a buffer store; where it
/// answers false the store is not made, as if memory had run out. A context must be current.
class watched_stores {
  public:
    explicit watched_stores(std::function<bool(GLsizeiptr)> watch);
    ~watched_stores();
    watched_stores(const watched_stores&) = delete;
    watched_stores& operator=(const watched_stores&) = delete;

  private:
    PFNGLBUFFERDATAPROC original;
};

}  // namespace ulk_test
