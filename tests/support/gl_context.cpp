#include "support/gl_context.h"

#include <GL/glew.h>

#include "gltextures/gr_context.h"
#include "render/offscreen/offscreen_context.h"

namespace ulk_test {

namespace {

/// Never destroyed, because static objects may still release GL names after main.
ulk3d::offscreen_context_t& context() {
    static auto* const process_context = new ulk3d::offscreen_context_t;
    return *process_context;
}

}  // namespace

bool make_gl_context_current() {
    const bool current = context().create();
    EXPECT_TRUE(current) << context().error();
    return current;
}

gl_test::gl_test() {
    make_gl_context_current();
}

void gl_test::SetUp() {
    ASSERT_TRUE(libgr::grContextIsCurrent());
    ASSERT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

void gl_test::TearDown() {
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << "a GL error is pending";
}

}  // namespace ulk_test
