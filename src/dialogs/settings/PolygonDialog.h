#pragma once

#include <gtkmm/dialog.h>

#include <functional>

#include "dialogs/settings/model_name_rows.h"

namespace ulk3d {

/// The counts and file names of a polygon model (operations/settings/model_settings.h), set on OK and Apply.
class PolygonDialog : public Gtk::Dialog {
  public:
    using apply_t = std::function<void(const polygon_settings_t&)>;

    /// Shows `shown`; `apply` receives the values as the user has set them, on OK and on every Apply.
    PolygonDialog(const polygon_settings_t& shown, apply_t apply, const Glib::ustring& title,
                  Gtk::Window& window);
    ~PolygonDialog() override = default;

  protected:
    void on_response(int answer) override;

  private:
    apply_t apply;
    model_name_rows_t names;
    Gtk::HBox vertex_row, element_row;
    count_spin_t vertices, elements;
};

}  // namespace ulk3d
