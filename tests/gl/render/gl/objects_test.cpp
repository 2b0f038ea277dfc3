#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <optional>

#include "gltextures/gr_check_error.h"
#include "gltextures/gr_context.h"
#include "render/gl/array.h"
#include "render/gl/element_array.h"
#include "render/gl/feedback_buffer.h"
#include "render/gl/program.h"
#include "render/gl/query.h"
#include "render/gl/shader.h"
#include "render/gl/transform_feedback.h"
#include "render/offscreen/offscreen_context.h"
#include "support/captured_stream.h"
#include "support/forced_marks.h"
#include "support/gl_context.h"
#include "support/gl_state.h"

namespace {

using namespace ulk3d;
using ulk_test::captured_stream;
using ulk_test::gl_integer;

using CheckError = ulk_test::gl_test;
using Buffer = ulk_test::gl_test;
using FeedbackBuffer = ulk_test::gl_test;
using ContextLoss = ulk_test::gl_test;

TEST_F(CheckError, IsFalseAndSilentWithoutAnError) {
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(libgr::grCheckError("mark"));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(CheckError, PrintsTheMarkTheCodeAndItsText) {
    const captured_stream errors(std::cerr);
    ulk_test::make_gl_error();
    EXPECT_TRUE(libgr::grCheckError("a mark"));
    EXPECT_EQ(errors.text(), "a mark: Error 1280: invalid enumerant\n");
    EXPECT_FALSE(libgr::grCheckError("a mark")) << "the error is drained";
}

TEST_F(CheckError, FetchesOneErrorAtATime) {
    const ulk_test::forced_marks marks;
    EXPECT_TRUE(libgr::grCheckError("a mark"));
    EXPECT_EQ(marks.fetched_errors(), 1);
}

TEST_F(CheckError, PrintsNoSeparatorWithoutAMark) {
    const captured_stream errors(std::cerr);
    ulk_test::make_gl_error();
    EXPECT_TRUE(libgr::grCheckError(nullptr));
    EXPECT_EQ(errors.text(), "Error 1280: invalid enumerant\n");
}

TEST_F(Buffer, AllocateTwiceKeepsTheNameAndTakesTheTarget) {
    buffer_t buffer;
    buffer.allocate(GL_ARRAY_BUFFER);
    const GLuint id = buffer.id();
    buffer.allocate(GL_COPY_READ_BUFFER);
    EXPECT_EQ(buffer.id(), id);
    buffer.bind();
    EXPECT_EQ(gl_integer(GL_COPY_READ_BUFFER_BINDING), static_cast<GLint>(id));
    EXPECT_EQ(gl_integer(GL_ARRAY_BUFFER_BINDING), 0);
    buffer.unbind();
    EXPECT_EQ(gl_integer(GL_COPY_READ_BUFFER_BINDING), 0);
}

TEST_F(Buffer, ReleaseDeletesTheName) {
    buffer_t buffer;
    buffer.allocate(GL_ARRAY_BUFFER);
    const GLuint id = buffer.id();
    buffer.bind();
    buffer.unbind();
    EXPECT_EQ(glIsBuffer(id), GL_TRUE);
    buffer.release();
    EXPECT_EQ(glIsBuffer(id), GL_FALSE);
    EXPECT_EQ(buffer.id(), gl_no_object);
}

TEST_F(Buffer, DestructorReleases) {
    GLuint id = 0;
    {
        buffer_t buffer;
        buffer.allocate(GL_ARRAY_BUFFER);
        id = buffer.id();
        buffer.bind();
        buffer.unbind();
    }
    EXPECT_EQ(glIsBuffer(id), GL_FALSE);
}

TEST_F(Buffer, BindAfterReleaseIsAnInvalidOperation) {
    buffer_t buffer;
    buffer.allocate(GL_ARRAY_BUFFER);
    buffer.release();
    buffer.bind();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_OPERATION));
}

