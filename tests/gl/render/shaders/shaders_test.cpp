#include "render/shaders/shaders.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <cstring>
#include <iostream>
#include <numbers>
#include <string>

#include "render/gl/array.h"
#include "render/gl/feedback_buffer.h"
#include "render/gl/mapped_span.h"
#include "render/gl/program.h"
#include "render/gl/shader.h"
#include "render/gl/transform_feedback.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/scene_text.h"
#include "support/working_directory.h"

namespace ulk3d {
namespace {

using testing::ElementsAre;

struct named_source_t {
    const shader_source_t* source;
    const char* name;
    GLenum stage;
};

const named_source_t all_sources[] = {
    {&shaders::shader_vsd, "shader.vsd", GL_VERTEX_SHADER},
    {&shaders::shader_fsd, "shader.fsd", GL_FRAGMENT_SHADER},
    {&shaders::feedback_vsd, "feedback.vsd", GL_VERTEX_SHADER},
    {&shaders::feedback_fsd, "feedback.fsd", GL_FRAGMENT_SHADER},
    {&shaders::selection_vsd, "selection.vsd", GL_VERTEX_SHADER},
    {&shaders::selection_fsd, "selection.fsd", GL_FRAGMENT_SHADER},
    {&shaders::drawline_vsd, "drawline.vsd", GL_VERTEX_SHADER},
    {&shaders::drawline_fsd, "drawline.fsd", GL_FRAGMENT_SHADER},
};

void build(program_t& program, const shader_source_t& vertex_source, const shader_source_t& fragment_source,
           std::initializer_list<const char*> varyings = {}) {
    shader_t vertex;
    shader_t fragment;
    ASSERT_TRUE(compile_source(vertex, GL_VERTEX_SHADER, vertex_source, nullptr)) << vertex.compile_log();
    ASSERT_TRUE(compile_source(fragment, GL_FRAGMENT_SHADER, fragment_source, nullptr))
        << fragment.compile_log();
    ASSERT_TRUE(program.create());
    program.attach(vertex);
    program.attach(fragment);
    if (varyings.size() != 0)
        glTransformFeedbackVaryings(program.program_id(), static_cast<GLsizei>(varyings.size()),
                                    varyings.begin(), GL_INTERLEAVED_ATTRIBS);
    ASSERT_TRUE(program.link()) << program.link_log();
}

class ShaderSources : public ulk_test::gl_test {
  protected:
    ulk_test::temporary_folder_t folder;
};

TEST_F(ShaderSources, AreNamedAsTheFilesThatReplaceThem) {
    for (const named_source_t& row : all_sources)
        EXPECT_STREQ(row.source->name, row.name);
}

TEST_F(ShaderSources, AreOfVersion330) {
    for (const named_source_t& row : all_sources)
        EXPECT_TRUE(std::string(row.source->text).starts_with("#version 330\n")) << row.name;
}

TEST_F(ShaderSources, CompileWithoutALog) {
    for (const named_source_t& row : all_sources) {
        shader_t shader;
        EXPECT_TRUE(compile_source(shader, row.stage, *row.source, nullptr)) << row.name;
        EXPECT_EQ(shader.compile_log(), "") << row.name;
    }
}

TEST_F(ShaderSources, LinkInPairsWithoutALog) {
    for (std::size_t i = 0; i < std::size(all_sources); i += 2) {
        program_t program;
        build(program, *all_sources[i].source, *all_sources[i + 1].source);
        EXPECT_EQ(program.link_log(), "") << all_sources[i].name;
    }
}

std::string source_of(const shader_t& shader) {
    std::string text(10000, '\0');
    GLsizei length = 0;
    glGetShaderSource(shader.shader_id(), static_cast<GLsizei>(text.size()), &length, text.data());
    text.resize(static_cast<std::size_t>(length));
    return text;
}

TEST_F(ShaderSources, BuiltInSourceStandsInWhereThereIsNoFile) {
    shader_t shader;
    ASSERT_TRUE(compile_source(shader, GL_VERTEX_SHADER, shaders::drawline_vsd, folder.path("").c_str()));
    EXPECT_EQ(source_of(shader), shaders::drawline_vsd.text);
}

TEST_F(ShaderSources, FileInTheBaseDirectoryReplacesTheSourceWithoutAWord) {
    const std::string replacement = "#version 330\nvoid main() { gl_Position = vec4(1.0); }\n";
    folder.write("drawline.vsd", replacement);
    const ulk_test::captured_stream errors(std::cerr);
    shader_t shader;
    EXPECT_TRUE(compile_source(shader, GL_VERTEX_SHADER, shaders::drawline_vsd, folder.path("").c_str()));
    EXPECT_EQ(source_of(shader), replacement);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(ShaderSources, FileInTheWorkingDirectoryComesFirst) {
    const std::string replacement = "#version 330\nvoid main() { gl_Position = vec4(2.0); }\n";
    ulk_test::temporary_folder_t base;
    base.write("drawline.vsd", "#version 330\nvoid main() { gl_Position = vec4(1.0); }\n");
    folder.write("drawline.vsd", replacement);
    const ulk_test::working_directory in_folder(folder.path(""));
    shader_t shader;
    EXPECT_TRUE(compile_source(shader, GL_VERTEX_SHADER, shaders::drawline_vsd, base.path("").c_str()));
    EXPECT_EQ(source_of(shader), replacement);
}

TEST_F(ShaderSources, EmptyFileIsASourceThatDoesNotCompile) {
    folder.write("drawline.vsd", "");
    const ulk_test::captured_stream errors(std::cerr);
    shader_t shader;
    EXPECT_FALSE(compile_source(shader, GL_VERTEX_SHADER, shaders::drawline_vsd, folder.path("").c_str()));
}

// --- the solid program's functions ------------------------------------------------------------------------

/// Evaluates a function of one float that stands in the solid program's fragment source, on the GPU.
float evaluate(const std::string& function, float argument) {
    const std::string source = shaders::shader_fsd.text;
    const std::size_t begin = source.find("float " + function + "(float f)");
    EXPECT_NE(begin, std::string::npos);
    const std::string body = source.substr(begin, source.find("\n}\n", begin) + 3 - begin);
    const std::string text = "#version 330\nuniform float argument;\nout float result;\n" + body +
                             "void main() { gl_Position = vec4(0.0); result = " + function +
                             "(argument); }\n";
    program_t program;
    build(program, {"evaluate", text.c_str()}, {"nothing", "#version 330\nvoid main() {}\n"}, {"result"});
    vertex_array_t vertices;
    vertices.allocate();
    feedback_buffer_t results;
    EXPECT_TRUE(results.allocate(1) && results.provide());
    transform_feedback_t feedback;
    EXPECT_TRUE(feedback.allocate());
    ulk_test::render_target_t target(4, 4);
    target.bind();
    program.use();
    glUniform1f(program.uniform("argument"), argument);
    feedback.begin(GL_POINTS, results.buffer_id());
    vertices.draw(GL_POINTS, 1);
    feedback.end();
    program_t::unuse();
    return feedback_span<float>(results)[0];
}

struct slope_row_t {
    float argument;
    double result;
};

void PrintTo(const slope_row_t& row, std::ostream* os) {
    *os << row.argument;
}

class AsinSlope : public ulk_test::gl_test, public testing::WithParamInterface<slope_row_t> {};

TEST_P(AsinSlope, BendsTheCoordinate) {
    EXPECT_NEAR(evaluate("asin_slope", GetParam().argument), GetParam().result, 2e-3);
}

INSTANTIATE_TEST_SUITE_P(Coordinates, AsinSlope,
                         testing::Values(slope_row_t{0.0F, 0.0},           // both ends and the middle stay
                                         slope_row_t{0.5F, 0.5},           //
                                         slope_row_t{0.25F, 1.0 / 3.0},    // asin(-1/2) is -30 degrees
                                         slope_row_t{0.75F, 2.0 / 3.0},    //
                                         slope_row_t{1.0F, 0.0},           // wraps to the value of 0
                                         slope_row_t{1.25F, 1.0 / 3.0},    // period 1
                                         slope_row_t{-0.25F, 2.0 / 3.0},   //
                                         slope_row_t{0.9999999F, 0.9999})  // the seam lies at 1
);

TEST_F(ShaderSources, AsinSlopeIsTwoOverPiInTheMiddle) {
    const float slope = (evaluate("asin_slope", 0.51F) - evaluate("asin_slope", 0.49F)) / 0.02F;
    EXPECT_NEAR(slope, 2.0 / std::numbers::pi, 1e-2);
}

TEST_F(ShaderSources, SinSlopeUndoesAsinSlope) {
    for (const float f : {0.1F, 0.3F, 0.5F, 0.8F})
        EXPECT_NEAR(evaluate("sin_slope", evaluate("asin_slope", f)), f, 2e-3);
}

// --- the selection program --------------------------------------------------------------------------------

struct fed_back_t {
    std::array<float, 4> color;
    std::int32_t id;
    std::int32_t is_inside;
    std::array<float, 4> clip;
};
static_assert(sizeof(fed_back_t) == 40);

struct selection_point_t {
    std::array<float, 3> position;
    std::array<float, 4> color;
    float size;
};

constexpr std::array<float, 16> identity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// The selection program with its varyings, and the target that it draws into.
class SelectionProgram : public ulk_test::gl_test {
  protected:
    void SetUp() override {
        ulk_test::gl_test::SetUp();
        build(program, shaders::selection_vsd, shaders::selection_fsd,
              {"VertexColor", "VertexID", "isInside", "clip"});
        target.bind();
        glClearColor(0, 0, 0, 1);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glDisable(GL_DEPTH_TEST);
        glEnable(GL_PROGRAM_POINT_SIZE);
        holder.allocate();
    }

    std::vector<fed_back_t> run(const std::vector<selection_point_t>& points) {
        array_t array;
        feedback_buffer_t results;
        transform_feedback_t feedback;
        const auto count = static_cast<std::int64_t>(points.size());
        EXPECT_TRUE(array.allocate(
            count, make_element_list({e_type_t::Position, e_type_t::RGBA, e_type_t::PointSize}),
            points.data()));
        EXPECT_TRUE(results.allocate(10 * count) && results.provide());
        EXPECT_TRUE(feedback.allocate());
        holder.bind_attributes(array.element_list(), array.vertex_stride(), array.buffer_id(), 0);
        program.use();
        glUniformMatrix4fv(program.uniform("Modelview"), 1, GL_TRUE, modelview.data());
        glUniformMatrix4fv(program.uniform("Projection"), 1, GL_TRUE, projection.data());
        glUniformMatrix4fv(program.uniform("ClipPlanes"), 1, GL_FALSE, clip_planes.data());
        feedback.begin(GL_POINTS, results.buffer_id());
        holder.draw(GL_POINTS, static_cast<GLsizei>(count));
        feedback.end();
        program_t::unuse();
        const feedback_span<fed_back_t> records(results);
        return {records.begin(), records.end()};
    }

    std::array<float, 16> modelview = identity;
    std::array<float, 16> projection = identity;
    /// Columns of the pick rectangle -0.5..0.5 in both axes: x + w/2, -x + w/2, y + w/2, -y + w/2.
    std::array<float, 16> clip_planes{1, 0, 0, 0.5F, -1, 0, 0, 0.5F, 0, 1, 0, 0.5F, 0, -1, 0, 0.5F};
    program_t program;
    vertex_array_t holder;
    ulk_test::render_target_t target{16, 16};
};

TEST_F(SelectionProgram, FeedsBackColorIdInsideAndClipInThisOrder) {
    const std::vector<fed_back_t> records =
        run({{{0, 0, 0}, {1, 2, 3, 4}, 3}, {{0.25F, -0.125F, 0}, {0.5F, 0.25F, 0, 1}, 3}});
    ASSERT_EQ(records.size(), 2U);
    EXPECT_THAT(records[0].color, ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(records[0].id, 0);
    EXPECT_EQ(records[1].id, 1);
    EXPECT_THAT(records[1].color, ElementsAre(0.5F, 0.25F, 0, 1));
    EXPECT_THAT(records[1].clip, ElementsAre(0.75F, 0.25F, 0.375F, 0.625F));
}

struct inside_row_t {
    std::array<float, 3> position;
    int is_inside;
};

TEST_F(SelectionProgram, PointIsInsideWhenNoClipComponentIsNegative) {
    const inside_row_t rows[] = {
        {{0, 0, 0}, 1},       {{0.5F, 0, 0}, 1},     {{-0.5F, 0, 0}, 1},         {{0, 0.5F, 0}, 1},
        {{0, -0.5F, 0}, 1},   {{0.5F, -0.5F, 0}, 1}, {{0.5625F, 0, 0}, 0},       {{-0.5625F, 0, 0}, 0},
        {{0, 0.5625F, 0}, 0}, {{0, -0.5625F, 0}, 0}, {{0.5625F, 0.5625F, 0}, 0},
    };
    for (const inside_row_t& row : rows) {
        const std::vector<fed_back_t> records = run({{row.position, {1, 1, 1, 1}, 3}});
        EXPECT_EQ(records[0].is_inside, row.is_inside) << row.position[0] << ", " << row.position[1];
    }
}

TEST_F(SelectionProgram, PointOnASideHasAClipComponentOfZeroAndCounts) {
    const fed_back_t record = run({{{0.5F, 0, 0}, {1, 1, 1, 1}, 3}})[0];
    EXPECT_THAT(record.clip, ElementsAre(1.0F, 0.0F, 0.5F, 0.5F));
    EXPECT_EQ(record.is_inside, 1);
}

TEST_F(SelectionProgram, PositionGoesThroughModelviewThenProjection) {
    modelview = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0.25F, 0, 0, 1};  // moves x by a quarter
    projection = {2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};     // doubles x
    const fed_back_t record = run({{{-0.125F, 0, 0}, {1, 1, 1, 1}, 3}})[0];
    EXPECT_THAT(record.clip, ElementsAre(0.75F, 0.25F, 0.5F, 0.5F));
}

TEST_F(SelectionProgram, PointIsDrawnInItsColorAtItsSize) {
    run({{{0, 0, 0}, {1, 0.2F, 0, 1}, 4}});
    const libutils::rgba_picture_t picture = target.read_pixels();
    std::size_t drawn = 0;
    for (const auto& pixel : picture.pixels)
        drawn += pixel == libutils::rgba_picture_t::pixel_t{255, 51, 0, 255};
    EXPECT_EQ(drawn, 16U);
}

// --- the line program -------------------------------------------------------------------------------------

TEST_F(ShaderSources, LineProgramDrawsInTheColorOfItsVertices) {
    program_t program;
    build(program, shaders::drawline_vsd, shaders::drawline_fsd);
    ulk_test::render_target_t target(8, 8);
    target.bind();
    glDisable(GL_DEPTH_TEST);
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    // Moved up by Modelview to a row of pixel centres, then squeezed by Projection to the left half.
    const std::array<float, 14> line{-1, 0, 0, 1, 0.4F, 0.2F, 1, 1, 0, 0, 1, 0.4F, 0.2F, 1};
    const std::array<float, 16> modelview{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0.25F, 0, 1};
    const std::array<float, 16> projection{0.5F, 0, 0, 0, 0, 0.5F, 0, 0, 0, 0, 1, 0, -0.5F, 0, 0, 1};
    array_t array;
    ASSERT_TRUE(array.allocate(2, make_element_list({e_type_t::Position, e_type_t::RGBA}), line.data()));
    vertex_array_t holder;
    holder.allocate();
    holder.bind_attributes(array.element_list(), array.vertex_stride(), array.buffer_id(), 0);
    program.use();
    glUniformMatrix4fv(program.uniform("Modelview"), 1, GL_TRUE, modelview.data());
    glUniformMatrix4fv(program.uniform("Projection"), 1, GL_TRUE, projection.data());
    holder.draw(GL_LINES, 2);
    program_t::unuse();
    const libutils::rgba_picture_t picture = target.read_pixels();
    EXPECT_EQ(picture.at(1, 3), (libutils::rgba_picture_t::pixel_t{255, 102, 51, 255}));
    EXPECT_EQ(picture.at(6, 3), (libutils::rgba_picture_t::pixel_t{0, 0, 0, 255}));
    EXPECT_EQ(picture.at(1, 5), (libutils::rgba_picture_t::pixel_t{0, 0, 0, 255}));
}

}  // namespace
}  // namespace ulk3d
