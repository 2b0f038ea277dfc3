#include <gtest/gtest.h>

#include <cmath>
#include <iostream>
#include <limits>
#include <optional>
#include <sstream>
#include <string>

#include "app/editor/ulkedit.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/scene_text.h"
#include "support/stl_bytes.h"

/// STL files in the scene editor.
namespace {

using namespace ulk3d;
using namespace ulk_test;

class StlOpen : public gl_test {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        target.emplace(200, 160);
        target->bind();
        editor.init();
        editor.reshape(200, 160);
    }

    bool open(const std::string& bytes) {
        return editor.file_open(folder.write("model.stl", bytes).c_str(), messages);
    }

    temporary_folder_t folder;
    std::optional<render_target_t> target;
    std::ostringstream messages;
    ulkedit_t editor{"ulkedit"};
};

TEST_F(StlOpen, AddsAPolygonModelAndMakesItCurrent) {
    ASSERT_TRUE(editor.file_open(folder.write("scene.ulk", patch_block()).c_str(), messages));
    ASSERT_TRUE(open(stl_file({flat_triangle(), flat_triangle(1)})));
    ASSERT_EQ(editor.models().size(), 2U);
    EXPECT_EQ(editor.current_index(), 1U);
    EXPECT_EQ(editor.current_model()->kind, model_kind_t::polygon);
    EXPECT_EQ(editor.current_model()->polygon.name, folder.path("model.stl"));
    EXPECT_EQ(messages.str(), "");
}

TEST_F(StlOpen, AMissingFileIsToldOnTheErrorStreamAlone) {
    ASSERT_TRUE(open(stl_file({flat_triangle()})));
    const captured_stream errors(std::cerr);
    const std::string path = folder.path("missing.stl");
    EXPECT_FALSE(editor.file_open(path.c_str(), messages));
    EXPECT_EQ(errors.text(), path + ": file open error.\n");
    EXPECT_EQ(messages.str(), "");
    EXPECT_EQ(editor.models().size(), 1U);
}

TEST_F(StlOpen, MeshesOfAllSortsAreShown) {
    constexpr float huge = std::numeric_limits<float>::max();
    const stl_triangle_t not_a_number{{}, {NAN, 0, 0}, {1, NAN, 0}, {0, 0, NAN}};
    const stl_triangle_t infinite{{}, {INFINITY, 0, 0}, {0, -INFINITY, 0}, {0, 0, 1}};
    const stl_triangle_t vast{{}, {huge, -huge, 0}, {-huge, huge, huge}, {0, 0, -huge}};
    const stl_triangle_t point{{}, {2, 2, 2}, {2, 2, 2}, {2, 2, 2}};
    const std::string text(1000, 'f');
    for (const std::string& bytes : {std::string(), stl_file({}), stl_file({not_a_number}),
                                     stl_file({infinite}), stl_file({vast}), stl_file({point}), text}) {
        ASSERT_TRUE(open(bytes));
        target->bind();
        editor.display();
        editor.delete_current();
        EXPECT_TRUE(editor.models().empty());
    }
}

}  // namespace
