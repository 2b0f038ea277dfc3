#pragma once

#include <GL/glew.h>

namespace ulk_test {

/// While it lives, GL gives no new buffer stores from the call numbered `first_failing` on, 1 for the very
/// first: as if there were no memory left. A context must be current.
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
