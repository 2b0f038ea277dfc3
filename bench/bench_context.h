#pragma once

#include <cstdlib>
#include <iostream>

#include "render/offscreen/offscreen_context.h"

/// One GL context for all benchmarks of the process, current from the first call on.
inline void need_context() {
    static auto* const context = new ulk3d::offscreen_context_t;
    static const bool made = context->create();
    if (!made) {
        std::cerr << context->error() << std::endl;
        std::exit(1);
    }
}
