#include "support/locale_scope.h"

#include <cstdlib>
#include <stdexcept>

namespace ulk_test {

locale_scope_t::locale_scope_t(const std::string& name) {
    try {
        previous = std::locale::global(std::locale(name));
        set = true;
    } catch (const std::runtime_error&) {
        set = false;
    }
}

locale_scope_t::~locale_scope_t() {
    if (set)
        std::locale::global(previous);
}

bool locales_are_provided() {
    return std::getenv("LOCPATH") != nullptr;
}

}  // namespace ulk_test
