// The keys of the view: modifiers and what they leave held, Return, the dump of the vertices.

#include <iostream>

#include "gl/app/editor/editor_test.h"
#include "support/captured_stream.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

constexpr std::uint32_t key_return = 0xff0d, key_tab = 0xff09, key_enter_of_keypad = 0xff8d;

class Keys : public editor_test {
  protected:
    /// The modifier that counts now; none is changed.
    std::uint32_t modifier() {
        for (const std::uint32_t held : {modifier_shift, modifier_ctrl, modifier_alt}) {
            if (editor.release_key(held)) {
                EXPECT_TRUE(editor.press_modifier(held, held));
                return held;
            }
        }
        return modifier_none;
    }
};

TEST_F(Keys, OfSeveralModifiersTheFirstCountsUntilItIsReleased) {
    for (const std::uint32_t first : {modifier_shift, modifier_ctrl, modifier_alt}) {
        for (const std::uint32_t second : {modifier_shift, modifier_ctrl, modifier_alt}) {
            EXPECT_TRUE(editor.press_modifier(first, first));
            EXPECT_FALSE(editor.press_modifier(second, second));
            EXPECT_EQ(modifier(), first);
            if (second != first) {
                EXPECT_FALSE(editor.release_key(second));
                EXPECT_EQ(modifier(), first);
            }
            EXPECT_TRUE(editor.release_key(first));
            EXPECT_EQ(modifier(), modifier_none);
            EXPECT_FALSE(editor.release_key(second)) << "of the key that is still down";
        }
    }
}

/// Alt and Shift change the layout of many keyboards: Alt is then released under another name, and by its key
/// alone it is known.
TEST_F(Keys, AModifierIsReleasedByTheKeyThatPressedIt) {
    constexpr std::uint32_t left_alt = 64, right_alt = 108, left_shift = 50;
    EXPECT_TRUE(editor.press_modifier(modifier_alt, left_alt));
    EXPECT_FALSE(editor.press_modifier(modifier_shift, left_shift));
    EXPECT_FALSE(editor.press_modifier(modifier_alt, right_alt));
    EXPECT_FALSE(editor.release_key(right_alt));
    EXPECT_FALSE(editor.release_key(left_shift));
    EXPECT_TRUE(editor.release_key(left_alt));
    EXPECT_FALSE(editor.release_key(left_alt));
    EXPECT_EQ(modifier(), modifier_none);
}

/// Another window has had the keyboard, and the release of the key.
TEST_F(Keys, ForgottenModifiersAreHeldNoMore) {
    for (const std::uint32_t held : {modifier_shift, modifier_ctrl, modifier_alt}) {
        EXPECT_TRUE(editor.press_modifier(held, held));
        EXPECT_TRUE(editor.forget_modifiers());
        EXPECT_FALSE(editor.release_key(held));
        EXPECT_EQ(modifier(), modifier_none);
        EXPECT_FALSE(editor.forget_modifiers());
    }
}

TEST_F(Keys, TheReleaseOfTabRepairsAltAlone) {
    editor.press_modifier(modifier_alt, modifier_alt);
    editor.key_released('a');
    editor.key_released(key_return);
    EXPECT_EQ(modifier(), modifier_alt);
    editor.key_released(key_tab);
    EXPECT_EQ(modifier(), modifier_none);
    for (const std::uint32_t other : {modifier_shift, modifier_ctrl}) {
        editor.press_modifier(other, other);
        editor.key_released(key_tab);
        EXPECT_EQ(modifier(), other);
        editor.release_key(other);
    }
}

TEST_F(Keys, WithCtrlTheMouseDoesNothing) {
    open(scattered_block());
    const camera_t camera = editor.camera();
    editor.press_modifier(modifier_ctrl, modifier_ctrl);
    for (const view_t view : every_view) {
        const pixel_place_t at = place_of(view, scattered_points()[4]);
        for (const std::uint32_t button : {left_button, middle_button, right_button}) {
            EXPECT_FALSE(press(button, at));
            EXPECT_FALSE(move({at.x + 1, at.y}));
            EXPECT_FALSE(release(button, at));
        }
        EXPECT_FALSE(editor.mouse_wheel(1, at.x, at.y));
    }
    EXPECT_TRUE(marked(0).empty());
    EXPECT_EQ(editor.camera().view.matrix, camera.view.matrix);
    EXPECT_EQ(editor.camera().fit.matrix, camera.fit.matrix);
}

