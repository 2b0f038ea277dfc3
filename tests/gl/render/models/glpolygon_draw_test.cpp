#include <gmock/gmock.h>

#include <iostream>

#include "gl/render/models/surface_scene.h"
#include "model/math/matrices.h"
#include "render/gl/mapped_span.h"
#include "support/captured_stream.h"
#include "support/forced_marks.h"
#include "support/gl_state.h"
#include "support/polygon_builder.h"

namespace ulk3d {
namespace {

using testing::ElementsAre;
using ulk_test::blend_added;
using ulk_test::blend_by_alpha;
using ulk_test::bound_texture;
using ulk_test::gl_integer;
using ulk_test::map_samples_t;
using ulk_test::rgba_t;

class DrawSolid : public ulk_test::surface_test {};
class DrawSelect : public ulk_test::surface_test {};

/// Places at which pixels are looked at: the middle, where the highlight is, and towards the borders.
constexpr std::pair<int, int> places[] = {{16, 16}, {4, 9}, {27, 12}, {16, 30}, {2, 2}};

// --- light ------------------------------------------------------------------------------------------------

TEST_F(DrawSolid, FacingTriangleShowsDiffusePlusSpecularLight) {
    drawsolid();
    for (const auto& [column, row] : places)
        expect_pixel(column, row, blend_by_alpha(shaded(column, row), ground));
}

TEST_F(DrawSolid, LightIsFullWhereItFallsStraight) {
    const auto no_highlight = bound_texture::colors(2, 1, 1, {0, 0, 0, 0});
    drawsolid();
    expect_pixel(16, 16, {0.5, 0.4, 0.3, 1});
}

TEST_F(DrawSolid, ShininessSharpensTheHighlight) {
    view.Shininess = 100.0F;
    drawsolid();
    for (const auto& [column, row] : places)
        expect_pixel(column, row, blend_by_alpha(shaded(column, row), ground));
}

TEST_F(DrawSolid, LightMovesWithItsPosition) {
    view.LightPosition = {1.5F, -0.5F, 0.25F};
    drawsolid();
    for (const auto& [column, row] : places)
        expect_pixel(column, row, blend_by_alpha(shaded(column, row), ground));
}

TEST_F(DrawSolid, FacingAwayGivesNoDiffuseLight) {
    for (frame_t& frame : triangle.frames)
        frame.normal = {0, 0, -1};
    build();
    drawsolid();
    for (const auto& [column, row] : places)
        expect_pixel(column, row, blend_by_alpha(shaded(column, row), ground));
    const rgba_t border = shaded(4, 9);
    EXPECT_EQ(border[0], border[2]) << "only the highlight, which is white";
}

TEST_F(DrawSolid, BackFacesAreDrawn) {
    std::swap(triangle.vertices[1], triangle.vertices[2]);
    build();
    drawsolid();
    for (const auto& [column, row] : places)
        expect_pixel(column, row, blend_by_alpha(shaded(column, row), ground));
}

TEST_F(DrawSolid, ModelviewMovesAndTurnsAndItsInverseCarriesTheFrame) {
    view.Modelview = rotation(30, {1, 0, 0}) * rotation(20, {0, 1, 0}) * rotation(40, {0, 0, 1}) *
                     scale(2, 2, 2) * translation({0.25F, -1.0F, 0.5F});
    view.invModelview = inverse(view.Modelview);
    const auto map = bound_texture::normals(1, 1, 1, {40, -20, 110});
    const map_samples_t maps{.normal = {40 / 127.0, -20 / 127.0, 110 / 127.0}};
    drawsolid();
    for (const auto& [column, row] : {std::pair{16, 16}, {10, 12}, {22, 20}})
        expect_pixel(column, row, blend_by_alpha(shaded(column, row, 1, maps), ground));
}

TEST_F(DrawSolid, VertexColorsPassInterpolated) {
    triangle.vertices[0].color = {1, 0, 0, 1};
    triangle.vertices[1].color = {0, 1, 0, 1};
    triangle.vertices[2].color = {0, 0, 1, 1};
    build();
    drawsolid();
    for (const auto& [column, row] : places)
        expect_pixel(column, row, blend_by_alpha(shaded(column, row), ground));
}

TEST_F(DrawSolid, AlphaBlendsOverWhatStandsThere) {
    make_triangle({0.5F, 0.4F, 0.3F, 0.25F});
    drawsolid();
    for (const auto& [column, row] : places)
        expect_pixel(column, row, blend_by_alpha(shaded(column, row), ground));
}

TEST_F(DrawSolid, NearerSurfaceHidesTheFartherOne) {
    drawsolid();
    const libutils::rgba_picture_t near_only = target.read_pixels();
    for (vertex_t& vertex : triangle.vertices)
        vertex.position.z = -3;
    build();
    drawsolid();
    EXPECT_EQ(target.read_pixels(), near_only);
}

// --- maps -------------------------------------------------------------------------------------------------

TEST_F(DrawSolid, ColorMapMultipliesTheVertexColor) {
    const auto map = bound_texture::colors(0, 1, 1, {255, 128, 0, 128});
    const map_samples_t maps{.color = {1, 128 / 255.0, 0, 128 / 255.0}};
    drawsolid();
    for (const auto& [column, row] : places)
        expect_pixel(column, row, blend_by_alpha(shaded(column, row, 1, maps), ground));
}

TEST_F(DrawSolid, SpecularMapScalesTheHighlightAlphaIncluded) {
    make_triangle({0.5F, 0.4F, 0.3F, 0.25F});
    const auto map = bound_texture::colors(2, 1, 1, {255, 128, 0, 64});
    const map_samples_t maps{.specular = {1, 128 / 255.0, 0, 64 / 255.0}};
    drawsolid();
    for (const auto& [column, row] : places)
        expect_pixel(column, row, blend_by_alpha(shaded(column, row, 1, maps), ground));
}

TEST_F(DrawSolid, BumpMapIsTheNormalAsItIs) {
    const auto map = bound_texture::normals(1, 1, 1, {64, -32, 100});  // not of unit length
    const map_samples_t maps{.normal = {64 / 127.0, -32 / 127.0, 100 / 127.0}};
    drawsolid();
    for (const auto& [column, row] : places)
        expect_pixel(column, row, blend_by_alpha(shaded(column, row, 1, maps), ground));
}

TEST_F(DrawSolid, BumpOffsetMovesTheBumpLookupOnly) {
    for (vertex_t& vertex : triangle.vertices)
        vertex.texcoord = {0.25F, 0.25F};
    build();
    const auto normals = bound_texture::normals(1, 2, 2, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 127});
    const auto colors =
        bound_texture::colors(0, 2, 2, {255, 255, 255, 255, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    texture.bump_offset_u = 0.5F;
    texture.bump_offset_v = 0.5F;
    drawsolid();
    for (const auto& [column, row] : places)
        expect_pixel(column, row, blend_by_alpha(shaded(column, row), ground));
}

// --- environment ------------------------------------------------------------------------------------------

/// Colours of the faces +x, -x, +y, -y, +z, -z.
const std::vector<std::uint8_t> face_colors = {255, 0,   0, 0, 0,   255, 0,   0, 0,   0, 255, 0,
                                               255, 255, 0, 0, 255, 0,   255, 0, 128, 0, 0,   0};
constexpr rgba_t positive_x{1, 0, 0, 0};
constexpr rgba_t positive_z{1, 0, 1, 0};
constexpr rgba_t negative_z{128 / 255.0, 0, 0, 0};

/// A black surface without a highlight, so that a picture is the environment alone.
class Environment : public ulk_test::surface_test {
  protected:
    void SetUp() override {
        ulk_test::surface_test::SetUp();
        make_triangle({0, 0, 0, 1});
        environment.cubetex = "sky.png";
    }
    bound_texture cube = bound_texture::cube(3, face_colors);
    bound_texture no_highlight = bound_texture::colors(2, 1, 1, {0, 0, 0, 0});
};

rgba_t opaque(const rgba_t& color, double weight = 1.0) {
    return {color[0] * weight, color[1] * weight, color[2] * weight, 1};
}

TEST_F(Environment, IsReflectedByItsAlpha) {
    environment.reflectalpha = 0.5F;
    drawsolid();
    expect_pixel(16, 16, opaque(positive_z, 0.5));
}

TEST_F(Environment, IsRefractedByItsAlpha) {
    environment.reflectalpha = 0.0F;
    environment.refractalpha = 0.5F;
    drawsolid();
    expect_pixel(16, 16, opaque(negative_z, 0.5));
}

TEST_F(Environment, ReflectionFollowsTheBumpedNormal) {
    const auto map = bound_texture::normals(1, 1, 1, {90, 0, 90});  // 45 degrees towards +x
    drawsolid();
    expect_pixel(16, 16, opaque(positive_x));
}

TEST_F(Environment, BumpedNormalGoesFromObjectToView) {
    // The object's x axis points to the viewer, its z axis to the left.
    view.Modelview = {{0, 0, 1, 0, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 0, 1}};
    view.invModelview = {{0, 0, -1, 0, 0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 0, 1}};
    for (vertex_t& vertex : triangle.vertices)
        vertex.position = {vertex.position.z, vertex.position.y, -vertex.position.x};
    triangle.frames.fill({{0, 0, -1}, {0, 1, 0}, {1, 0, 0}});
    build();
    const auto map = bound_texture::normals(1, 1, 1, {90, 0, 90});  // 45 degrees towards +x of the view
    drawsolid();
    expect_pixel(16, 16, opaque(positive_x));
}

TEST_F(Environment, IsTurnedByGlobalview) {
    view.Globalview = {{0, 0, 1, 0, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 0, 1}};  // +z becomes +x
    drawsolid();
    expect_pixel(16, 16, opaque(positive_x));
}

TEST_F(Environment, SkyBoxLooksItUpByThePosition) {
    drawsolid(true);
    expect_pixel(16, 16, opaque(negative_z));
}

TEST_F(Environment, SkyBoxPositionIsTheOneInObjectSpace) {
    view.Modelview = {{-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1}};  // half round about y
    view.invModelview = view.Modelview;
    for (vertex_t& vertex : triangle.vertices)
        vertex.position.z = 2;
    build();
    drawsolid(true);
    expect_pixel(16, 16, opaque(positive_z));
}

TEST_F(Environment, WithoutANameShowsNothing) {
    environment.cubetex.clear();
    environment.refractalpha = 1.0F;
    drawsolid();
    expect_pixel(16, 16, {0, 0, 0, 1});
}

TEST_F(Environment, WithBothAlphasZeroShowsNothing) {
    environment.reflectalpha = 0.0F;
    drawsolid();
    expect_pixel(16, 16, {0, 0, 0, 1});
}

// --- uniforms ---------------------------------------------------------------------------------------------

float uniform_value(const glpolygon_t& glpolygon, GLint location) {
    float value = -1;
    glGetUniformfv(glpolygon.program.program_id(), location, &value);
    return value;
}

TEST_F(Environment, ValuesOfTheLastNamedOneStayWhenThereIsNone) {
    environment.refractfactor = 1.5F;
    environment.reflectalpha = 0.25F;
    environment.refractalpha = 0.75F;
    drawsolid(true);
    environment = {};
    environment.refractfactor = 2.0F;
    drawsolid(false);
    EXPECT_EQ(uniform_value(glpolygon, glpolygon.uniforms.RefractFactor), 1.5F);
    EXPECT_EQ(uniform_value(glpolygon, glpolygon.uniforms.SkyBox), 1.0F);
    EXPECT_EQ(uniform_value(glpolygon, glpolygon.uniforms.ReflectAlpha), 0.0F);
    EXPECT_EQ(uniform_value(glpolygon, glpolygon.uniforms.RefractAlpha), 0.0F);
}

TEST_F(Environment, ValuesReachTheSelectPass) {
    environment.refractfactor = 1.5F;
    environment.reflectalpha = 0.25F;
    environment.refractalpha = 0.75F;
    drawselect();
    EXPECT_EQ(uniform_value(glpolygon, glpolygon.uniforms.RefractFactor), 1.5F);
    EXPECT_EQ(uniform_value(glpolygon, glpolygon.uniforms.ReflectAlpha), 0.25F);
    EXPECT_EQ(uniform_value(glpolygon, glpolygon.uniforms.RefractAlpha), 0.75F);
}

TEST_F(DrawSelect, KeepsTheMercatorFlagOfTheLastDraw) {
    texture.mercatorsphere = true;
    drawsolid();
    texture.mercatorsphere = false;
    drawselect();
    EXPECT_EQ(uniform_value(glpolygon, glpolygon.uniforms.MercatorSphere), 1.0F);
}

TEST_F(DrawSelect, AsTheFirstDrawOfAllLeavesNoError) {
    select_triangle(0);
    const ulk_test::captured_stream errors(std::cerr);
    drawselect();
    EXPECT_EQ(errors.text(), "");
}

// --- the select pass --------------------------------------------------------------------------------------

TEST_F(DrawSelect, PaintsSelectedTrianglesAtAQuarterOfTheirAlpha) {
    select_triangle(0);
    drawselect();
    for (const auto& [column, row] : places)
        expect_pixel(column, row, blend_added(shaded(column, row, 0.25), ground));
}

TEST_F(DrawSelect, KeepsTheSolidPassOffItsPixels) {
    select_triangle(0);
    drawselect();
    drawsolid();
    for (const auto& [column, row] : places)
        expect_pixel(column, row, blend_added(shaded(column, row, 0.25), ground));
}

TEST_F(DrawSelect, LeavesTrianglesThatAreNotSelectedToTheSolidPass) {
    // The triangle and its mirror image below: ids 0 and 1, of which only the lower one is selected.
    const vertex_t lower{{0, -5, -2}, triangle.vertices[0].color, {}};
    ulk_test::build_polygon(polygon,
                            {triangle.vertices[2], triangle.vertices[0], triangle.vertices[1], lower},
                            {0, 1, 2, 3}, std::vector<frame_t>(4, triangle.frames[0]));
    select_triangle(1);
    drawselect();
    drawsolid();
    for (const auto& [column, row] : places)
        expect_pixel(column, row, blend_by_alpha(shaded(column, row), ground));
}

TEST_F(DrawSelect, DrawsNothingWhenNothingIsSelected) {
    const libutils::rgba_picture_t before = target.read_pixels();
    drawselect();
    EXPECT_EQ(target.read_pixels(), before);
    EXPECT_EQ(uniform_value(glpolygon, glpolygon.uniforms.ColorFactor), 0.25F);
}

// --- state and marks --------------------------------------------------------------------------------------

void expect_clean_state() {
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_FALSE(glIsEnabled(GL_PRIMITIVE_RESTART));
    EXPECT_EQ(gl_integer(GL_CURRENT_PROGRAM), 0);
    EXPECT_EQ(gl_integer(GL_ACTIVE_TEXTURE), GL_TEXTURE0);
    for (GLenum unit = 0; unit < 4; ++unit) {
        glActiveTexture(GL_TEXTURE0 + unit);
        EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_2D), 0) << "unit " << unit;
        EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_CUBE_MAP), 0) << "unit " << unit;
    }
    glActiveTexture(GL_TEXTURE0);
}

