#include "render/overlays/grid.h"

#include <gmock/gmock.h>

#include <iostream>

#include "model/math/matrices.h"
#include "model/math/projections.h"
#include "render/gl/mapped_span.h"
#include "render/overlays/grid_lines.h"
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

std::vector<line_vertex_t> lines_of(array_t& array) {
    const array_span<line_vertex_t> vertices(array);
    return {vertices.begin(), vertices.end()};
}

line_vertex_t grey(float x, float y, float z) {
    return {{x, y, z}, {0.5F, 0.5F, 0.5F, 1}};
}

/// The three views of a scene that is fitted by a scale of 1 / `half` about its centre.
struct views_t {
    views_t(float half, const dir3& center)
        : front(translation(negative(center)) * scale(1 / half, 1 / half, 1 / half)),
          side(front * rotation(-90, {0, 1, 0})),
          top(front * rotation(90, {1, 0, 0})),
          front_inverse(scale(half, half, half) * translation(center)),
          side_inverse(rotation(90, {0, 1, 0}) * front_inverse),
          top_inverse(rotation(-90, {1, 0, 0}) * front_inverse) {}
    static dir3 negative(const dir3& d) { return {-d.x, -d.y, -d.z}; }

    mtx3w front, side, top;
    mtx3w front_inverse, side_inverse, top_inverse;
};

class Grid : public ulk_test::gl_test {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        target.bind();
        glDisable(GL_DEPTH_TEST);
        glClearColor(0, 0, 0, 1);
        glClear(GL_COLOR_BUFFER_BIT);
        ASSERT_TRUE(grid_t::init(nullptr));
        grid.set_size(32, 32);
    }
    bool rebuild(const views_t& views) {
        return grid.rebuild(views.front_inverse, views.side_inverse, views.top_inverse);
    }
    std::size_t drawn_pixels() {
        std::size_t drawn = 0;
        for (const auto& pixel : target.read_pixels().pixels)
            drawn += pixel[0] != 0;
        return drawn;
    }

    ulk_test::render_target_t target{32, 32};
    grid_t grid;
};

TEST_F(Grid, ArraysHoldTheLinesOfTheirViews) {
    const views_t views(1.5F, {10, 20, 30});
    grid.set_size(64, 32);
    ASSERT_TRUE(rebuild(views));
    const grid_axes_t axes = grid_axes(2, views.front_inverse, views.side_inverse, views.top_inverse);
    EXPECT_EQ(lines_of(grid.array_xy), grid_lines_xy(axes));
    EXPECT_EQ(lines_of(grid.array_xz), grid_lines_xz(axes));
    EXPECT_EQ(lines_of(grid.array_zy), grid_lines_zy(axes));
    // 7 to 13 in steps of 5, 18.5 to 21.5 in steps of 1.
    EXPECT_EQ(grid.array_xy.element_count(), 2 * (2 + 4));
}

TEST_F(Grid, LinesOfAFrontViewAreThoseOfItsRanges) {
    // -1.25 to 1.25 both ways.
    ASSERT_TRUE(rebuild(views_t(1.25F, {})));
    EXPECT_THAT(lines_of(grid.array_xy),
                ElementsAre(grey(-2, -1.25F, 0), grey(-2, 1.25F, 0), grey(-1, -1.25F, 0), grey(-1, 1.25F, 0),
                            grey(0, -1.25F, 0), grey(0, 1.25F, 0), grey(1, -1.25F, 0), grey(1, 1.25F, 0),
                            grey(-1.25F, -2, 0), grey(1.25F, -2, 0), grey(-1.25F, -1, 0), grey(1.25F, -1, 0),
                            grey(-1.25F, 0, 0), grey(1.25F, 0, 0), grey(-1.25F, 1, 0), grey(1.25F, 1, 0)));
}

TEST_F(Grid, PictureHasItsLinesEightPixelsApartInEveryView) {
    // 2 to either side of the centre in the 32 pixels of a view; half a pixel up and right puts the lines
    // onto the pixels' centres.
    const views_t views(2, {8, 16, 24});
    ASSERT_TRUE(rebuild(views));
    const mtx3w projection = ortho_matrix({-1, 1, -1, 1, -10, 1000}) * translation({1 / 32.0F, 1 / 32.0F, 0});
    struct row_t {
        const char* name;
        void (grid_t::*draw)(const mtx3w&, const mtx3w&) const;
        mtx3w modelview;
    };
    const row_t rows[] = {{"front", &grid_t::draw_xy, views.front},
                          {"top", &grid_t::draw_xz, views.top},
                          {"side", &grid_t::draw_zy, views.side}};
    for (const row_t& row : rows) {
        glClear(GL_COLOR_BUFFER_BIT);
        (grid.*row.draw)(projection, row.modelview);
        const libutils::rgba_picture_t picture = target.read_pixels();
        for (int y = 0; y < 32; ++y)
            for (int x = 0; x < 32; ++x) {
                const bool on_line = x % 8 == 0 || (31 - y) % 8 == 0;
                EXPECT_NEAR(picture.at(x, y)[0], on_line ? 127.5 : 0, 1) << row.name << ' ' << x << ' ' << y;
            }
    }
}

TEST_F(Grid, SpacingFollowsTheZoom) {
    const std::pair<float, float> rows[] = {{2.4F, 1}, {5, 5}, {0.3F, 0.2F}, {60, 25}};
    for (const auto& [half, spacing] : rows) {
        ASSERT_TRUE(rebuild(views_t(half, {})));
        const std::vector<line_vertex_t> lines = lines_of(grid.array_xy);
        EXPECT_NEAR(lines[2].position.x - lines[0].position.x, spacing, 1e-5F) << half;
    }
}

