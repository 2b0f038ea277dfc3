#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "app/editor/ulkedit.h"
#include "support/gl_context.h"
#include "support/golden.h"
#include "support/scene_text.h"

namespace {

using namespace ulk_test;

void open_sample(ulk3d::ulkedit_t& editor, const std::string& name) {
    std::ostringstream messages;
    ASSERT_TRUE(editor.file_open(sample(name + ".ulk").c_str(), messages)) << messages.str();
}

/// The whole frame of a sample scene as it is after opening it.
class SamplePicture : public gl_test, public testing::WithParamInterface<const char*> {};

TEST_P(SamplePicture, LooksAsBefore) {
    const std::string name = GetParam();
    const render_target_t target(320, 240);
    target.bind();
    ulk3d::ulkedit_t editor("ulkedit");
    editor.init();
    editor.reshape(320, 240);
    open_sample(editor, name);
    editor.display();
    EXPECT_TRUE(matches_golden(target.read_pixels(), "sample-" + name));
}

/// The perspective view of a sample with maps, without points, which would cover much of them.
class TexturedSamplePicture : public gl_test, public testing::WithParamInterface<const char*> {};

TEST_P(TexturedSamplePicture, LooksAsBefore) {
    const std::string name = GetParam();
    const render_target_t target(640, 480);
    target.bind();
    ulk3d::ulkedit_t editor("ulkedit");
    editor.init();
    editor.reshape(640, 480);
    editor.set_control_points(false);
    open_sample(editor, name);
    editor.display();
    // The view at the top right.
    EXPECT_TRUE(matches_golden(target.read_pixels().part(320, 0, 320, 240), "sample-" + name));
}

INSTANTIATE_TEST_SUITE_P(Samples, SamplePicture,
                         testing::Values("patch", "vase", "torus", "knots", "cube", "sphere", "paper", "net",
                                         "cut", "mixed"),
                         [](const auto& row) { return std::string(row.param); });

INSTANTIATE_TEST_SUITE_P(Samples, TexturedSamplePicture,
                         testing::Values("globe", "relief", "mirror", "glass", "gallery"),
                         [](const auto& row) { return std::string(row.param); });

}  // namespace
