#include <gmock/gmock.h>

#include <cmath>
#include <iostream>
#include <random>

#include "gl/render/models/control_net.h"
#include "model/math/matrices.h"
#include "model/math/projections.h"
#include "model/polygon/polygon.h"
#include "render/gl/mapped_span.h"
#include "render/models/glnurbs.h"
#include "support/captured_stream.h"
#include "support/counted_mappings.h"
#include "support/forced_marks.h"
#include "support/gl_context.h"
#include "support/gl_state.h"
#include "support/polygon_builder.h"
#include "support/scene_text.h"

namespace ulk3d {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using ulk_test::control_net_t;

std::vector<control_point_t> control_points_at(const std::vector<pos3>& places) {
    std::vector<control_point_t> points;
    for (const pos3& place : places)
        points.push_back({place, {1, 1, 1, 1}});
    return points;
}

class GlnurbsPick : public ulk_test::gl_test {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        target.bind();
        glEnable(GL_PROGRAM_POINT_SIZE);
        ASSERT_TRUE(glnurbs.init(nullptr));
    }
    void TearDown() override {
        glDisable(GL_PROGRAM_POINT_SIZE);
        gl_test::TearDown();
    }
    bool pick(modeling_t& model) {
        return glnurbs.selection(hits, model, planes, mtx_identity, mtx_identity);
    }
    std::vector<std::uint64_t> picked() const {
        std::vector<std::uint64_t> points;
        for (const auto& [distance, point] : hits)
            points.push_back(point);
        return points;
    }

    ulk_test::render_target_t target{16, 16};
    glnurbs_t glnurbs;
    pick_hits_t hits;
    /// -0.5 to 0.5 in both axes.
    const mtx3w planes =
        pick_planes({.x = 8, .y = 8, .width = 8, .height = 8, .view_width = 16, .view_height = 16});
};

TEST_F(GlnurbsPick, KeyIsTheDistanceToTheLowerSide) {
    control_net_t model;
    model.build(control_points_at({{0, 0.25F, 0}, {0.75F, 0, 0}, {0.25F, -0.375F, 0.5F}}));
    EXPECT_TRUE(pick(model));
    EXPECT_THAT(hits, ElementsAre(Pair(0.125F, 2U), Pair(0.75F, 0U)));
}

TEST_F(GlnurbsPick, PointOnASideCountsAsInside) {
    const float beyond = std::nextafter(0.5F, 1.0F);
    control_net_t model;
    model.build(control_points_at({{0.5F, 0, 0},
                                   {-0.5F, 0, 0},
                                   {0, 0.5F, 0},
                                   {0, -0.5F, 0},
                                   {beyond, 0, 0},
                                   {-beyond, 0, 0},
                                   {0, beyond, 0},
                                   {0, -beyond, 0},
                                   {0.5F, 0.5F, 0}}));
    EXPECT_TRUE(pick(model));
    EXPECT_THAT(picked(), testing::UnorderedElementsAre(0U, 1U, 2U, 3U, 8U));
}

TEST_F(GlnurbsPick, PointsOfOneDistanceKeepTheOrderOfTheirIndices) {
    control_net_t model;
    model.build(control_points_at({{0.4F, 0.25F, 0.9F},
                                   {0, -0.25F, 0},
                                   {-0.3F, 0.25F, -0.5F},
                                   {0.2F, -0.25F, 0},
                                   {0.1F, 0.25F, 0},
                                   {-0.2F, -0.25F, 0}}));
    EXPECT_TRUE(pick(model));
    EXPECT_THAT(picked(), ElementsAre(1U, 3U, 5U, 0U, 2U, 4U));
}

TEST_F(GlnurbsPick, HitsOfAnEarlierModelStayAndStandBeforeTheirEquals) {
    control_net_t first, second;
    first.build(control_points_at({{0.9F, 0, 0}, {0, 0, 0}}));
    second.build(control_points_at({{0, 0, 0}, {0, -0.25F, 0}}));
    EXPECT_TRUE(pick(first));
    EXPECT_TRUE(pick(second));
    EXPECT_THAT(hits, ElementsAre(Pair(0.25F, 1U), Pair(0.5F, 1U), Pair(0.5F, 0U)));
}

TEST_F(GlnurbsPick, ResultTellsOfThisModelAlone) {
    control_net_t hit, missed;
    hit.build(control_points_at({{0, 0, 0}}));
    missed.build(control_points_at({{0.75F, 0, 0}}));
    EXPECT_TRUE(pick(hit));
    EXPECT_FALSE(pick(missed));
    EXPECT_EQ(hits.size(), 1U);
}

