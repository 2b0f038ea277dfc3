// The command that cuts: the scene before, while and after it runs. Which triangles go is told in the tests
// of the cut itself.

#include <algorithm>
#include <cmath>
#include <iterator>
#include <vector>

#include "gl/app/editor/editor_test.h"
#include "model/polygon/strip_walk.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

/// A tetrahedron that reaches through z = 0.
std::string cutter_block() {
    return polygon_block(
        {{-0.31F, -0.27F, -0.4F}, {0.33F, -0.22F, -0.45F}, {0.02F, 0.36F, -0.42F}, {0.05F, 0.01F, 0.5F}},
        {0, 2, 1, -1, 0, 1, 3, -1, 1, 2, 3, -1, 2, 0, 3});
}

class CutCommand : public editor_test {
  protected:
    /// The cutter, model 0, is current; model 1 is a square that it pierces.
    void open_cutter_and_square() { open(cutter_block() + square_block(0.9F, 0.01F)); }

    std::vector<double> cut() {
        std::vector<double> fractions;
        editor.cut_current([&](double fraction) { fractions.push_back(fraction); });
        return fractions;
    }

    void press_and_drag_marked_points() {
        drag_with(modifier_shift, left_button, widget(view_t::front, 40, 30), widget(view_t::front, 90, 60));
    }
};

TEST_F(CutCommand, SubtractsTheCurrentModelFromTheOthers) {
    open_cutter_and_square();
    const std::vector<pos3> cutter_before = points_of(0);
    cut();
    EXPECT_EQ(points_of(0), cutter_before);
    EXPECT_GT(entry(1).polygon.vertex_count(), 4U);
    // Nothing of the square is left inside the cutter.
    const std::vector<vertex_t> vertices = vertices_of(entry(1).polygon);
    walk_strips(elements_of(entry(1).polygon), vertices.size(), [&](const strip_triangle_t& t) {
        const pos3 a = vertices[t.a].position, b = vertices[t.b].position, c = vertices[t.c].position;
        const float x = (a.x + b.x + c.x) / 3, y = (a.y + b.y + c.y) / 3;
        EXPECT_FALSE(std::fabs(x) < 0.02F && std::fabs(y) < 0.02F) << x << ", " << y;
    });
}

TEST_F(CutCommand, TellsItsProgressFromZeroTowardsOne) {
    open_cutter_and_square();
    const std::vector<double> fractions = cut();
    ASSERT_FALSE(fractions.empty());
    EXPECT_LT(fractions.front(), 0.1);
    EXPECT_TRUE(std::ranges::is_sorted(fractions));
    EXPECT_GT(fractions.back(), 0.5);
}

TEST_F(CutCommand, ClearsTheEditHistory) {
    open_cutter_and_square();
    mark(0, {0, 1});
    press_and_drag_marked_points();
    cut();
    EXPECT_FALSE(undo());
    EXPECT_FALSE(redo());
}

TEST_F(CutCommand, ANurbsModelCutsNothingAndKeepsTheHistory) {
    open(patch_block() + square_block(0.9F, 0.01F));
    mark(0, {0, 1});
    press_and_drag_marked_points();
    EXPECT_TRUE(cut().empty());
    EXPECT_EQ(entry(1).polygon.vertex_count(), 4U);
    EXPECT_TRUE(undo());
}

TEST_F(CutCommand, AnEmptySceneCutsNothing) {
    EXPECT_TRUE(cut().empty());
    EXPECT_TRUE(editor.models().empty());
}

TEST_F(CutCommand, OneModelAloneStaysAsItIs) {
    open(cutter_block());
    const std::vector<pos3> before = points_of(0);
    cut();
    EXPECT_EQ(points_of(0), before);
}

TEST_F(CutCommand, WhileItRunsTheListOfModelsStays) {
    open_cutter_and_square();
    open(patch_block());
    editor.select_model(0);
    const std::string third = folder.write("third.ulk", square_block());
    int calls = 0;
    editor.cut_current([&](double) {
        ++calls;
        EXPECT_TRUE(editor.cut_is_running());
        std::ostringstream messages;
        EXPECT_FALSE(editor.file_open(third.c_str(), messages));
        editor.add_model(model_kind_t::polygon);
        editor.delete_current();
        editor.select_model(2);
        editor.polygonize_current();
        editor.select_model(0);
        editor.cut_current([](double) { ADD_FAILURE() << "a cut inside a cut"; });
    });
    EXPECT_GT(calls, 0);
    EXPECT_FALSE(editor.cut_is_running());
    ASSERT_EQ(editor.models().size(), 3U);
    EXPECT_EQ(entry(2).kind, model_kind_t::nurbs);
    EXPECT_GT(entry(1).polygon.vertex_count(), 4U);
}

TEST_F(CutCommand, WhileItRunsNothingIsMarkedOrMoved) {
    open_cutter_and_square();
    mark(0, {0});
    press_and_drag_marked_points();
    editor.scene().fold_picks[0] = {0, 0};
    editor.scene().fold_picks[1] = {0, 1};
    editor.set_fold_angle(90);
    select_polygons(entry(0).polygon, {0});
    const std::vector<pos3> cutter_before = points_of(0);
    const pixel_place_t corner = place_of(view_t::front, points_of(1)[3]);
    editor.cut_current([&](double) {
        EXPECT_FALSE(undo());
        EXPECT_FALSE(editor.fold());
        EXPECT_FALSE(click(left_button, corner));
        press_and_drag_marked_points();
        editor.press_modifier(modifier_shift, modifier_shift);
        EXPECT_FALSE(editor.mouse_wheel(1, 9, 9));
        editor.release_key(modifier_shift);
        EXPECT_FALSE(editor.double_click(right_button, corner.x, corner.y));
    });
    EXPECT_EQ(points_of(0), cutter_before);
    EXPECT_EQ(marked(0), (std::vector<std::size_t>{0}));
    EXPECT_TRUE(marked(1).empty());
}

TEST_F(CutCommand, WhileItRunsTheCameraAndTheFrameWork) {
    open_cutter_and_square();
    const mtx3w before = editor.camera().view.matrix;
    bool drawn = false;
    editor.cut_current([&](double) {
        if (drawn)
            return;
        drawn = true;
        drag_with(modifier_alt, right_button, widget(view_t::perspective, 40, 40),
                  widget(view_t::perspective, 80, 60));
        const libutils::rgba_picture_t picture = frame();
        EXPECT_EQ(picture.width, 400);
    });
    EXPECT_TRUE(drawn);
    EXPECT_NE(editor.camera().view.matrix, before);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(CutCommand, MarksOfPolygonsAreNumberedAnew) {
    open_cutter_and_square();
    select_polygons(entry(1).polygon, {0});
    cut();
    EXPECT_EQ(selectelems_of(entry(1).polygon).size(), 3 * entry(1).polygon.polyidvector.size());
}

}  // namespace
