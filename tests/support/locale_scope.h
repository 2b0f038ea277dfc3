#pragma once

#include <locale>
#include <string>

namespace ulk_test {

/// The locales under which files are read and written: plain, UTF-8, one with a decimal comma and a point
/// between thousands, and the users' own.
inline constexpr const char* file_locales[] = {"C", "C.UTF-8", "de_DE.UTF-8", "ja_JP.UTF-8"};

/// Makes a locale the global one of the C and the C++ library for its scope.
///
/// Tests leave out a locale that this machine does not have. Where the environment names a folder of locales
/// made for the tests (LOCPATH, as ctest does) none may be missing: that is a failure of the test.
class locale_scope_t {
  public:
    explicit locale_scope_t(const std::string& name);
    ~locale_scope_t();
    locale_scope_t(const locale_scope_t&) = delete;
    locale_scope_t& operator=(const locale_scope_t&) = delete;

    bool is_set() const { return set; }

  private:
    std::locale previous;
    bool set = false;
};

}  // namespace ulk_test
