// A NURBS surface whose control points could not be brought into a GL array. No load leaves one behind.

#include <iostream>

#include "gl/app/editor/editor_test.h"
#include "model/vertex.h"
#include "support/captured_stream.h"
#include "support/watched_stores.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

class UnloadedPoints : public editor_test {
  protected:
    void SetUp() override {
        editor_test::SetUp();
        open(patch_block());
        nurbs().ctlpts.release();
        nurbs().pointsizes.release();
        nurbs().selectionfeedback.release();
        nurbs().pointarray.reset();
        const captured_stream errors(std::cerr);
        {
            const watched_stores failing(all_but_one);
            EXPECT_FALSE(nurbs().afterload(nullptr));
        }
        printed = errors.text();
    }

    /// Fails the store of the four points of the patch.
    static bool all_but_one(GLsizeiptr size) { return size != 4 * sizeof(control_point_t); }

    nurbs_t& nurbs() { return entry(0).nurbs; }

    std::string printed;
};

TEST_F(UnloadedPoints, AreNoLoad) {
    const captured_stream errors(std::cerr);
    const watched_stores failing(all_but_one);
    std::ostringstream messages;
    EXPECT_FALSE(editor.file_open(folder.write("other.ulk", patch_block()).c_str(), messages));
    EXPECT_EQ(messages.str(), "nurbs.makeVertices() error.\n");
    EXPECT_EQ(editor.models().size(), 1U);
}

TEST_F(UnloadedPoints, TheSurfaceIsShown) {
    EXPECT_NE(printed.find("makeCtlpts() error.\n"), std::string::npos) << printed;
    ASSERT_EQ(editor.models().size(), 1U);
    EXPECT_EQ(entry(0).polygon.vertex_count(), 33U * 33U);
    const auto with_points = frame();
    editor.set_control_points(false);
    static_cast<void>(frame());
    EXPECT_FALSE(with_points.pixels.empty());
}

TEST_F(UnloadedPoints, GesturesOfAllKindsChangeNothing) {
    const captured_stream errors(std::cerr);
    const auto points = nurbs().points.data;
    for (const operation_mode_t mode : {operation_mode_t::selection, operation_mode_t::punish,
                                        operation_mode_t::clipping, operation_mode_t::folding}) {
        editor.set_mode(mode);
        for (const view_t view : every_view) {
            const pixel_place_t from = widget(view, 2, 2), to = widget(view, 90, 70);
            drag(left_button, from, to);
            click(left_button, widget(view, 50, 40));
            drag_with(modifier_shift, left_button, from, to);
            drag(right_button, from, to);
            static_cast<void>(frame());
        }
        undo();
        redo();
    }
    EXPECT_TRUE(marked(0).empty());
    EXPECT_EQ(nurbs().points.data.size(), points.size());
    for (std::size_t i = 0; i < points.size(); ++i)
        EXPECT_TRUE(nurbs().points.data[i].position == points[i].position) << i;
}

TEST_F(UnloadedPoints, MarkedAndMovedFromOutsideNothingBadHappens) {
    const captured_stream errors(std::cerr);
    static_cast<void>(nurbs().select(0));
    static_cast<void>(nurbs().select(3));
    for (const operation_mode_t mode : {operation_mode_t::selection, operation_mode_t::punish}) {
        editor.set_mode(mode);
        for (const view_t view : every_view)
            drag_with(modifier_shift, left_button, widget(view, 40, 30), widget(view, 60, 50));
    }
    nurbs().dent(0, 1, {0, 0, 1});
    nurbs().uploadpoint(1, 1);
    nurbs().elementchanged(0, 2);
    undo();
    redo();
    pos3 low, high;
    nurbs().bounds(low, high);
    static_cast<void>(frame());
    editor.polygonize_current();
    static_cast<void>(frame());
}

TEST_F(UnloadedPoints, TheSurfaceIsSavedAsItWasRead) {
    const captured_stream errors(std::cerr);
    ASSERT_TRUE(editor.save_models_to(folder.path("saved.ulk").c_str()));
    ASSERT_TRUE(editor.save_models_to(folder.path("saved.stl").c_str()));
    std::ostringstream messages;
    ASSERT_TRUE(editor.file_open(folder.path("saved.ulk").c_str(), messages)) << messages.str();
    const nurbs_t& read = entry(1).nurbs;
    ASSERT_EQ(read.points.data.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_TRUE(read.points.data[i].position == nurbs().points.data[i].position) << i;
}

TEST_F(UnloadedPoints, ItsDialogsWork) {
    const captured_stream errors(std::cerr);
    const net_table_t table = editor.net_table(attribute_t::position);
    editor.set_net_table(attribute_t::position, table.points);
    editor.set_option_table(2, editor.option_table(2).values);
    static_cast<void>(frame());
    editor.delete_current();
    EXPECT_TRUE(editor.models().empty());
}

}  // namespace