TEST_F(Keys, AButtonPressedWithCtrlIsNotHeldAfterIt) {
    open(scattered_block());
    const pixel_place_t at = place_of(view_t::front, scattered_points()[4]);
    editor.press_modifier(modifier_ctrl, modifier_ctrl);
    press(left_button, at);
    editor.release_key(modifier_ctrl);
    EXPECT_FALSE(move(at));
    editor.press_modifier(modifier_ctrl, modifier_ctrl);
    EXPECT_FALSE(move(at));
    EXPECT_TRUE(marked(0).empty());
}

TEST_F(Keys, ASecondButtonIsRefusedWhileOneIsHeld) {
    open(scattered_block());
    const pixel_place_t at = place_of(view_t::front, scattered_points()[4]);
    EXPECT_TRUE(press(left_button, at));
    EXPECT_FALSE(press(right_button, at));
    EXPECT_EQ(marked(0).size(), 1U);
    EXPECT_TRUE(move(at)) << "the left button still paints";
    // The release of the refused button is no release of the held one.
    EXPECT_FALSE(release(right_button, at));
    EXPECT_TRUE(move(at));
    EXPECT_FALSE(release(left_button, at));
    EXPECT_FALSE(move(at));
    EXPECT_TRUE(press(right_button, at));
    EXPECT_EQ(marked(0).size(), 0U);
}

TEST_F(Keys, FurtherButtonsAreNeverHeld) {
    open(scattered_block());
    const pixel_place_t at = place_of(view_t::front, scattered_points()[4]);
    for (const std::uint32_t button : {3U, 4U, 7U, ~0U}) {
        EXPECT_FALSE(press(button, at));
        EXPECT_FALSE(move(at));
        EXPECT_TRUE(press(left_button, at)) << button;
        EXPECT_FALSE(release(button, at));
        EXPECT_TRUE(move(at)) << "the left button is still held";
        release(left_button, at);
    }
}

TEST_F(Keys, AButtonReleasedWithoutItsModifierStaysHeldThere) {
    open(scattered_block());
    mark(0, {4});
    const pixel_place_t at = place_of(view_t::front, scattered_points()[4]);
    const auto wheel_acts = [&] { return editor.mouse_wheel(0, at.x, at.y); };
    editor.press_modifier(modifier_shift, modifier_shift);
    EXPECT_TRUE(wheel_acts());
    press(left_button, at);
    EXPECT_FALSE(wheel_acts()) << "a button is held";
    editor.release_key(modifier_shift);
    release(left_button, at);
    editor.press_modifier(modifier_shift, modifier_shift);
    EXPECT_FALSE(wheel_acts()) << "it is still held here";
    EXPECT_FALSE(press(right_button, at));
    release(right_button, at);
    EXPECT_FALSE(wheel_acts()) << "that was another button";
    release(left_button, at);
    EXPECT_TRUE(wheel_acts());
}

TEST_F(Keys, ReturnOnAnEmptySceneLooksFromSevenUnitsAway) {
    editor.press_modifier(modifier_alt, modifier_alt);
    for (const std::uint32_t button : {left_button, middle_button, right_button}) {
        drag(button, widget(view_t::perspective, 50, 50), widget(view_t::perspective, 90, 66));
        drag(button, widget(view_t::top, 50, 50), widget(view_t::top, 90, 66));
    }
    EXPECT_TRUE(editor.key_command(key_return));
    EXPECT_EQ(editor.camera().trackball.translation, (dir3{0, 0, -7}));
    EXPECT_EQ(editor.camera().trackball.rotation, rot3_identity);
    EXPECT_EQ(editor.camera().trackball.rotation_inverse, rot3_identity);
    EXPECT_EQ(editor.camera().fit.matrix, mtx_identity);
    EXPECT_EQ(editor.camera().fit.inverse, mtx_identity);
    EXPECT_EQ(editor.camera().front.matrix, mtx_identity);
    EXPECT_EQ(editor.camera().view.matrix, translation({0, 0, -7}));
    EXPECT_EQ(editor.camera().view.inverse, translation({0, 0, 7}));
}

