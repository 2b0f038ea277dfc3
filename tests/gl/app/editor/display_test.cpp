#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "app/editor/ulkedit.h"
#include "support/gl_context.h"
#include "support/scene_text.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;
using libutils::rgba_picture_t;

constexpr rgba_picture_t::pixel_t clear_pixel{46, 46, 46, 255};

/// Whether all of a viewport (y counted up) shows the clear colour.
bool is_clear(const rgba_picture_t& picture, const viewport_t& area) {
    for (int y = 0; y < area.height; ++y)
        for (int x = 0; x < area.width; ++x)
            if (picture.at(area.x + x, picture.height - 1 - area.y - y) != clear_pixel)
                return false;
    return true;
}

rgba_picture_t::pixel_t middle_of(const rgba_picture_t& picture, const viewport_t& area) {
    return picture.at(area.x + area.width / 2, picture.height - 1 - area.y - area.height / 2);
}

class Display : public gl_test {
  protected:
    rgba_picture_t frame(int width, int height) {
        const render_target_t target(width, height);
        target.bind();
        editor.reshape(width, height);
        editor.display();
        return target.read_pixels();
    }

    void start() {
        const render_target_t target(8, 8);
        target.bind();
        editor.init();
        editor.reshape(200, 160);
    }

    void open(const std::string& text) {
        start();
        const render_target_t target(8, 8);
        target.bind();
        std::ostringstream messages;
        ASSERT_TRUE(editor.file_open(folder.write("scene.ulk", text).c_str(), messages)) << messages.str();
    }

    temporary_folder_t folder;
    ulkedit_t editor{"ulkedit"};
};

std::string facing_frames(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "tangent 1,0,0\nbinormal 0,1,0\nnormal 0,0,1\n";
    return text;
}

/// Frames that throw the highlight aside, so that the surface shows its colour.
std::string slanted_frames(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "tangent 0.8,0,-0.6\nbinormal 0,1,0\nnormal 0.6,0,0.8\n";
    return text;
}

/// A square from -1 to 1 that looks at the camera, of one colour.
std::string square(const std::string& color = "fcolor 1,1,1,1") {
    return "begin polygon_surface,4,4\n" + color + "\n" +
           "position -1,-1,0\nposition 1,-1,0\nposition -1,1,0\nposition 1,1,0\n" +
           "element 0\nelement 1\nelement 2\nelement 3\n" + facing_frames(4) + "end\n";
}

bool has_alpha_throughout(const rgba_picture_t& picture, std::uint8_t alpha) {
    return std::ranges::all_of(picture.pixels, [alpha](const auto& pixel) { return pixel[3] == alpha; });
}

TEST_F(Display, AFrameIsOpaqueWhateverIsInIt) {
    open(square("fcolor 1,0,0,0.25") + square("fcolor 0,1,0,0"));
    EXPECT_TRUE(has_alpha_throughout(frame(200, 160), 255));
    GLboolean mask[4];
    glGetBooleanv(GL_COLOR_WRITEMASK, mask);
    EXPECT_TRUE(mask[0] && mask[1] && mask[2] && mask[3]);
}

TEST_F(Display, AFrameThatIsNotOpaqueHasNoGround) {
    open(square());
    editor.set_grid(false);
    editor.view().opaque = false;
    const rgba_picture_t picture = frame(200, 160);
    EXPECT_EQ(picture.at(0, 0)[3], 0);
    EXPECT_EQ(middle_of(picture, editor.layout().perspective())[3], 255);
    EXPECT_EQ(picture.at(0, 0)[0], clear_pixel[0]);
}

TEST_F(Display, AnEmptySceneWithoutGridsShowsTheClearColour) {
    start();
    editor.set_grid(false);
    EXPECT_TRUE(is_clear(frame(101, 75), {0, 0, 101, 75}));
}

