#pragma once

#include <gtkmm/dialog.h>
#include <gtkmm/scrolledwindow.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "dialogs/tables/cell_table.h"
#include "model/nurbs/net_edit.h"

namespace ulk3d {

/// An option table of a NURBS model, its weights or knots, as a table of spin buttons laid out like the net.
/// If it holds knots, each knot vector has a button that shows its basis functions with the knots as they are
/// in the dialog, applied or not. OK and Apply hand the table over.
///
/// Modal; the caller runs it.
class OptionArrayDialog : public Gtk::Dialog, private table_source_t {
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
    class item_t;     ///< a cell of the table
    class knot_t;     ///< one with a number of the option table
    class viewbtn_t;  ///< one with the button of a knot vector

    std::uint64_t cells() const override;
    std::uint64_t cell_at(unsigned left, unsigned top) const override;
    int kind_of(std::uint64_t cell) const override;
    std::unique_ptr<table_cell_t> make_cell(int kind) override;

    Glib::ustring name_of(unsigned row, unsigned element) const;
    void on_view(unsigned row);

    std::uint32_t index;
    option_table_t option;  ///< as it is in the dialog
    apply_t apply;
    std::string shader_folder;
    option_layout_t layout;
    Gtk::ScrolledWindow scroller;
    cell_table_t table;
};

}  // namespace ulk3d
