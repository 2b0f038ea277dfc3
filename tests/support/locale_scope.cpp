#include "support/locale_scope.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <stdexcept>

namespace ulk_test {

locale_scope_t::locale_scope_t(const std::string& name) {
    try {
        previous = std::locale::global(std::locale(name));
        set = true;
    } catch (const std::runtime_error&) {
        EXPECT_EQ(std::getenv("LOCPATH"), nullptr) << "the locale " << name << " is missing";
    }
}

locale_scope_t::~locale_scope_t() {
    if (set)
        std::locale::global(previous);
}

}  // namespace ulk_test
