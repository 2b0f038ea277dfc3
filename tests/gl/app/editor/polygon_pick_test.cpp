// Polygons under the mouse: which of them a press marks, and what is told of them on the standard output.

#include <gmock/gmock.h>

#include <iostream>
#include <set>

#include "app/editor/polygon_report.h"
#include "gl/app/editor/editor_test.h"
#include "support/captured_stream.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;
using testing::ElementsAre;
using testing::IsEmpty;

class PolygonPick : public editor_test {
  protected:
    void SetUp() override {
        editor_test::SetUp();
        editor.set_mode(operation_mode_t::clipping);
    }

    /// What a click at a place of the perspective view writes.
    std::string told_at(pixel_place_t at, bool expected = true) {
        const captured_stream output(std::cout);
        EXPECT_EQ(click(left_button, at), expected);
        return output.text();
    }
    std::string told_at(const pos3& p, bool expected = true) {
        return told_at(place_of(view_t::perspective, p), expected);
    }

    const std::set<std::uint32_t>& marks(std::size_t index) { return entry(index).polygon.selectpolygons(); }
};

/// The first lines alone.
std::vector<std::string> headings(const std::string& told) {
    std::vector<std::string> lines;
    std::istringstream text(told);
    for (std::string line; std::getline(text, line);)
        if (line.starts_with("select polygon "))
            lines.push_back(line);
    return lines;
}

TEST_F(PolygonPick, TheReportTellsTheTriangleToTheLastBit) {
    open(square_block(1));
    EXPECT_EQ(told_at({-0.5F, -0.5F, 0}),
              "select polygon model_id: 0, polygon_id: 0\n"
              "element id: 0, 1, 2\n"
              "vertex id: 0, 1, 2\n"
              "vertex value: \n"
              "pos3(-1.000000, -1.000000, 0.000000), col3a(0.500000, 0.500000, 0.500000, 1.000000), "
              "txc2(0.000000, 0.000000)\n"
              "pos3(1.000000, -1.000000, 0.000000), col3a(0.500000, 0.500000, 0.500000, 1.000000), "
              "txc2(0.000000, 0.000000)\n"
              "pos3(-1.000000, 1.000000, 0.000000), col3a(0.500000, 0.500000, 0.500000, 1.000000), "
              "txc2(0.000000, 0.000000)\n"
              "vertex value(hex): \n"
              "pos3( bf800000, bf800000, 0)\n"
              "pos3( 3f800000, bf800000, 0)\n"
              "pos3( bf800000, 3f800000, 0)\n");
}

TEST_F(PolygonPick, OfAFlippedTriangleTheFirstTwoCornersAreExchanged) {
    open(triangle_block(0.25F, 3) + square_block(1));
    const std::string told = told_at({0.5F, 0.5F, 0});
    EXPECT_THAT(told, testing::StartsWith("select polygon model_id: 1, polygon_id: 1\n"
                                          "element id: 2, 1, 3\n"
                                          "vertex id: 2, 1, 3\n"
                                          "vertex value: \n"
                                          "pos3(-1.000000, 1.000000, 0.000000)"));
    EXPECT_THAT(told, testing::EndsWith("vertex value(hex): \n"
                                        "pos3( bf800000, 3f800000, 0)\n"
                                        "pos3( 3f800000, bf800000, 0)\n"
                                        "pos3( 3f800000, 3f800000, 0)\n"));
}

TEST_F(PolygonPick, PlacesAndIdsCountOverRestarts) {
    // A restart by the mark and one by an index that no vertex has; strips of no triangle between.
    open(polygon_block({{-1, -1, 0}, {1, -1, 0}, {-1, 1, 0}, {1, 1, 0}},
                       {0, 1, -1, 2, 9, 0, 1, 2, -1, 2, 1, 3}));
    EXPECT_THAT(told_at({0.5F, 0.5F, 0}), testing::StartsWith("select polygon model_id: 0, polygon_id: 1\n"
                                                              "element id: 9, 10, 11\n"
                                                              "vertex id: 2, 1, 3\n"));
    EXPECT_THAT(told_at({-0.5F, -0.5F, 0}), testing::StartsWith("select polygon model_id: 0, polygon_id: 0\n"
                                                                "element id: 5, 6, 7\n"
                                                                "vertex id: 0, 1, 2\n"));
}

