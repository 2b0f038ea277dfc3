// The fold: what the mouse has marked turns about the axis that it has picked.

#include <algorithm>
#include <iostream>

#include "gl/app/editor/editor_test.h"
#include "support/captured_stream.h"
#include "support/failing_stores.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;
using indices_t = std::vector<std::uint32_t>;

/// What a fold may change of a polygon model.
struct mesh_t {
    std::vector<vertex_t> vertices;
    std::vector<frame_t> frames;
    indices_t elements, selectelems;
    bool operator==(const mesh_t&) const = default;
};

class Fold : public editor_test {
  protected:
    /// Marks the polygon that is seen at a point, with the left button.
    void mark_polygon(const pos3& p) {
        const captured_stream report(std::cout);
        editor.set_mode(operation_mode_t::clipping);
        EXPECT_TRUE(click(left_button, place_of(view_t::perspective, p)));
    }

    /// Picks the axis in the front view: its first end with the right button, its second with the left one.
    void pick_axis(const pos3& first, const pos3& second) {
        editor.set_mode(operation_mode_t::folding);
        EXPECT_TRUE(click(right_button, place_of(view_t::front, first)));
        EXPECT_TRUE(click(left_button, place_of(view_t::front, second)));
    }

    /// A square of which the upper right triangle is marked and the axis runs along its lower left side.
    void open_marked_square() {
        open(square_block());
        mark_polygon({0.5F, 0.5F, 0});
        pick_axis({1, -1, 0}, {-1, 1, 0});
        editor.set_fold_angle(90);
    }

    /// A step that could be taken back: a point moved with the mouse.
    void move_a_point(std::size_t index = 0) {
        editor.set_mode(operation_mode_t::selection);
        mark(index, {0});
        drag_with(modifier_shift, left_button, widget(view_t::front, 40, 30), widget(view_t::front, 50, 30));
        model(index).clearselection();
    }

    const polygon_t& polygon(std::size_t index = 0) { return entry(index).polygon; }
    mesh_t mesh(std::size_t index = 0) {
        return {vertices_of(polygon(index)), frames_of(polygon(index)), elements_of(polygon(index)),
                selectelems_of(polygon(index))};
    }

    void expect_position(std::size_t vertex, const pos3& expected, std::size_t index = 0) {
        const pos3 found = points_of(index).at(vertex);
        EXPECT_NEAR(found.x, expected.x, 1e-6) << vertex;
        EXPECT_NEAR(found.y, expected.y, 1e-6) << vertex;
        EXPECT_NEAR(found.z, expected.z, 1e-6) << vertex;
    }
};

TEST_F(Fold, TurnsTheMarkedPolygonAboutThePickedAxis) {
    open_marked_square();
    EXPECT_TRUE(editor.fold());
    // The axis points to the upper left: what lies above of it turns to the back.
    const float height = std::sqrt(2.0F);
    EXPECT_EQ(elements_of(polygon()), (indices_t{0, 1, 2, restart_mark, 5, 4, 3}));
    ASSERT_EQ(points_of(0).size(), 6U);
    expect_position(0, {-1, -1, 0});
    expect_position(1, {1, -1, 0});
    expect_position(2, {-1, 1, 0});
    expect_position(3, {0, 0, -height});
    expect_position(4, {1, -1, 0});
    expect_position(5, {-1, 1, 0});
    const std::vector<frame_t> frames = frames_of(polygon());
    for (const std::size_t vertex : {0U, 1U, 2U})
        EXPECT_EQ(frames[vertex].normal, (dir3{0, 0, 1})) << vertex;
    for (const std::size_t vertex : {3U, 4U, 5U}) {
        EXPECT_NEAR(frames[vertex].normal.x, 1 / height, 1e-6) << vertex;
        EXPECT_NEAR(frames[vertex].normal.y, 1 / height, 1e-6) << vertex;
        EXPECT_NEAR(frames[vertex].normal.z, 0, 1e-6) << vertex;
    }
}

TEST_F(Fold, ExchangedEndsTurnTheOtherWay) {
    open_marked_square();
    std::swap(editor.scene().fold_picks[0], editor.scene().fold_picks[1]);
    EXPECT_TRUE(editor.fold());
    expect_position(3, {0, 0, std::sqrt(2.0F)});
}

TEST_F(Fold, ANegativeAngleTurnsTheOtherWay) {
    open_marked_square();
    editor.set_fold_angle(-90);
    EXPECT_TRUE(editor.fold());
    expect_position(3, {0, 0, std::sqrt(2.0F)});
}

