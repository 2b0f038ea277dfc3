#include "model/nurbs/nurbs.h"

#include <gtest/gtest.h>

#include <iostream>
#include <limits>

#include "gltextures/textures/texture_stores.h"
#include "model/math/vectors.h"
#include "model/scene.h"
#include "render/gl/mapped_span.h"
#include "render/models/glnurbs.h"
#include "render/models/glpolygon.h"
#include "support/captured_stream.h"
#include "support/counted_mappings.h"
#include "support/failing_mapping.h"
#include "support/failing_stores.h"
#include "support/forced_marks.h"
#include "support/gl_context.h"
#include "support/plain_nurbs.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using ulk_test::captured_stream;

/// An entry whose net is a random one of 5 by 4 points, loaded.
struct NurbsModel : ulk_test::gl_test {
    NurbsModel() : entry(model_kind_t::nurbs), nurbs(entry.nurbs), polygon(entry.polygon) {}

    void SetUp() override {
        gl_test::SetUp();
        load(ulk_test::random_net(5, 3, 4, 2, false));
    }
    void load(const ulk_test::net_t& net) {
        ASSERT_TRUE(nurbs.allocate(net.count1, net.order1, net.count2, net.order2));
        nurbs.knot1 = net.knot1;
        nurbs.knot2 = net.knot2;
        nurbs.weight = net.weight;
        nurbs.points = net.points;
        ASSERT_TRUE(nurbs.afterload("surface.ulk"));
    }
    void set_resolution(std::uint32_t resolution1, std::uint32_t resolution2) {
        nurbs.resolution1 = resolution1;
        nurbs.resolution2 = resolution2;
    }
    std::vector<control_point_t> uploaded() {
        const array_span<control_point_t> records(nurbs.ctlpts);
        return {records.begin(), records.end()};
    }
    std::vector<work_frame_t> work_frames() {
        const array_span<work_frame_t> records(polygon.wknmls);
        return {records.begin(), records.end()};
    }

    model_entry_t entry;
    nurbs_t& nurbs;
    polygon_t& polygon;
};

TEST_F(NurbsModel, AfterloadUploadsTheNetAndTakesTheName) {
    EXPECT_EQ(nurbs.name, "surface.ulk");
    EXPECT_EQ(uploaded(), nurbs.points.data);
    EXPECT_EQ(nurbs.ctlpts.vertex_stride(), 7U);
    EXPECT_EQ(ulk_test::pointsizes_of(nurbs), std::vector<float>(20, 3.0F));
    EXPECT_EQ(nurbs.selectionfeedback.element_count(), 200);
}

TEST_F(NurbsModel, AfterloadUnmarksAllPoints) {
    EXPECT_TRUE(nurbs.select(7));
    EXPECT_TRUE(nurbs.afterload("again.ulk"));
    EXPECT_EQ(nurbs.selection, std::vector<bool>(20, false));
    EXPECT_EQ(ulk_test::pointsizes_of(nurbs), std::vector<float>(20, 3.0F));
    EXPECT_EQ(nurbs.name, "again.ulk");
}

TEST_F(NurbsModel, AfterloadBindsPointsAndSizes) {
    const std::vector<std::pair<GLuint, GLuint>> buffers{
        {0, nurbs.ctlpts.buffer_id()}, {1, nurbs.ctlpts.buffer_id()}, {2, nurbs.pointsizes.buffer_id()}};
    nurbs.pointarray->bind();
    for (const auto& [location, buffer] : buffers) {
        GLint enabled = 0, bound = 0;
        glGetVertexAttribiv(location, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &enabled);
        glGetVertexAttribiv(location, GL_VERTEX_ATTRIB_ARRAY_BUFFER_BINDING, &bound);
        EXPECT_EQ(enabled, GL_TRUE) << location;
        EXPECT_EQ(static_cast<GLuint>(bound), buffer) << location;
    }
    nurbs.pointarray->unbind();
}

TEST_F(NurbsModel, AfterloadMarksItsSteps) {
    const ulk_test::forced_marks marks;
    EXPECT_TRUE(nurbs.afterload("surface.ulk"));
    const std::vector<std::string> expected{
        "nurbs_t::afterload(1)", "nurbs_t::MakeCtlpts(0)", "nurbs_t::MakeCtlpts(1)", "nurbs_t::MakeCtlpts(2)",
        "nurbs_t::afterload(2)", "nurbs_t::afterload(3)",  "nurbs_t::afterload(4)"};
    EXPECT_EQ(marks.beginning_with("nurbs_t::"), expected);
}

