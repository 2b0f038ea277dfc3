#include "operations/settings/model_settings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iostream>

#include "render/models/glpolygon.h"
#include "support/captured_stream.h"
#include "support/counted_mappings.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

const model_names_t new_names{"new.ulk", "", "", ""};

class PolygonSettings : public gl_test {
  protected:
    void build() {
        build_polygon(entry.polygon, vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}}), {0, 1, 2, 3});
        entry.polygon.name = "old.ulk";
    }

    model_entry_t entry{model_kind_t::polygon};
};

TEST_F(PolygonSettings, SayWhatTheModelIs) {
    build();
    entry.texture.texture = "c.png";
    entry.texture.bumpmap = "b.png";
    entry.texture.specular = "s.png";
    EXPECT_EQ(polygon_settings(entry), (polygon_settings_t{{"old.ulk", "c.png", "b.png", "s.png"}, 4, 4}));
}

TEST_F(PolygonSettings, MakeAnEmptyModelAnew) {
    set_polygon_settings(entry, {new_names, 5, 7});
    EXPECT_EQ(entry.polygon.name, "new.ulk");
    EXPECT_EQ(entry.polygon.vertex_count(), 5U);
    EXPECT_EQ(elements_of(entry.polygon), std::vector<std::uint32_t>(7, mark));
    EXPECT_EQ(vertices_of(entry.polygon), std::vector<vertex_t>(5, {{}, default_color, {}}));
    EXPECT_EQ(frames_of(entry.polygon), std::vector<frame_t>(5, new_vertex_frame));
    entry.polygon.draw();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(PolygonSettings, AreTakenWithAllTheirNames) {
    build();
    const polygon_settings_t settings{{"new.ulk", "c.png", "b.png", "s.png"}, 4, 4};
    const captured_stream errors(std::cerr);  // there are no such pictures
    set_polygon_settings(entry, settings);
    EXPECT_EQ(polygon_settings(entry), settings);
}

TEST_F(PolygonSettings, MakeAModelWithoutElementsAnew) {
    build_polygon(entry.polygon, vertices_at({{1, 2, 3}}), {});
    set_polygon_settings(entry, {new_names, 1, 0});
    EXPECT_EQ(vertices_of(entry.polygon).at(0).position, (pos3{0, 0, 0}));
}

TEST_F(PolygonSettings, CountsOfZeroMakeAnEmptyModelWithItsName) {
    set_polygon_settings(entry, {new_names, 0, 0});
    EXPECT_EQ(entry.polygon.name, "new.ulk");
    EXPECT_EQ(entry.polygon.vertex_count(), 0U);
    EXPECT_EQ(entry.polygon.element_count(), 0U);
}

TEST_F(PolygonSettings, TwoElementsOrLessGiveNoPolygons) {
    for (const std::uint32_t count : {0U, 1U, 2U}) {
        model_entry_t fresh(model_kind_t::polygon);
        set_polygon_settings(fresh, {new_names, 3, count});
        EXPECT_TRUE(fresh.polygon.polyidvector.empty()) << count;
    }
}

TEST_F(PolygonSettings, GrowAndKeepWhatIsThere) {
    build();
    const std::vector<vertex_t> before = vertices_of(entry.polygon);
    const std::vector<frame_t> frames = frames_of(entry.polygon);
    set_polygon_settings(entry, {new_names, 6, 5});
    const std::vector<vertex_t> after = vertices_of(entry.polygon);
    ASSERT_EQ(after.size(), 6U);
    EXPECT_TRUE(std::equal(before.begin(), before.end(), after.begin()));
    EXPECT_EQ(after[5], (vertex_t{{}, default_color, {}}));
    EXPECT_EQ(frames_of(entry.polygon)[5], new_vertex_frame);
    EXPECT_EQ(entry.polygon.unset_frames, (std::vector<bool>{false, false, false, false, true, true}));
    set_polygon_settings(entry, {new_names, 5, 5});
    EXPECT_EQ(entry.polygon.unset_frames, (std::vector<bool>{false, false, false, false, true}));
    EXPECT_TRUE(std::equal(frames.begin(), frames.end(), frames_of(entry.polygon).begin()));
    EXPECT_EQ(elements_of(entry.polygon), (std::vector<std::uint32_t>{0, 1, 2, 3, mark}));
}

TEST_F(PolygonSettings, ShrinkBelowWhatTheHistoryRemembers) {
    build();
    ASSERT_TRUE(entry.polygon.select(3));
    entry.history.open(0, 0, entry.polygon);
    entry.history.move(entry.polygon, {1, 1, 1});
    ASSERT_TRUE(entry.history.close(entry.polygon));
    set_polygon_settings(entry, {new_names, 2, 2});
    entry.history.undo(entry.polygon);
    EXPECT_EQ(entry.polygon.vertex_count(), 2U);
    EXPECT_EQ(entry.polygon.selection.size(), 2U);
}

TEST_F(PolygonSettings, WithoutAChangeTheModelStaysAsItIs) {
    build();
    const ulk_test::counted_mappings mappings;
    set_polygon_settings(entry, polygon_settings(entry));
    EXPECT_EQ(mappings.count(), 0);
}

TEST_F(PolygonSettings, ANameAloneIsAChange) {
    build();
    polygon_settings_t settings = polygon_settings(entry);
    settings.names.name = "renamed.ulk";
    set_polygon_settings(entry, settings);
    EXPECT_EQ(entry.polygon.name, "renamed.ulk");
    EXPECT_EQ(elements_of(entry.polygon), (std::vector<std::uint32_t>{0, 1, 2, 3}));
}

TEST_F(PolygonSettings, MoreThanThereIsMemoryForLeavesTheMesh) {
    build();
    const captured_stream messages(std::cerr);
    set_polygon_settings(entry, {new_names, 0xFFFFFFF0U, 4});
    EXPECT_EQ(messages.text(), "vertices.extend() failed.\n");
    EXPECT_EQ(entry.polygon.vertex_count(), 4U);
}

class NurbsSettings : public gl_test {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        ASSERT_TRUE(glpolygon.init(""));
    }

    void build(std::uint32_t count, std::uint32_t order) {
        set_nurbs_settings(entry, {new_names, count, count, order, order, 9, 5}, glpolygon);
    }

    model_entry_t entry{model_kind_t::nurbs};
    glpolygon_t glpolygon;
    captured_stream messages{std::cerr};
};

