#pragma once

#include <iostream>
#include <new>

namespace ulk3d {

/// The only places that catch an exception of the allocator.

/// Returns the result of `allocate()`, which makes arrays whose size comes from a file or a dialog; false
/// also when it runs out of memory. Prints nothing.
template <typename Allocate>
[[nodiscard]] bool try_allocate(Allocate&& allocate) {
    try {
        return allocate();
    } catch (const std::bad_alloc&) {
        return false;
    }
}

/// Runs a command of the user and returns its result. When it runs out of memory, prints the line "NAME: out
/// of memory." to the standard error stream and returns an empty result, such as false. A command makes
/// whatever can fail before it changes anything, and so has changed nothing then.
template <typename Command>
auto try_command(const char* name, Command&& command) -> decltype(command()) {
    try {
        return command();
    } catch (const std::bad_alloc&) {
        std::cerr << name << ": out of memory." << std::endl;
        return decltype(command())();
    }
}

}  // namespace ulk3d
