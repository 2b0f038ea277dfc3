#pragma once

#include <GL/glew.h>

namespace ulk_test {

/// While it lives, every new buffer store begins full of ones, as garbage as GL may leave there. A context
/// must be current.
class poisoned_stores {
  public:
    poisoned_stores();
    ~poisoned_stores();
    poisoned_stores(const poisoned_stores&) = delete;
    poisoned_stores& operator=(const poisoned_stores&) = delete;

  private:
    PFNGLBUFFERDATAPROC original;
};

}  // namespace ulk_test
