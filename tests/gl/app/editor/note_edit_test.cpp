// Edits that dialogs make, as steps of Ctrl+Z and Ctrl+Y.

#include "gl/app/editor/editor_test.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

class NoteEdit : public editor_test {};

TEST_F(NoteEdit, MakesAPushedEditAStepOfUndo) {
    open(scattered_block());
    const std::vector<pos3> before = points_of(0);
    edit_point(2, {7, 8, 9});
    const std::vector<pos3> after = points_of(0);
    EXPECT_EQ(after[2], (pos3{7, 8, 9}));
    EXPECT_TRUE(undo());
    EXPECT_EQ(points_of(0), before);
    EXPECT_TRUE(redo());
    EXPECT_EQ(points_of(0), after);
}

TEST_F(NoteEdit, IsAStepOfTheCurrentModelAlone) {
    open(scattered_block() + scattered_block());
    editor.select_model(1);
    const std::vector<pos3> before = points_of(1);
    edit_point(0, {7, 8, 9});
    EXPECT_TRUE(undo());
    EXPECT_EQ(points_of(1), before);
    EXPECT_TRUE(entry(0).history.redo_edits().empty());
    EXPECT_EQ(entry(1).history.redo_edits().size(), 1U);
}

TEST_F(NoteEdit, WithoutAModelIsNoStep) {
    editor.note_edit({});
    EXPECT_FALSE(undo());
}

}  // namespace
