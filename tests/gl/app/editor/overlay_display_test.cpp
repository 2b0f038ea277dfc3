// What lies over the surfaces in a frame: the grids and the points.

#include <map>

#include "gl/app/editor/editor_test.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;
using libutils::rgba_picture_t;

constexpr rgba_picture_t::pixel_t clear_pixel{46, 46, 46, 255};
constexpr rgba_picture_t::pixel_t grid_pixel{128, 128, 128, 255};

/// A polygon of triangles without area: the points are all that it shows.
std::string points_alone() {
    std::vector<int> elements;
    for (int i = 0; i < static_cast<int>(scattered_points().size()); ++i)
        elements.insert(elements.end(), {i, i, i, -1});
    return polygon_block(scattered_points(), elements);
}

class Overlays : public editor_test {
  protected:
    template <class Wanted>
    int count_in(const rgba_picture_t& picture, view_t view, Wanted wanted) const {
        const viewport_t at = area(view);
        int count = 0;
        for (int y = 0; y < at.height; ++y)
            for (int x = 0; x < at.width; ++x)
                count += wanted(picture.at(at.x + x, picture.height - 1 - at.y - y));
        return count;
    }
    /// Without the pixels at the edge of the view: a line on the border of two views may light those of
    /// either.
    int lit_inside(const rgba_picture_t& picture, view_t view) const {
        const viewport_t at = area(view);
        int count = 0;
        for (int y = 1; y + 1 < at.height; ++y)
            for (int x = 1; x + 1 < at.width; ++x)
                count += picture.at(at.x + x, picture.height - 1 - at.y - y) != clear_pixel;
        return count;
    }
    int lit_in(const rgba_picture_t& picture, view_t view) const {
        return count_in(picture, view, [](const auto& pixel) { return pixel != clear_pixel; });
    }
};

TEST_F(Overlays, GridsStandInTheThreeOrthographicViews) {
    for (const auto& [width, height] : {std::pair{400, 320}, {401, 321}, {300, 500}}) {
        resize(width, height);
        const rgba_picture_t picture = frame();
        EXPECT_EQ(lit_inside(picture, view_t::perspective), 0);
        for (const view_t view : orthographic_views) {
            EXPECT_GT(lit_in(picture, view), 50) << name_of(view);
            EXPECT_EQ(count_in(picture, view,
                               [](const auto& pixel) { return pixel != clear_pixel && pixel != grid_pixel; }),
                      0);
        }
    }
}

TEST_F(Overlays, GridsGoAndComeWithTheirSwitch) {
    const rgba_picture_t shown = frame();
    editor.set_grid(false);
    const rgba_picture_t hidden = frame();
    for (const view_t view : every_view)
        EXPECT_EQ(lit_in(hidden, view), 0);
    editor.set_grid(true);
    EXPECT_EQ(frame(), shown);
}

TEST_F(Overlays, GridsThatWereOffFollowTheZoomOfThatTime) {
    const auto zoom = [this] {
        drag_with(modifier_alt, middle_button, widget(view_t::front, 50, 50), widget(view_t::front, 50, 100));
        drag_with(modifier_alt, left_button, widget(view_t::top, 50, 50), widget(view_t::top, 60, 57));
    };
    zoom();
    const rgba_picture_t zoomed = frame();
    editor.key_command(0xff0d);
    ASSERT_NE(frame(), zoomed);
    editor.set_grid(false);
    zoom();
    editor.set_grid(true);
    EXPECT_EQ(frame(), zoomed);
}

TEST_F(Overlays, TheMiddleLinesOfTheGridsCrossAtTheOrigin) {
    const rgba_picture_t picture = frame();
    for (const view_t view : orthographic_views) {
        const seen_t at = seen(view, {0, 0, 0});
        int lit = 0;
        for (int y = -1; y <= 0; ++y)
            for (int x = -1; x <= 0; ++x) {
                const pixel_place_t place =
                    widget(view, static_cast<int>(at.x) + x, static_cast<int>(at.y) + y);
                lit += picture.at(place.x, place.y) == grid_pixel;
            }
        EXPECT_GE(lit, 2) << name_of(view);
    }
}

