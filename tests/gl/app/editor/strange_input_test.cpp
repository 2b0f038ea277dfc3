// Mouse and models that are out of the ordinary: nothing crashes, nothing is read out of bounds.

#include <gmock/gmock.h>

#include <iostream>
#include <limits>

#include "gl/app/editor/editor_test.h"
#include "support/captured_stream.h"
#include "support/counted_mappings.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

constexpr operation_mode_t every_mode[] = {operation_mode_t::selection, operation_mode_t::punish,
                                           operation_mode_t::clipping, operation_mode_t::folding};

class StrangeInput : public editor_test {
  protected:
    /// Every gesture of every operation and of the camera at places.
    void try_everything(const std::vector<pixel_place_t>& places) {
        const captured_stream output(std::cout);
        for (const std::uint32_t modifier : {modifier_none, modifier_shift, modifier_ctrl, modifier_alt}) {
            for (const operation_mode_t mode : every_mode) {
                editor.set_mode(mode);
                editor.press_modifier(modifier, modifier);
                for (const pixel_place_t from : places) {
                    for (const std::uint32_t button : {0U, 1U, 2U, 3U, 4U}) {
                        drag(button, from, places.front());
                        drag(button, places.front(), from);
                    }
                    editor.mouse_wheel(1, from.x, from.y);
                    editor.double_click(right_button, from.x, from.y);
                }
                editor.release_key(modifier);
                undo();
                redo();
            }
        }
        editor.key_command('i');
        frame();
    }

    std::vector<pixel_place_t> middles() const {
        std::vector<pixel_place_t> places;
        for (const view_t view : every_view)
            places.push_back(widget(view, area(view).width / 2, area(view).height / 2));
        return places;
    }
};

TEST_F(StrangeInput, PlacesOutsideOfTheArea) {
    open(scattered_block() + patch_block());
    mark(0, {1});
    mark(1, {2});
    constexpr int far = 1'000'000'000;
    try_everything({{-1, -1},
                    {400, 320},
                    {-1, 320},
                    {400, -1},
                    {far, far},
                    {-far, -far},
                    {far, -far},
                    {200, 160},
                    {199, 159}});
}

TEST_F(StrangeInput, AnOutsidePressStillHasAView) {
    // Left of the area is the front or the top view, beyond its right side the side or the perspective one.
    open(scattered_block());
    const seen_t before = seen(view_t::front, scattered_points()[0]);
    drag_with(modifier_alt, left_button, {-30, 400}, {-20, 400});
    EXPECT_NEAR(seen(view_t::front, scattered_points()[0]).x - before.x, 10, 0.01);
    EXPECT_FALSE(click(left_button, {-30, 400}));
    EXPECT_FALSE(click(left_button, {500, -60}));
}

TEST_F(StrangeInput, AreasOfNoSizeAndOfOnePixel) {
    open(scattered_block() + patch_block());
    mark(0, {1});
    mark(1, {2});
    for (const auto& [width, height] :
         {std::pair{0, 0}, {1, 1}, {0, 320}, {400, 0}, {1, 320}, {400, 1}, {2, 2}, {3, 3}}) {
        resize(width, height);
        try_everything({{0, 0}, {1, 1}, {-1, -1}, {5, 3}});
        EXPECT_TRUE(editor.key_command(0xff0d));
    }
    // Back at an ordinary size Return shows the scene again.
    resize(400, 320);
    EXPECT_TRUE(editor.key_command(0xff0d));
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_TRUE(std::isfinite(editor.camera().view.matrix[i]));
        EXPECT_TRUE(std::isfinite(editor.camera().fit.matrix[i]));
        EXPECT_TRUE(std::isfinite(editor.camera().perspective.matrix[i]));
    }
}

TEST_F(StrangeInput, CoordinatesThatAreNoNumbers) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN(),
                    inf = std::numeric_limits<float>::infinity();
    constexpr float huge = std::numeric_limits<float>::max();
    open(square_block() + patch_block());
    {
        const array_span<vertex_t> vertices(entry(0).polygon.vertices);
        vertices[0].position = {nan, 0, 0};
        vertices[1].position = {inf, -inf, 0};
        vertices[2].position = {huge, -huge, huge};
    }
    entry(1).nurbs.points.data[0].position = {nan, inf, huge};
    entry(1).nurbs.uploadpoint(0, 0);
    mark(0, {0, 1, 2, 3});
    mark(1, {0, 1});
    try_everything(middles());
    EXPECT_TRUE(editor.key_command(0xff0d));
    try_everything(middles());
    editor.polygonize_current();
    editor.scene().fold_picks[0] = {0, 0};
    editor.scene().fold_picks[1] = {0, 1};
    try_everything(middles());
}