/// The middle of a viewport, inside of the corners of `square`, whose points are shown everywhere.
bool is_clear_inside(const rgba_picture_t& picture, const viewport_t& area) {
    return is_clear(picture, {area.x + area.width * 3 / 8, area.y + area.height * 3 / 8, area.width / 4,
                              area.height / 4});
}

TEST_F(Display, SurfacesStandInThePerspectiveViewAlone) {
    open(square());
    editor.set_grid(false);
    for (const int odd : {0, 1}) {
        const rgba_picture_t picture = frame(200 + odd, 160 + odd);
        const view_layout_t& layout = editor.layout();
        EXPECT_TRUE(is_clear_inside(picture, layout.front()));
        EXPECT_TRUE(is_clear_inside(picture, layout.side()));
        EXPECT_TRUE(is_clear_inside(picture, layout.top()));
        EXPECT_FALSE(is_clear_inside(picture, layout.perspective()));
        EXPECT_NE(middle_of(picture, layout.perspective()), clear_pixel);
    }
}

TEST_F(Display, TheUnusedColumnAndRowOfOddSizesStayClear) {
    open(square());
    const rgba_picture_t picture = frame(201, 161);
    EXPECT_TRUE(is_clear(picture, {100, 0, 1, 161}));
    EXPECT_TRUE(is_clear(picture, {0, 80, 201, 1}));
}

TEST_F(Display, TheMiddleOfAFacingSquareIsLitByTheLightAtTheEye) {
    open(square("fcolor 1,0,0,1"));
    const auto pixel = middle_of(frame(200, 160), editor.layout().perspective());
    // Light and eye stand on the normal: full diffuse red, and nearly the full white highlight.
    EXPECT_EQ(pixel[0], 255);
    EXPECT_GE(pixel[1], 250);
    EXPECT_GE(pixel[2], 250);
}

const std::string red_in_front =
    "begin polygon_surface,3,3\nfcolor 1,0,0,1\nposition -1,-1,0.5\nposition 1,-1,0.5\nposition 0,1,0.5\n"
    "element 0\nelement 1\nelement 2\n" +
    slanted_frames(3) + "end\n";

TEST_F(Display, ANearSurfaceHidesAFarOneDrawnBefore) {
    open(square("fcolor 0,0,1,1") + red_in_front);
    const auto pixel = middle_of(frame(200, 160), editor.layout().perspective());
    EXPECT_GT(pixel[0], pixel[2] + 100);
}

TEST_F(Display, ANearSurfaceHidesAFarOneDrawnAfter) {
    open(red_in_front + square("fcolor 0,0,1,1"));
    const auto pixel = middle_of(frame(200, 160), editor.layout().perspective());
    EXPECT_GT(pixel[0], pixel[2] + 100);
}

TEST_F(Display, SelectedPolygonsShowOnPolygonModelsOnly) {
    open(patch_block());
    const rgba_picture_t plain = frame(200, 160);
    polygon_t& polygon = editor.current_model()->polygon;
    for (std::uint32_t id = 0; id < 2048; ++id) {
        polygon.selectpolygon(id);
    }
    EXPECT_EQ(frame(200, 160), plain);
    editor.polygonize_current();
    EXPECT_NE(frame(200, 160), plain);
}

TEST_F(Display, LeavesDepthTestingAndBlendingOff) {
    open(square());
    frame(64, 64);
    EXPECT_FALSE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_FALSE(glIsEnabled(GL_PRIMITIVE_RESTART));
}

TEST_F(Display, EndsWithThePerspectiveViewport) {
    open(square());
    frame(201, 161);
    int area[4];
    glGetIntegerv(GL_VIEWPORT, area);
    EXPECT_EQ((viewport_t{area[0], area[1], area[2], area[3]}), editor.layout().perspective());
}

TEST_F(Display, AViewOfNoSizeDrawsNothing) {
    open(square());
    EXPECT_TRUE(is_clear(frame(1, 1), {0, 0, 1, 1}));
    editor.reshape(0, 0);
    editor.display();
}

}  // namespace
