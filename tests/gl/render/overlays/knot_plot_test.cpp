#include "render/overlays/knot_plot.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <vector>

#include "model/nurbs/basis.h"
#include "render/gl/mapped_span.h"
#include "support/broken_shaders.h"
#include "support/captured_stream.h"
#include "support/forced_marks.h"
#include "support/gl_context.h"
#include "support/gl_state.h"

namespace ulk3d {
namespace {

using ulk_test::broken_file_t;
using ulk_test::does_not_compile;
using ulk_test::does_not_link;

using testing::ElementsAre;
using testing::StartsWith;

constexpr int size = 96;

/// Seven cubic functions over knots of all kinds: clamped at the left, one inner knot twice, even at the
/// right.
const std::vector<float> cubic{0, 0, 0, 0, 0.25F, 0.5F, 0.5F, 0.8F, 1, 1.2F, 1.4F};

class KnotPlot : public ulk_test::gl_test {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        target.bind();
        plot.init(nullptr);
    }
    void TearDown() override {
        glEnable(GL_DEPTH_TEST);
        glClearColor(0, 0, 0, 0);
        gl_test::TearDown();
    }
    std::vector<control_point_t> vertices() const {
        const array_span<const control_point_t> mapped(plot.vertices());
        return {mapped.begin(), mapped.end()};
    }
    std::vector<std::uint32_t> indices() const {
        const const_index_span mapped(plot.strips());
        return {mapped.begin(), mapped.end()};
    }

