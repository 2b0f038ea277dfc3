#include "dialogs/tables/cells_in_view.h"

#include <gtkmm/adjustment.h>

#include <algorithm>
#include <utility>

namespace ulk3d {

cells_in_view_t::cells_in_view_t(Gtk::Table& shown_table, Gtk::ScrolledWindow& table_scroller)
    : table(shown_table), scroller(table_scroller) {}

void cells_in_view_t::add(std::vector<Gtk::Widget*> widgets) {
    for (Gtk::Widget* const widget : widgets)
        widget->set_child_visible(false);
    cells.push_back({std::move(widgets)});
}

void cells_in_view_t::watch() {
    if (cells.empty())
        return;
    reveal(0);
    reveal(cells.size() - 1);
    table.signal_size_allocate().connect([this](Gtk::Allocation&) {
        have_places = true;
        reveal_in_view();
    });
    for (const auto& place : {scroller.get_hadjustment(), scroller.get_vadjustment()})
        place->signal_value_changed().connect([this] { reveal_in_view(); });
    table.signal_set_focus_child().connect([this](Gtk::Widget* focus) { reveal_around(focus); });
}

void cells_in_view_t::reveal(std::size_t index) {
    cell_t& cell = cells[index];
    if (std::exchange(cell.is_revealed, true))
        return;
    for (Gtk::Widget* const widget : cell.widgets)
        widget->set_child_visible(true);
}

void cells_in_view_t::reveal_in_view() {
    if (!have_places)
        return;
    for (std::size_t i = 0; i < cells.size(); ++i)
        if (!cells[i].is_revealed && is_near_view(cells[i]))
            reveal(i);
}

bool cells_in_view_t::is_near_view(const cell_t& cell) const {
    // One page to each side: whatever a key or the wheel brings into view is already there.
    const auto is_near = [](const Glib::RefPtr<Gtk::Adjustment>& place, int low, int size) {
        const double page = place->get_page_size();
        return low + size >= place->get_value() - page && low <= place->get_value() + 2 * page;
    };
    return std::ranges::any_of(cell.widgets, [&](const Gtk::Widget* widget) {
        const Gtk::Allocation at = widget->get_allocation();
        return is_near(scroller.get_hadjustment(), at.get_x(), at.get_width()) &&
               is_near(scroller.get_vadjustment(), at.get_y(), at.get_height());
    });
}

void cells_in_view_t::reveal_around(const Gtk::Widget* focus) {
    const auto found = std::ranges::find_if(cells, [focus](const cell_t& cell) {
        return std::ranges::find(cell.widgets, focus) != cell.widgets.end();
    });
    if (found == cells.end())
        return;
    const auto index = static_cast<std::size_t>(found - cells.begin());
    for (std::size_t i = index - std::min<std::size_t>(index, 1); i < std::min(index + 2, cells.size()); ++i)
        reveal(i);
}

}  // namespace ulk3d
