#include <gmock/gmock.h>

#include <iostream>
#include <set>

#include "gl/render/models/control_net.h"
#include "model/math/matrices.h"
#include "model/polygon/polygon.h"
#include "render/models/glnurbs.h"
#include "support/captured_stream.h"
#include "support/forced_marks.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"

namespace ulk3d {
namespace {

using testing::ElementsAre;
using ulk_test::control_net_t;
using pixel_t = libutils::rgba_picture_t::pixel_t;

constexpr pixel_t white{255, 255, 255, 255};

class GlnurbsDraw : public ulk_test::gl_test {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        target.bind();
        glDisable(GL_DEPTH_TEST);
        glEnable(GL_PROGRAM_POINT_SIZE);
        glClearColor(0, 0, 0, 1);
        glClear(GL_COLOR_BUFFER_BIT);
        ASSERT_TRUE(glnurbs.init(nullptr));
    }
    void TearDown() override {
        glDisable(GL_PROGRAM_POINT_SIZE);
        gl_test::TearDown();
    }
    /// Normalised device coordinate of the centre of a column from the left, or a row from the bottom.
    static float center(int pixel) { return (static_cast<float>(pixel) + 0.5F) / 8 - 1; }
    /// Columns from the left and rows from the bottom of all pixels of this colour.
    std::set<std::pair<int, int>> pixels_of(const pixel_t& colour) {
        const libutils::rgba_picture_t picture = target.read_pixels();
        std::set<std::pair<int, int>> found;
        for (int y = 0; y < 16; ++y)
            for (int x = 0; x < 16; ++x)
                if (picture.at(x, y) == colour)
                    found.emplace(x, 15 - y);
        return found;
    }
    static std::set<std::pair<int, int>> square(int column, int row, int size) {
        std::set<std::pair<int, int>> pixels;
        for (int y = row - size / 2; y <= row + size / 2; ++y)
            for (int x = column - size / 2; x <= column + size / 2; ++x)
                pixels.emplace(x, y);
        return pixels;
    }

    ulk_test::render_target_t target{16, 16};
    glnurbs_t glnurbs;
};

TEST_F(GlnurbsDraw, UnselectedPointCoversThreeByThreePixels) {
    control_net_t model;
    model.build({{{center(4), center(11), 0}, {1, 0.2F, 0, 1}}});
    glnurbs.draw_points(model, mtx_identity, mtx_identity);
    EXPECT_EQ(pixels_of({255, 51, 0, 255}), square(4, 11, 3));
}

TEST_F(GlnurbsDraw, SelectedPointCoversFiveByFivePixels) {
    control_net_t model;
    model.build({{{center(6), center(5), 0}, {0, 1, 0.4F, 1}}});
    ASSERT_TRUE(model.select(0));
    glnurbs.draw_points(model, mtx_identity, mtx_identity);
    EXPECT_EQ(pixels_of({0, 255, 102, 255}), square(6, 5, 5));
}

TEST_F(GlnurbsDraw, SelectingAVertexOfAPolygonMakesItsPointGrow) {
    polygon_t polygon;
    ulk_test::build_polygon(
        polygon,
        {ulk_test::vertex_at(center(3), center(3), 0), ulk_test::vertex_at(center(11), center(11), 0)}, {});
    ASSERT_TRUE(polygon.select(1));
    glnurbs.draw_points(polygon, mtx_identity, mtx_identity);
    auto expected = square(3, 3, 3);
    expected.merge(square(11, 11, 5));
    EXPECT_EQ(pixels_of(white), expected);
}

TEST_F(GlnurbsDraw, PointsGoThroughModelviewThenProjection) {
    control_net_t model;
    model.build({{{0, 0, 0}, {1, 1, 1, 1}}});
    const mtx3w move = translation({center(9) * 2, center(2) * 2, 0});
    glnurbs.draw_points(model, scale(0.5F, 0.5F, 1), move);
    EXPECT_EQ(pixels_of(white), square(9, 2, 3));
}

TEST_F(GlnurbsDraw, ModelWithoutPointsDrawsNothing) {
    polygon_t polygon;
    glnurbs.draw_points(polygon, mtx_identity, mtx_identity);
    EXPECT_EQ(pixels_of({0, 0, 0, 255}).size(), 256U);
}

TEST_F(GlnurbsDraw, LeavesThePlanesOfTheLastPickAndNoProgram) {
    control_net_t model;
    model.build({{{0, 0, 0}, {1, 1, 1, 1}}});
    const mtx3w planes =
        pick_planes({.x = 3, .y = 5, .width = 3, .height = 3, .view_width = 16, .view_height = 16});
    pick_hits_t hits;
    glnurbs.selection(hits, model, planes, mtx_identity, mtx_identity);
    glnurbs.draw_points(model, mtx_identity, mtx_identity);
    mtx3w kept;
    glGetUniformfv(glnurbs.program.program_id(), glnurbs.ClipPlanes, kept.m.data());
    EXPECT_EQ(kept, planes);
    GLint program = -1;
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    EXPECT_EQ(program, 0);
}

TEST_F(GlnurbsDraw, DiagnosticDrawReturnsZeroAndSaysNothing) {
    control_net_t model;
    model.build({{{0, 0, 0}, {1, 1, 1, 1}}});
    const ulk_test::captured_stream errors(std::cerr);
    glnurbs.program.use();
    EXPECT_EQ(glnurbs_t::drawpolygon(model), 0);
    program_t::unuse();
    EXPECT_EQ(errors.text(), "");
}

TEST_F(GlnurbsDraw, MarksOfTheDiagnosticStandInTheirOrder) {
    control_net_t model;
    model.build({{{0, 0, 0}, {1, 1, 1, 1}}});
    const ulk_test::forced_marks marks;
    glnurbs.program.use();
    glnurbs_t::drawpolygon(model);
    program_t::unuse();
    EXPECT_THAT(
        marks.beginning_with(""),
        ElementsAre("glnurbs_t::drawpolygon(2)", "glnurbs_t::drawpolygon(3)", "glnurbs_t::drawpolygon(4)",
                    "glnurbs_t::drawpolygon(5)", "glnurbs_t::drawpolygon(6)", "glnurbs_t::drawpolygon(7)",
                    "glnurbs_t::drawpolygon(8)", "glnurbs_t::drawpolygon(9)", "glnurbs_t::drawpolygon(end)"));
}

TEST_F(GlnurbsDraw, DiagnosticRunsTheElementDrawOfAPolygon) {
    polygon_t polygon;
    ulk_test::build_polygon(polygon, ulk_test::vertices_at({{-1, -1, 0}, {3, -1, 0}, {-1, 3, 0}}), {0, 1, 2});
    glnurbs.program.use();
    glUniformMatrix4fv(glnurbs.Modelview, 1, GL_TRUE, mtx_identity.m.data());
    glUniformMatrix4fv(glnurbs.Projection, 1, GL_TRUE, mtx_identity.m.data());
    EXPECT_EQ(glnurbs_t::drawpolygon(polygon), 0);
    program_t::unuse();
    EXPECT_EQ(pixels_of(white).size(), 256U);
}

}  // namespace
}  // namespace ulk3d
