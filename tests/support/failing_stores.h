#pragma once

#include <GL/glew.h>

namespace ulk_test {

/// During its lifetime GL fails to make buffer stores, as if memory had run out, from the call numbered
/// `first_failing` on, counted from 1. A context must be current.
class failing_stores {
  public:
    explicit failing_stores(int first_failing);
    ~failing_stores();
    failing_stores(const failing_stores&) = delete;
    failing_stores& operator=(const failing_stores&) = delete;

  private:
    PFNGLBUFFERDATAPROC original;
};

}  // namespace ulk_test
