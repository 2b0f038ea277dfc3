// Thousands of random events against the scene editor: whatever a user does in whatever order, it goes on,
// and its parts stay in step with each other.

#include <bit>
#include <chrono>
#include <iostream>
#include <random>

#include "gl/app/editor/editor_test.h"
#include "support/captured_stream.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

class EventStorm : public editor_test, public testing::WithParamInterface<unsigned> {
  protected:
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

    /// Mostly in the area, at times far outside; often where a point or a surface is.
    pixel_place_t place() {
        const view_layout_t& layout = editor.layout();
        const int kind = pick(0, 9);
        if (kind == 0)
            return {pick(-2000, 2000), pick(-2000, 2000)};
        if (kind < 4 && !editor.models().empty()) {
            const auto points =
                points_of(static_cast<std::size_t>(pick(0, static_cast<int>(editor.models().size()) - 1)));
            if (!points.empty()) {
                const view_t view = every_view[static_cast<std::size_t>(pick(0, 3))];
                const seen_t at = seen(
                    view, points[static_cast<std::size_t>(pick(0, static_cast<int>(points.size()) - 1))]);
                if (std::fabs(at.x) < 1e6 && std::fabs(at.y) < 1e6)
                    return widget(view, static_cast<int>(at.x), static_cast<int>(at.y));
            }
        }
        return {pick(0, std::max(layout.width, 1)), pick(0, std::max(layout.height, 1))};
    }

    void step() {
        const int kind = pick(0, 99);
        const pixel_place_t at = place();
        if (kind < 10)
            make_gesture(at);
        else if (kind < 45)
            editor.mouse_motion(at.x, at.y);
        else if (kind < 70)
            editor.mouse_button(static_cast<std::uint32_t>(pick(0, 20) == 0 ? pick(3, 9) : pick(0, 2)),
                                pick(0, 1) == 1, at.x, at.y);
        else if (kind < 74)
            editor.mouse_wheel(pick(-1, 1), at.x, at.y);
        else if (kind < 82)
            press_or_release_modifier();
        else if (kind < 87)
            editor.key_command(static_cast<std::uint32_t>("zyzyZ"[pick(0, 4)]));
        else if (kind < 89)
            editor.key_command(pick(0, 3) == 0 ? 'i' : 0xff0d);
        else if (kind < 90)
            editor.double_click(static_cast<std::uint32_t>(pick(0, 2)), at.x, at.y);
        else if (kind < 94)
            editor.set_mode(static_cast<operation_mode_t>(pick(0, 3)));
        else if (kind < 98)
            switch_something();
        else
            change_scene();
        if (pick(0, 39) == 0)
            editor.display();
    }

    /// What a user means to do, begun and ended: loose events seldom come to it.
    void make_gesture(pixel_place_t from) {
        for (const std::uint32_t modifier : {modifier_shift, modifier_ctrl, modifier_alt})
            editor.release_key(modifier);
        const auto modifier = static_cast<std::uint32_t>(pick(0, 3));
        if (modifier == modifier_ctrl) {
            pick(0, 2) == 0 ? redo() : undo();
            return;
        }
        const auto button = static_cast<std::uint32_t>(pick(0, 3) == 0 ? pick(1, 2) : 0);
        editor.press_modifier(modifier, modifier);
        press(button, from);
        for (int motion = pick(0, 3); motion > 0; --motion)
            move(place());
        release(button, place());
        editor.release_key(modifier);
    }

    void press_or_release_modifier() {
        const auto modifier = static_cast<std::uint32_t>(pick(1, 3));
        if (pick(0, 19) == 0)
            editor.forget_modifiers();
        else if (pick(0, 9) == 0)
            editor.key_released(0xff09);
        else if (pick(0, 1) == 0)
            editor.press_modifier(modifier, modifier);
        else
            editor.release_key(modifier);
    }

