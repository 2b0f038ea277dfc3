// Pan and zoom of the three orthographic views, which share one matrix.

#include "gl/app/editor/editor_test.h"
#include "model/math/matrices.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

class OrthoNavigation : public editor_test, public testing::WithParamInterface<view_t> {
  protected:
    void SetUp() override {
        editor_test::SetUp();
        open(scattered_block());
        editor.press_modifier(modifier_alt, modifier_alt);
    }

    /// All orthographic views still are the fit and its turns, and the inverses are inverses.
    void expect_one_fit() const {
        camera_t expected = editor.camera();
        expected.update_ortho_views();
        for (const view_t each : orthographic_views) {
            const mtx3w both = view_matrix(each).matrix * view_matrix(each).inverse;
            for (std::size_t i = 0; i < 16; ++i)
                EXPECT_NEAR(both[i], mtx_identity[i], 1e-4);
        }
        EXPECT_EQ(editor.camera().front.matrix, expected.front.matrix);
        EXPECT_EQ(editor.camera().side.matrix, expected.side.matrix);
        EXPECT_EQ(editor.camera().top.matrix, expected.top.matrix);
    }
};

INSTANTIATE_TEST_SUITE_P(Views, OrthoNavigation, testing::ValuesIn(orthographic_views),
                         [](const auto& row) { return name_of(row.param); });

TEST_P(OrthoNavigation, LeftDragPansWhatIsUnderThePointerWithIt) {
    EXPECT_FALSE(press(left_button, widget(GetParam(), 60, 50)));
    std::vector<seen_t> last;
    for (const pos3& p : scattered_points())
        last.push_back(seen(GetParam(), p));
    pixel_place_t from{60, 50};
    for (const pixel_place_t to : {pixel_place_t{70, 45}, {150, 130}, {-80, 300}, {61, 50}}) {
        EXPECT_TRUE(move(widget(GetParam(), to.x, to.y)));
        for (std::size_t i = 0; i < last.size(); ++i) {
            const seen_t now = seen(GetParam(), scattered_points()[i]);
            EXPECT_NEAR(now.x - last[i].x, to.x - from.x, 0.01);
            EXPECT_NEAR(now.y - last[i].y, to.y - from.y, 0.01);
            EXPECT_NEAR(now.depth, last[i].depth, 1e-5);
            last[i] = now;
        }
        from = to;
        expect_one_fit();
    }
    EXPECT_FALSE(release(left_button, widget(GetParam(), 61, 50)));
    EXPECT_FALSE(move(widget(GetParam(), 100, 100)));
}

/// One motion event may come from far.
TEST_P(OrthoNavigation, AStepOfTheZoomNeverTurnsTheViewsInsideOut) {
    for (const int pixels : {-63, -64, -65, -100}) {
        const mtx3w before = editor.camera().fit.matrix;
        press(middle_button, widget(GetParam(), 60, 110));
        EXPECT_TRUE(move(widget(GetParam(), 60, 110 + pixels)));
        release(middle_button, widget(GetParam(), 60, 110));
        EXPECT_FLOAT_EQ(editor.camera().fit.matrix[0], before[0] / 64) << pixels;
        expect_one_fit();
        press(middle_button, widget(GetParam(), 60, 10));
        move(widget(GetParam(), 60, 10 + 64 * 63));
        release(middle_button, widget(GetParam(), 60, 10));
    }
    const float size = editor.camera().fit.matrix[0];
    EXPECT_TRUE(editor.mouse_wheel(-16, widget(GetParam(), 60, 50).x, widget(GetParam(), 60, 50).y));
    EXPECT_FLOAT_EQ(editor.camera().fit.matrix[0], size / 64);
}

TEST_P(OrthoNavigation, MiddleDragZoomsASixtyFourthPerPixelUp) {
    const mtx3w before = editor.camera().fit.matrix;
    press(middle_button, widget(GetParam(), 60, 50));
    EXPECT_TRUE(move(widget(GetParam(), 90, 66)));
    EXPECT_EQ(editor.camera().fit.matrix, scale(1.25F, 1.25F, 1.25F) * before);
    // The next step counts from here.
    const mtx3w between = editor.camera().fit.matrix;
    EXPECT_TRUE(move(widget(GetParam(), 20, 34)));
    EXPECT_EQ(editor.camera().fit.matrix, scale(0.5F, 0.5F, 0.5F) * between);
    expect_one_fit();
    release(middle_button, widget(GetParam(), 20, 34));
    EXPECT_FALSE(move(widget(GetParam(), 20, 60)));
}

