#pragma once

#include <gtkmm/dialog.h>

#include <functional>

#include "dialogs/settings/model_name_rows.h"

namespace ulk3d {

/// The sizes and file names of a NURBS model (operations/settings/model_settings.h), set on OK and Apply. Any
/// change, even of a name, empties the surface.
class NurbsDialog : public Gtk::Dialog {
  public:
    using apply_t = std::function<void(const nurbs_settings_t&)>;

    /// Shows `shown`; `apply` receives the values as the user has set them, on OK and on every Apply.
    NurbsDialog(const nurbs_settings_t& shown, apply_t apply, const Glib::ustring& title,
                Gtk::Window& window);
    ~NurbsDialog() override = default;

  protected:
    void on_response(int answer) override;

  private:
    apply_t apply;
    model_name_rows_t names;
    Gtk::HBox count_row, order_row, resolution_row;
    count_spin_t count1, count2, order1, order2, resolution1, resolution2;
};

}  // namespace ulk3d
