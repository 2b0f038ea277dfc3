// The tables of the dialogs in the test's own process: large ones, whose cells are too many to be looked for
// on a screen. Run by test_window.py on its desktop.

#include <atkmm/object.h>
#include <gtest/gtest.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/main.h>

#include <algorithm>
#include <bit>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "dialogs/controls/number_spin.h"
#include "dialogs/tables/ArrayDialog.h"
#include "dialogs/tables/OptionArrayDialog.h"

namespace ulk3d {
namespace {

void handle_events() {
    while (Gtk::Main::events_pending())
        Gtk::Main::iteration(false);
}

std::vector<Gtk::Widget*> widgets_below(Gtk::Widget& widget) {
    std::vector<Gtk::Widget*> found{&widget};
    if (auto* const container = dynamic_cast<Gtk::Container*>(&widget))
        for (Gtk::Widget* child : container->get_children())
            for (Gtk::Widget* below : widgets_below(*child))
                found.push_back(below);
    return found;
}

/// Numbers with more digits than a table shows.
double number_at(std::uint64_t index, std::uint32_t axis) {
    return static_cast<double>(index % 1000) / 3 / 7 + axis;
}

net_table_t net(std::uint64_t columns, std::uint64_t rows) {
    net_table_t table{columns, rows, std::vector<number_row_t>(columns * rows)};
    for (std::uint64_t i = 0; i < table.points.size(); ++i)
        table.points[i] = {
            i, i % 3 == 0, {number_at(i, 0), number_at(i, 1), number_at(i, 2), number_at(i, 3)}};
    return table;
}

option_table_t option(std::uint64_t rows, std::uint64_t columns) {
    option_table_t table{{}, 2, columns};
    table.values.resize(rows, columns);
    for (std::uint64_t i = 0; i < table.values.data.size(); ++i)
        table.values.data[i] = static_cast<float>(number_at(i, 0));
    return table;
}

class Tables : public testing::Test {
  protected:
    Tables() { parent.show(); }

    void open_points(const net_table_t& table) {
        open(std::make_unique<ArrayDialogPoint>(
            table, [this](auto rows) { points.assign(rows.begin(), rows.end()); }, "points", parent));
    }
    void open_colours(const net_table_t& table) {
        open(std::make_unique<ArrayDialogColor>(
            table, [this](auto rows) { points.assign(rows.begin(), rows.end()); }, "colours", parent));
    }
    void open_option(const OptionArrayDialog::form_t& form, const option_table_t& table) {
        open(std::make_unique<OptionArrayDialog>(
            parent, form, table, [this](const matrix_t<float>& applied) { values = applied; }, "option", ""));
    }
    void open_weights(const option_table_t& table) { open_option({2, false, false}, table); }
    void open_row_knots(const option_table_t& table) { open_option({0, true, false}, table); }
    void open_column_knots(const option_table_t& table) { open_option({1, true, true}, table); }

    void ok() { dialog->response(Gtk::RESPONSE_OK); }

    template <class Control>
    std::vector<Control*> controls() const {
        std::vector<Control*> found;
        for (Gtk::Widget* const widget : widgets_below(*dialog))
            if (auto* const control = dynamic_cast<Control*>(widget))
                found.push_back(control);
        return found;
    }
    static std::string name_of(Gtk::Widget& widget) { return widget.get_accessible()->get_name(); }
    /// The control of this accessible name; null when none has it.
    template <class Control = number_spin_t>
    Control* control(const std::string& name) const {
        for (Control* const found : controls<Control>())
            if (name_of(*found) == name)
                return found;
        return nullptr;
    }
    std::string focused() const {
        return dialog->get_focus() == nullptr ? "" : name_of(*dialog->get_focus());
    }

