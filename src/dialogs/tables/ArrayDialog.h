#pragma once

#include <gtkmm/checkbutton.h>
#include <gtkmm/dialog.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/separator.h>
#include <gtkmm/spinbutton.h>
#include <gtkmm/table.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "dialogs/controls/spin_range.h"
#include "dialogs/tables/cells_in_view.h"
#include "model/nurbs/net_edit.h"

namespace ulk3d {

class edit_history_t;
class glpolygon_t;
class nurbs_t;
class ViewArea;
struct net_layout_t;

/// What the dialog works on: member `member` of the records of the model's array `element`. Nothing is owned,
/// and all of it outlives the dialog.
struct array_dialog_target_t {
    std::uint32_t element;
    std::uint32_t member;
    glpolygon_t& gl;  ///< updates the model
    nurbs_t& nurbs;
    edit_history_t& history;
    ViewArea& viewarea;  ///< whose context is made current
};

/// What a table of control points shows: the form of an attribute's numbers, and their spin buttons.
struct array_dialog_kind_t {
    const number_form_t& form;
    spin_range_t range;
    const char* axes[4];  ///< what the numbers of a point are called, for those who hear the dialog
};

/// The control net of a NURBS model as a table laid out like the net itself: for each point a check button
/// for its mark, and the numbers of one attribute. OK and Apply write the table into the model, as one step
/// of undo; Apply leaves the dialog as it stands. ArrayDialogPoint and ArrayDialogColor are its two kinds.
///
/// Modal; the caller runs it.
class ArrayDialog : public Gtk::Dialog {
  public:
    ~ArrayDialog() override;

  protected:
    ArrayDialog(const array_dialog_kind_t& kind, const array_dialog_target_t& target,
                const Glib::ustring& title, Gtk::Window& window);

    void on_response(int id) override;

  private:
    /// The cell of a point.
    struct item_t {
        std::uint64_t point;
        Gtk::CheckButton check;
        std::vector<Gtk::SpinButton> spins;
        Gtk::HSeparator separator;
    };

    void build_table();
    std::vector<number_row_t> read_points(const net_layout_t& layout) const;
    std::unique_ptr<item_t> make_item(const number_row_t& numbers) const;
    void attach(item_t& item, const net_layout_t& layout);
    void set_tab_order();
    std::vector<number_row_t> read_items() const;

    const array_dialog_kind_t& kind;
    std::uint64_t columns;                       ///< control points across the net
    std::uint64_t rows;                          ///< control points down the net
    std::vector<std::unique_ptr<item_t>> items;  ///< one for each point, in their order
    Gtk::Table table{1, 1, false};
    Gtk::ScrolledWindow scroller;
    cells_in_view_t cells_in_view{table, scroller};
    array_dialog_target_t target;
};

}  // namespace ulk3d