TEST_F(NurbsSettings, MakeASurfaceFromNothing) {
    build(4, 3);
    EXPECT_EQ(nurbs_settings(entry), (nurbs_settings_t{new_names, 4, 4, 3, 3, 9, 5}));
    EXPECT_EQ(entry.nurbs.points.data.size(), 16U);
    EXPECT_EQ(entry.nurbs.ctlpts.element_count(), 16);
    EXPECT_EQ(entry.polygon.vertex_count(), 45U);
    EXPECT_EQ(entry.polygon.name, "new.ulk");
    EXPECT_FALSE(entry.polygon.polyidvector.empty());
}

TEST_F(NurbsSettings, WithoutAChangeTheSurfaceStays) {
    build(4, 3);
    entry.nurbs.points.row(1)[2].position = {7, 8, 9};
    set_nurbs_settings(entry, nurbs_settings(entry), glpolygon);
    EXPECT_EQ(entry.nurbs.points.row(1)[2].position, (pos3{7, 8, 9}));
}

/// Users know that they lose the net: any change makes new tables.
TEST_F(NurbsSettings, ANewNameAloneFlattensTheSurface) {
    build(4, 3);
    entry.nurbs.points.row(1)[2].position = {7, 8, 9};
    entry.nurbs.weight.row(0)[0] = 2;
    nurbs_settings_t settings = nurbs_settings(entry);
    settings.names.name = "renamed.ulk";
    set_nurbs_settings(entry, settings, glpolygon);
    EXPECT_EQ(entry.nurbs.points.row(1)[2].position, (pos3{2.0F / 3 - 0.5F, 1.0F / 3 - 0.5F, 0}));
    EXPECT_EQ(entry.nurbs.weight.row(0)[0], 1);
    EXPECT_EQ(entry.nurbs.name, "renamed.ulk");
}