TEST_P(OrthoNavigation, TheWheelZoomsASixteenthPerNotch) {
    const auto [x, y] = widget(GetParam(), 60, 50);
    const mtx3w before = editor.camera().fit.matrix;
    const dir3 camera = editor.camera().trackball.translation;
    EXPECT_TRUE(editor.mouse_wheel(1, x, y));
    EXPECT_EQ(editor.camera().fit.matrix, scale(1.0625F, 1.0625F, 1.0625F) * before);
    const mtx3w between = editor.camera().fit.matrix;
    EXPECT_TRUE(editor.mouse_wheel(-1, x, y));
    EXPECT_EQ(editor.camera().fit.matrix, scale(0.9375F, 0.9375F, 0.9375F) * between);
    const mtx3w after = editor.camera().fit.matrix;
    EXPECT_TRUE(editor.mouse_wheel(0, x, y));
    EXPECT_EQ(editor.camera().fit.matrix, after);
    EXPECT_EQ(editor.camera().trackball.translation, camera);
    expect_one_fit();
}

TEST_P(OrthoNavigation, RightDragDoesNothing) {
    const camera_t before = editor.camera();
    EXPECT_FALSE(press(right_button, widget(GetParam(), 60, 50)));
    EXPECT_FALSE(move(widget(GetParam(), 90, 90)));
    EXPECT_FALSE(move(widget(view_t::perspective, 90, 90)));
    EXPECT_FALSE(release(right_button, widget(GetParam(), 90, 90)));
    EXPECT_EQ(editor.camera().fit.matrix, before.fit.matrix);
    EXPECT_EQ(editor.camera().view.matrix, before.view.matrix);
    EXPECT_EQ(editor.camera().trackball.rotation, before.trackball.rotation);
}

TEST_P(OrthoNavigation, OnlyTheFirstOfTwoButtonsActs) {
    press(right_button, widget(GetParam(), 60, 50));
    press(left_button, widget(GetParam(), 60, 50));
    EXPECT_FALSE(move(widget(GetParam(), 90, 90)));
    release(right_button, widget(GetParam(), 90, 90));
    EXPECT_FALSE(move(widget(GetParam(), 60, 50)));
}

TEST_P(OrthoNavigation, TheDragGoesOnInTheViewOfItsPressWhereverTheMouseIs) {
    resize(401, 321);
    for (const view_t crossed : every_view) {
        const pixel_place_t start = widget(GetParam(), 60, 50), end = widget(crossed, 60, 50);
        const seen_t before = seen(GetParam(), scattered_points()[0]);
        drag(left_button, start, end);
        const seen_t after = seen(GetParam(), scattered_points()[0]);
        EXPECT_NEAR(after.x - before.x, end.x - start.x, 0.02);
        EXPECT_NEAR(after.y - before.y, start.y - end.y, 0.02);
    }
}

TEST_P(OrthoNavigation, APanMovesTheOtherViewsByTheSameWayInTheModel) {
    const pos3 p = scattered_points()[2];
    const std::array before{seen(view_t::front, p), seen(view_t::side, p), seen(view_t::top, p)};
    drag(left_button, widget(GetParam(), 60, 50), widget(GetParam(), 75, 59));
    const std::array after{seen(view_t::front, p), seen(view_t::side, p), seen(view_t::top, p)};
    const double right = GetParam() == view_t::side ? 0 : 15;  // along x
    const double up = GetParam() == view_t::top ? 0 : 9;       // along y
    EXPECT_NEAR(after[0].x - before[0].x, right, 0.01);
    EXPECT_NEAR(after[2].x - before[2].x, right, 0.01);
    EXPECT_NEAR(after[0].y - before[0].y, up, 0.01);
    EXPECT_NEAR(after[1].y - before[1].y, up, 0.01);
    // Along z: the side view's x and the top view's y, both towards the viewer counted negative.
    const double deep = GetParam() == view_t::side ? 15 : GetParam() == view_t::top ? 9 : 0;
    EXPECT_NEAR(after[1].x - before[1].x, deep, 0.01);
    EXPECT_NEAR(after[2].y - before[2].y, deep, 0.01);
}

TEST_P(OrthoNavigation, TheGridsFollowThePan) {
    const auto before = frame();
    drag(left_button, widget(GetParam(), 60, 50), widget(GetParam(), 71, 57));
    EXPECT_NE(frame(), before);
}

}  // namespace
