#pragma once

#include <locale>
#include <string>

namespace ulk_test {

/// The locales under which files are read and written: plain, UTF-8, one with a decimal comma and a point
/// between thousands, and the users' own.
inline constexpr const char* file_locales[] = {"C", "C.UTF-8", "de_DE.UTF-8", "ja_JP.UTF-8"};

/// Makes a locale the global one of the C and the C++ library for its scope.
class locale_scope_t {
  public:
    explicit locale_scope_t(const std::string& name);
    ~locale_scope_t();
    locale_scope_t(const locale_scope_t&) = delete;
    locale_scope_t& operator=(const locale_scope_t&) = delete;

    /// False when this machine does not have the locale.
    bool is_set() const { return set; }

  private:
    std::locale previous;
    bool set = false;
};

/// True when the environment names a folder of locales made for the tests, so that none may be missing.
bool locales_are_provided();

}  // namespace ulk_test

/// Runs the rest of the test under a locale. One that is missing skips the test when it is run by hand, and
/// is a failure where the test environment should have provided it.
#define ULK_UNDER_LOCALE(scope, name)                             \
    const ulk_test::locale_scope_t scope(name);                   \
    if (!scope.is_set()) {                                        \
        ASSERT_FALSE(ulk_test::locales_are_provided()) << (name); \
        GTEST_SKIP() << (name) << " is not installed";            \
    }
