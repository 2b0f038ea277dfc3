#pragma once

#include <gtkmm/dialog.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/table.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "dialogs/controls/MyButton.h"
#include "dialogs/controls/number_spin.h"
#include "dialogs/tables/cells_in_view.h"
#include "dialogs/tables/table_layout.h"
#include "model/nurbs/net_edit.h"

namespace ulk3d {

/// An option table of a NURBS model, its weights or knots, as a table of spin buttons laid out like the net.
/// If it holds knots, each knot vector has a button that shows its basis functions with the knots as they are
/// in the dialog, applied or not. OK and Apply hand the table over.
///
/// Modal; the caller runs it.
class OptionArrayDialog : public Gtk::Dialog {
  public:
    /// What is shown and how: `index` is that of the option table, `hasviews` gives each row its view button,
    /// `columns` turns the rows upright, for the knot vectors along the columns of the net.
    struct form_t {
        std::uint32_t index;
        bool hasviews, columns;
    };
    using apply_t = std::function<void(const matrix_t<float>& values)>;

    /// Shader files of the plots are looked for in `shader_folder`; empty for none.
    OptionArrayDialog(Gtk::Window& parent, const form_t& form, option_table_t shown, apply_t apply,
                      const Glib::ustring& title, std::string shader_folder);
    ~OptionArrayDialog() override;

  protected:
    void on_map() override;
    void on_realize() override;
    void on_response(int id) override;

  private:
    /// A cell of the table.
    class item_t {
      public:
        virtual Gtk::Widget& widget() = 0;
        virtual ~item_t() = default;
    };

    /// A number of the option table.
    class knot_t : public item_t {
      public:
        /// `place` is the index of the number in the option table, counted row by row.
        knot_t(std::uint64_t place, float value, const Glib::ustring& accessible_name);
        Gtk::Widget& widget() override { return spin; }
        /// A number that nobody has touched is the one that it was, whatever it shows: the toolkit rounds to
        /// the digits that show when the keyboard leaves a button.
        float value() const;
        std::uint64_t place() const { return place_in_table; }

      private:
        std::uint64_t place_in_table;
        number_spin_t spin;
        float first_value;
    };

    /// The button of a knot vector.
    class viewbtn_t : public item_t {
      public:
        viewbtn_t(OptionArrayDialog& dialog, unsigned number);
        Gtk::Widget& widget() override { return button; }

      private:
        MyButton button;
    };

    struct placed_item_t {
        std::unique_ptr<item_t> item;
        table_place_t place;
    };

    void build_table();
    void watch_cells();
    void add_row(unsigned row);
    void put(std::unique_ptr<item_t> item, const table_place_t& place);
    Glib::ustring name_of(unsigned row, unsigned element) const;
    /// The table as it is now, including the numbers that have no cell in the dialog.
    matrix_t<float> values() const;
    void on_view(unsigned row);

    std::vector<knot_t*> knots;        ///< in the order of the option table
    std::vector<placed_item_t> items;  ///< these and the view buttons
    Gtk::Table table{1, 1, false};
    Gtk::ScrolledWindow scroller;
    cells_in_view_t cells_in_view{table, scroller};
    std::uint32_t index;
    option_table_t option;  ///< as it was when the dialog was opened
    apply_t apply;
    std::string shader_folder;
    option_layout_t layout;
};

}  // namespace ulk3d