TEST_F(GlnurbsPick, FindsPointsHiddenBehindASurface) {
    control_net_t model;
    model.build(control_points_at({{0, 0, 0.5F}}));
    glEnable(GL_DEPTH_TEST);
    glClearDepth(0);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    EXPECT_TRUE(pick(model));
    glnurbs.draw_points(model, mtx_identity, mtx_identity);
    glClearDepth(1);
    glDisable(GL_DEPTH_TEST);
    EXPECT_THAT(picked(), ElementsAre(0U));
    EXPECT_EQ(target.read_pixels().at(8, 8)[0], 0) << "the surface in front hides the point";
}

TEST_F(GlnurbsPick, FindsPointsOutsideTheDepthOfTheView) {
    control_net_t model;
    model.build(control_points_at({{0, 0, 7}, {0, 0.25F, -7}}));
    EXPECT_TRUE(pick(model));
    EXPECT_THAT(picked(), ElementsAre(0U, 1U));
}

TEST_F(GlnurbsPick, FindsTheVerticesOfAPolygon) {
    polygon_t polygon;
    ulk_test::build_polygon(polygon, ulk_test::vertices_at({{0.75F, 0, 0}, {0, 0.25F, 0}, {0, 0, 0}}),
                            {0, 1, 2});
    EXPECT_TRUE(pick(polygon));
    EXPECT_THAT(hits, ElementsAre(Pair(0.5F, 2U), Pair(0.75F, 1U)));
}

TEST_F(GlnurbsPick, TellsTheColourAndNumberOfEachPoint) {
    control_net_t model;
    model.build({{{0, 0, 0}, {0.5F, 0.25F, 0.125F, 1}}, {{0, 0.25F, 0}, {0.25F, 1, 0, 0.5F}}});
    EXPECT_TRUE(pick(model));
    const feedback_span<const selection_record_t> records(model.selectionfeedback);
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].VertexColor, (col3a{0.5F, 0.25F, 0.125F, 1}));
    EXPECT_EQ(records[1].VertexColor, (col3a{0.25F, 1, 0, 0.5F}));
    EXPECT_EQ(records[1].VertexID, 1);
    EXPECT_EQ(records[1].isInside, 1);
    EXPECT_EQ(records[1].clip, (vec3w{0.5F, 0.5F, 0.75F, 0.25F}));
}

// --- models with nothing to read --------------------------------------------------------------------------