TEST_F(Fold, AtTheAngleOfTheBeginningItTearsAndMovesNothing) {
    open(square_block());
    mark_polygon({0.5F, 0.5F, 0});
    pick_axis({1, -1, 0}, {-1, 1, 0});
    const std::vector<pos3> before = points_of(0);
    EXPECT_TRUE(editor.fold());
    const std::vector<pos3> after = points_of(0);
    ASSERT_EQ(after.size(), 6U);
    EXPECT_TRUE(std::equal(before.begin(), before.end(), after.begin()));
    EXPECT_EQ(after[4], before[1]);
    EXPECT_EQ(after[5], before[2]);
}

TEST_F(Fold, AModelOfWhichAllIsMarkedTurnsAsAWhole) {
    open_marked_square();
    mark_polygon({-0.5F, -0.5F, 0});
    EXPECT_TRUE(editor.fold());
    EXPECT_EQ(elements_of(polygon()), (indices_t{0, 1, 2, 3}));
    ASSERT_EQ(points_of(0).size(), 4U);
    expect_position(0, {0, 0, std::sqrt(2.0F)});
    expect_position(3, {0, 0, -std::sqrt(2.0F)});
}

TEST_F(Fold, FoldingAgainGoesOnFromThere) {
    open_marked_square();
    EXPECT_TRUE(editor.fold());
    EXPECT_TRUE(editor.fold());
    ASSERT_EQ(points_of(0).size(), 6U);
    expect_position(3, {-1, -1, 0});
}

// What depends on the mesh.

TEST_F(Fold, MarksNameTheSameTrianglesByTheirNewVertices) {
    open_marked_square();
    EXPECT_EQ(selectelems_of(polygon()), (indices_t{restart_mark, restart_mark, restart_mark, 2, 1, 3}));
    EXPECT_TRUE(editor.fold());
    EXPECT_EQ(polygon().selectpolygons(), std::set<std::uint32_t>{1});
    indices_t selected(15, restart_mark);
    selected[3] = 5;
    selected[4] = 4;
    selected[5] = 3;
    EXPECT_EQ(selectelems_of(polygon()), selected);
    ASSERT_EQ(polygon().polyidvector.size(), 5U);
    EXPECT_EQ(polygon().polyidvector[1].position, 4U);
    EXPECT_FALSE(polygon().polyidvector[1].flipped);
    // They can be taken away, and set, as before.
    editor.set_mode(operation_mode_t::clipping);
    EXPECT_TRUE(editor.double_click(right_button, 0, 0));
    EXPECT_EQ(selectelems_of(polygon()), indices_t(15, restart_mark));
    EXPECT_FALSE(editor.fold());
}

TEST_F(Fold, CopiesOfMarkedPointsAreNotMarked) {
    open_marked_square();
    mark(0, {1, 3});
    EXPECT_TRUE(editor.fold());
    EXPECT_EQ(marked(0), (std::vector<std::size_t>{1, 3}));
    EXPECT_EQ(pointsizes_of(model(0)), (std::vector<float>{3, 5, 3, 5, 3, 3}));
    EXPECT_EQ(model(0).selection.size(), 6U);
    EXPECT_EQ(polygon().wknmls.element_count(), 6);
}

TEST_F(Fold, TheHistoryIsGone) {
    open(square_block() + patch_block());
    move_a_point();
    move_a_point(1);
    EXPECT_TRUE(undo());
    mark_polygon({0.5F, 0.5F, 0});
    pick_axis({1, -1, 0}, {-1, 1, 0});
    editor.scene().fold_picks[0].model = editor.scene().fold_picks[1].model = 0;
    EXPECT_TRUE(editor.fold());
    const mesh_t folded = mesh();
    EXPECT_FALSE(undo());
    EXPECT_FALSE(redo());
    EXPECT_EQ(mesh(), folded);
}

TEST_F(Fold, AfterItMovesCanBeTakenBackAgain) {
    open_marked_square();
    EXPECT_TRUE(editor.fold());
    const mesh_t folded = mesh();
    editor.set_mode(operation_mode_t::selection);
    mark(0, {5});
    drag_with(modifier_shift, left_button, widget(view_t::front, 40, 30), widget(view_t::front, 50, 30));
    EXPECT_NE(mesh(), folded);
    EXPECT_TRUE(undo());
    EXPECT_EQ(mesh(), folded);
}

