#include "render/gl/shader.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "render/gl/program.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/gl_state.h"

namespace {

using namespace ulk3d;
using ulk_test::captured_stream;

using Shader = ulk_test::gl_test;
using Program = ulk_test::gl_test;

bool compile(shader_t& shader, GLenum type, const std::string& source) {
    return shader.allocate(type, source.data(), static_cast<GLint>(source.size()));
}

constexpr const char* vertex_source =
    "#version 330\nuniform mat4 Projection;\nvoid main() { gl_Position = Projection * vec4(1.0); }\n";
constexpr const char* fragment_source = "#version 330\nout vec4 c;\nvoid main() { c = vec4(1.0); }\n";

TEST_F(Shader, Compiles) {
    shader_t shader;
    const captured_stream errors(std::cerr);
    EXPECT_TRUE(compile(shader, GL_VERTEX_SHADER, vertex_source));
    EXPECT_NE(shader.shader_id(), 0u);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(Shader, TakesItsLengthNotTheTerminator) {
    shader_t shader;
    const std::string source = std::string(vertex_source) + "this is no GLSL";
    EXPECT_TRUE(shader.allocate(GL_VERTEX_SHADER, source.data(),
                                static_cast<GLint>(std::string(vertex_source).size())));
}

TEST_F(Shader, TakesSeveralStringsAsOneText) {
    shader_t shader;
    const GLchar* const strings[] = {"#version 330\nvoid ma", "in() {}garbage"};
    const GLint lengths[] = {20, 7};
    EXPECT_TRUE(shader.allocate(GL_VERTEX_SHADER, 2, strings, lengths));
}

TEST_F(Shader, FailureIsToldAndLogged) {
    shader_t shader;
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(compile(shader, GL_VERTEX_SHADER, "#version 330\nvoid main() { nonsense = 1; }\n"));
    EXPECT_EQ(errors.text(), "shader_t::allocate() compile status error.\n");
    EXPECT_NE(shader.compile_log().find("nonsense"), std::string::npos) << shader.compile_log();
    EXPECT_EQ(shader.compile_log().find('\0'), std::string::npos);
}

TEST_F(Shader, LogIsThatOfTheLastCompile) {
    shader_t shader;
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(compile(shader, GL_VERTEX_SHADER, "#version 330\nvoid main() { first = 1; }\n"));
    EXPECT_FALSE(compile(shader, GL_VERTEX_SHADER, "#version 330\nvoid main() { second = 1; }\n"));
    EXPECT_EQ(shader.compile_log().find("first"), std::string::npos);
    EXPECT_NE(shader.compile_log().find("second"), std::string::npos);
}

TEST_F(Shader, CompilesAnewUnderTheSameName) {
    shader_t shader;
    {
        const captured_stream errors(std::cerr);
        EXPECT_FALSE(compile(shader, GL_VERTEX_SHADER, "#version 330\nnonsense"));
    }
    const GLuint id = shader.shader_id();
    EXPECT_TRUE(compile(shader, GL_VERTEX_SHADER, vertex_source));
    EXPECT_EQ(shader.shader_id(), id);
}

TEST_F(Shader, UnknownTypeIsFalse) {
    shader_t shader;
    EXPECT_FALSE(compile(shader, 0xFFFF, vertex_source));
    EXPECT_EQ(shader.shader_id(), 0u);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_ENUM));
}

TEST_F(Shader, ReleaseDeletes) {
    shader_t shader;
    ASSERT_TRUE(compile(shader, GL_VERTEX_SHADER, vertex_source));
    const GLuint id = shader.shader_id();
    shader.release();
    EXPECT_EQ(shader.shader_id(), 0u);
    EXPECT_EQ(glIsShader(id), GL_FALSE);
}