TEST_F(Buffer, MapOfAStoreTooSmallIsNullAndToldSo) {
    buffer_t buffer;
    buffer.allocate(GL_ARRAY_BUFFER);
    const captured_stream errors(std::cerr);
    EXPECT_EQ(buffer.MapBufferRange(0, 16, GL_MAP_READ_BIT), nullptr);
    EXPECT_EQ(errors.text(), "buffer_t::MapBufferRange(): ptr is NULL.\n");
    EXPECT_EQ(gl_integer(GL_ARRAY_BUFFER_BINDING), 0);
    EXPECT_NE(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(FeedbackBuffer, AllocateMakesAStoreOfThatManyWords) {
    feedback_buffer_t feedback;
    ASSERT_TRUE(feedback.allocate(10));
    EXPECT_EQ(feedback.element_count(), 10);
    EXPECT_EQ(feedback.byte_size(), 40);
    ASSERT_TRUE(feedback.provide());
    EXPECT_EQ(ulk_test::gl_store_size(feedback.buffer_id()), 40);
    EXPECT_EQ(gl_integer(GL_TRANSFORM_FEEDBACK_BUFFER_BINDING), 0);
}

TEST_F(FeedbackBuffer, ShrinksAndKeepsItsName) {
    feedback_buffer_t feedback;
    ASSERT_TRUE(feedback.allocate(10));
    const GLuint id = feedback.buffer_id();
    ASSERT_TRUE(feedback.allocate(3));
    EXPECT_EQ(feedback.byte_size(), 12);
    EXPECT_EQ(feedback.buffer_id(), id);
    ASSERT_TRUE(feedback.provide());
    EXPECT_EQ(ulk_test::gl_store_size(id), 12);
}

TEST_F(FeedbackBuffer, ReleaseDeletesAndZeroes) {
    feedback_buffer_t feedback;
    ASSERT_TRUE(feedback.allocate(10));
    const GLuint id = feedback.buffer_id();
    feedback.release();
    EXPECT_EQ(glIsBuffer(id), GL_FALSE);
    EXPECT_EQ(feedback.buffer_id(), 0u);
    EXPECT_EQ(feedback.element_count(), 0);
    EXPECT_EQ(feedback.byte_size(), 0);
}

TEST_F(FeedbackBuffer, MemoryThatIsNotThereMakesAllocateFalse) {
    feedback_buffer_t feedback;
    EXPECT_FALSE(feedback.allocate(std::int64_t{1} << 60));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_OUT_OF_MEMORY));
    EXPECT_EQ(feedback.byte_size(), 0);
    EXPECT_TRUE(feedback.allocate(4));
}

TEST_F(FeedbackBuffer, BindsToItsTarget) {
    feedback_buffer_t feedback;
    ASSERT_TRUE(feedback.allocate(4));
    feedback.bind();
    EXPECT_EQ(gl_integer(GL_TRANSFORM_FEEDBACK_BUFFER_BINDING), static_cast<GLint>(feedback.buffer_id()));
    feedback.unbind();
    EXPECT_EQ(gl_integer(GL_TRANSFORM_FEEDBACK_BUFFER_BINDING), 0);
}

TEST_F(FeedbackBuffer, BaseBindingIsThatOfShaderStorage) {
    feedback_buffer_t feedback;
    ASSERT_TRUE(feedback.allocate(4));
    GLint bound = -1;
    feedback.bind_base(2);
    glGetIntegeri_v(GL_SHADER_STORAGE_BUFFER_BINDING, 2, &bound);
    EXPECT_EQ(bound, static_cast<GLint>(feedback.buffer_id()));
    feedback.unbind_base(2);
    glGetIntegeri_v(GL_SHADER_STORAGE_BUFFER_BINDING, 2, &bound);
    EXPECT_EQ(bound, 0);
    glBindBuffer(GL_SHADER_STORAGE_BUFFER, 0);
}

/// One of every wrapper, each with its GL name.
struct all_objects_t {
    array_t array;
    element_array_t elements;
    feedback_buffer_t feedback;
    vertex_array_ref vertex_array = vertex_array_ref::make();
    shader_t shader;
    program_t program;
    query_t query;
    transform_feedback_t transform_feedback;

    bool allocate() {
        vertex_array->allocate();
        query.allocate();
        return array.allocate(1, make_element_list({e_type_t::Position})) && elements.allocate(1) &&
               feedback.allocate(1) && program.create() &&
               shader.allocate(GL_VERTEX_SHADER, "#version 330\nvoid main() {}", 27) &&
               transform_feedback.allocate();
    }
};

TEST_F(ContextLoss, NamesAreForgottenWithoutACallWhenNoContextIsCurrent) {
    std::optional<all_objects_t> objects(std::in_place);
    ASSERT_TRUE(objects->allocate());
    ASSERT_TRUE(objects->array.provide());
    const GLuint id = objects->array.buffer_id();
    offscreen_context_t::make_none_current();
    EXPECT_FALSE(libgr::grContextIsCurrent());
    objects.reset();
    ASSERT_TRUE(ulk_test::make_gl_context_current());
    EXPECT_TRUE(libgr::grContextIsCurrent());
    EXPECT_EQ(glIsBuffer(id), GL_TRUE);
    glDeleteBuffers(1, &id);
}

[[noreturn]] void exit_with_live_objects(bool with_context) {
    // Built before the context: destroyed after everything that making the context has registered for exit.
    static all_objects_t objects;
    if (!ulk_test::make_gl_context_current() || !objects.allocate())
        std::exit(3);
    if (!with_context)
        offscreen_context_t::make_none_current();
    std::exit(0);
}

TEST(ContextLossDeathTest, ObjectsThatOutliveMainEndCleanly) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(exit_with_live_objects(true), testing::ExitedWithCode(0), "^$");
    EXPECT_EXIT(exit_with_live_objects(false), testing::ExitedWithCode(0), "^$");
}

}  // namespace