    void switch_something() {
        switch (pick(0, 6)) {
            case 0:
                return editor.set_control_points(pick(0, 1) == 1);
            case 1:
                return editor.set_grid(pick(0, 1) == 1);
            case 2:
                return editor.set_grid_step(pick(0, 1) == 1 ? 0.0 : 0.01 * pick(1, 100));
            case 3:
                return editor.set_fold_angle(pick(-360, 360));
            case 4:
                editor.view().crosshair_on = pick(0, 3) == 0;
                return;
            case 5:
                return editor.set_pixel_scale(pick(1, 3));
            default:
                // Most folds of the storm fail: there is no axis, or nothing is selected.
                static_cast<void>(editor.fold());
        }
    }

    void change_scene() {
        constexpr std::size_t most_models = 6;
        switch (pick(0, 11)) {
            case 0:
            case 1:
                if (editor.models().size() < most_models)
                    open_something();
                return;
            case 2:
                if (editor.models().size() < most_models)
                    editor.add_model(static_cast<model_kind_t>(pick(0, 1)));
                return;
            case 3:
                return editor.delete_current();
            case 4:
                return editor.polygonize_current();
            case 5:
                return resize_somehow();
            case 6:
                return save_something();
            case 7:
            case 8:
                return cut_something();
            case 9:
                return edit_in_a_dialog();
            default:
                return editor.select_model(static_cast<std::uint64_t>(pick(0, 7)));
        }
    }

    void open_something() {
        constexpr const char* samples[] = {"cube.ulk", "patch.ulk", "paper.ulk", "cube.ulk"};
        std::ostringstream messages;
        const bool opens = !editor.cut_is_running();
        const int kind = pick(0, 5);
        if (kind < 4)
            EXPECT_EQ(editor.file_open(sample(samples[kind]).c_str(), messages), opens) << messages.str();
        else if (kind == 4 && opens)
            open(scattered_block() + patch_block());
        else
            EXPECT_FALSE(editor.file_open(folder.path("missing.ulk").c_str(), messages));
    }

    void save_something() {
        const std::string path = folder.path(pick(0, 1) == 0 ? "saved.ulk" : "saved.stl");
        if (pick(0, 1) == 0)
            EXPECT_TRUE(editor.save_models_to(path.c_str()));
        else
            EXPECT_EQ(editor.save_current_to(path.c_str()), editor.current_model() != nullptr);
    }

    /// Cuts, and while the cut runs goes on with what a user may do meanwhile.
    void cut_something() {
        constexpr std::uint64_t most_indices = 3000;  // cuts of cuts grow, and with them their time
        std::uint64_t indices = 0;
        for (const auto& each : editor.models())
            indices += each->polygon.element_count();
        if (indices > most_indices)
            return;
        const std::size_t models = editor.models().size();
        editor.cut_current([&](double) {
            EXPECT_TRUE(editor.cut_is_running());
            const int kind = pick(0, 29);
            if (kind > 2)
                return;
            const auto before = all_points();
            if (kind < 2)
                step();
            else
                change_scene();
            EXPECT_EQ(editor.models().size(), models);
            EXPECT_TRUE(all_points() == before) << "a change has got into the cut";
        });
    }

    /// The bits of all points, so that one that is no number is the same as itself.
    std::vector<std::uint32_t> all_points() {
        std::vector<std::uint32_t> bits;
        for (std::size_t i = 0; i < editor.models().size(); ++i)
            for (const pos3& point : points_of(i))
                for (const float axis : {point.x, point.y, point.z})
                    bits.push_back(std::bit_cast<std::uint32_t>(axis));
        return bits;
    }

    /// Dialogs are modal: none is open while a cut is running.
    void edit_in_a_dialog() {
        if (editor.current_model() == nullptr || editor.cut_is_running())
            return;
        const auto count = static_cast<int>(points_of(editor.current_index()).size());
        switch (pick(0, 7)) {
            case 0:
                return editor.set_polygon(settings_of_a_mesh());
            case 1:
                return editor.set_nurbs(settings_of_a_net());
            case 2:
                return editor.set_environment({"", 0.1F * static_cast<float>(pick(0, 10)), 0.5F, 1.5F});
            case 3:
                return edit_net_table();
            case 4:
                return edit_option_table();
            case 5:
                return editor.set_vertex_text(attribute_t::position, "0.5,0.25,0\n1,-1,0\n");
            case 6:
                return editor.set_element_text("0\n1\n2\n-1\n");
            default:
                if (count > 0)
                    edit_point(static_cast<std::uint64_t>(pick(0, count - 1)),
                               {0.1F * static_cast<float>(pick(-9, 9)), 0.2F,
                                0.1F * static_cast<float>(pick(-9, 9))});
        }
    }

