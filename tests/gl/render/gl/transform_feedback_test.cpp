#include "render/gl/transform_feedback.h"

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "render/gl/array.h"
#include "render/gl/feedback_buffer.h"
#include "render/gl/mapped_span.h"
#include "render/gl/program.h"
#include "render/gl/query.h"
#include "render/gl/shader.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/gl_state.h"

namespace {

using namespace ulk3d;
using ulk_test::captured_stream;
using ulk_test::gl_integer;

/// A feedback object built as the program's own are: before the entry points are loaded.
std::unique_ptr<transform_feedback_t> built_before_loading() {
    const GLboolean loaded = __GLEW_VERSION_4_0;
    __GLEW_VERSION_4_0 = GL_FALSE;
    auto feedback = std::make_unique<transform_feedback_t>();
    __GLEW_VERSION_4_0 = loaded;
    return feedback;
}

/// Doubles the floats of an array into a feedback buffer.
struct doubling_t {
    shader_t shader;
    program_t program;
    array_t input;
    vertex_array_ref vertex_array = vertex_array_ref::make();
    feedback_buffer_t output;

    bool create(const transform_feedback_t& feedback) {
        const std::string source =
            "#version 330\n"
            "layout(location = 0) in float value;\n"
            "out float doubled;\n"
            "out float index;\n"
            "void main() { doubled = 2.0 * value; index = float(gl_VertexID); gl_Position = vec4(0.0); }\n";
        const char* const outputs[] = {"doubled", "index"};
        const float values[] = {1, 2.5F, -3};
        if (!shader.allocate(GL_VERTEX_SHADER, source.data(), static_cast<GLint>(source.size())) ||
            !program.create())
            return false;
        program.attach(shader);
        feedback.varyings(program, 2, outputs);
        vertex_array->allocate();
        if (!program.link() || !output.allocate(6) || !output.provide() ||
            !input.allocate(3, make_element_list({e_type_t::PointSize}), values, sizeof values))
            return false;
        input.bind_to(vertex_array, 0);
        return true;
    }

    void run(const transform_feedback_t& feedback) {
        program.use();
        glEnable(GL_RASTERIZER_DISCARD);
        feedback.begin(GL_POINTS, output.buffer_id());
        draw(vertex_array, GL_POINTS, input.element_count());
        feedback.end();
        glDisable(GL_RASTERIZER_DISCARD);
        program_t::unuse();
    }

