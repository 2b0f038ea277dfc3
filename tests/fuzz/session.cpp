#include "fuzz/parts/session.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "render/offscreen/offscreen_context.h"
#include "render/offscreen/offscreen_target.h"
#include "support/captured_stream.h"

namespace {

/// The one editor of all sessions. Never destroyed, as GL is still there at the end of the process.
ulk3d::ulkedit_t& editor() {
    static auto* const context = new ulk3d::offscreen_context_t;
    static const bool made = context->create();
    if (!made)
        std::abort();
    static auto* const target = new ulk3d::offscreen_target_t(64, 64);
    target->bind();
    static auto* const made_editor = [] {
        auto* const fresh = new ulk3d::ulkedit_t("");
        fresh->init();
        return fresh;
    }();
    return *made_editor;
}

}  // namespace

/// Plays any bytes as an editing session (fuzz/parts/session.h), in which no invariant may break.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ulk_test::captured_stream messages(std::cerr), reports(std::cout);
    const std::string broken = ulk_test::session_t(editor()).run({data, size});
    if (broken.empty())
        return 0;
    std::fprintf(stderr, "%s\n", broken.c_str());
    std::abort();
}
