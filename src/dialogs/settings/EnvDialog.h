#pragma once

#include <gtkmm/dialog.h>

#include <functional>

#include "dialogs/controls/labelled_row.h"
#include "operations/settings/model_settings.h"

namespace ulk3d {

/// The cube map of the scene's surroundings, and how much of it models reflect and refract. OK and Apply set
/// the values and load the map, whether or not anything has changed.
class EnvDialog : public Gtk::Dialog {
  public:
    using apply_t = std::function<void(const environment_settings_t&)>;

    /// Shows `shown`; `apply` receives the values as the user has set them, on OK and on every Apply.
    EnvDialog(const environment_settings_t& shown, apply_t apply, const Glib::ustring& title,
              Gtk::Window& window);
    ~EnvDialog() override = default;

  protected:
    void on_response(int answer) override;

  private:
    apply_t apply;
    Gtk::HBox name_row, reflect_row, refract_row, factor_row;
    name_entry_t cubetex;
    number_spin_t reflectalpha, refractalpha, refractfactor;
};

}  // namespace ulk3d
