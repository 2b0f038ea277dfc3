#pragma once

#include <gtkmm/container.h>
#include <gtkmm/scrolledwindow.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "dialogs/tables/table_layout.h"

namespace ulk3d {

/// The widgets of a cell. They show one cell of the table at a time, and another when that leaves the view.
class table_cell_t {
  public:
    struct part_t {
        Gtk::Widget* widget;  ///< owned by the cell, and shown
        table_place_t place;
    };

    virtual ~table_cell_t() = default;

    /// Shows cell `cell` of the table from now on, and sets the places of the parts.
    virtual void show(std::uint64_t cell) = 0;
    /// Takes over what is being typed.
    virtual void finish_typing() {}

    std::vector<part_t> parts;  ///< those that take the keyboard come first, in the order of Tab
    std::size_t stops = 1;      ///< how many take the keyboard
    int kind = 0;               ///< see table_source_t
};

/// What a cell_table_t shows. Cells are numbered in the order of Tab; a cell is one block of the table.
class table_source_t {
  public:
    virtual ~table_source_t() = default;

    virtual std::uint64_t cells() const = 0;
    /// The cell that covers a place of the table.
    virtual std::uint64_t cell_at(unsigned left, unsigned top) const = 0;
    /// Cells of one kind can take each other's widgets.
    virtual int kind_of(std::uint64_t cell) const = 0;
    virtual std::unique_ptr<table_cell_t> make_cell(int kind) = 0;
};

/// A table of any number of cells, which has widgets only for those in and next to the view, and for the one
/// that has the keyboard. As the view moves, the widgets of cells that leave it show those that come into it.
/// What the cells hold is the source's. Tab, the arrow keys and the pointer find every cell as if all had
/// widgets; like Gtk::Table with all cells expanding, the table fills a view that is larger.
class cell_table_t : public Gtk::Container {
  public:
    /// The source must outlive the table, and is asked for nothing before scroll_in.
    cell_table_t(table_source_t& source, const table_lines_t& columns, const table_lines_t& rows);
    ~cell_table_t() override;

    /// Puts the table into a window through which it is seen; call once. The window must outlive the table.
    void scroll_in(Gtk::ScrolledWindow& window);
    /// Gives the keyboard to a cell and brings it into view.
    void focus_cell(std::uint64_t cell);
    /// Takes over what is being typed in any cell.
    void finish_typing();

  protected:
    GType child_type_vfunc() const override;
    void forall_vfunc(gboolean include_internals, GtkCallback callback, gpointer data) override;
    void on_add(Gtk::Widget* widget) override;
    void on_remove(Gtk::Widget* widget) override;
    Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void get_preferred_width_vfunc(int& minimum, int& natural) const override;
    void get_preferred_height_vfunc(int& minimum, int& natural) const override;
    void on_size_allocate(Gtk::Allocation& place) override;
    bool on_focus(Gtk::DirectionType direction) override;

  private:
    using cell_ptr = std::unique_ptr<table_cell_t>;
    using cell_numbers = std::set<std::uint64_t>;
    /// Blocks of rows and columns; the ends are exclusive.
    struct blocks_t {
        unsigned left, right, top, bottom;
        bool operator==(const blocks_t&) const = default;
    };
    struct stop_t {
        std::uint64_t cell;
        std::size_t part;
    };

    void make_samples();
    cell_ptr make_cell(int kind);
    table_lines_t measured(table_lines_t lines, Gtk::Orientation orientation) const;
    blocks_t blocks_in_view() const;
    void add_cells(const blocks_t& blocks, cell_numbers& cells) const;
    blocks_t blocks_around(std::uint64_t cell) const;
    std::optional<stop_t> find_stop(const Gtk::Widget* widget) const;

    void on_view_changed();
    void show_cells(cell_numbers wanted);
    void show_cell(std::uint64_t number, std::vector<cell_ptr>& free_cells);
    void place(const table_cell_t& cell);
    bool move_to_next_stop(bool forward);
    void move_to(const stop_t& stop);

    table_source_t& source;
    table_lines_t columns, rows;
    Gtk::ScrolledWindow* scroller = nullptr;
    std::vector<cell_ptr> samples;            ///< for measuring; never seen
    std::map<std::uint64_t, cell_ptr> shown;  ///< by their numbers
    std::vector<cell_ptr> unused;             ///< not in the table
    std::optional<blocks_t> blocks_shown;     ///< none before the first layout
};

/// Names a part of a cell for screen readers, and for the pointer that rests on it.
void name_part(Gtk::Widget& part, const Glib::ustring& name);

}  // namespace ulk3d
