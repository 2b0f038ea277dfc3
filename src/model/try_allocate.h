#pragma once

#include <iostream>
#include <new>

#include "utils/memory/try_allocate.h"

namespace ulk3d {

/// With it `try_command` is the only place that catches an exception of the allocator.
using libutils::try_allocate;

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