TEST_F(NurbsModel, AfterloadWithoutMemoryIsReported) {
    model_entry_t fresh(model_kind_t::nurbs);
    ASSERT_TRUE(fresh.nurbs.allocate(3, 2, 3, 2));
    captured_stream errors(std::cerr);
    const ulk_test::failing_stores failing(1);
    EXPECT_FALSE(fresh.nurbs.afterload("fresh.ulk"));
    EXPECT_EQ(fresh.nurbs.name, "");
    EXPECT_EQ(errors.text(), "makeCtlpts() error.\n");
}

TEST_F(NurbsModel, DefaultResolutionMakes1089VerticesAnd2144Elements) {
    ASSERT_TRUE(nurbs.makeVertices());
    EXPECT_EQ(polygon.vertex_count(), 1089U);
    EXPECT_EQ(polygon.element_count(), 2144U);
    EXPECT_EQ(polygon.name, "surface.ulk");
}

TEST_F(NurbsModel, StripsZigzagBetweenTheRows) {
    set_resolution(3, 3);
    ASSERT_TRUE(nurbs.makeVertices());
    const std::vector<std::uint32_t> expected{3, 0, 4, 1, 5, 2, restart_mark, 6, 3, 7, 4, 8, 5, restart_mark};
    EXPECT_EQ(ulk_test::elements_of(polygon), expected);
}

TEST_F(NurbsModel, OneRowOfSamplesHasNoStrip) {
    set_resolution(4, 1);
    ASSERT_TRUE(nurbs.makeVertices());
    EXPECT_EQ(polygon.vertex_count(), 4U);
    EXPECT_EQ(polygon.element_count(), 0U);
    captured_stream errors(std::cerr);
    nurbs.updateVertices();
    EXPECT_EQ(work_frames(), std::vector<work_frame_t>(4));
    EXPECT_TRUE(std::isnan(ulk_test::vertices_of(polygon)[2].texcoord.t));
}

TEST_F(NurbsModel, OneColumnOfSamplesHasStripsOfTwo) {
    set_resolution(1, 3);
    ASSERT_TRUE(nurbs.makeVertices());
    EXPECT_EQ(ulk_test::elements_of(polygon),
              (std::vector<std::uint32_t>{1, 0, restart_mark, 2, 1, restart_mark}));
    captured_stream errors(std::cerr);
    nurbs.updateVertices();
    EXPECT_EQ(work_frames(), std::vector<work_frame_t>(3));
}

TEST_F(NurbsModel, ResolutionOfTwoIsOneSquare) {
    set_resolution(2, 2);
    ASSERT_TRUE(nurbs.makeVertices());
    nurbs.updateVertices();
    EXPECT_EQ(ulk_test::elements_of(polygon), (std::vector<std::uint32_t>{2, 0, 3, 1, restart_mark}));
    const auto vertices = ulk_test::vertices_of(polygon);
    EXPECT_EQ(vertices[3].texcoord, (txc2{1, 1}));
    EXPECT_NEAR(vertices[3].position.x, nurbs.points.row(3)[4].position.x, 1e-4F);
}

TEST_F(NurbsModel, ResolutionWithoutRowsIsRefused) {
    set_resolution(5, 0);
    captured_stream errors(std::cerr);
    EXPECT_FALSE(nurbs.makeVertices());
    EXPECT_EQ(errors.text(), "elements.allocate() failed.\npolygon.allocate() fail.\n");
}

TEST_F(NurbsModel, ResolutionWhoseProductWrapsIsRefused) {
    for (const auto& [columns, rows] : {std::pair{~0U, ~0U}, {65536U, 65536U}, {1U, ~0U}}) {
        set_resolution(columns, rows);
        captured_stream errors(std::cerr);
        EXPECT_FALSE(nurbs.makeVertices());
        EXPECT_EQ(errors.text(), "vertices.allocate() failed.\npolygon.allocate() fail.\n");
    }
}