TEST_F(DrawSolid, LeavesNothingEnabledOrBound) {
    drawsolid();
    expect_clean_state();
}

TEST_F(DrawSolid, LeavesNothingEnabledOrBoundWithAnEnvironment) {
    environment.cubetex = "sky.png";
    drawsolid();
    expect_clean_state();
}

TEST_F(DrawSelect, LeavesNothingEnabledOrBound) {
    environment.cubetex = "sky.png";
    select_triangle(0);
    drawselect();
    expect_clean_state();
}

TEST_F(DrawSolid, LeavesTexturesOfOthersBound) {
    const auto map = bound_texture::colors(0, 1, 1, {1, 2, 3, 4});
    drawsolid();
    EXPECT_EQ(gl_integer(GL_TEXTURE_BINDING_2D), static_cast<GLint>(map.id()));
}

TEST_F(DrawSolid, PrintsNothing) {
    const ulk_test::captured_stream errors(std::cerr);
    drawsolid();
    EXPECT_EQ(errors.text(), "");
}

TEST_F(DrawSolid, MarksStandInTheirOrder) {
    const ulk_test::forced_marks marks;
    drawsolid();
    EXPECT_THAT(
        marks.beginning_with("glpolygon_t::"),
        ElementsAre("glpolygon_t::drawsolid(1)", "glpolygon_t::drawsolid(2)", "glpolygon_t::drawsolid(3)",
                    "glpolygon_t::drawsolid(4)", "glpolygon_t::drawsolid(5)", "glpolygon_t::drawsolid(7)",
                    "glpolygon_t::drawsolid(end)"));
}

TEST_F(DrawSelect, MarksStandInTheirOrder) {
    const ulk_test::forced_marks marks;
    drawselect();
    EXPECT_THAT(
        marks.beginning_with("glpolygon_t::"),
        ElementsAre("glpolygon_t::drawselect(1)", "glpolygon_t::drawselect(1.1)",
                    "glpolygon_t::drawselect(1.2)", "glpolygon_t::drawselect(2)",
                    "glpolygon_t::drawselect(3)", "glpolygon_t::drawselect(4)", "glpolygon_t::drawselect(5)",
                    "glpolygon_t::drawselect(7)", "glpolygon_t::drawselect(end)"));
}

}  // namespace
}  // namespace ulk3d