    std::vector<float> result() {
        const feedback_span<float> words(output);
        return {words.begin(), words.end()};
    }
};

const std::vector<float> doubled{2, 0, 5, 1, -6, 2};

struct TransformFeedback : ulk_test::gl_test {
    void TearDown() override {
        EXPECT_EQ(gl_integer(GL_TRANSFORM_FEEDBACK_BINDING), 0);
        GLint bound = -1;
        glGetIntegeri_v(GL_TRANSFORM_FEEDBACK_BUFFER_BINDING, 0, &bound);
        EXPECT_EQ(bound, 0);
        gl_test::TearDown();
    }
};

TEST_F(TransformFeedback, IsNativeWhenBuiltAfterLoading) {
    EXPECT_EQ(transform_feedback_t().is_native(), GLEW_VERSION_4_0 != GL_FALSE);
    EXPECT_FALSE(built_before_loading()->is_native());
}

TEST_F(TransformFeedback, NativeObjectIsMadeOnceAndDeletedAtTheEnd) {
    if (!GLEW_VERSION_4_0)
        GTEST_SKIP() << "GL has no such objects before 4.0";
    GLuint id = 0;
    {
        transform_feedback_t feedback;
        ASSERT_TRUE(feedback.allocate());
        id = feedback.feedback_id();
        EXPECT_EQ(glIsTransformFeedback(id), GL_TRUE) << "the bind has made the object";
        ASSERT_TRUE(feedback.allocate());
        EXPECT_EQ(feedback.feedback_id(), id);
    }
    EXPECT_EQ(glIsTransformFeedback(id), GL_FALSE);
}

TEST_F(TransformFeedback, WithoutNativeNoObjectIsMadeOrDeleted) {
    if (!GLEW_VERSION_4_0)
        GTEST_SKIP() << "GL has no such objects before 4.0";
    transform_feedback_t native;
    ASSERT_TRUE(native.allocate());
    {
        const auto feedback = built_before_loading();
        ASSERT_TRUE(feedback->allocate());
        EXPECT_EQ(feedback->feedback_id(), 1u);
    }
    EXPECT_EQ(glIsTransformFeedback(native.feedback_id()), GL_TRUE);
}

TEST_F(TransformFeedback, CapturesThroughTheDefaultObject) {
    const auto feedback = built_before_loading();
    ASSERT_TRUE(feedback->allocate());
    doubling_t doubling;
    ASSERT_TRUE(doubling.create(*feedback));
    const captured_stream errors(std::cerr);
    doubling.run(*feedback);
    EXPECT_EQ(doubling.result(), doubled);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(TransformFeedback, CapturesThroughItsOwnObject) {
    transform_feedback_t feedback;
    ASSERT_TRUE(feedback.allocate());
    doubling_t doubling;
    ASSERT_TRUE(doubling.create(feedback));
    const captured_stream errors(std::cerr);
    doubling.run(feedback);
    EXPECT_EQ(doubling.result(), doubled);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(TransformFeedback, BeginWithBufferZeroOnlySetsItsFirstMark) {
    const auto feedback = built_before_loading();
    ASSERT_TRUE(feedback->allocate());
    ulk_test::make_gl_error();
    const captured_stream errors(std::cerr);
    feedback->begin(GL_POINTS, 0);
    EXPECT_EQ(errors.text(), "transform_feedback_t::begin(0): Error 1280: invalid enumerant\n");
    feedback->end();
    EXPECT_EQ(errors.text(),
              "transform_feedback_t::begin(0): Error 1280: invalid enumerant\n"
              "transform_feedback_t::end(1): Error 1282: invalid operation\n");
}

TEST_F(TransformFeedback, EndMarksAPendingErrorAtItsStart) {
    const auto feedback = built_before_loading();
    ulk_test::make_gl_error();
    const captured_stream errors(std::cerr);
    feedback->end();
    EXPECT_EQ(errors.text(),
              "transform_feedback_t::end(0): Error 1280: invalid enumerant\n"
              "transform_feedback_t::end(1): Error 1282: invalid operation\n");
}

TEST_F(TransformFeedback, BeginWithoutAProgramIsToldAtTheLastMark) {
    transform_feedback_t feedback;
    ASSERT_TRUE(feedback.allocate());
    doubling_t doubling;
    ASSERT_TRUE(doubling.create(feedback));
    const captured_stream errors(std::cerr);
    feedback.begin(GL_POINTS, doubling.output.buffer_id());
    EXPECT_EQ(errors.text(), "transform_feedback_t::begin(3): Error 1282: invalid operation\n");
    glBindBufferBase(GL_TRANSFORM_FEEDBACK_BUFFER, 0, 0);
    glBindTransformFeedback(GL_TRANSFORM_FEEDBACK, 0);
}

TEST_F(TransformFeedback, BeginWithAnUnknownBufferIsToldAtTheSecondMark) {
    const auto feedback = built_before_loading();
    const captured_stream errors(std::cerr);
    feedback->begin(GL_POINTS, gl_no_object);
    EXPECT_EQ(errors.text(),
              "transform_feedback_t::begin(2): Error 1282: invalid operation\n"
              "transform_feedback_t::begin(3): Error 1282: invalid operation\n");
}

TEST_F(TransformFeedback, EndUnbindsByTheFlagNotByItsOwnKind) {
    transform_feedback_t native;
    ASSERT_TRUE(native.allocate());
    glBindTransformFeedback(GL_TRANSFORM_FEEDBACK, native.feedback_id());
    const auto feedback = built_before_loading();
    const captured_stream errors(std::cerr);
    feedback->end();
    EXPECT_EQ(gl_integer(GL_TRANSFORM_FEEDBACK_BINDING), 0);
}

TEST_F(TransformFeedback, BufferBaseBindsToTheObject) {
    if (!GLEW_VERSION_4_0)
        GTEST_SKIP() << "GL has no such objects before 4.0";
    transform_feedback_t feedback;
    ASSERT_TRUE(feedback.allocate());
    feedback_buffer_t buffer;
    ASSERT_TRUE(buffer.allocate(4) && buffer.provide());
    const auto bound = [&feedback] {
        GLint value = -1;
        glGetTransformFeedbacki_v(feedback.feedback_id(), GL_TRANSFORM_FEEDBACK_BUFFER_BINDING, 1, &value);
        return value;
    };
    feedback.buffer_base(1, buffer.buffer_id());
    EXPECT_EQ(bound(), static_cast<GLint>(buffer.buffer_id()));
    feedback.buffer_base_clear(1);
    EXPECT_EQ(bound(), 0);
}

struct Query : TransformFeedback {
    /// Primitives generated and written by the capture of three points into a buffer for `room` of them.
    std::pair<std::uint64_t, std::uint64_t> counts(std::int64_t room) {
        const auto feedback = built_before_loading();
        doubling_t doubling;
        EXPECT_TRUE(feedback->allocate() && doubling.create(*feedback) &&
                    doubling.output.allocate(room * 2) && doubling.output.provide());
        query_t written, generated;
        written.begin(GL_TRANSFORM_FEEDBACK_PRIMITIVES_WRITTEN, 0);
        generated.begin(GL_PRIMITIVES_GENERATED, 0);
        doubling.run(*feedback);
        written.end();
        generated.end();
        return {generated.GetQuery(), written.GetQuery()};
    }
};

TEST_F(Query, CountsWhatIsGeneratedAndWritten) {
    EXPECT_EQ(counts(3), (std::pair<std::uint64_t, std::uint64_t>{3, 3}));
    EXPECT_EQ(counts(2), (std::pair<std::uint64_t, std::uint64_t>{3, 2}));
}

TEST_F(Query, WorksWithoutIndexedQueries) {
    const auto begin_indexed = __glewBeginQueryIndexed;
    const auto end_indexed = __glewEndQueryIndexed;
    __glewBeginQueryIndexed = nullptr;
    __glewEndQueryIndexed = nullptr;
    EXPECT_EQ(counts(2), (std::pair<std::uint64_t, std::uint64_t>{3, 2}));
    __glewBeginQueryIndexed = begin_indexed;
    __glewEndQueryIndexed = end_indexed;
}

TEST_F(Query, HoldsItsTargetBetweenBeginAndEnd) {
    query_t query;
    query.begin(GL_PRIMITIVES_GENERATED, 0);
    EXPECT_TRUE(query.is_allocated());
    EXPECT_EQ(query.current_target(), static_cast<GLenum>(GL_PRIMITIVES_GENERATED));
    query.end();
    EXPECT_EQ(query.current_target(), 0u);
    EXPECT_EQ(query.current_index(), 0u);
}

TEST_F(Query, ResultMarksErrors) {
    query_t query;
    ulk_test::make_gl_error();
    const captured_stream errors(std::cerr);
    EXPECT_EQ(query.GetQuery(), 0u);
    EXPECT_EQ(errors.text(),
              "query_t::GetQuery(1): Error 1280: invalid enumerant\n"
              "query_t::GetQuery(end): Error 1282: invalid operation\n");
}

TEST_F(Query, ReleaseDeletesTheName) {
    query_t query;
    query.allocate();
    query.release();
    EXPECT_FALSE(query.is_allocated());
    query.begin(GL_PRIMITIVES_GENERATED, 0);
    query.end();
    EXPECT_EQ(query.GetQuery(), 0u);
}

}  // namespace