TEST_F(PolygonPick, HexadecimalDigitsAreThoseOfTheBitsAndTheStreamKeepsItsBase) {
    polygon_t polygon;
    build_polygon(polygon, vertices_at({{-0.0F, 1e-45F, 0.1F}, {1.5F, -2, 3}, {NAN, INFINITY, -INFINITY}}),
                  {0, 1, 2});
    std::ostringstream out;
    report_polygon(out, 7, 0, polygon);
    EXPECT_THAT(out.str(), testing::EndsWith("pos3( 80000000, 1, 3dcccccd)\n"
                                             "pos3( 3fc00000, c0000000, 40400000)\n"
                                             "pos3( 7fc00000, 7f800000, ff800000)\n"));
    out.str("");
    out << 255;
    EXPECT_EQ(out.str(), "255");
}

TEST_F(PolygonPick, AnIdWithoutATriangleTellsTheFirstLineAlone) {
    polygon_t polygon;
    build_polygon(polygon, vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}), {0, 1, 2});
    for (const std::uint64_t id : {std::uint64_t{1}, std::uint64_t{0x1'0000'0000}}) {
        std::ostringstream out;
        report_polygon(out, 3, id, polygon);
        EXPECT_EQ(out.str(), "select polygon model_id: 3, polygon_id: " + std::to_string(id) + "\n");
    }
    const polygon_t empty;
    std::ostringstream out;
    const captured_stream errors(std::cerr);
    report_polygon(out, 0, 0, empty);
    EXPECT_EQ(out.str(), "select polygon model_id: 0, polygon_id: 0\n");
}

TEST_F(PolygonPick, AMarkedPolygonIsNotToldOfAgain) {
    open(square_block(1));
    EXPECT_NE(told_at({-0.5F, -0.5F, 0}), "");
    EXPECT_EQ(told_at({-0.5F, -0.5F, 0}), "") << "but it is hit, and repaints";
    EXPECT_THAT(marks(0), ElementsAre(0U));
}

TEST_F(PolygonPick, MarksShowInTheTrianglesThatAreDrawn) {
    open(square_block(1));
    told_at({0.5F, 0.5F, 0});
    EXPECT_THAT(selectelems_of(entry(0).polygon),
                ElementsAre(ulk_test::mark, ulk_test::mark, ulk_test::mark, 2U, 1U, 3U));
    EXPECT_TRUE(click(right_button, place_of(view_t::perspective, {0.5F, 0.5F, 0})));
    EXPECT_THAT(selectelems_of(entry(0).polygon), testing::Each(ulk_test::mark));
    EXPECT_THAT(marks(0), IsEmpty());
    EXPECT_NE(told_at({0.5F, 0.5F, 0}), "");
}

TEST_F(PolygonPick, TheOrthographicViewsPickNoPolygons) {
    open(square_block(1));
    for (const view_t view : orthographic_views) {
        for (const std::uint32_t button : {left_button, right_button}) {
            const captured_stream output(std::cout);
            EXPECT_FALSE(click(button, place_of(view, {0, 0, 0})));
            EXPECT_FALSE(click(button, place_of(view, {-0.5F, -0.5F, 0})));
            EXPECT_EQ(output.text(), "");
        }
    }
    EXPECT_THAT(marks(0), IsEmpty());
}

TEST_F(PolygonPick, WindowsAreThreePixelsForMarkingAndFiveForUnmarking) {
    open(square_block(1));
    const seen_t edge = seen(view_t::perspective, {-1, -0.5F, 0});
    const int y = static_cast<int>(std::lround(edge.y));
    for (int dx = -4; dx <= 1; ++dx) {
        const int x = static_cast<int>(std::lround(edge.x)) + dx;
        EXPECT_EQ(click(left_button, widget(view_t::perspective, x, y)), x + 1.5 >= edge.x) << dx;
        EXPECT_EQ(marks(0).size(), x + 1.5 >= edge.x ? 1U : 0U) << dx;
        told_at({-0.5F, -0.5F, 0});
        EXPECT_EQ(click(right_button, widget(view_t::perspective, x, y)), x + 2.5 >= edge.x) << dx;
        EXPECT_EQ(marks(0).size(), x + 2.5 >= edge.x ? 0U : 1U) << dx;
        entry(0).polygon.clearpolygons();
    }
}

TEST_F(PolygonPick, OfOneModelTheNearestPolygonAloneIsTaken) {
    // Two squares one behind the other in one model.
    open(polygon_block(
        {{-1, -1, 0}, {1, -1, 0}, {-1, 1, 0}, {1, 1, 0}, {-1, -1, 1}, {1, -1, 1}, {-1, 1, 1}, {1, 1, 1}},
        {0, 1, 2, 3, -1, 4, 5, 6, 7}));
    EXPECT_THAT(headings(told_at({-0.5F, -0.5F, 1})),
                ElementsAre("select polygon model_id: 0, polygon_id: 2"));
    EXPECT_THAT(marks(0), ElementsAre(2U));
}

