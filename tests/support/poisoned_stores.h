#pragma once

#include <GL/glew.h>

namespace ulk_test {

/// During its lifetime every new buffer store is filled with ones, like the garbage that GL may leave in it.
/// A context must be current.
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