TEST_F(Keys, ReturnShowsTheSceneAsAfterItsOpening) {
    open(scattered_block());
    const camera_t opened = editor.camera();
    const auto picture = frame();
    for (const std::uint32_t modifier : {modifier_none, modifier_shift, modifier_ctrl, modifier_alt}) {
        drag_with(modifier_alt, right_button, widget(view_t::perspective, 50, 50),
                  widget(view_t::perspective, 90, 66));
        drag_with(modifier_alt, left_button, widget(view_t::side, 50, 50), widget(view_t::side, 90, 66));
        EXPECT_NE(frame(), picture);
        editor.press_modifier(modifier, modifier);
        EXPECT_TRUE(editor.key_command(key_return));
        editor.release_key(modifier);
        EXPECT_EQ(editor.camera().view.matrix, opened.view.matrix);
        EXPECT_EQ(editor.camera().side.matrix, opened.side.matrix);
        EXPECT_EQ(frame(), picture);
    }
}

TEST_F(Keys, ReturnFitsWhatHasBeenMoved) {
    open(scattered_block());
    const mtx3w fit = editor.camera().fit.matrix;
    array_span<vertex_t>(entry(0).polygon.vertices)[0].position = {-9, -8, -7};
    EXPECT_TRUE(editor.key_command(key_return));
    EXPECT_NE(editor.camera().fit.matrix, fit);
}

TEST_F(Keys, OtherKeysDoNothing) {
    open(scattered_block());
    mark(0, {4});
    drag_with(modifier_shift, left_button, widget(view_t::front, 50, 50), widget(view_t::front, 60, 50));
    const captured_stream output(std::cout);
    for (const std::uint32_t modifier : {modifier_none, modifier_shift, modifier_ctrl, modifier_alt}) {
        editor.press_modifier(modifier, modifier);
        for (const std::uint32_t key :
             {std::uint32_t{'Z'}, std::uint32_t{'Y'}, std::uint32_t{'I'}, std::uint32_t{'a'}, key_tab,
              key_enter_of_keypad, std::uint32_t{0}, ~std::uint32_t{0}})
            EXPECT_FALSE(editor.key_command(key)) << key;
        if (modifier != modifier_ctrl) {
            EXPECT_FALSE(editor.key_command('z'));
            EXPECT_FALSE(editor.key_command('y'));
        }
        editor.release_key(modifier);
    }
    EXPECT_EQ(output.text(), "");
    EXPECT_TRUE(undo()) << "the drag is still there to undo";
}

TEST_F(Keys, TheDumpTellsTheVerticesBehindTheElements) {
    open(polygon_block({{0, 0, 0.5F}, {1, 0, 0}, {0, 1, 0}}, {2, -1, 7, 0, 1}) +
         polygon_block({{0, 0, 0}, {1, 0, 0}}, {}));
    editor.add_model(model_kind_t::polygon);
    const captured_stream output(std::cout);
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(editor.key_command('i'));
    const std::string grey = ", col3a(0.500000, 0.500000, 0.500000, 1.000000), txc2(0.000000, 0.000000)\n";
    EXPECT_EQ(output.text(),
              "vertices: 3\nelements: 5\n"
              "e[0]:2 pos3(0.000000, 1.000000, 0.000000)" +
                  grey + "e[3]:0 pos3(0.000000, 0.000000, 0.500000)" + grey +
                  "e[4]:1 pos3(1.000000, 0.000000, 0.000000)" + grey +
                  "vertices: 2\nelements: 0\nvertices: 0\nelements: 0\n");
    EXPECT_EQ(errors.text(), "");
}

TEST_F(Keys, TheDumpOfANurbsModelIsThatOfItsSurface) {
    open(patch_block());
    const captured_stream output(std::cout);
    editor.key_command('i');
    EXPECT_TRUE(output.text().starts_with("vertices: 1089\nelements: ")) << output.text().substr(0, 80);
    EXPECT_NE(output.text().find("\ne[0]:"), std::string::npos);
}

TEST_F(Keys, TheDumpOfAnEmptySceneIsEmpty) {
    const captured_stream output(std::cout);
    EXPECT_FALSE(editor.key_command('i'));
    EXPECT_EQ(output.text(), "");
}

}  // namespace
