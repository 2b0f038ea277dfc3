#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "app/editor/ulkedit.h"
#include "model/math/matrices.h"
#include "render/gl/mapped_span.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"
#include "support/scene_text.h"

namespace ulk_test {

enum class view_t { perspective, front, side, top };

inline constexpr std::array every_view{view_t::perspective, view_t::front, view_t::side, view_t::top};
inline constexpr std::array orthographic_views{view_t::front, view_t::side, view_t::top};

inline std::string name_of(view_t view) {
    constexpr const char* names[] = {"perspective", "front", "side", "top"};
    return names[static_cast<std::size_t>(view)];
}

struct pixel_place_t {
    int x = 0, y = 0;
};

/// Place and depth in a view, computed in double: pixels of the view, y counted up.
struct seen_t {
    double x = 0, y = 0;
    double depth = 0;
};

/// A scene editor of 400 by 320 pixels on a real GL, with hands: the tests press, drag and turn wheels at
/// places of its views.
class editor_test : public gl_test {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        resize(400, 320);
        editor.init();
        editor.reshape(400, 320);
    }

    void resize(int width, int height) {
        target.emplace(std::max(width, 1), std::max(height, 1));
        target->bind();
        editor.reshape(width, height);
    }

    void open(const std::string& text) {
        std::ostringstream messages;
        ASSERT_TRUE(editor.file_open(folder.write("scene.ulk", text).c_str(), messages)) << messages.str();
    }

    libutils::rgba_picture_t frame() {
        target->bind();
        editor.display();
        return target->read_pixels();
    }

    // Where things are.

    ulk3d::viewport_t area(view_t view) const {
        const ulk3d::view_layout_t& layout = editor.layout();
        switch (view) {
            case view_t::front:
                return layout.front();
            case view_t::side:
                return layout.side();
            case view_t::top:
                return layout.top();
            default:
                return layout.perspective();
        }
    }

    const ulk3d::matrix_pair_t& view_matrix(view_t view) const {
        const ulk3d::camera_t& camera = editor.camera();
        switch (view) {
            case view_t::front:
                return camera.front;
            case view_t::side:
                return camera.side;
            case view_t::top:
                return camera.top;
            default:
                return camera.view;
        }
    }

    const ulk3d::matrix_pair_t& projection_matrix(view_t view) const {
        return view == view_t::perspective ? editor.camera().perspective : editor.camera().ortho;
    }

    /// Pixels of the view area, for a place in a view (y up).
    pixel_place_t widget(view_t view, int x, int y) const {
        const ulk3d::viewport_t at = area(view);
        return {at.x + x, editor.layout().height - 1 - (at.y + y)};
    }

    seen_t seen(view_t view, const ulk3d::pos3& p) const {
        const std::array<double, 4> in_view = times({p.x, p.y, p.z, 1}, view_matrix(view).matrix);
        const std::array<double, 4> clip = times(in_view, projection_matrix(view).matrix);
        const ulk3d::viewport_t at = area(view);
        return {(clip[0] / clip[3] + 1) * at.width / 2, (clip[1] / clip[3] + 1) * at.height / 2,
                clip[2] / clip[3]};
    }

    /// The pixel nearest to where a point is seen.
    pixel_place_t place_of(view_t view, const ulk3d::pos3& p) const {
        const seen_t at = seen(view, p);
        return widget(view, static_cast<int>(std::lround(at.x)), static_cast<int>(std::lround(at.y)));
    }

    // Hands.

    bool press(std::uint32_t button, pixel_place_t at) {
        return editor.mouse_button(button, false, at.x, at.y);
    }
    bool move(pixel_place_t at) { return editor.mouse_motion(at.x, at.y); }
    bool release(std::uint32_t button, pixel_place_t at) {
        return editor.mouse_button(button, true, at.x, at.y);
    }
    /// A press and the release at the same place; what the press gave.
    bool click(std::uint32_t button, pixel_place_t at) {
        const bool pressed = press(button, at);
        release(button, at);
        return pressed;
    }
    void drag(std::uint32_t button, pixel_place_t from, pixel_place_t to) {
        press(button, from);
        move(to);
        release(button, to);
    }
    /// The same with a modifier key held.
    void drag_with(std::uint32_t modifier, std::uint32_t button, pixel_place_t from, pixel_place_t to) {
        editor.press_modifier(modifier, modifier);
        drag(button, from, to);
        editor.release_key(modifier);
    }
    bool undo() { return with_ctrl('z'); }
    bool redo() { return with_ctrl('y'); }

    // The models.

    ulk3d::model_entry_t& entry(std::size_t index) {
        return **std::next(editor.models().begin(), static_cast<std::ptrdiff_t>(index));
    }
    ulk3d::modeling_t& model(std::size_t index) { return entry(index).modeling(); }

    std::vector<ulk3d::pos3> points_of(std::size_t index) {
        const ulk3d::array_t& array = *model(index).array(0);
        const ulk3d::array_span<const float> words(array);
        std::vector<ulk3d::pos3> points;
        for (std::size_t i = 0; i + 2 < words.size(); i += array.vertex_stride())
            points.push_back({words[i], words[i + 1], words[i + 2]});
        return points;
    }

    std::vector<std::size_t> marked(std::size_t index) {
        std::vector<std::size_t> points;
        for (std::size_t i = 0; i < model(index).selection.size(); ++i)
            if (model(index).selection[i])
                points.push_back(i);
        return points;
    }

    void mark(std::size_t index, std::initializer_list<std::uint64_t> points) {
        for (const std::uint64_t point : points)
            ASSERT_TRUE(model(index).select(point));
    }

    /// Moves a point of the current model like a dialog: by hand, with the old value on the history.
    void edit_point(std::uint64_t index, const ulk3d::pos3& to) {
        ulk3d::model_entry_t& current = *editor.current_model();
        ulk3d::edit_t edit{{}, 0, 0};
        {
            ulk3d::array_t& array = *current.modeling().array(0);
            const ulk3d::array_span<float> words(array);
            float* const record = &words[index * array.vertex_stride()];
            edit.points.push_back({{record[0], record[1], record[2], 0}, index});
            record[0] = to.x;
            record[1] = to.y;
            record[2] = to.z;
        }
        editor.note_edit(std::move(edit));
    }

    temporary_folder_t folder;
    std::optional<render_target_t> target;
    ulk3d::ulkedit_t editor{"ulkedit"};

  private:
    static std::array<double, 4> times(const std::array<double, 4>& v, const ulk3d::mtx3w& m) {
        std::array<double, 4> product{};
        for (std::size_t row = 0; row < 4; ++row)
            for (std::size_t column = 0; column < 4; ++column)
                product[column] += v[row] * static_cast<double>(m[row * 4 + column]);
        return product;
    }

    bool with_ctrl(std::uint32_t key) {
        editor.press_modifier(ulk3d::modifier_ctrl, ulk3d::modifier_ctrl);
        const bool changed = editor.key_command(key);
        editor.release_key(ulk3d::modifier_ctrl);
        return changed;
    }
};

/// Text of a polygon block with these vertices and element indices, all of it looking along +z.
std::string polygon_block(const std::vector<ulk3d::pos3>& vertices, const std::vector<int>& elements);

/// Points of which no two are near each other in any of the four views, as a polygon block.
const std::vector<ulk3d::pos3>& scattered_points();
std::string scattered_block();

/// A square from -size to size at a depth, as one strip of two triangles.
std::string square_block(float size = 1, float depth = 0);

}  // namespace ulk_test
