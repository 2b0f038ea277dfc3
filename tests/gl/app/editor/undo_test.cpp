// The steps that Ctrl+Z and Ctrl+Y take.

#include <algorithm>
#include <bit>
#include <random>

#include "gl/app/editor/editor_test.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

class Undo : public editor_test {
  protected:
    void drag_points(int right, int up) {
        drag_with(modifier_shift, left_button, widget(view_t::front, 40, 30),
                  widget(view_t::front, 40 + right, 30 + up));
    }
    bool wheel(int delta) {
        editor.press_modifier(modifier_shift, modifier_shift);
        const bool moved = editor.mouse_wheel(delta, 9, 9);
        editor.release_key(modifier_shift);
        return moved;
    }
};

std::vector<std::uint32_t> bits_of(const std::vector<pos3>& points) {
    std::vector<std::uint32_t> bits;
    for (const pos3& p : points)
        for (const float coordinate : {p.x, p.y, p.z})
            bits.push_back(std::bit_cast<std::uint32_t>(coordinate));
    return bits;
}

TEST_F(Undo, AnEmptyHistoryDoesNothing) {
    EXPECT_FALSE(undo());
    EXPECT_FALSE(redo());
    open(scattered_block());
    EXPECT_FALSE(undo());
    EXPECT_FALSE(redo());
}

TEST_F(Undo, StepsGoBackAndForthToTheLastBit) {
    open(scattered_block());
    std::mt19937 random(7);
    std::uniform_int_distribution<int> pixel(-150, 150);
    std::vector<std::vector<std::uint32_t>> states{bits_of(points_of(0))};
    for (int step = 0; step < 6; ++step) {
        model(0).clearselection();
        mark(0, {static_cast<std::uint64_t>(step), static_cast<std::uint64_t>(step + 1)});
        drag_points(pixel(random) | 1, pixel(random));
        states.push_back(bits_of(points_of(0)));
    }
    for (int round = 0; round < 2; ++round) {
        for (std::size_t step = 6; step-- > 0;) {
            EXPECT_TRUE(undo());
            EXPECT_EQ(bits_of(points_of(0)), states[step]);
        }
        EXPECT_FALSE(undo());
        for (std::size_t step = 1; step <= 6; ++step) {
            EXPECT_TRUE(redo());
            EXPECT_EQ(bits_of(points_of(0)), states[step]);
        }
        EXPECT_FALSE(redo());
    }
}

TEST_F(Undo, AStepNamesTheModelsThatItMoved) {
    open(square_block() + patch_block() + square_block());
    const auto all = [this] { return std::array{points_of(0), points_of(1), points_of(2)}; };
    const auto opened = all();
    mark(0, {0});
    mark(1, {1});
    drag_points(10, 10);
    const auto both = all();
    model(0).clearselection();
    model(1).clearselection();
    mark(2, {3});
    drag_points(-10, 0);
    EXPECT_EQ(entry(0).history.undo_edits().size(), 1U) << "nothing was marked in it the second time";
    EXPECT_TRUE(undo());
    EXPECT_EQ(all(), both);
    EXPECT_TRUE(undo());
    EXPECT_EQ(all(), opened);
    EXPECT_FALSE(undo());
    EXPECT_TRUE(redo());
    EXPECT_EQ(all(), both);
}

TEST_F(Undo, ANewStepLeavesWhatCanBeDoneAgain) {
    open(square_block());
    mark(0, {0});
    drag_points(8, 0);
    const pos3 first = points_of(0)[0];
    EXPECT_TRUE(undo());
    drag_points(0, 24);
    const pos3 second = points_of(0)[0];
    ASSERT_NE(first, second);
    EXPECT_TRUE(redo());
    EXPECT_EQ(points_of(0)[0], first) << "the step that was taken back before the new one";
    EXPECT_TRUE(undo());
    EXPECT_EQ(points_of(0)[0], second);
    EXPECT_TRUE(undo());
    EXPECT_EQ(points_of(0)[0], (pos3{-1, -1, 0}));
    EXPECT_FALSE(undo());
}

TEST_F(Undo, TheWheelAloneIsNoStep) {
    open(square_block());
    mark(0, {0});
    EXPECT_TRUE(wheel(1));
    EXPECT_TRUE(wheel(1));
    EXPECT_FALSE(undo());
    EXPECT_EQ(points_of(0)[0], (pos3{-1, -1, -1}));
    EXPECT_EQ(entry(0).history.undo_edits().size(), 2U);
}