TEST_F(StrangeInput, AFileOfHugeNumbersOpensAndIsShown) {
    std::ostringstream messages;
    ASSERT_TRUE(editor.file_open(
        folder
            .write("huge.ulk",
                   polygon_block({{3e38F, -3e38F, 0}, {-3e38F, 3e38F, 1e38F}, {0, 1, -3e38F}}, {0, 1, 2}))
            .c_str(),
        messages));
    try_everything(middles());
}

TEST_F(StrangeInput, AnEmptySceneAndModelsWithoutPoints) {
    try_everything(middles());
    const captured_stream errors(std::cerr);
    editor.add_model(model_kind_t::polygon);
    try_everything(middles());
    editor.add_model(model_kind_t::nurbs);
    try_everything(middles());
    editor.polygonize_current();
    try_everything(middles());
    editor.select_model(7);
    try_everything(middles());
}

// GL refuses to map what is empty. The grids, which map their own lines, are off.
TEST_F(StrangeInput, AModelWithoutPointsIsNeverMapped) {
    open("begin polygon_surface,0,0\nend\n");
    editor.set_grid(false);
    const captured_stream errors(std::cerr);
    const counted_mappings mappings;
    try_everything(middles());
    EXPECT_EQ(mappings.count(), 0);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(StrangeInput, ModelsOfUnlikeSizesInOnePick) {
    std::vector<pos3> many;
    for (int i = 0; i < 500; ++i)
        many.push_back({0.1F, 0.1F, static_cast<float>(i) * 0.001F});
    open(polygon_block(many, {0, 1, 2}) + square_block() + triangle_block() + patch_block());
    editor.add_model(model_kind_t::nurbs);
    EXPECT_TRUE(click(left_button, place_of(view_t::front, {0.1F, 0.1F, 0})));
    EXPECT_EQ(marked(0).size(), 500U);
    EXPECT_EQ(marked(1).size(), 4U);
    EXPECT_EQ(marked(2).size(), 3U);
    EXPECT_EQ(marked(3).size(), 4U);
    EXPECT_EQ(marked(4).size(), 0U);
    editor.set_mode(operation_mode_t::folding);
    EXPECT_TRUE(click(left_button, place_of(view_t::front, {0.1F, 0.1F, 0})));
    EXPECT_EQ(editor.scene().fold_picks[1].model, 4U) << "the last model, which has no such point";
    EXPECT_FALSE(editor.fold());
    frame();
    try_everything(middles());
}

TEST_F(StrangeInput, ModelsThatShrankSinceTheirMarksAndSteps) {
    open(scattered_block());
    mark(0, {0, 6});
    drag_with(modifier_shift, left_button, widget(view_t::front, 40, 30), widget(view_t::front, 60, 50));
    editor.scene().fold_picks[0] = {0, 6};
    editor.scene().fold_picks[1] = {0, 0};
    ASSERT_TRUE(entry(0).polygon.extend(3, 3));
    EXPECT_TRUE(undo());
    EXPECT_TRUE(redo());
    frame();
    EXPECT_FALSE(editor.fold());
    try_everything(middles());
}

TEST_F(StrangeInput, KindsThatDoNotExist) {
    open(scattered_block() + scattered_block());
    entry(1).kind = static_cast<model_kind_t>(9);
    editor.scene().fold_picks[0] = {0, 1};
    editor.scene().fold_picks[1] = {1, 1};
    EXPECT_TRUE(click(left_button, place_of(view_t::front, scattered_points()[4])));
    EXPECT_EQ(marked(0).size(), 1U);
    EXPECT_FALSE(editor.fold());
    try_everything(middles());
}

TEST_F(StrangeInput, DeletingInTheMiddleOfADrag) {
    for (const std::uint32_t modifier : {modifier_none, modifier_shift, modifier_alt}) {
        open(scattered_block() + square_block());
        mark(0, {1, 4});
        const pixel_place_t at = place_of(view_t::front, {0, 0, 0});
        editor.press_modifier(modifier, modifier);
        press(left_button, at);
        move({at.x + 5, at.y});
        editor.delete_current();
        move({at.x + 9, at.y});
        editor.delete_current();
        move({at.x + 15, at.y});
        release(left_button, at);
        editor.release_key(modifier);
        frame();
        EXPECT_FALSE(undo());
    }
}

TEST_F(StrangeInput, OpeningInTheMiddleOfADrag) {
    open(scattered_block());
    mark(0, {1, 4});
    editor.press_modifier(modifier_shift, modifier_shift);
    press(left_button, widget(view_t::front, 50, 50));
    move(widget(view_t::front, 60, 50));
    const pos3 moved = points_of(0)[4];
    open(square_block());
    EXPECT_FALSE(move(widget(view_t::front, 80, 50))) << "the open step went with the history";
    EXPECT_FALSE(release(left_button, widget(view_t::front, 80, 50)));
    EXPECT_EQ(points_of(0)[4], moved);
}

}  // namespace
