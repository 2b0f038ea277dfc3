#pragma once

#include <gtkmm/scrolledwindow.h>
#include <gtkmm/table.h>

#include <cstddef>
#include <vector>

namespace ulk3d {

/// Keeps the cells of a large table from being realized before they come near the visible part.
///
/// All widgets of the table exist, have their places and values and are accessible to screen readers. But a
/// realized widget has GDK windows, which the toolkit looks up in a single list when they are destroyed:
/// creating those of 12,288 spin buttons takes seconds, and destroying them time that grows with the square
/// of their number. A cell that has once come near the visible part stays realized. So are the first and the
/// last cell and those on both sides of the focus, as Tab moves between realized widgets only.
class cells_in_view_t {
  public:
    /// For the cells of `shown_table`, which is the child of `table_scroller`. Both must outlive this object.
    cells_in_view_t(Gtk::Table& shown_table, Gtk::ScrolledWindow& table_scroller);

    /// Adds a cell: one or more widgets that lie together in the table, not owned. Cells are added in the
    /// order in which Tab visits them.
    void add(std::vector<Gtk::Widget*> widgets);

    /// Starts watching the visible part; call once, when all cells are in the table and the table is in the
    /// scroller.
    void watch();

  private:
    struct cell_t {
        std::vector<Gtk::Widget*> widgets;
        bool is_revealed = false;
    };

    void reveal(std::size_t index);
    void reveal_in_view();
    void reveal_around(const Gtk::Widget* focus);
    bool is_near_view(const cell_t& cell) const;

    Gtk::Table& table;
    Gtk::ScrolledWindow& scroller;
    std::vector<cell_t> cells;
    bool have_places = false;  ///< before the first layout all cells seem to lie in one corner
};

}  // namespace ulk3d
