#pragma once

#include <gtkmm/dialog.h>
#include <gtkmm/scrolledwindow.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "dialogs/controls/number_spin.h"
#include "dialogs/tables/cell_table.h"
#include "model/nurbs/net_edit.h"

namespace ulk3d {

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
class ArrayDialog : public Gtk::Dialog, private table_source_t {
  public:
    using apply_t = std::function<void(std::span<const number_row_t> points)>;

    ~ArrayDialog() override;

  protected:
    ArrayDialog(const array_dialog_kind_t& kind, const net_table_t& shown, apply_t apply,
                const Glib::ustring& title, Gtk::Window& window);

    void on_response(int id) override;

  private:
    class item_t;

    std::uint64_t cells() const override;
    std::uint64_t cell_at(unsigned left, unsigned top) const override;
    int kind_of(std::uint64_t cell) const override;
    std::unique_ptr<table_cell_t> make_cell(int kind) override;

    const array_dialog_kind_t& kind;
    std::uint64_t columns;             ///< control points across the net
    std::vector<number_row_t> points;  ///< as they are in the dialog, in the points' order
    net_layout_t layout;
    Gtk::ScrolledWindow scroller;
    cell_table_t table;
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
