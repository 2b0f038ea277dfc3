#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "app/ulkedit.h"
#include "support/gl_context.h"
#include "support/golden.h"
#include "support/scene_text.h"

namespace {

using namespace ulk_test;

/// The whole frame of a sample scene as it is after opening it.
class SamplePicture : public gl_test, public testing::WithParamInterface<const char*> {};

TEST_P(SamplePicture, LooksAsBefore) {
    const std::string name = GetParam();
    const render_target_t target(320, 240);
    target.bind();
    ulk3d::ulkedit_t editor("ulkedit");
    editor.init();
    editor.reshape(320, 240);
    std::ostringstream messages;
    ASSERT_TRUE(editor.file_open(sample(name + ".ulk").c_str(), messages)) << messages.str();
    editor.display();
    EXPECT_TRUE(matches_golden(target.read_pixels(), "sample-" + name));
}

INSTANTIATE_TEST_SUITE_P(Samples, SamplePicture,
                         testing::Values("patch", "vase", "torus", "knots", "cube", "sphere", "paper", "net",
                                         "cut", "mixed", "gallery"),
                         [](const auto& row) { return std::string(row.param); });

}  // namespace
