#include "render/offscreen/offscreen_context.h"

#include <EGL/egl.h>

#include "render/offscreen/offscreen_target.h"
#include "support/gl_context.h"
#include "support/gl_state.h"

namespace {

using namespace ulk3d;
using ulk_test::gl_integer;

using OffscreenContext = ulk_test::gl_test;
using OffscreenTarget = ulk_test::gl_test;
using pixel_t = rgba_picture_t::pixel_t;

TEST_F(OffscreenContext, IsACoreContextOfAtLeastThreeThree) {
    EXPECT_GE(gl_integer(GL_MAJOR_VERSION) * 10 + gl_integer(GL_MINOR_VERSION), 33);
    EXPECT_EQ(gl_integer(GL_CONTEXT_PROFILE_MASK), GL_CONTEXT_CORE_PROFILE_BIT);
}

TEST_F(OffscreenContext, ItsOwnFramebufferIsComplete) {
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    EXPECT_EQ(glCheckFramebufferStatus(GL_FRAMEBUFFER), static_cast<GLenum>(GL_FRAMEBUFFER_COMPLETE));
}

TEST_F(OffscreenContext, LoaderFlagsTellTheVersionOfTheContext) {
    const int version = gl_integer(GL_MAJOR_VERSION) * 10 + gl_integer(GL_MINOR_VERSION);
    EXPECT_EQ(GLEW_VERSION_3_3 != 0, version >= 33);
    EXPECT_EQ(GLEW_VERSION_4_0 != 0, version >= 40);
    EXPECT_EQ(GLEW_VERSION_4_6 != 0, version >= 46);
}

TEST_F(OffscreenContext, ASecondContextCanBeMadeAndDropped) {
    {
        offscreen_context_t second;
        ASSERT_TRUE(second.create()) << second.error();
        EXPECT_EQ(second.error(), "");
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        EXPECT_NE(eglGetCurrentContext(), EGL_NO_CONTEXT);
    }
    EXPECT_EQ(eglGetCurrentContext(), EGL_NO_CONTEXT);
    ASSERT_TRUE(ulk_test::make_gl_context_current());
    EXPECT_GT(gl_integer(GL_MAJOR_VERSION), 0);
}

TEST_F(OffscreenTarget, RowsAreReadFromTheTop) {
    const offscreen_target_t target(3, 2);
    ASSERT_TRUE(target.is_complete());
    target.bind();
    glClearColor(0, 0, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glEnable(GL_SCISSOR_TEST);
    glScissor(2, 0, 1, 1);
    glClearColor(1, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_SCISSOR_TEST);
    const auto picture = target.read_pixels();
    ASSERT_EQ(picture.width, 3);
    ASSERT_EQ(picture.height, 2);
    EXPECT_EQ(picture.at(2, 1), (pixel_t{255, 0, 0, 0})) << "GL's lower right corner";
    EXPECT_EQ(picture.at(2, 0), (pixel_t{0, 0, 255, 255}));
    EXPECT_EQ(picture.at(0, 1), (pixel_t{0, 0, 255, 255}));
}

TEST_F(OffscreenTarget, BindSetsTheViewportToAllOfIt) {
    const offscreen_target_t target(40, 30);
    target.bind();
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[0], 0);
    EXPECT_EQ(viewport[1], 0);
    EXPECT_EQ(viewport[2], 40);
    EXPECT_EQ(viewport[3], 30);
    EXPECT_EQ(gl_integer(GL_DRAW_FRAMEBUFFER_BINDING), static_cast<GLint>(target.framebuffer_id()));
}

TEST_F(OffscreenTarget, MakingOneLeavesTheBindingAlone) {
    const offscreen_target_t bound(2, 2);
    bound.bind();
    const offscreen_target_t other(3, 3);
    EXPECT_EQ(gl_integer(GL_DRAW_FRAMEBUFFER_BINDING), static_cast<GLint>(bound.framebuffer_id()));
}

TEST_F(OffscreenTarget, HasADepthBuffer) {
    const offscreen_target_t target(1, 1);
    target.bind();
    GLint bits = 0;
    glGetFramebufferAttachmentParameteriv(GL_DRAW_FRAMEBUFFER, GL_DEPTH, GL_FRAMEBUFFER_ATTACHMENT_DEPTH_SIZE,
                                          &bits);
    if (glGetError() != GL_NO_ERROR)
        glGetFramebufferAttachmentParameteriv(GL_DRAW_FRAMEBUFFER, GL_DEPTH_ATTACHMENT,
                                              GL_FRAMEBUFFER_ATTACHMENT_DEPTH_SIZE, &bits);
    EXPECT_GE(bits, 24);
}

TEST_F(OffscreenTarget, ReadingLeavesPackStateAndBindingsAlone) {
    const offscreen_target_t target(5, 5);
    target.bind();
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    glPixelStorei(GL_PACK_ROW_LENGTH, 77);
    glPixelStorei(GL_PACK_ALIGNMENT, 8);
    EXPECT_EQ(target.read_pixels().pixels.size(), 25u);
    EXPECT_EQ(gl_integer(GL_PACK_ROW_LENGTH), 77);
    EXPECT_EQ(gl_integer(GL_PACK_ALIGNMENT), 8);
    EXPECT_EQ(gl_integer(GL_READ_FRAMEBUFFER_BINDING), 0);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
}

TEST_F(OffscreenTarget, SizesThatCanNotBeAreNotComplete) {
    for (const int side : {0, -1, 1 << 30}) {
        const offscreen_target_t target(side, 1);
        EXPECT_FALSE(target.is_complete());
        EXPECT_TRUE(target.read_pixels().pixels.empty());
    }
}

}  // namespace
