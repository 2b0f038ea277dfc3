#pragma once

#include <gtkmm/dialog.h>

#include "dialogs/settings/model_name_rows.h"

namespace ulk3d {

class ViewArea;

/// The sizes and file names of a NURBS model (operations/settings/model_settings.h), set on OK and Apply. Any
/// change, that of a name included, empties the surface.
class NurbsDialog : public Gtk::Dialog {
  public:
    /// The model and the view area are not owned and outlive the dialog.
    NurbsDialog(model_entry_t& entry, const Glib::ustring& title, Gtk::Window& window, ViewArea& viewarea);
    ~NurbsDialog() override = default;

  protected:
    void on_response(int answer) override;

  private:
    model_entry_t& entry;
    ViewArea& viewarea;
    model_name_rows_t names;
    Gtk::HBox count_row, order_row, resolution_row;
    count_spin_t count1, count2, order1, order2, resolution1, resolution2;
};

}  // namespace ulk3d
