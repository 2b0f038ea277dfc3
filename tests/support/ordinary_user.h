#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <cstdlib>

namespace ulk_test {

/// The user as whom the superuser goes on.
inline constexpr uid_t ordinary_user = 65534;

/// Gives up the superuser's rights, for whom every file is readable and every folder his, as long as it
/// lives.
class ordinary_user_t {
  public:
    ordinary_user_t() : user(geteuid()) {
        if (user == 0)
            dropped = seteuid(ordinary_user) == 0;
    }
    ~ordinary_user_t() {
        if (dropped && seteuid(user) != 0)
            std::abort();
    }
    ordinary_user_t(const ordinary_user_t&) = delete;
    ordinary_user_t& operator=(const ordinary_user_t&) = delete;

    bool is_ordinary() const { return geteuid() != 0; }

  private:
    uid_t user;
    bool dropped = false;
};

}  // namespace ulk_test