TEST_F(GlnurbsPick, ModelOfNoPointsHasNoneAndIsNotMapped) {
    polygon_t polygon;
    ulk_test::build_polygon(polygon, {}, {});
    const ulk_test::captured_stream errors(std::cerr);
    const ulk_test::counted_mappings mappings;
    EXPECT_FALSE(pick(polygon));
    EXPECT_THAT(hits, IsEmpty());
    EXPECT_EQ(mappings.count(), 0);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(GlnurbsPick, ModelThatHasLostItsPointsHasNoneAndIsNotLeftMapped) {
    polygon_t polygon;
    ulk_test::build_polygon(polygon, ulk_test::vertices_at({{0, 0, 0}, {0.25F, 0, 0}, {0, 0.25F, 0}}),
                            {0, 1, 2});
    EXPECT_TRUE(pick(polygon));
    hits.clear();
    ASSERT_TRUE(polygon.vertices.extend(0));
    EXPECT_FALSE(pick(polygon));
    EXPECT_THAT(hits, IsEmpty());
    EXPECT_FALSE(ulk_test::gl_is_mapped(polygon.selectionfeedback.buffer_id()));
}

TEST_F(GlnurbsPick, ModelThatWasNeverAllocatedHasNone) {
    polygon_t polygon;
    const ulk_test::captured_stream errors(std::cerr);
    EXPECT_FALSE(pick(polygon));
    EXPECT_THAT(hits, IsEmpty());
    EXPECT_EQ(errors.text(), "");
}

TEST_F(GlnurbsPick, ModelWithoutAFeedbackBufferHasNone) {
    control_net_t model;
    model.build(control_points_at({{0, 0, 0}}));
    model.selectionfeedback.release();
    const ulk_test::captured_stream errors(std::cerr);
    EXPECT_FALSE(pick(model));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(GlnurbsPick, PointsBeyondTheFeedbackBufferAreNotRead) {
    control_net_t model;
    model.build(control_points_at({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}}));
    ASSERT_TRUE(model.selectionfeedback.allocate(2 * 10));
    EXPECT_TRUE(pick(model));
    EXPECT_THAT(picked(), ElementsAre(0U, 1U));
}

TEST_F(GlnurbsPick, RecordsBeyondThePointsInUseAreNotRead) {
    polygon_t polygon;
    const auto corners = ulk_test::vertices_at({{0, 0, 0}, {0, 0.125F, 0}, {0, 0.25F, 0}, {0, 0.375F, 0}});
    ulk_test::build_polygon(polygon, corners, {0, 1, 2, 3});
    EXPECT_TRUE(pick(polygon));
    EXPECT_EQ(hits.size(), 4U);
    hits.clear();
    ASSERT_TRUE(polygon.vertices.extend(2));
    EXPECT_TRUE(pick(polygon));
    EXPECT_THAT(picked(), ElementsAre(0U, 1U));
}

// --- how the pass runs ------------------------------------------------------------------------------------

TEST_F(GlnurbsPick, MapsOncePerModel) {
    control_net_t model;
    model.build(control_points_at(std::vector<pos3>(100)));
    ASSERT_TRUE(model.pointsizes.provide());
    const ulk_test::counted_mappings mappings;
    pick(model);
    EXPECT_EQ(mappings.count(), 1);
    EXPECT_EQ(hits.size(), 100U);
}

TEST_F(GlnurbsPick, MarksStandInTheirOrder) {
    control_net_t model;
    model.build(control_points_at({{0, 0, 0}}));
    const ulk_test::forced_marks marks;
    pick(model);
    EXPECT_THAT(marks.beginning_with(""),
                ElementsAre("transform_feedback_t::begin(0)", "transform_feedback_t::begin(1)",
                            "transform_feedback_t::begin(2)", "transform_feedback_t::begin(3)",
                            "transform_feedback_t::end(0)", "transform_feedback_t::end(1)",
                            "transform_feedback_t::end(4)", "ulkedit_t::selection(2)"));
}

TEST_F(GlnurbsPick, LowByteOfIsInsideDecides) {
    const ulk_test::temporary_folder_t folder;
    folder.write("selection.vsd",
                 "#version 330\nlayout (location = 0) in vec3 Position;\n"
                 "flat out int VertexID;\nflat out int isInside;\nout vec4 VertexColor;\nout vec4 clip;\n"
                 "void main() { VertexID = gl_VertexID; isInside = int(Position.z);\n"
                 "VertexColor = clip = vec4(0.0); gl_Position = vec4(0.0, 0.0, 0.0, 1.0); }\n");
    const ulk_test::captured_stream errors(std::cerr);
    glnurbs_t replaced;
    ASSERT_TRUE(replaced.init(folder.path("").c_str()));
    control_net_t model;
    model.build(
        control_points_at({{0, 0, 256}, {0, 0, 257}, {0, 0, 0}, {0, 0, 255}, {0, 0, -256}, {0, 0, -1}}));
    EXPECT_TRUE(replaced.selection(hits, model, planes, mtx_identity, mtx_identity));
    EXPECT_THAT(picked(), ElementsAre(1U, 3U, 5U));
}

TEST_F(GlnurbsPick, DrawsNothingAndLetsTheNextDrawBeSeen) {
    control_net_t model;
    model.build(control_points_at({{0, 0, 0}}));
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    const auto before = target.read_pixels();
    EXPECT_TRUE(pick(model));
    EXPECT_EQ(target.read_pixels(), before);
    EXPECT_FALSE(glIsEnabled(GL_RASTERIZER_DISCARD));
    glnurbs.draw_points(model, mtx_identity, mtx_identity);
    EXPECT_NE(target.read_pixels(), before);
}

TEST_F(GlnurbsPick, LeavesNoProgramNoVertexArrayAndNoFeedbackBehind) {
    control_net_t model;
    model.build(control_points_at({{0, 0, 0}}));
    pick(model);
    EXPECT_EQ(ulk_test::gl_integer(GL_CURRENT_PROGRAM), 0);
    EXPECT_EQ(ulk_test::gl_integer(GL_VERTEX_ARRAY_BINDING), 0);
    EXPECT_EQ(ulk_test::gl_integer(GL_TRANSFORM_FEEDBACK_BUFFER_BINDING), 0);
    GLboolean active = GL_TRUE;
    glGetBooleanv(GL_TRANSFORM_FEEDBACK_ACTIVE, &active);
    EXPECT_EQ(active, GL_FALSE);
}

// --- picks in the four views, against double precision ----------------------------------------------------

using row_t = std::array<double, 4>;

row_t times(const row_t& v, const mtx3w& m) {
    row_t out{};
    for (std::size_t column = 0; column < 4; ++column)
        for (std::size_t row = 0; row < 4; ++row)
            out[column] += v[row] * double{m[4 * row + column]};
    return out;
}

/// Distances of a point to the left, right, lower and upper side of the rectangle, in clip units.
row_t distances(const pos3& p, const pick_rectangle_t& r, const mtx3w& projection, const mtx3w& modelview) {
    const row_t clip = times(times({double{p.x}, double{p.y}, double{p.z}, 1}, modelview), projection);
    const double hw = double{r.view_width} / 2, hh = double{r.view_height} / 2;
    const double left = (double{r.x} - double{r.width} / 2 - hw) / hw;
    const double right = (double{r.x} + double{r.width} / 2 - hw) / hw;
    const double low = (double{r.y} - double{r.height} / 2 - hh) / hh;
    const double high = (double{r.y} + double{r.height} / 2 - hh) / hh;
    return {clip[0] - clip[3] * left, clip[3] * right - clip[0], clip[1] - clip[3] * low,
            clip[3] * high - clip[1]};
}

struct view_row_t {
    const char* name;
    mtx3w projection;
    mtx3w modelview;
};

constexpr float view_width = 320, view_height = 240;

mtx3w perspective_matrix() {
    lens_t lens{.fov = std::acos(-1.0) / 2,
                .aspect = double{view_width} / double{view_height},
                .near = 0.0625,
                .far = 1024};
    return frustum_matrix(lens_to_projection_near(lens));
}

mtx3w orthographic_matrix() {
    const double aspect = double{view_width} / double{view_height};
    return ortho_matrix({-aspect, aspect, -1, 1, -10, 1000});
}

class GlnurbsPickInViews : public ulk_test::gl_test, public testing::WithParamInterface<view_row_t> {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        ASSERT_TRUE(glnurbs.init(nullptr));
        std::mt19937 random(7);
        std::uniform_real_distribution<float> coordinate(-1.5F, 1.5F);
        for (int i = 0; i < 3000; ++i)
            places.push_back({coordinate(random), coordinate(random), coordinate(random)});
        // Some behind the eye of the perspective view.
        for (int i = 0; i < 200; ++i)
            places.push_back({coordinate(random), coordinate(random), 9 + coordinate(random)});
    }

    /// Picks with a few rectangles, and compares with what the reference says of every point.
    void expect_picks_as_computed(modeling_t& model) {
        const view_row_t& view = GetParam();
        std::size_t found = 0;
        for (const pick_rectangle_t& r : rectangles) {
            pick_hits_t hits;
            const bool result =
                glnurbs.selection(hits, model, pick_planes(r), view.projection, view.modelview);
            EXPECT_EQ(result, !hits.empty());
            found += hits.size();
            std::vector<bool> is_hit(places.size());
            for (const auto& [key, point] : hits) {
                is_hit.at(point) = true;
                EXPECT_NEAR(key, distances(places[point], r, view.projection, view.modelview)[2], 1e-4);
            }
            for (std::size_t i = 0; i < places.size(); ++i) {
                const row_t d = distances(places[i], r, view.projection, view.modelview);
                const double least = std::min({d[0], d[1], d[2], d[3]});
                // This close to a side single precision decides.
                if (std::abs(least) < 1e-5)
                    continue;
                EXPECT_EQ(is_hit[i], least > 0) << view.name << ", point " << i;
            }
        }
        EXPECT_GT(found, 100U) << "rectangles that meet nothing test nothing";
    }

    const std::vector<pick_rectangle_t> rectangles = {
        {.x = 160, .y = 120, .width = 40, .height = 40, .view_width = view_width, .view_height = view_height},
        {.x = 130, .y = 90, .width = 61, .height = 25, .view_width = view_width, .view_height = view_height},
        {.x = 200, .y = 150, .width = 5, .height = 5, .view_width = view_width, .view_height = view_height},
        {.x = 0, .y = 0, .width = 3, .height = 3, .view_width = view_width, .view_height = view_height},
        {.x = 160, .y = 120, .width = 320, .height = 9, .view_width = view_width, .view_height = view_height},
    };
    std::vector<pos3> places;
    glnurbs_t glnurbs;
};

TEST_P(GlnurbsPickInViews, VerticesOfAPolygon) {
    polygon_t polygon;
    ulk_test::build_polygon(polygon, ulk_test::vertices_at(places), {0, 1, 2});
    expect_picks_as_computed(polygon);
}

TEST_P(GlnurbsPickInViews, ControlPoints) {
    control_net_t model;
    model.build(control_points_at(places));
    expect_picks_as_computed(model);
}

const mtx3w fit = translation({-0.1F, 0.2F, 0.05F}) * scale(0.6F, 0.6F, 0.6F);

INSTANTIATE_TEST_SUITE_P(
    Views, GlnurbsPickInViews,
    testing::Values(view_row_t{"perspective", perspective_matrix(),
                               rotation(30, {0.3F, 1, -0.2F}) * translation({0.2F, -0.1F, -3})},
                    view_row_t{"front", orthographic_matrix(), fit},
                    view_row_t{"side", orthographic_matrix(), fit* rotation(-90, {0, 1, 0})},
                    view_row_t{"top", orthographic_matrix(), fit* rotation(90, {1, 0, 0})}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace ulk3d