TEST_F(NurbsSettings, ANewResolutionFlattensItToo) {
    build(4, 3);
    entry.nurbs.points.row(1)[2].position = {7, 8, 9};
    nurbs_settings_t settings = nurbs_settings(entry);
    settings.resolution1 = 17;
    set_nurbs_settings(entry, settings, glpolygon);
    EXPECT_EQ(entry.polygon.vertex_count(), 17U * 5);
    EXPECT_EQ(entry.nurbs.points.row(1)[2].position, (pos3{2.0F / 3 - 0.5F, 1.0F / 3 - 0.5F, 0}));
}

TEST_F(NurbsSettings, ANewSurfaceIsAFlatSheetWithoutAWord) {
    set_nurbs_settings(entry, {new_names, 5, 3, 4, 2, 9, 5}, glpolygon);
    EXPECT_EQ(messages.text(), "");
    const std::vector<vertex_t> samples = vertices_of(entry.polygon);
    ASSERT_EQ(samples.size(), 45U);
    EXPECT_EQ(samples.front().position, (pos3{-0.5F, -0.5F, 0}));
    EXPECT_EQ(samples.back().position, (pos3{0.5F, 0.5F, 0}));
    for (const vertex_t& sample : samples) {
        EXPECT_EQ(sample.position.z, 0);
        EXPECT_NEAR(sample.color.r, 0.5, 1e-6);
        EXPECT_NEAR(sample.color.a, 1, 1e-6);
    }
    for (const frame_t& frame : frames_of(entry.polygon))
        EXPECT_NEAR(std::fabs(frame.normal.z), 1, 1e-5);
}

TEST_F(NurbsSettings, AllMapsAreTriedWithANewResolutionToo) {
    build(4, 3);
    nurbs_settings_t settings = nurbs_settings(entry);
    settings.resolution1 = 17;
    settings.names = {"renamed.ulk", "colour.png", "bump.png", "specular.png"};
    set_nurbs_settings(entry, settings, glpolygon);
    const std::string told = messages.text();
    for (const char* name : {"colour.png", "bump.png", "specular.png"})
        EXPECT_NE(told.find(name), std::string::npos) << name;
}

/// What can not be made is told; the names are the new ones all the same, and maps that are missing are told
/// too.
TEST_F(NurbsSettings, AMeshThatCanNotBeMadeLeavesNothingElseOut) {
    build(4, 3);
    nurbs_settings_t settings = nurbs_settings(entry);
    settings.resolution2 = 0;
    settings.names = {"renamed.ulk", "missing.png", "", ""};
    set_nurbs_settings(entry, settings, glpolygon);
    const std::string told = messages.text();
    EXPECT_NE(told.find("polygon.allocate() fail."), std::string::npos) << told;
    EXPECT_NE(told.find("missing.png: color autoloadformat failed."), std::string::npos) << told;
    EXPECT_EQ(entry.polygon.name, "renamed.ulk");
    EXPECT_EQ(entry.nurbs.name, "renamed.ulk");
}

TEST_F(NurbsSettings, StrangeSizesAreSurvived) {
    for (const auto& [count1, count2, order1, order2] :
         std::initializer_list<std::array<std::uint32_t, 4>>{{0, 0, 0, 0},
                                                             {1, 1, 1, 1},
                                                             {0, 3, 2, 2},
                                                             {3, 0, 2, 2},
                                                             {2, 2, 9, 7},
                                                             {3, 3, 0, 0},
                                                             {1025, 2, 2, 2}}) {
        for (const std::uint32_t resolution : {0U, 1U, 2U}) {
            set_nurbs_settings(entry, {new_names, count1, count2, order1, order2, resolution, resolution},
                               glpolygon);
            EXPECT_EQ(entry.nurbs.count1, count1);
            EXPECT_EQ(entry.nurbs.order2, order2);
            entry.nurbs.draw();
            entry.polygon.draw();
        }
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

}  // namespace