TEST_F(Grid, UnbuiltGridDrawsNothing) {
    grid.draw_xy(mtx_identity, mtx_identity);
    grid.draw_xz(mtx_identity, mtx_identity);
    grid.draw_zy(mtx_identity, mtx_identity);
    EXPECT_EQ(drawn_pixels(), 0U);
}

TEST_F(Grid, ViewportWithoutAHeightHasNoLines) {
    ASSERT_TRUE(rebuild(views_t(2, {})));
    grid.set_size(32, 0);
    const ulk_test::captured_stream errors(std::cerr);
    EXPECT_TRUE(rebuild(views_t(2, {})));
    EXPECT_EQ(grid.array_xy.element_count(), 0);
    EXPECT_EQ(grid.array_xz.element_count(), 0);
    EXPECT_EQ(grid.array_zy.element_count(), 0);
    grid.draw_xy(mtx_identity, scale(0.25F, 0.25F, 1));
    EXPECT_EQ(drawn_pixels(), 0U);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(Grid, GridBeforeItsFirstSizeHasNoLines) {
    grid_t other;
    const views_t views(2, {});
    EXPECT_TRUE(other.rebuild(views.front_inverse, views.side_inverse, views.top_inverse));
    EXPECT_EQ(other.array_xy.element_count(), 0);
}

TEST_F(Grid, RebuildsUseTheSameObjects) {
    ASSERT_TRUE(rebuild(views_t(2, {})));
    const GLuint buffer = grid.array_xy.buffer_id();
    const GLuint vertex_array = grid.vertex_xy->id();
    ASSERT_TRUE(rebuild(views_t(7, {1, 2, 3})));
    EXPECT_EQ(grid.array_xy.buffer_id(), buffer);
    EXPECT_EQ(grid.vertex_xy->id(), vertex_array);
}

TEST_F(Grid, LeavesNoProgramAndNoVertexArrayBehind) {
    ASSERT_TRUE(rebuild(views_t(2, {})));
    grid.draw_zy(mtx_identity, mtx_identity);
    EXPECT_EQ(ulk_test::gl_integer(GL_CURRENT_PROGRAM), 0);
    EXPECT_EQ(ulk_test::gl_integer(GL_VERTEX_ARRAY_BINDING), 0);
}

struct failing_row_t {
    int failing_store;
    const char* message;
    bool xy_allocated;
    bool xz_allocated;
};

class GridWithoutMemory : public ulk_test::gl_test, public testing::WithParamInterface<failing_row_t> {};

TEST_P(GridWithoutMemory, TellsWhichArrayAndKeepsThoseBeforeIt) {
    grid_t grid;
    grid.set_size(32, 32);
    const views_t views(2, {});
    const ulk_test::captured_stream errors(std::cerr);
    const ulk_test::failing_stores stores(GetParam().failing_store);
    EXPECT_FALSE(grid.rebuild(views.front_inverse, views.side_inverse, views.top_inverse));
    EXPECT_EQ(errors.text(), GetParam().message);
    EXPECT_EQ(grid.array_xy.element_count() != 0, GetParam().xy_allocated);
    EXPECT_EQ(grid.array_xz.element_count() != 0, GetParam().xz_allocated);
    EXPECT_EQ(grid.array_zy.element_count(), 0);
    EXPECT_FALSE(grid.vertex_xy);
}

INSTANTIATE_TEST_SUITE_P(Arrays, GridWithoutMemory,
                         testing::Values(failing_row_t{1, "array_xy: can't allocate()\n", false, false},
                                         failing_row_t{2, "array_xz: can't allocate()\n", true, false},
                                         failing_row_t{3, "array_zy: can't allocate()\n", true, true}));

// --- the shared program -----------------------------------------------------------------------------------

TEST_F(Grid, LaterInitsOnlyCount) {
    const ulk_test::temporary_folder_t folder;
    folder.write("selection.vsd", does_not_compile);
    const ulk_test::captured_stream errors(std::cerr);
    EXPECT_TRUE(grid_t::init(folder.path("").c_str()));
    EXPECT_EQ(errors.text(), "");
    EXPECT_TRUE(rebuild(views_t(2, {})));
    grid.draw_xy(mtx_identity, scale(0.25F, 0.25F, 1));
    EXPECT_GT(drawn_pixels(), 0U);
}

class GridDeathTest : public ulk_test::broken_shader_test {};

TEST_P(GridDeathTest, EndsWithStatusOneAndTheLog) {
    EXPECT_EXIT(static_cast<void>(grid_t::init(folder.path("").c_str())), testing::ExitedWithCode(1),
                testing::AllOf(StartsWith(GetParam().words), testing::ContainsRegex("error: .+")));
}

INSTANTIATE_TEST_SUITE_P(BrokenFiles, GridDeathTest,
                         testing::Values(broken_file_t{"selection.vsd", does_not_compile,
                                                       "shader_t::allocate() compile status error.\n"
                                                       "selection vertex shader init failed.\n"},
                                         broken_file_t{"selection.fsd", does_not_compile,
                                                       "shader_t::allocate() compile status error.\n"
                                                       "selection fragment shader init failed.\n"},
                                         broken_file_t{"selection.fsd", does_not_link,
                                                       "program link failed.\n"}));

}  // namespace
}  // namespace ulk3d