    polygon_settings_t settings_of_a_mesh() {
        polygon_settings_t settings = polygon_settings(*editor.current_model());
        settings.vertex_count += static_cast<std::uint32_t>(pick(0, 3));
        settings.element_count += static_cast<std::uint32_t>(pick(0, 3));
        return settings;
    }

    nurbs_settings_t settings_of_a_net() {
        nurbs_settings_t settings = nurbs_settings(*editor.current_model());
        settings.count1 = static_cast<std::uint32_t>(pick(0, 5));
        settings.resolution2 = static_cast<std::uint32_t>(pick(0, 5));
        return settings;
    }

    void edit_net_table() {
        const attribute_t attribute = pick(0, 1) == 0 ? attribute_t::position : attribute_t::color;
        net_table_t table = editor.net_table(attribute);
        for (number_row_t& row : table.points) {
            row.selected = pick(0, 1) == 0;
            row.numbers[0] = pick(0, 3);
        }
        editor.set_net_table(attribute, table.points);
    }

    void edit_option_table() {
        const auto index = static_cast<std::uint32_t>(pick(0, 3));
        option_table_t table = editor.option_table(index);
        for (float& value : table.values.data)
            value += 0.1F * static_cast<float>(pick(0, 2));
        editor.set_option_table(index, table.values);
    }

    void resize_somehow() {
        constexpr int sizes[] = {0, 1, 2, 7, 64, 320, 400, 401, 400, 320, 400, 320};
        resize(sizes[pick(0, 11)], sizes[pick(0, 11)]);
    }

    void expect_in_step() {
        const std::size_t count = editor.models().size();
        if (count == 0) {
            EXPECT_EQ(editor.current_model(), nullptr);
            EXPECT_EQ(editor.current_index(), 0U);
        } else if (editor.current_index() < count) {
            EXPECT_EQ(editor.current_model(), &entry(editor.current_index()));
        } else {
            EXPECT_EQ(editor.current_model(), nullptr);
        }
        for (std::size_t i = 0; i < count; ++i) {
            const modeling_t& each = model(i);
            const std::vector<float> sizes = pointsizes_of(each);
            ASSERT_EQ(sizes.size(), each.selection.size());
            ASSERT_EQ(each.selection.size(), points_of(i).size());
            for (std::size_t point = 0; point < sizes.size(); ++point)
                ASSERT_EQ(sizes[point], each.selection[point] ? selected_point_size : unselected_point_size);
            expect_marked_triangles(entry(i).polygon);
        }
        EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    }

    /// The triangles drawn as selected are those of the selected ids. After a cut an id may stand for none.
    static void expect_marked_triangles(const polygon_t& polygon) {
        if (!polygon.selectelems.has_buffer())
            return;
        const std::vector<std::uint32_t> triangles = selectelems_of(polygon);
        for (std::uint32_t id = 0; id * 3 + 2 < triangles.size(); ++id) {
            if (polygon.polyidvector[id].position == restart_mark)
                continue;
            ASSERT_EQ(triangles[id * 3] != restart_mark, polygon.selectpolygons().contains(id)) << id;
        }
    }

    std::mt19937 random{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Seeds, EventStorm, testing::Range(1U, 9U));

TEST_P(EventStorm, NothingBreaks) {
    const captured_stream output(std::cout);
    const captured_stream errors(std::cerr);
    open_something();
    for (int event = 0; event < 4000; ++event) {
        step();
        if (event % 100 == 0)
            expect_in_step();
        ASSERT_FALSE(HasFatalFailure()) << "event " << event;
    }
    expect_in_step();
    // Each grCheckError prints a pending GL error and clears it.
    EXPECT_EQ(errors.text().find("Error "), std::string::npos) << errors.text();
}

}  // namespace
