#include <gmock/gmock.h>

#include <iostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "render/models/glnurbs.h"
#include "support/broken_shaders.h"
#include "support/captured_stream.h"
#include "support/forced_marks.h"
#include "support/gl_context.h"
#include "support/scene_text.h"

namespace ulk3d {
namespace {

using ulk_test::broken_file_t;
using ulk_test::does_not_compile;
using ulk_test::does_not_link;

using testing::ElementsAre;
using testing::StartsWith;

class GlnurbsInit : public ulk_test::gl_test {
  protected:
    ulk_test::temporary_folder_t folder;
};

TEST_F(GlnurbsInit, SaysNothingWhenAllIsWell) {
    const ulk_test::captured_stream errors(std::cerr);
    glnurbs_t glnurbs;
    EXPECT_TRUE(glnurbs.init(nullptr));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(GlnurbsInit, FindsItsUniformsByTheirNames) {
    glnurbs_t glnurbs;
    ASSERT_TRUE(glnurbs.init(nullptr));
    const std::pair<const char*, std::int32_t> rows[] = {{"Modelview", glnurbs.Modelview},
                                                         {"Projection", glnurbs.Projection},
                                                         {"ClipPlanes", glnurbs.ClipPlanes}};
    for (const auto& [name, location] : rows) {
        EXPECT_NE(location, -1) << name;
        EXPECT_EQ(location, glGetUniformLocation(glnurbs.program.program_id(), name)) << name;
    }
}

TEST_F(GlnurbsInit, CapturesTheFourVaryingsInterleavedInTheirOrder) {
    glnurbs_t glnurbs;
    ASSERT_TRUE(glnurbs.init(nullptr));
    const GLuint id = glnurbs.program.program_id();
    GLint mode = 0;
    glGetProgramiv(id, GL_TRANSFORM_FEEDBACK_BUFFER_MODE, &mode);
    EXPECT_EQ(mode, GL_INTERLEAVED_ATTRIBS);
    std::vector<std::string> names;
    GLint count = 0;
    glGetProgramiv(id, GL_TRANSFORM_FEEDBACK_VARYINGS, &count);
    for (GLint i = 0; i < count; ++i) {
        char name[64] = {};
        GLsizei size = 0;
        GLenum type = 0;
        glGetTransformFeedbackVarying(id, static_cast<GLuint>(i), sizeof name, nullptr, &size, &type, name);
        names.emplace_back(name);
    }
    EXPECT_THAT(names, ElementsAre("VertexColor", "VertexID", "isInside", "clip"));
}

TEST_F(GlnurbsInit, MarksStandInTheirOrder) {
    const ulk_test::forced_marks marks;
    glnurbs_t glnurbs;
    ASSERT_TRUE(glnurbs.init(nullptr));
    EXPECT_THAT(marks.beginning_with("glnurbs_t::"),
                ElementsAre("glnurbs_t::init() selection feedback varying setted.", "glnurbs_t::init(3)"));
}

constexpr const char* varyings_alone =
    "flat out int VertexID;\nflat out int isInside;\nout vec4 VertexColor;\nout vec4 clip;\n"
    "void main() { VertexID = isInside = 1; VertexColor = clip = gl_Position = vec4(1.0); }\n";

TEST_F(GlnurbsInit, PrintsEachUniformThatAReplacementLacks) {
    folder.write("selection.vsd", std::string("#version 330\n") + varyings_alone);
    const ulk_test::captured_stream errors(std::cerr);
    glnurbs_t glnurbs;
    EXPECT_TRUE(glnurbs.init(folder.path("").c_str()));
    EXPECT_EQ(errors.text(),
              "Modelview: can't determine the location.\n"
              "Projection: can't determine the location.\n"
              "ClipPlanes: can't determine the location.\n");
    EXPECT_EQ(glnurbs.ClipPlanes, -1);
}

// The driver's own warnings do not serve: it leaves them out when its cache knows the source.
constexpr std::string_view log_words = "GL has something to say about this\n";

void GLAPIENTRY say_log_words(GLuint, GLsizei size, GLsizei* written, GLchar* log) {
    *written = static_cast<GLsizei>(log_words.copy(log, static_cast<std::size_t>(size) - 1));
}

PFNGLGETSHADERIVPROC real_integer = nullptr;

void GLAPIENTRY count_log_words(GLuint object, GLenum name, GLint* value) {
    if (name == GL_INFO_LOG_LENGTH)
        *value = static_cast<GLint>(log_words.size() + 1);
    else
        real_integer(object, name, value);
}

/// Runs init while GL's calls that fetch logs give the words above.
std::string output_of_init_with_logs(PFNGLGETSHADERIVPROC& get_integer, PFNGLGETSHADERINFOLOGPROC& get_log) {
    real_integer = std::exchange(get_integer, count_log_words);
    const auto real_log = std::exchange(get_log, say_log_words);
    const ulk_test::captured_stream errors(std::cerr);
    glnurbs_t glnurbs;
    EXPECT_TRUE(glnurbs.init(nullptr));
    get_integer = real_integer;
    get_log = real_log;
    return errors.text();
}

TEST_F(GlnurbsInit, PrintsTheCompileLogsOfBothSourcesThatGlTakes) {
    EXPECT_EQ(output_of_init_with_logs(glGetShaderiv, glGetShaderInfoLog),
              std::string(log_words) + std::string(log_words));
}

TEST_F(GlnurbsInit, PrintsTheLinkLogAlsoWhenTheProgramLinks) {
    EXPECT_EQ(output_of_init_with_logs(glGetProgramiv, glGetProgramInfoLog), log_words);
}

void GLAPIENTRY give_no_name(GLsizei, GLuint*) {}

TEST_F(GlnurbsInit, WithoutAFeedbackObjectItIsFalseAndNothingIsLinked) {
    if (!GLEW_VERSION_4_0)
        GTEST_SKIP() << "GL has no such objects before 4.0";
    const auto real_function = glGenTransformFeedbacks;
    glGenTransformFeedbacks = give_no_name;
    const ulk_test::captured_stream errors(std::cerr);
    glnurbs_t glnurbs;
    const bool result = glnurbs.init(nullptr);
    glGenTransformFeedbacks = real_function;
    EXPECT_FALSE(result);
    EXPECT_EQ(errors.text(), "selection_feedback.allocate() failed.\n");
    GLint linked = GL_TRUE;
    glGetProgramiv(glnurbs.program.program_id(), GL_LINK_STATUS, &linked);
    EXPECT_EQ(linked, GL_FALSE);
}

// --- failures that end the process ------------------------------------------------------------------------

class GlnurbsInitDeathTest : public ulk_test::broken_shader_test {};

TEST_P(GlnurbsInitDeathTest, EndsWithStatusOneAndTheLog) {
    glnurbs_t glnurbs;
    EXPECT_EXIT(static_cast<void>(glnurbs.init(folder.path("").c_str())), testing::ExitedWithCode(1),
                testing::AllOf(StartsWith(GetParam().words), testing::ContainsRegex("error: .+")));
}

INSTANTIATE_TEST_SUITE_P(
    BrokenFiles, GlnurbsInitDeathTest,
    testing::Values(broken_file_t{"selection.vsd", does_not_compile,
                                  "shader_t::allocate() compile status error.\n"
                                  "selection.vsd: selection vertex shader init failed.\n"},
                    broken_file_t{"selection.fsd", does_not_compile,
                                  "shader_t::allocate() compile status error.\n"
                                  "selection.fsd: selection fragment shader init failed.\n"},
                    broken_file_t{"selection.fsd", does_not_link, "selection program link failed.\n"}));

}  // namespace
}  // namespace ulk3d
