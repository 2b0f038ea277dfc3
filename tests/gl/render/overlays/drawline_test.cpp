#include "render/overlays/drawline.h"

#include <gmock/gmock.h>

#include <iostream>
#include <set>

#include "model/math/matrices.h"
#include "model/math/projections.h"
#include "render/gl/mapped_span.h"
#include "render/overlays/line_vertex.h"
#include "support/broken_shaders.h"
#include "support/captured_stream.h"
#include "support/failing_stores.h"
#include "support/gl_context.h"
#include "support/gl_state.h"
#include "support/scene_text.h"

namespace ulk3d {
namespace {

using ulk_test::broken_file_t;
using ulk_test::does_not_compile;
using ulk_test::does_not_link;

using testing::ElementsAre;
using testing::StartsWith;
using pixel_t = libutils::rgba_picture_t::pixel_t;

/// Two lines across all of the view and two up and down it, as around a cursor.
constexpr std::array<float, 16> crosshair{-1,    0.25F, 1,     0.25F, 1,    -0.125F, -1,   -0.125F,
                                          -0.5F, -1,    -0.5F, 1,     0.5F, 1,       0.5F, -1};

class Drawline : public ulk_test::gl_test {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        target.bind();
        glDisable(GL_DEPTH_TEST);
        glClearColor(0, 0, 0, 1);
        glClear(GL_COLOR_BUFFER_BIT);
        ASSERT_TRUE(overlay.init(nullptr));
    }
    std::vector<line_vertex_t> loaded() {
        const array_span<line_vertex_t> vertices(overlay.vertices);
        return {vertices.begin(), vertices.end()};
    }
    std::set<std::pair<int, int>> pixels_of(const pixel_t& colour) {
        const libutils::rgba_picture_t picture = target.read_pixels();
        std::set<std::pair<int, int>> found;
        for (int y = 0; y < 16; ++y)
            for (int x = 0; x < 16; ++x)
                if (picture.at(x, y) == colour)
                    found.emplace(x, 15 - y);
        return found;
    }