TEST_F(Undo, AStepAfterTheWheelTakesBackTheLatestNotchInstead) {
    open(square_block());
    mark(0, {0});
    drag_points(8, 0);
    const pos3 dragged = points_of(0)[0];
    wheel(1);
    wheel(1);
    EXPECT_TRUE(undo());
    EXPECT_EQ(points_of(0)[0], (pos3{dragged.x, dragged.y, -0.5F}));
    EXPECT_FALSE(undo()) << "one step is one edit of the model";
    EXPECT_TRUE(redo());
    EXPECT_EQ(points_of(0)[0], (pos3{dragged.x, dragged.y, -1}));
    drag_points(0, 8);
    EXPECT_TRUE(undo());
    EXPECT_TRUE(undo());
    EXPECT_EQ(points_of(0)[0], (pos3{dragged.x, dragged.y, -0.5F}));
}

TEST_F(Undo, ANotchWithNothingMarkedIsAnEditOfNothing) {
    open(square_block());
    mark(0, {0});
    drag_points(8, 0);
    const pos3 dragged = points_of(0)[0];
    model(0).clearselection();
    EXPECT_FALSE(wheel(1));
    EXPECT_TRUE(undo()) << "takes back the notch that moved nothing";
    EXPECT_EQ(points_of(0)[0], dragged);
    EXPECT_FALSE(undo());
}

TEST_F(Undo, AReleaseWithoutAPressNamesTheLastStepAgain) {
    open(square_block());
    mark(0, {0});
    drag_points(8, 0);
    editor.press_modifier(modifier_shift, modifier_shift);
    EXPECT_TRUE(release(left_button, widget(view_t::front, 40, 30)));
    editor.release_key(modifier_shift);
    EXPECT_TRUE(undo());
    EXPECT_EQ(points_of(0)[0], (pos3{-1, -1, 0}));
    EXPECT_TRUE(undo()) << "with no edit left in the model";
    EXPECT_EQ(points_of(0)[0], (pos3{-1, -1, 0}));
    EXPECT_FALSE(undo());
}

TEST_F(Undo, MarksAreNotPartOfAStep) {
    open(square_block());
    mark(0, {0});
    drag_points(8, 0);
    model(0).clearselection();
    mark(0, {2});
    EXPECT_TRUE(undo());
    EXPECT_EQ(marked(0), std::vector<std::size_t>{2});
    EXPECT_EQ(points_of(0)[0], (pos3{-1, -1, 0}));
}

TEST_F(Undo, OpeningAndDeletingForgetAllSteps) {
    open(square_block() + square_block());
    mark(0, {0});
    drag_points(8, 0);
    drag_points(8, 0);
    EXPECT_TRUE(undo());
    open(square_block());
    EXPECT_FALSE(undo());
    EXPECT_FALSE(redo());
    EXPECT_TRUE(entry(0).history.undo_edits().empty());
    EXPECT_TRUE(entry(0).history.redo_edits().empty());
    drag_points(8, 0);
    drag_points(8, 0);
    EXPECT_TRUE(undo());
    editor.select_model(1);
    editor.delete_current();
    EXPECT_FALSE(undo());
    EXPECT_FALSE(redo());
}

TEST_F(Undo, AFailedOpenKeepsTheSteps) {
    open(square_block());
    mark(0, {0});
    drag_points(8, 0);
    std::ostringstream messages;
    EXPECT_FALSE(editor.file_open(folder.path("missing.ulk").c_str(), messages));
    EXPECT_TRUE(undo());
}

TEST_F(Undo, APolygonizedModelsStepsSpeakOfItsVertices) {
    // The entry names the net's corner; the surface has a vertex of that number too.
    open(patch_block());
    mark(0, {3});
    drag_points(8, 0);
    editor.polygonize_current();
    const pos3 before = points_of(0)[3];
    EXPECT_TRUE(undo());
    EXPECT_EQ(points_of(0)[3], (pos3{1, 1, 0}));
    EXPECT_TRUE(redo());
    EXPECT_EQ(points_of(0)[3], before);
}

}  // namespace