    Gtk::ScrolledWindow& scroller() const { return *controls<Gtk::ScrolledWindow>().front(); }
    /// Scrolls to a share of the way from the left and from the top.
    void scroll(double x, double y) {
        const auto to = [](const Glib::RefPtr<Gtk::Adjustment>& place, double share) {
            place->set_value(share * (place->get_upper() - place->get_page_size()));
        };
        to(scroller().get_hadjustment(), x);
        to(scroller().get_vadjustment(), y);
        handle_events();
    }
    /// Where a control is in the view.
    Gtk::Allocation place_of(Gtk::Widget& widget) const {
        int x = 0, y = 0;
        widget.translate_coordinates(scroller(), 0, 0, x, y);
        return {x, y, widget.get_width(), widget.get_height()};
    }
    bool is_in_view(Gtk::Widget* widget) const {
        if (widget == nullptr || !widget->get_mapped())
            return false;
        const Gtk::Allocation at = place_of(*widget);
        return at.get_x() >= 0 && at.get_y() >= 0 && at.get_x() + at.get_width() <= scroller().get_width() &&
               at.get_y() + at.get_height() <= scroller().get_height();
    }
    void resize(int width, int height) {
        dialog->resize(width, height);
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (dialog->get_width() != width && std::chrono::steady_clock::now() < deadline)
            Gtk::Main::iteration(false);
        ASSERT_EQ(dialog->get_width(), width);
        handle_events();
    }
    void press_tab(bool forward = true) {
        dialog->child_focus(forward ? Gtk::DIR_TAB_FORWARD : Gtk::DIR_TAB_BACKWARD);
    }
    void move(Gtk::DirectionType direction) {
        dialog->child_focus(direction);
        handle_events();
    }

    Gtk::Window parent;
    std::unique_ptr<Gtk::Dialog> dialog;
    std::vector<number_row_t> points;  ///< as they were applied
    matrix_t<float> values;            ///< as they were applied