TEST_F(NurbsModel, ResolutionWithoutColumnsIsAnEmptySurface) {
    set_resolution(0, 3);
    ASSERT_TRUE(nurbs.makeVertices());
    captured_stream errors(std::cerr);
    nurbs.updateVertices();
    EXPECT_EQ(polygon.vertex_count(), 0U);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(NurbsModel, VerticesAreTheSurfaceToTheLastBit) {
    load(ulk_test::random_net(6, 4, 5, 3, true));
    set_resolution(9, 7);
    ASSERT_TRUE(nurbs.makeVertices());
    nurbs.updateVertices();
    const auto vertices = ulk_test::vertices_of(polygon);
    ASSERT_EQ(vertices.size(), 63U);
    for (std::uint32_t n = 0; n < 63; ++n) {
        const float u = static_cast<float>(n % 9) / 8.0F;
        const float v = static_cast<float>(n / 9) / 6.0F;
        const auto [position, color] =
            nurbs_surface(nurbs.count1, nurbs.count2, nurbs.order1, nurbs.order2, u, v, nurbs.knot1,
                          nurbs.knot2, nurbs.weight, nurbs.points);
        EXPECT_TRUE(ulk_test::same_bits(vertices[n], vertex_t{position, color, {u, v}})) << n;
    }
}

TEST_F(NurbsModel, VerticesBringTheirWorkFrames) {
    set_resolution(4, 4);
    ASSERT_TRUE(nurbs.makeVertices());
    nurbs.updateVertices();
    const auto vertices = ulk_test::vertices_of(polygon);
    const auto frames = work_frames();
    const auto P = [&](std::uint32_t r, std::uint32_t c) { return vertices[r * 4 + c].position; };
    EXPECT_EQ(frames[4 + 2].first, P(1, 3) - P(1, 2));
    EXPECT_EQ(frames[4 + 2].fourth, P(1, 2) - P(0, 2));
    EXPECT_EQ(frames[0].second, P(1, 0) - P(0, 0));
}

TEST_F(NurbsModel, MakeVerticesHasItsErrorLabelBehindTheStrips) {
    set_resolution(3, 3);
    const ulk_test::forced_marks labels;
    ASSERT_TRUE(nurbs.makeVertices());
    EXPECT_EQ(labels.beginning_with("MakeVertices"), std::vector<std::string>{"MakeVertices5"});
    const auto all = labels.beginning_with("");
    EXPECT_EQ(all.back(), "MakeVertices5");
}

TEST_F(NurbsModel, UpdateVerticesMarksItsSteps) {
    set_resolution(3, 3);
    ASSERT_TRUE(nurbs.makeVertices());
    const ulk_test::forced_marks marks;
    nurbs.updateVertices();
    EXPECT_EQ(marks.beginning_with("nurbs_t::"),
              (std::vector<std::string>{"nurbs_t::updateVertices() mapping.",
                                        "nurbs_t::updateNormals() update end."}));
}

TEST_F(NurbsModel, UpdateVerticesBeforeMakeVerticesWritesNothing) {
    captured_stream errors(std::cerr);
    nurbs.updateVertices();
    EXPECT_EQ(polygon.vertex_count(), 0U);
}

TEST_F(NurbsModel, UpdateVerticesOfAGrownResolutionStaysInItsBuffer) {
    set_resolution(3, 3);
    ASSERT_TRUE(nurbs.makeVertices());
    nurbs.updateVertices();
    set_resolution(40, 40);
    nurbs.updateVertices();
    EXPECT_EQ(ulk_test::vertices_of(polygon)[8].texcoord, (txc2{8.0F / 39, 0}));
}

TEST_F(NurbsModel, UpdateGivesTheSurfaceAndItsFrames) {
    glpolygon_t glpolygon;
    ASSERT_TRUE(glpolygon.init(nullptr));
    // A flat square in the xy plane: every normal is the z axis.
    ulk_test::net_t net = ulk_test::random_net(2, 2, 2, 2, false);
    std::ranges::fill(net.weight.data, 1.0F);
    for (std::uint64_t n = 0; n < 4; ++n)
        net.points.data[n].position = {static_cast<float>(n % 2), static_cast<float>(n / 2), 0};
    load(net);
    set_resolution(5, 5);
    nurbs.update(glpolygon);
    EXPECT_EQ(polygon.vertex_count(), 25U);
    for (const frame_t& frame : ulk_test::frames_of(polygon)) {
        EXPECT_NEAR(frame.normal.z, 1, 1e-5F);
        EXPECT_NEAR(frame.tangent.x, 1, 1e-5F);
    }
}

/// A surface that was turned into a polygon model after an edit has polygons to mark.
TEST_F(NurbsModel, UpdateNumbersThePolygons) {
    glpolygon_t glpolygon;
    ASSERT_TRUE(glpolygon.init(nullptr));
    set_resolution(5, 2);
    nurbs.update(glpolygon);
    set_resolution(3, 3);
    ulk_test::select_polygons(polygon, {1});
    nurbs.update(glpolygon);

    // Two strips: 3 0 4 1 5 2 mark 6 3 7 4 8 5 mark.
    ASSERT_EQ(polygon.polyidvector.size(), 12U);
    EXPECT_EQ(polygon.polyidvector[0].position, 0U);
    EXPECT_EQ(polygon.polyidvector[5].position, 8U);
    EXPECT_TRUE(polygon.polyidvector[5].flipped);
    EXPECT_EQ(polygon.polyidvector[8].position, ulk_test::mark);
    polygon.selectpolygon(4);
    const auto selected = ulk_test::selectelems_of(polygon);
    const auto triangle = [&selected](std::size_t id) {
        const auto first = selected.begin() + static_cast<std::ptrdiff_t>(3 * id);
        return std::vector(first, first + 3);
    };
    EXPECT_EQ(triangle(1), (std::vector<std::uint32_t>{4, 0, 1}));
    EXPECT_EQ(triangle(4), (std::vector<std::uint32_t>{6, 3, 7}));
}

/// After each drag all models of a scene are updated; most of them have not changed.
TEST_F(NurbsModel, UpdateOfAnUnchangedSurfaceDoesAndPrintsNothing) {
    glpolygon_t glpolygon;
    ASSERT_TRUE(glpolygon.init(nullptr));
    std::ranges::fill(nurbs.weight.data, 0.0F);  // each sample between the edges prints a line
    set_resolution(4, 4);
    {
        const captured_stream errors(std::cerr);
        nurbs.update(glpolygon);
        EXPECT_NE(errors.text(), "");
    }
    const captured_stream errors(std::cerr);
    const ulk_test::counted_mappings mappings;
    nurbs.update(glpolygon);
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(mappings.count(), 0);
}

TEST_F(NurbsModel, UpdateFollowsEachNumberThatASurfaceIsMadeOf) {
    glpolygon_t glpolygon;
    ASSERT_TRUE(glpolygon.init(nullptr));
    set_resolution(4, 4);
    nurbs.update(glpolygon);
    const auto expect_update = [&](const char* what) {
        const ulk_test::counted_mappings mappings;
        nurbs.update(glpolygon);
        EXPECT_GT(mappings.count(), 0) << what;
    };
    nurbs.points.data[7].position.z += 1;
    expect_update("a position");
    nurbs.points.data[7].color.r += 1;
    expect_update("a colour");
    nurbs.weight.data[3] += 1;
    expect_update("a weight");
    nurbs.knot1.data[3] += 0.01F;
    expect_update("a knot of a row");
    nurbs.knot2.data[3] += 0.01F;
    expect_update("a knot of a column");
    set_resolution(4, 5);
    expect_update("a resolution");
    EXPECT_EQ(polygon.vertex_count(), 20U);
    load(ulk_test::random_net(5, 3, 4, 2, false));
    expect_update("another net");
}

TEST_F(NurbsModel, UpdateOpensMapsThatWereNamedSinceTheLastOne) {
    libgr::clear_texture_stores();
    glpolygon_t glpolygon;
    ASSERT_TRUE(glpolygon.init(nullptr));
    set_resolution(4, 4);
    nurbs.update(glpolygon);
    entry.texture.texture = "missing.bmp";
    const captured_stream errors(std::cerr);
    nurbs.update(glpolygon);
    EXPECT_NE(errors.text().find("missing.bmp"), std::string::npos);
    libgr::clear_texture_stores();
}

/// An update that has nothing to do leaves a mesh that is as good as one that is made anew.
TEST_F(NurbsModel, UpdateInPlaceGivesTheMeshThatAWholeOneGives) {
    glpolygon_t glpolygon;
    ASSERT_TRUE(glpolygon.init(nullptr));
    set_resolution(6, 5);
    nurbs.update(glpolygon);
    nurbs.points.data[7].position = {3, 2, 1};
    nurbs.update(glpolygon);
    const auto vertices = ulk_test::vertices_of(polygon);
    const auto frames = ulk_test::frames_of(polygon);
    const auto elements = ulk_test::elements_of(polygon);
    ASSERT_TRUE(nurbs.rebuild({.sizes = true, .points = true}, glpolygon));
    EXPECT_EQ(ulk_test::vertices_of(polygon), vertices);
    EXPECT_EQ(ulk_test::frames_of(polygon), frames);
    EXPECT_EQ(ulk_test::elements_of(polygon), elements);
}

/// Puts a mark on a vertex that only an evaluation of its sample takes away.
void mark_vertex(polygon_t& polygon, std::size_t vertex) {
    const array_span<vertex_t> vertices(polygon.vertices);
    vertices[vertex].texcoord = {-7, -7};
}

bool is_marked(const polygon_t& polygon, std::size_t vertex) {
    return ulk_test::vertices_of(polygon)[vertex].texcoord == txc2{-7, -7};
}

TEST_F(NurbsModel, UpdateEvaluatesWhatAMovedPointReaches) {
    glpolygon_t glpolygon;
    ASSERT_TRUE(glpolygon.init(nullptr));
    load(ulk_test::random_net(9, 2, 9, 2, false));
    set_resolution(17, 17);
    nurbs.update(glpolygon);
    mark_vertex(polygon, 0);
    mark_vertex(polygon, 17 * 17 - 1);
    nurbs.points.data[0].position.z += 1;
    nurbs.update(glpolygon);
    EXPECT_FALSE(is_marked(polygon, 0));
    EXPECT_TRUE(is_marked(polygon, 17 * 17 - 1));
}

TEST_F(NurbsModel, UpdateEvaluatesEverythingWhenMoreThanPointsHasChanged) {
    glpolygon_t glpolygon;
    ASSERT_TRUE(glpolygon.init(nullptr));
    load(ulk_test::random_net(9, 2, 9, 2, false));
    set_resolution(17, 17);
    nurbs.update(glpolygon);
    const auto expect_whole = [&](const char* what) {
        mark_vertex(polygon, 17 * 17 - 1);
        nurbs.points.data[0].position.z += 1;
        nurbs.update(glpolygon);
        EXPECT_FALSE(is_marked(polygon, 17 * 17 - 1)) << what;
    };
    nurbs.weight.data[3] += 1;
    expect_whole("a weight");
    nurbs.knot1.data[3] += 0.01F;
    expect_whole("a knot of a row");
    nurbs.knot2.data[3] += 0.01F;
    expect_whole("a knot of a column");
    ASSERT_TRUE(nurbs.rebuild({.sizes = true}, glpolygon));
    expect_whole("a new mesh");
    nurbs.points.data[40].position.x = std::numeric_limits<float>::infinity();
    expect_whole("a point that is infinite");
    nurbs.points.data[40].position.x = 0;
    expect_whole("a point that has been infinite");
}

TEST_F(NurbsModel, UpdateAfterAMovePrintsThePlacesThatAreNotReachedAgain) {
    glpolygon_t glpolygon;
    ASSERT_TRUE(glpolygon.init(nullptr));
    load(ulk_test::random_net(9, 2, 9, 2, false));
    for (float& knot : nurbs.knot1.data)
        knot *= 0.75F;
    set_resolution(9, 9);
    std::string lines;
    {
        const captured_stream errors(std::cerr);
        nurbs.update(glpolygon);
        lines = errors.text();
    }
    EXPECT_NE(lines, "");
    nurbs.points.data[0].position.z += 1;
    const captured_stream errors(std::cerr);
    nurbs.update(glpolygon);
    EXPECT_EQ(errors.text(), lines);
}

TEST_F(NurbsModel, UpdateAfterAFailedOneEvaluatesEverything) {
    glpolygon_t glpolygon;
    ASSERT_TRUE(glpolygon.init(nullptr));
    load(ulk_test::random_net(9, 2, 9, 2, false));
    set_resolution(17, 17);
    nurbs.update(glpolygon);
    mark_vertex(polygon, 17 * 17 - 1);
    nurbs.points.data[0].position.z += 1;
    {
        const captured_stream errors(std::cerr);
        const ulk_test::failing_mapping failing(1);
        EXPECT_FALSE(nurbs.bring_up_to_date(glpolygon));
    }
    EXPECT_TRUE(nurbs.bring_up_to_date(glpolygon));
    EXPECT_FALSE(is_marked(polygon, 17 * 17 - 1));
}

TEST_F(NurbsModel, UpdateStopsWhenThePolygonCanNotBeMade) {
    glpolygon_t glpolygon;
    ASSERT_TRUE(glpolygon.init(nullptr));
    set_resolution(3, 0);
    captured_stream errors(std::cerr);
    nurbs.update(glpolygon);
    EXPECT_EQ(errors.text(), "elements.allocate() failed.\npolygon.allocate() fail.\n");
}

/// A tube of nine points around, the last on the first: its shading runs over the seam without a crease.
TEST_F(NurbsModel, ClosedSurfaceHasOneFrameAlongItsSeam) {
    glpolygon_t glpolygon;
    ASSERT_TRUE(glpolygon.init(nullptr));
    ulk_test::net_t net(9, 3, 3, 2);
    const std::vector<pos3> circle{{1, 0, 0},   {1, 1, 0},  {0, 1, 0},  {-1, 1, 0}, {-1, 0, 0},
                                   {-1, -1, 0}, {0, -1, 0}, {1, -1, 0}, {1, 0, 0}};
    for (std::uint64_t j = 0; j < 3; ++j) {
        std::ranges::copy(std::vector<float>{0, 0, 0, 0.25F, 0.25F, 0.5F, 0.5F, 0.75F, 0.75F, 1, 1, 1},
                          net.knot1.row(j).begin());
        for (std::uint64_t i = 0; i < 9; ++i) {
            net.points.row(j)[i].position = circle[i] + dir3{0, 0, static_cast<float>(j)};
            net.weight.row(j)[i] = i % 2 == 0 ? 1.0F : 0.70710678F;
        }
    }
    for (std::uint64_t i = 0; i < 9; ++i)
        ulk_test::fill_clamped(net.knot2.row(i), 3, 2);
    load(net);
    set_resolution(17, 5);
    nurbs.update(glpolygon);
    const auto vertices = ulk_test::vertices_of(polygon);
    const auto frames = ulk_test::frames_of(polygon);
    for (std::uint32_t r = 1; r < 4; ++r) {
        EXPECT_EQ(frames[r * 17], frames[r * 17 + 16]) << r;
        EXPECT_NEAR(frames[r * 17].normal.x, 1, 1e-3F) << r;
    }
    for (const vertex_t& vertex : vertices)
        EXPECT_NEAR(vertex.position.x * vertex.position.x + vertex.position.y * vertex.position.y, 1, 1e-5F);
}

TEST_F(NurbsModel, ElementChangedReadsOneRecordBack) {
    control_point_t moved{{7, 8, 9}, {0.5F, 0.25F, 0.125F, 1}};
    nurbs.ctlpts.write_one(5 * 2 + 3, &moved);
    nurbs.elementchanged(1, 5 * 2 + 3);
    EXPECT_NE(nurbs.points.row(2)[3], moved);
    nurbs.elementchanged(0, 5 * 2 + 3);
    EXPECT_EQ(nurbs.points.row(2)[3], moved);
    EXPECT_EQ(uploaded(), nurbs.points.data);
}

TEST_F(NurbsModel, RecordsOutsideTheNetAreNeitherReadNorWritten) {
    const auto before = nurbs.points.data;
    for (const std::uint64_t element : {std::uint64_t{20}, ~std::uint64_t{0}})
        nurbs.elementchanged(0, element);
    nurbs.uploadpoint(5, 0);
    nurbs.uploadpoint(0, 4);
    EXPECT_EQ(nurbs.points.data, before);
    EXPECT_EQ(uploaded(), before);
}

TEST_F(NurbsModel, UploadPointWritesOneRecord) {
    const auto before = nurbs.points.data;
    nurbs.points.row(2)[3].position = {7, 8, 9};
    nurbs.points.row(0)[0].position = {1, 1, 1};
    nurbs.uploadpoint(3, 2);
    EXPECT_EQ(uploaded()[13].position, (pos3{7, 8, 9}));
    EXPECT_EQ(uploaded()[0], before[0]);
}

TEST_F(NurbsModel, DentUploadsTheWholeNet) {
    const auto before = nurbs.points.data;
    nurbs.dent(2, 1, {0, 0, 1});
    EXPECT_EQ(uploaded(), nurbs.points.data);
    EXPECT_EQ(nurbs.points.row(1)[2].position.z, before[7].position.z + 1);
}

TEST_F(NurbsModel, DentOfASmallerNetThanTheBufferStaysInside) {
    load(ulk_test::random_net(2, 2, 2, 2, false));
    nurbs.dent(1, 1, {0, 0, 1});
    EXPECT_EQ(uploaded(), nurbs.points.data);
}

TEST_F(NurbsModel, BoundsAreThoseOfTheControlPoints) {
    for (auto& point : nurbs.points.data)
        point.position = {1, 2, 3};
    nurbs.points.row(1)[1].position = {-4, 9, 3};
    nurbs.points.row(3)[4].position = {2, 2, -8};
    ASSERT_TRUE(nurbs.afterload("surface.ulk"));
    pos3 low, high;
    nurbs.bounds(low, high);
    EXPECT_EQ(low, (pos3{-4, 2, -8}));
    EXPECT_EQ(high, (pos3{2, 9, 3}));
}

TEST_F(NurbsModel, ClearReturnsToTheEmptyState) {
    set_resolution(5, 6);
    nurbs.clear();
    EXPECT_EQ(nurbs.name, "");
    EXPECT_EQ(nurbs.count1 + nurbs.order1 + nurbs.count2 + nurbs.order2, 0U);
    EXPECT_TRUE(nurbs.knot1.data.empty());
    EXPECT_TRUE(nurbs.points.data.empty());
    EXPECT_TRUE(nurbs.selection.empty());
    EXPECT_EQ(nurbs.resolution1, 33U);
    EXPECT_EQ(nurbs.resolution2, 33U);
    EXPECT_EQ(nurbs.selectionfeedback.element_count(), 0);
    pos3 low{1, 1, 1}, high{1, 1, 1};
    nurbs.bounds(low, high);
    EXPECT_EQ(low, pos3{});
    EXPECT_EQ(high, pos3{});
}

TEST_F(NurbsModel, NetWithoutPointsLoadsAndUpdates) {
    captured_stream errors(std::cerr);
    load(ulk_test::net_t(0, 0, 0, 0));
    set_resolution(2, 2);
    ASSERT_TRUE(nurbs.makeVertices());
    nurbs.updateVertices();
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(ulk_test::vertices_of(polygon)[0].position, pos3{});
}

TEST_F(NurbsModel, DrawIsTheDrawOfTheControlPoints) {
    ulk_test::render_target_t target(4, 4);
    target.bind();
    glnurbs_t glnurbs;
    ASSERT_TRUE(glnurbs.init(nullptr));
    // What the selection pass has written: a record for each point that was drawn.
    const auto points_drawn = [&](auto&& draw_call) {
        {
            const ulk3d::feedback_span<selection_record_t> records(nurbs.selectionfeedback);
            for (selection_record_t& record : records)
                record.VertexID = -1;
        }
        glnurbs.program.use();
        glnurbs.selection_feedback.begin(GL_POINTS, nurbs.selectionfeedback.buffer_id());
        draw_call();
        glnurbs.selection_feedback.end();
        const ulk3d::feedback_span<selection_record_t> records(nurbs.selectionfeedback);
        return std::ranges::count_if(records.span(), [](const auto& record) { return record.VertexID >= 0; });
    };
    EXPECT_EQ(points_drawn([&] { nurbs.drawpoints(); }), 20);
    EXPECT_EQ(points_drawn([&] { nurbs.draw(); }), 20);
    nurbs.clear();
    nurbs.draw();
    program_t::unuse();
}

}  // namespace
