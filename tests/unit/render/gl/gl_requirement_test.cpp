#include "render/gl/gl_requirement.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

TEST(GlRequirement, WithoutGl33TheProcessEndsWithAWord) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // No GL was loaded in this process; the line goes to the standard output stream.
    const auto standard_output_is_read = [] { dup2(STDERR_FILENO, STDOUT_FILENO); };
    EXPECT_EXIT((standard_output_is_read(), ulk3d::require_gl33()), testing::ExitedWithCode(1),
                "OpenGL 3\\.3 or later required\\.\n$");
}

TEST(GlRequirement, WithoutAContextTheProcessEndsWithAWord) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(ulk3d::require_gl_context(false), testing::ExitedWithCode(1),
                "^OpenGL is not available: the GL context could not be made\\.\n$");
    ulk3d::require_gl_context(true);
}

}  // namespace