  private:
    void open(std::unique_ptr<Gtk::Dialog> opened) {
        dialog = std::move(opened);
        dialog->show();
        // The toolkit moves the keyboard in active windows only.
        while (!dialog->is_active())
            Gtk::Main::iteration();
        handle_events();
    }
};

std::string point_name(std::uint64_t column, std::uint64_t row, const char* part) {
    return "制御点 " + std::to_string(column) + ',' + std::to_string(row) + ' ' + part;
}

std::string knot_name(const char* kind, std::uint64_t first, std::uint64_t second) {
    return std::string(kind) + ' ' + std::to_string(first) + ',' + std::to_string(second);
}

std::string view_name(std::uint64_t row) {
    return "ノット列 " + std::to_string(row) + " の基底関数";
}

TEST_F(Tables, HaveWidgetsForFewCells) {
    const std::function<void()> ways_to_open[] = {
        [this] { open_points(net(1025, 1025)); }, [this] { open_colours(net(1025, 1025)); },
        [this] { open_weights(option(1025, 1025)); }, [this] { open_row_knots(option(1025, 1027)); },
        [this] { open_column_knots(option(1025, 1027)); }};
    for (const auto& way : ways_to_open) {
        way();
        for (const double y : {1.0, 0.5, 0.0, 0.7}) {
            scroll(y / 2, y);
            EXPECT_LT(controls<Gtk::Widget>().size(), 400U);
            EXPECT_GT(controls<number_spin_t>().size(), 20U);
        }
    }
}

TEST_F(Tables, ScrollToTheirVeryEnds) {
    open_points(net(1025, 1025));
    EXPECT_TRUE(is_in_view(control(point_name(0, 0, "x"))));
    scroll(1, 0);
    number_spin_t* const last = control(point_name(1024, 1024, "x"));
    ASSERT_TRUE(is_in_view(last));
    EXPECT_EQ(last->get_value(), number_at(1025 * 1025 - 1, 0));
    EXPECT_EQ(place_of(*last).get_y(), 0);
    EXPECT_EQ(place_of(*last).get_x() + last->get_width(), scroller().get_width());

    open_column_knots(option(1025, 2049));
    scroll(1, 0);
    EXPECT_TRUE(is_in_view(control<Gtk::Button>(view_name(1024))));
    EXPECT_TRUE(is_in_view(control(knot_name("縦ノット", 1024, 2048))));
    open_row_knots(option(1025, 2049));
    scroll(1, 0);
    EXPECT_TRUE(is_in_view(control(knot_name("横ノット", 2048, 1024))));
    scroll(0, 0);
    EXPECT_TRUE(is_in_view(control<Gtk::Button>(view_name(1024))));
}

TEST_F(Tables, EveryCellShowsItsNumbersWhereverTheViewGoes) {
    open_points(net(16, 12));
    std::set<std::string> seen;
    for (int y = 4; y >= 0; --y) {
        for (int x = 0; x <= 11; ++x) {
            scroll(x / 11.0, y / 4.0);
            for (number_spin_t* const spin : controls<number_spin_t>()) {
                const std::string name = name_of(*spin);
                unsigned column = 0, row = 0;
                char axis = 0;
                ASSERT_EQ(std::sscanf(name.c_str(), "制御点 %u,%u %c", &column, &row, &axis), 3) << name;
                ASSERT_EQ(spin->get_value(),
                          number_at(row * 16 + column, static_cast<std::uint32_t>(axis - 'x')))
                    << name;
                if (is_in_view(spin))
                    seen.insert(name);
            }
            for (Gtk::CheckButton* const check : controls<Gtk::CheckButton>()) {
                unsigned column = 0, row = 0;
                ASSERT_EQ(std::sscanf(name_of(*check).c_str(), "制御点 %u,%u", &column, &row), 2);
                ASSERT_EQ(check->get_active(), (row * 16 + column) % 3 == 0);
            }
        }
    }
    EXPECT_EQ(seen.size(), 16U * 12 * 3);
}

TEST_F(Tables, StandWhereTheirNetDoesAndKeepTheirPlacesWhenTheViewMoves) {
    open_points(net(60, 50));
    scroll(0.5, 0.5);
    for (number_spin_t* const spin : controls<number_spin_t>()) {
        unsigned column = 0, row = 0;
        char axis = 0;
        ASSERT_EQ(std::sscanf(name_of(*spin).c_str(), "制御点 %u,%u %c", &column, &row, &axis), 3);
        const Gtk::Allocation at = place_of(*spin);
        if (number_spin_t* const right = control(point_name(column + 1, row, "x")); right && axis == 'x') {
            EXPECT_GT(place_of(*right).get_x(), at.get_x() + at.get_width());
            EXPECT_EQ(place_of(*right).get_y(), at.get_y());
        }
        if (number_spin_t* const above = control(point_name(column, row + 1, "x")); above && axis == 'x') {
            EXPECT_EQ(place_of(*above).get_x(), at.get_x());
            EXPECT_LT(place_of(*above).get_y() + 3 * at.get_height(), at.get_y());
        }
    }
}

TEST_F(Tables, NumbersThatNobodyTouchedKeepTheirBits) {
    const net_table_t table = net(60, 50);
    open_points(table);
    for (int step = 0; step < 150; ++step) {
        press_tab(step % 5 != 0);
        if (step % 7 == 0)
            scroll(step % 11 / 11.0, step % 13 / 13.0);
    }
    ok();
    ASSERT_EQ(points.size(), table.points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(points[i].point, i);
        EXPECT_EQ(points[i].selected, table.points[i].selected);
        for (std::size_t n = 0; n < 3; ++n)
            ASSERT_EQ(std::bit_cast<std::uint64_t>(points[i].numbers[n]),
                      std::bit_cast<std::uint64_t>(table.points[i].numbers[n]));
    }
    const option_table_t knots = option(50, 60);
    open_row_knots(knots);
    for (int step = 0; step < 150; ++step)
        press_tab();
    scroll(1, 0);
    ok();
    EXPECT_EQ(values.data, knots.values.data);
}

TEST_F(Tables, NumbersOutOfViewAreClampedAsThoseInView) {
    net_table_t table = net(60, 50);
    table.points[2999].numbers[1] = 150;
    open_points(table);
    ok();
    EXPECT_EQ(points[2999].numbers[1], 100);
    option_table_t knots = option(50, 60);
    knots.values.data[2999] = -1000;
    open_weights(knots);
    ok();
    EXPECT_EQ(values.data[2999], -100);
}

TEST_F(Tables, WhatIsChangedAtBothEndsIsAppliedTogether) {
    const net_table_t table = net(1025, 1025);
    open_points(table);
    const auto give = [this](const std::string& name, const char* text) {
        number_spin_t* const spin = control(name);
        ASSERT_NE(spin, nullptr) << name;
        spin->grab_focus();
        spin->set_text(text);
    };
    give(point_name(0, 0, "y"), "0.125");
    scroll(1, 0);
    give(point_name(1024, 1024, "z"), "-0.5");
    control<Gtk::CheckButton>(point_name(1023, 1024, "選択"))->clicked();
    scroll(0, 1);
    ASSERT_NE(control(point_name(0, 0, "y")), nullptr);
    EXPECT_EQ(control(point_name(0, 0, "y"))->get_value(), 0.125);
    scroll(0.3, 0.4);
    ok();
    net_table_t expected = table;
    expected.points.front().numbers[1] = 0.125;
    expected.points.back().numbers[2] = -0.5;
    expected.points[1025 * 1025 - 2].selected = !expected.points[1025 * 1025 - 2].selected;
    ASSERT_EQ(points.size(), expected.points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        ASSERT_EQ(points[i].numbers, expected.points[i].numbers) << i;
        ASSERT_EQ(points[i].selected, expected.points[i].selected) << i;
    }
}

TEST_F(Tables, WhatIsBeingTypedStaysWhenItsCellLeavesTheView) {
    open_weights(option(200, 200));
    number_spin_t* const typed = control(knot_name("重み", 0, 0));
    ASSERT_NE(typed, nullptr);
    EXPECT_EQ(focused(), knot_name("重み", 0, 0));
    typed->set_text("1/4");
    scroll(1, 0);
    EXPECT_EQ(focused(), knot_name("重み", 0, 0));
    EXPECT_EQ(typed->get_text(), "1/4");
    // Into a cell far away: the number is taken over on the way.
    control(knot_name("重み", 199, 199))->grab_focus();
    scroll(0.5, 0.5);
    ok();
    EXPECT_EQ(values.data.front(), 0.25F);
    EXPECT_EQ(values.data.back(), option(200, 200).values.data.back());
}

TEST_F(Tables, ATextThatIsPutIntoACellWithoutTheKeyboardIsTakenOver) {
    open_weights(option(200, 200));
    control(knot_name("重み", 1, 0))->set_text("1/4");
    scroll(1, 0);
    ASSERT_EQ(control(knot_name("重み", 1, 0)), nullptr);
    control(knot_name("重み", 198, 199))->set_text("0.5");
    ok();
    EXPECT_EQ(values.data[1], 0.25F);
    EXPECT_EQ(values.data[199 * 200 + 198], 0.5F);
}

TEST_F(Tables, ACellIsNotSelectedBecauseAnotherWas) {
    option_table_t table = option(200, 200);
    std::ranges::fill(table.values.data, 1.0F);
    open_weights(table);
    number_spin_t* const spin = control(knot_name("重み", 1, 0));
    spin->select_region(0, -1);
    scroll(1, 0);
    ASSERT_NE(name_of(*spin), knot_name("重み", 1, 0));
    int begin = 0, end = 0;
    EXPECT_FALSE(spin->get_selection_bounds(begin, end));
}

TEST_F(Tables, CellsNextToTheViewAreThere) {
    open_weights(option(200, 200));
    scroll(0.5, 0.5);
    unsigned left = 200, right = 0, low = 200, high = 0;
    for (number_spin_t* const spin : controls<number_spin_t>()) {
        unsigned column = 0, row = 0;
        ASSERT_EQ(std::sscanf(name_of(*spin).c_str(), "重み %u,%u", &column, &row), 2);
        if (!is_in_view(spin))
            continue;
        left = std::min(left, column);
        right = std::max(right, column);
        low = std::min(low, row);
        high = std::max(high, row);
    }
    // One that is partly seen may lie between.
    EXPECT_NE(control(knot_name("重み", left - 2, low)), nullptr);
    EXPECT_NE(control(knot_name("重み", right + 2, high)), nullptr);
    EXPECT_NE(control(knot_name("重み", left, low - 2)), nullptr);
    EXPECT_NE(control(knot_name("重み", right, high + 2)), nullptr);
}

TEST_F(Tables, TabVisitsThePointsInTheirOrderAndThenTheAnswers) {
    open_points(net(12, 8));
    std::vector<std::string> stops;
    for (unsigned row = 0; row < 8; ++row)
        for (unsigned column = 0; column < 12; ++column)
            for (const char* part : {"選択", "x", "y", "z"})
                stops.push_back(point_name(column, row, part));
    for (const std::string& stop : stops) {
        ASSERT_EQ(focused(), stop);
        EXPECT_TRUE(is_in_view(dialog->get_focus())) << stop;
        press_tab();
    }
    for (const char* answer : {"OK", "Cancel", "Apply"}) {
        ASSERT_EQ(focused(), answer);
        press_tab();
    }
    EXPECT_EQ(focused(), stops.front());
    for (int i = 0; i < 4; ++i)
        press_tab(false);
    for (auto stop = stops.rbegin(); stop != stops.rend(); ++stop) {
        ASSERT_EQ(focused(), *stop);
        press_tab(false);
    }
}

TEST_F(Tables, TabGoesAlongEachKnotVectorAndThenToTheNext) {
    for (const bool upright : {false, true}) {
        const char* const kind = upright ? "縦ノット" : "横ノット";
        if (upright)
            open_column_knots(option(10, 20));
        else
            open_row_knots(option(10, 20));
        std::vector<std::string> stops;
        for (unsigned row = 0; row < 10; ++row) {
            stops.push_back(view_name(row));
            for (unsigned element = 0; element < 20; ++element)
                stops.push_back(upright ? knot_name(kind, row, element) : knot_name(kind, element, row));
        }
        ASSERT_EQ(focused(), stops[1]);
        press_tab(false);
        for (const std::string& stop : stops) {
            ASSERT_EQ(focused(), stop);
            press_tab();
        }
        EXPECT_EQ(focused(), "OK");
    }
}

TEST_F(Tables, TabGoesAlongEachRowOfWeights) {
    open_weights(option(10, 20));
    for (unsigned row = 0; row < 10; ++row)
        for (unsigned column = 0; column < 20; ++column) {
            ASSERT_EQ(focused(), knot_name("重み", column, row));
            press_tab();
        }
    EXPECT_EQ(focused(), "OK");
}

TEST_F(Tables, ArrowKeysReachEveryCell) {
    open_points(net(30, 30));
    ASSERT_EQ(focused(), point_name(0, 0, "選択"));
    for (unsigned row = 1; row < 30; ++row) {
        move(Gtk::DIR_UP);
        ASSERT_EQ(focused(), point_name(0, row, "選択"));
        EXPECT_TRUE(is_in_view(dialog->get_focus()));
    }
    for (unsigned column = 0; column < 30; ++column) {
        ASSERT_EQ(focused(), point_name(column, 29, "選択"));
        move(Gtk::DIR_RIGHT);
        move(Gtk::DIR_RIGHT);
    }
    // Back to a cell that was scrolled out of view.
    control<Gtk::CheckButton>(point_name(29, 29, "選択"))->grab_focus();
    scroll(0, 1);
    move(Gtk::DIR_DOWN);
    EXPECT_EQ(focused(), point_name(29, 28, "選択"));
    EXPECT_TRUE(is_in_view(dialog->get_focus()));
    // From the answers up into the table's lowest row.
    control<Gtk::Button>("OK")->grab_focus();
    scroll(0, 0);
    move(Gtk::DIR_UP);
    EXPECT_NE(focused().find(",0 "), std::string::npos) << focused();
}

TEST_F(Tables, TheNameOfACellIsItsTooltip) {
    open_points(net(10, 10));
    for (Gtk::CheckButton* const check : controls<Gtk::CheckButton>())
        EXPECT_EQ(check->get_tooltip_text(), name_of(*check));
    scroll(1, 0);
    EXPECT_EQ(control(point_name(9, 9, "z"))->get_tooltip_text(), point_name(9, 9, "z"));
    open_row_knots(option(40, 40));
    scroll(1, 0);
    EXPECT_EQ(control(knot_name("横ノット", 38, 39))->get_tooltip_text(), knot_name("横ノット", 38, 39));
    scroll(0, 0);
    EXPECT_EQ(control<Gtk::Button>(view_name(39))->get_tooltip_text(), view_name(39));
}

TEST_F(Tables, ASmallTableFillsItsView) {
    open_points(net(2, 1));
    for (const char* part : {"x", "y", "z"})
        EXPECT_GT(control(point_name(0, 0, part))->get_height(), 90);
    const Gtk::Allocation last = place_of(*control(point_name(1, 0, "z")));
    EXPECT_EQ(last.get_x() + last.get_width(), scroller().get_width());
    resize(900, 700);
    const Gtk::Allocation wider = place_of(*control(point_name(1, 0, "z")));
    EXPECT_EQ(wider.get_x() + wider.get_width(), scroller().get_width());
    EXPECT_GT(wider.get_width(), last.get_width() + 50);
}

TEST_F(Tables, AViewThatGrowsIsFilledWithCells) {
    open_weights(option(100, 100));
    const std::size_t before = controls<number_spin_t>().size();
    resize(1200, 900);
    const std::vector<number_spin_t*> all = controls<number_spin_t>();
    EXPECT_GT(all.size(), before + 30);
    resize(640, 480);
    EXPECT_LE(controls<number_spin_t>().size(), before + 1);
    EXPECT_EQ(std::ranges::count(all, nullptr, [](number_spin_t* spin) { return spin->get_parent(); }),
              std::ssize(all) - std::ssize(controls<number_spin_t>()));
}

TEST_F(Tables, AnEmptyNetHasNoCells) {
    open_points(net(0, 0));
    EXPECT_TRUE(controls<number_spin_t>().empty());
    open_points({3, 0, {}});
    EXPECT_TRUE(controls<number_spin_t>().empty());
    open_column_knots(option(3, 0));
    EXPECT_NE(control<Gtk::Button>(view_name(2)), nullptr);
}

}  // namespace
}  // namespace ulk3d