TEST_F(PolygonPick, EveryModelGivesItsNearestPolygonTheNearestModelFirst) {
    open(square_block(1, 0) + square_block(1, 0.5F) + square_block(1, -0.5F));
    EXPECT_THAT(
        headings(told_at({-0.25F, -0.5F, 0})),
        ElementsAre("select polygon model_id: 1, polygon_id: 0", "select polygon model_id: 0, polygon_id: 0",
                    "select polygon model_id: 2, polygon_id: 0"));
}

TEST_F(PolygonPick, AtExactlyOneDepthTheLaterModelReplacesTheEarlier) {
    open(square_block(1) + square_block(1) + square_block(1, -0.5F));
    EXPECT_THAT(headings(told_at({-0.25F, -0.5F, 0})),
                ElementsAre("select polygon model_id: 1, polygon_id: 0",
                            "select polygon model_id: 2, polygon_id: 0"));
    EXPECT_THAT(marks(0), IsEmpty());
}

TEST_F(PolygonPick, NurbsModelsAreCountedAndPassedOver) {
    open(patch_block() + square_block(1, -1));
    EXPECT_THAT(headings(told_at({0.25F, 0.5F, 0})),
                ElementsAre("select polygon model_id: 1, polygon_id: 1"));
    EXPECT_THAT(marks(0), IsEmpty());
    editor.polygonize_current();
    EXPECT_EQ(headings(told_at({0.25F, 0.5F, 0})).size(), 1U);
    EXPECT_EQ(marks(0).size(), 1U);
}

TEST_F(PolygonPick, TheHitDecidesTheResultNotTheMarks) {
    open(patch_block());
    told_at({0.25F, 0.5F, 0}, false);
    open(square_block(0.25F));
    EXPECT_EQ(told_at(widget(view_t::perspective, 3, 3), false), "");
    EXPECT_TRUE(click(right_button, place_of(view_t::perspective, {0, 0, 0}))) << "nothing was marked there";
}

TEST_F(PolygonPick, ADragPaintsMarksAndWipesThem) {
    open(square_block(1));
    const captured_stream output(std::cout);
    const pixel_place_t lower = place_of(view_t::perspective, {-0.5F, -0.5F, 0});
    const pixel_place_t upper = place_of(view_t::perspective, {0.5F, 0.5F, 0});
    press(left_button, lower);
    EXPECT_TRUE(move(upper));
    EXPECT_FALSE(move(widget(view_t::front, 50, 50)));
    release(left_button, upper);
    EXPECT_THAT(marks(0), ElementsAre(0U, 1U));
    press(right_button, upper);
    EXPECT_THAT(marks(0), ElementsAre(0U));
    EXPECT_TRUE(move(lower));
    release(right_button, lower);
    EXPECT_THAT(marks(0), IsEmpty());
    EXPECT_FALSE(move(upper));
}

TEST_F(PolygonPick, TheRightDoubleClickClearsTheMarksOfAllModels) {
    open(square_block(1, 0) + square_block(1, 0.5F));
    told_at({-0.25F, -0.5F, 0});
    told_at({0.25F, 0.5F, 0});
    mark(0, {1});
    EXPECT_FALSE(editor.double_click(left_button, 0, 0));
    EXPECT_EQ(marks(0).size() + marks(1).size(), 4U);
    EXPECT_TRUE(editor.double_click(right_button, 0, 0));
    for (const std::size_t index : {0U, 1U}) {
        EXPECT_THAT(marks(index), IsEmpty());
        EXPECT_THAT(selectelems_of(entry(index).polygon), testing::Each(ulk_test::mark));
    }
    EXPECT_THAT(marked(0), ElementsAre(1)) << "points are another matter";
}

TEST_F(PolygonPick, ClearingPassesOverModelsWithoutPolygons) {
    editor.add_model(model_kind_t::polygon);
    editor.add_model(model_kind_t::nurbs);
    const captured_stream errors(std::cerr);
    EXPECT_TRUE(editor.double_click(right_button, 0, 0));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(PolygonPick, MarkedPolygonsChangeThePictureAndStayWhenControlPointsAreOff) {
    open(square_block(1));
    editor.set_control_points(false);
    const auto before = frame();
    told_at({-0.5F, -0.5F, 0});
    EXPECT_NE(frame(), before);
}

}  // namespace
