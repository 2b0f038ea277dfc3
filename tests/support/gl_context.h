#pragma once

#include <gtest/gtest.h>

#include "render/offscreen/offscreen_target.h"

namespace ulk_test {

/// Makes the process's only GL context current, after creating it in the first call. False, after a test
/// failure that states the reason, when that is impossible.
bool make_gl_context_current();

/// Base of all tests that call GL. The context is current, and a test that leaves a GL error behind fails.
class gl_test : public testing::Test {
  protected:
    /// Makes the context current before the members of a derived fixture are constructed, as they may own GL
    /// objects.
    gl_test();
    void SetUp() override;
    void TearDown() override;
};

/// The off-screen framebuffer that a test draws into.
using render_target_t = ulk3d::offscreen_target_t;

}  // namespace ulk_test
