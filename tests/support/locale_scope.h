#pragma once

#include <locale>
#include <string>

namespace ulk_test {

/// The locales under which files are read and written: the plain one, UTF-8, one with a decimal comma and a
/// point between thousands, and a Japanese one.
inline constexpr const char* file_locales[] = {"C", "C.UTF-8", "de_DE.UTF-8", "ja_JP.UTF-8"};

/// Sets the global locale of the C and C++ libraries for its scope.
///
/// Tests skip a locale that the machine does not have. But if the environment names a folder of locales made
/// for the tests (LOCPATH, set by ctest), a missing one fails the test.
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
