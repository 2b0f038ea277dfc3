#include <gmock/gmock.h>

#include <iostream>
#include <string>

#include "render/gl/feedback_buffer.h"
#include "render/models/glpolygon.h"
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

class GlpolygonInit : public ulk_test::gl_test {
  protected:
    ulk_test::temporary_folder_t folder;
};

TEST_F(GlpolygonInit, SaysNothingWhenAllIsWell) {
    const ulk_test::captured_stream errors(std::cerr);
    glpolygon_t glpolygon;
    EXPECT_TRUE(glpolygon.init(nullptr));
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(glpolygon.feedback_program.link_log(), "");
    EXPECT_EQ(glpolygon.program.link_log(), "");
}

TEST_F(GlpolygonInit, FindsAllSeventeenUniforms) {
    glpolygon_t glpolygon;
    ASSERT_TRUE(glpolygon.init(nullptr));
    const surface_uniforms_t& found = glpolygon.uniforms;
    for (const std::int32_t location :
         {found.Globalview, found.Modelview, found.invModelview, found.Projection, found.LightPosition,
          found.Shininess, found.RefractFactor, found.SkyBox, found.ReflectAlpha, found.RefractAlpha,
          found.cubeTex, found.colorTex, found.bumpTex, found.specTex, found.bumpOfs, found.ColorFactor,
          found.MercatorSphere})
        EXPECT_NE(location, -1);
}

TEST_F(GlpolygonInit, LocationsBelongToTheirNames) {
    glpolygon_t glpolygon;
    ASSERT_TRUE(glpolygon.init(nullptr));
    const surface_uniforms_t& found = glpolygon.uniforms;
    const std::pair<const char*, std::int32_t> rows[] = {
        {"Globalview", found.Globalview},
        {"Modelview", found.Modelview},
        {"invModelview", found.invModelview},
        {"Projection", found.Projection},
        {"LightPosition", found.LightPosition},
        {"Shininess", found.Shininess},
        {"RefractFactor", found.RefractFactor},
        {"SkyBox", found.SkyBox},
        {"ReflectAlpha", found.ReflectAlpha},
        {"RefractAlpha", found.RefractAlpha},
        {"cubeTex", found.cubeTex},
        {"colorTex", found.colorTex},
        {"bumpTex", found.bumpTex},
        {"specTex", found.specTex},
        {"bumpOfs", found.bumpOfs},
        {"ColorFactor", found.ColorFactor},
        {"MercatorSphere", found.MercatorSphere},
    };
    for (const auto& [name, location] : rows)
        EXPECT_EQ(location, glGetUniformLocation(glpolygon.program.program_id(), name)) << name;
}

TEST_F(GlpolygonInit, PrintsEachUniformThatAReplacementLacks) {
    folder.write("shader.vsd", "#version 330\nvoid main() { gl_Position = vec4(1.0); }\n");
    folder.write("shader.fsd", "#version 330\nout vec4 color;\nvoid main() { color = vec4(1.0); }\n");
    const ulk_test::captured_stream errors(std::cerr);
    glpolygon_t glpolygon;
    EXPECT_TRUE(glpolygon.init(folder.path("").c_str()));
    EXPECT_EQ(errors.text(),
              "Globalview: can't determine the location.\n"
              "Modelview: can't determine the location.\n"
              "invModelview: can't determine the location.\n"
              "Projection: can't determine the location.\n"
              "LightPosition: can't determine the location.\n"
              "Shininess: can't determine the location.\n"
              "RefractFactor: can't determine the location.\n"
              "SkyBox: can't determine the location.\n"
              "ReflectAlpha: can't determine the location.\n"
              "RefractAlpha: can't determine the location.\n"
              "cubeTex: can't determine the location.\n"
              "colorTex: can't determine the location.\n"
              "bumpTex: can't determine the location.\n"
              "specTex: can't determine the location.\n"
              "bumpOfs: can't determine the location.\n"
              "ColorFactor: can't determine the location.\n"
              "MercatorSphere: can't determine the location.\n");
    EXPECT_EQ(glpolygon.uniforms.SkyBox, -1);
}

TEST_F(GlpolygonInit, MarksStandInTheirOrder) {
    const ulk_test::forced_marks marks;
    glpolygon_t glpolygon;
    ASSERT_TRUE(glpolygon.init(nullptr));
    EXPECT_THAT(marks.beginning_with("glpolygon_t::"),
                ElementsAre("glpolygon_t::init() feedback vertex shader inited.",
                            "glpolygon_t::init() feedback fragment shader inited.",
                            "glpolygon_t::init() feedback program inited.",
                            "glpolygon_t::init() feedback varying setted.", "glpolygon_t::init(end)"));
}

void GLAPIENTRY give_no_name(GLsizei, GLuint*) {}

TEST_F(GlpolygonInit, WithoutAFeedbackObjectItIsFalseAndTheSurfaceProgramIsUntouched) {
    if (!GLEW_VERSION_4_0)
        GTEST_SKIP() << "GL has no such objects before 4.0";
    const auto real_function = glGenTransformFeedbacks;
    glGenTransformFeedbacks = give_no_name;
    const ulk_test::captured_stream errors(std::cerr);
    glpolygon_t glpolygon;
    const bool result = glpolygon.init(nullptr);
    glGenTransformFeedbacks = real_function;
    EXPECT_FALSE(result);
    EXPECT_EQ(errors.text(), "feedback.allocate() error.\n");
    EXPECT_EQ(glpolygon.vertex.shader_id(), 0U);
    EXPECT_EQ(glpolygon.fragment.shader_id(), 0U);
    EXPECT_EQ(glpolygon.program.program_id(), 0U);
}

TEST_F(GlpolygonInit, TheGeometryStageIsNeverCompiled) {
    glpolygon_t glpolygon;
    ASSERT_TRUE(glpolygon.init(nullptr));
    EXPECT_EQ(glpolygon.geometry.shader_id(), 0U);
}

// --- failures that end the process ------------------------------------------------------------------------

class GlpolygonInitDeathTest : public ulk_test::broken_shader_test {};

TEST_P(GlpolygonInitDeathTest, EndsWithStatusOneAndTheLog) {
    glpolygon_t glpolygon;
    EXPECT_EXIT(static_cast<void>(glpolygon.init(folder.path("").c_str())), testing::ExitedWithCode(1),
                testing::AllOf(StartsWith(GetParam().words), testing::ContainsRegex("error: .+")));
}

INSTANTIATE_TEST_SUITE_P(
    BrokenFiles, GlpolygonInitDeathTest,
    testing::Values(broken_file_t{"feedback.vsd", does_not_compile,
                                  "shader_t::allocate() compile status error.\n"
                                  "feedback.vsd: feedback vertex shader init failed.\n"},
                    broken_file_t{"feedback.fsd", does_not_compile,
                                  "shader_t::allocate() compile status error.\n"
                                  "feedback.fsd: feedback fragment shader init failed.\n"},
                    broken_file_t{"feedback.fsd", does_not_link, "feedback program link failed.\n"},
                    broken_file_t{"shader.vsd", does_not_compile,
                                  "shader_t::allocate() compile status error.\n"
                                  "shader.vsd: vertex shader init failed.\n"},
                    broken_file_t{"shader.fsd", does_not_compile,
                                  "shader_t::allocate() compile status error.\n"
                                  "shader.fsd: fragment shader init failed.\n"},
                    broken_file_t{"shader.fsd", does_not_link, "program link failed.\n"}));

}  // namespace
}  // namespace ulk3d