TEST_F(Shader, FileIsCompiledWhenThereIsOne) {
    std::string folder = (std::filesystem::temp_directory_path() / "ulk_shader_XXXXXX").string();
    ASSERT_NE(mkdtemp(folder.data()), nullptr);
    std::ofstream(folder + "/own.vsd", std::ios::binary) << vertex_source;
    std::ofstream(folder + "/empty.vsd", std::ios::binary) << "";
    shader_t shader;
    EXPECT_FALSE(shader.allocate_file(GL_VERTEX_SHADER, "own.vsd", nullptr));
    EXPECT_EQ(shader.shader_id(), 0u);
    EXPECT_TRUE(shader.allocate_file(GL_VERTEX_SHADER, "own.vsd", (folder + "/").c_str()));
    EXPECT_NE(shader.shader_id(), 0u);
    // Whether an empty text compiles is for the driver to say; it must be able to see it.
    const captured_stream errors(std::cerr);
    (void)shader.allocate_file(GL_VERTEX_SHADER, "empty.vsd", (folder + "/").c_str());
    std::filesystem::remove_all(folder);
}

/// A program of the two sources, linked.
struct linked_t {
    shader_t vertex, fragment;
    program_t program;
    bool create() {
        if (!compile(vertex, GL_VERTEX_SHADER, vertex_source) ||
            !compile(fragment, GL_FRAGMENT_SHADER, fragment_source) || !program.create())
            return false;
        program.attach(vertex);
        program.attach(fragment);
        return program.link();
    }
};

TEST_F(Program, CreateTwiceIsFalse) {
    program_t program;
    EXPECT_TRUE(program.create());
    EXPECT_FALSE(program.create());
}

TEST_F(Program, LinksAndIsUsed) {
    linked_t linked;
    ASSERT_TRUE(linked.create());
    linked.program.use();
    EXPECT_EQ(ulk_test::gl_integer(GL_CURRENT_PROGRAM), static_cast<GLint>(linked.program.program_id()));
    program_t().use();
    EXPECT_NE(ulk_test::gl_integer(GL_CURRENT_PROGRAM), 0) << "a program that is not there changes nothing";
    program_t::unuse();
    EXPECT_EQ(ulk_test::gl_integer(GL_CURRENT_PROGRAM), 0);
}

TEST_F(Program, LinkFailureIsFalseAndLogged) {
    shader_t fragment;
    ASSERT_TRUE(compile(fragment, GL_FRAGMENT_SHADER,
                        "#version 330\nvec4 absent();\nout vec4 c;\nvoid main() { c = absent(); }\n"));
    program_t program;
    ASSERT_TRUE(program.create());
    program.attach(fragment);
    EXPECT_FALSE(program.link());
    EXPECT_NE(program.link_log().find("absent"), std::string::npos) << program.link_log();
}

TEST_F(Program, DetachTakesTheShaderAway) {
    linked_t linked;
    ASSERT_TRUE(linked.create());
    GLint attached = -1;
    linked.program.detach(linked.vertex);
    glGetProgramiv(linked.program.program_id(), GL_ATTACHED_SHADERS, &attached);
    EXPECT_EQ(attached, 1);
}

TEST_F(Program, UniformIsFound) {
    linked_t linked;
    ASSERT_TRUE(linked.create());
    const captured_stream errors(std::cerr);
    EXPECT_GE(linked.program.uniform("Projection"), 0);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(Program, AbsentUniformIsToldAndMinusOne) {
    linked_t linked;
    ASSERT_TRUE(linked.create());
    const captured_stream errors(std::cerr);
    EXPECT_EQ(linked.program.uniform("Modelview"), -1);
    EXPECT_EQ(errors.text(), "Modelview: can't determine the location.\n");
}

TEST_F(Program, DestructorDeletes) {
    GLuint id = 0;
    {
        program_t program;
        ASSERT_TRUE(program.create());
        id = program.program_id();
    }
    EXPECT_EQ(glIsProgram(id), GL_FALSE);
}

}  // namespace