TEST_F(Fold, TheFrameShowsIt) {
    open_marked_square();
    const libutils::rgba_picture_t before = frame();
    EXPECT_TRUE(editor.fold());
    const libutils::rgba_picture_t after = frame();
    EXPECT_NE(after, before);
    // The folded half stands upright and shows its edge only: there is background where it was.
    const pixel_place_t at = place_of(view_t::perspective, {0.6F, 0.6F, 0});
    EXPECT_EQ(after.at(at.x, at.y), (libutils::rgba_picture_t::pixel_t{46, 46, 46, 255}));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(Fold, AFoldedModelIsSavedAndReadAgain) {
    open_marked_square();
    EXPECT_TRUE(editor.fold());
    const std::string path = folder.path("folded.ulk");
    ASSERT_TRUE(editor.save_models_to(path.c_str()));
    std::ostringstream messages;
    ASSERT_TRUE(editor.file_open(path.c_str(), messages)) << messages.str();
    EXPECT_EQ(elements_of(polygon(1)), elements_of(polygon(0)));
    // Files hold six significant digits.
    ASSERT_EQ(points_of(1).size(), 6U);
    EXPECT_NEAR(points_of(1)[3].z, -std::sqrt(2.0F), 1e-5);
}

// Which models fold.

TEST_F(Fold, TheEndsOfTheAxisMayLieInTwoModels) {
    // The first end is a vertex of the square, the second a control point of a surface.
    open(square_block() + patch_block());
    select_polygons(entry(0).polygon, {1});
    editor.scene().fold_picks[0] = {0, 0};  // (-1, -1, 0)
    editor.scene().fold_picks[1] = {1, 3};  // (1, 1, 0)
    editor.set_fold_angle(180);
    EXPECT_TRUE(editor.fold());
    // The triangle (2, 1, 3): half a turn about the diagonal exchanges x and y.
    ASSERT_EQ(points_of(0).size(), 6U);
    expect_position(4, {-1, 1, 0});
    expect_position(5, {1, -1, 0});
    expect_position(3, {1, 1, 0});
}

TEST_F(Fold, AllModelsWithMarksFoldAndOthersStay) {
    open(square_block() + square_block(0.5F) + square_block(0.5F, 0.25F) + patch_block());
    for (const std::size_t index : {0U, 2U})
        select_polygons(entry(index).polygon, {1});
    select_polygons(entry(3).polygon, {1});  // of the drawn form of a surface
    const mesh_t without_marks = mesh(1), drawn_form = mesh(3);
    const std::vector<pos3> control_points = points_of(3);
    editor.scene().fold_picks[0] = {0, 1};
    editor.scene().fold_picks[1] = {0, 2};
    editor.set_fold_angle(90);
    EXPECT_TRUE(editor.fold());
    expect_position(3, {0, 0, -std::sqrt(2.0F)}, 0);
    expect_position(3, {0.25F / std::sqrt(2.0F), 0.25F / std::sqrt(2.0F), -0.5F * std::sqrt(2.0F)}, 2);
    EXPECT_EQ(mesh(1), without_marks);
    EXPECT_EQ(mesh(3), drawn_form);
    EXPECT_EQ(points_of(3), control_points);
}

TEST_F(Fold, APolygonizedSurfaceFolds) {
    open(patch_block());
    editor.polygonize_current();
    const std::size_t count = points_of(0).size();
    select_polygons(entry(0).polygon, {0});
    editor.scene().fold_picks[0] = {0, 1};
    editor.scene().fold_picks[1] = {0, count - 1};
    editor.set_fold_angle(45);
    EXPECT_TRUE(editor.fold());
    EXPECT_EQ(points_of(0).size(), count + 3);
}

TEST_F(Fold, IdsWithoutATriangleAreIgnored) {
    open_marked_square();
    select_polygons(entry(0).polygon, {1, 2, 99, restart_mark});
    EXPECT_TRUE(editor.fold());
    EXPECT_EQ(elements_of(polygon()), (indices_t{0, 1, 2, restart_mark, 5, 4, 3}));
    select_polygons(entry(0).polygon, {7});
    const mesh_t once = mesh();
    EXPECT_TRUE(editor.fold());
    EXPECT_EQ(mesh().vertices, once.vertices);
    EXPECT_EQ(mesh().elements, once.elements);
}

// When it fails.

class FailingFold : public Fold {
  protected:
    void expect_nothing_happens() {
        std::vector<mesh_t> before, after;
        for (std::size_t index = 0; index < editor.models().size(); ++index)
            before.push_back(mesh(index));
        const captured_stream errors(std::cerr);
        EXPECT_FALSE(editor.fold());
        EXPECT_EQ(errors.text(), "");
        for (std::size_t index = 0; index < editor.models().size(); ++index)
            after.push_back(mesh(index));
        EXPECT_EQ(after, before);
        EXPECT_TRUE(undo()) << "the history is gone";
    }
    void open_moved_square() {
        open_marked_square();
        move_a_point();
    }
};

TEST_F(FailingFold, WithoutMarkedPolygons) {
    open_moved_square();
    editor.set_mode(operation_mode_t::clipping);
    editor.double_click(right_button, 0, 0);
    expect_nothing_happens();
}

TEST_F(FailingFold, WithoutAnAxis) {
    open_moved_square();
    editor.set_mode(operation_mode_t::folding);
    editor.double_click(right_button, 0, 0);
    expect_nothing_happens();
}

TEST_F(FailingFold, WithOneEndOfTheAxisOnly) {
    for (const std::size_t missing : {0U, 1U}) {
        open_moved_square();
        editor.scene().fold_picks[missing] = {};
        expect_nothing_happens();
        editor.delete_current();
    }
}

TEST_F(FailingFold, WithAnEndThatDoesNotExist) {
    open_moved_square();
    const fold_pick_t good = editor.scene().fold_picks[0];
    for (const fold_pick_t& stale :
         {fold_pick_t{0, 4}, fold_pick_t{1, 0}, fold_pick_t{0, no_index}, fold_pick_t{no_index, 0},
          fold_pick_t{0, no_index / 9}, fold_pick_t{no_index - 1, 0}}) {
        for (const std::size_t end : {0U, 1U}) {
            const fold_pick_t kept = editor.scene().fold_picks[end];
            editor.scene().fold_picks[end] = stale;
            const mesh_t before = mesh();
            EXPECT_FALSE(editor.fold()) << stale.model << ", " << stale.vertex;
            EXPECT_EQ(mesh(), before);
            editor.scene().fold_picks[end] = kept;
        }
    }
    EXPECT_EQ(editor.scene().fold_picks[0].vertex, good.vertex);
    EXPECT_TRUE(editor.fold());
}

TEST_F(FailingFold, WithBothEndsAtOnePlace) {
    // Two vertices, and the last two of three differ by less than the tolerance.
    open(polygon_block({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 0}, {0, 0.00001F, -0.00001F}}, {0, 1, 2}));
    select_polygons(entry(0).polygon, {0});
    editor.set_fold_angle(90);
    move_a_point();
    EXPECT_TRUE(undo());
    EXPECT_TRUE(redo());
    array_span<vertex_t>(entry(0).polygon.vertices)[0].position = {0, 0, 0};
    for (const std::uint64_t other : {3U, 4U, 0U}) {
        editor.scene().fold_picks[0] = {0, 0};
        editor.scene().fold_picks[1] = {0, other};
        const mesh_t before = mesh();
        EXPECT_FALSE(editor.fold()) << other;
        EXPECT_EQ(mesh(), before) << other;
    }
    EXPECT_TRUE(undo()) << "the history is gone";
    array_span<vertex_t>(entry(0).polygon.vertices)[4].position = {0, 0.00003F, 0};
    editor.scene().fold_picks[0] = {0, 3};
    editor.scene().fold_picks[1] = {0, 4};
    EXPECT_TRUE(editor.fold()) << "a short axis is an axis";
}

