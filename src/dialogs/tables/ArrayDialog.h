#pragma once

#include <gtkmm/checkbutton.h>
#include <gtkmm/dialog.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/separator.h>
#include <gtkmm/spinbutton.h>
#include <gtkmm/table.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "dialogs/controls/number_spin.h"
#include "dialogs/tables/cells_in_view.h"
#include "model/nurbs/net_edit.h"

namespace ulk3d {

struct net_layout_t;

/// What a table of control points shows: how many numbers there are for each point, and their spin buttons.
struct array_dialog_kind_t {
    std::uint32_t numbers;
    spin_range_t range;
    const char* axes[4];  ///< names of a point's numbers for screen readers
};

/// The control net of a NURBS model as a table laid out like the net itself: for each point a check button
/// for its selection, and the numbers of one attribute. OK and Apply hand the table over; Apply leaves the
/// dialog open. ArrayDialogPoint and ArrayDialogColor are its two kinds.
///
/// Modal; the caller runs it.
class ArrayDialog : public Gtk::Dialog {
  public:
    using apply_t = std::function<void(std::span<const number_row_t> points)>;

    ~ArrayDialog() override;

  protected:
    ArrayDialog(const array_dialog_kind_t& kind, const net_table_t& shown, apply_t apply,
                const Glib::ustring& title, Gtk::Window& window);

    void on_response(int id) override;

  private:
    /// The cell of one point.
    struct item_t {
        std::uint64_t point;
        Gtk::CheckButton check;
        std::vector<std::unique_ptr<number_spin_t>> spins;
        Gtk::HSeparator separator;
    };

    void build_table(const net_table_t& shown);
    std::unique_ptr<item_t> make_item(const number_row_t& numbers) const;
    void attach(item_t& item, const net_layout_t& layout);
    void set_tab_order();
    std::vector<number_row_t> read_items() const;

    const array_dialog_kind_t& kind;
    std::uint64_t columns;                       ///< control points across the net
    std::uint64_t rows;                          ///< control points down the net
    std::vector<std::unique_ptr<item_t>> items;  ///< one for each point, in the points' order
    Gtk::Table table{1, 1, false};
    Gtk::ScrolledWindow scroller;
    cells_in_view_t cells_in_view{table, scroller};
    apply_t apply;
};

/// The table of the control points' positions: three numbers for each point.
class ArrayDialogPoint : public ArrayDialog {
  public:
    ArrayDialogPoint(const net_table_t& shown, apply_t apply, const Glib::ustring& title,
                     Gtk::Window& window);
    ~ArrayDialogPoint() override = default;
};

/// The table of the control points' colours: red, green, blue and alpha of each point, 0 to 255.
class ArrayDialogColor : public ArrayDialog {
  public:
    ArrayDialogColor(const net_table_t& shown, apply_t apply, const Glib::ustring& title,
                     Gtk::Window& window);
    ~ArrayDialogColor() override = default;
};

}  // namespace ulk3d
