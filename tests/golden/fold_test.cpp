#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>

#include "app/editor/ulkedit.h"
#include "support/gl_context.h"
#include "support/golden.h"
#include "support/scene_text.h"

namespace {

using namespace ulk_test;

class FoldPicture : public gl_test {};

/// The sheet of paper creased at three fifths of its width, its right part lifted by 60 degrees.
TEST_F(FoldPicture, ACreasedSheetLooksAsBefore) {
    const render_target_t target(320, 240);
    target.bind();
    ulk3d::ulkedit_t editor("ulkedit");
    editor.init();
    editor.reshape(320, 240);
    std::ostringstream messages;
    ASSERT_TRUE(editor.file_open(sample("paper.ulk").c_str(), messages)) << messages.str();

    // Rows of 20 quads, two triangles each, over rows of 21 vertices.
    for (std::uint32_t row = 0; row < 20; ++row)
        for (std::uint32_t i = 24; i < 40; ++i)
            editor.models().front()->polygon.selectpolygon(row * 40 + i);
    editor.scene().fold_picks[0] = {0, 20 * 21 + 12};
    editor.scene().fold_picks[1] = {0, 12};
    editor.set_fold_angle(-60);
    ASSERT_TRUE(editor.fold());
    // Marked polygons are translucent; the sheet is shown as a whole.
    editor.set_mode(ulk3d::operation_mode_t::clipping);
    editor.double_click(ulk3d::right_button, 0, 0);
    editor.set_control_points(false);
    editor.display();
    EXPECT_TRUE(matches_golden(target.read_pixels(), "folded-paper"));
}

}  // namespace