TEST_F(FailingFold, WithSurfacesOnly) {
    open(patch_block());
    move_a_point();
    editor.scene().fold_picks[0] = {0, 0};
    editor.scene().fold_picks[1] = {0, 3};
    select_polygons(entry(0).polygon, {0});
    expect_nothing_happens();
}

TEST_F(FailingFold, OfAModelThatWasNeverFilled) {
    open(square_block());
    move_a_point();
    editor.add_model(model_kind_t::polygon);
    editor.scene().fold_picks[0] = {0, 0};
    editor.scene().fold_picks[1] = {0, 3};
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(editor.fold());
    EXPECT_EQ(errors.text(), "");
}

TEST_F(FailingFold, InAnEmptyScene) {
    EXPECT_FALSE(editor.fold());
    editor.scene().fold_picks[0] = {0, 0};
    editor.scene().fold_picks[1] = {0, 1};
    EXPECT_FALSE(editor.fold());
}

TEST_F(FailingFold, WhenThereIsNoMemoryForTheCopies) {
    open_moved_square();
    const mesh_t before = mesh();
    {
        const captured_stream errors(std::cerr);
        const failing_stores no_memory(1);
        EXPECT_FALSE(editor.fold());
    }
    EXPECT_EQ(mesh(), before);
    EXPECT_TRUE(undo()) << "the history is gone";
}

}  // namespace