    ulk_test::render_target_t target{size, size};
    knot_plot_t plot;
};

TEST_F(KnotPlot, HasASampleOfEachFunctionForEachColumn) {
    plot.reshape(size, size, 7, 4, cubic);
    EXPECT_EQ(plot.vertices().element_count(), size * 7);
    EXPECT_EQ(vertices(), knot_plot_samples(size, 7, 4, cubic));
}

TEST_F(KnotPlot, HasAStripForEachFunctionEndedByARestartMark) {
    plot.reshape(3, size, 2, 2, std::vector<float>{0, 0, 1, 1});
    EXPECT_EQ(indices(), (std::vector<std::uint32_t>{0, 1, 2, restart_mark, 3, 4, 5, restart_mark}));
}

TEST_F(KnotPlot, ANewSizeSamplesAnew) {
    plot.reshape(size, size, 7, 4, cubic);
    plot.reshape(40, 20, 7, 4, cubic);
    EXPECT_EQ(vertices(), knot_plot_samples(40, 7, 4, cubic));
    EXPECT_EQ(plot.strips().element_count(), 41 * 7);
    plot.reshape(60, 20, 7, 4, cubic);
    EXPECT_EQ(vertices(), knot_plot_samples(60, 7, 4, cubic));
    EXPECT_EQ(indices().back(), restart_mark);
    EXPECT_EQ(indices()[59], 59U);
}

TEST_F(KnotPlot, TakesTheWholeFramebufferAsItsViewport) {
    plot.reshape(40, 20, 7, 4, cubic);
    std::array<GLint, 4> viewport{};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    EXPECT_EQ(viewport, (std::array<GLint, 4>{0, 0, 40, 20}));
}

TEST_F(KnotPlot, ShowsTheFunctionsOfTheKnots) {
    plot.reshape(size, size, 7, 4, cubic);
    plot.draw();
    const libutils::rgba_picture_t picture = target.read_pixels();

    // Where the curves run in a column, in pixels from the bottom: between its sample and the next one. A
    // driver may draw an end of a segment in the column beside.
    const auto height = [](std::uint64_t function, int x) {
        const float t = static_cast<float>(x) / size;
        return (static_cast<double>(basis(function, 4, t, {cubic.data()})) + 1) * size / 2;
    };
    for (int x = 0; x + 1 < size; ++x) {
        std::vector<bool> may_be_drawn(size, false);
        for (std::uint64_t function = 0; function < 7; ++function) {
            const auto [low, high] =
                std::minmax({height(function, std::max(x - 1, 0)), height(function, x),
                             height(function, x + 1), height(function, std::min(x + 2, size - 1))});
            bool is_drawn = false;
            for (int y = std::max(0, static_cast<int>(low) - 1); y <= static_cast<int>(high) + 1 && y < size;
                 ++y) {
                may_be_drawn[static_cast<std::size_t>(y)] = true;
                is_drawn |= picture.at(x, size - 1 - y)[0] > 100;
            }
            EXPECT_TRUE(is_drawn || low >= size) << "function " << function << " in column " << x;
        }
        for (int y = 0; y < size; ++y) {
            const auto [red, green, blue, alpha] = picture.at(x, size - 1 - y);
            if (red == 46 && green == 46 && blue == 46)
                continue;
            EXPECT_TRUE(may_be_drawn[static_cast<std::size_t>(y)]) << "column " << x << ", row " << y;
            EXPECT_TRUE(red >= 127 && red <= 128 && green == red && blue == red) << int{red};
            EXPECT_EQ(alpha, 255);
        }
    }
}

TEST_F(KnotPlot, DrawsNothingOverAnotherCurveOrInTheLowerHalf) {
    plot.reshape(size, size, 2, 2, std::vector<float>{0, 0, 1, 1});
    plot.draw();
    const libutils::rgba_picture_t picture = target.read_pixels();
    for (int y = size / 2 + 1; y < size; ++y)
        for (int x = 0; x < size; ++x)
            EXPECT_EQ(picture.at(x, y), (libutils::rgba_picture_t::pixel_t{46, 46, 46, 255}));
    // No line leads from the end of a curve to the beginning of the next: both cross in the middle alone.
    const auto is_lit = [&picture](int x, int y) { return picture.at(x, y)[0] > 100; };
    EXPECT_TRUE(is_lit(size / 2, size / 4) || is_lit(size / 2, size / 4 - 1));
    EXPECT_EQ(picture.at(size / 2, size / 8)[0], 46);
    EXPECT_EQ(picture.at(size / 2, size * 3 / 8)[0], 46);
}

TEST_F(KnotPlot, OfAnEmptyTableIsBlank) {
    const ulk_test::captured_stream errors(std::cerr);
    plot.reshape(size, size, 0, 0, {});
    plot.draw();
    EXPECT_EQ(errors.text(), "");
    const libutils::rgba_picture_t picture = target.read_pixels();
    EXPECT_TRUE(std::ranges::all_of(picture.pixels, [](const auto& pixel) { return pixel[0] == 46; }));
}

TEST_F(KnotPlot, OfFewerKnotsThanItsFunctionsReadIsBlank) {
    plot.reshape(size, size, 7, 4, cubic);
    plot.reshape(size, size, 8, 4, cubic);
    EXPECT_EQ(plot.vertices().element_count(), 0);
    EXPECT_EQ(plot.strips().element_count(), 0);
    plot.draw();
}

TEST_F(KnotPlot, OfNoPixelsIsEmpty) {
    plot.reshape(0, 0, 7, 4, cubic);
    EXPECT_EQ(plot.vertices().element_count(), 0);
    plot.draw();
}

TEST_F(KnotPlot, TooLargeForMemoryIsBlank) {
    const std::vector<float> none;
    plot.reshape(size, size, std::uint64_t{1} << 60, 4, none);
    EXPECT_EQ(plot.strips().element_count(), 0);
}

TEST_F(KnotPlot, LeavesNoRestartAndNoProgramBehind) {
    plot.reshape(size, size, 7, 4, cubic);
    plot.draw();
    EXPECT_FALSE(glIsEnabled(GL_PRIMITIVE_RESTART));
    EXPECT_EQ(ulk_test::gl_integer(GL_CURRENT_PROGRAM), 0);
}

TEST_F(KnotPlot, IsDrawnWithoutDepth) {
    EXPECT_FALSE(glIsEnabled(GL_DEPTH_TEST));
}

TEST_F(KnotPlot, InitSaysNothingWhenAllIsWell) {
    const ulk_test::captured_stream errors(std::cerr);
    knot_plot_t other;
    other.init(nullptr);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(KnotPlot, MarksStandInTheirOrder) {
    const ulk_test::forced_marks marks;
    knot_plot_t other;
    other.init(nullptr);
    EXPECT_THAT(marks.beginning_with("KnotDraw::"), ElementsAre("KnotDraw::init(0)", "KnotDraw::init(1)",
                                                                "KnotDraw::init(2)", "KnotDraw::init(3)"));
}

// --- failures that end the process ------------------------------------------------------------------------

class KnotPlotDeathTest : public ulk_test::broken_shader_test {};

TEST_P(KnotPlotDeathTest, EndsWithStatusOneAndTheLog) {
    knot_plot_t plot;
    EXPECT_EXIT(plot.init(folder.path("").c_str()), testing::ExitedWithCode(1),
                testing::AllOf(StartsWith(GetParam().words), testing::ContainsRegex("error: .+")));
}

INSTANTIATE_TEST_SUITE_P(
    BrokenFiles, KnotPlotDeathTest,
    testing::Values(broken_file_t{"selection.vsd", does_not_compile,
                                  "shader_t::allocate() compile status error.\n"
                                  "selection.vsd: selection vertex shader init failed.\n"},
                    broken_file_t{"selection.fsd", does_not_compile,
                                  "shader_t::allocate() compile status error.\n"
                                  "selection.fsd: selection fragment shader init failed.\n"},
                    broken_file_t{"selection.fsd", does_not_link, "selection program link failed.\n"}));

}  // namespace
}  // namespace ulk3d
