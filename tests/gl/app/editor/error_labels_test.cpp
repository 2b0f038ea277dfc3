// The error labels of the editor: each stands in its place between the GL calls, and fetches one error.

#include <gtest/gtest.h>

#include <iostream>
#include <memory>
#include <sstream>
#include <vector>

#include "gl/app/editor/editor_test.h"
#include "support/captured_stream.h"
#include "support/gl_trace.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

using places_t = std::vector<label_place_t>;

class ErrorLabels : public editor_test {
  protected:
    /// The places of the editor's labels in what `action` does.
    template <typename action_t>
    places_t places_in(const action_t& action) {
        const gl_trace trace;
        action();
        return places_of_labels(trace.events(), "ulkedit_t::");
    }

    /// Opens a file of this content, or no file that there is.
    bool file_open(const char* content) {
        const std::string file =
            content != nullptr ? folder.write("scene.ulk", content) : folder.path("none");
        std::ostringstream messages;
        return editor.file_open(file.c_str(), messages);
    }
};

// The fit of the scene that is there already stands between the last two labels.
TEST_F(ErrorLabels, OfInitStandBetweenItsSteps) {
    ulkedit_t fresh{"ulkedit"};
    ASSERT_TRUE(fresh.scene().append([](scene_t& loaded) {
        loaded.models.push_back(std::make_unique<model_entry_t>(model_kind_t::polygon));
        build_polygon(loaded.models.back()->polygon, vertices_at(scattered_points()), {0, 1, 2});
        return true;
    }));
    const places_t expected{{"", "ulkedit_t::init() before GL init.", "glClearColor"},
                            {"glEnable", "ulkedit_t::init() after GL inited.", "glCreateShader"},
                            {"glBindVertexArray", "ulkedit_t::init4", "glBindBuffer"},
                            {"glBindBuffer", "ulkedit_t::init5", ""}};
    EXPECT_EQ(places_in([&] { fresh.init(); }), expected);
}

TEST_F(ErrorLabels, OfReshapeStandsBehindTheGrids) {
    const places_t expected{{"glBindVertexArray", "ulkedit_t::reshape(end)", ""}};
    EXPECT_EQ(places_in([&] { editor.reshape(300, 200); }), expected);
}

TEST_F(ErrorLabels, OfFileOpenStandAroundTheLoadAndTheFit) {
    const places_t expected{{"", "ulkedit_t::file_open(0)", "polygon_t::allocate(0)"},
                            {"glBindBuffer", "ulkedit_t::file_open(1)", "glBindBuffer"},
                            {"glBindVertexArray", "ulkedit_t::file_open(3)", ""}};
    bool opened = false;
    EXPECT_EQ(places_in([&] { opened = file_open(square_block().c_str()); }), expected);
    EXPECT_TRUE(opened);
}

TEST_F(ErrorLabels, OfAFileOpenThatFailsIsTheFirstAlone) {
    const places_t expected{{"", "ulkedit_t::file_open(0)", ""}};
    bool opened = true;
    EXPECT_EQ(places_in([&] { opened = file_open(nullptr); }), expected);
    EXPECT_FALSE(opened);
}

TEST_F(ErrorLabels, OfAFrameStandBetweenItsParts) {
    open(square_block());
    editor.scene().fold_picks[0] = {0, 0};
    editor.scene().fold_picks[1] = {0, 3};
    editor.view().crosshair_on = true;
    const places_t expected{
        {"", "ulkedit_t::display(0)", "glActiveTexture"},
        {"glViewport", "ulkedit_t::display(1)", "glEnable"},
        {"glpolygon_t::drawsolid(end)", "ulkedit_t::display(7)", "glDisable"},
        {"glUseProgram", "ulkedit_t::display(8)", "glViewport"},
        {"glUseProgram", "ulkedit_t::display(9)", "glViewport"},
        {"glUseProgram", "ulkedit_t::display(10)", "glViewport"},
        {"glUseProgram", "ulkedit_t::display(11)", "glViewport"},
        {"glViewport", "ulkedit_t::display(12)", "glBindBuffer"},
        // the fold line
        {"glEnable", "ulkedit_t::display(13)", "glUseProgram"},
        {"glBindBuffer", "ulkedit_t::display(14)", "glUseProgram"},
        {"glUseProgram", "ulkedit_t::display(15)", "glDisable"},
        // the bands at the cursor
        {"glDisable", "ulkedit_t::display(13)", "glUseProgram"},
        {"glBindBuffer", "ulkedit_t::display(14)", "glUseProgram"},
        {"glUseProgram", "ulkedit_t::display(15)", "ulkedit_t::display(end)"},
        {"ulkedit_t::display(15)", "ulkedit_t::display(end)", ""},
    };
    EXPECT_EQ(places_in([&] { editor.display(); }), expected);
}

TEST_F(ErrorLabels, OfAPickOfPointsStandAroundTheirPass) {
    open(square_block());
    const places_t expected{{"", "ulkedit_t::selection(1)", "glUseProgram"},
                            {"glDisable", "ulkedit_t::selection(2)", "glBindBuffer"},
                            {"glUseProgram", "ulkedit_t::selection(3)", ""}};
    EXPECT_EQ(places_in([&] { press(left_button, widget(view_t::front, 1, 1)); }), expected);
}

TEST_F(ErrorLabels, OfAPickOfHiddenPointsIsTheFirstAlone) {
    open(square_block());
    editor.set_control_points(false);
    const places_t expected{{"", "ulkedit_t::selection(1)", ""}};
    EXPECT_EQ(places_in([&] { press(left_button, widget(view_t::perspective, 1, 1)); }), expected);
}

TEST_F(ErrorLabels, OfAPickOfPolygonsStandBehindIt) {
    open(square_block());
    editor.set_mode(operation_mode_t::clipping);
    const pixel_place_t polygon = place_of(view_t::perspective, {-0.5F, -0.5F, 0});
    const captured_stream report(std::cout);
    const places_t expected{
        {"glBindBuffer", "ulkedit_t::polyselection(end)", "ulkedit_t::ApplySelPolygon(start)"},
        {"ulkedit_t::polyselection(end)", "ulkedit_t::ApplySelPolygon(start)",
         "ulkedit_t::ApplySelPolygon(end)"},
        {"ulkedit_t::ApplySelPolygon(start)", "ulkedit_t::ApplySelPolygon(end)", ""}};
    EXPECT_EQ(places_in([&] { press(left_button, polygon); }), expected);
}

TEST_F(ErrorLabels, OfAPickWherePolygonsAreNotPickedIsThereToo) {
    open(square_block());
    editor.set_mode(operation_mode_t::clipping);
    const places_t expected{{"", "ulkedit_t::polyselection(end)", ""}};
    EXPECT_EQ(places_in([&] { press(left_button, widget(view_t::front, 1, 1)); }), expected);
}

}  // namespace