    ulk_test::render_target_t target{16, 16};
    drawline_t overlay;
};

line_vertex_t green(float x, float y) {
    return {{x, y, 0}, {0, 1, 0, 1}};
}

TEST_F(Drawline, BandLoadsFourGreenLines) {
    overlay.band(crosshair);
    EXPECT_THAT(loaded(),
                ElementsAre(green(-1, 0.25F), green(1, 0.25F), green(1, -0.125F), green(-1, -0.125F),
                            green(-0.5F, -1), green(-0.5F, 1), green(0.5F, 1), green(0.5F, -1)));
}

TEST_F(Drawline, BandIsDrawnInDeviceCoordinatesWhateverTheMatricesWere) {
    overlay.line({}, {}, scale(0, 0, 0), translation({9, 9, 9}));
    // Through the centres of row 11, row 4, column 2 and column 13, counted from the lower left corner.
    constexpr std::array<float, 16> lines{-1, 0.4375F,  1, 0.4375F, 1,  -0.4375F, -1, -0.4375F, -0.6875F,
                                          -1, -0.6875F, 1, 0.6875F, -1, 0.6875F,  1};
    overlay.band(lines);
    overlay.draw();
    std::set<std::pair<int, int>> expected;
    for (int i = 0; i < 16; ++i)
        expected.insert({{i, 11}, {i, 4}, {2, i}, {13, i}});
    const auto drawn = pixels_of({0, 255, 0, 255});
    EXPECT_THAT(drawn, testing::IsSubsetOf(expected));
    // Whether the pixel of a line's end is drawn is up to the driver.
    for (const auto& [x, y] : expected)
        EXPECT_TRUE(drawn.contains({x, y}) || x == 0 || x == 15 || y == 0 || y == 15) << x << ' ' << y;
}

TEST_F(Drawline, LineLoadsItsTwoEndsInWhite) {
    overlay.line({1, 2, 3}, {-4, 5, -6}, mtx_identity, mtx_identity);
    const col3a white{1, 1, 1, 1};
    EXPECT_THAT(loaded(), ElementsAre(line_vertex_t{{1, 2, 3}, white}, line_vertex_t{{-4, 5, -6}, white}));
}

TEST_F(Drawline, LineIsDrawnThroughModelviewThenProjection) {
    // Moved up into row 10, then squeezed to half of the height and of the width.
    const mtx3w modelview = translation({0, 0.625F, 0});
    const mtx3w projection = scale(0.5F, 0.5F, 1);
    overlay.line({-2, 0, 0}, {2, 0, 0}, projection, modelview);
    overlay.draw();
    std::set<std::pair<int, int>> expected;
    for (int i = 0; i < 16; ++i)
        expected.emplace(i, 10);
    EXPECT_EQ(pixels_of({255, 255, 255, 255}), expected);
}

TEST_F(Drawline, LineInPerspectiveEndsWhereItsVerticesAreSeen) {
    const mtx3w projection = frustum_matrix({-1, 1, -1, 1, 1, 100});
    // At twice the distance of the near plane: from the centre of column 4 to that of column 12, row 8.
    overlay.line({-0.875F, 0.125F, -2}, {1.125F, 0.125F, -2}, projection, mtx_identity);
    overlay.draw();
    std::set<std::pair<int, int>> expected;
    for (int i = 4; i < 12; ++i)
        expected.emplace(i, 8);
    auto drawn = pixels_of({255, 255, 255, 255});
    drawn.erase({12, 8});  // whether a line's last pixel is drawn is GL's affair
    EXPECT_EQ(drawn, expected);
}

TEST_F(Drawline, LineAfterBandShrinksTheBatchAndKeepsTheStore) {
    overlay.band(crosshair);
    overlay.line({}, {1, 1, 1}, mtx_identity, mtx_identity);
    EXPECT_EQ(overlay.vertices.element_count(), 2);
    EXPECT_EQ(overlay.vertices.byte_size(), 8 * 28);
    EXPECT_EQ(ulk_test::gl_store_size(overlay.vertices.buffer_id()), 8 * 28);
    // The rest of the band still stands behind the line.
    EXPECT_TRUE(overlay.vertices.extend(8));
    EXPECT_EQ(loaded()[2], green(1, -0.125F));
}

TEST_F(Drawline, BandAfterLineHasEightVerticesAgain) {
    overlay.line({}, {1, 1, 1}, mtx_identity, mtx_identity);
    overlay.band(crosshair);
    EXPECT_EQ(overlay.vertices.element_count(), 8);
    EXPECT_EQ(loaded()[7], green(0.5F, -1));
    EXPECT_EQ(ulk_test::gl_store_size(overlay.vertices.buffer_id()), 8 * 28);
}

TEST_F(Drawline, LeavesNoProgramBehind) {
    overlay.band(crosshair);
    EXPECT_EQ(ulk_test::gl_integer(GL_CURRENT_PROGRAM), 0);
    overlay.draw();
    EXPECT_EQ(ulk_test::gl_integer(GL_CURRENT_PROGRAM), 0);
}

TEST_F(Drawline, InitSaysNothingWhenAllIsWell) {
    const ulk_test::captured_stream errors(std::cerr);
    drawline_t other;
    EXPECT_TRUE(other.init(nullptr));
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(other.Modelview, glGetUniformLocation(other.program.program_id(), "Modelview"));
    EXPECT_EQ(other.Projection, glGetUniformLocation(other.program.program_id(), "Projection"));
    EXPECT_NE(other.Modelview, other.Projection);
}

TEST_F(Drawline, InitWithoutMemoryForTheVerticesIsFalse) {
    const ulk_test::captured_stream errors(std::cerr);
    const ulk_test::failing_stores stores(1);
    drawline_t other;
    EXPECT_FALSE(other.init(nullptr));
    EXPECT_EQ(errors.text(), "drawline vertices.allocate() failed.\n");
}

TEST_F(Drawline, LoadsBeforeInitPrintThatTheyCanNotExtend) {
    drawline_t other;
    {
        const ulk_test::captured_stream errors(std::cerr);
        other.band(crosshair);
        EXPECT_EQ(errors.text(), "drawline vertices.extend() failed.\n");
    }
    const ulk_test::captured_stream errors(std::cerr);
    other.line({}, {}, mtx_identity, mtx_identity);
    EXPECT_EQ(errors.text(), "drawline vertices.extend() failed.\n");
}

TEST_F(Drawline, DrawBeforeInitDoesNothing) {
    const drawline_t other;
    other.draw();
    EXPECT_EQ(pixels_of({0, 0, 0, 255}).size(), 256U);
}

// --- failures that end the process ------------------------------------------------------------------------

class DrawlineDeathTest : public ulk_test::broken_shader_test {};

TEST_P(DrawlineDeathTest, EndsWithStatusOneAndTheLog) {
    drawline_t overlay;
    EXPECT_EXIT(static_cast<void>(overlay.init(folder.path("").c_str())), testing::ExitedWithCode(1),
                testing::AllOf(StartsWith(GetParam().words), testing::ContainsRegex("error: .+")));
}

INSTANTIATE_TEST_SUITE_P(
    BrokenFiles, DrawlineDeathTest,
    testing::Values(broken_file_t{"drawline.vsd", does_not_compile,
                                  "shader_t::allocate() compile status error.\n"
                                  "drawline.vsd: drawline vertex shader init failed.\n"},
                    broken_file_t{"drawline.fsd", does_not_compile,
                                  "shader_t::allocate() compile status error.\n"
                                  "drawline.fsd: drawline fragment shader init failed.\n"},
                    broken_file_t{"drawline.fsd", does_not_link, "program link failed.\n"}));

}  // namespace
}  // namespace ulk3d
