#pragma once

#include <gtest/gtest.h>

#include "render/offscreen/offscreen_target.h"

namespace ulk_test {

/// Makes the process's one GL context current, creating it at the first call. False, with the reason in a
/// test failure, when none can be made.
bool make_gl_context_current();

/// Base of all tests that call GL: the context is current, and no test may leave a GL error behind.
class gl_test : public testing::Test {
  protected:
    /// The context is there before the members of a derived fixture are built: they may hold GL objects.
    gl_test();
    void SetUp() override;
    void TearDown() override;
};

/// Off-screen framebuffer of a test: colour and depth, bind, read_pixels.
using render_target_t = ulk3d::offscreen_target_t;

}  // namespace ulk_test