TEST_F(Overlays, PointsOfBothKindsShowInAllViewsTheMarkedOnesLarger) {
    editor.set_grid(false);
    open(points_alone());
    const int count = static_cast<int>(scattered_points().size());
    for (const view_t view : every_view)
        EXPECT_EQ(lit_in(frame(), view), count * 9) << name_of(view);
    mark(0, {0, 3});
    for (const view_t view : every_view)
        EXPECT_EQ(lit_in(frame(), view), (count - 2) * 9 + 2 * 25) << name_of(view);

    editor.delete_current();
    open(patch_block());
    EXPECT_EQ(lit_in(frame(), view_t::front), 4 * 9);
    mark(0, {0});
    EXPECT_EQ(lit_in(frame(), view_t::front), 3 * 9 + 25);
    // Two points each behind the other from the side and from the top.
    EXPECT_EQ(lit_in(frame(), view_t::side), 9 + 25);
    EXPECT_EQ(lit_in(frame(), view_t::top), 9 + 25);
}

TEST_F(Overlays, OnAScreenOfFinePixelsPointsAndLinesKeepTheirSize) {
    resize(400, 320);
    std::map<view_t, int> coarse;
    for (const view_t view : orthographic_views)
        coarse[view] = lit_inside(frame(), view);
    resize(800, 640);
    editor.set_pixel_scale(2);
    // Twice as long and twice as wide, but for their ends.
    for (const view_t view : orthographic_views)
        EXPECT_NEAR(lit_inside(frame(), view), 4 * coarse[view], 0.1 * coarse[view]) << name_of(view);
    editor.set_grid(false);
    open(points_alone());
    mark(0, {0, 3});
    const int count = static_cast<int>(scattered_points().size());
    for (const view_t view : every_view)
        EXPECT_EQ(lit_in(frame(), view), (count - 2) * 36 + 2 * 100) << name_of(view);
    while (glGetError() != GL_NO_ERROR)
        ADD_FAILURE() << "a line is too wide for the context";
}

TEST_F(Overlays, PointsGoFromThePerspectiveViewAlone) {
    editor.set_grid(false);
    open(points_alone());
    const rgba_picture_t shown = frame();
    editor.set_control_points(false);
    const rgba_picture_t hidden = frame();
    EXPECT_EQ(lit_in(hidden, view_t::perspective), 0);
    for (const view_t view : orthographic_views)
        EXPECT_EQ(lit_in(hidden, view), lit_in(shown, view));
    editor.set_control_points(true);
    EXPECT_EQ(frame(), shown);
}

TEST_F(Overlays, PointsStandInTheirColoursWhereTheyAreSeenOverTheSurface) {
    editor.set_grid(false);
    open(square_block(2, 1) + polygon_block({{0.5F, 0.25F, -1}, {-1, -1, -1}, {1, 1, -1}}, {0, 0, 0}));
    array_span<vertex_t>(entry(1).polygon.vertices)[0].color = {0, 1, 0, 1};
    const rgba_picture_t picture = frame();
    for (const view_t view : every_view) {
        const pixel_place_t at = place_of(view, {0.5F, 0.25F, -1});
        EXPECT_EQ(picture.at(at.x, at.y), (rgba_picture_t::pixel_t{0, 255, 0, 255})) << name_of(view);
    }
}

TEST_F(Overlays, APickLeavesNothingInTheNextFrame) {
    open(scattered_block());
    const rgba_picture_t before = frame();
    editor.set_mode(operation_mode_t::folding);
    for (const view_t view : every_view)
        click(left_button, widget(view, 50, 50));
    EXPECT_EQ(frame(), before);
}

}  // namespace
