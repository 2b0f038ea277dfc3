#pragma once

#include <gtkmm/dialog.h>

#include "dialogs/settings/model_name_rows.h"

namespace ulk3d {

class ViewArea;

/// The counts and file names of a polygon model (operations/settings/model_settings.h), set on OK and Apply.
class PolygonDialog : public Gtk::Dialog {
  public:
    /// The model and the view area are not owned and outlive the dialog.
    PolygonDialog(model_entry_t& entry, const Glib::ustring& title, Gtk::Window& window, ViewArea& viewarea);
    ~PolygonDialog() override = default;

  protected:
    void on_response(int answer) override;

  private:
    model_entry_t& entry;
    ViewArea& viewarea;
    model_name_rows_t names;
    Gtk::HBox vertex_row, element_row;
    count_spin_t vertices, elements;
};

}  // namespace ulk3d
