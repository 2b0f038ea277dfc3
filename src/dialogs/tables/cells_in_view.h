#pragma once

#include <gtkmm/scrolledwindow.h>
#include <gtkmm/table.h>

#include <cstddef>
#include <vector>

namespace ulk3d {

/// Keeps the cells of a large table from being realized before they come near the view.
///
/// All widgets of the table exist, have their places and values and are heard through the accessibility
/// tree. But a widget that is realized has GDK windows, which the toolkit finds in one list of all when they
/// go: 12,288 spin buttons take seconds to come and the square of that to go. A cell that has come near the
/// view stays realized. So do the first and the last one and those on both sides of the focus, as Tab moves
/// between realized widgets only.
class cells_in_view_t {
  public:
    /// For the cells of `shown_table`, which is the child of `table_scroller`. Both outlive this object.
    cells_in_view_t(Gtk::Table& shown_table, Gtk::ScrolledWindow& table_scroller);

    /// Takes over a cell: one or more widgets that stand together in the table. Cells come in the order in
    /// which Tab walks over them.
    void add(std::vector<Gtk::Widget*> widgets);

    /// Begins to watch the view; called once, when all cells are in the table and the table in the scroller.
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
    bool have_places = false;  ///< before the first layout all cells seem to stand in one corner
};

}  // namespace ulk3d
